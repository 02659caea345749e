// TransHostText, the converter of host texts that the dictionary's builders keep for many texts:
// one converter and one buffer give every text what a conversion of its own would give.
#include "core/transhosttext.h"
#include "core/transutil.h"

#include "coretest.h"
#include <transspace/zorb/platform.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using coretest::CoreTest;

class TransHostTextTest : public CoreTest {};

icu::UnicodeString terminated(UChar const* text) { return icu::UnicodeString(text); }

TEST_F(TransHostTextTest, EveryTextConvertsAsOnItsOwnWhateverCameBefore) {
  // Long after short after long: the buffer grows and is reused, and no text keeps anything of
  // the one before it (a shorter text is not padded with the longer one's rest).
  std::vector<std::string> const texts = {std::string(3000, 'x') + "\xC3\xA9",
                                          "a",
                                          "",
                                          "\xE4\xB8\xAD\xF0\x9F\x98\x80",
                                          "a\xFF"
                                          "b",
                                          std::string(10, 'y')};
  TransHostText host;
  for (std::string const& text : texts) {
    EXPECT_EQ(host.toUTF16(text.data(), text.size()), TransUtil::MBCStoUTF16(text)) << text.size() << " bytes";
  }
  EXPECT_EQ(host.toUTF16("b", 1), icu::UnicodeString(u"b"));
}

TEST_F(TransHostTextTest, TerminatedTextIsCutAtItsZeroByteAndEndsWithOne) {
  char const bytes[] = "ab\0cd";
  TransHostText host;
  host.toUTF16(std::string(4000, 'z').c_str(), 4000);
  UChar const* text = host.toTerminatedUTF16(bytes);
  EXPECT_EQ(terminated(text), icu::UnicodeString(u"ab"));
  EXPECT_EQ(text[2], 0);
}

TEST_F(TransHostTextTest, EmptyTextIsEmptyAndTerminated) {
  TransHostText host;
  host.toTerminatedUTF16("abc");
  UChar const* text = host.toTerminatedUTF16("");
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text[0], 0);
  EXPECT_TRUE(host.toUTF16("", 0).isEmpty());
}

TEST_F(TransHostTextTest, AStatefulCodePageStartsEveryTextInItsInitialState) {
  // ISO-2022-JP: the first text switches to JIS X 0208 and ends without switching back. Read in
  // that state, "$B" would be one two-byte character; each text starts afresh, so it is ASCII.
  useCodePage("ISO-2022-JP");
  TransHostText host;
  std::string const shifted = "\x1B$B$B";  // escape to JIS X 0208, then HIRAGANA LETTER DI (0x2442)
  EXPECT_EQ(host.toUTF16(shifted.data(), shifted.size()), icu::UnicodeString(u"\u3062"));
  EXPECT_EQ(host.toUTF16("$B", 2), icu::UnicodeString(u"$B"));
}

TEST_F(TransHostTextTest, TheCodePageOfTheFirstConversionIsKept) {
  // One converter for the object's life: a builder's texts all come from one moment's code page.
  useCodePage("windows-1252");
  TransHostText host;
  EXPECT_EQ(terminated(host.toTerminatedUTF16("\xE9")), icu::UnicodeString(u"\u00E9"));
  zorb::SetDefaultCodePage("ISO-8859-7");
  EXPECT_EQ(terminated(host.toTerminatedUTF16("\xE9")), icu::UnicodeString(u"\u00E9"));
  TransHostText later;
  EXPECT_EQ(terminated(later.toTerminatedUTF16("\xE9")), icu::UnicodeString(u"\u03B9"));
}

TEST_F(TransHostTextTest, ACodePageWithoutConverterGivesEmptyTexts) {
  useCodePage("no-such-codepage");
  TransHostText host;
  EXPECT_TRUE(host.toUTF16("abc", 3).isEmpty());
  UChar const* text = host.toTerminatedUTF16("abc");
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text[0], 0);
}

}  // namespace
