#include "core/transconfig.h"

#include "values/transnullimpl.h"
#include "core/transutil.h"

TransNullImpl::TransNullImpl() = default;

TransNullImpl::TransNullImpl(TransNullImpl const&) : TransValueImpl() {}

TransNullImpl::~TransNullImpl() = default;

// Nothing to exchange: a null value has no data.
void TransNullImpl::swap(TransNullImpl&) {}

TransNullImpl& TransNullImpl::operator=(TransNullImpl other) {
  swap(other);
  return *this;
}

TransValueImpl* TransNullImpl::clone() const { return new TransNullImpl(*this); }

TransString* TransNullImpl::asString(TransString const&, TransString const&, TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

TransStringList* TransNullImpl::asStringList(TransString const&, TransString const&, TransStatus& status) const {
  notApplicable(status);
  return new TransStringList();
}

TransString* TransNullImpl::asMBCSXML(TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

TransString* TransNullImpl::asUTF16XML(TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

TransString* TransNullImpl::asString(TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

double TransNullImpl::asDouble(TransString const&, TransString const&, TransStatus& status) const {
  notApplicable(status);
  return TransUtil::noNumber;
}

double TransNullImpl::asDouble(TransStatus& status) const {
  notApplicable(status);
  return TransUtil::noNumber;
}

XALAN_CPP_NAMESPACE::XalanDocument* TransNullImpl::asXalanDocument(TransStatus& status) const {
  notApplicable(status);
  return nullptr;
}
