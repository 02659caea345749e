// TransUtil: conversions between the host's multibyte code page and UTF-16, and the
// parse of a UTF-16 number in the C library's numeric locale. Exported, but not a public header.
#pragma once

#include <transspace/transexport.h>
#include <transspace/transvalue.h>

#include <string>
#include <unicode/locid.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>

class TRANS_EXPORT TransUtil {
public:
  // The no-number value (TransValue::noNumber), the name the value kinds use.
  static constexpr double noNumber = TransValue::noNumber;

  static std::string codepage();
  // A converter for the current code page, to be closed by the caller; null when the code page's
  // name is not a usable converter.
  static UConverter* openHostConverter();
  static icu::UnicodeString MBCStoUTF16(std::string const& text);
  static std::string UTF16toMBCS(icu::UnicodeString const& text);
  static double UTF16toDouble(icu::UnicodeString const& text);
  // ICU's canonical form of the C library's current locale name for a category (LC_CTYPE, ...),
  // read afresh on each call: the library follows the process's locale at the moment of a call.
  static icu::Locale currentLocale(int category);
  // A copy with a buffer of its own. ICU's copy shares a long text's heap buffer (reference
  // counting) and un-shares it at the next getTerminatedBuffer, which would move the source's text
  // away from pointers it handed out before; the strings and lists copy with this instead.
  static icu::UnicodeString unsharedCopy(icu::UnicodeString const& text);
};
