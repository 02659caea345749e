#include "core/transconfig.h"

#include "document/transsourcetree.h"

#include <xalanc/DOMSupport/XalanDocumentPrefixResolver.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeAttrNS.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeComment.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeDocument.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeElementANS.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeElementNANS.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeProcessingInstruction.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeText.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeTextIWS.hpp>
#include <xercesc/dom/DOM.hpp>

#include <algorithm>

using XALAN_CPP_NAMESPACE::PrefixResolver;
using XALAN_CPP_NAMESPACE::XalanDocument;
using XALAN_CPP_NAMESPACE::XalanDocumentPrefixResolver;
using XALAN_CPP_NAMESPACE::XalanDOMString;
using XALAN_CPP_NAMESPACE::XalanMemMgrs;
using XALAN_CPP_NAMESPACE::XalanNode;
using XALAN_CPP_NAMESPACE::XalanSourceTreeAttr;
using XALAN_CPP_NAMESPACE::XalanSourceTreeComment;
using XALAN_CPP_NAMESPACE::XalanSourceTreeDocument;
using XALAN_CPP_NAMESPACE::XalanSourceTreeElement;
using XALAN_CPP_NAMESPACE::XalanSourceTreeProcessingInstruction;
using XALAN_CPP_NAMESPACE::XalanSourceTreeText;

using XERCES_CPP_NAMESPACE::DOMAttr;
using XERCES_CPP_NAMESPACE::DOMElement;
using XERCES_CPP_NAMESPACE::DOMNamedNodeMap;
using XERCES_CPP_NAMESPACE::DOMNode;
using XERCES_CPP_NAMESPACE::DOMProcessingInstruction;
using XERCES_CPP_NAMESPACE::DOMText;

namespace {

constexpr std::size_t attributeBlockSize = 4096;

XERCES_CPP_NAMESPACE::MemoryManager& memoryManager() { return XalanMemMgrs::getDefaultXercesMemMgr(); }

// Xalan's append operations are overloaded on the static type of the new node, and a sibling is
// told of its follower through its own static type: these two switches recover both.
template <class Sibling>
void appendAfter(Sibling* previous, XalanNode* child) {
  switch (child->getNodeType()) {
    case XalanNode::ELEMENT_NODE: previous->appendSiblingNode(static_cast<XalanSourceTreeElement*>(child)); break;
    case XalanNode::TEXT_NODE: previous->appendSiblingNode(static_cast<XalanSourceTreeText*>(child)); break;
    case XalanNode::COMMENT_NODE: previous->appendSiblingNode(static_cast<XalanSourceTreeComment*>(child)); break;
    default: previous->appendSiblingNode(static_cast<XalanSourceTreeProcessingInstruction*>(child)); break;
  }
}

template <class Parent>
void appendFirst(Parent* parent, XalanNode* child) {
  switch (child->getNodeType()) {
    case XalanNode::ELEMENT_NODE: parent->appendChildNode(static_cast<XalanSourceTreeElement*>(child)); break;
    case XalanNode::COMMENT_NODE: parent->appendChildNode(static_cast<XalanSourceTreeComment*>(child)); break;
    default: parent->appendChildNode(static_cast<XalanSourceTreeProcessingInstruction*>(child)); break;
  }
}

void appendFirstToElement(XalanSourceTreeElement* parent, XalanNode* child) {
  if (child->getNodeType() == XalanNode::TEXT_NODE) {
    parent->appendChildNode(static_cast<XalanSourceTreeText*>(child));
  } else {
    appendFirst(parent, child);
  }
}

}  // namespace

TransSourceTree::TransSourceTree()
    : document_(XalanSourceTreeDocument::create(memoryManager())),
      nextIndex_(2),  // the document is 1; the wrapper numbers its first child 2 as well
      attributeNext_(nullptr),
      attributeBlockFree_(0),
      empty_(nullptr) {
  strings_.emplace_back(memoryManager());
  empty_ = &strings_.back();
}

TransSourceTree::~TransSourceTree() {
  // The resolver holds pointers to attribute nodes; the nodes live in the deques, which go after
  // this body, and the document's destructor does not touch nodes it did not allocate.
  resolver_.reset();
  XALAN_CPP_NAMESPACE::XalanDestroy(memoryManager(), *document_);
}

