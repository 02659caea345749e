#include <transspace/savfile/readerror.h>

#include <cstdio>

namespace savfile {

ReadError::ReadError(std::string const& fileName, std::uint64_t offset, std::string const& message)
    : std::runtime_error(describe(fileName, offset, message)),
      fileName_(fileName),
      offset_(offset),
      reason_(message) {}

std::string ReadError::describe(std::string const& fileName, std::uint64_t offset,
                                std::string const& message) {
  char hex[32];
  std::snprintf(hex, sizeof hex, "0x%llx", static_cast<unsigned long long>(offset));
  return fileName + ": near offset " + hex + ": " + message;
}

}  // namespace savfile
