// TransStringImpl: the implementation object behind the TransString handle. The name is fixed by the
// library's binary contract (which exports it): `...Impl` names three kinds of class here — the
// objects behind the handles, the kinds of value (TransValueImpl and its kinds) and the dictionary
// builder (TransDictionaryImpl).
#pragma once

#include <transspace/transexport.h>
#include <transspace/transstatus.h>

#include <string>
#include <unicode/unistr.h>

class TRANS_EXPORT TransStringImpl {
public:
  TransStringImpl();
  explicit TransStringImpl(char const* mbcs);
  explicit TransStringImpl(unsigned short const* utf16);
  TransStringImpl(TransStringImpl const& other);
  ~TransStringImpl();
  void swap(TransStringImpl& other);
  TransStringImpl& operator=(TransStringImpl other);

  bool empty() const;
  char const* asMBCS(TransStatus& status) const;
  UChar const* asUTF16(TransStatus& status) const;
  TransStringImpl& trim(TransStatus& status);
  bool operator<(TransStringImpl const& other) const;

  // The caches: each returns its member, filling it first when needed.
  icu::UnicodeString& mixedUTF16() const;
  std::string& mixedMBCS() const;
  icu::UnicodeString& upperUTF16() const;

private:
  mutable icu::UnicodeString upper_;
  mutable icu::UnicodeString mixed_;
  mutable std::string mbcs_;
};
