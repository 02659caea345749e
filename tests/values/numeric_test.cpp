// Numeric values (TransDoubleImpl, TransIntegerImpl) and their formatting with the
// decimal pattern "#0.###".
#include "values/transdoubleimpl.h"
#include "values/transintegerimpl.h"
#include <transspace/transvalue.h>
#include "valuetestsupport.h"

#include <cstdint>
#include <limits>
#include <memory>

#include <gtest/gtest.h>

using namespace valuetest;

namespace {

TransString const kContext("/");
TransString const kPath(".");

std::string xmlText(double number, TransStatus& status) {
  OwnedString string(TransDoubleImpl(number).asXMLString(status));
  EXPECT_NE(string, nullptr);
  return text(*string);
}

std::string localText(double number, TransStatus& status) {
  OwnedString string(TransDoubleImpl(number).asString(status));
  return text(*string);
}

std::string integerText(long number, TransStatus& status) {
  OwnedString string(TransIntegerImpl(number).asString(status));
  return text(*string);
}

// ---- the pattern "#0.###" through asXMLString ----

// Edge case: 2.5, 3.0, 1234567.891 and 0.12345 through asXMLString, both flags false each time.
TEST(TransDoubleImplTest, XMLStringFollowsThePattern) {
  struct Case {
    double number;
    char const* expected;
  };
  for (Case const& c : {Case{2.5, "2.5"}, Case{3.0, "3"}, Case{1234567.891, "1234567.891"}, Case{0.12345, "0.123"}}) {
    TransStatus status = dirtyStatus();
    EXPECT_EQ(xmlText(c.number, status), c.expected) << c.number;
    EXPECT_EQ(flags(status), kNone) << c.number;
  }
}

TEST(TransDoubleImplTest, XMLStringDetailsOfThePattern) {
  TransStatus status;
  EXPECT_EQ(xmlText(0.5, status), "0.5");      // at least one integer digit
  EXPECT_EQ(xmlText(0.125, status), "0.125");  // three fraction digits kept
  EXPECT_EQ(xmlText(2.50, status), "2.5");     // trailing zeros dropped
  EXPECT_EQ(xmlText(0.0, status), "0");
  EXPECT_EQ(xmlText(-2.5, status), "-2.5");
  EXPECT_EQ(xmlText(1e20, status), "100000000000000000000");  // no exponent, no grouping
  EXPECT_EQ(xmlText(0.0625, status), "0.062");                // half-even (half-up would give 0.063)
  EXPECT_EQ(xmlText(0.0001, status), "0");
  EXPECT_EQ(flags(status), kNone);
}

// The no-number value gets no special treatment: it is written out in full like any number.
TEST(TransDoubleImplTest, NoNumberIsFormattedLikeAnyNumber) {
  TransStatus status;
  std::string const written = xmlText(kNoNumber, status);
  EXPECT_EQ(written.substr(0, 18), "-17976931348623157");
  EXPECT_EQ(written.size(), 310u);  // the minus sign and 309 digits
  EXPECT_EQ(flags(status), kNone);
}

TEST(TransDoubleImplTest, AsStringInTheCLocaleUsesAPoint) {
  NumericLocale locale("C");
  TransStatus status = dirtyStatus();
  EXPECT_EQ(localText(2.5, status), "2.5");
  EXPECT_EQ(flags(status), kNone);
  OwnedString viaHandle(TransValue(1234567.891).asString());
  EXPECT_EQ(text(*viaHandle), "1234567.891");
}

// Edge case: 1.5 under a decimal-comma numeric locale gives 1,5 through asString; asXMLString
// keeps the point.
TEST(TransDoubleImplTest, AsStringFollowsTheNumericLocaleButXMLStringDoesNot) {
  NumericLocale locale("de_DE.UTF-8");
  ASSERT_TRUE(locale.available());
  TransStatus status;
  EXPECT_EQ(localText(1.5, status), "1,5");
  EXPECT_EQ(flags(status), kNone);
  EXPECT_EQ(xmlText(1.5, status), "1.5");
  EXPECT_EQ(flags(status), kNone);
  EXPECT_EQ(localText(1234567.891, status), "1234567,891");  // no grouping in any locale

  OwnedString viaHandle(TransValue(1.5).asString());
  EXPECT_EQ(text(*viaHandle), "1,5");
}

TEST(TransDoubleImplTest, AsStringWithAnExplicitLocale) {
  TransStatus status;
  OwnedString german(TransDoubleImpl(2.5).asString(icu::Locale::getGermany(), status));
  EXPECT_EQ(text(*german), "2,5");
  OwnedString english(TransDoubleImpl(2.5).asString(icu::Locale::getEnglish(), status));
  EXPECT_EQ(text(*english), "2.5");
  EXPECT_EQ(flags(status), kNone);
}

// Edge case: asDouble of the no-number value warns (no failure) and still returns it; any other
// number sets no flag.
TEST(TransDoubleImplTest, AsDoubleFlagsOnlyTheNoNumberValue) {
  TransStatus status = dirtyStatus();
  EXPECT_EQ(TransDoubleImpl(kNoNumber).asDouble(status), kNoNumber);
  EXPECT_EQ(flags(status), kWarning);

  for (double number :
       {0.0, 2.5, -1e308, std::numeric_limits<double>::max(), -std::numeric_limits<double>::max() / 2}) {
    status = dirtyStatus();
    EXPECT_EQ(TransDoubleImpl(number).asDouble(status), number);
    EXPECT_EQ(flags(status), kNone) << number;
  }

  status = TransStatus();
  EXPECT_EQ(TransValue(kNoNumber).asDouble(status), kNoNumber);  // the handle's double kind
  EXPECT_EQ(flags(status), kWarning);
}

// Edge case: every XML and path slot returns its placeholder with both flags, never null.
TEST(TransDoubleImplTest, XMLAndPathSlotsAreNotApplicable) {
  expectNotApplicableXMLAndPathSlots(TransDoubleImpl(1.0), kContext, kPath);
}

TEST(TransDoubleImplTest, CloneSwapAndAssignment) {
  TransDoubleImpl a(1.0);
  TransDoubleImpl b(2.0);
  std::unique_ptr<TransValueImpl> clone(a.clone());
  a.swap(b);
  TransStatus status;
  EXPECT_EQ(a.asDouble(status), 2.0);
  EXPECT_EQ(b.asDouble(status), 1.0);
  EXPECT_EQ(clone->asDouble(status), 1.0);
  a = b;
  EXPECT_EQ(a.asDouble(status), 1.0);
}

// ---- integers ----

// Edge case: the smallest 64-bit integer prints all nineteen digits after the minus sign; its
// asDouble returns the nearest double with no flag.
TEST(TransIntegerImplTest, SmallestIntegerPrintsAllDigits) {
  long const smallest = std::numeric_limits<std::int64_t>::min();
  TransStatus status = dirtyStatus();
  EXPECT_EQ(integerText(smallest, status), "-9223372036854775808");
  EXPECT_EQ(flags(status), kNone);

  status = dirtyStatus();
  EXPECT_EQ(TransIntegerImpl(smallest).asDouble(status), -9223372036854775808.0);
  EXPECT_EQ(flags(status), kNone);
}

TEST(TransIntegerImplTest, LargestIntegerIsExact) {
  TransStatus status;
  // Through a double it would print 9223372036854775808.
  EXPECT_EQ(integerText(std::numeric_limits<std::int64_t>::max(), status), "9223372036854775807");
  EXPECT_EQ(integerText(9007199254740993L, status), "9007199254740993");  // 2^53 + 1
}

TEST(TransIntegerImplTest, NoGroupingAndTheLocaleMinusSign) {
  TransStatus status;
  EXPECT_EQ(integerText(1200000, status), "1200000");
  EXPECT_EQ(integerText(-42, status), "-42");
  EXPECT_EQ(integerText(0, status), "0");
  EXPECT_EQ(flags(status), kNone);

  NumericLocale locale("de_DE.UTF-8");
  ASSERT_TRUE(locale.available());
  EXPECT_EQ(integerText(1200000, status), "1200000");
  EXPECT_EQ(integerText(-42, status), "-42");
}

TEST(TransIntegerImplTest, AsIntegerAndAsDouble) {
  TransIntegerImpl const impl(-42);
  EXPECT_EQ(impl.asInteger(), -42);
  TransStatus status = dirtyStatus();
  EXPECT_EQ(impl.asDouble(status), -42.0);
  EXPECT_EQ(flags(status), kNone);
  // An integer holding the no-number's neighbourhood is never flagged: no flag is ever set.
  status = dirtyStatus();
  EXPECT_EQ(TransIntegerImpl(std::numeric_limits<long>::min()).asDouble(status), -9223372036854775808.0);
  EXPECT_EQ(flags(status), kNone);
}

// Edge case: every XML and path slot returns its placeholder with both flags, never null.
TEST(TransIntegerImplTest, XMLAndPathSlotsAreNotApplicable) {
  expectNotApplicableXMLAndPathSlots(TransIntegerImpl(1), kContext, kPath);
}

TEST(TransIntegerImplTest, CloneSwapAndAssignment) {
  TransIntegerImpl a(1);
  TransIntegerImpl b(2);
  std::unique_ptr<TransValueImpl> clone(a.clone());
  a.swap(b);
  EXPECT_EQ(a.asInteger(), 2);
  EXPECT_EQ(b.asInteger(), 1);
  ASSERT_NE(dynamic_cast<TransIntegerImpl*>(clone.get()), nullptr);
  EXPECT_EQ(dynamic_cast<TransIntegerImpl*>(clone.get())->asInteger(), 1);
  a = b;
  EXPECT_EQ(a.asInteger(), 1);
}

}  // namespace
