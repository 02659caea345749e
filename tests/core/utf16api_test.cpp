// UTF-16 through the exported signatures, as a host sees them: this program includes the public
// headers only and holds every UTF-16 text in unsigned short variables. That it compiles is half
// of the test: each signature is also named with its exact type below, so a parameter or result
// typed otherwise (ICU's char16_t, say) breaks the build here.
#include <transspace/transstatus.h>
#include <transspace/transstring.h>
#include <transspace/transstringlist.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>
#include <vector>

namespace {

// The exact signatures of every exported UTF-16 parameter and result.
static_assert(std::is_constructible<TransString, unsigned short const*>::value, "TransString(unsigned short const*)");
[[maybe_unused]] constexpr auto stringAsUTF16 =
    static_cast<unsigned short const* (TransString::*)() const>(&TransString::asUTF16);
[[maybe_unused]] constexpr auto stringAsUTF16WithStatus =
    static_cast<unsigned short const* (TransString::*)(TransStatus&) const>(&TransString::asUTF16);
[[maybe_unused]] constexpr auto listPushBack =
    static_cast<void (TransStringList::*)(unsigned short const*)>(&TransStringList::push_back);
[[maybe_unused]] constexpr auto listPushBackWithStatus =
    static_cast<void (TransStringList::*)(unsigned short const*, TransStatus&)>(&TransStringList::push_back);
[[maybe_unused]] constexpr auto listAsUTF16 =
    static_cast<unsigned short const* (TransStringList::*)(unsigned long) const>(&TransStringList::asUTF16);
[[maybe_unused]] constexpr auto listAsUTF16WithStatus =
    static_cast<unsigned short const* (TransStringList::*)(unsigned long, TransStatus&) const>(
        &TransStringList::asUTF16);
[[maybe_unused]] constexpr auto listAsUTF16Array =
    static_cast<unsigned short const* const* (TransStringList::*)() const>(&TransStringList::asUTF16Array);
[[maybe_unused]] constexpr auto listAsUTF16ArrayWithStatus =
    static_cast<unsigned short const* const* (TransStringList::*)(TransStatus&) const>(&TransStringList::asUTF16Array);

// "Straße 𝄞" (a letter outside ASCII and a character outside the basic plane, as a surrogate pair).
unsigned short const kText[] = {u'S', u'T', u'R', u'A', 0x00DF, u'E', u' ', 0xD834, 0xDD1E, 0};
unsigned short const kOther[] = {u'x', u'y', 0};

std::vector<unsigned short> units(unsigned short const* text) {
  std::vector<unsigned short> out;
  if (text == nullptr) return out;
  for (std::size_t i = 0; text[i] != 0; ++i) out.push_back(text[i]);
  return out;
}

TEST(ExportedUTF16Test, StringRoundTripsThroughBothForms) {
  TransString const string(kText);
  TransStatus status;
  unsigned short const* withStatus = string.asUTF16(status);
  EXPECT_FALSE(status.failure());
  EXPECT_FALSE(status.warning());
  unsigned short const* withoutStatus = string.asUTF16();
  EXPECT_EQ(units(withStatus), units(kText));
  EXPECT_EQ(withoutStatus, withStatus);

  // A result fed straight back into the constructor: no cast between the library's own types.
  TransString const again(string.asUTF16());
  EXPECT_EQ(units(again.asUTF16()), units(kText));
}

TEST(ExportedUTF16Test, ListRoundTripsThroughEveryForm) {
  TransString const string(kText);
  TransStringList list;
  TransStatus status;
  list.push_back(string.asUTF16(), status);
  list.push_back(kOther);
  ASSERT_EQ(list.size(), 2u);

  unsigned short const* first = list.asUTF16(0, status);
  unsigned short const* second = list.asUTF16(1);
  EXPECT_EQ(units(first), units(kText));
  EXPECT_EQ(units(second), units(kOther));

  unsigned short const* const* array = list.asUTF16Array(status);
  ASSERT_NE(array, nullptr);
  EXPECT_EQ(array[0], first);
  EXPECT_EQ(array[1], second);
  unsigned short const* const* again = list.asUTF16Array();
  EXPECT_EQ(again, array);

  // List entries back into strings and lists.
  TransString const fromList(list.asUTF16(0));
  EXPECT_EQ(units(fromList.asUTF16()), units(kText));
  TransStringList copy;
  copy.push_back(array[1]);
  EXPECT_EQ(units(copy.asUTF16(0)), units(kOther));
}

TEST(ExportedUTF16Test, NullUnitsAreAnEmptyText) {
  unsigned short const* none = nullptr;
  TransString const string(none);
  EXPECT_TRUE(string.empty());
  TransStringList list;
  list.push_back(none);
  unsigned short const* entry = list.asUTF16(0);
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry[0], 0);
}

}  // namespace
