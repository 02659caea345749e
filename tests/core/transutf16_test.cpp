// TransUTF16: the conversion between the exported unsigned short units and ICU's UChar. An ICU
// string made from a pointer that an exported signature returned, through the helper, is the text
// that went in.
#include <transspace/transstring.h>
#include <transspace/transstringlist.h>
#include "core/transutf16.h"

#include "coretest.h"

#include <gtest/gtest.h>

#include <unicode/unistr.h>

namespace {

using coretest::CoreTest;

class TransUTF16Test : public CoreTest {};

// A letter outside ASCII and a character outside the basic plane (a surrogate pair).
icu::UnicodeString const kOriginal(u"Stra\u00dfe \U0001D11E");

TEST_F(TransUTF16Test, ConversionsAreInversesAndKeepNull) {
  UChar const* text = kOriginal.getBuffer();
  EXPECT_EQ(TransUTF16::internal(TransUTF16::exported(text)), text);
  unsigned short const* const none = nullptr;
  EXPECT_EQ(TransUTF16::internal(none), nullptr);
  EXPECT_EQ(TransUTF16::exported(static_cast<UChar const*>(nullptr)), nullptr);
}

TEST_F(TransUTF16Test, ICUStringFromAStringResultEqualsTheOriginal) {
  TransString const string(TransUTF16::exported(kOriginal.getBuffer()));
  TransStatus status;
  EXPECT_EQ(icu::UnicodeString(TransUTF16::internal(string.asUTF16(status))), kOriginal);
  EXPECT_EQ(icu::UnicodeString(TransUTF16::internal(string.asUTF16())), kOriginal);
}

TEST_F(TransUTF16Test, ICUStringFromListResultsEqualsTheOriginal) {
  icu::UnicodeString terminated(kOriginal);
  TransStringList list;
  list.push_back(TransUTF16::exported(terminated.getTerminatedBuffer()));
  TransStatus status;
  EXPECT_EQ(icu::UnicodeString(TransUTF16::internal(list.asUTF16(0, status))), kOriginal);
  EXPECT_EQ(icu::UnicodeString(TransUTF16::internal(list.asUTF16(0))), kOriginal);
  unsigned short const* const* array = list.asUTF16Array(status);
  ASSERT_NE(array, nullptr);
  EXPECT_EQ(icu::UnicodeString(TransUTF16::internal(array[0])), kOriginal);
}

// A string made from MBCS bytes: the UTF-16 form comes from the library's conversion.
TEST_F(TransUTF16Test, ICUStringFromAConvertedResultEqualsTheOriginal) {
  std::string bytes;
  kOriginal.toUTF8String(bytes);
  TransString const string(bytes.c_str());
  EXPECT_EQ(icu::UnicodeString(TransUTF16::internal(string.asUTF16())), kOriginal);
}

}  // namespace
