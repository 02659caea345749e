// A builder declared beside the XML platform's start and stop, as a host's main might do: it is
// destroyed after the platform has gone, so it must hold nothing that the platform's memory
// manager would have to free. No test environment here: the test starts and stops the platform.
#include <gtest/gtest.h>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "dictionary/transdictionaryimpl.h"
#include <transspace/zorb/datasourcebuilder.h>

namespace {

namespace xc = XERCES_CPP_NAMESPACE;

TEST(DictionaryLifetimeTest, ABuilderMayOutliveThePlatform) {
  TransDictionaryImpl builder;
  xc::XMLPlatformUtils::Initialize();
  {
    zorb::DataSourceBuilder b;
    b.addVariable("age").label("Age").valueLabel(1, "one").attribute("a", {"x"});
    b.attribute("file", {"y"});
    ZORB_DataSource ds = b.build();
    xc::DOMDocument* document = builder.addDictionary(ds);
    ASSERT_NE(document, nullptr);
    EXPECT_NE(document->getDocumentElement()->getFirstElementChild(), nullptr);
    document->release();
  }
  xc::XMLPlatformUtils::Terminate();
  // The builder goes out of scope here, after the platform.
}

}  // namespace
