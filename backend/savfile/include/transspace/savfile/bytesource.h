// Where the reader gets its bytes from: a file or a buffer in memory. Tests and the fuzzer read
// from memory, so they never touch the disk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace savfile {

class ByteSource {
public:
  virtual ~ByteSource() = default;
  // Total number of bytes the source holds.
  virtual std::uint64_t size() const = 0;
  // Copies up to `count` bytes starting at `offset` into `buffer`; returns how many were copied
  // (fewer only at the end of the source or on an I/O error).
  virtual std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) = 0;
};

// A buffer in memory. The bytes are not copied: they must outlive the source.
class MemoryByteSource : public ByteSource {
public:
  MemoryByteSource(void const* data, std::size_t size);
  explicit MemoryByteSource(std::vector<unsigned char> const& bytes);
  explicit MemoryByteSource(std::string const& bytes);

  std::uint64_t size() const override { return size_; }
  std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override;

private:
  unsigned char const* data_;
  std::size_t size_;
};

// A file on disk, opened for reading. Throws savfile::ReadError when it cannot be opened.
class FileByteSource : public ByteSource {
public:
  explicit FileByteSource(std::string const& path);
  ~FileByteSource() override;
  FileByteSource(FileByteSource const&) = delete;
  FileByteSource& operator=(FileByteSource const&) = delete;

  std::uint64_t size() const override { return size_; }
  std::size_t readAt(std::uint64_t offset, void* buffer, std::size_t count) override;

private:
  std::FILE* file_ = nullptr;
  std::uint64_t size_ = 0;
  std::uint64_t position_ = 0;  // where the next fread would read without a seek
};

}  // namespace savfile
