// TransStringList and TransStringListImpl.
#include <transspace/transstringlist.h>
#include "core/transstringlistimpl.h"

#include "coretest.h"
#include <transspace/zorb/platform.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace {

using coretest::CoreTest;
using coretest::u16;
using coretest::us;

class TransStringListTest : public CoreTest {};

TransStringList listOf(std::initializer_list<char16_t const*> texts) {
  TransStringList list;
  for (char16_t const* text : texts) list.push_back(us(text));
  return list;
}

void expectFailureAndWarning(TransStatus const& status) {
  EXPECT_TRUE(status.failure());
  EXPECT_TRUE(status.warning());
}

void expectNoFlag(TransStatus const& status) {
  EXPECT_FALSE(status.failure());
  EXPECT_FALSE(status.warning());
}

TEST_F(TransStringListTest, HandleHoldsExactlyOnePointer) {
  EXPECT_EQ(sizeof(TransStringList), sizeof(void*));
  EXPECT_FALSE(std::is_polymorphic<TransStringList>::value);
}

// ---- the empty list ----

TEST_F(TransStringListTest, EmptyListHasNoElements) {
  TransStringList list;
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(list.size(), 0u);
}

TEST_F(TransStringListTest, ArraysOfAnEmptyListAreNullWithBothFlags) {
  TransStringList list;
  TransStatus status;
  EXPECT_EQ(list.asUTF16Array(status), nullptr);
  expectFailureAndWarning(status);
  status.reset();
  EXPECT_EQ(list.asMBCSArray(status), nullptr);
  expectFailureAndWarning(status);
  // And the same again (nothing was cached by the failed calls).
  EXPECT_EQ(list.asMBCSArray(status), nullptr);
  expectFailureAndWarning(status);
  EXPECT_EQ(list.asUTF16Array(), nullptr);
  EXPECT_EQ(list.asMBCSArray(), nullptr);
}

TEST_F(TransStringListTest, ElementZeroOfAnEmptyListIsNullWithBothFlags) {
  TransStringList list;
  TransStatus status;
  EXPECT_EQ(list.asUTF16(0, status), nullptr);
  expectFailureAndWarning(status);
  status.reset();
  EXPECT_EQ(list.asMBCS(0, status), nullptr);
  expectFailureAndWarning(status);
  EXPECT_EQ(list.asUTF16(0), nullptr);
  EXPECT_EQ(list.asMBCS(0), nullptr);
}

TEST_F(TransStringListTest, IndexOutOfRangeIsNullWithBothFlags) {
  TransStringList list = listOf({u"a", u"b"});
  TransStatus status;
  EXPECT_EQ(list.asUTF16(2, status), nullptr);
  expectFailureAndWarning(status);
  EXPECT_EQ(list.asMBCS(2, status), nullptr);
  expectFailureAndWarning(status);
  EXPECT_EQ(list.asMBCS(static_cast<unsigned long>(-1), status), nullptr);
  expectFailureAndWarning(status);
  // A call in range after a failed one starts from a reset status.
  EXPECT_NE(list.asUTF16(1, status), nullptr);
  expectNoFlag(status);
}

// ---- push_back and access by index ----

TEST_F(TransStringListTest, PushBackAppendsCopiesInOrder) {
  TransStringList list;
  char16_t text[] = u"one";
  TransStatus status;
  status.failure(true);
  status.warning(true);
  list.push_back(us(text), status);
  expectNoFlag(status);  // reset, no flag set
  text[0] = u'X';        // the list holds its own copy
  list.push_back(us(u"two"), status);
  expectNoFlag(status);
  EXPECT_FALSE(list.empty());
  EXPECT_EQ(list.size(), 2u);
  EXPECT_EQ(u16(list.asUTF16(0, status)), icu::UnicodeString(u"one"));
  expectNoFlag(status);
  EXPECT_EQ(u16(list.asUTF16(1, status)), icu::UnicodeString(u"two"));
  EXPECT_STREQ(list.asMBCS(0, status), "one");
  expectNoFlag(status);
  EXPECT_STREQ(list.asMBCS(1), "two");
}

TEST_F(TransStringListTest, NullPointerAppendsAnEmptyText) {
  TransStringList list;
  TransStatus status;
  list.push_back(nullptr, status);
  expectNoFlag(status);
  EXPECT_EQ(list.size(), 1u);
  unsigned short const* units = list.asUTF16(0, status);
  ASSERT_NE(units, nullptr);
  EXPECT_EQ(units[0], 0);
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(status.failure());
  char const* bytes = list.asMBCS(0, status);
  ASSERT_NE(bytes, nullptr);
  EXPECT_STREQ(bytes, "");
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(status.failure());
}

