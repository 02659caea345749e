// TransDoubleImpl: a double value, formatted with ICU's decimal pattern "#0.###".
#pragma once

#include "values/transvalueimpl.h"

#include <unicode/locid.h>

class TRANS_EXPORT TransDoubleImpl : public TransValueImpl {
public:
  explicit TransDoubleImpl(double value);
  TransDoubleImpl(TransDoubleImpl const& other);
  ~TransDoubleImpl() override;
  void swap(TransDoubleImpl& other);
  TransDoubleImpl& operator=(TransDoubleImpl other);

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

  // The number in the notation of `locale`; the XML form uses ICU's English locale.
  TransString* asString(icu::Locale const& locale, TransStatus& status) const;
  TransString* asXMLString(TransStatus& status) const;

private:
  double value_;
};
