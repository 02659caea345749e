#include "core/transconfig.h"

#include <transspace/transstringlist.h>
#include "core/transstringlistimpl.h"
#include "core/transutf16.h"
#include "core/transutil.h"

#include <algorithm>
#include <utility>

// ---- TransStringListImpl ----

TransStringListImpl::TransStringListImpl() = default;

TransStringListImpl::TransStringListImpl(TransStringListImpl const& other) {
  elements_.reserve(other.elements_.size());
  for (icu::UnicodeString const& element : other.elements_) elements_.push_back(TransUtil::unsharedCopy(element));
}

TransStringListImpl::~TransStringListImpl() = default;

void TransStringListImpl::swap(TransStringListImpl& other) {
  elements_.swap(other.elements_);
  mbcsTexts_.swap(other.mbcsTexts_);
  utf16Array_.swap(other.utf16Array_);
  mbcsArray_.swap(other.mbcsArray_);
}

TransStringListImpl& TransStringListImpl::operator=(TransStringListImpl other) {
  swap(other);
  return *this;
}

void TransStringListImpl::push_back(unsigned short const* utf16, TransStatus& status) {
  status.reset();
  if (utf16 == nullptr) {
    elements_.emplace_back();
  } else {
    elements_.emplace_back(TransUTF16::internal(utf16));
  }
}

unsigned long TransStringListImpl::size() const { return static_cast<unsigned long>(elements_.size()); }

bool TransStringListImpl::empty() const { return elements_.empty(); }

UChar const* TransStringListImpl::asUTF16(unsigned long index, TransStatus& status) const {
  status.reset();
  if (index >= size()) {
    status.failure(true);
    status.warning(true);
    return nullptr;
  }
  UChar const* text = elements_[index].getTerminatedBuffer();
  if (text != nullptr && text[0] == 0) status.warning(true);
  return text;
}

unsigned short const* const* TransStringListImpl::asUTF16Array(TransStatus& status) const {
  status.reset();
  if (empty()) {
    status.failure(true);
    status.warning(true);
    return nullptr;
  }
  if (utf16Array_.size() == elements_.size()) return utf16Array_.data();
  utf16Array_.clear();
  for (icu::UnicodeString& element : elements_) {
    utf16Array_.push_back(TransUTF16::exported(element.getTerminatedBuffer()));
    if (element.isEmpty()) status.warning(true);
  }
  return utf16Array_.data();
}

bool TransStringListImpl::fillMBCSArray(TransStatus& status) const {
  if (empty()) {
    status.failure(true);
    status.warning(true);
    return false;
  }
  if (mbcsTexts_.size() == elements_.size()) return false;
  mbcsTexts_.clear();
  for (icu::UnicodeString const& element : elements_) mbcsTexts_.push_back(TransUtil::UTF16toMBCS(element));
  mbcsArray_.clear();
  for (std::string const& text : mbcsTexts_) {
    mbcsArray_.push_back(text.c_str());
    if (text.empty()) status.warning(true);
  }
  return true;
}

char const* const* TransStringListImpl::asMBCSArray(TransStatus& status) const {
  status.reset();
  // A current cache makes the fill report false, so a repeated call answers null on purpose.
  return fillMBCSArray(status) ? mbcsArray_.data() : nullptr;
}

char const* TransStringListImpl::asMBCS(unsigned long index, TransStatus& status) const {
  status.reset();
  if (index >= size()) {
    status.failure(true);
    status.warning(true);
    return nullptr;
  }
  fillMBCSArray(status);
  status.reset();
  char const* text = mbcsArray_.at(index);
  if (text[0] == '\0') status.warning(true);
  return text;
}

bool TransStringListImpl::operator<(TransStringListImpl const& other) const {
  return std::lexicographical_compare(elements_.begin(), elements_.end(), other.elements_.begin(),
                                      other.elements_.end());
}

// ---- TransStringList ----

TransStringList::TransStringList() : impl_(new TransStringListImpl()) {}

TransStringList::TransStringList(TransStringList const& other) : impl_(new TransStringListImpl(*other.impl_)) {}

TransStringList::~TransStringList() { delete impl_; }

void TransStringList::swap(TransStringList& other) { std::swap(impl_, other.impl_); }

TransStringList& TransStringList::operator=(TransStringList other) {
  swap(other);
  return *this;
}

void TransStringList::push_back(unsigned short const* utf16, TransStatus& status) { impl_->push_back(utf16, status); }

void TransStringList::push_back(unsigned short const* utf16) {
  TransStatus status;
  impl_->push_back(utf16, status);
}

unsigned long TransStringList::size() const { return impl_->size(); }

bool TransStringList::empty() const { return impl_->empty(); }

unsigned short const* TransStringList::asUTF16(unsigned long index, TransStatus& status) const {
  return TransUTF16::exported(impl_->asUTF16(index, status));
}

unsigned short const* TransStringList::asUTF16(unsigned long index) const {
  TransStatus status;
  return asUTF16(index, status);
}

char const* TransStringList::asMBCS(unsigned long index, TransStatus& status) const {
  return impl_->asMBCS(index, status);
}

char const* TransStringList::asMBCS(unsigned long index) const {
  TransStatus status;
  return impl_->asMBCS(index, status);
}

unsigned short const* const* TransStringList::asUTF16Array(TransStatus& status) const {
  return impl_->asUTF16Array(status);
}

unsigned short const* const* TransStringList::asUTF16Array() const {
  TransStatus status;
  return impl_->asUTF16Array(status);
}

char const* const* TransStringList::asMBCSArray(TransStatus& status) const { return impl_->asMBCSArray(status); }

char const* const* TransStringList::asMBCSArray() const {
  TransStatus status;
  return impl_->asMBCSArray(status);
}

bool TransStringList::operator<(TransStringList const& other) const { return *impl_ < *other.impl_; }
