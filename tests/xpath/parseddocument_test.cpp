// Queries on documents that Xerces' parser made from XML text (not built node by node): CDATA
// sections, entity references and attributes that the document's DTD declares as IDs, as the
// parser produces them, on every road. A document value holds a copy of the root element only, so
// what the DTD gave (the entity's text inside a reference, ID-ness) stays with the source; a
// document taken as it is keeps them.
#include "xpathtest.h"

#include "core/transutil.h"

using namespace domtest;
using namespace xpathtest;

namespace {

class ParsedDocumentTest : public RoadTest {
protected:
  std::unique_ptr<TransDOMImpl> copied(char const* xml) {
    Document source = parsedDocument(xml);
    return onRoad(new TransDOMImpl(source.get()));
  }
  std::unique_ptr<TransDOMImpl> adopted(char const* xml) {
    return onRoad(TransDOMImpl::adopt(parsedDocument(xml).release()));
  }
};

using Texts = std::vector<std::string>;

// What holds for the copy and for the document taken as it is alike.
void expectCommonAnswers(TransDOMImpl const& value) {
  TransStatus status;
  EXPECT_EQ(askString(value, "/catalogue", "@count", status), "2");
  expectFlags(status, {false, false}, "root attribute");
  // A CDATA section is a text node of its own between the two around it; the string-value joins them.
  EXPECT_EQ(askList(value, "/catalogue/item[1]", "text()", status), (Texts{"apple ", " end"}));
  EXPECT_EQ(askList(value, "/catalogue/item[1]", "node()", status), (Texts{"apple ", "<raw> & text", " end"}));
  EXPECT_EQ(askString(value, "/catalogue/item[1]", "string(.)", status), "apple <raw> & text end");
  expectFlags(status, {false, false}, "string-value across a CDATA section");
  // An entity reference in an attribute is replaced by the parser: the value holds the text.
  EXPECT_EQ(askString(value, "/catalogue/item[@id='b']", "@label", status), "by Acme & Sons");
  expectFlags(status, {false, false}, "attribute with an entity reference");
  // In content it stays a node whose own value is empty, and the string-value does not enter it.
  EXPECT_EQ(askList(value, "/catalogue/item[2]", "node()", status), (Texts{"made by ", ""}));
  EXPECT_EQ(askString(value, "/catalogue/item[2]", "string(.)", status), "made by ");
  EXPECT_EQ(askNumber(value, "/catalogue/item[@id='a']", "@price", status), 1.5);
  expectFlags(status, {false, false}, "number from an attribute");
  EXPECT_EQ(askString(value, "/catalogue", "comment()", status), " a comment ");
  EXPECT_EQ(askList(value, "/catalogue/item[1]", "@* ", status), (Texts{"a", "Apple", "1.5"}));
  EXPECT_EQ(askNumber(value, "/", "count(catalogue)", status), 1.0);
}

TEST_P(ParsedDocumentTest, CopyOfAParsedDocument) {
  auto value = copied(parsedCatalogueXML);
  expectCommonAnswers(*value);
  // The copy has no DTD: its id attributes are plain attributes, so id() finds nothing.
  TransStatus status;
  EXPECT_TRUE(askList(*value, "/catalogue", "id('b')/@label", status).empty());
  expectFlags(status, {false, true}, "id() on the copy");
  EXPECT_EQ(askNumber(*value, "/catalogue", "count(id('a b'))", status), 0.0);
  EXPECT_EQ(askNumber(*value, "/", "count(node())", status), 1.0);
}

TEST_P(ParsedDocumentTest, ParsedDocumentTakenAsItIs) {
  auto value = adopted(parsedCatalogueXML);
  expectCommonAnswers(*value);
  TransStatus status;
  EXPECT_EQ(askString(*value, "/catalogue", "id('b')/@label", status), "by Acme & Sons");
  expectFlags(status, {false, false}, "id()");
  EXPECT_EQ(askNumber(*value, "/catalogue", "count(id('a b'))", status), 2.0);
  // Xalan's wrapper lists the DOCTYPE among the document node's children.
  EXPECT_EQ(askNumber(*value, "/", "count(node())", status), 2.0);
}

// A parsed document with none of those nodes (the common case: a dictionary read back from its
// XML text) is answered by the mirror on the fast roads.
TEST_P(ParsedDocumentTest, PlainParsedDocumentOnTheMirror) {
  char const* const xml =
      "<dictionary rowCount=\"3\">\n"
      "  <variable name=\"v0\" label=\"First &amp; only\"><variableFormat type=\"F\"/></variable>\n"
      "  <variable name=\"v1\" label=\"&#x00e9;t&#xe9;\"/>\n"
      "</dictionary>";
  auto value = copied(xml);
  TransStatus status;
  EXPECT_EQ(askString(*value, "/dictionary/variable[@name='v0']", "@label", status), "First & only");
  expectFlags(status, {false, false}, "character reference");
  EXPECT_EQ(askString(*value, "/dictionary", "variable[@name='v1']/@label", status), "\u00e9t\u00e9");
  EXPECT_EQ(askNumber(*value, "/dictionary", "@rowCount", status), 3.0);
  EXPECT_EQ(askList(*value, "/dictionary", "variable/@name", status), (Texts{"v0", "v1"}));
  EXPECT_EQ(askList(*value, "/dictionary", "text()", status), (Texts{"\n  ", "\n  ", "\n"}));
  expectRoad(*value);
}

XPATHTEST_ON_EVERY_ROAD(ParsedDocumentTest);

}  // namespace
