#include "core/transconfig.h"

#include "dictionary/transdictionaryimpl.h"

#include "dictionary/transdictionarycontent.h"
#include "dictionary/transdomsink.h"
#include "dictionary/transxmlcharray.h"
#include "xmlinternals/transxmlinternals.h"

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

using XERCES_CPP_NAMESPACE::DOMImplementation;
using XERCES_CPP_NAMESPACE::DOMNodeList;
using XERCES_CPP_NAMESPACE::XMLPlatformUtils;
using XERCES_CPP_NAMESPACE::XMLString;
using X = TransXMLChArray;

// What each element holds is TransDictionaryContent's business, shared with the text road of the
// export (TransDictionaryWriter); the builders here send it to a TransDOMSink and place what it
// makes among the elements that already exist.

namespace {

// The root's section that a tag names, or -1: only these are remembered for placement.
int sectionIndex(XMLCh const* tag) {
  static XMLCh const* const sections[] = {X::variable_s, X::weightVariable_s, X::valueLabelSet_s, X::variableSet_s,
                                          X::multipleResponseSet_s};
  for (int i = 0; i < 5; ++i) {
    if (XMLString::equals(tag, sections[i])) return i;
  }
  return -1;
}

using Node = TransDictionaryImpl::DOMNode;

Node* lastElementChild(Node* node) {
  Node* child = node->getLastChild();
  while (child != nullptr && child->getNodeType() != Node::ELEMENT_NODE) child = child->getPreviousSibling();
  return child;
}

Node* previousElementSibling(Node* node) {
  Node* sibling = node->getPreviousSibling();
  while (sibling != nullptr && sibling->getNodeType() != Node::ELEMENT_NODE) sibling = sibling->getPreviousSibling();
  return sibling;
}

// `node` itself when it has no element child, else the last element reached by last children.
Node* deepestLastElement(Node* node) {
  while (Node* child = lastElementChild(node)) node = child;
  return node;
}

// The last element named `tag` among the descendants of `parent` in document order, which is the
// last item getElementsByTagName would list. Walks the elements in reverse document order (a
// node's descendants before the node itself) and stops at the first match; without recursion, so
// a caller's document of any depth is searched.
Node* lastDescendantNamed(Node* parent, XMLCh const* tag) {
  Node* first = lastElementChild(parent);
  if (first == nullptr) return nullptr;
  for (Node* node = deepestLastElement(first); node != parent;) {
    if (XMLString::equals(node->getNodeName(), tag)) return node;
    Node* previous = previousElementSibling(node);
    node = previous != nullptr ? deepestLastElement(previous) : node->getParentNode();
  }
  return nullptr;
}

}  // namespace

// Between two builder calls the caller may have changed the document in any way (put section
// elements anywhere, removed and released remembered ones): then nothing remembered is trusted.
void TransDictionaryImpl::forgetAnchorsAfterForeignChanges() {
  if (trackedRoot_ == nullptr || document_ == nullptr || TransXMLInternals::documentChanges(document_) == knownChanges_)
    return;
  for (int section = 0; section < kSectionCount; ++section) forget(section);
}

void TransDictionaryImpl::forget(int section) {
  lastOfSection_[section] = nullptr;
  sectionKnown_[section] = false;
}

void TransDictionaryImpl::recordOwnChanges() {
  if (document_ != nullptr) knownChanges_ = TransXMLInternals::documentChanges(document_);
}

// The span of one builder call. The builders call one another (addVariables runs the per-variable
// builders), so only the outermost call checks for foreign changes when it starts and records the
// count it leaves when it ends; in between, only the builders change the document. The caller
// cannot act while a builder runs: one thread, and the host's data source does not touch the DOM.
class TransDictionaryImpl::BuilderCall {
public:
  // A call that starts a new document looks at nothing of the previous one, which the caller may
  // have released already.
  enum Start { OnCurrentDocument, OnNewDocument };

  explicit BuilderCall(TransDictionaryImpl& builder, Start start = OnCurrentDocument) : builder_(builder) {
    if (builder_.callDepth_++ == 0 && start == OnCurrentDocument) builder_.forgetAnchorsAfterForeignChanges();
  }
  ~BuilderCall() {
    if (--builder_.callDepth_ == 0) builder_.recordOwnChanges();
  }
  BuilderCall(BuilderCall const&) = delete;
  BuilderCall& operator=(BuilderCall const&) = delete;

private:
  TransDictionaryImpl& builder_;
};

