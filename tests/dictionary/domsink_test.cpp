// The elements the document builders make are ordinary DOM elements: the document equals the one
// Xerces' parser makes from its text, node for node, and every attribute can be found by its name,
// knows its element and can be changed and removed like any other.
#include "dictionarytestsupport.h"
#include "richdatasources.h"

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <functional>
#include <string>

namespace {

using namespace dicttest;

// Xerces' parser without namespaces, as the builders make their elements (DOM level 1 names).
class ParsedText {
public:
  explicit ParsedText(std::string const& text) {
    parser_.setDoNamespaces(false);
    parser_.setValidationScheme(xc::XercesDOMParser::Val_Never);
    xc::MemBufInputSource source(reinterpret_cast<XMLByte const*>(text.data()), text.size(), "dictionary");
    parser_.parse(source);
  }
  xc::DOMDocument* document() { return parser_.getDocument(); }

private:
  xc::XercesDOMParser parser_;
};

// Checks one built element against the parsed one, attribute by attribute, then their children.
void expectSameElements(xc::DOMElement* built, xc::DOMElement* parsed) {
  ASSERT_EQ(utf8(built->getTagName()), utf8(parsed->getTagName()));
  xc::DOMNamedNodeMap* builtAttributes = built->getAttributes();
  xc::DOMNamedNodeMap* parsedAttributes = parsed->getAttributes();
  ASSERT_EQ(builtAttributes->getLength(), parsedAttributes->getLength()) << utf8(built->getTagName());
  for (XMLSize_t i = 0; i < builtAttributes->getLength(); ++i) {
    auto* attribute = static_cast<xc::DOMAttr*>(builtAttributes->item(i));
    XMLCh const* name = attribute->getName();
    EXPECT_EQ(built->getAttributeNode(name), attribute) << utf8(name);  // found by name
    EXPECT_EQ(attribute->getOwnerElement(), built);
    EXPECT_TRUE(attribute->getSpecified());
    EXPECT_EQ(attribute->getParentNode(), nullptr);
    EXPECT_EQ(utf8(attribute->getValue()), utf8(parsed->getAttribute(name))) << utf8(name);
    xc::DOMNode* text = attribute->getFirstChild();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->getNodeType(), xc::DOMNode::TEXT_NODE);
    EXPECT_EQ(text->getNextSibling(), nullptr);
    EXPECT_EQ(text->getParentNode(), attribute);
  }
  std::vector<xc::DOMElement*> builtChildren = childElements(built);
  std::vector<xc::DOMElement*> parsedChildren = childElements(parsed);
  ASSERT_EQ(builtChildren.size(), parsedChildren.size()) << utf8(built->getTagName());
  for (std::size_t i = 0; i < builtChildren.size(); ++i) {
    EXPECT_EQ(builtChildren[i]->getParentNode(), built);
    EXPECT_EQ(builtChildren[i]->getOwnerDocument(), built->getOwnerDocument());
    expectSameElements(builtChildren[i], parsedChildren[i]);
  }
}

class DOMSinkTest : public ::testing::TestWithParam<std::function<ZORB_DataSource()>> {};

TEST_P(DOMSinkTest, TheBuiltDocumentIsTheOneItsTextParsesTo) {
  DocumentPtr built = buildDictionary(GetParam()());
  ParsedText parsed(serialize(built.get()));
  ASSERT_NE(parsed.document()->getDocumentElement(), nullptr);
  EXPECT_TRUE(built->getDocumentElement()->isEqualNode(parsed.document()->getDocumentElement()));
  expectSameElements(built->getDocumentElement(), parsed.document()->getDocumentElement());
}

INSTANTIATE_TEST_SUITE_P(RichDataSources, DOMSinkTest,
                         ::testing::Values(surveyDataSource, formatsDataSource, textDataSource));

TEST(DOMSinkChangesTest, BuiltAttributesAreChangedAddedAndRemovedLikeAnyOther) {
  DocumentPtr document = buildDictionary(surveyDataSource());
  xc::DOMElement* variable = child(document->getDocumentElement(), "variable");
  ASSERT_NE(variable, nullptr);
  std::vector<std::string> const before = attrNames(variable);
  ASSERT_GE(before.size(), 3u);

  variable->setAttribute(utf16("label").getTerminatedBuffer(), utf16("changed").getTerminatedBuffer());
  EXPECT_EQ(attr(variable, "label"), "changed");
  EXPECT_EQ(attrNames(variable), before);

  variable->setAttribute(utf16("aaa").getTerminatedBuffer(), utf16("first").getTerminatedBuffer());
  variable->setAttribute(utf16("zzz").getTerminatedBuffer(), utf16("last").getTerminatedBuffer());
  std::vector<std::string> names = attrNames(variable);
  EXPECT_EQ(names.front(), "aaa");
  EXPECT_EQ(names.back(), "zzz");
  EXPECT_EQ(names.size(), before.size() + 2);

  variable->removeAttribute(utf16("name").getTerminatedBuffer());
  EXPECT_FALSE(hasAttr(variable, "name"));
  EXPECT_EQ(attrNames(variable).size(), before.size() + 1);
  std::string const text = serialize(variable);
  EXPECT_EQ(text.find(" name=\""), std::string::npos) << text;
  EXPECT_NE(text.find(" aaa=\"first\" "), std::string::npos) << text;
}

}  // namespace
