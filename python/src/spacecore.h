// The C++ side of transspace.Space: one TransSpace of the library, the lock that serialises its
// use, and the Python values that read its entries in place (see valuecell.h). Every member runs
// with the GIL released; the names come in as TransStrings made by the caller.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>

#include <transspace/transimage.h>
#include <transspace/transowner.h>
#include <transspace/transspace.h>
#include "valuecell.h"
#include "xmlplatform.h"

namespace pytrans {

enum class AddOutcome { added, emptyName, duplicate };

class SpaceCore {
public:
  SpaceCore();
  // Moves the values that Python still reads out of the space before it goes.
  ~SpaceCore();
  SpaceCore(SpaceCore const&) = delete;
  SpaceCore& operator=(SpaceCore const&) = delete;

  // Stores a copy of `value`.
  AddOutcome add(TransString const& name, TransValue const& value, ValueKind kind);
  // Stores the cell's value: moved in when the cell owns it, copied when it reads another entry.
  AddOutcome add(TransString const& name, std::shared_ptr<ValueCell> const& cell);
  // A cell over the entry; null when the name is empty or absent.
  std::shared_ptr<ValueCell> find(TransString const& name);
  bool exists(TransString const& name);
  // False when the name is empty or absent.
  bool remove(TransString const& name);
  // Removes the value and the image group of that name; true when a value was removed.
  bool removeAll(TransString const& name);
  // The names in the library's order (ascending, ignoring letter case).
  TransStringListOwner names();

  // False when the group name is empty or blank.
  bool addImage(TransString const& group, TransImage const& image);
  std::optional<TransImage> image(TransString const& group, TransString const& name);
  bool existsImage(TransString const& group, TransString const& name);
  bool removeImage(TransString const& group, TransString const& name);

private:
  struct Entry {
    ValueKind kind;
    std::weak_ptr<ValueCell> cell;  // the Python value reading this entry, if any
    TransString name;               // as it was added
  };

  AddOutcome outcome(bool added, TransString const& name) const;
  TransValue const* findEntry(TransString const& name) const;
  // The entry leaves the space: its value goes to the Python value that reads it, if any.
  void leave(Entry const& entry);

  XmlPlatform platform_;
  std::unique_ptr<TransSpace, void (*)(TransSpace*)> space_;
  std::map<TransValue const*, Entry> entries_;
  std::mutex lock_;
};

}  // namespace pytrans
