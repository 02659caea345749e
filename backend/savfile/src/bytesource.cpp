#include <transspace/savfile/bytesource.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <transspace/savfile/readerror.h>

namespace savfile {

MemoryByteSource::MemoryByteSource(void const* data, std::size_t size)
    : data_(static_cast<unsigned char const*>(data)), size_(data ? size : 0) {}

MemoryByteSource::MemoryByteSource(std::vector<unsigned char> const& bytes)
    : MemoryByteSource(bytes.data(), bytes.size()) {}

MemoryByteSource::MemoryByteSource(std::string const& bytes)
    : MemoryByteSource(bytes.data(), bytes.size()) {}

std::size_t MemoryByteSource::readAt(std::uint64_t offset, void* buffer, std::size_t count) {
  if (offset >= size_) return 0;
  std::size_t n = static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - offset));
  std::memcpy(buffer, data_ + offset, n);
  return n;
}

FileByteSource::FileByteSource(std::string const& path) {
  file_ = std::fopen(path.c_str(), "rb");
  if (!file_) throw ReadError(path, 0, std::string("cannot open the file: ") + std::strerror(errno));
  // The size bounds every allocation the reader makes, so it must be known before reading.
  if (fseeko(file_, 0, SEEK_END) != 0) {
    std::fclose(file_);
    throw ReadError(path, 0, "cannot seek in the file");
  }
  off_t end = ftello(file_);
  size_ = end > 0 ? static_cast<std::uint64_t>(end) : 0;
  position_ = size_;
}

FileByteSource::~FileByteSource() {
  if (file_) std::fclose(file_);
}

std::size_t FileByteSource::readAt(std::uint64_t offset, void* buffer, std::size_t count) {
  if (offset >= size_) return 0;
  if (offset != position_) {
    if (fseeko(file_, static_cast<off_t>(offset), SEEK_SET) != 0) return 0;
    position_ = offset;
  }
  std::size_t n = std::fread(buffer, 1, count, file_);
  position_ += n;
  return n;
}

}  // namespace savfile
