// Sequential, bounds-checked reading from a ByteSource in the file's byte order. Every read checks
// the bytes that remain first, so a count taken from the file can never make the reader allocate
// more than the file holds or read past its end.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "byteorder.h"
#include "diagnostics.h"
#include <transspace/savfile/bytesource.h>

namespace savfile {

class Cursor {
public:
  Cursor(ByteSource& source, Diagnostics& diagnostics);

  std::uint64_t offset() const { return offset_; }
  std::uint64_t remaining() const { return size_ - offset_; }
  bool atEnd() const { return offset_ >= size_; }
  ByteOrder const& order() const { return order_; }
  void setOrder(ByteOrder order) { order_ = order; }

  std::int32_t i32();
  std::int64_t i64();
  double f64();
  std::uint8_t u8();
  // Exactly n bytes; fails (naming `what`) when fewer remain.
  std::string bytes(std::uint64_t n, char const* what = "data");
  void skip(std::uint64_t n, char const* what = "data");
  // Fails unless n items of itemSize bytes each remain (itemSize >= 1); checked without overflow.
  void require(std::uint64_t n, std::uint64_t itemSize, char const* what);

  [[noreturn]] void fail(std::string const& message) const { diagnostics_.fail(offset_, message); }
  [[noreturn]] void failAt(std::uint64_t offset, std::string const& message) const {
    diagnostics_.fail(offset, message);
  }

private:
  void fill(void* dst, std::uint64_t n, char const* what);

  ByteSource& source_;
  Diagnostics& diagnostics_;
  ByteOrder order_;
  std::uint64_t size_;
  std::uint64_t offset_ = 0;
  // A read-ahead window, so that a dictionary of many small records costs few source calls.
  std::vector<char> window_;
  std::uint64_t windowStart_ = 0;
  std::size_t windowLength_ = 0;
};

}  // namespace savfile
