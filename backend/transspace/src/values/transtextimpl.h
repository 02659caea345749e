// TransTextImpl: a value holding one text. It has a text view and a parsed-number view;
// it has no XML form and answers no path query.
#pragma once

#include "values/transvalueimpl.h"

class TRANS_EXPORT TransTextImpl : public TransValueImpl {
public:
  explicit TransTextImpl(TransString const& text);
  TransTextImpl(TransTextImpl const& other);
  ~TransTextImpl() override;
  void swap(TransTextImpl& other);
  TransTextImpl& operator=(TransTextImpl other);

  TransValueImpl* clone() const override;
  TransString* asString(TransString const& context, TransString const& path, TransStatus& status) const override;
  TransStringList* asStringList(TransString const& context, TransString const& path,
                                TransStatus& status) const override;
  TransString* asMBCSXML(TransStatus& status) const override;
  TransString* asUTF16XML(TransStatus& status) const override;
  TransString* asString(TransStatus& status) const override;
  double asDouble(TransString const& context, TransString const& path, TransStatus& status) const override;
  double asDouble(TransStatus& status) const override;
  XALAN_CPP_NAMESPACE::XalanDocument* asXalanDocument(TransStatus& status) const override;

private:
  TransString text_;
};
