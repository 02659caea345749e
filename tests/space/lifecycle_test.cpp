// A space brings the XML platform (Xerces-C, Xalan-C XPath and
// source tree) up for as long as it lives; several spaces may live one after another or at once.
//
// Xalan's XPathEvaluator::initialize does not count nested calls: without the library's own count
// a second space's destructor would terminate XPath under the first (and crash on the second
// terminate). These tests therefore evaluate XPath directly through Xerces-C and Xalan-C after
// each step, which needs every platform service up. (Evaluating the library's XML document values
// is tested at the end, through TransValue's document constructor and its queries.)
#include "spacetestsupport.h"
#include <transspace/transspace.h>

#include <cstring>
#include <memory>

#include <xalanc/DOMSupport/XalanDocumentPrefixResolver.hpp>
#include <xalanc/XPath/XObject.hpp>
#include <xalanc/XPath/XPathEvaluator.hpp>
#include <xalanc/XercesParserLiaison/XercesDOMSupport.hpp>
#include <xalanc/XercesParserLiaison/XercesParserLiaison.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <gtest/gtest.h>

using namespace spacetest;

namespace {

// Parses `xml` with Xerces, wraps it for Xalan and returns the number that `xpath` evaluates to.
double evaluateNumber(char const* xml, char const* xpath) {
  using namespace XERCES_CPP_NAMESPACE;
  using namespace XALAN_CPP_NAMESPACE;
  XercesDOMParser parser;
  MemBufInputSource source(reinterpret_cast<XMLByte const*>(xml), std::strlen(xml), "lifecycle-test");
  parser.parse(source);
  DOMDocument const* document = parser.getDocument();

  XercesParserLiaison liaison;
  XercesDOMSupport support(liaison);
  XalanDocument* wrapped = liaison.createDocument(document, true, true, true);
  XalanDocumentPrefixResolver resolver(wrapped);
  XPathEvaluator evaluator;
  XalanDOMString const expression(xpath);
  XObjectPtr const result = evaluator.evaluate(support, wrapped, expression.c_str(), resolver);
  return result->num();
}

// True when the platform services a space keeps up all work: Xerces parses, Xalan evaluates.
bool platformWorks() { return evaluateNumber("<a><b/><b/><b/></a>", "count(/a/b)") == 3.0; }

// Xerces-C clears its memory manager on its final Terminate: a view of whether it is still up.
bool xercesUp() { return XERCES_CPP_NAMESPACE::XMLPlatformUtils::fgMemoryManager != nullptr; }

void expectWorkingSpace(TransSpace& space, char const* name) {
  TransStatus status;
  EXPECT_TRUE(space.add(TransString(name), TransValue(TransString(name)), status));
  EXPECT_EQ(valueText(space.find(TransString(name), status)), name);
  EXPECT_EQ(flags(status), kNone);
}

TEST(TransSpaceLifecycleTest, OneSpaceBringsThePlatformUpAndDown) {
  ASSERT_FALSE(xercesUp());
  {
    TransSpace space;
    EXPECT_TRUE(xercesUp());
    EXPECT_TRUE(platformWorks());
    expectWorkingSpace(space, "one");
  }
  EXPECT_FALSE(xercesUp());
}

// A space constructed after an earlier one was destroyed brings the platform up again.
TEST(TransSpaceLifecycleTest, SuccessiveSpaces) {
  for (int round = 0; round < 3; ++round) {
    TransSpace space;
    EXPECT_TRUE(platformWorks()) << "round " << round;
    expectWorkingSpace(space, "again");
  }
  EXPECT_FALSE(xercesUp());
}

// Two spaces alive at once, the first destroyed first: the second keeps the platform up.
TEST(TransSpaceLifecycleTest, OverlappingSpacesDestroyedInCreationOrder) {
  auto first = std::make_unique<TransSpace>();
  auto second = std::make_unique<TransSpace>();
  expectWorkingSpace(*first, "first");
  expectWorkingSpace(*second, "second");
  first.reset();
  EXPECT_TRUE(xercesUp());
  EXPECT_TRUE(platformWorks());
  expectWorkingSpace(*second, "still");
  second.reset();
  EXPECT_FALSE(xercesUp());
}

// Two spaces alive at once, the last destroyed first (nested).
TEST(TransSpaceLifecycleTest, OverlappingSpacesDestroyedInReverseOrder) {
  auto first = std::make_unique<TransSpace>();
  {
    TransSpace second;
    EXPECT_TRUE(platformWorks());
  }
  EXPECT_TRUE(xercesUp());
  EXPECT_TRUE(platformWorks());
  expectWorkingSpace(*first, "first");
  first.reset();
  EXPECT_FALSE(xercesUp());
}

// Overlap, then a space after all are gone: the count returns to zero and starts again.
TEST(TransSpaceLifecycleTest, OverlapThenSuccession) {
  {
    auto a = std::make_unique<TransSpace>();
    auto b = std::make_unique<TransSpace>();
    auto c = std::make_unique<TransSpace>();
    b.reset();
    EXPECT_TRUE(platformWorks());
    a.reset();
    EXPECT_TRUE(platformWorks());
  }
  EXPECT_FALSE(xercesUp());
  TransSpace later;
  EXPECT_TRUE(platformWorks());
  expectWorkingSpace(later, "later");
}

// Spaces share nothing but the platform: names of one are not seen by another.
TEST(TransSpaceLifecycleTest, SpacesAreIndependent) {
  TransSpace one;
  TransSpace two;
  one.add(TransString("x"), TransValue(1.0));
  TransStatus status;
  EXPECT_FALSE(two.exists(TransString("x"), status));
  EXPECT_TRUE(two.add(TransString("x"), TransValue(2.0), status));
  EXPECT_EQ(one.find(TransString("x")).asDouble(), 1.0);
}

// The destructor releases all values and images (the sanitizer build checks for leaks).
TEST(TransSpaceLifecycleTest, DestructorReleasesEverything) {
  TransSpace space;
  TransStatus status;
  for (int i = 0; i < 50; ++i) {
    std::string const name = "n" + std::to_string(i);
    space.add(TransString(name.c_str()), TransValue(TransString(name.c_str())), status);
    space.addImage(TransString(name.c_str()), image(name.c_str(), "bytes"), status);
  }
}

// ---- XML document values held in successive and overlapping spaces ----

char const kXML[] = "<a><b>hello</b><b>world</b></a>";

// A document value made from a parsed document; the parser (and its document) is gone on return,
// so the value holds its own deep copy.
TransValue documentValue(char const* xml) {
  using namespace XERCES_CPP_NAMESPACE;
  XercesDOMParser parser;
  MemBufInputSource source(reinterpret_cast<XMLByte const*>(xml), std::strlen(xml), "lifecycle-test");
  parser.parse(source);
  return TransValue(static_cast<DOMDocument const*>(parser.getDocument()));
}

// Stores a document value in `space` and checks that it is held, queried and serialised.
void expectDocumentValueWorks(TransSpace& space, char const* name) {
  ASSERT_TRUE(space.add(TransString(name), documentValue(kXML)));
  TransValue const& found = space.find(TransString(name));
  TransStatus status;
  OwnedString first(found.asString(TransString("/a"), TransString("string(b)"), status));
  EXPECT_EQ(text(*first), "hello");
  EXPECT_EQ(flags(status), kNone);
  EXPECT_EQ(found.asDouble(TransString("/a"), TransString("count(b)"), status), 2.0);
  EXPECT_EQ(flags(status), kNone);
  OwnedList texts(found.asStringList(TransString("/a"), TransString("b/text()"), status));
  EXPECT_EQ(names(*texts), (std::vector<std::string>{"hello", "world"}));
  OwnedString xml(found.asMBCSXML());  // asUTF16XML packs the UTF-8 bytes into units
  EXPECT_NE(text(*xml).find("<b>hello</b><b>world</b>"), std::string::npos) << text(*xml);
}

// Edge case: a space constructed after an earlier one was destroyed brings the XML platform up
// again and holds and evaluates XML document values as the first did.
TEST(TransSpaceLifecycleTest, SuccessiveSpacesHoldAndEvaluateDocumentValues) {
  for (int round = 0; round < 3; ++round) {
    TransSpace space;
    expectDocumentValueWorks(space, "doc");
    // Left in the space on purpose: the destructor drops it while the platform is still up.
  }
  EXPECT_FALSE(xercesUp());
}

TEST(TransSpaceLifecycleTest, OverlappingSpacesHoldAndEvaluateDocumentValues) {
  auto first = std::make_unique<TransSpace>();
  auto second = std::make_unique<TransSpace>();
  expectDocumentValueWorks(*first, "doc1");
  expectDocumentValueWorks(*second, "doc2");
  first.reset();
  // The second space's document value still evaluates after the first space is gone.
  TransStatus status;
  EXPECT_EQ(second->find(TransString("doc2")).asDouble(TransString("/a"), TransString("count(b)"), status), 2.0);
  expectDocumentValueWorks(*second, "doc3");
  auto third = std::make_unique<TransSpace>();
  second.reset();
  expectDocumentValueWorks(*third, "doc4");
}

}  // namespace
