#include "core/transconfig.h"

#include "document/transdomimpl.h"

#include "dictionary/transdictionaryimpl.h"
#include "document/transdocumentdepth.h"
#include "document/transpathindex.h"
#include "document/transrootstep.h"
#include "document/transsourcetree.h"
#include "core/transutf16.h"
#include "core/transutil.h"
#include "dictionary/transxmlcharray.h"

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include <unicode/unistr.h>
#include <xalanc/DOMSupport/XalanDocumentPrefixResolver.hpp>
#include <xalanc/ICUBridge/ICUBridge.hpp>
#include <xalanc/XPath/NodeRefListBase.hpp>
#include <xalanc/XPath/XPath.hpp>
#include <xalanc/XPath/XPathEvaluator.hpp>
#include <xalanc/XalanDOM/XalanNode.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeDOMSupport.hpp>
#include <xalanc/XercesParserLiaison/XercesParserLiaison.hpp>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLUni.hpp>

using XALAN_CPP_NAMESPACE::ICUBridge;
using XALAN_CPP_NAMESPACE::NodeRefListBase;
using XALAN_CPP_NAMESPACE::PrefixResolver;
using XALAN_CPP_NAMESPACE::XalanDocument;
using XALAN_CPP_NAMESPACE::XalanDocumentPrefixResolver;
using XALAN_CPP_NAMESPACE::XalanDOMString;
using XALAN_CPP_NAMESPACE::XalanMemMgrs;
using XALAN_CPP_NAMESPACE::XalanNode;
using XALAN_CPP_NAMESPACE::XalanSourceTreeDOMSupport;
using XALAN_CPP_NAMESPACE::XercesParserLiaison;
using XALAN_CPP_NAMESPACE::XObject;
using XALAN_CPP_NAMESPACE::XObjectPtr;
using XALAN_CPP_NAMESPACE::XPath;
using XALAN_CPP_NAMESPACE::XPathEvaluator;

using XERCES_CPP_NAMESPACE::DOMConfiguration;
using XERCES_CPP_NAMESPACE::DOMDocument;
using XERCES_CPP_NAMESPACE::DOMElement;
using XERCES_CPP_NAMESPACE::DOMException;
using XERCES_CPP_NAMESPACE::DOMImplementation;
using XERCES_CPP_NAMESPACE::DOMImplementationLS;
using XERCES_CPP_NAMESPACE::DOMImplementationRegistry;
using XERCES_CPP_NAMESPACE::DOMLSOutput;
using XERCES_CPP_NAMESPACE::DOMLSSerializer;
using XERCES_CPP_NAMESPACE::DOMNode;
using XERCES_CPP_NAMESPACE::MemBufFormatTarget;
using XERCES_CPP_NAMESPACE::XMLException;
using XERCES_CPP_NAMESPACE::XMLPlatformUtils;
using XERCES_CPP_NAMESPACE::XMLUni;

namespace {

XERCES_CPP_NAMESPACE::MemoryManager& xalanMemoryManager() { return XalanMemMgrs::getDefaultXercesMemMgr(); }

void placeholder(TransStatus& status) {
  status.failure(true);
  status.warning(true);
}

// The first step of the views of the whole document: the status reset. A value without a document
// (addDictionary returned null) has no view to hand out: the placeholder flags, and false.
bool hasDocument(DOMDocument const* document, TransStatus& status) {
  status.reset();
  if (document != nullptr) return true;
  placeholder(status);
  return false;
}

// query's check of one argument: empty, or blank once a copy is trimmed (the trim reports into
// `status`, as it always has).
bool blankArgument(TransString const& argument, TransStatus& status) {
  if (argument.empty()) return true;
  TransString trimmed(argument);
  return trimmed.trim(status).empty();
}

// Xalan parses and evaluates an expression by recursive descent, several calls per level of
// parentheses or brackets, so a query nested deep enough would overflow the stack (about 30,000
// levels on an 8 MB stack). Expressions nested deeper than maxExpressionNesting are not evaluated;
// brackets inside string literals do not count.
constexpr std::size_t maxExpressionNesting = 1000;

bool nestedTooDeep(UChar const* expression) {
  std::size_t depth = 0;
  UChar quote = 0;
  for (UChar const* at = expression; *at != 0; ++at) {
    UChar const c = *at;
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == u'\'' || c == u'"') {
      quote = c;
    } else if (c == u'(' || c == u'[') {
      if (++depth > maxExpressionNesting) return true;
    } else if ((c == u')' || c == u']') && depth > 0) {
      --depth;
    }
  }
  return false;
}

