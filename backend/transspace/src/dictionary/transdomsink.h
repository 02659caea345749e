// TransDOMSink: makes the dictionary's content into Xerces elements of one document. Elements at
// the sink's top level are handed to a placement function when they are complete (the document
// builder puts them where they belong); nested elements are appended to their parent in order.
// Opened on an existing element, the sink writes the attributes that come first onto it.
//
// The elements the sink makes are new and hold only what the content sends: names that are valid,
// each attribute name once per element, attributes before children. So they are built with the
// unchecked calls Xerces' own parser builds its documents with, and each element's attribute map
// is sized once, when its attributes are complete. Placing a finished element into the document
// goes through the checked DOM calls, as any change of an existing tree does.
#pragma once

#include "dictionary/transdictionarysink.h"

#include <functional>
#include <vector>

#include <xercesc/dom/DOM.hpp>

class TransDOMSink : public TransDictionarySink {
public:
  using DOMDocument = XERCES_CPP_NAMESPACE::DOMDocument;
  using DOMElement = XERCES_CPP_NAMESPACE::DOMElement;
  using DOMAttr = XERCES_CPP_NAMESPACE::DOMAttr;
  using Place = std::function<void(DOMElement*)>;

  // Top-level elements are left where they are (detached) unless a placement function is given.
  explicit TransDOMSink(DOMDocument* document, Place place = Place());
  // Attributes sent before any element go to `element`.
  TransDOMSink(DOMDocument* document, DOMElement* element);

  void startElement(XMLCh const* tag) override;
  void attribute(XMLCh const* name, XMLCh const* value) override;
  void endElement() override;

  // The last top-level element completed, or null.
  DOMElement* lastElement() const { return last_; }

private:
  // Gives the element begun last the attributes made for it so far.
  void attachAttributes();

  DOMDocument* document_;
  Place place_;
  std::vector<DOMElement*> open_;
  DOMElement* existing_ = nullptr;  // the element the sink was opened on, if any
  std::vector<DOMAttr*> attributes_;
  DOMElement* last_ = nullptr;
};
