// TransValueImpl: the abstract interface of eleven slots that every kind of value
// implements, in this slot order. Exported, not published. The name, like those of its kinds
// (TransNullImpl, TransTextImpl, TransIntegerImpl, TransDoubleImpl, TransDOMImpl), is fixed by the
// library's binary contract; `...Impl` also names the objects behind the handles (TransStringImpl,
// ...) and the dictionary builder (TransDictionaryImpl).
#pragma once

#include <transspace/transexport.h>
#include <transspace/transstatus.h>
#include <transspace/transstring.h>
#include <transspace/transstringlist.h>

#include <xalanc/Include/PlatformDefinitions.hpp>

namespace XALAN_CPP_NAMESPACE {
class XalanDocument;
}

class TRANS_EXPORT TransValueImpl {
public:
  virtual ~TransValueImpl();
  virtual TransValueImpl* clone() const = 0;
  virtual TransString* asString(TransString const& context, TransString const& path, TransStatus& status) const = 0;
  virtual TransStringList* asStringList(TransString const& context, TransString const& path,
                                        TransStatus& status) const = 0;
  virtual TransString* asMBCSXML(TransStatus& status) const = 0;
  virtual TransString* asUTF16XML(TransStatus& status) const = 0;
  virtual TransString* asString(TransStatus& status) const = 0;
  virtual double asDouble(TransString const& context, TransString const& path, TransStatus& status) const = 0;
  virtual double asDouble(TransStatus& status) const = 0;
  virtual XALAN_CPP_NAMESPACE::XalanDocument* asXalanDocument(TransStatus& status) const = 0;

protected:
  // The not-applicable contract: reset, then failure and warning. The slots return the
  // placeholder that goes with their type.
  static void notApplicable(TransStatus& status);
};