unsigned short const* exported(XalanDOMString const& text) { return TransUTF16::exported(text.c_str()); }

// A query's context and path: UTF-16 through an ICU string into a Xalan string.
XalanDOMString xalanString(UChar const* text) {
  XalanDOMString result(xalanMemoryManager());
  ICUBridge::UnicodeStringToXalanDOMString(icu::UnicodeString(text), result);
  return result;
}

double numberFrom(XalanDOMString const& text) {
  return TransUtil::UTF16toDouble(icu::UnicodeString(text.c_str(), static_cast<int32_t>(text.length())));
}

// XObject::num() on a boolean converts its string form ("true"/"false") and gives NaN in
// Xalan 1.12; the string form is read instead.
double booleanNumber(XObject const& result) {
  XalanDOMString const& text = result.str();
  return !text.empty() && text[0] == u't' ? 1.0 : 0.0;
}

// The LS serializer of the serialisations, released when the scope ends.
class Serializer {
public:
  Serializer() {
    DOMImplementation* implementation = DOMImplementationRegistry::getDOMImplementation(TransXMLChArray::LS_s);
    auto* ls = static_cast<DOMImplementationLS*>(implementation);
    serializer_ = ls->createLSSerializer(XMLPlatformUtils::fgMemoryManager);
    output_ = ls->createLSOutput(XMLPlatformUtils::fgMemoryManager);
    DOMConfiguration* configuration = serializer_->getDomConfig();
    if (configuration->canSetParameter(XMLUni::fgDOMWRTFormatPrettyPrint, false)) {
      configuration->setParameter(XMLUni::fgDOMWRTFormatPrettyPrint, false);
    }
  }
  // The output is released together with the serializer: nothing of a serialisation outlives
  // it, and the leak checker stays quiet.
  ~Serializer() {
    serializer_->release();
    output_->release();
  }
  Serializer(Serializer const&) = delete;
  Serializer& operator=(Serializer const&) = delete;

  // Writes the document into `target`; any exception sets failure and keeps what was written.
  void write(DOMDocument const* document, MemBufFormatTarget& target, TransStatus& status) {
    output_->setByteStream(&target);
    try {
      serializer_->write(document, output_);
    } catch (XMLException const&) {
      status.failure(true);
    } catch (DOMException const&) {
      status.failure(true);
    } catch (...) {
      status.failure(true);
    }
  }

private:
  DOMLSSerializer* serializer_;
  DOMLSOutput* output_;
};

constexpr XMLSize_t serializerCapacity = 1023;

}  // namespace

// ---- construction, copy, destruction ----

TransDOMImpl::TransDOMImpl(DOMDocument const* source)
    : document_(nullptr),
      liaison_(nullptr),
      dom_(nullptr),
      evaluator_(nullptr),
      mirrorRefused_(false),
      queryPath_(QueryPath::automatic) {
  init();
  copyDocument(source);
}

TransDOMImpl::TransDOMImpl(ZORB_DataSource const& ds)
    : document_(nullptr),
      liaison_(nullptr),
      dom_(nullptr),
      evaluator_(nullptr),
      mirrorRefused_(false),
      queryPath_(QueryPath::automatic) {
  init();
  // The builder never owns the document; it goes with this local builder, the document stays.
  TransDictionaryImpl builder;
  document_ = builder.addDictionary(ds);
}

TransDOMImpl::TransDOMImpl(DOMDocument* document, AdoptTag)
    : document_(nullptr),
      liaison_(nullptr),
      dom_(nullptr),
      evaluator_(nullptr),
      mirrorRefused_(false),
      queryPath_(QueryPath::automatic) {
  init();
  document_ = document;
}

TransDOMImpl::TransDOMImpl(TransDOMImpl const& other)
    : TransValueImpl(),
      document_(nullptr),
      liaison_(nullptr),
      dom_(nullptr),
      evaluator_(nullptr),
      mirrorRefused_(false),
      queryPath_(other.queryPath_) {
  init();
  copyDocument(other.document_);
}

