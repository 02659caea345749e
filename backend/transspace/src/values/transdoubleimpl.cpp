#include "core/transconfig.h"

#include "values/transdoubleimpl.h"
#include "values/transnumberformat.h"
#include "core/transutil.h"

#include <clocale>
#include <utility>

TransDoubleImpl::TransDoubleImpl(double value) : value_(value) {}

TransDoubleImpl::TransDoubleImpl(TransDoubleImpl const& other) : TransValueImpl(), value_(other.value_) {}

TransDoubleImpl::~TransDoubleImpl() = default;

void TransDoubleImpl::swap(TransDoubleImpl& other) { std::swap(value_, other.value_); }

TransDoubleImpl& TransDoubleImpl::operator=(TransDoubleImpl other) {
  swap(other);
  return *this;
}

TransValueImpl* TransDoubleImpl::clone() const { return new TransDoubleImpl(*this); }

TransString* TransDoubleImpl::asString(TransString const&, TransString const&, TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

TransStringList* TransDoubleImpl::asStringList(TransString const&, TransString const&, TransStatus& status) const {
  notApplicable(status);
  return new TransStringList();
}

TransString* TransDoubleImpl::asMBCSXML(TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

TransString* TransDoubleImpl::asUTF16XML(TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

TransString* TransDoubleImpl::asString(TransStatus& status) const {
  return asString(TransUtil::currentLocale(LC_NUMERIC), status);
}

double TransDoubleImpl::asDouble(TransString const&, TransString const&, TransStatus& status) const {
  notApplicable(status);
  return TransUtil::noNumber;
}

double TransDoubleImpl::asDouble(TransStatus& status) const {
  status.reset();
  if (value_ == TransUtil::noNumber) status.warning(true);
  return value_;
}

XALAN_CPP_NAMESPACE::XalanDocument* TransDoubleImpl::asXalanDocument(TransStatus& status) const {
  notApplicable(status);
  return nullptr;
}

TransString* TransDoubleImpl::asString(icu::Locale const& locale, TransStatus& status) const {
  return transnumberformat::format(value_, locale, status);
}

TransString* TransDoubleImpl::asXMLString(TransStatus& status) const {
  return asString(icu::Locale::getEnglish(), status);
}
