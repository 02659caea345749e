#include "core/transconfig.h"

#include "dictionary/transdomsink.h"

#include "xmlinternals/transxmlinternals.h"

XERCES_CPP_NAMESPACE_USE

TransDOMSink::TransDOMSink(DOMDocument* document, Place place) : document_(document), place_(std::move(place)) {}

TransDOMSink::TransDOMSink(DOMDocument* document, DOMElement* element) : document_(document), existing_(element) {
  open_.push_back(element);
}

void TransDOMSink::startElement(XMLCh const* tag) {
  attachAttributes();
  DOMElement* element = TransXMLInternals::newElement(document_, tag);
  if (!open_.empty()) {
    DOMElement* parent = open_.back();
    if (parent == existing_) {
      parent->appendChild(element);
    } else {
      TransXMLInternals::appendNewChild(parent, element);
    }
  }
  open_.push_back(element);
}

void TransDOMSink::attribute(XMLCh const* name, XMLCh const* value) {
  if (open_.back() == existing_) {
    existing_->setAttribute(name, value);
    return;
  }
  attributes_.push_back(TransXMLInternals::newAttribute(document_, name, value));
}

void TransDOMSink::endElement() {
  attachAttributes();
  DOMElement* element = open_.back();
  open_.pop_back();
  if (!open_.empty()) return;
  last_ = element;
  if (place_) place_(element);
}

void TransDOMSink::attachAttributes() {
  if (attributes_.empty()) return;
  TransXMLInternals::setNewAttributes(open_.back(), attributes_);
  attributes_.clear();
}
