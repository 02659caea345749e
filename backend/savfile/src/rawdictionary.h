// Phase 1's result: the records of a system file's dictionary as they are on disk, each with the
// offset it was found at, texts still in the file's encoding. Phase 2 (DictionaryDecoder) turns
// them into the host model.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "byteorder.h"

namespace savfile {

struct RawHeader {
  std::string magic;        // "$FL2" or "$FL3"
  std::string productName;  // 60 bytes
  std::int32_t layoutCode = 0;
  std::int32_t nominalCaseSize = 0;
  std::int32_t compression = 0;
  std::int32_t weightIndex = 0;  // 1-based over type-2 records, 0 = none
  std::int32_t caseCount = -1;
  double bias = 100.0;
  std::string date;       // 9 bytes, "dd Mmm yy"
  std::string time;       // 8 bytes, "hh:mm:ss"
  std::string fileLabel;  // 64 bytes
  bool bigEndian = false;
};

// Record type 2. Continuation records (type -1) are kept too: the header's weight index and the
// value-label indices count them.
struct RawVariable {
  std::uint64_t offset = 0;
  std::int32_t type = 0;  // 0 numeric, 1..255 string width, -1 continuation
  bool hasLabel = false;
  std::string label;
  std::uint64_t labelOffset = 0;
  std::int32_t missingCode = 0;
  std::vector<std::string> missing;  // |missingCode| raw 8-byte values
  std::uint32_t print = 0;
  std::uint32_t write = 0;
  std::string name;  // 8 bytes as on disk
};

// Record type 3 with the type 4 that follows it.
struct RawValueLabels {
  std::uint64_t offset = 0;
  std::vector<std::pair<std::string, std::string>> labels;  // raw 8-byte value, label
  std::uint64_t indicesOffset = 0;
  std::vector<std::int32_t> indices;  // 1-based dictionary indices
};

// Record type 7.
struct RawExtension {
  std::uint64_t offset = 0;      // of the record header
  std::uint64_t dataOffset = 0;  // of the first data byte
  std::int32_t subtype = 0;
  std::int32_t elementSize = 0;
  std::int32_t count = 0;
  std::string data;  // elementSize * count bytes
};

struct RawDictionary {
  RawHeader header;
  ByteOrder order;
  std::vector<RawVariable> variables;
  std::vector<RawValueLabels> valueLabels;
  std::vector<std::string> documents;  // 80-byte lines
  std::uint64_t documentsOffset = 0;
  std::vector<RawExtension> extensions;
  std::uint64_t endOffset = 0;   // of record 999
  std::uint64_t dataOffset = 0;  // first byte after the dictionary (after the zsav header, if any)
};

}  // namespace savfile