TransDOMImpl* TransDOMImpl::adopt(DOMDocument* document) { return new TransDOMImpl(document, AdoptTag()); }

// Released in this order: the liaison (and with it the wrapper), the evaluator, the document. The mirror
// copied what it needed from the document and goes last, after the evaluator whose last result
// may still point into it.
TransDOMImpl::~TransDOMImpl() {
  if (liaison_ != nullptr) delete liaison_;
  if (evaluator_ != nullptr) delete evaluator_;
  if (document_ != nullptr) delete document_;
  pathIndex_.reset();
  mirror_.reset();
}

TransDOMImpl& TransDOMImpl::operator=(TransDOMImpl other) {
  swap(other);
  return *this;
}

void TransDOMImpl::swap(TransDOMImpl& other) {
  std::swap(document_, other.document_);
  std::swap(liaison_, other.liaison_);
  std::swap(dom_, other.dom_);
  std::swap(evaluator_, other.evaluator_);
  std::swap(mirror_, other.mirror_);
  std::swap(pathIndex_, other.pathIndex_);
  std::swap(mirrorRefused_, other.mirrorRefused_);
  std::swap(queryPath_, other.queryPath_);
}

TransValueImpl* TransDOMImpl::clone() const { return new TransDOMImpl(*this); }

void TransDOMImpl::init() {
  liaison_ = new XercesParserLiaison(xalanMemoryManager());
  liaison_->setBuildWrapperNodes(true);
  liaison_->setBuildBridgeNodes(true);
  liaison_->setThreadSafe(true);
  evaluator_ = new XPathEvaluator(xalanMemoryManager());
}

void TransDOMImpl::copyDocument(DOMDocument const* source) {
  document_ = DOMImplementation::getImplementation()->createDocument(XMLPlatformUtils::fgMemoryManager);
  if (source == nullptr) return;
  DOMElement const* root = source->getDocumentElement();
  if (root == nullptr) return;
  DOMNode* node = importSubtree(root);
  assert(node && "TransDOMImpl: copy constructor failed.");
  document_->appendChild(node);
}

// What importNode(root, true) makes, without its recursion (one call per level of the source, so a
// document deep enough would overflow the stack): each element is imported alone (with its
// attributes) and its children are imported in turn, under an explicit stack of open copies. Other
// nodes are imported whole, as the deep import does (an entity reference takes its children from
// the target document's own declaration, never from the source). A copied element joins its parent
// once its own children are in: the DOM checks a new child against every ancestor of its parent,
// and a parent not yet joined to anything has none, so the copy stays linear in the depth.
DOMNode* TransDOMImpl::importSubtree(DOMElement const* root) {
  struct Open {
    DOMNode const* next;  // the next child of the source element to copy
    DOMNode* copy;
  };
  DOMNode* copy = document_->importNode(root, false);
  if (copy == nullptr) return nullptr;
  std::vector<Open> open{{root->getFirstChild(), copy}};
  for (;;) {
    DOMNode const* source = open.back().next;
    if (source == nullptr) {
      DOMNode* finished = open.back().copy;
      open.pop_back();
      if (open.empty()) return finished;
      open.back().copy->appendChild(finished);
      continue;
    }
    open.back().next = source->getNextSibling();
    bool const element = source->getNodeType() == DOMNode::ELEMENT_NODE;
    DOMNode* imported = document_->importNode(source, !element);
    if (imported == nullptr) return nullptr;
    if (element) {
      open.push_back({source->getFirstChild(), imported});
    } else {
      open.back().copy->appendChild(imported);
    }
  }
}

void TransDOMImpl::queryPath(QueryPath path) { queryPath_ = path; }

TransDOMImpl::QueryPath TransDOMImpl::queryPath() const { return queryPath_; }

bool TransDOMImpl::queriedOnMirror() const { return queryPath_ != QueryPath::wrapper && mirror_ != nullptr; }

// ---- the two Xalan views, each built on first use ----

// The wrapper is built with the liaison's own option values (thread-safe, eager wrapper nodes).
XalanDocument* TransDOMImpl::wrapper() const {
  if (dom_ == nullptr && document_ != nullptr) {
    dom_ = liaison_->createDocument(document_, liaison_->getThreadSafe(), liaison_->getBuildWrapperNodes(),
                                    liaison_->getBuildMaps());
  }
  return dom_;
}

