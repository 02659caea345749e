#include "core/transconfig.h"

#include "core/transhosttext.h"
#include "core/transutil.h"

#include <cstring>
#include <limits>

namespace {

std::size_t const kLongest = (std::numeric_limits<int32_t>::max() - 1) / 2;

}  // namespace

TransHostText::~TransHostText() {
  if (converter_ != nullptr) ucnv_close(converter_);
}

// The converter for the code page of the first call; null when that name is not a usable converter.
UConverter* TransHostText::converter() {
  if (!opened_) converter_ = TransUtil::openHostConverter();
  opened_ = true;
  return converter_;
}

icu::UnicodeString const& TransHostText::toUTF16(char const* text, std::size_t length) {
  converted_.remove();
  // A text too long for one call's buffer (over a gigabyte) does not convert whole either.
  if (length == 0 || length > kLongest || converter() == nullptr) return converted_;
  UErrorCode error = U_ZERO_ERROR;
  // Two units for each byte and the terminator: one call, no retry loop. The converter is reset
  // by each whole-string conversion, so nothing of one text carries over into the next.
  int32_t const bytes = static_cast<int32_t>(length);
  int32_t const capacity = 2 * bytes + 1;
  UChar* buffer = converted_.getBuffer(capacity);
  int32_t written = ucnv_toUChars(converter_, buffer, capacity, text, bytes, &error);
  converted_.releaseBuffer(U_SUCCESS(error) ? written : 0);
  return converted_;
}

UChar const* TransHostText::toTerminatedUTF16(char const* text) {
  toUTF16(text, std::strlen(text));
  return converted_.getTerminatedBuffer();
}
