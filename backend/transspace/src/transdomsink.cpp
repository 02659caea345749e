#include "transconfig.h"

#include "transdomsink.h"

#include <xercesc/dom/impl/DOMAttrImpl.hpp>
#include <xercesc/dom/impl/DOMAttrMapImpl.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>

XERCES_CPP_NAMESPACE_USE

namespace {

// Documents come from Xerces' own DOMImplementation, whose documents and elements are these.
DOMDocumentImpl* implementationOf(DOMDocument* document) { return static_cast<DOMDocumentImpl*>(document); }
DOMElementImpl* implementationOf(DOMElement* element) { return static_cast<DOMElementImpl*>(element); }

}  // namespace

TransDOMSink::TransDOMSink(DOMDocument* document, Place place) : document_(document), place_(std::move(place)) {}

TransDOMSink::TransDOMSink(DOMDocument* document, DOMElement* element) : document_(document), existing_(element) {
  open_.push_back(element);
}

void TransDOMSink::startElement(XMLCh const* tag) {
  attachAttributes();
  DOMElement* element = implementationOf(document_)->createElementNoCheck(tag);
  if (!open_.empty()) {
    DOMElement* parent = open_.back();
    if (parent == existing_) {
      parent->appendChild(element);
    } else {
      implementationOf(parent)->fParent.appendChildFast(element);
    }
  }
  open_.push_back(element);
}

void TransDOMSink::attribute(XMLCh const* name, XMLCh const* value) {
  if (open_.back() == existing_) {
    existing_->setAttribute(name, value);
    return;
  }
  auto* attribute = static_cast<DOMAttrImpl*>(document_->createAttribute(name));
  attribute->setValueFast(value);
  attributes_.push_back(attribute);
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
  DOMAttrMapImpl* map = implementationOf(open_.back())->fAttributes;
  map->reserve(attributes_.size());
  for (DOMAttr* attribute : attributes_) map->setNamedItemFast(attribute);
  attributes_.clear();
}