// ---------------------------------------------------------------------------------------------
// Construction and the document skeleton
// ---------------------------------------------------------------------------------------------

TransDictionaryImpl::TransDictionaryImpl() : document_(nullptr) {}

// The document belongs to whoever called addDictionary: nothing of it is released here.
TransDictionaryImpl::~TransDictionaryImpl() = default;

bool TransDictionaryImpl::createDocument() {
  BuilderCall call(*this, BuilderCall::OnNewDocument);
  forgetSections();
  try {
    document_ = DOMImplementation::getImplementation()->createDocument(XMLPlatformUtils::fgMemoryManager);
    document_->setStrictErrorChecking(true);
    document_->setXmlStandalone(false);
    document_->setXmlVersion(X::schemaVersion_s);
    DOMElement* root = document_->createElement(X::dictionary_s);
    document_->appendChild(root);
    TransDOMSink sink(document_, root);
    TransDictionaryContent(sink).namespaceAttributes();
    trackedRoot_ = root;
    // A new root holds no section yet: nothing to search for until something changes that.
    for (bool& known : sectionKnown_) known = true;
    return true;
  } catch (...) {
    // Whatever went wrong, a document already created is abandoned, not released.
    document_ = nullptr;
    forgetSections();
    return false;
  }
}

TransDictionaryImpl::DOMNode* TransDictionaryImpl::insertAfterTag(DOMElement* parent, DOMNode* child,
                                                                  XMLCh const* tag) {
  assert(parent);
  assert(child);
  assert(tag);
  DOMNodeList* found = parent->getElementsByTagName(tag);
  XMLSize_t count = found->getLength();
  if (count == 0) return nullptr;
  DOMNode* last = found->item(count - 1);
  return parent->insertBefore(child, last->getNextSibling());
}

TransDictionaryImpl::DOMDocument* TransDictionaryImpl::addDictionary(ZORB_DataSource const& ds) {
  BuilderCall call(*this, BuilderCall::OnNewDocument);
  if (!createDocument()) return document_;
  DOMElement* root = document_->getDocumentElement();

  TransDOMSink sink(document_, root);
  TransDictionaryContent(sink).rootAttributes(ds);

  addVariables(ds, root);
  addWeightVariable(ds, root);
  addVariableSets(ds, root);
  addMultipleResponseSets(ds, root);
  addDatasourceAttributes(ds, root);
  addExtensions(ds, root);
  return document_;
}

// Places `child` after the last element of the first tag of `chain` that `parent` holds, else
// before the parent's first child (which appends to an empty parent): the placement convention.
TransDictionaryImpl::DOMNode* TransDictionaryImpl::placeAfterFirstOf(DOMElement* parent, DOMNode* child,
                                                                     std::initializer_list<XMLCh const*> chain) {
  DOMNode* placed = nullptr;
  for (XMLCh const* tag : chain) {
    if (literalPlacement_) {
      placed = insertAfterTag(parent, child, tag);
    } else if (DOMNode* anchor = lastElementNamed(parent, tag)) {
      placed = insertAfter(parent, child, anchor);
    }
    if (placed != nullptr) break;
  }
  if (placed == nullptr) placed = parent->insertBefore(child, parent->getFirstChild());
  rememberSection(parent, child, *chain.begin());
  return placed;
}

// insertAfterTag's insertion, with the anchor already known.
TransDictionaryImpl::DOMNode* TransDictionaryImpl::insertAfter(DOMElement* parent, DOMNode* child, DOMNode* anchor) {
  return parent->insertBefore(child, anchor->getNextSibling());
}

// The node insertAfterTag's search would find, without walking the whole document on every
// placement: under the tracked root, a section's last element is remembered; anywhere else (a
// variable, a value label set: small elements) the subtree is walked from its end. What is
// remembered is used only while the document has changed through the builders alone (see
// BuilderCall), and only when it is still an element of that name in the root; otherwise the root
// is searched (once per section after such a change) and the answer remembered. That a section has
// no element is remembered too: a dictionary without variable sets would otherwise search the
// whole document for one before placing each multiple response set.
TransDictionaryImpl::DOMNode* TransDictionaryImpl::lastElementNamed(DOMElement* parent, XMLCh const* tag) {
  int section = sectionIndex(tag);
  if (parent != trackedRoot_ || section < 0) return lastDescendantNamed(parent, tag);
  DOMNode* last = lastOfSection_[section];
  bool const trusted = sectionKnown_[section] && (last == nullptr || (last->getParentNode() == parent &&
                                                                      last->getNodeType() == DOMNode::ELEMENT_NODE &&
                                                                      XMLString::equals(last->getNodeName(), tag)));
  if (!trusted) last = lastDescendantNamed(parent, tag);
  lastOfSection_[section] = last;
  sectionKnown_[section] = true;
  return last;
}

