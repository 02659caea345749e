// Helpers shared by the value tests: reading returned strings, owning them, death-test regexes
// and a scoped numeric locale.
#pragma once

#include "transstatus.h"
#include "transstring.h"
#include "transstringlist.h"
#include "transvalue.h"

#include <clocale>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace valuetest {

// Every TransString* / TransStringList* a view returns is the caller's: these hand it back.
struct StringRelease {
  void operator()(TransString* string) const { TransValue::releaseString(string); }
};
struct ListRelease {
  void operator()(TransStringList* strings) const { TransValue::releaseStringList(strings); }
};
using OwnedString = std::unique_ptr<TransString, StringRelease>;
using OwnedList = std::unique_ptr<TransStringList, ListRelease>;

// The text of a string in the host's code page (UTF-8 in the stand-alone host).
inline std::string text(TransString const& string) {
  TransStatus local;
  return string.asMBCS(local);
}

inline std::u16string utf16(TransString const& string) {
  TransStatus local;
  return std::u16string(string.asUTF16(local));
}

// A POSIX extended regex that matches `literal` exactly (for assertion messages).
inline std::string escapeRegex(std::string const& literal) {
  std::string result;
  for (char c : literal) {
    if (std::string(".[]{}()*+?^$|\\").find(c) != std::string::npos) result += '\\';
    result += c;
  }
  return result;
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

// Both flags of a status in one comparable value.
struct Flags {
  bool failure;
  bool warning;
  bool operator==(Flags const& other) const { return failure == other.failure && warning == other.warning; }
};
inline Flags flags(TransStatus const& status) { return Flags{status.failure(), status.warning()}; }
inline std::ostream& operator<<(std::ostream& out, Flags const& f) {
  return out << "{failure=" << f.failure << ", warning=" << f.warning << "}";
}
constexpr Flags kNone{false, false};
constexpr Flags kWarning{false, true};
constexpr Flags kFailure{true, false};
constexpr Flags kBoth{true, true};

// A status with both flags set, to show that an operation resets it.
inline TransStatus dirtyStatus() {
  TransStatus status;
  status.failure(true);
  status.warning(true);
  return status;
}

constexpr double kNoNumber = -1.7976931348623157e308;

}  // namespace valuetest
