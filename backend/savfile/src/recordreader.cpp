#include "recordreader.h"

#include <cmath>

namespace savfile {

namespace {

constexpr std::uint64_t headerSize = 176;

bool isEbcdicMagic(std::string const& m) {
  return m == std::string("\x5b\xc6\xd3\xf2", 4) || m == std::string("\x5b\xc6\xd3\xf3", 4);
}

}  // namespace

RawDictionary RecordReader::read() {
  RawDictionary dict;
  readHeader(dict.header);
  dict.order = in_.order();
  for (;;) {
    std::uint64_t at = in_.offset();
    if (in_.remaining() < 4) in_.fail("the file ends before the dictionary termination record (999)");
    std::int32_t type = in_.i32();
    switch (type) {
      case 2:
        dict.variables.push_back(readVariable());
        dict.variables.back().offset = at;
        break;
      case 3:
        dict.valueLabels.push_back(readValueLabels());
        dict.valueLabels.back().offset = at;
        break;
      case 4:
        in_.failAt(at, "a value label variables record (type 4) without a value label record (type 3) before it");
      case 6:
        if (!dict.documents.empty()) diag_.warn(at, "a second document record; its lines are added to the first's");
        if (dict.documents.empty()) dict.documentsOffset = at;
        readDocuments(dict);
        break;
      case 7:
        dict.extensions.push_back(readExtension());
        dict.extensions.back().offset = at;
        break;
      case 999:
        dict.endOffset = at;
        readEnd(dict);
        return dict;
      default:
        in_.failAt(at, "unrecognized record type " + std::to_string(type));
    }
  }
}

void RecordReader::readHeader(RawHeader& h) {
  if (in_.remaining() < headerSize) {
    in_.fail("not a system file: " + std::to_string(in_.remaining()) +
             " bytes is shorter than a file header");
  }
  h.magic = in_.bytes(4, "the file header");
  if (isEbcdicMagic(h.magic)) in_.failAt(0, "EBCDIC system files are not supported");
  if (h.magic != "$FL2" && h.magic != "$FL3") in_.failAt(0, "not a system file (no $FL2 or $FL3 signature)");
  h.productName = in_.bytes(60, "the file header");

  // The layout code is 2 (or 3) in the writer's byte order, which gives the byte order itself.
  std::string layout = in_.bytes(4, "the file header");
  ByteOrder little(false), big(true);
  std::int32_t le = little.i32(layout.data()), be = big.i32(layout.data());
  if (le == 2 || le == 3) {
    h.bigEndian = false;
  } else if (be == 2 || be == 3) {
    h.bigEndian = true;
  } else {
    diag_.warn(64, "unexpected layout code " + std::to_string(le) + "; assuming big-endian byte order");
    h.bigEndian = true;
  }
  in_.setOrder(ByteOrder(h.bigEndian));
  h.layoutCode = in_.order().i32(layout.data());
  h.nominalCaseSize = in_.i32();
  h.compression = in_.i32();
  h.weightIndex = in_.i32();
  h.caseCount = in_.i32();
  h.bias = in_.f64();
  h.date = in_.bytes(9, "the file header");
  h.time = in_.bytes(8, "the file header");
  h.fileLabel = in_.bytes(64, "the file header");
  in_.skip(3, "the file header");
}

RawVariable RecordReader::readVariable() {
  RawVariable v;
  std::uint64_t start = in_.offset();
  v.type = in_.i32();
  std::int32_t hasLabel = in_.i32();
  v.missingCode = in_.i32();
  v.print = static_cast<std::uint32_t>(in_.i32());
  v.write = static_cast<std::uint32_t>(in_.i32());
  v.name = in_.bytes(8, "a variable record");
  if (v.type < -1 || v.type > 255) {
    in_.failAt(start, "variable record with invalid type " + std::to_string(v.type));
  }
  if (hasLabel != 0 && hasLabel != 1) {
    in_.failAt(start + 4, "variable label indicator is " + std::to_string(hasLabel) + " (not 0 or 1)");
  }
  v.hasLabel = hasLabel == 1;
  if (v.hasLabel) {
    v.labelOffset = in_.offset();
    std::int32_t length = in_.i32();
    if (length < 0) in_.failAt(v.labelOffset, "negative variable label length " + std::to_string(length));
    std::uint64_t padded = (static_cast<std::uint64_t>(length) + 3) / 4 * 4;
    in_.require(padded, 1, "a variable label");
    v.label = in_.bytes(static_cast<std::uint64_t>(length), "a variable label");
    in_.skip(padded - static_cast<std::uint64_t>(length), "a variable label");
  }
  // The layout of what follows depends on the code, so a code outside -3..3 leaves nothing
  // that could be read reliably.
  if (v.missingCode < -3 || v.missingCode > 3) {
    in_.failAt(start + 8, "missing value code " + std::to_string(v.missingCode) + " is not between -3 and 3");
  }
  int n = v.missingCode < 0 ? -v.missingCode : v.missingCode;
  in_.require(static_cast<std::uint64_t>(n), 8, "the missing values of a variable record");
  for (int i = 0; i < n; ++i) v.missing.push_back(in_.bytes(8, "a missing value"));
  return v;
}

RawValueLabels RecordReader::readValueLabels() {
  RawValueLabels r;
  std::uint64_t countAt = in_.offset();
  std::uint32_t n = static_cast<std::uint32_t>(in_.i32());
  // Each label takes at least 16 bytes (8 of value, 8 of length byte and padded text).
  in_.require(n, 16, "a value label record");
  r.labels.reserve(n);
  for (std::uint32_t i = 0; i < n; ++i) {
    std::string value = in_.bytes(8, "a value label");
    std::uint8_t length = in_.u8();
    std::uint64_t padded = (static_cast<std::uint64_t>(length) + 1 + 7) / 8 * 8 - 1;
    std::string label = in_.bytes(length, "a value label");
    in_.skip(padded - length, "a value label");
    r.labels.emplace_back(std::move(value), std::move(label));
  }
  (void)countAt;
  std::uint64_t at = in_.offset();
  if (in_.remaining() < 4 || in_.i32() != 4) {
    in_.failAt(at, "a value label record (type 3) is not followed by a variables record (type 4)");
  }
  r.indicesOffset = in_.offset();
  std::uint32_t nvars = static_cast<std::uint32_t>(in_.i32());
  in_.require(nvars, 4, "a value label variables record");
  r.indices.reserve(nvars);
  for (std::uint32_t i = 0; i < nvars; ++i) r.indices.push_back(in_.i32());
  return r;
}

void RecordReader::readDocuments(RawDictionary& dict) {
  std::uint64_t at = in_.offset();
  std::int32_t n = in_.i32();
  if (n < 0) in_.failAt(at, "negative number of document lines " + std::to_string(n));
  in_.require(static_cast<std::uint64_t>(n), 80, "a document record");
  for (std::int32_t i = 0; i < n; ++i) dict.documents.push_back(in_.bytes(80, "a document line"));
}

RawExtension RecordReader::readExtension() {
  RawExtension e;
  std::uint64_t at = in_.offset();
  e.subtype = in_.i32();
  e.elementSize = in_.i32();
  e.count = in_.i32();
  if (e.elementSize < 0 || e.count < 0) {
    in_.failAt(at, "extension record (subtype " + std::to_string(e.subtype) + ") with negative size " +
                       std::to_string(e.elementSize) + " or count " + std::to_string(e.count));
  }
  std::uint64_t length = static_cast<std::uint64_t>(e.elementSize) * static_cast<std::uint64_t>(e.count);
  if (length > in_.remaining()) {
    in_.failAt(at, "extension record (subtype " + std::to_string(e.subtype) + ") of " +
                       std::to_string(e.elementSize) + " x " + std::to_string(e.count) + " bytes exceeds the " +
                       std::to_string(in_.remaining()) + " bytes that remain");
  }
  e.dataOffset = in_.offset();
  e.data = in_.bytes(length, "an extension record");
  return e;
}

void RecordReader::readEnd(RawDictionary& dict) {
  if (in_.remaining() < 4) in_.fail("the file ends inside the dictionary termination record");
  std::int32_t filler = in_.i32();
  if (filler != 0) diag_.warn(dict.endOffset + 4, "dictionary termination record has filler " + std::to_string(filler));
  dict.dataOffset = in_.offset();
  if (dict.header.magic != "$FL3") return;
  // A .zsav's zlib header follows; check that it points at itself, as a well-formed file's does.
  std::uint64_t at = in_.offset();
  if (in_.remaining() < 24) {
    diag_.warn(at, "the file ends before the ZLIB header of a .zsav file");
    return;
  }
  std::int64_t zheaderOffset = in_.i64();
  std::int64_t ztrailerOffset = in_.i64();
  std::int64_t ztrailerLength = in_.i64();
  if (zheaderOffset != static_cast<std::int64_t>(at)) {
    diag_.warn(at, "ZLIB header offset " + std::to_string(zheaderOffset) + " is not the header's own offset");
  }
  std::uint64_t size = in_.offset() + in_.remaining();
  if (ztrailerOffset < 0 || ztrailerLength < 0 ||
      static_cast<std::uint64_t>(ztrailerOffset) > size ||
      static_cast<std::uint64_t>(ztrailerLength) > size - static_cast<std::uint64_t>(ztrailerOffset)) {
    diag_.warn(at + 8, "ZLIB trailer lies outside the file");
  }
  dict.dataOffset = in_.offset();
}

}  // namespace savfile
