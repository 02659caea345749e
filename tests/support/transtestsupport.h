// Helpers shared by the tests of the value and space APIs (the strings and lists they hand out are
// held in the library's own TransStringOwner / TransStringListOwner): reading strings back, death-test regexes, both flags of a status in one value and the
// check of a release.
#pragma once

#include <transspace/transstatus.h>
#include <transspace/transstring.h>
#include <transspace/transstringlist.h>
#include <transspace/transvalue.h>

#include <memory>
#include <ostream>
#include <string>

#include <gtest/gtest.h>

namespace transtest {

// The text of a string in the host's code page (UTF-8 in the stand-alone host).
inline std::string text(TransString const& string) {
  TransStatus local;
  return string.asMBCS(local);
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

// A status with both flags set: operations that "clear the flags" must reset it.
inline TransStatus dirtyStatus() {
  TransStatus status;
  status.failure(true);
  status.warning(true);
  return status;
}

// Hands `pointer` back through a release form with status (TransValue's or TransSpace's
// releaseString / releaseStringList), starting from a status with both flags set: the pointer must
// come back null and the flags must be `expected`.
template <typename T>
void expectReleased(void (*release)(T*&, TransStatus&), T*& pointer, Flags expected) {
  TransStatus status = dirtyStatus();
  release(pointer, status);
  EXPECT_EQ(pointer, nullptr);
  EXPECT_EQ(flags(status), expected);
}

constexpr double kNoNumber = TransValue::noNumber;

}  // namespace transtest
