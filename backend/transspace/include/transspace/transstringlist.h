// TransStringList: an append-only list of texts, read by index or as pointer arrays in
// UTF-16 or in the host's multibyte code page.
#pragma once

#include <transspace/transexport.h>
#include <transspace/transstatus.h>

class TransStringListImpl;

class TRANS_EXPORT TransStringList {
public:
  TransStringList();
  TransStringList(TransStringList const& other);  // copies the elements, not the caches
  ~TransStringList();
  void swap(TransStringList& other);
  TransStringList& operator=(TransStringList other);

  void push_back(unsigned short const* utf16, TransStatus& status);
  void push_back(unsigned short const* utf16);
  unsigned long size() const;
  bool empty() const;

  // Every pointer points into the list's own caches; the arrays hold exactly size() entries.
  unsigned short const* asUTF16(unsigned long index, TransStatus& status) const;
  unsigned short const* asUTF16(unsigned long index) const;
  char const* asMBCS(unsigned long index, TransStatus& status) const;
  char const* asMBCS(unsigned long index) const;
  unsigned short const* const* asUTF16Array(TransStatus& status) const;
  unsigned short const* const* asUTF16Array() const;
  // A second call on an unchanged list returns null with no flag: keep the
  // pointer of the first call.
  char const* const* asMBCSArray(TransStatus& status) const;
  char const* const* asMBCSArray() const;

  // Case-sensitive lexicographic order of the elements (binary UTF-16).
  bool operator<(TransStringList const& other) const;

private:
  TransStringListImpl* impl_;
};