std::unique_ptr<TransSourceTree> TransSourceTree::build(XERCES_CPP_NAMESPACE::DOMDocument const& document) {
  std::unique_ptr<TransSourceTree> tree(new TransSourceTree());
  if (!tree->mirrorChildren(document, nullptr)) return nullptr;
  tree->resolver_.reset(
      new XalanDocumentPrefixResolver(tree->document_, XalanDOMString(memoryManager()), memoryManager()));
  return tree;
}

XalanDocument* TransSourceTree::document() const { return document_; }

PrefixResolver const& TransSourceTree::prefixResolver() const { return *resolver_; }

// A pre-order walk without recursion: a document may be deeper than the stack would allow
// (the wrapper and Xalan's XPath walk such trees without recursion and answer). One slot per open
// element, on the heap.
bool TransSourceTree::mirrorChildren(DOMNode const& from, Element* parent) {
  std::vector<Slot> open(1);
  open.back().parent = parent;
  DOMNode const* node = from.getFirstChild();
  while (node != nullptr) {
    Element* element = nullptr;
    if (!mirrorNode(*node, open.back(), element)) return false;
    if (element != nullptr && node->getFirstChild() != nullptr) {
      // Children come after the attributes in document order, as in the wrapper.
      Slot inner;
      inner.parent = element;
      open.push_back(inner);
      node = node->getFirstChild();
      continue;
    }
    // The next sibling, or that of the nearest open ancestor that has one.
    while (node->getNextSibling() == nullptr && open.size() > 1) {
      open.pop_back();
      node = node->getParentNode();
    }
    node = node->getNextSibling();
  }
  return true;
}

// Mirrors one node (not its children) and appends it to `slot`; `element` is set when it is an
// element, whose children the caller mirrors next.
bool TransSourceTree::mirrorNode(DOMNode const& node, Slot& slot, Element*& element) {
  switch (node.getNodeType()) {
    case DOMNode::ELEMENT_NODE: {
      element = mirrorElement(static_cast<DOMElement const&>(node), slot);
      if (element == nullptr) return false;
      append(slot, element);
      return true;
    }
    case DOMNode::TEXT_NODE:
    case DOMNode::COMMENT_NODE:
    case DOMNode::PROCESSING_INSTRUCTION_NODE: {
      XalanNode* data = mirrorCharacterData(node, slot);
      if (data == nullptr) return false;
      append(slot, data);
      return true;
    }
    default:
      // CDATA sections: the source tree has no such node kind, and Xalan's XPath treats the
      // wrapper's CDATA nodes differently by axis (`//text()` skips them, `child::text()` does
      // not), so a plain text node would change answers. Entity references and the document
      // type: the wrapper gives them node kinds and lookups the source tree cannot reproduce.
      return false;
  }
}

TransSourceTree::Element* TransSourceTree::mirrorElement(DOMElement const& element, Slot const& slot) {
  DOMNamedNodeMap const* map = element.getAttributes();
  std::size_t const count = map == nullptr ? 0 : map->getLength();
  XalanNode* parent = slot.parent;
  if (parent == nullptr) parent = document_;
  XalanDOMString const& tag = name(element.getNodeName());
  XalanDOMString const& local = name(element.getLocalName());
  XalanDOMString const& uri = name(element.getNamespaceURI());
  XalanDOMString const& prefix = name(element.getPrefix());
  XalanNode::IndexType const index = nextIndex_++;
  if (count == 0) {
    elementsWithoutAttributes_.emplace_back(memoryManager(), tag, local, uri, prefix, document_, parent, slot.last,
                                            nullptr, index);
    return &elementsWithoutAttributes_.back();
  }
  Attr** attributeSlots = allocateAttributeSlots(count);
  elementsWithAttributes_.emplace_back(memoryManager(), tag, local, uri, prefix, document_, attributeSlots,
                                       static_cast<XALAN_CPP_NAMESPACE::XalanSize_t>(count), parent, slot.last, nullptr,
                                       index);
  Element* mirrored = &elementsWithAttributes_.back();
  if (!mirrorAttributes(element, mirrored, attributeSlots)) return nullptr;
  return mirrored;
}

