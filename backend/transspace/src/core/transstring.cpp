#include "core/transconfig.h"

#include <transspace/transstring.h>
#include "core/transstringimpl.h"
#include "core/transutf16.h"
#include "core/transutil.h"

#include <clocale>
#include <utility>

// ---- TransStringImpl ----

TransStringImpl::TransStringImpl() = default;

TransStringImpl::TransStringImpl(char const* mbcs) {
  if (mbcs != nullptr) mbcs_ = mbcs;
}

TransStringImpl::TransStringImpl(unsigned short const* utf16) {
  if (utf16 == nullptr) return;
  mixed_ = icu::UnicodeString(TransUTF16::internal(utf16));
  mixed_.getTerminatedBuffer();
}

TransStringImpl::TransStringImpl(TransStringImpl const& other)
    : upper_(other.upper_), mixed_(TransUtil::unsharedCopy(other.mixed_)), mbcs_(other.mbcs_) {
  mixed_.getTerminatedBuffer();  // NUL-terminated like its source (only the text was copied)
}

TransStringImpl::~TransStringImpl() = default;

void TransStringImpl::swap(TransStringImpl& other) {
  upper_.swap(other.upper_);
  mixed_.swap(other.mixed_);
  mbcs_.swap(other.mbcs_);
}

TransStringImpl& TransStringImpl::operator=(TransStringImpl other) {
  swap(other);
  return *this;
}

bool TransStringImpl::empty() const { return mbcs_.empty() && mixed_.isEmpty(); }

icu::UnicodeString& TransStringImpl::mixedUTF16() const {
  // An empty conversion result caches nothing, so the next call converts again.
  if (mixed_.isEmpty() && !mbcs_.empty()) mixed_ = TransUtil::MBCStoUTF16(mbcs_);
  mixed_.getTerminatedBuffer();
  return mixed_;
}

std::string& TransStringImpl::mixedMBCS() const {
  if (mbcs_.empty() && !mixed_.isEmpty()) mbcs_ = TransUtil::UTF16toMBCS(mixed_);
  return mbcs_;
}

icu::UnicodeString& TransStringImpl::upperUTF16() const {
  if (!upper_.isEmpty() || empty()) return upper_;
  upper_ = mixedUTF16();
  // The character-type locale of this moment is kept: the cache is cleared only by trim.
  upper_.toUpper(TransUtil::currentLocale(LC_CTYPE));
  return upper_;
}

char const* TransStringImpl::asMBCS(TransStatus& status) const {
  status.reset();
  status.warning(empty());
  return mixedMBCS().c_str();
}

UChar const* TransStringImpl::asUTF16(TransStatus& status) const {
  status.reset();
  status.warning(empty());
  return mixedUTF16().getTerminatedBuffer();
}

TransStringImpl& TransStringImpl::trim(TransStatus& status) {
  status.reset();
  mixedUTF16().trim();
  upper_.remove();
  mbcs_.clear();  // regenerated from the trimmed UTF-16 text on demand
  status.warning(empty());
  return *this;
}

bool TransStringImpl::operator<(TransStringImpl const& other) const {
  icu::UnicodeString const& right = other.upperUTF16();
  icu::UnicodeString const& left = upperUTF16();
  if (right.isBogus()) return false;
  return left < right;
}

// ---- TransString ----

TransString::TransString() : impl_(new TransStringImpl()) {}

TransString::TransString(char const* mbcs) : impl_(new TransStringImpl(mbcs)) {}

TransString::TransString(unsigned short const* utf16) : impl_(new TransStringImpl(utf16)) {}

TransString::TransString(TransString const& other) : impl_(new TransStringImpl(*other.impl_)) {}

TransString::~TransString() { delete impl_; }

void TransString::swap(TransString& other) { std::swap(impl_, other.impl_); }

TransString& TransString::operator=(TransString other) {
  swap(other);
  return *this;
}

bool TransString::empty() const { return impl_->empty(); }

char const* TransString::asMBCS(TransStatus& status) const { return impl_->asMBCS(status); }

unsigned short const* TransString::asUTF16(TransStatus& status) const {
  return TransUTF16::exported(impl_->asUTF16(status));
}

TransString& TransString::trim(TransStatus& status) {
  impl_->trim(status);
  return *this;
}

bool TransString::operator<(TransString const& other) const { return *impl_ < *other.impl_; }

// The forms without status come last: the lines that their assertions report are fixed,
// which the #line directives below set.
#line 92
unsigned short const* TransString::asUTF16() const {
  TransStatus status;
  unsigned short const* result = asUTF16(status);
  // The assertion's text is fixed, spaces included.
  // clang-format off
  TRANS_ASSERT_IN("const UChar* TransString::asUTF16() const",
                  ! status.failure() && "Failure: TransString::asUTF16()");
  // clang-format on
  return result;
}

#line 113
char const* TransString::asMBCS() const {
  TransStatus status;
  char const* result = asMBCS(status);
  // The assertion's text is fixed, spaces included.
  // clang-format off
  assert(! status.failure() && "Failure: TransString::asMBCS()");
  // clang-format on
  return result;
}
