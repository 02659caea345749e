// The image store of a TransSpace, with its deliberate asymmetries: group names ignore
// letter case, image names are compared byte for byte (strcmp) on trimmed MBCS copies.
#include "spacetestsupport.h"
#include <transspace/transimage.h>
#include <transspace/transspace.h>

#include <gtest/gtest.h>

using namespace spacetest;

namespace {

class ImageStoreTest : public ::testing::Test {
protected:
  void add(char const* group, TransImage const& stored) {
    TransStatus status;
    ASSERT_TRUE(space.addImage(TransString(group), stored, status));
  }
  TransImage const& find(char const* group, char const* name, TransStatus& status) const {
    return space.findImage(TransString(group), TransString(name), status);
  }
  bool exists(char const* group, char const* name, TransStatus& status) const {
    return space.existsImage(TransString(group), TransString(name), status);
  }
  bool remove(char const* group, char const* name, TransStatus& status) {
    return space.removeImage(TransString(group), TransString(name), status);
  }

  TransSpace space;
};

// The empty image that findImage hands out when it has nothing to return.
void expectEmptyImage(TransImage const& found) {
  EXPECT_TRUE(found.name.empty());
  EXPECT_TRUE(found.data.empty());
  EXPECT_TRUE(found.text.empty());
}

TEST(TransImageTest, RecordCarriesItsMembers) {
  TransImage defaulted;  // number stays uninitialised (so it cannot be const)
  EXPECT_TRUE(defaulted.name.empty());
  EXPECT_TRUE(defaulted.data.empty());
  EXPECT_TRUE(defaulted.text.empty());

  TransImage original = image("n", "", 7);
  original.data = std::string("\0\xff\x01", 3);  // any bytes
  TransImage copy(original);
  TransImage assigned;
  assigned = original;
  for (TransImage const* each : {&copy, &assigned}) {
    EXPECT_EQ(text(each->name), "n");
    EXPECT_EQ(each->data, std::string("\0\xff\x01", 3));
    EXPECT_EQ(each->number, 7);
  }
}

// ---- edge cases ----

// Edge case: two adds with the same group and image names both succeed; findImage returns the
// first; one removeImage leaves the second.
TEST_F(ImageStoreTest, DuplicatesAreKeptInOrder) {
  TransStatus status;
  EXPECT_TRUE(space.addImage(TransString("G"), image("A", "first", 1), status));
  EXPECT_EQ(flags(status), kNone);
  EXPECT_TRUE(space.addImage(TransString("G"), image("A", "second", 2), status));
  EXPECT_EQ(flags(status), kNone);

  EXPECT_EQ(find("G", "A", status).data, "first");
  EXPECT_EQ(flags(status), kNone);

  EXPECT_TRUE(remove("G", "A", status));
  TransImage const& left = find("G", "A", status);
  EXPECT_EQ(left.data, "second");
  EXPECT_EQ(left.number, 2);
  EXPECT_EQ(flags(status), kNone);
}

// Edge case: X missing in existing group G: empty image, no flag; group H missing: both flags.
TEST_F(ImageStoreTest, MissingImageSetsNoFlagMissingGroupSetsBoth) {
  add("G", image("A"));
  TransStatus status = dirtyStatus();
  expectEmptyImage(find("G", "X", status));
  EXPECT_EQ(flags(status), kNone);

  status = dirtyStatus();
  expectEmptyImage(find("H", "X", status));
  EXPECT_EQ(flags(status), kBoth);
}

// Edge case: existsImage of B after A in the group is true with warning; B first, no flag.
TEST_F(ImageStoreTest, ExistsWarnsForEveryImagePassedOver) {
  add("G", image("A"));
  add("G", image("B"));
  add("H", image("B"));
  add("H", image("A"));
  TransStatus status = dirtyStatus();
  EXPECT_TRUE(exists("G", "B", status));
  EXPECT_EQ(flags(status), kWarning);

  status = dirtyStatus();
  EXPECT_TRUE(exists("H", "B", status));
  EXPECT_EQ(flags(status), kNone);
}

// Edge case: after removing the only image, existsImage and findImage report no flag (the group
// stays, empty).
TEST_F(ImageStoreTest, EmptiedGroupStays) {
  add("G", image("A"));
  TransStatus status = dirtyStatus();
  EXPECT_TRUE(remove("G", "A", status));
  EXPECT_EQ(flags(status), kNone);

  status = dirtyStatus();
  EXPECT_FALSE(exists("G", "A", status));
  EXPECT_EQ(flags(status), kNone);

  status = dirtyStatus();
  expectEmptyImage(find("G", "A", status));
  EXPECT_EQ(flags(status), kNone);

  status = dirtyStatus();
  EXPECT_FALSE(remove("G", "A", status));  // an empty vector: false, no flag
  EXPECT_EQ(flags(status), kNone);
}

// Edge case: an image stored under a blank-padded name is found with the bare name; the stored
// name itself is never trimmed.
TEST_F(ImageStoreTest, BothSidesAreTrimmedForComparison) {
  add("G", image(" A\t", "padded"));
  TransStatus status;
  TransImage const& found = find("G", "A", status);
  EXPECT_EQ(found.data, "padded");
  EXPECT_EQ(text(found.name), " A\t");
  EXPECT_EQ(flags(status), kNone);
  EXPECT_EQ(find(" G ", "  A ", status).data, "padded");
  EXPECT_TRUE(exists("G", " A", status));
  EXPECT_TRUE(remove("G", "A ", status));
}

// Edge case: the group is found in another letter case, the image is not.
TEST_F(ImageStoreTest, GroupsIgnoreCaseImagesDoNot) {
  add("G", image("A", "a"));
  TransStatus status;
  EXPECT_EQ(find("g", "A", status).data, "a");
  EXPECT_EQ(flags(status), kNone);

  status = dirtyStatus();
  expectEmptyImage(find("G", "a", status));
  EXPECT_EQ(flags(status), kNone);

  EXPECT_FALSE(exists("g", "a", status));
  EXPECT_EQ(flags(status), kWarning);  // the group has an image, which did not match
  EXPECT_FALSE(remove("g", "a", status));
  EXPECT_TRUE(exists("g", "A", status));
}

// Image names are compared byte for byte: no case folding of any kind, no Unicode equivalence.
TEST_F(ImageStoreTest, ImageNamesCompareByteForByte) {
  add("G", image("Stra\xc3\x9f"
                 "e",
                 "sharp"));
  TransStatus status;
  expectEmptyImage(find("G", "STRASSE", status));
  expectEmptyImage(find("G", "Strasse", status));
  EXPECT_EQ(find("G",
                 "Stra\xc3\x9f"
                 "e",
                 status)
                .data,
            "sharp");
}

// Edge case: removeAll of G erases the group even when no value G exists, and reports failure
// and warning for the missing value.
TEST_F(ImageStoreTest, RemoveAllErasesAGroupWithoutAValue) {
  add("G", image("A"));
  TransStatus status = dirtyStatus();
  EXPECT_FALSE(space.removeAll(TransString("g"), status));
  EXPECT_EQ(flags(status), kBoth);

  status = dirtyStatus();
  expectEmptyImage(find("G", "A", status));
  EXPECT_EQ(flags(status), kBoth);  // the group is gone
}

TEST_F(ImageStoreTest, RemoveKeepsTheOrderOfTheRest) {
  add("G", image("A", "1"));
  add("G", image("B", "2"));
  add("G", image("A", "3"));
  add("G", image("C", "4"));
  TransStatus status;
  EXPECT_TRUE(remove("G", "B", status));
  EXPECT_TRUE(exists("G", "C", status));
  EXPECT_EQ(flags(status), kWarning);  // passed A and A
  EXPECT_TRUE(remove("G", "A", status));
  EXPECT_EQ(find("G", "A", status).data, "3");
}

TEST_F(ImageStoreTest, ImagesAreCopiedInAndFoundByReference) {
  TransImage stored = image("A", "before");
  add("G", stored);
  stored.data = "after";  // the space keeps its own copy
  TransStatus status;
  TransImage const& first = find("G", "A", status);
  EXPECT_EQ(first.data, "before");
  EXPECT_EQ(&first, &find("g", " A ", status));  // a reference into the group's vector
}

TEST_F(ImageStoreTest, ImagesAreApartFromValues) {
  add("G", image("A"));
  TransStatus status;
  EXPECT_FALSE(space.exists(TransString("G"), status));
  space.add(TransString("G"), TransValue(1.0), status);
  EXPECT_EQ(flags(status), kNone);  // a value of the group's name is a new entry
  EXPECT_TRUE(exists("G", "A", status));
}

// ---- the failure table of the image store, row by row ----

TEST_F(ImageStoreTest, Table_AddImage) {
  TransStatus status = dirtyStatus();
  EXPECT_FALSE(space.addImage(TransString("  "), image("A"), status));  // empty group name
  EXPECT_EQ(flags(status), kFailure);

  status = dirtyStatus();
  EXPECT_TRUE(space.addImage(TransString("G"), image(""), status));  // only the group is tested
  EXPECT_EQ(flags(status), kNone);                                   // group created, cleared

  status = dirtyStatus();
  EXPECT_TRUE(space.addImage(TransString("g"), image("A"), status));  // appended, cleared
  EXPECT_EQ(flags(status), kNone);
  EXPECT_TRUE(exists("G", "A", status));
  EXPECT_EQ(flags(status), kWarning);  // the image of empty name came first
}

TEST_F(ImageStoreTest, Table_FindImage) {
  add("G", image("A", "a"));
  for (auto const& names : {std::pair<char const*, char const*>{" ", "A"}, {"G", " "}, {"", ""}}) {
    TransStatus status = dirtyStatus();
    expectEmptyImage(find(names.first, names.second, status));
    EXPECT_EQ(flags(status), kBoth) << '"' << names.first << "\", \"" << names.second << '"';
  }
  TransStatus status = dirtyStatus();
  expectEmptyImage(find("H", "A", status));  // group absent
  EXPECT_EQ(flags(status), kBoth);
  status = dirtyStatus();
  expectEmptyImage(find("G", "B", status));  // group present, image absent
  EXPECT_EQ(flags(status), kNone);
  status = dirtyStatus();
  EXPECT_EQ(find("G", "A", status).data, "a");  // found
  EXPECT_EQ(flags(status), kNone);
}

TEST_F(ImageStoreTest, Table_ExistsImage) {
  add("G", image("A"));
  add("G", image("B"));
  add("E", image("X"));
  TransStatus status;
  remove("E", "X", status);  // E is now an existing, empty group
  for (auto const& names : {std::pair<char const*, char const*>{" ", "A"}, {"G", " "}}) {
    status = dirtyStatus();
    EXPECT_FALSE(exists(names.first, names.second, status));
    EXPECT_EQ(flags(status), kFailure);
  }
  status = dirtyStatus();
  EXPECT_FALSE(exists("H", "A", status));  // group absent
  EXPECT_EQ(flags(status), kWarning);
  status = dirtyStatus();
  EXPECT_FALSE(exists("G", "C", status));  // image absent, group has images
  EXPECT_EQ(flags(status), kWarning);
  status = dirtyStatus();
  EXPECT_FALSE(exists("E", "X", status));  // image absent, group empty
  EXPECT_EQ(flags(status), kNone);
  status = dirtyStatus();
  EXPECT_TRUE(exists("G", "A", status));  // found first
  EXPECT_EQ(flags(status), kNone);
  status = dirtyStatus();
  EXPECT_TRUE(exists("G", "B", status));  // found after an image that did not match
  EXPECT_EQ(flags(status), kWarning);
}

TEST_F(ImageStoreTest, Table_RemoveImage) {
  add("G", image("A"));
  for (auto const& names : {std::pair<char const*, char const*>{"", "A"}, {"G", "\t"}}) {
    TransStatus status = dirtyStatus();
    EXPECT_FALSE(remove(names.first, names.second, status));
    EXPECT_EQ(flags(status), kFailure);
  }
  TransStatus status = dirtyStatus();
  EXPECT_FALSE(remove("H", "A", status));  // group absent
  EXPECT_EQ(flags(status), kNone);
  status = dirtyStatus();
  EXPECT_FALSE(remove("G", "B", status));  // image absent
  EXPECT_EQ(flags(status), kNone);
  status = dirtyStatus();
  EXPECT_TRUE(remove("G", "A", status));  // found
  EXPECT_EQ(flags(status), kNone);
}

}  // namespace
