#include "core/transconfig.h"

#include "values/transtextimpl.h"
#include "core/transutf16.h"
#include "core/transutil.h"

#include <unicode/unistr.h>

TransTextImpl::TransTextImpl(TransString const& text) : text_(text) {}

TransTextImpl::TransTextImpl(TransTextImpl const& other) : TransValueImpl(), text_(other.text_) {}

TransTextImpl::~TransTextImpl() = default;

// The texts are exchanged by value, through copies of both (not TransString::swap).
void TransTextImpl::swap(TransTextImpl& other) {
  TransString const mine(text_);
  TransString const theirs(other.text_);
  text_ = theirs;
  other.text_ = mine;
}

TransTextImpl& TransTextImpl::operator=(TransTextImpl other) {
  swap(other);
  return *this;
}

TransValueImpl* TransTextImpl::clone() const { return new TransTextImpl(*this); }

TransString* TransTextImpl::asString(TransString const&, TransString const&, TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

TransStringList* TransTextImpl::asStringList(TransString const&, TransString const&, TransStatus& status) const {
  notApplicable(status);
  return new TransStringList();
}

TransString* TransTextImpl::asMBCSXML(TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

TransString* TransTextImpl::asUTF16XML(TransStatus& status) const {
  notApplicable(status);
  return new TransString();
}

TransString* TransTextImpl::asString(TransStatus& status) const {
  status.reset();
  status.warning(text_.empty());  // an empty text is a valid but empty view
  return new TransString(text_);
}

double TransTextImpl::asDouble(TransString const&, TransString const&, TransStatus& status) const {
  notApplicable(status);
  return TransUtil::noNumber;
}

XALAN_CPP_NAMESPACE::XalanDocument* TransTextImpl::asXalanDocument(TransStatus& status) const {
  notApplicable(status);
  return nullptr;
}

// asDouble(status) comes last: the line its assertion reports is fixed (137), which the
// #line directive sets; anything added above it keeps its own true line numbers.
#line 131
double TransTextImpl::asDouble(TransStatus& status) const {
  status.reset();
  TransStatus s;
  icu::UnicodeString const text(TransUTF16::internal(text_.asUTF16(s)));
  double const number = TransUtil::UTF16toDouble(text);
  // The local status warns of an empty text; only a failure (which asUTF16 never reports) trips.
  // The assertion's text is fixed, spaces included.
  // clang-format off
  assert(! s.failure());
  // clang-format on
  // The no-number value is the parser's one failure signal, even when the text spells it out.
  if (number == TransUtil::noNumber) {
    status.failure(true);
    status.warning(true);
  }
  return number;
}
