// Xalan 1.12 writes a number as text (XPath's string(), a number result read as a string, every
// number literal of an expression) into a 101-byte stack buffer: a number of about a hundred
// digits or more overflows it and the process aborts ("buffer overflow detected"), so a query as
// small as `string(1e90 * 1e90)` written out would end the host. This definition takes the place
// of Xalan's own for every caller in the process (the library is loaded before Xalan, and Xalan
// calls the function through its symbol table): whole numbers of 10^18 and more, which are the
// only ones that can be that long, are written here exactly as Xalan writes them (every digit, no
// decimal point, no exponent); every other number is handed to Xalan's own definition, found by
// its symbol name (transxalansymbol.h). tests/input/deepdocument_test.cpp guards the behaviour.
#include "core/transconfig.h"

#include "xmlinternals/transxalansymbol.h"

#include <dlfcn.h>

#include <cassert>
#include <cmath>
#include <cstdio>

#include <xalanc/PlatformSupport/DOMStringHelper.hpp>
#include <xalanc/XalanDOM/XalanDOMString.hpp>

namespace XALAN_CPP_NAMESPACE {

namespace {

using XalanNumberWriter = XalanDOMString& (*)(double, XalanDOMString&);

// Xalan's own definition, the next one after this library's in the lookup order.
XalanNumberWriter xalanWriter() {
  static XalanNumberWriter const writer =
      reinterpret_cast<XalanNumberWriter>(dlsym(RTLD_NEXT, transXalanNumberWriterSymbol().c_str()));
  return writer;
}

}  // namespace

__attribute__((visibility("default"))) XalanDOMString& NumberToDOMString(double value, XalanDOMString& result) {
  if (std::isfinite(value) && std::fabs(value) >= 1e18) {
    char digits[320];  // the largest double has 309 digits
    int const length = std::snprintf(digits, sizeof digits, "%.0f", value);
    result.append(digits, static_cast<XalanDOMString::size_type>(length));  // appended, as Xalan does
    return result;
  }
  XalanNumberWriter const writer = xalanWriter();
  assert(writer && "Xalan's NumberToDOMString");
  return writer(value, result);
}

}  // namespace XALAN_CPP_NAMESPACE