TEST_F(TransStringListTest, ElementsInTheCodePage) {
  TransStringList list = listOf({u"caf\u00E9", u"\u4E2D"});
  EXPECT_STREQ(list.asMBCS(0), "caf\xC3\xA9");
  EXPECT_STREQ(list.asMBCS(1), "\xE4\xB8\xAD");

  useCodePage("windows-1252");
  TransStringList latin = listOf({u"caf\u00E9", u"\u4E2D"});
  TransStatus status;
  EXPECT_STREQ(latin.asMBCS(0, status), "caf\xE9");
  EXPECT_STREQ(latin.asMBCS(1, status), "\x1A");  // substituted, not empty: no flag
  expectNoFlag(status);
}

TEST_F(TransStringListTest, UnconvertibleElementsAreEmptyWithAWarning) {
  useCodePage("no-such-codepage");
  TransStringList list = listOf({u"a", u"b"});
  TransStatus status;
  char const* const* array = list.asMBCSArray(status);
  ASSERT_NE(array, nullptr);
  EXPECT_STREQ(array[0], "");
  EXPECT_STREQ(array[1], "");
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(status.failure());
  EXPECT_STREQ(list.asMBCS(1, status), "");
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(status.failure());
  // The UTF-16 elements are untouched.
  EXPECT_EQ(u16(list.asUTF16(1, status)), icu::UnicodeString(u"b"));
  expectNoFlag(status);
}

// ---- the UTF-16 array ----

TEST_F(TransStringListTest, Utf16ArrayReportsEmptyElementsOnlyWhenBuilt) {
  TransStringList list;
  list.push_back(us(u"a"));
  list.push_back(us(u""));
  list.push_back(us(u"c"));
  EXPECT_EQ(list.size(), 3u);
  TransStatus status;
  unsigned short const* const* first = list.asUTF16Array(status);
  ASSERT_NE(first, nullptr);
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(status.failure());
  EXPECT_EQ(u16(first[0]), icu::UnicodeString(u"a"));
  ASSERT_NE(first[1], nullptr);
  EXPECT_EQ(first[1][0], 0);
  EXPECT_EQ(u16(first[2]), icu::UnicodeString(u"c"));
  unsigned short const* const entries[] = {first[0], first[1], first[2]};

  unsigned short const* const* second = list.asUTF16Array(status);
  expectNoFlag(status);
  ASSERT_EQ(second, first);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(second[i], entries[i]) << i;
}

TEST_F(TransStringListTest, Utf16ArrayPointsAtTheElementsThemselves) {
  TransStringList list = listOf({u"x", u"y"});
  TransStatus status;
  unsigned short const* const* array = list.asUTF16Array(status);
  ASSERT_NE(array, nullptr);
  expectNoFlag(status);
  EXPECT_EQ(list.asUTF16(0, status), array[0]);
  EXPECT_EQ(list.asUTF16(1, status), array[1]);
}

TEST_F(TransStringListTest, Utf16ArrayIsRebuiltAfterPushBack) {
  TransStringList list = listOf({u"a"});
  ASSERT_NE(list.asUTF16Array(), nullptr);
  list.push_back(nullptr);
  TransStatus status;
  unsigned short const* const* array = list.asUTF16Array(status);
  ASSERT_NE(array, nullptr);
  EXPECT_TRUE(status.warning());  // the rebuild sees the new empty element
  EXPECT_EQ(u16(array[0]), icu::UnicodeString(u"a"));
  EXPECT_EQ(array[1][0], 0);
}

// ---- the MBCS array ----

TEST_F(TransStringListTest, SecondMbcsArrayCallReturnsNullWithoutAFlag) {
  TransStringList list = listOf({u"a", u"b"});
  TransStatus status;
  char const* const* first = list.asMBCSArray(status);
  ASSERT_NE(first, nullptr);
  expectNoFlag(status);
  EXPECT_STREQ(first[0], "a");
  EXPECT_STREQ(first[1], "b");

  status.failure(true);
  status.warning(true);
  // Deliberate: the cache is current, so the fill reports false and the call answers null.
  EXPECT_EQ(list.asMBCSArray(status), nullptr);
  expectNoFlag(status);
  EXPECT_EQ(list.asMBCSArray(), nullptr);
  // The array of the first call is still valid.
  EXPECT_STREQ(first[0], "a");
  EXPECT_STREQ(first[1], "b");
}

