#include "core/transconfig.h"

#include <transspace/transvalue.h>

#include "core/transutf16.h"
#include "document/transdomimpl.h"
#include "document/transxpathcheck.h"
#include "values/transdoubleimpl.h"
#include "values/transnullimpl.h"
#include "values/transtextimpl.h"
#include "values/transvalueimpl.h"

#include <utility>

#include <xalanc/XalanDOM/XalanDOMString.hpp>

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

TransValue::TransValue(TransValue&& other) : impl_(new TransNullImpl()) { swap(other); }

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

// ---- the syntax check of the query expressions ----

bool TransValue::isXPath(TransString const& expression, TransString** problem) {
  TransStatus status;
  UChar const* units = TransUTF16::internal(expression.asUTF16(status));
  XALAN_CPP_NAMESPACE::XalanDOMString description;
  if (TransXPathCheck::wellFormed(units, description)) return true;
  if (problem != nullptr) *problem = new TransString(TransUTF16::exported(description.c_str()));
  return false;
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
