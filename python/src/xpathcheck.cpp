#include "xpathcheck.h"

#include <unicode/unistr.h>
#include <xalanc/XalanDOM/XalanDOMString.hpp>

#include <transspace/transowner.h>
#include <transspace/transvalue.h>

namespace pytrans {

namespace {

template <class Unit>
std::string utf8(Unit const* text) {
  std::string bytes;
  return icu::UnicodeString(text).toUTF8String(bytes);
}

}  // namespace

std::string xalanMessage(XALAN_CPP_NAMESPACE::XSLException const& exception) {
  return utf8(exception.getMessage().c_str());
}

std::optional<std::string> xpathSyntaxError(TransString const& expression) {
  TransString* described = nullptr;
  if (TransValue::isXPath(expression, &described)) return std::nullopt;
  TransStringOwner const problem(described);
  return utf8(problem->asUTF16());
}

}  // namespace pytrans