TEST_F(TransStringListTest, MbcsArrayIsRebuiltAfterPushBack) {
  TransStringList list = listOf({u"a"});
  ASSERT_NE(list.asMBCSArray(), nullptr);
  ASSERT_EQ(list.asMBCSArray(), nullptr);
  list.push_back(us(u"\u00E9"));
  TransStatus status;
  char const* const* array = list.asMBCSArray(status);
  ASSERT_NE(array, nullptr);
  expectNoFlag(status);
  EXPECT_STREQ(array[0], "a");
  EXPECT_STREQ(array[1], "\xC3\xA9");
  EXPECT_EQ(list.asMBCSArray(status), nullptr);
  expectNoFlag(status);
}

TEST_F(TransStringListTest, MbcsArrayWarnsOfEmptyElements) {
  TransStringList list;
  list.push_back(us(u"a"));
  list.push_back(nullptr);
  TransStatus status;
  char const* const* array = list.asMBCSArray(status);
  ASSERT_NE(array, nullptr);
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(status.failure());
  EXPECT_STREQ(array[1], "");
}

TEST_F(TransStringListTest, AsMbcsReturnsTheEntryOfTheMbcsArray) {
  TransStringList list = listOf({u"a", u"b", u"c"});
  char const* const* array = list.asMBCSArray();
  ASSERT_NE(array, nullptr);
  char const* const second = array[1];
  TransStatus status;
  EXPECT_EQ(list.asMBCS(1, status), second);
  expectNoFlag(status);
  EXPECT_EQ(list.asMBCS(1), second);
  EXPECT_EQ(list.asMBCS(0), array[0]);
}

TEST_F(TransStringListTest, AsMbcsBuildsTheArrayWhenNeeded) {
  TransStringList list = listOf({u"a", u"b"});
  char const* const bytes = list.asMBCS(1);
  EXPECT_STREQ(bytes, "b");
  // asMBCS built the cache, so asMBCSArray finds it current and answers null.
  EXPECT_EQ(list.asMBCSArray(), nullptr);
  EXPECT_EQ(list.asMBCS(1), bytes);
  // After a push_back, asMBCS rebuilds and sees the new element.
  list.push_back(us(u"c"));
  EXPECT_STREQ(list.asMBCS(2), "c");
}

TEST_F(TransStringListTest, AsMbcsDropsTheFlagsOfTheFill) {
  // The fill warns of the empty element 1; asMBCS(0) resets and reports on element 0 alone.
  TransStringList list;
  list.push_back(us(u"a"));
  list.push_back(nullptr);
  TransStatus status;
  EXPECT_STREQ(list.asMBCS(0, status), "a");
  expectNoFlag(status);
  EXPECT_STREQ(list.asMBCS(1, status), "");
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(status.failure());
}

TEST_F(TransStringListTest, MbcsFormsFollowTheCodePageOfTheirBuild) {
  // The MBCS cache is rebuilt only when the element count changes, not when the code page does.
  TransStringList list = listOf({u"\u00E9"});
  EXPECT_STREQ(list.asMBCS(0), "\xC3\xA9");
  useCodePage("windows-1252");
  EXPECT_STREQ(list.asMBCS(0), "\xC3\xA9");
  list.push_back(us(u"\u00E9"));
  EXPECT_STREQ(list.asMBCS(0), "\xE9");
  EXPECT_STREQ(list.asMBCS(1), "\xE9");
}

// ---- copy, assignment, swap ----

TEST_F(TransStringListTest, CopyTakesTheElementsButNotTheCaches) {
  TransStringList source = listOf({u"a", u"b"});
  ASSERT_NE(source.asMBCSArray(), nullptr);
  TransStringList copy(source);
  EXPECT_EQ(copy.size(), 2u);
  char const* const* array = copy.asMBCSArray();  // the copy's cache is empty: built afresh
  ASSERT_NE(array, nullptr);
  EXPECT_STREQ(array[1], "b");
  copy.push_back(us(u"c"));
  EXPECT_EQ(source.size(), 2u);
  EXPECT_EQ(copy.size(), 3u);
}

