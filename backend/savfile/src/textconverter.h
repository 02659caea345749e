// Converts text from the file's encoding into the host's multibyte code page with ICU. Lenient:
// bytes that do not decode (for example a multibyte character that the writer cut at a field's
// width) become substitution characters instead of failing the read, and characters that XML 1.0
// cannot carry (control characters such as the vertical tab that word processors put in labels)
// become blanks, counted in unfitReplaced().
#pragma once

#include <cstddef>
#include <memory>
#include <string>

struct UConverter;

namespace savfile {

class TextConverter {
public:
  // Throws std::runtime_error when either converter cannot be opened.
  TextConverter(std::string const& fromEncoding, std::string const& toEncoding);
  ~TextConverter();
  TextConverter(TextConverter const&) = delete;
  TextConverter& operator=(TextConverter const&) = delete;

  std::string convert(std::string const& text) const;
  std::string const& from() const { return from_; }
  // How many characters unfit for XML the conversions so far replaced by blanks.
  std::size_t unfitReplaced() const { return unfitReplaced_; }
  std::string const& to() const { return to_; }

  // Whether ICU can open a converter of that name.
  static bool available(std::string const& name);
  // The ICU name of a Windows code page number from subtype 3's character code, "" if unknown.
  static std::string codePageName(int characterCode);
  // The host's code page: UTF-8 in UTF-8 mode, else the host's default multibyte code page.
  static std::string hostEncoding();

private:
  static bool isPrintableAscii(std::string const& text);

  std::string from_, to_;
  UConverter* source_ = nullptr;
  UConverter* target_ = nullptr;
  // Printable ASCII reads the same in both encodings, so it needs no ICU call: that keeps a
  // dictionary of 100,000 ASCII names cheap.
  bool asciiPassesThrough_ = false;
  mutable std::size_t unfitReplaced_ = 0;
};

}  // namespace savfile
