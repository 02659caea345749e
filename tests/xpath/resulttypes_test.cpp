// Result types that the answer table rejects. XPath 1.0 itself yields only booleans, numbers,
// strings and node sets, and Xalan 1.12 has no null result object; the one way a query of the
// library can meet another type is an extension function that the host process installed for all
// of Xalan (XPathEnvSupportDefault::installExternalFunctionGlobal). Such a function yielding an
// unknown object makes every accessor fail, on every road. (A result tree fragment needs an XSLT
// transformation, which no query of the library runs.)
#include "xpathtest.h"

#include "core/transutil.h"

#include <xalanc/XPath/Function.hpp>
#include <xalanc/XPath/XObjectFactory.hpp>
#include <xalanc/XPath/XPathEnvSupportDefault.hpp>
#include <xalanc/XPath/XPathExecutionContext.hpp>
#include <xercesc/dom/DOM.hpp>

using namespace domtest;
using namespace xpathtest;

namespace {

// unknown(): an object of Xalan's unknown type.
class UnknownResult : public xalanc::Function {
public:
  using Function::execute;
  xalanc::XObjectPtr execute(xalanc::XPathExecutionContext& context, xalanc::XalanNode*,
                             xalanc::Function::XObjectArgVectorType const&, LocatorType const*) const override {
    return context.getXObjectFactory().createUnknown(xalanc::XalanDOMString("unknown", context.getMemoryManager()));
  }
  UnknownResult* clone(xalanc::MemoryManager& manager) const override {
    return xalanc::XalanCopyConstruct(manager, *this);
  }

private:
  xalanc::XalanDOMString& getError(xalanc::XalanDOMString& buffer) const override { return buffer; }
};

char16_t const kNamespace[] = u"urn:test:functions";

class ResultTypesTest : public RoadTest {
protected:
  void SetUp() override {
    RoadTest::SetUp();
    xalanc::XPathEnvSupportDefault::installExternalFunctionGlobal(xalanc::XalanDOMString(kNamespace),
                                                                  xalanc::XalanDOMString("unknown"), UnknownResult());
  }
  void TearDown() override {
    xalanc::XPathEnvSupportDefault::uninstallExternalFunctionGlobal(xalanc::XalanDOMString(kNamespace),
                                                                    xalanc::XalanDOMString("unknown"));
    RoadTest::TearDown();
  }

  // A root element that binds the prefix t to the functions' namespace (queries resolve prefixes
  // through the document's own declarations).
  std::unique_ptr<TransDOMImpl> document() {
    Document source(xercesc::DOMImplementation::getImplementation()->createDocument());
    xercesc::DOMElement* root = source->createElement(u"r");
    source->appendChild(root);
    root->setAttributeNS(u"http://www.w3.org/2000/xmlns/", u"xmlns:t", kNamespace);
    root->setAttribute(u"a", u"1");
    return onRoad(new TransDOMImpl(source.get()));
  }
};

TEST_P(ResultTypesTest, UnknownResultFailsEveryAccessor) {
  auto value = document();
  expectNothingSelected(*value, "/r", "t:unknown()");
  TransStatus status;
  // The function is really there: inside an expression its result converts like any other
  // (Xalan's unknown object reads as a message text).
  EXPECT_EQ(askString(*value, "/r", "string-length(string(t:unknown())) > 0", status), "true");
  expectFlags(status, {false, false}, "converted");
  EXPECT_EQ(askString(*value, "/r", "@a", status), "1");
}

XPATHTEST_ON_EVERY_ROAD(ResultTypesTest);

}  // namespace
