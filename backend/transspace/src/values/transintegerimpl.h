// TransIntegerImpl: a signed 64-bit integer value, formatted exactly (never through a
// double) with the decimal pattern "#0.###". No TransValue constructor makes one; the dictionary
// export uses it to write integer attributes.
#pragma once

#include "values/transvalueimpl.h"

class TRANS_EXPORT TransIntegerImpl : public TransValueImpl {
public:
  explicit TransIntegerImpl(long value);
  TransIntegerImpl(TransIntegerImpl const& other);
  ~TransIntegerImpl() override;
  void swap(TransIntegerImpl& other);
  TransIntegerImpl& operator=(TransIntegerImpl other);

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

  long asInteger() const;

private:
  long value_;
};