TransSourceTree const* TransDOMImpl::mirror() const {
  if (mirror_ == nullptr && !mirrorRefused_ && document_ != nullptr) {
    mirror_ = TransSourceTree::build(*document_);
    mirrorRefused_ = mirror_ == nullptr;
    if (mirror_ != nullptr) pathIndex_.reset(new TransPathIndex(mirror_->document()));
  }
  return mirror_.get();
}

// ---- views of the whole document ----

XalanDocument* TransDOMImpl::asXalanDocument(TransStatus& status) const {
  if (!hasDocument(document_, status)) return nullptr;
  return wrapper();
}

double TransDOMImpl::asDouble(TransStatus& status) const {
  status.reset();
  placeholder(status);
  return TransUtil::noNumber;
}

TransString* TransDOMImpl::asString(TransStatus& status) const {
  status.reset();
  TransString* text = asUTF16XML(status);
  status.warning(true);
  return text;
}

// The serializer recurses once per level of the document: a document nested deeper than the
// documented limit (one a host built itself; parsed text never is) is not written at all.
TransString* TransDOMImpl::asUTF16XML(TransStatus& status) const {
  if (!hasDocument(document_, status) || refusedAsTooDeep(status)) return new TransString();
  return serialiseUTF16(status);
}

TransString* TransDOMImpl::asMBCSXML(TransStatus& status) const {
  if (!hasDocument(document_, status) || refusedAsTooDeep(status)) return new TransString();
  return serialiseMBCS(status);
}

// A document nested deeper than TransDocumentDepth::limit is not serialised: the serializer recurses
// once per level (queries walk without recursion and still answer). Asked when the text is wanted,
// since only serialising needs it and it walks the whole document anyway.
bool TransDOMImpl::refusedAsTooDeep(TransStatus& status) const {
  if (!TransDocumentDepth::exceeded(document_)) return false;
  placeholder(status);
  return true;
}

TransString* TransDOMImpl::serialiseUTF16(TransStatus& status) const {
  Serializer serializer;
  MemBufFormatTarget target(serializerCapacity, XMLPlatformUtils::fgMemoryManager);
  serializer.write(document_, target, status);
  // The bytes are read as 16-bit units in host byte order, deliberately not transcoded;
  // an odd last byte is dropped. Copied, since the buffer need not be aligned.
  int32_t const units = static_cast<int32_t>(target.getLen() / 2);
  icu::UnicodeString text;
  UChar* buffer = text.getBuffer(units + 1);
  if (units > 0) std::memcpy(buffer, target.getRawBuffer(), static_cast<std::size_t>(units) * 2);
  text.releaseBuffer(units);
  if (text.isEmpty()) status.warning(true);
  return new TransString(TransUTF16::exported(text.getTerminatedBuffer()));
}

TransString* TransDOMImpl::serialiseMBCS(TransStatus& status) const {
  Serializer serializer;
  // The code page name is converted and checked, and not used further (kept as it is).
  TransStatus c;
  TransString codepage(TransUtil::codepage().c_str());
  XalanDOMString codepageName(xalanMemoryManager());
  ICUBridge::UnicodeStringToXalanDOMString(icu::UnicodeString(TransUTF16::internal(codepage.asUTF16(c))), codepageName);
  // The assertion's text is fixed, spaces included.
  // clang-format off
  assert(! c.failure() && ! c.warning());
  // clang-format on
  MemBufFormatTarget target(serializerCapacity, XMLPlatformUtils::fgMemoryManager);
  serializer.write(document_, target, status);
  std::string bytes(reinterpret_cast<char const*>(target.getRawBuffer()), target.getLen());
  if (bytes.empty()) status.warning(true);
  return new TransString(bytes.c_str());
}

// ---- XPath queries ----

TransDOMImpl::Result TransDOMImpl::evaluateXPath(UChar const* context, UChar const* path, TransStatus& status) const {
  // A value without a document (addDictionary returned null) answers every query with failure.
  if (document_ == nullptr) {
    status.failure(true);
    return Result();
  }
  TransSourceTree const* tree = queryPath_ == QueryPath::wrapper ? nullptr : mirror();
  if (tree == nullptr) return evaluateOnWrapper(context, path, status);
  TransPathIndex* index = queryPath_ == QueryPath::automatic ? pathIndex_.get() : nullptr;
  return evaluateOn(tree->document(), tree->prefixResolver(), index, context, path, status);
}

