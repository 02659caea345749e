// TransStatusImpl: the implementation object behind the TransStatus handle. The name is fixed by the
// library's binary contract (which exports it): `...Impl` names three kinds of class here — the
// objects behind the handles, the kinds of value (TransValueImpl and its kinds) and the dictionary
// builder (TransDictionaryImpl).
#pragma once

#include <transspace/transexport.h>

class TRANS_EXPORT TransStatusImpl {
public:
  TransStatusImpl();
  TransStatusImpl(TransStatusImpl const& other);
  ~TransStatusImpl();
  void swap(TransStatusImpl& other);
  TransStatusImpl& operator=(TransStatusImpl other);

  void reset();
  bool failure(bool value);
  bool failure() const;
  bool warning(bool value);
  bool warning() const;
  bool operator<(TransStatusImpl const& other) const;

private:
  bool warning_;
  bool failure_;
};
