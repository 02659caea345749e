// Helpers shared by the value tests: owning returned strings, reading them (see transtestsupport.h),
// a scoped numeric locale and the check of the slots that do not apply to null, text and numbers.
#pragma once

#include <transspace/transowner.h>
#include <transspace/transstatus.h>
#include <transspace/transstring.h>
#include <transspace/transstringlist.h>
#include "transtestsupport.h"
#include "core/transutf16.h"
#include <transspace/transvalue.h>
#include "values/transvalueimpl.h"

#include <clocale>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace valuetest {

// Every TransString* / TransStringList* a view returns is the caller's: these hand it back.
using OwnedString = TransStringOwner;
using OwnedList = TransStringListOwner;

// From transtestsupport.h: text, escapeRegex, Flags and flags, kNone .. kBoth, dirtyStatus,
// expectReleased and kNoNumber.
using namespace transtest;

inline std::u16string utf16(TransString const& string) {
  TransStatus local;
  return std::u16string(TransUTF16::internal(string.asUTF16(local)));
}

// Sets LC_NUMERIC for one test and restores "C" afterwards.
class NumericLocale {
public:
  explicit NumericLocale(char const* name) { available_ = std::setlocale(LC_NUMERIC, name) != nullptr; }
  ~NumericLocale() { std::setlocale(LC_NUMERIC, "C"); }
  bool available() const { return available_; }

private:
  bool available_;
};

// Asks every XML and path slot of `impl` (not applicable to null, text and numbers; `context` and
// `path` go to the slots that take them) and checks the placeholder and both flags. Each call starts
// from a clean status, so the flags come from the slot itself.
inline void expectNotApplicableXMLAndPathSlots(TransValueImpl const& impl, TransString const& context,
                                               TransString const& path) {
  TransStatus status;
  OwnedString byPath(impl.asString(context, path, status));
  ASSERT_NE(byPath, nullptr);
  EXPECT_TRUE(byPath->empty());
  EXPECT_EQ(flags(status), kBoth) << "asString(context, path)";

  status = TransStatus();
  OwnedList list(impl.asStringList(context, path, status));
  ASSERT_NE(list, nullptr);
  EXPECT_TRUE(list->empty());
  EXPECT_EQ(flags(status), kBoth) << "asStringList";

  status = TransStatus();
  OwnedString mbcsXML(impl.asMBCSXML(status));
  ASSERT_NE(mbcsXML, nullptr);
  EXPECT_TRUE(mbcsXML->empty());
  EXPECT_EQ(flags(status), kBoth) << "asMBCSXML";

  status = TransStatus();
  OwnedString utf16XML(impl.asUTF16XML(status));
  ASSERT_NE(utf16XML, nullptr);
  EXPECT_TRUE(utf16XML->empty());
  EXPECT_EQ(flags(status), kBoth) << "asUTF16XML";

  status = TransStatus();
  EXPECT_EQ(impl.asDouble(context, path, status), kNoNumber);
  EXPECT_EQ(flags(status), kBoth) << "asDouble(context, path)";

  status = TransStatus();
  EXPECT_EQ(impl.asXalanDocument(status), nullptr);
  EXPECT_EQ(flags(status), kBoth) << "asXalanDocument";
}

}  // namespace valuetest
