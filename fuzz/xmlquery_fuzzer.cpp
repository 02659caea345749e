// libFuzzer target over the road of XML text: text -> document value through the bounded parse
// -> a query from a fuzzed context and path -> every view, and the same on a copy of the value.
// Input: the first line is the context, the second the path, the rest the XML text. A clean
// refusal of the text and a malformed context (which the library lets through as Xalan's
// exception) are answers; anything else that ends the run is a finding.
#include <cstddef>
#include <cstdint>
#include <string>

#include <xalanc/PlatformSupport/XSLException.hpp>

#include "fuzzsupport.h"
#include <transspace/transvalue.h>
#include <transspace/transxmlinput.h>

namespace {

// The next line of `text` from `at` (without its '\n'); `at` moves past it.
std::string line(std::string const& text, std::size_t& at) {
  std::size_t const end = text.find('\n', at);
  std::string const result = text.substr(at, end == std::string::npos ? std::string::npos : end - at);
  at = end == std::string::npos ? text.size() : end + 1;
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::bringPlatformUp();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const input(reinterpret_cast<char const*>(data), size);
  std::size_t at = 0;
  std::string const context = line(input, at);
  std::string const path = line(input, at);
  TransValue value;
  try {
    value = TransXMLInput::parseDocument(input.data() + at, input.size() - at);
  } catch (TransXMLInputError const&) {
    return 0;
  }
  try {
    fuzz::askEveryView(value, context.c_str(), path.c_str());
    TransValue const copy(value);
    value = TransValue();  // the copy must stand alone
    fuzz::askEveryView(copy, context.c_str(), path.c_str());
    fuzz::xmlText(copy);
  } catch (XALAN_CPP_NAMESPACE::XSLException const&) {
  }
  return 0;
}