// The literal road: the wrapper, with a resolver made for this query.
TransDOMImpl::Result TransDOMImpl::evaluateOnWrapper(UChar const* context, UChar const* path,
                                                     TransStatus& status) const {
  wrapper();
  assert(dom_);
  XalanDocumentPrefixResolver resolver(dom_, XalanDOMString(xalanMemoryManager()), xalanMemoryManager());
  return evaluateOn(dom_, resolver, nullptr, context, path, status);
}

// The evaluation on either view of the document. With an index, the expressions
// it answers exactly are not handed to Xalan.
TransDOMImpl::Result TransDOMImpl::evaluateOn(XalanDocument* document, PrefixResolver const& resolver,
                                              TransPathIndex* index, UChar const* context, UChar const* path,
                                              TransStatus& status) const {
  Result result;
  // Without a root element, an expression holding a root step would crash Xalan: it fails instead
  // (see TransRootStep). A malformed context raises from this check as it would when selected.
  bool const rootless = document_->getDocumentElement() == nullptr;
  if (rootless && holdsRootStep(context, resolver)) {
    status.failure(true);
    return result;
  }
  XalanNode* node = selectContext(document, resolver, index, context);
  if (node == nullptr || (rootless && pathHoldsRootStep(path, resolver))) {
    status.failure(true);
    return result;
  }
  if (index != nullptr && index->select(node, path, result.nodes)) {
    result.indexed = true;
    return result;
  }
  XalanSourceTreeDOMSupport support;
  XalanDOMString const pathText = xalanString(path);
  try {
    result.object = evaluator_->evaluate(support, node, pathText.c_str(), resolver);
  } catch (...) {
    renewEvaluator();
    status.failure(true);
    return Result();
  }
  assert(result.object.null() == false);
  return result;
}

// The first node that `context` selects from the document node, or null.
XalanNode* TransDOMImpl::selectContext(XalanDocument* document, PrefixResolver const& resolver, TransPathIndex* index,
                                       UChar const* context) const {
  std::vector<XalanNode*> nodes;
  if (index != nullptr && index->select(document, context, nodes)) return nodes.empty() ? nullptr : nodes.front();
  XalanSourceTreeDOMSupport support;
  XalanDOMString const contextText = xalanString(context);
  // Not guarded: a malformed context raises to the caller of the query.
  try {
    return evaluator_->selectSingleNode(support, document, contextText.c_str(), resolver);
  } catch (...) {
    renewEvaluator();
    throw;
  }
}

// Whether `expression`, as Xalan compiles it, holds a location step from the root. A malformed
// expression raises (XPathParserException), as evaluating it would.
bool TransDOMImpl::holdsRootStep(UChar const* expression, PrefixResolver const& resolver) const {
  XalanDOMString const text = xalanString(expression);
  XPathEvaluator& evaluator = *evaluator_;
  auto destroy = [&evaluator](XPath* compiled) { evaluator.destroyXPath(compiled); };
  std::unique_ptr<XPath, decltype(destroy)> const compiled(evaluator.createXPath(text.c_str(), resolver), destroy);
  return TransRootStep::occursIn(compiled->getExpression());
}

// The same for the path, whose errors are the query's failure rather than the caller's exception:
// a path that does not compile counts as one that cannot be evaluated.
bool TransDOMImpl::pathHoldsRootStep(UChar const* path, PrefixResolver const& resolver) const {
  try {
    return holdsRootStep(path, resolver);
  } catch (...) {
    return true;
  }
}

// Xalan 1.12's XPathEvaluator::evaluate links its execution context to the DOM support and to an
// environment object of its own stack frame, and unlinks them only when the expression returns:
// after a run-time error (count(1), a failed conversion) the context keeps dangling pointers and
// the evaluator's next call dereferences them (SIGSEGV). Its destructor unlinks first, so the
// broken evaluator is dropped safely and a fresh one takes its place.
void TransDOMImpl::renewEvaluator() const {
  delete evaluator_;
  evaluator_ = nullptr;
  evaluator_ = new XPathEvaluator(xalanMemoryManager());
}

