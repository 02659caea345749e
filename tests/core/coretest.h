// Shared helpers of the core tests.
#pragma once

#include "core/transutf16.h"
#include <transspace/zorb/platform.h>

#include <gtest/gtest.h>

#include <clocale>
#include <ostream>
#include <string>
#include <unicode/unistr.h>

// Lets GoogleTest print ICU strings (as UTF-8) in failure messages.
U_NAMESPACE_BEGIN
inline void PrintTo(UnicodeString const& text, std::ostream* out) {
  std::string bytes;
  text.toUTF8String(bytes);
  *out << '"' << bytes << '"' << (text.isBogus() ? " (bogus)" : "");
}
U_NAMESPACE_END

namespace coretest {

// The library follows process-wide settings (the host's UTF-8 mode and code page, the C library's
// locale). Every test starts and ends with the defaults: locale "C", UTF-8 mode on, code page UTF-8.
class CoreTest : public ::testing::Test {
protected:
  void SetUp() override { restore(); }
  void TearDown() override { restore(); }

  static void restore() {
    std::setlocale(LC_ALL, "C");
    zorb::ResetPlatformSettings();
  }

  // Switches a locale category, failing the test (not skipping it) when the locale is not installed:
  // the project's install script generates de_DE.UTF-8 and tr_TR.UTF-8.
  static void useLocale(int category, char const* name) {
    ASSERT_NE(std::setlocale(category, name), nullptr) << "locale " << name << " is not installed";
  }

  // UTF-8 mode off with the given default code page (an ICU converter name, valid or not).
  static void useCodePage(char const* name) {
    zorb::SetUTF8Mode(false);
    zorb::SetDefaultCodePage(name);
  }
};

// The UTF-16 text of a char16_t literal as the exported signatures take it.
inline unsigned short const* us(char16_t const* text) { return TransUTF16::exported(text); }

// A UTF-16 pointer from the exported signatures read back as an ICU string (for comparison and
// printing).
inline icu::UnicodeString u16(unsigned short const* text) {
  return text == nullptr ? icu::UnicodeString() : icu::UnicodeString(TransUTF16::internal(text));
}

inline std::string utf8(icu::UnicodeString const& text) {
  std::string out;
  text.toUTF8String(out);
  return out;
}

}  // namespace coretest