// Keeps lastOfSection_ equal to the last element of each section under the tracked root. A section
// whose chain starts with its own tag puts every new element directly after its last one (or, when
// it has none, where the section begins), so the new element is the last. The others
// (weightVariable; the root's attributeSet is never searched for) start their chain with the
// preceding section: usually that puts a second element in front of the first, but after the
// caller's edits it may put it anywhere, so the section is forgotten and searched for when needed.
void TransDictionaryImpl::rememberSection(DOMElement* parent, DOMNode* child, XMLCh const* chainHead) {
  if (parent != trackedRoot_) return;
  int section = sectionIndex(child->getNodeName());
  if (section < 0) return;
  if (XMLString::equals(chainHead, child->getNodeName())) {
    lastOfSection_[section] = child;
    sectionKnown_[section] = true;
  } else {
    forget(section);
  }
}

void TransDictionaryImpl::forgetSections() {
  trackedRoot_ = nullptr;
  for (int section = 0; section < kSectionCount; ++section) forget(section);
}

// ---------------------------------------------------------------------------------------------
// Variables and formats
// ---------------------------------------------------------------------------------------------

unsigned int TransDictionaryImpl::addVariables(ZORB_DataSource const& ds, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  TransDOMSink sink(document_, [&](DOMElement* element) { placeAfterFirstOf(domdict, element, {X::variable_s}); });
  TransDictionaryContent content(sink);
  unsigned int i = 0;
  // The column count is asked before every variable and compared as unsigned.
  for (; i < static_cast<unsigned int>(ds.ColumnCount()); ++i) {
    ZORB_Variable const& var = ds.GetVariable(static_cast<int>(i));
    // The variable with its formats, missing values and attribute set, in that order.
    content.variable(var);
    addValueLabelSet(var, domdict);
  }
  return i;
}

bool TransDictionaryImpl::addVariableFormat(ZORB_Variable const& var, DOMElement* domvar) {
  assert(domvar);
  assert(document_);
  BuilderCall call(*this);
  TransDOMSink sink(document_, [&](DOMElement* element) { domvar->insertBefore(element, domvar->getFirstChild()); });
  TransDictionaryContent(sink).variableFormat(var);
  return true;
}

bool TransDictionaryImpl::addVariableWriteFormat(ZORB_Variable const& var, DOMElement* domvar) {
  assert(domvar);
  assert(document_);
  BuilderCall call(*this);
  TransDOMSink sink(document_, [&](DOMElement* element) { placeAfterFirstOf(domvar, element, {X::variableFormat_s}); });
  TransDictionaryContent(sink).variableWriteFormat(var);
  return true;
}

bool TransDictionaryImpl::setFormatAttributes(DOMElement* element, int type, int width, int decimals) {
  BuilderCall call(*this);
  TransDOMSink sink(document_, element);
  TransDictionaryContent(sink).formatAttributes(type, width, decimals);
  return true;
}

// ---------------------------------------------------------------------------------------------
// Missing values and value labels
// ---------------------------------------------------------------------------------------------

int TransDictionaryImpl::addMissingValues(ZORB_Variable const& var, DOMElement* domvar) {
  assert(domvar);
  assert(document_);
  BuilderCall call(*this);
  TransDOMSink sink(document_, [&](DOMElement* element) {
    placeAfterFirstOf(domvar, element, {X::missingValue_s, X::variableWriteFormat_s, X::variableFormat_s});
  });
  return TransDictionaryContent(sink).missingValues(var);
}

unsigned int TransDictionaryImpl::addValueLabelSet(ZORB_Variable const& var, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  TransDOMSink sink(document_, [&](DOMElement* set) {
    placeAfterFirstOf(domdict, set, {X::valueLabelSet_s, X::weightVariable_s, X::variable_s});
  });
  return TransDictionaryContent(sink).valueLabelSet(var) ? 1 : 0;
}

