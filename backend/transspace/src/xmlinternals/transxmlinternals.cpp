#include "core/transconfig.h"

#include "xmlinternals/transxmlinternals.h"

#include <xalanc/PlatformSupport/PrefixResolver.hpp>
#include <xalanc/PlatformSupport/XSLException.hpp>
#include <xalanc/XPath/XPath.hpp>
#include <xalanc/XPath/XPathConstructionContextDefault.hpp>
#include <xalanc/XPath/XPathProcessorImpl.hpp>
#include <xalanc/XalanDOM/XalanDOMString.hpp>
#include <xercesc/dom/impl/DOMAttrImpl.hpp>
#include <xercesc/dom/impl/DOMAttrMapImpl.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/internal/XMLScanner.hpp>

XERCES_CPP_NAMESPACE_USE

namespace {

// Documents come from Xerces' own DOMImplementation (or its parser), whose documents, elements and
// attributes are these classes.
DOMDocumentImpl* implementationOf(DOMDocument* document) { return static_cast<DOMDocumentImpl*>(document); }
DOMElementImpl* implementationOf(DOMElement* element) { return static_cast<DOMElementImpl*>(element); }

}  // namespace

// The dictionary builder remembers where each section ends and trusts that only while nobody else
// changed the document; this counter tells. Guarded by tests/dictionary/placement_test.cpp (caller
// edits, removals and released nodes between builder calls).
int TransXMLInternals::documentChanges(DOMDocument* document) { return implementationOf(document)->changes(); }

// The four calls below are how Xerces' own parser builds a document; the DOM sink uses them for
// the elements it makes, whose names and attributes are known to be valid, because the checked
// calls cost most of the build at 100,000 variables. Guarded by tests/dictionary/domsink_test.cpp
// (the built document equals the parse of its own text node for node, and its attributes behave
// as any other under later changes).
DOMElement* TransXMLInternals::newElement(DOMDocument* document, XMLCh const* tag) {
  return implementationOf(document)->createElementNoCheck(tag);
}

void TransXMLInternals::appendNewChild(DOMElement* parent, DOMElement* child) {
  implementationOf(parent)->fParent.appendChildFast(child);
}

DOMAttr* TransXMLInternals::newAttribute(DOMDocument* document, XMLCh const* name, XMLCh const* value) {
  auto* attribute = static_cast<DOMAttrImpl*>(document->createAttribute(name));
  attribute->setValueFast(value);
  return attribute;
}

void TransXMLInternals::setNewAttributes(DOMElement* element, std::vector<DOMAttr*> const& attributes) {
  DOMAttrMapImpl* map = implementationOf(element)->fAttributes;
  map->reserve(attributes.size());
  for (DOMAttr* attribute : attributes) map->setNamedItemFast(attribute);
}

// A parser that refuses a document type as it starts has no exception to read the position from,
// only its scanner. Guarded by tests/input/transxmlinput_test.cpp (the line and column of refused
// document types).
Locator const* TransXMLInternals::scannerLocator(XMLScanner const* scanner) { return scanner->getLocator(); }

namespace {

// Xalan's default construction context prints each problem on standard error before the parser
// throws; this one keeps quiet and lets the exception carry the message.
class QuietConstructionContext : public XALAN_CPP_NAMESPACE::XPathConstructionContextDefault {
public:
  using XPathConstructionContextDefault::XPathConstructionContextDefault;
  void problem(eSource, eClassification, XALAN_CPP_NAMESPACE::XalanDOMString const&,
               XALAN_CPP_NAMESPACE::Locator const*, XALAN_CPP_NAMESPACE::XalanNode const*) override {}
  void problem(eSource, eClassification, XALAN_CPP_NAMESPACE::XalanDOMString const&,
               XALAN_CPP_NAMESPACE::XalanNode const*) override {}
};

}  // namespace

// Xalan's public road to a compiled expression (XPathEvaluator::createXPath) prints the problems
// of a malformed one on standard error, which is the host's; its processor class with a quiet
// context does not. Guarded by tests/xpath (TransValue::isXPath) and the Python module's
// XPathError tests.
bool TransXMLInternals::compileXPath(XALAN_CPP_NAMESPACE::XPath& xpath,
                                     XALAN_CPP_NAMESPACE::XalanDOMString const& expression,
                                     XALAN_CPP_NAMESPACE::PrefixResolver const& resolver,
                                     XALAN_CPP_NAMESPACE::XalanDOMString& problem) {
  QuietConstructionContext context;
  XALAN_CPP_NAMESPACE::XPathProcessorImpl processor;
  try {
    processor.initXPath(xpath, context, expression, resolver);
  } catch (XALAN_CPP_NAMESPACE::XSLException const& e) {
    problem = e.getMessage();
    return false;
  }
  return true;
}
