// TransStatus: the outcome record that every fallible operation fills.
#pragma once

#include <transspace/transexport.h>

class TransStatusImpl;

class TRANS_EXPORT TransStatus {
public:
  TransStatus();
  TransStatus(TransStatus const& other);
  ~TransStatus();
  void swap(TransStatus& other);
  TransStatus& operator=(TransStatus other);

  void reset();
  // The setters store the new flag and return the previous one, so a caller can set and test at once.
  bool failure(bool value);
  bool failure() const;
  bool warning(bool value);
  bool warning() const;

  // Conjunctive, not lexicographic: true only when both flags of *this are below those of other.
  bool operator<(TransStatus const& other) const;

private:
  TransStatusImpl* impl_;
};
