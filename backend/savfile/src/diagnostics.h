// Collects the warnings of one read and makes the errors, both naming the file and an offset.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <transspace/savfile/reader.h>

namespace savfile {

// At most the first 64 bytes of a text from the file, for a message: a warning that names a text
// may be given once per item of a long list, and must not copy a long text every time.
std::string excerpt(std::string const& text);

class Diagnostics {
public:
  explicit Diagnostics(std::string fileName) : fileName_(std::move(fileName)) {}

  std::string const& fileName() const { return fileName_; }
  void warn(std::uint64_t offset, std::string const& message);
  [[noreturn]] void fail(std::uint64_t offset, std::string const& message) const;

  std::vector<Warning> const& warnings() const { return warnings_; }
  std::vector<Warning> takeWarnings() { return std::move(warnings_); }

  // A file built to make noise must not make the warning list grow without end.
  static constexpr std::size_t maxWarnings = 1000;

private:
  std::string fileName_;
  std::vector<Warning> warnings_;
  std::size_t suppressed_ = 0;
};

}  // namespace savfile
