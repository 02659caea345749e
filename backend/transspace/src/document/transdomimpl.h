// TransDOMImpl: a value that holds an XML document, serialises it and answers
// context + path XPath queries on it.
//
// Two Xalan views of the one document exist, each built on first use and then kept for the
// value's life:
// - dom_, the Xalan wrapper (XercesParserLiaison::createDocument, eager wrapper nodes), built at
//   the first asXalanDocument call (so every call returns the same pointer). Building it eagerly
//   would cost ~10 s at 100,000 variables for a view most values never hand out.
// - a TransSourceTree mirror, built at the first query, on which the queries run: evaluating them
//   on the wrapper collapses on large documents (its node map hashes poorly). The mirror
//   answers every query exactly as the wrapper would; a document it cannot reproduce exactly is
//   queried through the wrapper, as is every query of a value switched to the wrapper path.
//   Simple location paths (`variable[@name='v7']/@label`) are answered by a TransPathIndex over
//   the mirror, which indexes a parent's children by an attribute's value on first use.
// The answers, flags, assertions and exceptions are the same on every road; tests compare the roads.
//
// Input can drive recursion in the XML libraries, and two limits keep it within the stack: a
// document nested deeper than TransDocumentDepth::limit (only a host can build one; parsed text
// never is) is copied without recursion but not serialised (failure and warning, empty text),
// and a query whose context or path nests parentheses or brackets more than 1000 deep is not
// evaluated (failure, as for a context that selects nothing).
#pragma once

#include "values/transvalueimpl.h"

#include <cstddef>
#include <memory>
#include <vector>

#include <unicode/umachine.h>
#include <xalanc/Include/PlatformDefinitions.hpp>
#include <xalanc/XPath/XObject.hpp>
#include <xercesc/util/XercesDefs.hpp>

XERCES_CPP_NAMESPACE_BEGIN
class DOMDocument;
class DOMElement;
class DOMNode;
XERCES_CPP_NAMESPACE_END

namespace XALAN_CPP_NAMESPACE {
class PrefixResolver;
class XalanDocument;
class XalanNode;
class XercesParserLiaison;
class XPathEvaluator;
}  // namespace XALAN_CPP_NAMESPACE

class TransPathIndex;
class TransSourceTree;
class ZORB_DataSource;

class TRANS_EXPORT TransDOMImpl : public TransValueImpl {
public:
  using DOMDocument = XERCES_CPP_NAMESPACE::DOMDocument;

  // Where the path queries run. automatic: simple location paths through the path index, the
  // rest by Xalan on the source-tree mirror (everything on the wrapper when the mirror cannot
  // reproduce the document). sourceTree: everything by Xalan on the mirror. wrapper: on dom_ with a
  // resolver made per query, the literal road. For the tests that compare the
  // three roads and the benchmark; the answers are the same.
  enum class QueryPath { automatic, sourceTree, wrapper };

  explicit TransDOMImpl(DOMDocument const* source);
  explicit TransDOMImpl(ZORB_DataSource const& ds);
  TransDOMImpl(TransDOMImpl const& other);
  ~TransDOMImpl() override;
  TransDOMImpl& operator=(TransDOMImpl other);

  // Takes `document` as it is (not copied) and owns it, as the data-source constructor does with
  // what addDictionary returns. Null is allowed: the value's queries and serialisations then
  // report failure. For the tests, which cannot make
  // addDictionary fail.
  static TransDOMImpl* adopt(DOMDocument* document);

  TransValueImpl* clone() const override;
  TransString* asString(TransString const& context, TransString const& path, TransStatus& status) const override;
  TransStringList* asStringList(TransString const& context, TransString const& path,
                                TransStatus& status) const override;
  TransString* asMBCSXML(TransStatus& status) const override;
  TransString* asUTF16XML(TransStatus& status) const override;
  TransString* asString(TransStatus& status) const override;
  double asDouble(TransString const& context, TransString const& path, TransStatus& status) const override;
  double asDouble(TransStatus& status) const override;
  XALAN_CPP_NAMESPACE::XalanDocument* asXalanDocument(TransStatus& status) const override;

  void queryPath(QueryPath path);
  QueryPath queryPath() const;
  // Whether the queries so far ran on the source-tree mirror (for the tests that must know the
  // fast path really answered).
  bool queriedOnMirror() const;

private:
  using XObjectPtr = XALAN_CPP_NAMESPACE::XObjectPtr;
  struct AdoptTag {};

  TransDOMImpl(DOMDocument* document, AdoptTag);
  void init();
  void copyDocument(DOMDocument const* source);
  XERCES_CPP_NAMESPACE::DOMNode* importSubtree(XERCES_CPP_NAMESPACE::DOMElement const* root);
  // True (with the placeholder flags) for a document nested deeper than TransDocumentDepth::limit.
  bool refusedAsTooDeep(TransStatus& status) const;
  void swap(TransDOMImpl& other);

  // What the evaluation found: Xalan's result object, or the node set that the path
  // index selected (in document order); neither when nothing was evaluated.
  struct Result {
    XObjectPtr object;
    bool indexed = false;
    std::vector<XALAN_CPP_NAMESPACE::XalanNode*> nodes;

    bool null() const { return !indexed && object.null(); }
    XALAN_CPP_NAMESPACE::XObject::eObjectType type() const;
    // Node sets only.
    std::size_t size() const;
    XALAN_CPP_NAMESPACE::XalanDOMString const& nodeValue(std::size_t index) const;
  };

  // The evaluation that all accessors share.
  Result evaluateXPath(UChar const* context, UChar const* path, TransStatus& status) const;
  Result evaluateOn(XALAN_CPP_NAMESPACE::XalanDocument* document, XALAN_CPP_NAMESPACE::PrefixResolver const& resolver,
                    TransPathIndex* index, UChar const* context, UChar const* path, TransStatus& status) const;
  XALAN_CPP_NAMESPACE::XalanNode* selectContext(XALAN_CPP_NAMESPACE::XalanDocument* document,
                                                XALAN_CPP_NAMESPACE::PrefixResolver const& resolver,
                                                TransPathIndex* index, UChar const* context) const;
  Result evaluateOnWrapper(UChar const* context, UChar const* path, TransStatus& status) const;
  bool holdsRootStep(UChar const* expression, XALAN_CPP_NAMESPACE::PrefixResolver const& resolver) const;
  bool pathHoldsRootStep(UChar const* path, XALAN_CPP_NAMESPACE::PrefixResolver const& resolver) const;
  // The accessors' common start: a null result (failure set) when an argument is empty or blank.
  Result query(TransString const& context, TransString const& path, TransStatus& status) const;

  void renewEvaluator() const;
  XALAN_CPP_NAMESPACE::XalanDocument* wrapper() const;
  TransSourceTree const* mirror() const;
  TransString* serialiseUTF16(TransStatus& status) const;
  TransString* serialiseMBCS(TransStatus& status) const;

  DOMDocument* document_;
  XALAN_CPP_NAMESPACE::XercesParserLiaison* liaison_;
  mutable XALAN_CPP_NAMESPACE::XalanDocument* dom_;  // built on first use, owned by liaison_
  // Renewed after an evaluation raised: see renewEvaluator.
  mutable XALAN_CPP_NAMESPACE::XPathEvaluator* evaluator_;

  mutable std::unique_ptr<TransSourceTree> mirror_;    // built on first query
  mutable std::unique_ptr<TransPathIndex> pathIndex_;  // over mirror_, filled as queries need it
  mutable bool mirrorRefused_;                         // the document holds a node it cannot mirror
  QueryPath queryPath_;
};
