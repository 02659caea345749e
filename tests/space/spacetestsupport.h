// Helpers shared by the space tests.
#pragma once

#include "transspace.h"
#include "transstatus.h"
#include "transstring.h"
#include "transstringlist.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace spacetest {

struct ListRelease {
  void operator()(TransStringList* strings) const { TransSpace::releaseStringList(strings); }
};
struct StringRelease {
  void operator()(TransString* string) const { TransSpace::releaseString(string); }
};
using OwnedList = std::unique_ptr<TransStringList, ListRelease>;
using OwnedString = std::unique_ptr<TransString, StringRelease>;

inline std::string text(TransString const& string) {
  TransStatus local;
  return string.asMBCS(local);
}

// The text of a value (its asString view), or "<null>" for the null value.
inline std::string valueText(TransValue const& value) {
  TransStatus status;
  OwnedString string(value.asString(status));
  return status.failure() ? "<null>" : text(*string);
}

inline std::vector<std::string> names(TransStringList const& list) {
  std::vector<std::string> result;
  for (unsigned long i = 0; i < list.size(); ++i) {
    TransStatus local;
    result.push_back(list.asMBCS(i, local));
  }
  return result;
}

inline std::string escapeRegex(std::string const& literal) {
  std::string result;
  for (char c : literal) {
    if (std::string(".[]{}()*+?^$|\\").find(c) != std::string::npos) result += '\\';
    result += c;
  }
  return result;
}

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

inline TransImage image(char const* name, char const* data = "", int number = 0) {
  TransImage result;
  result.name = TransString(name);
  result.data = data;
  result.text = TransString(data);
  result.number = number;
  return result;
}

constexpr double kNoNumber = -1.7976931348623157e308;

}  // namespace spacetest
