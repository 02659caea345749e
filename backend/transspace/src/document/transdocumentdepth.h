// TransDocumentDepth: how deeply a document's elements nest, and the limit a document value keeps
// to. Serialising a document and reading an element's text recurse in the XML libraries once per
// level, so a document value refuses those operations on a document nested deeper than the limit
// (only a host can build one: parsed text never is, TransXMLInput counts while it parses).
#pragma once

#include <cstddef>

#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMNode;
XERCES_CPP_NAMESPACE_END

class TransDocumentDepth {
public:
  // The most elements nested in one another: the document element alone is depth 1.
  static constexpr std::size_t limit = 1000;

  // Whether `node` has elements nested deeper than the limit below it (the node itself counts when
  // it is an element). Walks the tree without recursion.
  static bool exceeded(XERCES_CPP_NAMESPACE::DOMNode const* node);
};
