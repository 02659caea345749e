// The value handle TransValue and the contract every implementation keeps.
#include <transspace/transspace.h>
#include "core/transutil.h"
#include <transspace/transvalue.h>
#include "valuetestsupport.h"

#include <cstdint>
#include <cstring>

#include <xercesc/dom/DOM.hpp>

#include <gtest/gtest.h>

using namespace valuetest;

namespace {

TransString const kContext("/");
TransString const kPath("a");

TEST(TransValueTest, NoNumberIsTheNegatedLargestFiniteDouble) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &TransValue::noNumber, sizeof bits);
  EXPECT_EQ(bits, 0xFFEFFFFFFFFFFFFFull);
  EXPECT_EQ(TransUtil::noNumber, TransValue::noNumber);
}

// Edge case: a default-constructed value asked for asDouble(TransStatus&).
TEST(TransValueTest, DefaultValueAsDoubleIsNoNumberWithBothFlags) {
  TransValue const value;
  TransStatus status;
  EXPECT_EQ(value.asDouble(status), kNoNumber);
  EXPECT_EQ(flags(status), kBoth);
}

// Edge case: a text value made from an empty TransString, asked for asString(TransStatus&).
TEST(TransValueTest, EmptyTextAsStringIsNewEmptyStringWithWarningOnly) {
  TransValue const value{TransString()};
  TransStatus status = dirtyStatus();
  OwnedString string(value.asString(status));
  ASSERT_NE(string, nullptr);
  EXPECT_TRUE(string->empty());
  EXPECT_EQ(flags(status), kWarning);
}

// Edge case: a non-empty text value asked for asStringList.
TEST(TransValueTest, TextAsStringListIsNewEmptyListWithBothFlags) {
  TransValue const value{TransString("words")};
  TransStatus status;
  OwnedList list(value.asStringList(kContext, kPath, status));
  ASSERT_NE(list, nullptr);
  EXPECT_TRUE(list->empty());
  EXPECT_EQ(list->size(), 0u);
  EXPECT_EQ(flags(status), kBoth);
}

TEST(TransValueTest, MovingTakesTheValueAndLeavesANullBehind) {
  TransValue source(TransString("moved"));
  TransValue const moved(std::move(source));
  TransStatus status;
  OwnedString text(moved.asString(status));
  EXPECT_EQ(transtest::text(*text), "moved");
  EXPECT_EQ(source.asDouble(status), kNoNumber);  // NOLINT(bugprone-use-after-move): a null value now
  EXPECT_EQ(flags(status), kBoth);
  TransValue assigned(3.0);
  assigned = std::move(source);  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(assigned.asDouble(status), kNoNumber);
}

// Edge case: copying a value and destroying the source leaves the copy intact.
TEST(TransValueTest, CopyOutlivesItsSource) {
  TransValue* source = new TransValue(TransString("kept"));
  TransValue const copy(*source);
  delete source;
  OwnedString string(copy.asString());
  EXPECT_EQ(text(*string), "kept");

  TransValue* number = new TransValue(2.5);
  TransValue const numberCopy(*number);
  delete number;
  EXPECT_EQ(numberCopy.asDouble(), 2.5);
}

TEST(TransValueTest, AssignmentClonesTheOtherValue) {
  TransValue value;
  {
    TransValue const other{TransString("assigned")};
    value = other;
  }
  OwnedString string(value.asString());
  EXPECT_EQ(text(*string), "assigned");

  value = value;  // copy-and-swap survives self-assignment
  OwnedString again(value.asString());
  EXPECT_EQ(text(*again), "assigned");

  value = TransValue(7.0);  // the kind changes only by assignment
  EXPECT_EQ(value.asDouble(), 7.0);
}

TEST(TransValueTest, SwapExchangesTheImplementations) {
  TransValue text{TransString("t")};
  TransValue number(3.0);
  text.swap(number);
  EXPECT_EQ(text.asDouble(), 3.0);
  OwnedString string(number.asString());
  EXPECT_EQ(utf16(*string), u"t");
}

TEST(TransValueTest, ConstructorsChooseTheKind) {
  TransStatus status;
  OwnedString nothing(TransValue().asString(status));
  EXPECT_EQ(flags(status), kBoth);  // null

  OwnedString words(TransValue(TransString("abc")).asString(status));
  EXPECT_EQ(text(*words), "abc");
  EXPECT_EQ(flags(status), kNone);  // text

  OwnedString number(TransValue(2.5).asString(status));
  EXPECT_EQ(text(*number), "2.5");  // double, formatted in the "C" locale
  EXPECT_EQ(flags(status), kNone);
}

