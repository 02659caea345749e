// TransSourceTree: a read-only Xalan source tree that mirrors a Xerces DOM document node for node,
// so that the XPath queries run on Xalan's own tree instead of the Xerces wrapper.
//
// Why: the wrapper (XercesParserLiaison::createDocument) maps every Xerces attribute to its Xalan
// node through a hash map whose hasher yields ~2,000 distinct values, so each attribute a predicate
// touches costs a walk down a chain that grows with the document (0.3 queries/s at 100,000 variables).
// Xalan's source tree links nodes directly and has no such map.
//
// The mirror is built from the DOM itself (never from re-parsed text) and every node reports
// exactly what the wrapper's node reports for the same Xerces node: node name, local name,
// namespace URI, prefix and value are copied from the Xerces getters (null read as empty, as the
// wrapper's string pool does), attributes keep the order of the Xerces attribute map, and document
// order indices are numbered as the wrapper numbers them (document 1, then pre-order from 2, each
// element's attributes right after the element). XPath sees the same answers either way.
//
// Documents the mirror cannot reproduce exactly (CDATA sections, entity references, a document
// type, attributes flagged as IDs, which the wrapper resolves through Xerces' getElementById) are
// refused (the dictionary document has none of them):
// build() returns null and the caller keeps to the wrapper.
#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <xalanc/Include/PlatformDefinitions.hpp>
#include <xalanc/XalanDOM/XalanDOMString.hpp>
#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMNode;
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace XALAN_CPP_NAMESPACE {
class PrefixResolver;
class XalanDocument;
class XalanDocumentPrefixResolver;
class XalanNode;
class XalanSourceTreeAttr;
class XalanSourceTreeAttrNS;
class XalanSourceTreeComment;
class XalanSourceTreeDocument;
class XalanSourceTreeElement;
class XalanSourceTreeElementANS;
class XalanSourceTreeElementNANS;
class XalanSourceTreeProcessingInstruction;
class XalanSourceTreeText;
class XalanSourceTreeTextIWS;
}  // namespace XALAN_CPP_NAMESPACE

class TransSourceTree {
public:
  // The mirror of `document`, or null when the document holds a node the mirror cannot reproduce
  // exactly (see above). The Xerces document is only read; the mirror keeps no pointer into it.
  static std::unique_ptr<TransSourceTree> build(XERCES_CPP_NAMESPACE::DOMDocument const& document);

  ~TransSourceTree();
  TransSourceTree(TransSourceTree const&) = delete;
  TransSourceTree& operator=(TransSourceTree const&) = delete;

  XALAN_CPP_NAMESPACE::XalanDocument* document() const;
  // The document's own namespace declarations, collected once: the tree never changes, so the
  // resolver that the literal road makes per query would be the same every time.
  XALAN_CPP_NAMESPACE::PrefixResolver const& prefixResolver() const;

private:
  using XalanDOMString = XALAN_CPP_NAMESPACE::XalanDOMString;
  using XalanNode = XALAN_CPP_NAMESPACE::XalanNode;
  using Attr = XALAN_CPP_NAMESPACE::XalanSourceTreeAttr;
  using Element = XALAN_CPP_NAMESPACE::XalanSourceTreeElement;

  // Where the next child of a parent goes: the parent itself while it has no child, then the last
  // child appended (Xalan's appendChildNode walks the whole sibling chain on every call, which is
  // quadratic for the dictionary's root; appending to the last sibling is constant time).
  struct Slot {
    Element* parent = nullptr;  // null: the document is the parent
    XalanNode* last = nullptr;
  };

  TransSourceTree();
  bool mirrorChildren(XERCES_CPP_NAMESPACE::DOMNode const& from, Element* parent);
  bool mirrorNode(XERCES_CPP_NAMESPACE::DOMNode const& node, Slot& slot, Element*& element);
  Element* mirrorElement(XERCES_CPP_NAMESPACE::DOMElement const& element, Slot const& slot);
  bool mirrorAttributes(XERCES_CPP_NAMESPACE::DOMElement const& element, Element* owner, Attr** slots);
  XalanNode* mirrorCharacterData(XERCES_CPP_NAMESPACE::DOMNode const& node, Slot const& slot);
  void append(Slot& slot, XalanNode* child);
  Attr** allocateAttributeSlots(std::size_t count);

  XalanDOMString const& name(XMLCh const* text);
  XalanDOMString const& value(XMLCh const* text);

  XALAN_CPP_NAMESPACE::XalanSourceTreeDocument* document_;
  std::unique_ptr<XALAN_CPP_NAMESPACE::XalanDocumentPrefixResolver> resolver_;
  unsigned long nextIndex_;

  // Node storage: deques never move their elements, so the links between nodes stay valid.
  std::deque<XALAN_CPP_NAMESPACE::XalanSourceTreeElementANS> elementsWithAttributes_;
  std::deque<XALAN_CPP_NAMESPACE::XalanSourceTreeElementNANS> elementsWithoutAttributes_;
  std::deque<XALAN_CPP_NAMESPACE::XalanSourceTreeAttrNS> attributes_;
  std::deque<XALAN_CPP_NAMESPACE::XalanSourceTreeText> texts_;
  std::deque<XALAN_CPP_NAMESPACE::XalanSourceTreeTextIWS> whitespaceTexts_;
  std::deque<XALAN_CPP_NAMESPACE::XalanSourceTreeComment> comments_;
  std::deque<XALAN_CPP_NAMESPACE::XalanSourceTreeProcessingInstruction> instructions_;
  // Each element reads its attributes from a contiguous array; the arrays are carved from blocks.
  std::vector<std::unique_ptr<Attr*[]>> attributeBlocks_;
  Attr** attributeNext_;
  std::size_t attributeBlockFree_;

  // Names repeat (a few dozen distinct in a dictionary) and are shared; values are stored one by
  // one (a hash pool of 100,000s of distinct values would cost more than it saves).
  std::deque<XalanDOMString> strings_;
  std::unordered_map<std::u16string_view, XalanDOMString const*> names_;
  XalanDOMString const* empty_;
};
