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
