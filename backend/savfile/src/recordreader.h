// Phase 1: reads the raw records of the dictionary, from the header to record 999, checking every
// count and length against the bytes that remain.
#pragma once

#include "cursor.h"
#include "rawdictionary.h"

namespace savfile {

class RecordReader {
public:
  RecordReader(Cursor& cursor, Diagnostics& diagnostics) : in_(cursor), diag_(diagnostics) {}

  RawDictionary read();

private:
  void readHeader(RawHeader& header);
  RawVariable readVariable();
  RawValueLabels readValueLabels();
  void readDocuments(RawDictionary& dict);
  RawExtension readExtension();
  void readEnd(RawDictionary& dict);

  Cursor& in_;
  Diagnostics& diag_;
};

}  // namespace savfile
