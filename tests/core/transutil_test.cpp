// TransUtil, the conversions between the host's code page and UTF-16 and the
// parse of a UTF-16 number in the C library's numeric locale.
#include "core/transutil.h"

#include "coretest.h"
#include <transspace/zorb/platform.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <clocale>
#include <string>

namespace {

using coretest::CoreTest;

class TransUtilTest : public CoreTest {};

// ---- codepage() ----

TEST_F(TransUtilTest, NoNumberIsTheNegatedLargestFiniteDouble) {
  EXPECT_EQ(TransUtil::noNumber, -DBL_MAX);
  EXPECT_EQ(TransUtil::noNumber, TransValue::noNumber);
}

TEST_F(TransUtilTest, CodepageIsUtf8InUtf8Mode) {
  EXPECT_EQ(TransUtil::codepage(), "UTF-8");
  zorb::SetDefaultCodePage("windows-1252");  // ignored while UTF-8 mode is on
  EXPECT_EQ(TransUtil::codepage(), "UTF-8");
}

TEST_F(TransUtilTest, CodepageIsTheHostDefaultWhenUtf8ModeIsOff) {
  useCodePage("windows-1252");
  EXPECT_EQ(TransUtil::codepage(), "windows-1252");
  zorb::SetDefaultCodePage("no-such-codepage");  // taken as it stands, not validated
  EXPECT_EQ(TransUtil::codepage(), "no-such-codepage");
  // Evaluated afresh on every call: switching the mode back is seen at once.
  zorb::SetUTF8Mode(true);
  EXPECT_EQ(TransUtil::codepage(), "UTF-8");
}

// ---- empty input ----

TEST_F(TransUtilTest, EmptyInputGivesEmptyOutput) {
  EXPECT_TRUE(TransUtil::MBCStoUTF16(std::string()).isEmpty());
  EXPECT_TRUE(TransUtil::UTF16toMBCS(icu::UnicodeString()).empty());
}

TEST_F(TransUtilTest, EmptyInputGivesEmptyOutputAlsoWithAnInvalidCodePage) {
  useCodePage("no-such-codepage");
  icu::UnicodeString const utf16 = TransUtil::MBCStoUTF16(std::string());
  EXPECT_TRUE(utf16.isEmpty());
  EXPECT_FALSE(utf16.isBogus());
  EXPECT_TRUE(TransUtil::UTF16toMBCS(icu::UnicodeString()).empty());
}

// ---- UTF-8 mode ----

TEST_F(TransUtilTest, Utf8BytesPassThroughBothWaysUnchangedInUtf8Mode) {
  // ASCII, Latin-1 (é, ß), a CJK character and a character outside the BMP (a surrogate pair).
  std::string const bytes =
      "abc \xC3\xA9 Stra\xC3\x9F"
      "e \xE4\xB8\xAD \xF0\x9F\x98\x80";
  icu::UnicodeString const utf16 = TransUtil::MBCStoUTF16(bytes);
  EXPECT_EQ(utf16, icu::UnicodeString(u"abc \u00E9 Stra\u00DFe \u4E2D \U0001F600"));
  EXPECT_EQ(TransUtil::UTF16toMBCS(utf16), bytes);
}

TEST_F(TransUtilTest, Utf16ToUtf8InUtf8Mode) {
  EXPECT_EQ(TransUtil::UTF16toMBCS(icu::UnicodeString(u"\u00E9")), "\xC3\xA9");
  EXPECT_EQ(TransUtil::UTF16toMBCS(icu::UnicodeString(u"a")), "a");
}

TEST_F(TransUtilTest, Utf16SourceNeedNotBeTerminated) {
  // A sub-range of a longer text: the length is passed, so only those units are converted.
  icu::UnicodeString const text(u"abcdef");
  icu::UnicodeString const part(text, 1, 3);  // "bcd"
  EXPECT_EQ(TransUtil::UTF16toMBCS(part), "bcd");
}

TEST_F(TransUtilTest, InvalidUtf8IsSubstitutedNotAFailure) {
  // ICU's default to-Unicode callback substitutes U+FFFD for an illegal byte: only a failure code
  // empties the result, and substitution is not one.
  EXPECT_EQ(TransUtil::MBCStoUTF16("a\xFF"
                                   "b"),
            icu::UnicodeString(u"a\uFFFDb"));
}

TEST_F(TransUtilTest, LongTextConvertsInOneGo) {
  // 3-byte UTF-8 characters: the UTF-16 result (1 unit per 3 bytes) and the MBCS result (3 bytes
  // per unit) both fit the buffers sized from the input length.
  std::string bytes;
  icu::UnicodeString expected;
  for (int i = 0; i < 5000; ++i) {
    bytes += "\xE4\xB8\xAD";
    expected.append(static_cast<UChar>(0x4E2D));
  }
  EXPECT_EQ(TransUtil::MBCStoUTF16(bytes), expected);
  EXPECT_EQ(TransUtil::UTF16toMBCS(expected), bytes);
}

// ---- a non-UTF-8 code page ----

TEST_F(TransUtilTest, Windows1252ConvertsOneByteCharacters) {
  useCodePage("windows-1252");
  EXPECT_EQ(TransUtil::MBCStoUTF16("\xE9"), icu::UnicodeString(u"\u00E9"));
  EXPECT_EQ(TransUtil::UTF16toMBCS(icu::UnicodeString(u"\u00E9")), "\xE9");
  // 0x80 is the euro sign in windows-1252 (not in ISO-8859-1).
  EXPECT_EQ(TransUtil::MBCStoUTF16("caf\xE9 \x80"), icu::UnicodeString(u"caf\u00E9 \u20AC"));
  EXPECT_EQ(TransUtil::UTF16toMBCS(icu::UnicodeString(u"caf\u00E9 \u20AC")), "caf\xE9 \x80");
}

TEST_F(TransUtilTest, Iso88591ConvertsOneByteCharacters) {
  useCodePage("ISO-8859-1");
  EXPECT_EQ(TransUtil::MBCStoUTF16("\xE9"), icu::UnicodeString(u"\u00E9"));
  EXPECT_EQ(TransUtil::UTF16toMBCS(icu::UnicodeString(u"\u00E9")), "\xE9");
  EXPECT_EQ(TransUtil::MBCStoUTF16("Stra\xDF"
                                   "e"),
            icu::UnicodeString(u"Stra\u00DFe"));
}

TEST_F(TransUtilTest, CharacterNotInTheCodePageIsSubstituted) {
  // U+4E2D is in neither code page, the euro sign not in ISO-8859-1: ICU's default from-Unicode
  // callback writes the code page's substitution byte (0x1A, SUB) and reports no failure, so the
  // result is kept, one byte per character.
  useCodePage("ISO-8859-1");
  EXPECT_EQ(TransUtil::UTF16toMBCS(icu::UnicodeString(u"a\u4E2D\u20ACb")),
            "a\x1A\x1A"
            "b");
  zorb::SetDefaultCodePage("windows-1252");
  EXPECT_EQ(TransUtil::UTF16toMBCS(icu::UnicodeString(u"a\u4E2D\u20ACb")),
            "a\x1A\x80"
            "b");
  // A surrogate pair is one character and gets one substitution byte.
  EXPECT_EQ(TransUtil::UTF16toMBCS(icu::UnicodeString(u"\U0001F600")), "\x1A");
}

TEST_F(TransUtilTest, Utf8BytesAreReadAsCodePageBytesWhenUtf8ModeIsOff) {
  useCodePage("windows-1252");
  // The two bytes of UTF-8 é are two windows-1252 characters.
  EXPECT_EQ(TransUtil::MBCStoUTF16("\xC3\xA9"), icu::UnicodeString(u"\u00C3\u00A9"));
}

// ---- an invalid converter name ----

TEST_F(TransUtilTest, InvalidConverterNameGivesEmptyResults) {
  useCodePage("no-such-codepage");
  icu::UnicodeString const utf16 = TransUtil::MBCStoUTF16("abc");
  EXPECT_TRUE(utf16.isEmpty());
  EXPECT_FALSE(utf16.isBogus());
  EXPECT_TRUE(TransUtil::UTF16toMBCS(icu::UnicodeString(u"abc")).empty());
}

// ---- UTF16toDouble ----

TEST_F(TransUtilTest, IntegerTextParses) { EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"12")), 12.0); }

