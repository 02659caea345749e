#include "diagnostics.h"

#include "savfile/readerror.h"

namespace savfile {

void Diagnostics::warn(std::uint64_t offset, std::string const& message) {
  if (warnings_.size() < maxWarnings) {
    warnings_.push_back({offset, message, ReadError::describe(fileName_, offset, message)});
    return;
  }
  if (suppressed_++ == 0) {
    std::string note = "further warnings are not reported";
    warnings_.push_back({offset, note, ReadError::describe(fileName_, offset, note)});
  }
}

void Diagnostics::fail(std::uint64_t offset, std::string const& message) const {
  throw ReadError(fileName_, offset, message);
}

}  // namespace savfile
