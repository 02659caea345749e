#include "binaryrecords.h"

namespace savfile {

namespace {

// Bounds-checked reading inside one record's data.
class RecordData {
public:
  RecordData(std::string const& data, ByteOrder order, std::uint64_t offset)
      : data_(data), order_(order), base_(offset) {}

  bool atEnd() const { return pos_ >= data_.size(); }
  std::size_t left() const { return data_.size() - pos_; }
  std::uint64_t offset() const { return base_ + pos_; }
  bool i32(std::int32_t& v) {
    if (left() < 4) return false;
    v = order_.i32(data_.data() + pos_);
    pos_ += 4;
    return true;
  }
  bool u8(std::uint8_t& v) {
    if (left() < 1) return false;
    v = static_cast<std::uint8_t>(data_[pos_++]);
    return true;
  }
  bool bytes(std::int32_t n, std::string& out) {
    if (n < 0 || static_cast<std::size_t>(n) > left()) return false;
    out = data_.substr(pos_, static_cast<std::size_t>(n));
    pos_ += static_cast<std::size_t>(n);
    return true;
  }
  bool peekI32(std::int32_t& v) const {
    if (left() < 4) return false;
    v = order_.i32(data_.data() + pos_);
    return true;
  }

private:
  std::string const& data_;
  ByteOrder order_;
  std::uint64_t base_;
  std::size_t pos_ = 0;
};

bool readLongStringLabels(RecordData& in, RawLongStringLabels& entry) {
  std::int32_t nameLength = 0, count = 0;
  if (!in.i32(nameLength) || !in.bytes(nameLength, entry.variable)) return false;
  if (!in.i32(entry.width) || !in.i32(count)) return false;
  // Each label needs at least its two lengths: this bounds the reservation by the record's size.
  if (count < 0 || static_cast<std::size_t>(count) > in.left() / 8) return false;
  entry.labels.reserve(static_cast<std::size_t>(count));
  for (std::int32_t i = 0; i < count; ++i) {
    std::int32_t valueLength = 0, labelLength = 0;
    std::string value, label;
    if (!in.i32(valueLength) || !in.bytes(valueLength, value)) return false;
    if (!in.i32(labelLength) || !in.bytes(labelLength, label)) return false;
    entry.labels.emplace_back(std::move(value), std::move(label));
  }
  return true;
}

bool readLongStringMissing(RecordData& in, RawLongStringMissing& entry, Diagnostics& diag) {
  std::int32_t nameLength = 0, valueLength = 0;
  std::uint8_t count = 0;
  if (!in.i32(nameLength) || !in.bytes(nameLength, entry.variable)) return false;
  if (!in.u8(count) || !in.i32(valueLength)) return false;
  if (count < 1 || count > 3) diag.warn(in.offset() - 5, "long string missing values: count " + std::to_string(count) + " is not 1 to 3");
  for (int i = 0; i < count; ++i) {
    // Old PSPP wrote the length again before every value after the first.
    std::int32_t repeated = 0;
    if (i > 0 && in.peekI32(repeated) && repeated == valueLength) in.i32(repeated);
    std::string value;
    if (!in.bytes(valueLength, value)) return false;
    if (i < 3) entry.values.push_back(std::move(value));
  }
  return true;
}

}  // namespace

std::vector<RawDisplayParameter> parseDisplayParameters(std::string const& data, std::int32_t elementSize,
                                                        std::int32_t count, std::size_t entries,
                                                        ByteOrder order, std::uint64_t offset, Diagnostics& diag,
                                                        bool warnOnMismatch) {
  std::vector<RawDisplayParameter> result;
  if (elementSize != 4) {
    diag.warn(offset, "display parameter record has element size " + std::to_string(elementSize) + ", not 4: ignored");
    return result;
  }
  std::size_t n = count < 0 ? 0 : static_cast<std::size_t>(count);
  if (data.size() / 4 < n) {
    diag.warn(offset, "display parameter record is shorter than its count: ignored");
    return result;
  }
  bool withWidth = n == 3 * entries;
  if (!withWidth && n != 2 * entries) {
    if (warnOnMismatch) {
      diag.warn(offset, "display parameter record has " + std::to_string(n) + " elements for " +
                            std::to_string(entries) + " variables (expected twice or three times as many): ignored");
    }
    return result;
  }
  result.reserve(entries);
  char const* p = data.data();
  for (std::size_t i = 0; i < entries; ++i) {
    RawDisplayParameter d;
    d.measure = order.i32(p);
    p += 4;
    if (withWidth) {
      d.width = order.i32(p);
      p += 4;
    }
    d.alignment = order.i32(p);
    p += 4;
    result.push_back(d);
  }
  return result;
}

std::vector<RawLongStringLabels> parseLongStringLabels(std::string const& data, ByteOrder order,
                                                       std::uint64_t offset, Diagnostics& diag) {
  std::vector<RawLongStringLabels> result;
  RecordData in(data, order, offset);
  while (!in.atEnd()) {
    RawLongStringLabels entry;
    entry.offset = in.offset();
    if (!readLongStringLabels(in, entry)) {
      diag.warn(entry.offset, "long string value labels: malformed entry; the rest of the record is ignored");
      break;
    }
    result.push_back(std::move(entry));
  }
  return result;
}

std::vector<RawLongStringMissing> parseLongStringMissing(std::string const& data, ByteOrder order,
                                                         std::uint64_t offset, Diagnostics& diag) {
  std::vector<RawLongStringMissing> result;
  RecordData in(data, order, offset);
  while (!in.atEnd()) {
    RawLongStringMissing entry;
    entry.offset = in.offset();
    if (!readLongStringMissing(in, entry, diag)) {
      diag.warn(entry.offset, "long string missing values: malformed entry; the rest of the record is ignored");
      break;
    }
    result.push_back(std::move(entry));
  }
  return result;
}

}  // namespace savfile
