// libFuzzer target over the whole road of a system file: bytes -> reader -> TransValue(ds) -> XML
// text -> queries, and the XML text back through the bounded parse. Any input must give answers or
// a clean ReadError; an assertion of the library firing on file input, a crash, a sanitizer report,
// a leak or our own XML text that does not parse again are findings.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzzsupport.h"
#include <transspace/savfile/reader.h>
#include <transspace/savfile/readerror.h>
#include <transspace/transspace.h>
#include <transspace/transvalue.h>
#include <transspace/transxmlinput.h>

namespace {

// What a component asks of a dictionary: the variables, one by name, labels, counts, numbers.
char const* const queries[][2] = {
    {"/dictionary", "@rowCount"},
    {"/dictionary", "variable/@name"},
    {"/dictionary", "count(variable)"},
    {"/dictionary/variable[1]", "@label"},
    {"/dictionary/variable[last()]", "valueLabelSet/valueLabel/@label"},
    {"/dictionary", "variable[@name='v1']/@measurementLevel"},
    {"//variable[missingValues]", "missingValues/@*"},
    {"/dictionary", "extension/@subtype"},
    {"/dictionary", "string(/)"},
};

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::bringPlatformUp();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  savfile::MemoryByteSource source(data, size);
  savfile::ReadResult result;
  try {
    result = savfile::read(source, "fuzz.sav");
  } catch (savfile::ReadError const&) {
    return 0;
  }
  TransValue const value(*result.dataSource);
  for (auto const& query : queries) fuzz::askEveryView(value, query[0], query[1]);
  std::string const xml = fuzz::xmlText(value);
  try {
    TransValue const again = TransXMLInput::parseDocument(xml.data(), xml.size());
    if (fuzz::xmlText(again) != xml) __builtin_trap();  // the text must read back as itself
  } catch (TransXMLInputError const&) {
    __builtin_trap();  // the library's own text must always parse
  }
  return 0;
}
