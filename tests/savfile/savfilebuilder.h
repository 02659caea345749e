// Builds system files in memory, record by record, in either byte order: the unit tests make
// well-formed and malformed files with it, and the benchmark makes large dictionaries.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace savfiletest {

class SavFileBuilder {
public:
  explicit SavFileBuilder(bool bigEndian = false) : big_(bigEndian) {}

  // Header fields.
  std::string magic = "$FL2";
  std::string product = "@(#) transspace test builder";
  std::int32_t layoutCode = 2;
  // Stated in the header; by default the number of variable records, as a careful writer states it.
  std::optional<std::int32_t> nominalCaseSize;
  std::int32_t compression = 1;
  std::int32_t weightIndex = 0;
  std::int32_t caseCount = -1;
  double bias = 100.0;
  std::string date = "21 Nov 26";
  std::string time = "06:03:40";
  std::string fileLabel;

  bool bigEndian() const { return big_; }

  std::string i32(std::int32_t v) const { return bytes(static_cast<std::uint64_t>(static_cast<std::uint32_t>(v)), 4); }
  std::string i64(std::int64_t v) const { return bytes(static_cast<std::uint64_t>(v), 8); }
  std::string f64(double d) const {
    std::uint64_t bits;
    std::memcpy(&bits, &d, sizeof bits);
    return bytes(bits, 8);
  }
  static std::string padded(std::string s, std::size_t n, char pad = ' ') {
    s.resize(n, pad);
    return s;
  }
  static std::int32_t format(int type, int width, int decimals) { return (type << 16) | (width << 8) | decimals; }

  // One type-2 record (no continuations): the caller decides everything, for malformed files.
  SavFileBuilder& variableRecord(std::int32_t type, std::string const& name, std::string const* label,
                                 std::int32_t missingCode, std::vector<std::string> const& missing,
                                 std::int32_t print, std::int32_t write) {
    std::string r = i32(2) + i32(type) + i32(label ? 1 : 0) + i32(missingCode) + i32(print) + i32(write) + padded(name, 8);
    if (label) r += i32(static_cast<std::int32_t>(label->size())) + padded(*label, (label->size() + 3) / 4 * 4);
    for (auto const& m : missing) r += m;
    body_ += r;
    ++records_;
    return *this;
  }
  SavFileBuilder& numeric(std::string const& name, std::string const* label = nullptr, std::int32_t missingCode = 0,
                          std::vector<double> const& missing = {}, std::int32_t fmt = format(5, 8, 2)) {
    std::vector<std::string> raw;
    for (double d : missing) raw.push_back(f64(d));
    return variableRecord(0, name, label, missingCode, raw, fmt, fmt);
  }
  // A string of up to 255 bytes with its continuation records.
  SavFileBuilder& string(std::string const& name, int width, std::string const* label = nullptr,
                         std::vector<std::string> const& missing = {}) {
    std::vector<std::string> raw;
    for (auto const& m : missing) raw.push_back(padded(m, 8));
    variableRecord(width, name, label, static_cast<std::int32_t>(missing.size()), raw, format(1, width, 0), format(1, width, 0));
    for (int k = 1; k < (width + 7) / 8; ++k) variableRecord(-1, "", nullptr, 0, {}, 0, 0);
    return *this;
  }
  // A string wider than 255 bytes: one 255-byte string record (with continuations) per segment but
  // the last, named by `segmentNames` in turn; the caller gives each segment the label.
  SavFileBuilder& veryLongString(std::vector<std::string> const& segmentNames, int lastSegmentWidth,
                                 std::string const* label = nullptr) {
    for (std::size_t k = 0; k < segmentNames.size(); ++k) {
      string(segmentNames[k], k + 1 < segmentNames.size() ? 255 : lastSegmentWidth, label);
    }
    return *this;
  }
  // Width w takes (w + 251) / 252 segments; the last holds what the others leave.
  static int segmentCount(int width) { return (width + 251) / 252; }
  static int lastSegmentWidth(int width) { return width - (segmentCount(width) - 1) * 252; }
  int records() const { return records_; }

  SavFileBuilder& valueLabels(std::vector<std::pair<std::string, std::string>> const& labels,
                              std::vector<std::int32_t> const& indices) {
    std::string r = i32(3) + i32(static_cast<std::int32_t>(labels.size()));
    for (auto const& l : labels) {
      std::string entry = std::string(1, static_cast<char>(l.second.size())) + l.second;
      r += padded(l.first, 8) + padded(entry, (entry.size() + 7) / 8 * 8);
    }
    r += i32(4) + i32(static_cast<std::int32_t>(indices.size()));
    for (auto i : indices) r += i32(i);
    body_ += r;
    return *this;
  }
  SavFileBuilder& documents(std::vector<std::string> const& lines) {
    body_ += i32(6) + i32(static_cast<std::int32_t>(lines.size()));
    for (auto const& l : lines) body_ += padded(l, 80);
    return *this;
  }
  SavFileBuilder& extension(std::int32_t subtype, std::int32_t size, std::int32_t count, std::string const& data) {
    body_ += i32(7) + i32(subtype) + i32(size) + i32(count) + data;
    return *this;
  }
  SavFileBuilder& text(std::int32_t subtype, std::string const& data) {
    return extension(subtype, 1, static_cast<std::int32_t>(data.size()), data);
  }
  SavFileBuilder& integers(std::int32_t subtype, std::vector<std::int32_t> const& values) {
    std::string data;
    for (auto v : values) data += i32(v);
    return extension(subtype, 4, static_cast<std::int32_t>(values.size()), data);
  }
  SavFileBuilder& raw(std::string const& bytes) {
    body_ += bytes;
    return *this;
  }

  std::string header() const {
    std::string h = padded(magic, 4) + padded(product, 60) + i32(layoutCode) + i32(nominalCaseSize.value_or(records_)) + i32(compression) +
                    i32(weightIndex) + i32(caseCount) + f64(bias) + padded(date, 9) + padded(time, 8) +
                    padded(fileLabel, 64) + std::string(3, '\0');
    return h;
  }
  std::string build() const { return header() + body_ + i32(999) + i32(0); }
  // Without the termination record, for truncation tests.
  std::string buildUnterminated() const { return header() + body_; }

private:
  std::string bytes(std::uint64_t v, int n) const {
    std::string s(static_cast<std::size_t>(n), '\0');
    for (int i = 0; i < n; ++i) {
      int shift = big_ ? 8 * (n - 1 - i) : 8 * i;
      s[static_cast<std::size_t>(i)] = static_cast<char>((v >> shift) & 0xff);
    }
    return s;
  }

  bool big_;
  std::string body_;
  int records_ = 0;
};

}  // namespace savfiletest
