// TransValue: the handle of one value (null, text, double or XML document) with its
// views: text, list of texts, XML text, number, Xalan document, and XPath queries (context, path).
#pragma once

#include <transspace/transexport.h>
#include <transspace/transstatus.h>
#include <transspace/transstring.h>
#include <transspace/transstringlist.h>

#include <xalanc/Include/PlatformDefinitions.hpp>
#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
XERCES_CPP_NAMESPACE_END

namespace XALAN_CPP_NAMESPACE {
class XalanDocument;
}

class ZORB_DataSource;
class TransValueImpl;

class TRANS_EXPORT TransValue {
public:
  // The no-number value: the negated largest finite double, which every double view returns where
  // there is no number.
  static constexpr double noNumber = -1.7976931348623157e308;

  TransValue();
  TransValue(TransString const& text);
  TransValue(double number);
  TransValue(XERCES_CPP_NAMESPACE::DOMDocument const* document);
  TransValue(ZORB_DataSource const& dataSource);
  TransValue(TransValue const& other);
  // Takes the other's value without copying it; the other is left a null value.
  TransValue(TransValue&& other);
  ~TransValue();
  void swap(TransValue& other);
  TransValue& operator=(TransValue other);

  // Every TransString* / TransStringList* returned is new and owned by the caller, who gives it
  // back with releaseString / releaseStringList. The forms without status discard the status.
  TransString* asString(TransString const& context, TransString const& path, TransStatus& status) const;
  TransString* asString(TransString const& context, TransString const& path) const;
  TransStringList* asStringList(TransString const& context, TransString const& path, TransStatus& status) const;
  TransStringList* asStringList(TransString const& context, TransString const& path) const;
  TransString* asMBCSXML(TransStatus& status) const;
  TransString* asMBCSXML() const;
  TransString* asUTF16XML(TransStatus& status) const;
  TransString* asUTF16XML() const;
  TransString* asXML() const;
  TransString* asString(TransStatus& status) const;
  TransString* asString() const;
  double asDouble(TransString const& context, TransString const& path, TransStatus& status) const;
  double asDouble(TransString const& context, TransString const& path) const;
  double asDouble(TransStatus& status) const;
  double asDouble() const;
  // Owned by the value; null for every kind but an XML document.
  XALAN_CPP_NAMESPACE::XalanDocument* asXalanDocument(TransStatus& status) const;
  XALAN_CPP_NAMESPACE::XalanDocument* asXalanDocument() const;

  // Whether `expression` is a well-formed XPath 1.0 expression, as the views that take a context and
  // a path need them (namespace prefixes count as bound: whether they resolve is the document's
  // business). When it is not and `problem` is given, *problem becomes a new string with the XPath
  // evaluator's description, owned by the caller. The XML platform must be up (a TransSpace alive).
  static bool isXPath(TransString const& expression, TransString** problem = nullptr);

  static void releaseString(TransString*& string, TransStatus& status);
  static void releaseString(TransString*& string);
  static void releaseStringList(TransStringList*& strings, TransStatus& status);
  static void releaseStringList(TransStringList*& strings);

private:
  TransValueImpl* impl_;
};
