// TransOwner: owners for the strings and lists that the library hands out, which the caller must
// give back with releaseString / releaseStringList. Holding one in a TransOwner gives it back when
// the owner goes, exception or not:
//   TransStringOwner label(value.asString(context, path, status));
//   std::puts(label->asMBCS());
#pragma once

#include <transspace/transspace.h>

#include <memory>

struct TransRelease {
  void operator()(TransString* string) const { TransSpace::releaseString(string); }
  void operator()(TransStringList* strings) const { TransSpace::releaseStringList(strings); }
};

using TransStringOwner = std::unique_ptr<TransString, TransRelease>;
using TransStringListOwner = std::unique_ptr<TransStringList, TransRelease>;
