#include "core/transconfig.h"

#include "document/transxpathcheck.h"

#include "xmlinternals/transxmlinternals.h"

#include <xalanc/Include/XalanMemoryManagement.hpp>
#include <xalanc/PlatformSupport/PrefixResolver.hpp>
#include <xalanc/XPath/XPath.hpp>
#include <xalanc/XalanDOM/XalanDOMString.hpp>

using XALAN_CPP_NAMESPACE::XalanDOMString;

namespace {

// Binds every prefix, so that only the syntax decides.
class AnyPrefix : public XALAN_CPP_NAMESPACE::PrefixResolver {
public:
  XalanDOMString const* getNamespaceForPrefix(XalanDOMString const&) const override { return &namespace_; }
  XalanDOMString const& getURI() const override { return base_; }

private:
  XalanDOMString namespace_{"urn:transspace:any-prefix"};
  XalanDOMString base_;
};

}  // namespace

bool TransXPathCheck::wellFormed(UChar const* expression, XalanDOMString& problem) {
  XALAN_CPP_NAMESPACE::XPath xpath(XALAN_CPP_NAMESPACE::XalanMemMgrs::getDefaultXercesMemMgr());
  AnyPrefix const resolver;
  return TransXMLInternals::compileXPath(xpath, XalanDOMString(expression), resolver, problem);
}
