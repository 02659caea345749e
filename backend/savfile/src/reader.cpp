#include <transspace/savfile/reader.h>

#include <new>

#include "cursor.h"
#include "dictionarydecoder.h"
#include "recordreader.h"
#include <transspace/zorb/datasource.h>

namespace savfile {

ReadResult read(ByteSource& source, std::string const& fileName) {
  Diagnostics diagnostics(fileName);
  Cursor cursor(source, diagnostics);
  RawDictionary raw = RecordReader(cursor, diagnostics).read();
  ReadResult result;
  try {
    DictionaryDecoder(raw, diagnostics).decode(result);
  } catch (ReadError const&) {
    throw;
  } catch (std::bad_alloc const&) {
    throw;
  } catch (std::exception const& e) {
    // The model refuses what it cannot hold; that is a fault of the file we did not foresee.
    throw ReadError(fileName, raw.endOffset, std::string("the dictionary cannot be represented: ") + e.what());
  }
  result.warnings = diagnostics.takeWarnings();
  return result;
}

ReadResult readFile(std::string const& path) {
  FileByteSource source(path);
  return read(source, path);
}

}  // namespace savfile
