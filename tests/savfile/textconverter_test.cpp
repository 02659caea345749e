// Which ICU converter a file's character code (subtype 3) selects.
#include "textconverter.h"

#include <gtest/gtest.h>

namespace {

using savfile::TextConverter;

TEST(CodePageName, WindowsAndIsoCodePagesByTheirUsualNames) {
  EXPECT_EQ(TextConverter::codePageName(1252), "windows-1252");
  EXPECT_EQ(TextConverter::codePageName(65001), "UTF-8");
  EXPECT_EQ(TextConverter::codePageName(28605), "ISO-8859-15");
  EXPECT_EQ(TextConverter::codePageName(932), "windows-31j");
}

// Code pages that ICU has under neither a "windows-" nor a "cp" name, only under a word, a hyphen
// and the number, are still found through ICU's aliases.
TEST(CodePageName, CodePagesKnownOnlyUnderAPrefixedAliasAreFound) {
  for (int code : {867, 901, 902, 931, 942}) {
    SCOPED_TRACE(code);
    std::string const name = TextConverter::codePageName(code);
    ASSERT_FALSE(name.empty());
    EXPECT_TRUE(TextConverter::available(name));
  }
}

TEST(CodePageName, UnknownAndMeaninglessCodesGiveNoName) {
  EXPECT_EQ(TextConverter::codePageName(0), "");
  EXPECT_EQ(TextConverter::codePageName(-5), "");
  EXPECT_EQ(TextConverter::codePageName(99999), "");
  EXPECT_EQ(TextConverter::codePageName(12), "");
}

}  // namespace
