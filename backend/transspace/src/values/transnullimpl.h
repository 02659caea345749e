// TransNullImpl: the value of a default-constructed TransValue. It has no content, so
// every slot answers "not applicable" (failure and warning) with its placeholder.
#pragma once

#include "values/transvalueimpl.h"

class TRANS_EXPORT TransNullImpl : public TransValueImpl {
public:
  TransNullImpl();
  TransNullImpl(TransNullImpl const& other);
  ~TransNullImpl() override;
  void swap(TransNullImpl& other);
  TransNullImpl& operator=(TransNullImpl other);

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
};
