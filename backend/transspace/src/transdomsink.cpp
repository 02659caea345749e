#include "transconfig.h"

#include "transdomsink.h"

TransDOMSink::TransDOMSink(DOMDocument* document, Place place) : document_(document), place_(std::move(place)) {}

TransDOMSink::TransDOMSink(DOMDocument* document, DOMElement* element) : document_(document) {
  open_.push_back(element);
}

void TransDOMSink::startElement(XMLCh const* tag) {
  DOMElement* element = document_->createElement(tag);
  if (!open_.empty()) open_.back()->appendChild(element);
  open_.push_back(element);
}

void TransDOMSink::attribute(XMLCh const* name, XMLCh const* value) { open_.back()->setAttribute(name, value); }

void TransDOMSink::endElement() {
  DOMElement* element = open_.back();
  open_.pop_back();
  if (!open_.empty()) return;
  last_ = element;
  if (place_) place_(element);
}