// ICU shares the heap buffer of a long UnicodeString between copies (reference counting) and
// un-shares it on the next getTerminatedBuffer. A copy of the list must not take over the buffers
// that the source's UTF-16 array points into: copying is none of the events that end the
// validity of the source's pointers, and the source's cached array must keep pointing
// at its own elements, also after the copy is gone.
TEST_F(TransStringListTest, CopyLeavesThePointersOfTheSourceValid) {
  char16_t const text[] = u"a text long enough for ICU to keep it in a heap buffer";
  TransStringList source = listOf({text, u"short"});
  unsigned short const* const* array = source.asUTF16Array();
  ASSERT_NE(array, nullptr);
  unsigned short const* const first = array[0];
  {
    TransStringList const copy(source);
    EXPECT_EQ(source.asUTF16(0), first);  // asked while the copy is alive
    EXPECT_EQ(u16(copy.asUTF16(0)), icu::UnicodeString(text));
    TransStringList assigned;
    assigned = source;
    EXPECT_EQ(u16(assigned.asUTF16Array()[0]), icu::UnicodeString(text));
    EXPECT_EQ(source.asUTF16(0), first);
  }
  EXPECT_EQ(source.asUTF16(0), first);
  unsigned short const* const* again = source.asUTF16Array();
  ASSERT_NE(again, nullptr);
  EXPECT_EQ(again[0], source.asUTF16(0));
  EXPECT_EQ(u16(again[0]), icu::UnicodeString(text));
}

TEST_F(TransStringListTest, AssignmentAndSwap) {
  TransStringList a = listOf({u"a"});
  TransStringList b = listOf({u"b1", u"b2"});
  unsigned short const* const* aArray = a.asUTF16Array();
  a.swap(b);
  EXPECT_EQ(a.size(), 2u);
  EXPECT_EQ(b.size(), 1u);
  EXPECT_EQ(b.asUTF16Array(), aArray);  // the pointers go with the list
  a = b;
  EXPECT_EQ(a.size(), 1u);
  EXPECT_EQ(u16(a.asUTF16(0)), icu::UnicodeString(u"a"));
  b.push_back(us(u"more"));
  EXPECT_EQ(a.size(), 1u);
}

TEST_F(TransStringListTest, ImplementationSwapExchangesAllMembers) {
  TransStringListImpl a, b;
  TransStatus status;
  a.push_back(us(u"a"), status);
  b.push_back(us(u"b1"), status);
  b.push_back(us(u"b2"), status);
  char const* const* aArray = a.asMBCSArray(status);
  ASSERT_NE(aArray, nullptr);
  a.swap(b);
  // b now holds a's elements and a's current MBCS cache: its array call answers null.
  EXPECT_EQ(b.size(), 1u);
  EXPECT_EQ(b.asMBCSArray(status), nullptr);
  EXPECT_EQ(b.asMBCS(0, status), aArray[0]);
  EXPECT_NE(a.asMBCSArray(status), nullptr);
}

// ---- ordering ----

TEST_F(TransStringListTest, OrderingIsLexicographicAndCaseSensitive) {
  EXPECT_TRUE(listOf({u"a", u"b"}) < listOf({u"a", u"c"}));
  EXPECT_FALSE(listOf({u"a", u"c"}) < listOf({u"a", u"b"}));
  EXPECT_TRUE(listOf({u"a"}) < listOf({u"a", u"b"}));
  EXPECT_FALSE(listOf({u"a", u"b"}) < listOf({u"a"}));
  EXPECT_TRUE(listOf({u"B"}) < listOf({u"a"}));  // code-unit order: upper case first
  EXPECT_FALSE(listOf({u"a"}) < listOf({u"B"}));
  EXPECT_FALSE(listOf({u"a"}) < listOf({u"A", u"x"}));
  TransStringList same = listOf({u"a", u"b"});
  EXPECT_FALSE(same < same);
  EXPECT_FALSE(listOf({u"a", u"b"}) < listOf({u"a", u"b"}));
  EXPECT_TRUE(TransStringList() < listOf({u""}));
  EXPECT_FALSE(TransStringList() < TransStringList());
  // The first unequal pair decides, whatever follows.
  EXPECT_TRUE(listOf({u"a", u"z", u"z"}) < listOf({u"b"}));
}

TEST_F(TransStringListTest, OrderingIsInUtf16CodeUnits) {
  // U+FF21 is above the high surrogate U+D83D, so in code-unit order the emoji comes first.
  EXPECT_TRUE(listOf({u"\U0001F600"}) < listOf({u"\uFF21"}));
}

}  // namespace
