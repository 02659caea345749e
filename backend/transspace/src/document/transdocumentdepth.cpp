#include "core/transconfig.h"

#include "document/transdocumentdepth.h"

#include <xercesc/dom/DOMNode.hpp>

using XERCES_CPP_NAMESPACE::DOMNode;

// A pre-order walk with the count of open elements (and entity references, whose children the
// serializer and the XPath string-value also recurse into).
bool TransDocumentDepth::exceeded(DOMNode const* node) {
  if (node == nullptr) return false;
  auto const opens = [](DOMNode const* n) {
    return n->getNodeType() == DOMNode::ELEMENT_NODE || n->getNodeType() == DOMNode::ENTITY_REFERENCE_NODE;
  };
  std::size_t depth = 0;
  DOMNode const* current = node;
  for (;;) {
    if (opens(current) && ++depth > limit) return true;
    if (current->getFirstChild() != nullptr) {
      current = current->getFirstChild();
      continue;
    }
    // Close the leaf and every ancestor that has no next sibling, up to `node`.
    for (;;) {
      if (opens(current)) --depth;
      if (current == node) return false;
      if (current->getNextSibling() != nullptr) {
        current = current->getNextSibling();
        break;
      }
      current = current->getParentNode();
    }
  }
}
