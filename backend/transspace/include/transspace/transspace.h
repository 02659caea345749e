// TransSpace: the named value space. It maps case-insensitive, trimmed names to
// values, keeps image records under a group name and an image name, and keeps the XML platform
// (Xerces-C, Xalan-C XPath and source tree) initialised for as long as it lives.
#pragma once

#include <transspace/transexport.h>
#include <transspace/transimage.h>
#include <transspace/transstatus.h>
#include <transspace/transstring.h>
#include <transspace/transstringlist.h>
#include <transspace/transvalue.h>

class TRANS_EXPORT TransSpace {
public:
  TransSpace();
  ~TransSpace();
  TransSpace(TransSpace const&) = delete;
  TransSpace& operator=(TransSpace const&) = delete;

  // The forms without status assert that the status reports no failure (a warning alone passes).
  bool add(TransString const& handle, TransValue const& value, TransStatus& status);
  bool add(TransString const& handle, TransValue const& value);
  // The same, but the value is moved in instead of copied; it is left as it was when the add fails.
  bool add(TransString const& handle, TransValue&& value, TransStatus& status);
  bool add(TransString const& handle, TransValue&& value);
  // The reference stays valid until the entry is removed or the space destroyed.
  TransValue const& find(TransString const& handle, TransStatus& status) const;
  TransValue const& find(TransString const& handle) const;
  bool exists(TransString const& handle, TransStatus& status) const;
  bool exists(TransString const& handle) const;
  bool remove(TransString const& handle, TransStatus& status);
  bool remove(TransString const& handle);
  // Removes the value of that name and moves it into `value` (unchanged when there is none).
  bool take(TransString const& handle, TransValue& value, TransStatus& status);
  bool take(TransString const& handle, TransValue& value);
  // Removes the value and the image group of that name; the result looks at the value only.
  bool removeAll(TransString const& handle, TransStatus& status);
  // A new list of the names, owned by the caller.
  TransStringList* list(TransStatus& status) const;
  TransStringList* list() const;

  static void releaseString(TransString*& string, TransStatus& status);
  static void releaseString(TransString*& string);
  static void releaseStringList(TransStringList*& strings, TransStatus& status);
  static void releaseStringList(TransStringList*& strings);

  // Image store: group names ignore letter case, image names do not.
  bool addImage(TransString const& group, TransImage const& image, TransStatus& status);
  // The reference stays valid until the group's images next change.
  TransImage const& findImage(TransString const& group, TransString const& name, TransStatus& status) const;
  bool existsImage(TransString const& group, TransString const& name, TransStatus& status) const;
  bool removeImage(TransString const& group, TransString const& name, TransStatus& status);

private:
  class Data;
  Data* data_;
};
