// Tells a malformed XPath expression from one that merely found nothing. The library reports an
// exception while evaluating the path as a plain failure, so when a query fails the module asks
// the library's syntax check (TransValue::isXPath), only to find the evaluator's message for a
// malformed one.
#pragma once

#include <optional>
#include <string>

#include <xalanc/PlatformSupport/XSLException.hpp>

#include <transspace/transstring.h>

namespace pytrans {

// The evaluator's message (UTF-8) when `expression` is not valid XPath; nothing when it is.
// Namespace prefixes count as bound: whether they resolve is the document's business. The XML
// platform must be up.
std::optional<std::string> xpathSyntaxError(TransString const& expression);

// The message of an exception of Xalan's, in UTF-8.
std::string xalanMessage(XALAN_CPP_NAMESPACE::XSLException const& exception);

}  // namespace pytrans
