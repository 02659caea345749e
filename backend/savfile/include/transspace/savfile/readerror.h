// The one error the reader throws: the input cannot be read as a system file. Its message names
// the file and the offset at which the problem was found.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace savfile {

class ReadError : public std::runtime_error {
public:
  ReadError(std::string const& fileName, std::uint64_t offset, std::string const& message);

  std::string const& fileName() const { return fileName_; }
  std::uint64_t offset() const { return offset_; }
  // The message without the file name and offset.
  std::string const& reason() const { return reason_; }

  // "<file>: near offset 0x1a4: <message>", the form of errors and warnings alike.
  static std::string describe(std::string const& fileName, std::uint64_t offset, std::string const& message);

private:
  std::string fileName_;
  std::uint64_t offset_;
  std::string reason_;
};

}  // namespace savfile
