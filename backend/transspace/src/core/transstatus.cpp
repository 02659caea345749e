#include "core/transconfig.h"

#include <transspace/transstatus.h>
#include "core/transstatusimpl.h"

#include <utility>

// ---- TransStatusImpl ----

TransStatusImpl::TransStatusImpl() : warning_(false), failure_(false) {}

TransStatusImpl::TransStatusImpl(TransStatusImpl const& other) : warning_(other.warning_), failure_(other.failure_) {}

TransStatusImpl::~TransStatusImpl() = default;

void TransStatusImpl::swap(TransStatusImpl& other) {
  std::swap(warning_, other.warning_);
  std::swap(failure_, other.failure_);
}

TransStatusImpl& TransStatusImpl::operator=(TransStatusImpl other) {
  swap(other);
  return *this;
}

void TransStatusImpl::reset() {
  warning_ = false;
  failure_ = false;
}

bool TransStatusImpl::failure(bool value) {
  bool previous = failure_;
  failure_ = value;
  return previous;
}

bool TransStatusImpl::failure() const { return failure_; }

bool TransStatusImpl::warning(bool value) {
  bool previous = warning_;
  warning_ = value;
  return previous;
}

bool TransStatusImpl::warning() const { return warning_; }

bool TransStatusImpl::operator<(TransStatusImpl const& other) const {
  // Both conditions must hold.
  if (!(static_cast<unsigned char>(failure_) < static_cast<unsigned char>(other.failure_))) return false;
  return static_cast<unsigned char>(warning_) < static_cast<unsigned char>(other.warning_);
}

// ---- TransStatus ----

TransStatus::TransStatus() : impl_(new TransStatusImpl()) {}

TransStatus::TransStatus(TransStatus const& other) : impl_(new TransStatusImpl(*other.impl_)) {}

TransStatus::~TransStatus() { delete impl_; }

void TransStatus::swap(TransStatus& other) { std::swap(impl_, other.impl_); }

TransStatus& TransStatus::operator=(TransStatus other) {
  swap(other);
  return *this;
}

void TransStatus::reset() { impl_->reset(); }
bool TransStatus::failure(bool value) { return impl_->failure(value); }
bool TransStatus::failure() const { return impl_->failure(); }
bool TransStatus::warning(bool value) { return impl_->warning(value); }
bool TransStatus::warning() const { return impl_->warning(); }
bool TransStatus::operator<(TransStatus const& other) const { return *impl_ < *other.impl_; }
