#include "diagnostics.h"

#include <transspace/savfile/readerror.h>

namespace savfile {

std::string excerpt(std::string const& text) {
  constexpr std::size_t limit = 64;
  if (text.size() <= limit) return text;
  std::size_t cut = limit;
  // Not inside a UTF-8 sequence (harmless for other encodings: at most three bytes fewer).
  while (cut > limit - 3 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) --cut;
  return text.substr(0, cut) + "...";
}

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
