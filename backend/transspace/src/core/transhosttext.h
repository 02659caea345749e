// TransHostText: converts texts in the host's multibyte code page to UTF-16 with one converter,
// opened at the first conversion for the code page of that moment, and one buffer reused from
// call to call. A builder converts thousands of short texts; opening a converter and allocating
// a string for each of them was most of what converting them cost.
#pragma once

#include <cstddef>

#include <unicode/ucnv.h>
#include <unicode/unistr.h>

class TransHostText {
public:
  TransHostText() = default;
  ~TransHostText();
  TransHostText(TransHostText const&) = delete;
  TransHostText& operator=(TransHostText const&) = delete;

  // `length` bytes of host text in UTF-16, valid until the next call. Empty when the code page has
  // no converter or the text does not convert whole: a partial conversion is never handed out.
  icu::UnicodeString const& toUTF16(char const* text, std::size_t length);
  // A zero-terminated host text, zero-terminated in UTF-16 (so cut at an embedded zero byte).
  UChar const* toTerminatedUTF16(char const* text);

private:
  UConverter* converter();

  bool opened_ = false;
  UConverter* converter_ = nullptr;
  icu::UnicodeString converted_;
};
