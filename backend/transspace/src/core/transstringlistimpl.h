// TransStringListImpl: the implementation object behind the TransStringList handle. The name is fixed by the
// library's binary contract (which exports it): `...Impl` names three kinds of class here — the
// objects behind the handles, the kinds of value (TransValueImpl and its kinds) and the dictionary
// builder (TransDictionaryImpl).
#pragma once

#include <transspace/transexport.h>
#include <transspace/transstatus.h>

#include <string>
#include <vector>
#include <unicode/unistr.h>

class TRANS_EXPORT TransStringListImpl {
public:
  TransStringListImpl();
  TransStringListImpl(TransStringListImpl const& other);
  ~TransStringListImpl();
  void swap(TransStringListImpl& other);
  TransStringListImpl& operator=(TransStringListImpl other);

  void push_back(unsigned short const* utf16, TransStatus& status);
  unsigned long size() const;
  bool empty() const;
  UChar const* asUTF16(unsigned long index, TransStatus& status) const;
  char const* asMBCS(unsigned long index, TransStatus& status) const;
  // In the exported form: the handle hands this array out as it is.
  unsigned short const* const* asUTF16Array(TransStatus& status) const;
  char const* const* asMBCSArray(TransStatus& status) const;
  bool operator<(TransStringListImpl const& other) const;

private:
  // Builds the MBCS texts and array unless they are current; true when it built them.
  bool fillMBCSArray(TransStatus& status) const;

  mutable std::vector<icu::UnicodeString> elements_;
  mutable std::vector<std::string> mbcsTexts_;
  mutable std::vector<unsigned short const*> utf16Array_;
  mutable std::vector<char const*> mbcsArray_;
};
