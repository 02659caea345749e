// TransXMLInternals: every use the project makes of Xerces-C's and Xalan-C's implementation classes
// (the headers under xercesc/dom/impl and xercesc/internal, Xalan's XPathProcessorImpl), behind
// functions that say what they do. The exact library versions are pinned in CMake, and
// cmake/TransspaceXMLInternals.cmake compiles each use against the installed headers at configure
// time, so an upgrade that changes them stops the build with a clear message instead of changing
// behaviour. The one other use, the replacement of a Xalan function by symbol name, is in
// transxalannumber.cpp beside this unit.
#pragma once

#include <vector>

#include <xalanc/Include/PlatformDefinitions.hpp>
#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMAttr;
class DOMDocument;
class DOMElement;
class Locator;
class XMLScanner;
XERCES_CPP_NAMESPACE_END

namespace XALAN_CPP_NAMESPACE {
class PrefixResolver;
class XPath;
class XalanDOMString;
}  // namespace XALAN_CPP_NAMESPACE

class TransXMLInternals {
public:
  using DOMAttr = XERCES_CPP_NAMESPACE::DOMAttr;
  using DOMDocument = XERCES_CPP_NAMESPACE::DOMDocument;
  using DOMElement = XERCES_CPP_NAMESPACE::DOMElement;

  // ---- Xerces: documents made by Xerces' own DOMImplementation ----

  // How many times the document's tree has changed (a counter Xerces keeps for its node lists).
  static int documentChanges(DOMDocument* document);

  // A new element, without the name check of createElement (the name is known to be valid).
  static DOMElement* newElement(DOMDocument* document, XMLCh const* tag);
  // Appends `child`, a new element that has no parent, as the last child of `parent`, without the
  // checks and notifications of appendChild (nothing observes a tree under construction).
  static void appendNewChild(DOMElement* parent, DOMElement* child);
  // A new attribute with its value, without the checks of setValue.
  static DOMAttr* newAttribute(DOMDocument* document, XMLCh const* name, XMLCh const* value);
  // Gives `element`, a new element, its attributes (new, each name once), the map sized once.
  static void setNewAttributes(DOMElement* element, std::vector<DOMAttr*> const& attributes);

  // ---- Xerces: the scanner of a parse in progress ----

  // Where the scanner is in the text.
  static XERCES_CPP_NAMESPACE::Locator const* scannerLocator(XERCES_CPP_NAMESPACE::XMLScanner const* scanner);

  // ---- Xalan: compiling XPath ----

  // Compiles `expression` into `xpath`. False when it is not well-formed; `problem` then holds
  // Xalan's message. Nothing is printed: Xalan's own construction context would print every
  // problem on standard error before it throws.
  static bool compileXPath(XALAN_CPP_NAMESPACE::XPath& xpath, XALAN_CPP_NAMESPACE::XalanDOMString const& expression,
                           XALAN_CPP_NAMESPACE::PrefixResolver const& resolver,
                           XALAN_CPP_NAMESPACE::XalanDOMString& problem);
};
