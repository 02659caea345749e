// libFuzzer target over the .sav dictionary reader: any input must give a data source (with or
// without warnings) or a clean ReadError; crashes, sanitizer reports, leaks, hangs and other
// exceptions are findings.
#include <cstddef>
#include <cstdint>

#include <transspace/savfile/reader.h>
#include <transspace/zorb/datasource.h>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  savfile::MemoryByteSource source(data, size);
  try {
    savfile::ReadResult result = savfile::read(source, "fuzz.sav");
    // Touch what the library would read, so that a model in a bad state shows up here.
    ZORB_DataSource const& ds = *result.dataSource;
    for (int i = 0; i < ds.ColumnCount(); ++i) {
      ZORB_Variable const& v = ds.GetVariable(i);
      int type, width, decimals;
      v.GetFormatEx(type, width, decimals);
      OBS const *a, *b, *c;
      v.GetMissingValues(a, b, c);
      if (v.GetAlignment() < 0 || v.GetAlignment() > 2 || v.GetMeasurementLevel() < 0 || v.GetMeasurementLevel() > 3) {
        __builtin_trap();
      }
    }
  } catch (savfile::ReadError const&) {
  }
  return 0;
}
