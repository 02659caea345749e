// TransString and TransStringImpl.
#include <transspace/transstring.h>
#include "core/transstringimpl.h"

#include "coretest.h"
#include <transspace/zorb/platform.h>

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <link.h>

#include <clocale>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <type_traits>

// ---- a seam for the assertion tests ----
//
// The forms without status, asMBCS() and asUTF16(), assert that their status overload reported no
// failure. No string operation ever sets failure, so through the public API the assertions
// cannot fire. To check them truthfully against the real library (its compiled text, source file,
// line and function name, not a copy of them in this test), this program interposes the two status
// overloads: the library is built with default visibility for TransString and -fPIC, so its own
// call from asMBCS() to asMBCS(TransStatus&) goes through the PLT and binds to the definition in
// the executable (ELF symbol interposition, like a replacement malloc). The definitions below forward
// to the library's own functions (found with dlsym(RTLD_NEXT)), so every other test sees the real
// behaviour; only while gForceFailure is set (inside the child process of a death test) do they then
// set the failure flag, which is the single condition that the assertions check.
namespace {
bool gForceFailure = false;
int gInterposedCalls = 0;

template <typename Function>
Function nextDefinition(char const* mangledName) {
  void* symbol = dlsym(RTLD_NEXT, mangledName);
  if (symbol == nullptr) {
    std::fprintf(stderr, "core_tests: cannot find %s in libtransspace\n", mangledName);
    std::abort();
  }
  return reinterpret_cast<Function>(symbol);
}
}  // namespace

char const* TransString::asMBCS(TransStatus& status) const {
  using Real = char const* (*)(TransString const*, TransStatus&);
  static Real const real = nextDefinition<Real>("_ZNK11TransString6asMBCSER11TransStatus");
  ++gInterposedCalls;
  char const* result = real(this, status);
  if (gForceFailure) status.failure(true);
  return result;
}

unsigned short const* TransString::asUTF16(TransStatus& status) const {
  using Real = unsigned short const* (*)(TransString const*, TransStatus&);
  static Real const real = nextDefinition<Real>("_ZNK11TransString7asUTF16ER11TransStatus");
  ++gInterposedCalls;
  unsigned short const* result = real(this, status);
  if (gForceFailure) status.failure(true);
  return result;
}

