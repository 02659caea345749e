// TransXPathCheck: whether a text is a well-formed XPath 1.0 expression, told without a document
// and without a word on standard error; the check behind TransValue::isXPath.
#pragma once

#include <unicode/umachine.h>
#include <xalanc/Include/PlatformDefinitions.hpp>

namespace XALAN_CPP_NAMESPACE {
class XalanDOMString;
}

class TransXPathCheck {
public:
  // False for a malformed expression, with the evaluator's description in `problem`. Namespace
  // prefixes count as bound. The XML platform must be up.
  static bool wellFormed(UChar const* expression, XALAN_CPP_NAMESPACE::XalanDOMString& problem);
};
