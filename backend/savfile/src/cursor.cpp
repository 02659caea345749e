#include "cursor.h"

#include <algorithm>
#include <cstring>

namespace savfile {

namespace {
constexpr std::size_t windowSize = 64 * 1024;
}

Cursor::Cursor(ByteSource& source, Diagnostics& diagnostics)
    : source_(source), diagnostics_(diagnostics), size_(source.size()) {}

void Cursor::require(std::uint64_t n, std::uint64_t itemSize, char const* what) {
  std::uint64_t left = remaining();
  if (itemSize == 0) itemSize = 1;
  if (n > left / itemSize) {
    fail(std::string("the file ends inside ") + what + " (" + std::to_string(n) + " x " +
         std::to_string(itemSize) + " bytes needed, " + std::to_string(left) + " remain)");
  }
}

void Cursor::fill(void* dst, std::uint64_t n, char const* what) {
  require(n, 1, what);
  auto* out = static_cast<char*>(dst);
  while (n > 0) {
    bool inWindow = offset_ >= windowStart_ && offset_ < windowStart_ + windowLength_;
    if (!inWindow) {
      if (n >= windowSize) {
        // Large blocks go straight to the destination.
        std::size_t got = source_.readAt(offset_, out, static_cast<std::size_t>(n));
        if (got != n) fail(std::string("cannot read ") + what + " (read error)");
        offset_ += n;
        return;
      }
      window_.resize(windowSize);
      windowStart_ = offset_;
      windowLength_ = source_.readAt(offset_, window_.data(), windowSize);
      if (windowLength_ == 0) fail(std::string("cannot read ") + what + " (read error)");
    }
    std::size_t at = static_cast<std::size_t>(offset_ - windowStart_);
    std::size_t take = static_cast<std::size_t>(std::min<std::uint64_t>(n, windowLength_ - at));
    std::memcpy(out, window_.data() + at, take);
    out += take;
    offset_ += take;
    n -= take;
  }
}

std::int32_t Cursor::i32() {
  char b[4];
  fill(b, 4, "a 32-bit integer");
  return order_.i32(b);
}

std::int64_t Cursor::i64() {
  char b[8];
  fill(b, 8, "a 64-bit integer");
  return order_.i64(b);
}

double Cursor::f64() {
  char b[8];
  fill(b, 8, "a floating-point number");
  return order_.f64(b);
}

std::uint8_t Cursor::u8() {
  unsigned char b;
  fill(&b, 1, "a byte");
  return b;
}

std::string Cursor::bytes(std::uint64_t n, char const* what) {
  require(n, 1, what);
  std::string s(static_cast<std::size_t>(n), '\0');
  if (n) fill(&s[0], n, what);
  return s;
}

void Cursor::skip(std::uint64_t n, char const* what) {
  require(n, 1, what);
  offset_ += n;
}

}  // namespace savfile