bool TransSourceTree::mirrorAttributes(DOMElement const& element, Element* owner, Attr** slots) {
  DOMNamedNodeMap const* map = element.getAttributes();
  for (XMLSize_t i = 0; i < map->getLength(); ++i) {
    DOMAttr const* attribute = static_cast<DOMAttr const*>(map->item(i));
    // An ID attribute makes the wrapper answer id() through Xerces; the source tree would not.
    if (attribute->isId()) return false;
    attributes_.emplace_back(name(attribute->getName()), name(attribute->getLocalName()),
                             name(attribute->getNamespaceURI()), name(attribute->getPrefix()),
                             value(attribute->getValue()), owner, nextIndex_++);
    slots[i] = &attributes_.back();
  }
  return true;
}

XalanNode* TransSourceTree::mirrorCharacterData(DOMNode const& node, Slot const& slot) {
  XalanNode* parent = slot.parent;
  if (parent == nullptr) parent = document_;
  XalanNode::IndexType const index = nextIndex_++;
  switch (node.getNodeType()) {
    case DOMNode::COMMENT_NODE:
      comments_.emplace_back(value(node.getNodeValue()), document_, parent, slot.last, nullptr, index);
      return &comments_.back();
    case DOMNode::PROCESSING_INSTRUCTION_NODE: {
      auto const& instruction = static_cast<DOMProcessingInstruction const&>(node);
      instructions_.emplace_back(name(instruction.getTarget()), value(instruction.getData()), document_, parent,
                                 slot.last, nullptr, index);
      return &instructions_.back();
    }
    default: {
      // Text outside an element cannot exist in a well-formed DOM; refused rather than guessed.
      if (slot.parent == nullptr) return nullptr;
      auto const& text = static_cast<DOMText const&>(node);
      if (text.isIgnorableWhitespace()) {
        whitespaceTexts_.emplace_back(value(text.getNodeValue()), parent, slot.last, nullptr, index);
        return &whitespaceTexts_.back();
      }
      texts_.emplace_back(value(text.getNodeValue()), parent, slot.last, nullptr, index);
      return &texts_.back();
    }
  }
}

void TransSourceTree::append(Slot& slot, XalanNode* child) {
  if (slot.parent == nullptr) {
    // The document records its document element only through its own append, which walks the
    // document's children: a handful at most.
    appendFirst(document_, child);
  } else if (slot.last == nullptr) {
    appendFirstToElement(slot.parent, child);
  } else {
    switch (slot.last->getNodeType()) {
      case XalanNode::ELEMENT_NODE: appendAfter(static_cast<XalanSourceTreeElement*>(slot.last), child); break;
      case XalanNode::TEXT_NODE: appendAfter(static_cast<XalanSourceTreeText*>(slot.last), child); break;
      case XalanNode::COMMENT_NODE: appendAfter(static_cast<XalanSourceTreeComment*>(slot.last), child); break;
      default: appendAfter(static_cast<XalanSourceTreeProcessingInstruction*>(slot.last), child); break;
    }
  }
  slot.last = child;
}

TransSourceTree::Attr** TransSourceTree::allocateAttributeSlots(std::size_t count) {
  if (count > attributeBlockFree_) {
    std::size_t const size = std::max(count, attributeBlockSize);
    attributeBlocks_.emplace_back(new Attr*[size]);
    attributeNext_ = attributeBlocks_.back().get();
    attributeBlockFree_ = size;
  }
  Attr** slots = attributeNext_;
  attributeNext_ += count;
  attributeBlockFree_ -= count;
  return slots;
}

XalanDOMString const& TransSourceTree::name(XMLCh const* text) {
  if (text == nullptr || *text == 0) return *empty_;
  std::u16string_view key(text);
  auto found = names_.find(key);
  if (found != names_.end()) return *found->second;
  strings_.emplace_back(text, memoryManager(), static_cast<XalanDOMString::size_type>(key.size()));
  XalanDOMString const* stored = &strings_.back();
  names_.emplace(std::u16string_view(stored->c_str(), key.size()), stored);
  return *stored;
}

XalanDOMString const& TransSourceTree::value(XMLCh const* text) {
  if (text == nullptr || *text == 0) return *empty_;
  strings_.emplace_back(text, memoryManager());
  return strings_.back();
}