// Edge case: releaseString with a null pointer, then with a valid one.
TEST(TransValueTest, ReleaseStringOfNullWarnsOnly) {
  TransString* string = nullptr;
  expectReleased(TransValue::releaseString, string, kWarning);
}

TEST(TransValueTest, ReleaseStringFreesAndNullsThePointer) {
  TransString* string = TransValue(TransString("x")).asString();
  ASSERT_NE(string, nullptr);
  expectReleased(TransValue::releaseString, string, kNone);  // the sanitizer build checks that it is freed

  TransString* other = new TransString("y");
  TransValue::releaseString(other);
  EXPECT_EQ(other, nullptr);
  TransValue::releaseString(other);  // a null pointer is harmless without a status too
  EXPECT_EQ(other, nullptr);
}

TEST(TransValueTest, ReleaseStringListOfNullWarnsOnly) {
  TransStringList* list = nullptr;
  expectReleased(TransValue::releaseStringList, list, kWarning);
}

TEST(TransValueTest, ReleaseStringListFreesAndNullsThePointer) {
  TransStringList* list = TransValue().asStringList(kContext, kPath);
  ASSERT_NE(list, nullptr);
  expectReleased(TransValue::releaseStringList, list, kNone);

  TransStringList* other = new TransStringList();
  TransValue::releaseStringList(other);
  EXPECT_EQ(other, nullptr);
}

void expectAsXMLEqualsAsUTF16XML(TransValue const& value) {
  OwnedString xml(value.asXML());
  OwnedString utf16XML(value.asUTF16XML());
  ASSERT_NE(xml, nullptr);
  ASSERT_NE(utf16XML, nullptr);
  EXPECT_EQ(utf16(*xml), utf16(*utf16XML));
}

// Edge case: asXML() and asUTF16XML() return equal texts: the placeholders of the kinds without
// an XML form, and the serialised text of a document.
TEST(TransValueTest, AsXMLEqualsAsUTF16XML) {
  for (TransValue const& value : {TransValue(), TransValue(TransString("t")), TransValue(1.0)}) {
    expectAsXMLEqualsAsUTF16XML(value);
  }
}

TEST(TransValueTest, AsXMLEqualsAsUTF16XMLForADocument) {
  TransSpace const space;  // brings up the XML platform that document values need
  XERCES_CPP_NAMESPACE::DOMImplementation* dom = XERCES_CPP_NAMESPACE::DOMImplementation::getImplementation();
  XERCES_CPP_NAMESPACE::DOMDocument* document = dom->createDocument(nullptr, u"root", nullptr);
  TransValue const value(static_cast<XERCES_CPP_NAMESPACE::DOMDocument const*>(document));
  document->release();  // the value holds its own deep copy
  OwnedString xml(value.asXML());
  EXPECT_FALSE(xml->empty());
  expectAsXMLEqualsAsUTF16XML(value);
}

// The handle's forms without status discard the status: no assertion, the placeholder comes back.
TEST(TransValueTest, FormsWithoutStatusReturnThePlaceholders) {
  TransValue const value;
  OwnedString a(value.asString());
  OwnedString b(value.asString(kContext, kPath));
  OwnedList c(value.asStringList(kContext, kPath));
  OwnedString d(value.asMBCSXML());
  OwnedString e(value.asUTF16XML());
  for (TransString const* string : {a.get(), b.get(), d.get(), e.get()}) {
    ASSERT_NE(string, nullptr);
    EXPECT_TRUE(string->empty());
  }
  ASSERT_NE(c, nullptr);
  EXPECT_TRUE(c->empty());
  EXPECT_EQ(value.asDouble(), kNoNumber);
  EXPECT_EQ(value.asDouble(kContext, kPath), kNoNumber);
  EXPECT_EQ(value.asXalanDocument(), nullptr);
}

// Contract rule 1: every slot resets the status first, so a successful view clears old flags.
TEST(TransValueTest, EverySlotResetsTheStatusFirst) {
  TransValue const value{TransString("12")};
  TransStatus status = dirtyStatus();
  OwnedString string(value.asString(status));
  EXPECT_EQ(flags(status), kNone);
  status = dirtyStatus();
  EXPECT_EQ(value.asDouble(status), 12.0);
  EXPECT_EQ(flags(status), kNone);
}

// Returned objects do not depend on the value that produced them.
TEST(TransValueTest, ReturnedStringOutlivesTheValue) {
  TransValue* value = new TransValue(TransString("independent"));
  OwnedString string(value->asString());
  delete value;
  EXPECT_EQ(text(*string), "independent");
}

}  // namespace
