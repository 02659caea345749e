#include "core/transconfig.h"

#include "values/transintegerimpl.h"
#include "values/transnumberformat.h"
#include "core/transutil.h"

#include <clocale>
#include <cstdint>
#include <utility>

TransIntegerImpl::TransIntegerImpl(long value) : value_(value) {}

TransIntegerImpl::TransIntegerImpl(TransIntegerImpl const& other) : TransValueImpl(), value_(other.value_) {}

TransIntegerImpl::~TransIntegerImpl() = default;

void TransIntegerImpl::swap(TransIntegerImpl& other) { std::swap(value_, other.value_); }

TransIntegerImpl& TransIntegerImpl::operator=(TransIntegerImpl other) {
  swap(other);
  return *this;
}

TransValueImpl* TransIntegerImpl::clone() const { return new TransIntegerImpl(*this); }

TransString* TransIntegerImpl::asString(TransString const&, TransString const&, TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

TransStringList* TransIntegerImpl::asStringList(TransString const&, TransString const&, TransStatus& status) const {
  notApplicable(status);
  return new TransStringList();
}

TransString* TransIntegerImpl::asMBCSXML(TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

TransString* TransIntegerImpl::asUTF16XML(TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

TransString* TransIntegerImpl::asString(TransStatus& status) const {
  // Formatted as a 64-bit integer, never through a double, so every digit is exact.
  return transnumberformat::format(static_cast<std::int64_t>(value_), TransUtil::currentLocale(LC_NUMERIC), status);
}

double TransIntegerImpl::asDouble(TransString const&, TransString const&, TransStatus& status) const {
  notApplicable(status);
  return TransUtil::noNumber;
}

double TransIntegerImpl::asDouble(TransStatus& status) const {
  status.reset();
  return static_cast<double>(value_);
}

XALAN_CPP_NAMESPACE::XalanDocument* TransIntegerImpl::asXalanDocument(TransStatus& status) const {
  notApplicable(status);
  return nullptr;
}

long TransIntegerImpl::asInteger() const { return value_; }
