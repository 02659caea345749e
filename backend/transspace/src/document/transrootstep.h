// TransRootStep: whether a compiled XPath expression holds a location step from the root: `/`,
// `//` and every path that starts with them, wherever they stand (an argument, a predicate, one
// side of a union or comparison).
//
// Why: on a document without a document element, Xalan 1.12 dereferences null (SIGSEGV) when it
// evaluates such a step, on the Xerces wrapper and on a source tree alike (XPath::findRoot, which
// only a root step reaches). Every other expression, `id()` and `lang()` included, evaluates
// safely there. A document value without a root element fails the expressions that hold a root
// step and answers all others.
//
// The answer is read from the expression as Xalan compiled it (its op-code map), never from the
// text. An op code this walk does not know counts as a root step, so nothing unsafe gets through.
#pragma once

#include <xalanc/Include/PlatformDefinitions.hpp>

namespace XALAN_CPP_NAMESPACE {
class XPathExpression;
}

class TransRootStep {
public:
  static bool occursIn(XALAN_CPP_NAMESPACE::XPathExpression const& expression);
};
