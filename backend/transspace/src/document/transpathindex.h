// TransPathIndex: answers the simplest XPath location paths on the source-tree mirror through
// hash indexes, and leaves every other expression to Xalan.
//
// Why: even on Xalan's source tree, `variable[@name='vK']` walks all children of the dictionary
// root and tests every attribute of each (~30 ms per query at 100,000 variables on the reference
// machine, close to the 25 queries/s target). The dictionary is immutable, so the children of one
// parent can be indexed once by the value of one attribute and each such query becomes a lookup.
//
// Accepted form, with no white space outside literals (anything else is not handled):
//   path      := '/'? step ('/' step)* ('/' '@' NCName)?  |  '@' NCName
//   step      := NCName ('[' '@' NCName '=' literal ']')?
//   literal   := "'" [^']* "'" | '"' [^"]* '"'
// with ASCII NCNames. The answer is the node set XPath 1.0 defines for it, in document order,
// computed with Xalan's own node tests (NodeTester::testElementNCName / testAttributeNCName: an
// empty namespace URI and a matching local name; namespace declarations are never attributes).
// Xalan 1.12 derives a local name from the node name in a way a DOM level 1 node with a colon in
// its name makes ambiguous; meeting such a node with a matching name makes the index decline.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

#include <xalanc/Include/PlatformDefinitions.hpp>

namespace XALAN_CPP_NAMESPACE {
class XalanNode;
}

class TransPathIndex {
public:
  using XalanNode = XALAN_CPP_NAMESPACE::XalanNode;

  // `document` is the mirror's document node; the index keeps pointers into its tree.
  explicit TransPathIndex(XalanNode* document);
  ~TransPathIndex();
  TransPathIndex(TransPathIndex const&) = delete;
  TransPathIndex& operator=(TransPathIndex const&) = delete;

  // True when `expression` has the accepted form and its answer is exact: `nodes` then holds the
  // selected nodes in document order. False leaves `nodes` unspecified: Xalan must evaluate.
  bool select(XalanNode* context, char16_t const* expression, std::vector<XalanNode*>& nodes);

private:
  struct Step {
    bool attribute = false;
    std::u16string name;
    std::u16string predicateAttribute;  // empty: no predicate
    std::u16string predicateValue;
  };
  struct Path {
    bool absolute = false;
    std::vector<Step> steps;
  };
  // Children of one parent named `child`, by the value of their attribute `attribute`.
  struct ChildIndex {
    bool usable = true;
    std::unordered_map<std::u16string, std::vector<XalanNode*>> byValue;
  };
  using ChildKey = std::tuple<XalanNode const*, std::u16string, std::u16string>;

  static bool parse(char16_t const* expression, Path& path);
  bool children(XalanNode* parent, Step const& step, std::vector<XalanNode*>& out);
  ChildIndex const& index(XalanNode* parent, std::u16string const& child, std::u16string const& attribute);

  XalanNode* document_;
  std::map<ChildKey, std::unique_ptr<ChildIndex>> indexes_;
};
