#include "core/transconfig.h"

#include "document/transpathindex.h"

#include <xalanc/XalanDOM/XalanDOMString.hpp>
#include <xalanc/XalanDOM/XalanNamedNodeMap.hpp>
#include <xalanc/XalanDOM/XalanNode.hpp>

using XALAN_CPP_NAMESPACE::XalanDOMString;
using XALAN_CPP_NAMESPACE::XalanNamedNodeMap;
using XALAN_CPP_NAMESPACE::XalanNode;

namespace {

enum class Match { no, yes, ambiguous };

std::u16string text(XalanDOMString const& value) { return std::u16string(value.c_str(), value.length()); }

bool nameStart(char16_t c) { return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_'; }

bool nameChar(char16_t c) { return nameStart(c) || (c >= u'0' && c <= u'9') || c == u'-' || c == u'.'; }

// An ASCII NCName at `at`; operator names are left to Xalan's lexer, which decides by context.
bool parseName(char16_t const*& at, std::u16string& name) {
  if (!nameStart(*at)) return false;
  char16_t const* start = at;
  while (nameChar(*at)) ++at;
  name.assign(start, at);
  return name != u"and" && name != u"or" && name != u"div" && name != u"mod";
}

bool parseLiteral(char16_t const*& at, std::u16string& value) {
  char16_t const quote = *at;
  if (quote != u'\'' && quote != u'"') return false;
  char16_t const* start = ++at;
  while (*at != 0 && *at != quote) ++at;
  if (*at != quote) return false;
  value.assign(start, at);
  ++at;
  return true;
}

// Xalan's NodeTester::matchLocalName: an empty namespace URI and the local name. A node name with
// a colon and an empty namespace URI is a DOM level 1 name whose local name Xalan 1.12 derives in
// its own way: ambiguous when the part after the colon is the name tested.
Match matchName(XalanNode const& node, std::u16string const& name) {
  if (!node.getNamespaceURI().empty()) return Match::no;
  std::u16string const nodeName = text(node.getNodeName());
  std::size_t const colon = nodeName.find(u':');
  if (colon == std::u16string::npos) return nodeName == name ? Match::yes : Match::no;
  return nodeName.compare(colon + 1, std::u16string::npos, name) == 0 ? Match::ambiguous : Match::no;
}

bool namespaceDeclaration(XalanNode const& attribute) {
  XalanDOMString const& name = attribute.getNodeName();
  static char16_t const xmlns[] = u"xmlns";
  std::u16string const nodeName = text(name);
  return nodeName == xmlns || nodeName.rfind(u"xmlns:", 0) == 0;
}

Match matchElement(XalanNode const& node, std::u16string const& name) {
  if (node.getNodeType() != XalanNode::ELEMENT_NODE) return Match::no;
  return matchName(node, name);
}

Match matchAttribute(XalanNode const& node, std::u16string const& name) {
  if (namespaceDeclaration(node)) return Match::no;
  return matchName(node, name);
}

// The attributes of `element` named `name`, in the order of the element's attribute map (which is
// document order); false when a name is ambiguous.
bool attributes(XalanNode const& element, std::u16string const& name, std::vector<XalanNode*>& out) {
  if (element.getNodeType() != XalanNode::ELEMENT_NODE) return true;
  XalanNamedNodeMap const* map = element.getAttributes();
  if (map == nullptr) return true;
  for (XALAN_CPP_NAMESPACE::XalanSize_t i = 0; i < map->getLength(); ++i) {
    XalanNode* attribute = map->item(i);
    Match const match = matchAttribute(*attribute, name);
    if (match == Match::ambiguous) return false;
    if (match == Match::yes) out.push_back(attribute);
  }
  return true;
}

}  // namespace

TransPathIndex::TransPathIndex(XalanNode* document) : document_(document) {}

TransPathIndex::~TransPathIndex() = default;

bool TransPathIndex::parse(char16_t const* expression, Path& path) {
  char16_t const* at = expression;
  if (*at == u'/') {
    path.absolute = true;
    ++at;
  }
  for (;;) {
    Step step;
    if (*at == u'@') {
      ++at;
      step.attribute = true;
      if (!parseName(at, step.name)) return false;
      path.steps.push_back(step);
      return *at == 0;  // an attribute step ends the path
    }
    if (!parseName(at, step.name)) return false;
    if (*at == u'[') {
      ++at;
      if (*at++ != u'@') return false;
      if (!parseName(at, step.predicateAttribute)) return false;
      if (*at++ != u'=') return false;
      if (!parseLiteral(at, step.predicateValue)) return false;
      if (*at++ != u']') return false;
    }
    path.steps.push_back(step);
    if (*at == 0) return true;
    if (*at++ != u'/') return false;
  }
}

bool TransPathIndex::select(XalanNode* context, char16_t const* expression, std::vector<XalanNode*>& nodes) {
  Path path;
  if (context == nullptr || !parse(expression, path)) return false;
  // Each step goes one level down, so the nodes of a step share a depth: the nodes found under
  // each of them, taken in turn, are in document order.
  std::vector<XalanNode*> current{path.absolute ? document_ : context};
  for (Step const& step : path.steps) {
    std::vector<XalanNode*> next;
    for (XalanNode* node : current) {
      bool const exact = step.attribute ? attributes(*node, step.name, next) : children(node, step, next);
      if (!exact) return false;
    }
    current.swap(next);
  }
  nodes.swap(current);
  return true;
}

bool TransPathIndex::children(XalanNode* parent, Step const& step, std::vector<XalanNode*>& out) {
  if (step.predicateAttribute.empty()) {
    for (XalanNode* child = parent->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
      Match const match = matchElement(*child, step.name);
      if (match == Match::ambiguous) return false;
      if (match == Match::yes) out.push_back(child);
    }
    return true;
  }
  ChildIndex const& found = index(parent, step.name, step.predicateAttribute);
  if (!found.usable) return false;
  auto const hit = found.byValue.find(step.predicateValue);
  if (hit != found.byValue.end()) out.insert(out.end(), hit->second.begin(), hit->second.end());
  return true;
}

// Built on first use: one pass over the parent's children (a predicate is true for a child when
// any of its attributes of that name has the value, which is what `=` on a node set means).
TransPathIndex::ChildIndex const& TransPathIndex::index(XalanNode* parent, std::u16string const& child,
                                                        std::u16string const& attribute) {
  std::unique_ptr<ChildIndex>& slot = indexes_[ChildKey(parent, child, attribute)];
  if (slot) return *slot;
  slot.reset(new ChildIndex());
  std::vector<XalanNode*> found;
  for (XalanNode* node = parent->getFirstChild(); node != nullptr; node = node->getNextSibling()) {
    Match const match = matchElement(*node, child);
    found.clear();
    if (match == Match::ambiguous || (match == Match::yes && !attributes(*node, attribute, found))) {
      slot->usable = false;
      slot->byValue.clear();
      break;
    }
    for (XalanNode* value : found) {
      std::vector<XalanNode*>& nodes = slot->byValue[text(value->getNodeValue())];
      if (nodes.empty() || nodes.back() != node) nodes.push_back(node);
    }
  }
  return *slot;
}
