#include "textconverter.h"

#include <unicode/ucnv.h>

#include <cctype>
#include <cstring>
#include <stdexcept>
#include <vector>

#include <transspace/zorb/platform.h>

namespace savfile {

namespace {

UConverter* open(std::string const& name) {
  UErrorCode status = U_ZERO_ERROR;
  UConverter* c = ucnv_open(name.c_str(), &status);
  if (U_FAILURE(status)) {
    if (c) ucnv_close(c);
    return nullptr;
  }
  return c;
}

// Code units that XML 1.0 cannot carry: C0 controls but tab, line feed and carriage return, and
// the non-characters U+FFFE and U+FFFF. The dictionary is XML, so such a text could not be exported.
bool unfitForXml(UChar c) { return (c < 0x20 && c != 0x09 && c != 0x0A && c != 0x0D) || c == 0xFFFE || c == 0xFFFF; }

// Whether an alias is a word of letters, a hyphen and then exactly `number`: the form under which
// ICU knows many code pages that have no "windows-" or "cp" name.
bool namesNumber(char const* alias, std::string const& number) {
  char const* hyphen = std::strchr(alias, '-');
  if (hyphen == nullptr || hyphen == alias) return false;
  for (char const* c = alias; c != hyphen; ++c) {
    if (std::isalpha(static_cast<unsigned char>(*c)) == 0) return false;
  }
  return number == hyphen + 1;
}

// The ICU converter that has such an alias, "" if none.
std::string converterNamedByNumber(std::string const& number) {
  for (int32_t i = 0; i < ucnv_countAvailable(); ++i) {
    char const* name = ucnv_getAvailableName(i);
    UErrorCode status = U_ZERO_ERROR;
    uint16_t const aliases = ucnv_countAliases(name, &status);
    for (uint16_t j = 0; U_SUCCESS(status) && j < aliases; ++j) {
      char const* alias = ucnv_getAlias(name, j, &status);
      if (U_SUCCESS(status) && namesNumber(alias, number)) return name;
    }
  }
  return "";
}

std::string printableAscii() {
  std::string s;
  for (char c = 0x20; c < 0x7f; ++c) s += c;
  return s;
}

}  // namespace

TextConverter::TextConverter(std::string const& fromEncoding, std::string const& toEncoding)
    : from_(fromEncoding), to_(toEncoding) {
  source_ = open(fromEncoding);
  target_ = open(toEncoding);
  if (!source_ || !target_) {
    if (source_) ucnv_close(source_);
    if (target_) ucnv_close(target_);
    throw std::runtime_error("cannot open a converter between " + fromEncoding + " and " + toEncoding);
  }
  // Learn whether printable ASCII maps to itself both ways (not so for EBCDIC, for example).
  std::string ascii = printableAscii();
  asciiPassesThrough_ = false;
  asciiPassesThrough_ = convert(ascii) == ascii;
}

TextConverter::~TextConverter() {
  ucnv_close(source_);
  ucnv_close(target_);
}

bool TextConverter::isPrintableAscii(std::string const& text) {
  for (unsigned char c : text) {
    if (c < 0x20 || c >= 0x7f) return false;
  }
  return true;
}

std::string TextConverter::convert(std::string const& text) const {
  if (text.empty()) return text;
  if (asciiPassesThrough_ && isPrintableAscii(text)) return text;
  // Convert through UTF-16 in two steps; invalid input becomes the converters' substitutes.
  std::vector<UChar> utf16(text.size() + 2);
  int32_t n16 = 0;
  for (int attempt = 0; attempt < 2; ++attempt) {
    UErrorCode status = U_ZERO_ERROR;
    ucnv_resetToUnicode(source_);
    n16 = ucnv_toUChars(source_, utf16.data(), static_cast<int32_t>(utf16.size()), text.data(),
                        static_cast<int32_t>(text.size()), &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
      utf16.resize(static_cast<std::size_t>(n16) + 2);
      continue;
    }
    if (U_FAILURE(status)) return std::string();
    break;
  }
  // A blank stands for each such unit: it exists in every code page (a substitution character
  // might itself be a control character, as 0x1A is in windows-1252).
  for (int32_t i = 0; i < n16; ++i) {
    if (unfitForXml(utf16[static_cast<std::size_t>(i)])) {
      utf16[static_cast<std::size_t>(i)] = u' ';
      ++unfitReplaced_;
    }
  }
  std::string out(static_cast<std::size_t>(n16) * 3 + 16, '\0');
  for (int attempt = 0; attempt < 2; ++attempt) {
    UErrorCode status = U_ZERO_ERROR;
    ucnv_resetFromUnicode(target_);
    int32_t n = ucnv_fromUChars(target_, &out[0], static_cast<int32_t>(out.size()), utf16.data(), n16, &status);
    if (status == U_BUFFER_OVERFLOW_ERROR) {
      out.resize(static_cast<std::size_t>(n) + 16);
      continue;
    }
    if (U_FAILURE(status)) return std::string();
    out.resize(static_cast<std::size_t>(n));
    return out;
  }
  return std::string();
}

bool TextConverter::available(std::string const& name) {
  UConverter* c = open(name);
  if (!c) return false;
  ucnv_close(c);
  return true;
}

std::string TextConverter::codePageName(int code) {
  switch (code) {
    case 1: return "cp037";     // EBCDIC
    case 2:                     // "7-bit ASCII", but writers put Windows text under it
    case 3: return "windows-1252";  // "8-bit ASCII"
    case 4: return "cp943";     // DEC Kanji: no better guess than Shift-JIS
    case 65001: return "UTF-8";
    case 20127: return "US-ASCII";
    case 932: return "windows-31j";
    case 936: return "GBK";
    case 949: return "windows-949";
    case 950: return "windows-950";
    default: break;
  }
  if (code <= 0) return "";
  std::string n = std::to_string(code);
  if (code >= 28591 && code <= 28606) return "ISO-8859-" + std::to_string(code - 28590);
  for (std::string candidate : {"windows-" + n, "cp" + n}) {
    if (available(candidate)) return candidate;
  }
  return converterNamedByNumber(n);
}

std::string TextConverter::hostEncoding() {
  return qUTF8mode() != 0 ? std::string("UTF-8") : ZORBMBDefaultCodePage();
}

}  // namespace savfile