TEST_F(TransUtilTest, DecimalWithFullStopParsesInTheCLocale) {
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"1.5")), 1.5);
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"-0.25")), -0.25);
}

TEST_F(TransUtilTest, TrailingTextIsIgnored) {
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"12abc")), 12.0);
}

TEST_F(TransUtilTest, TextWithoutLeadingNumberGivesNoNumber) {
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"abc")), TransUtil::noNumber);
}

TEST_F(TransUtilTest, EmptyTextGivesNoNumber) {
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString()), TransUtil::noNumber);
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"")), TransUtil::noNumber);
}

TEST_F(TransUtilTest, LargeIntegersParse) {
  // Beyond 32 bits: ICU's 64-bit integer type, converted to double.
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"12345678901")), 12345678901.0);
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"-7")), -7.0);
}

TEST_F(TransUtilTest, DecimalCommaParsesUnderAGermanNumericLocale) {
  useLocale(LC_NUMERIC, "de_DE.UTF-8");
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"1,5")), 1.5);
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"12")), 12.0);
  // The full stop groups thousands there.
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"1.234,5")), 1234.5);
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"abc")), TransUtil::noNumber);
}

TEST_F(TransUtilTest, ParseFollowsLcNumericNotLcCtype) {
  // A German character-type locale with the C numeric locale: the full stop is still the decimal
  // separator, and the decimal comma is not.
  useLocale(LC_CTYPE, "de_DE.UTF-8");
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"1.5")), 1.5);
  EXPECT_NE(TransUtil::UTF16toDouble(icu::UnicodeString(u"1,5")), 1.5);
  // The numeric locale is read at each call: switching it is seen at once, and back again.
  useLocale(LC_NUMERIC, "de_DE.UTF-8");
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"1,5")), 1.5);
  useLocale(LC_NUMERIC, "C");
  EXPECT_EQ(TransUtil::UTF16toDouble(icu::UnicodeString(u"1.5")), 1.5);
}

TEST_F(TransUtilTest, CurrentLocaleIsTheCanonicalFormOfTheCLocaleName) {
  useLocale(LC_CTYPE, "tr_TR.UTF-8");
  EXPECT_STREQ(TransUtil::currentLocale(LC_CTYPE).getLanguage(), "tr");
  EXPECT_STREQ(TransUtil::currentLocale(LC_CTYPE).getCountry(), "TR");
  EXPECT_STREQ(TransUtil::currentLocale(LC_NUMERIC).getCountry(), "");  // still "C"
}

}  // namespace
