// Decodes the integers and floats of a system file, whose byte order the header decides.
#pragma once

#include <cstdint>
#include <cstring>

namespace savfile {

class ByteOrder {
public:
  explicit ByteOrder(bool bigEndian = false) : big_(bigEndian) {}
  bool bigEndian() const { return big_; }

  std::uint32_t u32(void const* p) const { return static_cast<std::uint32_t>(load(p, 4)); }
  std::int32_t i32(void const* p) const { return static_cast<std::int32_t>(u32(p)); }
  std::uint64_t u64(void const* p) const { return load(p, 8); }
  std::int64_t i64(void const* p) const { return static_cast<std::int64_t>(u64(p)); }
  double f64(void const* p) const {
    std::uint64_t bits = u64(p);
    double d;
    std::memcpy(&d, &bits, sizeof d);
    return d;
  }

private:
  std::uint64_t load(void const* p, int n) const {
    auto const* b = static_cast<unsigned char const*>(p);
    std::uint64_t v = 0;
    for (int i = 0; i < n; ++i) {
      int shift = big_ ? 8 * (n - 1 - i) : 8 * i;
      v |= static_cast<std::uint64_t>(b[i]) << shift;
    }
    return v;
  }

  bool big_;
};

}  // namespace savfile
