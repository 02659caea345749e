#include "textscanner.h"

#include <cstring>

namespace savfile {

bool TextScanner::accept(char c) {
  if (atEnd() || text_[pos_] != c) return false;
  ++pos_;
  return true;
}

std::string TextScanner::until(char c) {
  std::size_t end = text_.find(c, pos_);
  if (end == std::string::npos) end = text_.size();
  std::string s = text_.substr(pos_, end - pos_);
  pos_ = end;
  return s;
}

std::string TextScanner::untilAny(char const* stops) {
  std::size_t end = pos_;
  // (strchr would also find the terminating NUL: a NUL byte in the text is no stop.)
  while (end < text_.size() && (text_[end] == '\0' || !std::strchr(stops, text_[end]))) ++end;
  std::string s = text_.substr(pos_, end - pos_);
  pos_ = end;
  return s;
}

bool TextScanner::number(std::uint32_t& value) {
  std::size_t start = pos_;
  std::uint32_t v = 0;
  while (!atEnd() && text_[pos_] >= '0' && text_[pos_] <= '9' && pos_ - start < 9) {
    v = v * 10 + static_cast<std::uint32_t>(text_[pos_] - '0');
    ++pos_;
  }
  if (pos_ == start) return false;
  value = v;
  return true;
}

bool TextScanner::take(std::size_t n, std::string& out) {
  if (n > text_.size() - pos_) return false;
  out = text_.substr(pos_, n);
  pos_ += n;
  return true;
}

void TextScanner::skipPast(char c) {
  std::size_t end = text_.find(c, pos_);
  pos_ = end == std::string::npos ? text_.size() : end + 1;
}

std::string trimmed(std::string const& s, bool leading) {
  auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\0'; };
  std::size_t end = s.size();
  while (end > 0 && blank(s[end - 1])) --end;
  std::size_t start = 0;
  if (leading) {
    while (start < end && blank(s[start])) ++start;
  }
  return s.substr(start, end - start);
}

}  // namespace savfile
