#include "transconfig.h"

#include <transspace/transvalue.h>

#include "transdomimpl.h"
#include "transdoubleimpl.h"
#include "transnullimpl.h"
#include "transtextimpl.h"
#include "transvalueimpl.h"

#include <utility>

// ---- construction, copy, destruction ----

TransValue::TransValue() : impl_(new TransNullImpl()) {}

TransValue::TransValue(TransString const& text) : impl_(new TransTextImpl(text)) {}

TransValue::TransValue(double number) : impl_(new TransDoubleImpl(number)) {}

// ---- document constructors ----
// Both create a TransDOMImpl: a deep copy of the document (null allowed: an empty document), or
// the data source's dictionary document.
TransValue::TransValue(XERCES_CPP_NAMESPACE::DOMDocument const* document) : impl_(new TransDOMImpl(document)) {}

TransValue::TransValue(ZORB_DataSource const& dataSource) : impl_(new TransDOMImpl(dataSource)) {}

TransValue::TransValue(TransValue const& other) : impl_(other.impl_->clone()) {}

TransValue::~TransValue() {
  if (impl_ != nullptr) delete impl_;
}

void TransValue::swap(TransValue& other) { std::swap(impl_, other.impl_); }

TransValue& TransValue::operator=(TransValue other) {
  swap(other);
  return *this;
}

// ---- the views: each forwards to its slot ----

TransString* TransValue::asString(TransString const& context, TransString const& path, TransStatus& status) const {
  return impl_->asString(context, path, status);
}

TransStringList* TransValue::asStringList(TransString const& context, TransString const& path,
                                          TransStatus& status) const {
  return impl_->asStringList(context, path, status);
}

TransString* TransValue::asMBCSXML(TransStatus& status) const { return impl_->asMBCSXML(status); }

TransString* TransValue::asUTF16XML(TransStatus& status) const { return impl_->asUTF16XML(status); }

TransString* TransValue::asString(TransStatus& status) const { return impl_->asString(status); }

double TransValue::asDouble(TransString const& context, TransString const& path, TransStatus& status) const {
  return impl_->asDouble(context, path, status);
}

double TransValue::asDouble(TransStatus& status) const { return impl_->asDouble(status); }

XALAN_CPP_NAMESPACE::XalanDocument* TransValue::asXalanDocument(TransStatus& status) const {
  return impl_->asXalanDocument(status);
}

// ---- the forms without status: the status is discarded, nothing asserts ----

TransString* TransValue::asString(TransString const& context, TransString const& path) const {
  TransStatus status;
  return asString(context, path, status);
}

TransStringList* TransValue::asStringList(TransString const& context, TransString const& path) const {
  TransStatus status;
  return asStringList(context, path, status);
}

TransString* TransValue::asMBCSXML() const {
  TransStatus status;
  return asMBCSXML(status);
}

TransString* TransValue::asUTF16XML() const {
  TransStatus status;
  return asUTF16XML(status);
}

TransString* TransValue::asXML() const { return asUTF16XML(); }

TransString* TransValue::asString() const {
  TransStatus status;
  return asString(status);
}

double TransValue::asDouble(TransString const& context, TransString const& path) const {
  TransStatus status;
  return asDouble(context, path, status);
}

double TransValue::asDouble() const {
  TransStatus status;
  return asDouble(status);
}

XALAN_CPP_NAMESPACE::XalanDocument* TransValue::asXalanDocument() const {
  TransStatus status;
  return asXalanDocument(status);
}

// ---- releasing what the views returned ----

void TransValue::releaseString(TransString*& string, TransStatus& status) {
  status.reset();
  if (string == nullptr) status.warning(true);
  delete string;
  string = nullptr;
}

void TransValue::releaseString(TransString*& string) {
  TransStatus status;
  releaseString(string, status);
}

void TransValue::releaseStringList(TransStringList*& strings, TransStatus& status) {
  status.reset();
  if (strings == nullptr) status.warning(true);
  delete strings;
  strings = nullptr;
}

void TransValue::releaseStringList(TransStringList*& strings) {
  TransStatus status;
  releaseStringList(strings, status);
}
