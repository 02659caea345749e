// Reads the dictionary of a system file (.sav, or .zsav whose dictionary is uncompressed)
// into the host's data-source model.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "bytesource.h"
#include "readerror.h"

class ZORB_DataSource;

namespace savfile {

// Something odd that the reader tolerated: it used a sane default and went on.
struct Warning {
  std::uint64_t offset = 0;
  std::string message;  // without file name and offset
  std::string text;     // "<file>: near offset 0x..: <message>"
};

// Facts of the file that the host model has no place for.
struct FileInfo {
  std::string productName;   // header, converted to the host's code page, trailing blanks removed
  std::string fileLabel;     // header, likewise
  std::string encoding;      // the ICU converter name the text was decoded with
  bool bigEndian = false;
  bool zsav = false;         // "$FL3": zlib-compressed data
  int compression = 0;       // header code: 0 none, 1 bytecode, 2 zlib
  std::vector<std::string> documents;  // record type 6, one entry per 80-byte line, blanks trimmed
  std::uint64_t dataOffset = 0;        // where the case data begins (after record 999)
};

struct ReadResult {
  std::shared_ptr<ZORB_DataSource> dataSource;
  std::vector<Warning> warnings;
  FileInfo info;
};

// Reads the dictionary. Throws ReadError when the bytes are not a readable system file; never
// reads beyond the end of the source and allocates no more than the source's size justifies.
// `fileName` only serves the messages.
ReadResult read(ByteSource& source, std::string const& fileName);

// Convenience: opens the file at `path` and reads it.
ReadResult readFile(std::string const& path);

}  // namespace savfile
