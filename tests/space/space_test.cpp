// The named value space: add, find, exists, remove, removeAll, list and the releases,
// their flags (the failure table row by row) and the assertions of the forms without status.
#include "spacetestsupport.h"
#include <transspace/transspace.h>
#include "core/transutf16.h"

#include <memory>
#include <utility>

#include <xercesc/dom/DOM.hpp>

#include <gtest/gtest.h>

using namespace spacetest;

namespace {

class TransSpaceTest : public ::testing::Test {
protected:
  TransSpace space;
};

// ---- edge cases ----

// Edge case: add under " name " then find "name"; list() holds the bare name.
TEST_F(TransSpaceTest, NameIsTrimmedOnAddAndLookup) {
  TransStatus status;
  EXPECT_TRUE(space.add(TransString("  name \t"), TransValue(TransString("v")), status));
  EXPECT_EQ(flags(status), kNone);
  EXPECT_EQ(valueText(space.find(TransString("name"), status)), "v");
  EXPECT_EQ(flags(status), kNone);
  EXPECT_EQ(valueText(space.find(TransString("\n name\r\n"), status)), "v");
  OwnedList list(space.list(status));
  EXPECT_EQ(names(*list), std::vector<std::string>{"name"});
}

TEST_F(TransSpaceTest, CallersNameIsNotChanged) {
  TransString const handle("  padded  ");
  space.add(handle, TransValue(1.0));
  EXPECT_EQ(text(handle), "  padded  ");
}

TEST_F(TransSpaceTest, InnerBlanksStay) {
  space.add(TransString("a b"), TransValue(1.0));
  TransStatus status;
  EXPECT_FALSE(space.exists(TransString("ab"), status));
  EXPECT_TRUE(space.exists(TransString(" a b "), status));
}

// Edge case: a name of blanks only is empty after trimming: every operation fails, nothing stored.
TEST_F(TransSpaceTest, BlankNameFailsEverywhereAndStoresNothing) {
  for (char const* blank : {"", "   ", " \t\r\n "}) {
    TransString const name(blank);
    TransStatus status;
    EXPECT_FALSE(space.add(name, TransValue(1.0), status));
    EXPECT_TRUE(status.failure());
    space.find(name, status);
    EXPECT_TRUE(status.failure());
    EXPECT_FALSE(space.exists(name, status));
    EXPECT_TRUE(status.failure());
    EXPECT_FALSE(space.remove(name, status));
    EXPECT_TRUE(status.failure());
    EXPECT_FALSE(space.removeAll(name, status));
    EXPECT_TRUE(status.failure());
  }
  TransStatus status;
  OwnedList list(space.list(status));
  EXPECT_TRUE(list->empty());
  EXPECT_EQ(flags(status), kWarning);
}

// Edge case: a second add under the same name fails and keeps the first value.
TEST_F(TransSpaceTest, SecondAddUnderTheSameNameKeepsTheFirstValue) {
  TransStatus status;
  EXPECT_TRUE(space.add(TransString("x"), TransValue(TransString("first")), status));
  EXPECT_FALSE(space.add(TransString("x"), TransValue(TransString("second")), status));
  EXPECT_EQ(flags(status), kBoth);
  EXPECT_EQ(valueText(space.find(TransString("x"))), "first");
}

// Edge case: find of an absent name gives the null value with both flags; exists warns only.
TEST_F(TransSpaceTest, AbsentNameFindGivesNullValueExistsWarns) {
  TransStatus status;
  TransValue const& found = space.find(TransString("absent"), status);
  EXPECT_EQ(flags(status), kBoth);
  EXPECT_EQ(valueText(found), "<null>");
  EXPECT_EQ(found.asDouble(status), kNoNumber);
  EXPECT_EQ(flags(status), kBoth);  // the null value's own not-applicable answer

  EXPECT_FALSE(space.exists(TransString("absent"), status));
  EXPECT_EQ(flags(status), kWarning);
}

// Edge case: list() of an empty space is an empty list (not null) with warning; a filled space
// lists its names in ascending case-insensitive order, each in the case it was added under.
TEST_F(TransSpaceTest, ListOfAnEmptySpaceWarns) {
  TransStatus status = dirtyStatus();
  OwnedList list(space.list(status));
  ASSERT_NE(list, nullptr);
  EXPECT_TRUE(list->empty());
  EXPECT_EQ(flags(status), kWarning);
}

TEST_F(TransSpaceTest, ListIsInCaseInsensitiveOrderWithTheAddedCase) {
  // Binary order would be Banana, apple, cherry.
  for (char const* name : {"cherry", "Banana", "apple", "APPLE2"}) space.add(TransString(name), TransValue(1.0));
  TransStatus status = dirtyStatus();
  OwnedList list(space.list(status));
  EXPECT_EQ(flags(status), kNone);
  EXPECT_EQ(names(*list), (std::vector<std::string>{"apple", "APPLE2", "Banana", "cherry"}));
}

TEST_F(TransSpaceTest, ListNamesAreUTF16Conversions) {
  space.add(TransString(TransUTF16::exported(u"\u00c4pfel")), TransValue(1.0));
  space.add(TransString("Birne"), TransValue(1.0));  // an MBCS key, converted for the list
  OwnedList list(space.list());
  ASSERT_EQ(list->size(), 2u);
  TransStatus status;
  EXPECT_EQ(std::u16string(TransUTF16::internal(list->asUTF16(1, status))), u"\u00c4pfel");  // U+00C4 sorts after B
  EXPECT_EQ(std::u16string(TransUTF16::internal(list->asUTF16(0, status))), u"Birne");
}

// Edge case: a name differing only in letter case is a duplicate; find works in any case.
TEST_F(TransSpaceTest, NamesIgnoreLetterCase) {
  TransStatus status;
  EXPECT_TRUE(space.add(TransString("Name"), TransValue(TransString("v")), status));
  EXPECT_FALSE(space.add(TransString("NAME"), TransValue(TransString("w")), status));
  EXPECT_EQ(flags(status), kBoth);
  for (char const* name : {"name", "NAME", "nAmE", "Name"}) {
    EXPECT_EQ(valueText(space.find(TransString(name), status)), "v") << name;
    EXPECT_EQ(flags(status), kNone) << name;
  }
  OwnedList list(space.list());
  EXPECT_EQ(names(*list), std::vector<std::string>{"Name"});  // the case of the first add
}

TEST_F(TransSpaceTest, FullCaseMappingMakesOneKey) {
  space.add(TransString("Stra\xc3\x9f"
                        "e"),
            TransValue(1.0));  // ß upper-cases to SS
  TransStatus status;
  EXPECT_FALSE(space.add(TransString("STRASSE"), TransValue(2.0), status));
  EXPECT_EQ(flags(status), kBoth);
}

// Edge case: releaseString of a null pointer warns and does not fail; a released pointer is null.
TEST_F(TransSpaceTest, ReleaseStringOfNullWarnsOnly) {
  TransString* string = nullptr;
  expectReleased(TransSpace::releaseString, string, kWarning);
  TransSpace::releaseString(string);  // the form without status does not assert on a warning
  EXPECT_EQ(string, nullptr);
}

TEST_F(TransSpaceTest, ReleaseStringFreesAndNullsThePointer) {
  space.add(TransString("t"), TransValue(TransString("text")));
  TransString* string = space.find(TransString("t")).asString();
  expectReleased(TransSpace::releaseString, string, kNone);

  TransString* other = new TransString("x");
  TransSpace::releaseString(other);
  EXPECT_EQ(other, nullptr);
}

TEST_F(TransSpaceTest, ReleaseStringListOfNullWarnsAndAValidOneIsFreed) {
  TransStringList* strings = nullptr;
  expectReleased(TransSpace::releaseStringList, strings, kWarning);
  TransSpace::releaseStringList(strings);

  strings = space.list();
  expectReleased(TransSpace::releaseStringList, strings, kNone);

  // TransValue's release frees what the space handed out too: the two are identical.
  strings = space.list();
  TransValue::releaseStringList(strings);
  EXPECT_EQ(strings, nullptr);
}

// ---- ownership ----

TEST_F(TransSpaceTest, TheSpaceHoldsACopyOfTheValue) {
  {
    TransValue const value(TransString("copied"));
    space.add(TransString("k"), value);
  }
  EXPECT_EQ(valueText(space.find(TransString("k"))), "copied");
}

TEST_F(TransSpaceTest, FoundReferenceStaysValidWhileOthersComeAndGo) {
  space.add(TransString("stay"), TransValue(TransString("here")));
  TransValue const& found = space.find(TransString("stay"));
  for (int i = 0; i < 100; ++i) space.add(TransString(std::to_string(i).c_str()), TransValue(1.0 * i));
  for (int i = 0; i < 100; i += 2) space.remove(TransString(std::to_string(i).c_str()));
  EXPECT_EQ(&found, &space.find(TransString("STAY")));
  EXPECT_EQ(valueText(found), "here");
}

TEST_F(TransSpaceTest, RemoveThenAddReplaces) {
  space.add(TransString("r"), TransValue(1.0));
  space.remove(TransString("r"));
  EXPECT_TRUE(space.add(TransString("R"), TransValue(2.0)));
  EXPECT_EQ(space.find(TransString("r")).asDouble(), 2.0);
  OwnedList list(space.list());
  EXPECT_EQ(names(*list), std::vector<std::string>{"R"});
}

// ---- the failure table of the value space, row by row; each call starts from a dirty status ----

TEST_F(TransSpaceTest, Table_Add) {
  TransStatus status = dirtyStatus();
  EXPECT_FALSE(space.add(TransString(" "), TransValue(1.0), status));  // empty name
  EXPECT_EQ(flags(status), kFailure);

  status = dirtyStatus();
  EXPECT_TRUE(space.add(TransString("a"), TransValue(1.0), status));  // absent: inserted, cleared
  EXPECT_EQ(flags(status), kNone);

  status = dirtyStatus();
  EXPECT_FALSE(space.add(TransString("A"), TransValue(2.0), status));  // present: old value kept
  EXPECT_EQ(flags(status), kBoth);
  EXPECT_EQ(space.find(TransString("a")).asDouble(), 1.0);
}

TEST_F(TransSpaceTest, Table_Find) {
  space.add(TransString("a"), TransValue(1.0));
  TransStatus status = dirtyStatus();
  TransValue const& emptyName = space.find(TransString(" "), status);
  EXPECT_EQ(flags(status), kFailure);
  EXPECT_EQ(valueText(emptyName), "<null>");

  status = dirtyStatus();
  TransValue const& absent = space.find(TransString("b"), status);
  EXPECT_EQ(flags(status), kBoth);
  EXPECT_EQ(&absent, &emptyName);  // both are the space's one null value

  status = dirtyStatus();
  EXPECT_EQ(space.find(TransString("a"), status).asDouble(), 1.0);
  EXPECT_EQ(flags(status), kNone);
}

TEST_F(TransSpaceTest, Table_Exists) {
  space.add(TransString("a"), TransValue(1.0));
  TransStatus status = dirtyStatus();
  EXPECT_FALSE(space.exists(TransString(""), status));
  EXPECT_EQ(flags(status), kFailure);

  status = dirtyStatus();
  EXPECT_FALSE(space.exists(TransString("b"), status));
  EXPECT_EQ(flags(status), kWarning);

  status = dirtyStatus();
  EXPECT_TRUE(space.exists(TransString("a"), status));
  EXPECT_EQ(flags(status), kNone);
}

TEST_F(TransSpaceTest, Table_Remove) {
  space.add(TransString("a"), TransValue(1.0));
  TransStatus status = dirtyStatus();
  EXPECT_FALSE(space.remove(TransString("\t"), status));
  EXPECT_EQ(flags(status), kFailure);

  status = dirtyStatus();
  EXPECT_FALSE(space.remove(TransString("b"), status));
  EXPECT_EQ(flags(status), kBoth);

  status = dirtyStatus();
  EXPECT_TRUE(space.remove(TransString(" A "), status));
  EXPECT_EQ(flags(status), kNone);
  EXPECT_FALSE(space.exists(TransString("a"), status));
}

TEST_F(TransSpaceTest, RemoveNeverTouchesTheImages) {
  space.add(TransString("g"), TransValue(1.0));
  TransStatus status;
  space.addImage(TransString("g"), image("i"), status);
  EXPECT_TRUE(space.remove(TransString("g"), status));
  EXPECT_TRUE(space.existsImage(TransString("g"), TransString("i"), status));
}

TEST_F(TransSpaceTest, Table_RemoveAll) {
  TransStatus status = dirtyStatus();
  EXPECT_FALSE(space.removeAll(TransString("  "), status));
  EXPECT_EQ(flags(status), kFailure);

  // Absent value: failure and warning, yet an image group of that name is erased.
  space.addImage(TransString("onlyImages"), image("i"), status);
  status = dirtyStatus();
  EXPECT_FALSE(space.removeAll(TransString("onlyimages"), status));
  EXPECT_EQ(flags(status), kBoth);
  space.findImage(TransString("onlyImages"), TransString("i"), status);
  EXPECT_EQ(flags(status), kBoth);  // the group is gone

  // Present: the value and the group of that name go, flags cleared.
  space.add(TransString("both"), TransValue(1.0));
  space.addImage(TransString("BOTH"), image("i"), status);
  space.add(TransString("bothx"), TransValue(2.0));  // whole-name match only, no prefix match
  status = dirtyStatus();
  EXPECT_TRUE(space.removeAll(TransString(" Both "), status));
  EXPECT_EQ(flags(status), kNone);
  EXPECT_FALSE(space.exists(TransString("both"), status));
  EXPECT_FALSE(space.existsImage(TransString("both"), TransString("i"), status));
  EXPECT_EQ(flags(status), kWarning);  // group absent
  EXPECT_TRUE(space.exists(TransString("bothx"), status));
}

TEST_F(TransSpaceTest, Table_List) {
  TransStatus status = dirtyStatus();
  OwnedList empty(space.list(status));
  EXPECT_EQ(flags(status), kWarning);
  space.add(TransString("a"), TransValue(1.0));
  status = dirtyStatus();
  OwnedList one(space.list(status));
  EXPECT_EQ(flags(status), kNone);
  EXPECT_EQ(one->size(), 1u);
}

TEST_F(TransSpaceTest, ListDoesNotShowImages) {
  TransStatus status;
  space.addImage(TransString("g"), image("i"), status);
  OwnedList list(space.list(status));
  EXPECT_TRUE(list->empty());
  EXPECT_EQ(flags(status), kWarning);
}

// ---- forms without status: results when nothing fails ----

TEST_F(TransSpaceTest, FormsWithoutStatusReturnTheResult) {
  EXPECT_TRUE(space.add(TransString("a"), TransValue(TransString("v"))));
  EXPECT_EQ(valueText(space.find(TransString("a"))), "v");
  EXPECT_TRUE(space.exists(TransString("a")));
  EXPECT_FALSE(space.exists(TransString("absent")));  // a warning alone does not assert
  OwnedList list(space.list());
  EXPECT_EQ(list->size(), 1u);
  EXPECT_TRUE(space.remove(TransString("a")));
  OwnedList empty(space.list());  // warning only: list() of an empty space returns normally
  EXPECT_TRUE(empty->empty());
}

// ---- moving values in and out ----

TEST_F(TransSpaceTest, AddMovesAValueInAndLeavesANullBehind) {
  TransValue value(TransString("moved"));
  TransStatus status = transtest::dirtyStatus();
  EXPECT_TRUE(space.add(TransString("m"), std::move(value), status));
  EXPECT_EQ(flags(status), kNone);
  EXPECT_EQ(valueText(space.find(TransString("M"))), "moved");
  EXPECT_EQ(value.asDouble(status), kNoNumber);  // NOLINT(bugprone-use-after-move): a null value now
  EXPECT_EQ(flags(status), kBoth);
}

// The document itself moves: the space's entry hands out the Xalan document the value had.
TEST_F(TransSpaceTest, AMovedDocumentIsNotCopied) {
  XERCES_CPP_NAMESPACE::DOMImplementation* dom =
      XERCES_CPP_NAMESPACE::DOMImplementationRegistry::getDOMImplementation(u"Core");
  std::unique_ptr<XERCES_CPP_NAMESPACE::DOMDocument> source(dom->createDocument(nullptr, u"r", nullptr));
  TransValue value(source.get());
  XALAN_CPP_NAMESPACE::XalanDocument* const document = value.asXalanDocument();
  ASSERT_NE(document, nullptr);
  ASSERT_TRUE(space.add(TransString("doc"), std::move(value)));
  EXPECT_EQ(space.find(TransString("doc")).asXalanDocument(), document);
  TransValue const copy(space.find(TransString("doc")));
  EXPECT_NE(copy.asXalanDocument(), document) << "a copy has a document of its own";
}

TEST_F(TransSpaceTest, AFailedAddLeavesTheValueToMoveAsItWas) {
  ASSERT_TRUE(space.add(TransString("taken"), TransValue(1.0)));
  TransValue value(2.0);
  TransStatus status;
  EXPECT_FALSE(space.add(TransString("TAKEN"), std::move(value), status));
  EXPECT_EQ(flags(status), kBoth);
  EXPECT_FALSE(space.add(TransString(" "), std::move(value), status));
  EXPECT_TRUE(status.failure());
  EXPECT_EQ(value.asDouble(), 2.0);  // NOLINT(bugprone-use-after-move): nothing was moved
  EXPECT_EQ(space.find(TransString("taken")).asDouble(), 1.0);
}

TEST_F(TransSpaceTest, TakeRemovesTheEntryAndHandsItsValueOver) {
  ASSERT_TRUE(space.add(TransString("kept"), TransValue(TransString("text"))));
  TransValue taken(7.0);
  TransStatus status = transtest::dirtyStatus();
  EXPECT_TRUE(space.take(TransString(" KEPT "), taken, status));
  EXPECT_EQ(flags(status), kNone);
  EXPECT_EQ(valueText(taken), "text");
  EXPECT_FALSE(space.exists(TransString("kept")));
}

TEST_F(TransSpaceTest, TakeOfAnAbsentOrEmptyNameChangesNothing) {
  TransValue taken(7.0);
  TransStatus status;
  EXPECT_FALSE(space.take(TransString("absent"), taken, status));
  EXPECT_EQ(flags(status), kBoth);
  EXPECT_FALSE(space.take(TransString(""), taken, status));
  EXPECT_TRUE(status.failure());
  EXPECT_EQ(taken.asDouble(), 7.0);
}

// ---- death tests: the assertions of the forms without status ----
//
// The assertions that can fire: add (empty name, name in use), find (empty name, absent name),
// exists (empty name only) and remove (empty name, absent name). The others cannot fire, because
// their status-reporting forms never set failure: list() only ever warns (empty space), and
// releaseString(string) / releaseStringList(strings) only ever warn (null pointer). Their
// assertions ("Failure: TransString::list()", "Failure: TransString::releaseString(string)",
// "Failure: TransString::releaseStringList(strings)") are contract checks; the tests above show
// that the warning cases return normally.

std::string assertion(char const* message) {
  std::string const expression = std::string("! status.failure() && \"") + message + "\"";
  return escapeRegex("backend/transspace/src/space/transspace.cpp:") +
         "[0-9]+: .*: " + escapeRegex("Assertion `" + expression + "' failed.");
}

class TransSpaceDeathTest : public TransSpaceTest {
protected:
  void SetUp() override {
#ifdef TRANSSPACE_SANITIZED
    GTEST_SKIP() << "death tests are skipped in the sanitizer build";
#endif
    space.add(TransString("present"), TransValue(1.0));
  }
};

// A temporary is moved in (add(handle, TransValue&&)), a named value copied: both forms assert alike.
TEST_F(TransSpaceDeathTest, AddOfEmptyNameAsserts) {
  EXPECT_DEATH(space.add(TransString("  "), TransValue(1.0)), assertion("Failure: TransString::add(handle,value)"));
  TransValue const copied(1.0);
  EXPECT_DEATH(space.add(TransString("  "), copied), assertion("Failure: TransString::add(handle,value)"));
}

TEST_F(TransSpaceDeathTest, AddOfNameInUseAsserts) {
  EXPECT_DEATH(space.add(TransString("PRESENT"), TransValue(2.0)),
               assertion("Failure: TransString::add(handle,value)"));
  TransValue const copied(2.0);
  EXPECT_DEATH(space.add(TransString("PRESENT"), copied), assertion("Failure: TransString::add(handle,value)"));
}

TEST_F(TransSpaceDeathTest, TakeOfEmptyOrAbsentNameAsserts) {
  TransValue taken;
  EXPECT_DEATH(space.take(TransString(""), taken), assertion("Failure: TransString::take(handle,value)"));
  EXPECT_DEATH(space.take(TransString("absent"), taken), assertion("Failure: TransString::take(handle,value)"));
}

TEST_F(TransSpaceDeathTest, FindOfEmptyNameAsserts) {
  EXPECT_DEATH(space.find(TransString("")), assertion("Failure: TransString::find(handle)"));
}

TEST_F(TransSpaceDeathTest, FindOfAbsentNameAsserts) {
  EXPECT_DEATH(space.find(TransString("absent")), assertion("Failure: TransString::find(handle)"));
}

TEST_F(TransSpaceDeathTest, ExistsOfEmptyNameAsserts) {
  EXPECT_DEATH(space.exists(TransString("\t")), assertion("Failure: TransString::exists(handle)"));
}

TEST_F(TransSpaceDeathTest, RemoveOfEmptyNameAsserts) {
  EXPECT_DEATH(space.remove(TransString(" ")), assertion("Failure: TransString::remove(handle)"));
}

TEST_F(TransSpaceDeathTest, RemoveOfAbsentNameAsserts) {
  EXPECT_DEATH(space.remove(TransString("absent")), assertion("Failure: TransString::remove(handle)"));
}

// The assertion names the function of the class, although the message says TransString::.
TEST_F(TransSpaceDeathTest, AssertionReportsTheSpaceFunction) {
  EXPECT_DEATH(space.find(TransString("absent")), "TransSpace::find\\(const TransString&\\) const");
}

}  // namespace
