// A position in the text of an extension record (raw bytes in the file's encoding), with the
// small steps the text formats of subtypes 5, 7, 13, 14, 17, 18 and 19 are made of. It never reads
// past the end: every step reports failure instead.
#pragma once

#include <cstdint>
#include <string>

namespace savfile {

class TextScanner {
public:
  TextScanner(std::string const& text, std::uint64_t baseOffset) : text_(text), base_(baseOffset) {}

  bool atEnd() const { return pos_ >= text_.size(); }
  std::size_t pos() const { return pos_; }
  // The file offset of the current position, for messages.
  std::uint64_t offset() const { return base_ + pos_; }
  char peek() const { return atEnd() ? '\0' : text_[pos_]; }
  bool accept(char c);
  // The bytes up to (not including) the next `c`, or to the end; the position moves to the `c`.
  std::string until(char c);
  // The bytes up to the next byte that is any of `stops`, or to the end.
  std::string untilAny(char const* stops);
  // A decimal number of at most 9 digits (so it cannot overflow); false if there are none.
  bool number(std::uint32_t& value);
  // Exactly n bytes; false (position unchanged) if fewer remain.
  bool take(std::size_t n, std::string& out);
  void skip(std::size_t n) { pos_ = n > text_.size() - pos_ ? text_.size() : pos_ + n; }
  // Moves past the next `c` (or to the end).
  void skipPast(char c);

private:
  std::string const& text_;
  std::uint64_t base_;
  std::size_t pos_ = 0;
};

// Removes trailing (and, with `leading`, leading) blanks, tabs, CRs and NULs.
std::string trimmed(std::string const& s, bool leading = false);

}  // namespace savfile
