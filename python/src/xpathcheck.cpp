#include "xpathcheck.h"

#include <xalanc/PlatformSupport/PrefixResolver.hpp>
#include <xalanc/PlatformSupport/XSLException.hpp>
#include <xalanc/XPath/XPath.hpp>
#include <xalanc/XPath/XPathConstructionContextDefault.hpp>
#include <xalanc/XPath/XPathProcessorImpl.hpp>
#include <xalanc/XalanDOM/XalanDOMString.hpp>
#include <xercesc/util/TransService.hpp>

namespace pytrans {

namespace {

using namespace XALAN_CPP_NAMESPACE;

class AnyPrefix : public PrefixResolver {
public:
  XalanDOMString const* getNamespaceForPrefix(XalanDOMString const&) const override { return &namespace_; }
  XalanDOMString const& getURI() const override { return base_; }

private:
  XalanDOMString namespace_{"urn:transspace:any-prefix"};
  XalanDOMString base_;
};

// Xalan's default context prints each problem to standard error before the parser throws; here
// the message goes into the exception only.
class QuietContext : public XPathConstructionContextDefault {
public:
  void problem(eSource, eClassification, XalanDOMString const&, Locator const*, XalanNode const*) override {}
  void problem(eSource, eClassification, XalanDOMString const&, XalanNode const*) override {}
};

std::string utf8(XalanDOMString const& text) {
  XERCES_CPP_NAMESPACE::TranscodeToStr converted(text.c_str(), "UTF-8");
  return std::string(reinterpret_cast<char const*>(converted.str()), converted.length());
}

}  // namespace

std::string xalanMessage(XSLException const& exception) { return utf8(exception.getMessage()); }

std::optional<std::string> xpathSyntaxError(TransString const& expression) {
  TransStatus status;
  auto const* units = expression.asUTF16(status);
  QuietContext context;
  XPath xpath(context.getMemoryManager());
  XPathProcessorImpl processor;
  AnyPrefix resolver;
  try {
    processor.initXPath(xpath, context, XalanDOMString(reinterpret_cast<XalanDOMChar const*>(units)), resolver);
  } catch (XSLException const& e) {
    return utf8(e.getMessage());
  }
  return std::nullopt;
}

}  // namespace pytrans
