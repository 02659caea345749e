// Where the TransValue behind a Python Value lives: in the cell itself, or as an entry of a space.
//
// A value stored in a space is an entry of the library's map, and the space hands out a reference
// to it. A Python Value taken from a space (space[name]) reads that entry in place, with no copy;
// when the entry leaves the space (del, remove_all, the space's end) the space takes the value
// out into the cell (TransSpace::take), so the Python object keeps working. The other way round, a
// Value that lives in its own cell is moved into the space by the first assignment, not copied.
//
// A value fills caches as it answers (strings convert lazily, a document builds its query view on
// the first query), so one thread at a time uses it: the cell's lock. Locks are always taken space
// first, then cell, and with the GIL released.
#pragma once

#include <memory>
#include <mutex>

#include <transspace/transvalue.h>
#include "xmlplatform.h"

namespace pytrans {

enum class ValueKind { null, number, text, document };

char const* kindName(ValueKind kind);

class ValueCell {
public:
  ValueCell(TransValue value, ValueKind kind);
  // Over an entry of a space: the space's platform share keeps the entry's document valid.
  ValueCell(TransValue const* entry, ValueKind kind, XmlPlatform platform);
  ValueCell(ValueCell const&) = delete;
  ValueCell& operator=(ValueCell const&) = delete;

  ValueKind kind() const { return kind_; }
  std::mutex& lock() { return lock_; }

  // The rest with the cell's lock held.
  TransValue const& value() const { return *value_; }
  bool inSpace() const { return owned_ == nullptr; }
  // The cell's own value, to be moved into a space; then readEntry.
  TransValue& ownValue() { return *owned_; }
  // Reads `entry` of a space from now on (the cell's own value has moved there).
  void readEntry(TransValue const* entry);
  // Owns `value` (taken out of the space) from now on.
  void keep(TransValue value);

private:
  XmlPlatform platform_;  // declared first, released last: documents die while the platform is up
  std::unique_ptr<TransValue> owned_;
  TransValue const* value_;
  ValueKind const kind_;
  std::mutex lock_;
};

}  // namespace pytrans