// The accessors' common start: a null result with failure set when an argument is empty.
TransDOMImpl::Result TransDOMImpl::query(TransString const& context, TransString const& path,
                                         TransStatus& status) const {
  // The context first, then the path: each is trimmed (into the caller's status) only when not empty.
  if (blankArgument(context, status) || blankArgument(path, status)) {
    status.failure(true);
    return Result();
  }
  TransStatus p;
  TransStatus c;
  UChar const* pathText = TransUTF16::internal(path.asUTF16(p));
  UChar const* contextText = TransUTF16::internal(context.asUTF16(c));
  Result result;
  if (nestedTooDeep(contextText) || nestedTooDeep(pathText)) {
    status.failure(true);
  } else {
    result = evaluateXPath(contextText, pathText, status);
  }
  // The assertion's text is fixed, spaces included.
  // clang-format off
  assert(! c.failure() && ! c.warning());
  assert(! p.failure() && ! p.warning());
  // clang-format on
  return result;
}

XObject::eObjectType TransDOMImpl::Result::type() const { return indexed ? XObject::eTypeNodeSet : object->getType(); }

std::size_t TransDOMImpl::Result::size() const { return indexed ? nodes.size() : object->nodeset().getLength(); }

// The node value as the DOM defines it (an attribute's value, a text node's text, and empty for an
// element), not the XPath string-value.
XalanDOMString const& TransDOMImpl::Result::nodeValue(std::size_t index) const {
  XalanNode const* node =
      indexed ? nodes[index] : object->nodeset().item(static_cast<NodeRefListBase::size_type>(index));
  return node->getNodeValue();
}

double TransDOMImpl::asDouble(TransString const& context, TransString const& path, TransStatus& status) const {
  status.reset();
  double answer = TransUtil::noNumber;
  Result const result = query(context, path, status);
  if (result.null()) {
    status.failure(true);
  } else {
    switch (result.type()) {
      case XObject::eTypeBoolean: answer = booleanNumber(*result.object); break;
      case XObject::eTypeNumber: answer = result.object->num(); break;
      case XObject::eTypeString: answer = numberFrom(result.object->str()); break;
      case XObject::eTypeNodeSet:
        if (result.size() > 0) answer = numberFrom(result.nodeValue(0));
        if (result.size() > 1) status.warning(true);
        break;
      default: status.failure(true); break;  // null, unknown, result tree fragment, user-defined
    }
  }
  if (answer == TransUtil::noNumber) status.warning(true);
  return answer;
}

TransString* TransDOMImpl::asString(TransString const& context, TransString const& path, TransStatus& status) const {
  status.reset();
  TransString* answer = nullptr;
  Result const result = query(context, path, status);
  if (result.null()) {
    status.failure(true);
  } else {
    switch (result.type()) {
      case XObject::eTypeBoolean:
      case XObject::eTypeNumber:
      case XObject::eTypeString: answer = new TransString(exported(result.object->str())); break;
      case XObject::eTypeNodeSet:
        if (result.size() > 0) answer = new TransString(exported(result.nodeValue(0)));
        if (result.size() > 1) status.warning(true);
        break;
      default: status.failure(true); break;
    }
  }
  if (answer == nullptr) answer = new TransString();
  if (answer->empty()) status.warning(true);
  return answer;
}

TransStringList* TransDOMImpl::asStringList(TransString const& context, TransString const& path,
                                            TransStatus& status) const {
  status.reset();
  // Held until the end, so that a malformed context (which raises) does not leak the list.
  std::unique_ptr<TransStringList> answer(new TransStringList());
  Result const result = query(context, path, status);
  auto append = [&answer](XalanDOMString const& text) {
    TransStatus p;
    answer->push_back(exported(text), p);
    // The assertion's text is fixed, spaces included.
    // clang-format off
    assert(! p.failure() && ! p.warning());
    // clang-format on
  };
  if (result.null()) {
    status.failure(true);
  } else {
    switch (result.type()) {
      case XObject::eTypeBoolean:
      case XObject::eTypeNumber:
      case XObject::eTypeString: append(result.object->str()); break;
      case XObject::eTypeNodeSet:
        for (std::size_t i = 0; i < result.size(); ++i) append(result.nodeValue(i));
        break;
      default: status.failure(true); break;
    }
  }
  if (answer->empty()) status.warning(true);
  return answer.release();
}
