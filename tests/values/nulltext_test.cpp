// Null and text values (TransNullImpl, TransTextImpl), directly and through TransValue.
#include "values/transnullimpl.h"
#include "values/transtextimpl.h"
#include "core/transutf16.h"
#include <transspace/transvalue.h>
#include "valuetestsupport.h"

#include <memory>

#include <gtest/gtest.h>

using namespace valuetest;

namespace {

TransString const kContext("/dictionary");
TransString const kPath("variable");

double parsed(TransString const& string, TransStatus& status) { return TransTextImpl(string).asDouble(status); }

// ---- null ----

// Edge case: a null value gives failure and warning for every slot; asString returns a new
// empty string, never null; asStringList a new empty list.
TEST(TransNullImplTest, EverySlotIsNotApplicable) {
  TransNullImpl const impl;
  expectNotApplicableXMLAndPathSlots(impl, kContext, kPath);

  TransStatus status;
  OwnedString string(impl.asString(status));
  ASSERT_NE(string, nullptr);
  EXPECT_TRUE(string->empty());
  EXPECT_EQ(flags(status), kBoth);

  status = TransStatus();
  EXPECT_EQ(impl.asDouble(status), kNoNumber);
  EXPECT_EQ(flags(status), kBoth);
}

TEST(TransNullImplTest, CloneSwapAndAssignment) {
  TransNullImpl impl;
  std::unique_ptr<TransValueImpl> clone(impl.clone());
  ASSERT_NE(dynamic_cast<TransNullImpl*>(clone.get()), nullptr);
  TransNullImpl other;
  impl.swap(other);
  impl = other;
  TransStatus status;
  EXPECT_EQ(impl.asDouble(status), kNoNumber);
}

TEST(TransNullImplTest, HandleOfDefaultValueAnswersLikeTheImplementation) {
  TransValue const value;
  TransStatus status;
  OwnedList list(value.asStringList(kContext, kPath, status));
  ASSERT_NE(list, nullptr);
  EXPECT_TRUE(list->empty());
  EXPECT_EQ(flags(status), kBoth);
}

// ---- text ----

// Edge case: the text 12 gives 12 with both flags false (from MBCS and from UTF-16 alike).
TEST(TransTextImplTest, NumericTextParses) {
  TransStatus status = dirtyStatus();
  EXPECT_EQ(parsed(TransString("12"), status), 12.0);
  EXPECT_EQ(flags(status), kNone);

  status = dirtyStatus();
  EXPECT_EQ(parsed(TransString(TransUTF16::exported(u"12")), status), 12.0);
  EXPECT_EQ(flags(status), kNone);

  status = dirtyStatus();
  EXPECT_EQ(TransValue(TransString("-2.5")).asDouble(status), -2.5);
  EXPECT_EQ(flags(status), kNone);
}

// Edge case: abc gives the no-number value with both flags true.
TEST(TransTextImplTest, NonNumericTextIsNoNumberWithBothFlags) {
  TransStatus status;
  EXPECT_EQ(parsed(TransString("abc"), status), kNoNumber);
  EXPECT_EQ(flags(status), kBoth);
}

// Edge case: an empty text gives the no-number value with both flags true (and does not assert:
// the local status only warns).
TEST(TransTextImplTest, EmptyTextIsNoNumberWithBothFlags) {
  TransStatus status;
  EXPECT_EQ(parsed(TransString(), status), kNoNumber);
  EXPECT_EQ(flags(status), kBoth);
  status = TransStatus();
  EXPECT_EQ(parsed(TransString(""), status), kNoNumber);
  EXPECT_EQ(flags(status), kBoth);
}

// Deliberate: a text that spells the no-number value itself is reported as a failure.
TEST(TransTextImplTest, TextOfTheNoNumberValueIsReportedAsFailure) {
  TransStatus status;
  EXPECT_EQ(parsed(TransString("-1.7976931348623157E308"), status), kNoNumber);
  EXPECT_EQ(flags(status), kBoth);
}

// The parse follows the C library's numeric locale.
TEST(TransTextImplTest, ParseFollowsTheNumericLocale) {
  NumericLocale locale("de_DE.UTF-8");
  ASSERT_TRUE(locale.available());
  TransStatus status;
  EXPECT_EQ(parsed(TransString("1,5"), status), 1.5);
  EXPECT_EQ(flags(status), kNone);
}

// Edge case: an empty text gives asString a new empty string with warning only.
TEST(TransTextImplTest, EmptyTextAsStringWarnsOnly) {
  TransTextImpl const impl{TransString()};
  TransStatus status = dirtyStatus();
  OwnedString string(impl.asString(status));
  ASSERT_NE(string, nullptr);
  EXPECT_TRUE(string->empty());
  EXPECT_EQ(flags(status), kWarning);
}

TEST(TransTextImplTest, AsStringIsANewCopyOfTheText) {
  TransTextImpl const impl{TransString(TransUTF16::exported(u"Stra\u00dfe"))};
  TransStatus status = dirtyStatus();
  OwnedString string(impl.asString(status));
  EXPECT_EQ(utf16(*string), u"Stra\u00dfe");
  EXPECT_EQ(text(*string),
            "Stra\xc3\x9f"
            "e");
  EXPECT_EQ(flags(status), kNone);
}

// Edge case: asUTF16XML returns a new empty string with both flags; so do the other XML and path
// slots, whose context and path are never looked at.
TEST(TransTextImplTest, XMLAndPathSlotsAreNotApplicable) {
  TransTextImpl const impl{TransString("<a/>")};
  expectNotApplicableXMLAndPathSlots(impl, kContext, kPath);
  TransTextImpl const empty{TransString()};
  expectNotApplicableXMLAndPathSlots(empty, kContext, kPath);
}

// Edge case: clone() of a text value is independent: destroying either leaves the other intact.
TEST(TransTextImplTest, CloneIsIndependent) {
  auto* original = new TransTextImpl(TransString("first"));
  std::unique_ptr<TransValueImpl> clone(original->clone());
  ASSERT_NE(dynamic_cast<TransTextImpl*>(clone.get()), nullptr);
  delete original;
  TransStatus status;
  OwnedString fromClone(clone->asString(status));
  EXPECT_EQ(text(*fromClone), "first");

  auto* second = new TransTextImpl(TransString("second"));
  TransValueImpl* secondClone = second->clone();
  delete secondClone;
  OwnedString fromOriginal(second->asString(status));
  EXPECT_EQ(text(*fromOriginal), "second");
  delete second;
}

TEST(TransTextImplTest, SwapAndAssignmentExchangeTexts) {
  TransTextImpl a{TransString("a")};
  TransTextImpl b{TransString("b")};
  a.swap(b);
  TransStatus status;
  OwnedString fromA(a.asString(status));
  OwnedString fromB(b.asString(status));
  EXPECT_EQ(text(*fromA), "b");
  EXPECT_EQ(text(*fromB), "a");

  a = b;
  OwnedString assigned(a.asString(status));
  EXPECT_EQ(text(*assigned), "a");
}

// The text is a deep copy: changing the caller's string afterwards does not change the value.
TEST(TransTextImplTest, HoldsACopyOfTheString) {
  TransString source("  padded  ");
  TransValue const value(source);
  TransStatus status;
  source.trim(status);
  OwnedString string(value.asString());
  EXPECT_EQ(text(*string), "  padded  ");
}

}  // namespace