// ---------------------------------------------------------------------------------------------
// Variable sets and multiple response sets
// ---------------------------------------------------------------------------------------------

unsigned int TransDictionaryImpl::addVariableSets(ZORB_DataSource const& ds, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  unsigned int count = 0;
  for (VariableSet const& set : VariableSets(ds, PlainVariableSets)) {
    addVariableSet(set, ds, domdict);
    ++count;
  }
  return count;
}

unsigned int TransDictionaryImpl::addMultipleResponseSets(ZORB_DataSource const& ds, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  unsigned int count = 0;
  for (VariableSet const& set : VariableSets(ds, MultipleResponseSets)) {
    addMultipleResponseSet(set, ds, domdict);
    ++count;
  }
  return count;
}

unsigned int TransDictionaryImpl::addVariableSet(VariableSet const& set, ZORB_DataSource const& ds,
                                                 DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  TransDOMSink sink(document_, [&](DOMElement* element) {
    placeAfterFirstOf(domdict, element, {X::variableSet_s, X::valueLabelSet_s, X::weightVariable_s, X::variable_s});
  });
  return TransDictionaryContent(sink).variableSet(set, ds);
}

unsigned int TransDictionaryImpl::addMultipleResponseSet(VariableSet const& set, ZORB_DataSource const& ds,
                                                         DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  TransDOMSink sink(document_, [&](DOMElement* element) {
    placeAfterFirstOf(
        domdict, element,
        {X::multipleResponseSet_s, X::variableSet_s, X::valueLabelSet_s, X::weightVariable_s, X::variable_s});
  });
  return TransDictionaryContent(sink).multipleResponseSet(set, ds);
}

// ---------------------------------------------------------------------------------------------
// Attributes, extensions and weight variable
// ---------------------------------------------------------------------------------------------

bool TransDictionaryImpl::addWeightVariable(ZORB_DataSource const& ds, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  TransDOMSink sink(document_, [&](DOMElement* element) { placeAfterFirstOf(domdict, element, {X::variable_s}); });
  TransDictionaryContent(sink).weightVariable(ds);
  return true;
}

bool TransDictionaryImpl::addAttribute(std::string const& name, std::vector<std::string> const& values,
                                       DOMElement* domset) {
  assert(domset);
  assert(document_);
  BuilderCall call(*this);
  TransDOMSink sink(document_, [&](DOMElement* element) { domset->appendChild(element); });
  TransDictionaryContent(sink).attribute(name, values);
  return true;
}

TransDictionaryImpl::DOMElement* TransDictionaryImpl::addAttributes(DatasourceAttributes const& attributes) {
  assert(document_);
  BuilderCall call(*this);
  TransDOMSink sink(document_);  // the set is returned unplaced
  return TransDictionaryContent(sink).attributeSet(attributes) ? sink.lastElement() : nullptr;
}

bool TransDictionaryImpl::addVariableAttributes(ZORB_Variable const& var, DOMElement* domvar) {
  assert(domvar);
  assert(document_);
  BuilderCall call(*this);
  TransDOMSink sink(document_, [&](DOMElement* set) { domvar->appendChild(set); });
  return TransDictionaryContent(sink).attributeSet(DatasourceAttributes(var.GetAttributes()));
}

bool TransDictionaryImpl::addDatasourceAttributes(ZORB_DataSource const& ds, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  // The chain starts with the preceding section: a deep search for attributeSet would find the
  // attribute sets inside the variables.
  TransDOMSink sink(document_, [&](DOMElement* set) {
    placeAfterFirstOf(
        domdict, set,
        {X::multipleResponseSet_s, X::variableSet_s, X::valueLabelSet_s, X::weightVariable_s, X::variable_s});
  });
  return TransDictionaryContent(sink).attributeSet(DatasourceAttributes(ds.GetAttributes()));
}

unsigned int TransDictionaryImpl::addExtensions(ZORB_DataSource const& ds, DOMElement* domdict) {
  assert(domdict);
  assert(document_);
  BuilderCall call(*this);
  // The records end the document, in the order of the type list.
  TransDOMSink sink(document_, [&](DOMElement* element) { domdict->appendChild(element); });
  TransDictionaryContent content(sink);
  unsigned int count = 0;
  for (int type : TransDictionaryContent::extensionTypes) {
    if (content.extension(ds, type)) ++count;
  }
  return count;
}
