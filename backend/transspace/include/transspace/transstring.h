// TransString: one text readable as multibyte bytes in the host's code page or as
// NUL-terminated UTF-16, converted lazily and cached; ordered without regard to letter case.
#pragma once

#include <transspace/transexport.h>
#include <transspace/transstatus.h>

class TransStringImpl;

class TRANS_EXPORT TransString {
public:
  TransString();
  TransString(char const* mbcs);
  TransString(unsigned short const* utf16);
  TransString(TransString const& other);
  ~TransString();
  void swap(TransString& other);
  TransString& operator=(TransString other);

  bool empty() const;
  // Both point into the string's own caches: valid until the string is modified or destroyed.
  // UTF-16 is NUL-terminated 16-bit units, in both directions.
  char const* asMBCS(TransStatus& status) const;
  char const* asMBCS() const;
  unsigned short const* asUTF16(TransStatus& status) const;
  unsigned short const* asUTF16() const;
  TransString& trim(TransStatus& status);

  // Case-insensitive: the upper-cased UTF-16 texts are compared in code-unit order.
  bool operator<(TransString const& other) const;

private:
  TransStringImpl* impl_;
};