namespace {

using coretest::CoreTest;
using coretest::u16;
using coretest::us;

class TransStringTest : public CoreTest {};

std::string mbcs(TransString const& text) {
  TransStatus status;
  char const* bytes = text.asMBCS(status);
  return bytes == nullptr ? std::string("<null>") : std::string(bytes);
}

icu::UnicodeString utf16(TransString const& text) {
  TransStatus status;
  unsigned short const* units = text.asUTF16(status);
  return units == nullptr ? icu::UnicodeString(u"<null>") : u16(units);
}

// An empty text: both readings are an empty string, never null, and each warns without failure.
void expectEmptyWithWarning(TransString const& text) {
  EXPECT_TRUE(text.empty());
  TransStatus status;
  char const* bytes = text.asMBCS(status);
  ASSERT_NE(bytes, nullptr);
  EXPECT_STREQ(bytes, "");
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(status.failure());
  unsigned short const* units = text.asUTF16(status);
  ASSERT_NE(units, nullptr);
  EXPECT_EQ(units[0], 0);
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(status.failure());
}

// Neither text is less than the other: one key.
::testing::AssertionResult sameKey(TransString const& a, TransString const& b) {
  bool const ab = a < b, ba = b < a;
  if (!ab && !ba) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "a < b is " << ab << ", b < a is " << ba;
}

// ---- construction ----

TEST_F(TransStringTest, HandleHoldsExactlyOnePointer) {
  EXPECT_EQ(sizeof(TransString), sizeof(void*));
  EXPECT_FALSE(std::is_polymorphic<TransString>::value);
  EXPECT_FALSE(std::is_polymorphic<TransStringImpl>::value);
}

TEST_F(TransStringTest, NullMbcsPointerGivesAnEmptyString) {
  expectEmptyWithWarning(TransString(static_cast<char const*>(nullptr)));
}

TEST_F(TransStringTest, NullUtf16PointerGivesAnEmptyString) {
  expectEmptyWithWarning(TransString(static_cast<unsigned short const*>(nullptr)));
}

TEST_F(TransStringTest, DefaultAndEmptyTextsAreEmpty) {
  for (TransString const& text : {TransString(), TransString(""), TransString(us(u""))}) {
    EXPECT_TRUE(text.empty());
    TransStatus status;
    EXPECT_STREQ(text.asMBCS(status), "");
    EXPECT_TRUE(status.warning());
    EXPECT_FALSE(status.failure());
  }
}

TEST_F(TransStringTest, MbcsConstructorStopsAtTheFirstNul) {
  char const bytes[] = {'a', 'b', '\0', 'c', '\0'};
  EXPECT_EQ(mbcs(TransString(bytes)), "ab");
  char16_t const units[] = {u'a', u'b', 0, u'c', 0};
  EXPECT_EQ(utf16(TransString(us(units))), icu::UnicodeString(u"ab"));
}

// ---- both directions ----

TEST_F(TransStringTest, BuiltFromUtf16GivesTheSameUnitsAndTheCodePageBytes) {
  char16_t const text[] = u"Gr\u00FC\u00DFe \u4E2D \U0001F600";
  TransString string(us(text));
  EXPECT_FALSE(string.empty());
  TransStatus status;
  status.failure(true);  // reset by the call
  unsigned short const* units = string.asUTF16(status);
  EXPECT_FALSE(status.warning());
  EXPECT_FALSE(status.failure());
  ASSERT_NE(units, nullptr);
  EXPECT_EQ(u16(units), icu::UnicodeString(text));
  EXPECT_EQ(std::char_traits<char16_t>::length(TransUTF16::internal(units)), std::char_traits<char16_t>::length(text));
  status.warning(true);
  EXPECT_STREQ(string.asMBCS(status),
               "Gr\xC3\xBC\xC3\x9F"
               "e \xE4\xB8\xAD \xF0\x9F\x98\x80");
  EXPECT_FALSE(status.warning());
  EXPECT_FALSE(status.failure());
}

TEST_F(TransStringTest, BuiltFromMbcsGivesTheSameBytesAndTheirUtf16) {
  char const bytes[] =
      "Gr\xC3\xBC\xC3\x9F"
      "e \xE4\xB8\xAD";
  TransString string(bytes);
  TransStatus status;
  char const* back = string.asMBCS(status);
  EXPECT_STREQ(back, bytes);
  EXPECT_NE(back, bytes);  // a copy held by the string
  EXPECT_FALSE(status.warning());
  EXPECT_FALSE(status.failure());
  EXPECT_EQ(u16(string.asUTF16(status)), icu::UnicodeString(u"Gr\u00FC\u00DFe \u4E2D"));
  EXPECT_FALSE(status.warning());
  EXPECT_FALSE(status.failure());
}

TEST_F(TransStringTest, BothDirectionsInWindows1252) {
  useCodePage("windows-1252");
  TransString fromUtf16(us(u"caf\u00E9 \u20AC"));
  EXPECT_EQ(mbcs(fromUtf16), "caf\xE9 \x80");
  EXPECT_EQ(utf16(fromUtf16), icu::UnicodeString(u"caf\u00E9 \u20AC"));
  TransString fromMbcs("caf\xE9 \x80");
  EXPECT_EQ(utf16(fromMbcs), icu::UnicodeString(u"caf\u00E9 \u20AC"));
  EXPECT_EQ(mbcs(fromMbcs), "caf\xE9 \x80");
}

TEST_F(TransStringTest, CharacterNotInTheCodePageIsSubstitutedWithoutAFlag) {
  useCodePage("ISO-8859-1");
  TransString text(us(u"\u00E9\u4E2D"));
  TransStatus status;
  EXPECT_STREQ(text.asMBCS(status), "\xE9\x1A");
  EXPECT_FALSE(status.warning());
  EXPECT_FALSE(status.failure());
}

TEST_F(TransStringTest, ConvertedFormsAreCached) {
  TransString fromUtf16(us(u"abc"));
  TransStatus status;
  char const* first = fromUtf16.asMBCS(status);
  EXPECT_EQ(fromUtf16.asMBCS(status), first);
  // Once filled, the MBCS form is not refreshed, even when the code page changes.
  useCodePage("no-such-codepage");
  EXPECT_STREQ(fromUtf16.asMBCS(status), "abc");
  EXPECT_EQ(fromUtf16.asMBCS(status), first);

  zorb::ResetPlatformSettings();
  TransString fromMbcs("abc");
  unsigned short const* units = fromMbcs.asUTF16(status);
  EXPECT_EQ(fromMbcs.asUTF16(status), units);
}

TEST_F(TransStringTest, UnconvertibleFormIsEmptyWithoutAFlagAndRetriedLater) {
  useCodePage("no-such-codepage");
  TransString fromUtf16(us(u"abc"));
  TransString fromMbcs("abc");
  TransStatus status;
  // The warning is computed from the source text before converting: no flag, though the result is empty.
  char const* bytes = fromUtf16.asMBCS(status);
  ASSERT_NE(bytes, nullptr);
  EXPECT_STREQ(bytes, "");
  EXPECT_FALSE(status.warning());
  EXPECT_FALSE(status.failure());
  EXPECT_FALSE(fromUtf16.empty());
  unsigned short const* units = fromMbcs.asUTF16(status);
  ASSERT_NE(units, nullptr);
  EXPECT_EQ(units[0], 0);
  EXPECT_FALSE(status.warning());
  EXPECT_FALSE(status.failure());
  EXPECT_FALSE(fromMbcs.empty());
  // Nothing was cached: with a usable code page the next request converts.
  zorb::ResetPlatformSettings();
  EXPECT_EQ(mbcs(fromUtf16), "abc");
  EXPECT_EQ(utf16(fromMbcs), icu::UnicodeString(u"abc"));
}

TEST_F(TransStringTest, FormsWithoutStatusGiveTheSameTexts) {
  TransString fromUtf16(us(u"\u00E9t\u00E9"));
  EXPECT_STREQ(fromUtf16.asMBCS(), "\xC3\xA9t\xC3\xA9");
  EXPECT_EQ(u16(fromUtf16.asUTF16()), icu::UnicodeString(u"\u00E9t\u00E9"));
  TransString empty;
  ASSERT_NE(empty.asMBCS(), nullptr);
  EXPECT_STREQ(empty.asMBCS(), "");
  ASSERT_NE(empty.asUTF16(), nullptr);
  EXPECT_EQ(empty.asUTF16()[0], 0);
}

// ---- trim ----

TEST_F(TransStringTest, TrimRemovesSpacesTabsAndLineBreaksAtBothEnds) {
  char16_t const* const cases[] = {u"  a b  ", u"\ta b\t\t", u"\r\na b\n", u" \t\r\n a b \n\t "};
  for (char16_t const* text : cases) {
    TransString string(us(text));
    TransStatus status;
    status.failure(true);
    status.warning(true);
    TransString& result = string.trim(status);
    EXPECT_EQ(&result, &string);
    EXPECT_FALSE(status.warning());
    EXPECT_FALSE(status.failure());
    EXPECT_EQ(utf16(string), icu::UnicodeString(u"a b"));
    EXPECT_EQ(mbcs(string), "a b");
  }
}

TEST_F(TransStringTest, TrimOfMbcsTextRegeneratesTheBytes) {
  TransString string("\t a b \r\n");
  EXPECT_EQ(mbcs(string), "\t a b \r\n");
  TransStatus status;
  string.trim(status);
  EXPECT_FALSE(status.warning());
  EXPECT_EQ(mbcs(string), "a b");
  EXPECT_EQ(utf16(string), icu::UnicodeString(u"a b"));
}

TEST_F(TransStringTest, TrimKeepsInnerWhiteSpace) {
  TransString string(us(u" a \t\n b "));
  TransStatus status;
  string.trim(status);
  EXPECT_EQ(utf16(string), icu::UnicodeString(u"a \t\n b"));
}

TEST_F(TransStringTest, TrimOfSpacesOnlyGivesAnEmptyTextWithAWarning) {
  TransString string("    ");
  TransStatus status;
  string.trim(status);
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(status.failure());
  EXPECT_TRUE(string.empty());
  EXPECT_EQ(mbcs(string), "");
  TransString blanks(us(u" \t\r\n "));
  blanks.trim(status);
  EXPECT_TRUE(status.warning());
  EXPECT_TRUE(blanks.empty());
  TransString nothing;
  nothing.trim(status);
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(status.failure());
}

TEST_F(TransStringTest, TrimOfBytesThatDoNotConvertGivesAnEmptyTextWithAWarning) {
  // Bytes "do not convert" when the conversion comes out empty:
  // with a valid code page ICU substitutes instead (see the next test), so a code page that cannot
  // be opened is used here.
  useCodePage("no-such-codepage");
  TransString string(" abc ");
  EXPECT_FALSE(string.empty());
  TransStatus status;
  string.trim(status);
  EXPECT_TRUE(status.warning());
  EXPECT_FALSE(status.failure());
  EXPECT_TRUE(string.empty());
  zorb::ResetPlatformSettings();  // the bytes were dropped by trim: nothing comes back
  EXPECT_EQ(mbcs(string), "");
  EXPECT_TRUE(string.empty());
}

TEST_F(TransStringTest, InvalidUtf8IsSubstitutedSoTrimKeepsTheText) {
  // ICU's default callback turns the illegal byte 0xFF into U+FFFD: no failure, nothing empty.
  TransString string(" \xFF ");
  TransStatus status;
  string.trim(status);
  EXPECT_FALSE(status.warning());
  EXPECT_FALSE(string.empty());
  EXPECT_EQ(utf16(string), icu::UnicodeString(u"\uFFFD"));
  EXPECT_EQ(mbcs(string), "\xEF\xBF\xBD");
}

// ---- ordering ----

TEST_F(TransStringTest, OrderingIgnoresLetterCase) {
  EXPECT_TRUE(TransString("abc") < TransString("ABD"));
  EXPECT_FALSE(TransString("ABD") < TransString("abc"));
  EXPECT_TRUE(sameKey(TransString("abc"), TransString("ABC")));
  EXPECT_TRUE(TransString("ab") < TransString("abc"));
  EXPECT_FALSE(TransString("abc") < TransString("ab"));
  TransString same("aBc");
  EXPECT_FALSE(same < same);
}

TEST_F(TransStringTest, OrderingIsTheSameWhateverTheSourceForm) {
  EXPECT_TRUE(TransString(us(u"abc")) < TransString("ABD"));
  EXPECT_TRUE(TransString("abc") < TransString(us(u"ABD")));
  EXPECT_TRUE(sameKey(TransString("abc"), TransString(us(u"ABC"))));
  EXPECT_TRUE(TransString(us(u"ab")) < TransString(us(u"ABC")));
}

TEST_F(TransStringTest, EmptyTextIsLessThanAnyOther) {
  EXPECT_TRUE(TransString() < TransString("a"));
  EXPECT_FALSE(TransString("a") < TransString());
  EXPECT_TRUE(sameKey(TransString(), TransString(us(u""))));
}

TEST_F(TransStringTest, OrderingIsInUtf16CodeUnits) {
  // Upper-cased, then compared by code unit: "_" (U+005F) sorts after "Z" (U+005A) and so after
  // any letter, whatever its case; a surrogate (U+D83D) sorts before U+FF21.
  EXPECT_TRUE(TransString("z") < TransString("_"));
  EXPECT_TRUE(TransString(us(u"\U0001F600")) < TransString(us(u"\uFF21")));
}

TEST_F(TransStringTest, StrasseEqualsSTRASSE) {
  // ICU's full upper-case mapping turns ß into SS.
  EXPECT_TRUE(sameKey(TransString(us(u"Stra\u00DFe")), TransString("STRASSE")));
  EXPECT_TRUE(sameKey(TransString("Stra\xC3\x9F"
                                  "e"),
                      TransString(us(u"strasse"))));
  EXPECT_TRUE(TransString(us(u"Stra\u00DFe")) < TransString("STRASSF"));
}

TEST_F(TransStringTest, NamesDifferingOnlyInCaseAreOneMapKey) {
  std::map<TransString, int> map;
  map[TransString("Name")] = 1;
  map[TransString("NAME")] = 2;
  map[TransString(us(u"name"))] = 3;
  map[TransString(us(u"Stra\u00DFe"))] = 4;
  map[TransString("STRASSE")] = 5;
  EXPECT_EQ(map.size(), 2u);
  EXPECT_EQ(map.begin()->second, 3);
  EXPECT_EQ(mbcs(map.begin()->first), "Name");  // the key keeps its first spelling
  EXPECT_EQ(map.rbegin()->second, 5);
}

TEST_F(TransStringTest, TurkishLocaleMakesDottedAndDotlessKeysDiffer) {
  useLocale(LC_CTYPE, "tr_TR.UTF-8");
  // i upper-cases to U+0130 there, I stays U+0049: different keys, I before i.
  TransString i("i"), I("I");
  EXPECT_TRUE(I < i);
  EXPECT_FALSE(i < I);
  EXPECT_TRUE(sameKey(TransString("i"), TransString(us(u"\u0130"))));
  std::map<TransString, int> map;
  map[TransString("id")] = 1;
  map[TransString("ID")] = 2;
  EXPECT_EQ(map.size(), 2u);
}

TEST_F(TransStringTest, IAndICompareEqualInTheCLocale) {
  EXPECT_TRUE(sameKey(TransString("i"), TransString("I")));
  EXPECT_TRUE(sameKey(TransString("id"), TransString("ID")));
}

TEST_F(TransStringTest, UpperCaseCacheKeepsTheLocaleOfItsComputation) {
  useLocale(LC_CTYPE, "tr_TR.UTF-8");
  TransString i("i"), I("I");
  EXPECT_TRUE(I < i);  // computes both upper-case forms under tr_TR
  useLocale(LC_CTYPE, "C");
  EXPECT_TRUE(I < i) << "the cached upper-case forms are not recomputed when the locale changes";
  EXPECT_FALSE(i < I);
  // Copies carry the cache along.
  TransString iCopy(i);
  EXPECT_TRUE(I < iCopy);
  // Fresh strings are upper-cased in the locale of now.
  EXPECT_TRUE(sameKey(TransString("i"), TransString("I")));

  // The other way round: computed in C, still one key after switching to Turkish.
  TransString j("i"), J("I");
  EXPECT_TRUE(sameKey(j, J));
  useLocale(LC_CTYPE, "tr_TR.UTF-8");
  EXPECT_TRUE(sameKey(j, J));
  EXPECT_TRUE(TransString("I") < TransString("i"));
}

TEST_F(TransStringTest, TrimClearsTheUpperCaseCache) {
  useLocale(LC_CTYPE, "tr_TR.UTF-8");
  TransString i("i"), I("I");
  EXPECT_TRUE(I < i);
  useLocale(LC_CTYPE, "C");
  TransStatus status;
  i.trim(status);
  I.trim(status);
  EXPECT_TRUE(sameKey(i, I));
}

TEST_F(TransStringTest, ImplementationCaches) {
  TransStringImpl impl("abc");
  EXPECT_EQ(impl.mixedMBCS(), "abc");
  EXPECT_EQ(impl.mixedUTF16(), icu::UnicodeString(u"abc"));
  EXPECT_EQ(impl.upperUTF16(), icu::UnicodeString(u"ABC"));
  // The UTF-16 member is NUL-terminated in place.
  EXPECT_EQ(impl.mixedUTF16().getBuffer()[3], 0);
  TransStringImpl empty;
  EXPECT_TRUE(empty.upperUTF16().isEmpty());
  // A failed conversion leaves the cache empty.
  useCodePage("no-such-codepage");
  TransStringImpl unconverted("abc");
  EXPECT_TRUE(unconverted.mixedUTF16().isEmpty());
  EXPECT_TRUE(unconverted.upperUTF16().isEmpty());
  zorb::ResetPlatformSettings();
  EXPECT_EQ(unconverted.mixedUTF16(), icu::UnicodeString(u"abc"));
}

// ---- copy, assignment, swap ----

TEST_F(TransStringTest, CopyIsDeep) {
  TransString source(us(u" abc "));
  TransStatus status;
  char const* sourceBytes = source.asMBCS(status);
  TransString copy(source);
  EXPECT_NE(copy.asMBCS(status), sourceBytes);  // its own caches
  EXPECT_STREQ(copy.asMBCS(status), " abc ");
  copy.trim(status);
  EXPECT_EQ(mbcs(copy), "abc");
  EXPECT_EQ(mbcs(source), " abc ");
  EXPECT_EQ(source.asMBCS(status), sourceBytes);
}

// ICU shares the heap buffer of a long UnicodeString between copies (reference counting) and
// un-shares it on the next getTerminatedBuffer. A copy of the string must not take over the buffer
// that an earlier asUTF16 pointed into: the source is not modified, so its pointer stays valid,
// also after the copy is gone.
TEST_F(TransStringTest, CopyLeavesEarlierPointersOfTheSourceValid) {
  char16_t const text[] = u"a text long enough for ICU to keep it in a heap buffer";
  TransString source(us(text));
  TransStatus status;
  unsigned short const* const before = source.asUTF16(status);
  {
    TransString const copy(source);
    EXPECT_EQ(source.asUTF16(status), before);  // asked while the copy is alive
    EXPECT_EQ(u16(copy.asUTF16(status)), icu::UnicodeString(text));
    TransString assigned;
    assigned = source;
    EXPECT_EQ(source.asUTF16(status), before);
  }
  EXPECT_EQ(source.asUTF16(status), before);
  EXPECT_EQ(u16(before), icu::UnicodeString(text));
}

TEST_F(TransStringTest, AssignmentCopiesTheText) {
  TransString source("abc");
  TransString target(us(u"xyz"));
  target = source;
  EXPECT_EQ(mbcs(target), "abc");
  EXPECT_EQ(utf16(target), icu::UnicodeString(u"abc"));
  TransStatus status;
  target.trim(status);
  source = TransString();
  EXPECT_TRUE(source.empty());
  EXPECT_EQ(mbcs(target), "abc");
}

TEST_F(TransStringTest, AfterSwapEarlierPointersBelongToTheOtherString) {
  TransString a("alpha");
  TransString b(us(u"beta"));
  TransStatus status;
  char const* aBytes = a.asMBCS(status);
  unsigned short const* aUnits = a.asUTF16(status);
  unsigned short const* bUnits = b.asUTF16(status);
  a.swap(b);
  EXPECT_EQ(b.asMBCS(status), aBytes);
  EXPECT_EQ(b.asUTF16(status), aUnits);
  EXPECT_STREQ(aBytes, "alpha");
  EXPECT_EQ(u16(aUnits), icu::UnicodeString(u"alpha"));
  EXPECT_EQ(a.asUTF16(status), bUnits);
  EXPECT_EQ(mbcs(a), "beta");
  // std::swap goes through copy construction and assignment instead; the texts follow too.
  std::swap(a, b);
  EXPECT_EQ(mbcs(a), "alpha");
  EXPECT_EQ(mbcs(b), "beta");
}

// ---- the assertions of the forms without status ----

std::string regexLiteral(std::string const& text) {
  std::string out;
  for (char c : text) {
    if (std::strchr("\\^$.|?*+()[]{}", c) != nullptr) out += '\\';
    out += c;
  }
  return out;
}

// glibc's assert message: "<program>: <file>:<line>: <function>: Assertion `<expression>' failed."
std::string assertionRegex(char const* function, char const* expression) {
  return regexLiteral("backend/transspace/src/core/transstring.cpp:") + "[0-9]+" +
         regexLiteral(std::string(": ") + function + ": Assertion `" + expression + "' failed.");
}

char const kMBCSExpression[] = "! status.failure() && \"Failure: TransString::asMBCS()\"";
char const kUTF16Expression[] = "! status.failure() && \"Failure: TransString::asUTF16()\"";
char const kMBCSFunction[] = "const char* TransString::asMBCS() const";
char const kUTF16Function[] = "const UChar* TransString::asUTF16() const";

class TransStringAssertionTest : public TransStringTest {
protected:
  void SetUp() override {
    TransStringTest::SetUp();
#ifdef TRANSSPACE_SANITIZED
    GTEST_SKIP() << "death tests are skipped in the sanitizer build";
#endif
  }
  void TearDown() override {
    gForceFailure = false;
    TransStringTest::TearDown();
  }
};

// Without this the death tests below would prove nothing: the library's forms without status must
// reach the status overloads through the interposed symbols.
TEST_F(TransStringTest, LibraryCallsTheInterposedStatusOverloads) {
  TransString text("abc");
  int const before = gInterposedCalls;
  EXPECT_STREQ(text.asMBCS(), "abc");
  EXPECT_EQ(gInterposedCalls, before + 1) << "asMBCS() did not call the interposable asMBCS(TransStatus&)";
  EXPECT_EQ(u16(text.asUTF16()), icu::UnicodeString(u"abc"));
  EXPECT_EQ(gInterposedCalls, before + 2) << "asUTF16() did not call the interposable asUTF16(TransStatus&)";
}

TEST_F(TransStringAssertionTest, AsMBCSAssertsNoFailure) {
  TransString text("abc");
  EXPECT_DEATH(
      {
        gForceFailure = true;
        text.asMBCS();
      },
      assertionRegex(kMBCSFunction, kMBCSExpression));
}

TEST_F(TransStringAssertionTest, AsUTF16AssertsNoFailure) {
  TransString text(us(u"abc"));
  EXPECT_DEATH(
      {
        gForceFailure = true;
        text.asUTF16();
      },
      assertionRegex(kUTF16Function, kUTF16Expression));
}

// The path of the loaded libtransspace, found among the program's loaded objects.
std::string loadedLibraryPath() {
  std::string path;
  dl_iterate_phdr(
      [](dl_phdr_info* info, size_t, void* data) {
        if (info->dlpi_name != nullptr && std::strstr(info->dlpi_name, "libtransspace.so") != nullptr) {
          *static_cast<std::string*>(data) = info->dlpi_name;
          return 1;
        }
        return 0;
      },
      &path);
  return path;
}

// The assertion texts are compiled into the library as NUL-terminated strings (the line numbers are
// immediate operands and are checked by the death tests above, not here).
TEST_F(TransStringTest, LibraryContainsTheAssertionTexts) {
  std::string const path = loadedLibraryPath();
  ASSERT_FALSE(path.empty()) << "libtransspace.so is not loaded";
  std::ifstream file(path, std::ios::binary);
  ASSERT_TRUE(file) << path;
  std::string const bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  for (char const* text : {kMBCSExpression, kUTF16Expression, kMBCSFunction, kUTF16Function,
                           "backend/transspace/src/core/transstring.cpp"}) {
    EXPECT_NE(bytes.find(std::string(text) + '\0'), std::string::npos) << "not in " << path << ": " << text;
  }
}

}  // namespace
