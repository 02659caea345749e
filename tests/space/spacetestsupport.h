// Helpers shared by the space tests.
#pragma once

#include <transspace/transowner.h>
#include <transspace/transspace.h>
#include <transspace/transstatus.h>
#include <transspace/transstring.h>
#include <transspace/transstringlist.h>
#include "transtestsupport.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace spacetest {

// What TransSpace hands out goes back through TransSpace::releaseString / releaseStringList.
using OwnedList = TransStringListOwner;
using OwnedString = TransStringOwner;

// From transtestsupport.h: text, escapeRegex, Flags and flags, kNone .. kBoth, dirtyStatus,
// expectReleased and kNoNumber.
using namespace transtest;

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

inline TransImage image(char const* name, char const* data = "", int number = 0) {
  TransImage result;
  result.name = TransString(name);
  result.data = data;
  result.text = TransString(data);
  result.number = number;
  return result;
}

}  // namespace spacetest
