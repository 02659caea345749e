// XML document values — construction, copies, serialisation and the whole-value views,
// on hand-built documents and on dictionary documents of the host model.
#include "domtest.h"

#include "document/transdomimpl.h"
#include "core/transutil.h"

#include <transspace/zorb/platform.h>

#include <cstring>
#include <memory>

#include <xalanc/XalanDOM/XalanDocument.hpp>
#include <xalanc/XalanDOM/XalanElement.hpp>

using namespace domtest;

namespace {

using DOMTest = DomTest;

std::string mbcsXML(TransValue const& value) { return take(value.asMBCSXML()); }

// ---- the empty document ----

TEST_F(DOMTest, NullDocumentHoldsAnEmptyDocumentWhoseTextIsTheDeclarationAlone) {
  TransValue value(static_cast<xercesc::DOMDocument const*>(nullptr));
  TransStatus status;
  TransString* text = value.asMBCSXML(status);
  EXPECT_EQ(text->asMBCS(), std::string(xmlDeclaration));
  EXPECT_FALSE(status.failure());
  EXPECT_FALSE(status.warning());
  TransValue::releaseString(text);
}

TEST_F(DOMTest, DocumentWithoutRootHoldsAnEmptyDocument) {
  Document source = emptyDocument();
  TransValue value(source.get());
  TransStatus status;
  TransString* text = value.asUTF16XML(status);
  // The UTF-16 form carries the serializer's UTF-8 bytes two to a unit; the
  // declaration has an odd length, so its last byte is dropped.
  std::string const declaration(xmlDeclaration);
  EXPECT_EQ(unitsAsBytes(*text), declaration.substr(0, declaration.size() / 2 * 2));
  EXPECT_FALSE(status.failure());
  EXPECT_FALSE(status.warning());
  TransValue::releaseString(text);
  EXPECT_EQ(mbcsXML(value), declaration);
}

TEST_F(DOMTest, UTF16TextIsTheUTF8BytesReadAsUnits) {
  Document source = catalogueDocument();
  TransValue value(source.get());
  std::string const bytes = mbcsXML(value);
  TransString* text = value.asUTF16XML();
  EXPECT_EQ(unitsAsBytes(*text), bytes.substr(0, bytes.size() / 2 * 2));
  TransValue::releaseString(text);
}

TEST_F(DOMTest, AsXMLEqualsAsUTF16XML) {
  TransValue value(dictionarySource(3));
  TransString* xml = value.asXML();
  TransString* utf16 = value.asUTF16XML();
  EXPECT_EQ(unitsAsBytes(*xml), unitsAsBytes(*utf16));
  TransValue::releaseString(xml);
  TransValue::releaseString(utf16);
}

// ---- copies ----

TEST_F(DOMTest, CopyOfAHandBuiltDocumentSurvivesItsSource) {
  Document source = catalogueDocument();
  std::unique_ptr<TransValue> original(new TransValue(source.get()));
  std::string const text = mbcsXML(*original);
  source.reset();  // the caller keeps its own document: the value copied it
  TransValue copy(*original);
  original.reset();
  EXPECT_EQ(mbcsXML(copy), text);
  EXPECT_EQ(take(copy.asString(ts("/catalogue"), ts("item[2]/@label"))), "Banana");
}

TEST_F(DOMTest, AssignedDictionaryValueSurvivesItsSource) {
  std::unique_ptr<TransValue> original(new TransValue(dictionarySource(5)));
  std::string const text = mbcsXML(*original);
  TransValue assigned;
  assigned = *original;
  original.reset();
  EXPECT_EQ(mbcsXML(assigned), text);
  EXPECT_EQ(take(assigned.asString(ts("/dictionary"), ts("@rowCount"))), "42");
}

TEST_F(DOMTest, CopiesHaveTheirOwnXalanDocument) {
  TransValue original(dictionarySource(2));
  TransValue copy(original);
  EXPECT_NE(original.asXalanDocument(), nullptr);
  EXPECT_NE(copy.asXalanDocument(), nullptr);
  EXPECT_NE(original.asXalanDocument(), copy.asXalanDocument());
}

TEST_F(DOMTest, CopyDropsNodesOutsideTheRootAndKeepsTheRootWhole) {
  Document source = documentWithOutsideNodes();
  TransValue value(source.get());
  std::string const text = mbcsXML(value);
  EXPECT_EQ(text, std::string(xmlDeclaration) + "<root a=\"1\"><!--inside--><child>text</child></root>");
  TransValue copy(value);
  EXPECT_EQ(mbcsXML(copy), text);
}

TEST_F(DOMTest, SelfAssignmentKeepsTheDocument) {
  TransValue value(dictionarySource(2));
  std::string const text = mbcsXML(value);
  value = value;
  EXPECT_EQ(mbcsXML(value), text);
}

// A document parsed from XML text: the copy keeps the root element's subtree as the parser made it
// (CDATA sections, entity reference nodes, attribute values with their references replaced) and
// drops the DTD, so a reference in content is written back as a reference it no longer declares.
TEST_F(DOMTest, CopyOfAParsedDocumentKeepsItsRootSubtree) {
  Document source = parsedDocument(parsedCatalogueXML);
  ASSERT_NE(source, nullptr);
  std::unique_ptr<TransValue> value(new TransValue(source.get()));
  source.reset();
  std::string const expected =
      std::string(xmlDeclaration) +
      "<catalogue count=\"2\">\n"
      "  <item id=\"a\" label=\"Apple\" price=\"1.5\">apple <![CDATA[<raw> & text]]> end</item>\n"
      "  <item id=\"b\" label=\"by Acme &amp; Sons\" price=\"2\">made by &maker;</item>\n"
      "  <!-- a comment -->\n"
      "</catalogue>";
  EXPECT_EQ(mbcsXML(*value), expected);
  TransValue copy(*value);
  TransValue assigned;
  assigned = *value;
  value.reset();
  EXPECT_EQ(mbcsXML(copy), expected);
  EXPECT_EQ(mbcsXML(assigned), expected);
  EXPECT_EQ(take(copy.asString(ts("/catalogue/item[1]"), ts("string(.)"))), "apple <raw> & text end");
  EXPECT_EQ(take(assigned.asString(ts("/catalogue/item[2]"), ts("@label"))), "by Acme & Sons");
}

// The deepest nesting a document value is tested at. (No depth limit of the library's own exists
// yet; this is deep enough that anything recursive per level would show.)
constexpr int kDeepestNesting = 10000;

Document deepDocument(int levels) {
  Document document(xercesc::DOMImplementation::getImplementation()->createDocument());
  xercesc::DOMNode* parent = document.get();
  for (int level = 0; level < levels; ++level) {
    xercesc::DOMElement* element = document->createElement(u"e");
    parent->appendChild(element);
    parent = element;
  }
  parent->appendChild(document->createTextNode(u"bottom"));
  return document;
}

TEST_F(DOMTest, CopyAndAssignmentOfADeepDocument) {
  Document source = deepDocument(kDeepestNesting);
  std::unique_ptr<TransValue> value(new TransValue(source.get()));
  source.reset();
  std::string const text = mbcsXML(*value);
  TransValue copy(*value);
  TransValue assigned;
  assigned = *value;
  value.reset();
  for (TransValue const* survivor : {&copy, &assigned}) {
    EXPECT_EQ(mbcsXML(*survivor), text);
    EXPECT_EQ(survivor->asDouble(ts("/e"), ts("count(descendant::e)")), kDeepestNesting - 1.0);
    EXPECT_EQ(take(survivor->asString(ts("//e[not(e)]"), ts("text()"))), "bottom");
    EXPECT_EQ(survivor->asDouble(ts("//e[not(e)]"), ts("count(ancestor::e)")), kDeepestNesting - 1.0);
  }
}

// ---- the whole-value views ----

void expectXMLTextWithWarning(TransValue const& value) {
  TransStatus status;
  TransString* text = value.asString(status);
  EXPECT_FALSE(status.failure());
  EXPECT_TRUE(status.warning());
  TransString* xml = value.asUTF16XML();
  EXPECT_EQ(unitsAsBytes(*text), unitsAsBytes(*xml));
  TransValue::releaseString(text);
  TransValue::releaseString(xml);
}

TEST_F(DOMTest, AsStringIsTheXMLTextWithWarning) {
  Document source = catalogueDocument();
  expectXMLTextWithWarning(TransValue(source.get()));
  expectXMLTextWithWarning(TransValue(dictionarySource(3)));
  expectXMLTextWithWarning(TransValue(static_cast<xercesc::DOMDocument const*>(nullptr)));
}

void expectNoNumber(TransValue const& value) {
  TransStatus status;
  EXPECT_EQ(value.asDouble(status), -1.7976931348623157e308);
  EXPECT_TRUE(status.failure());
  EXPECT_TRUE(status.warning());
}

TEST_F(DOMTest, AsDoubleIsTheNoNumberWithFailureAndWarning) {
  Document source = catalogueDocument();
  expectNoNumber(TransValue(source.get()));
  expectNoNumber(TransValue(dictionarySource(1)));
}

void expectSameXalanDocument(TransValue const& value, char16_t const* rootName) {
  TransStatus status;
  status.failure(true);
  status.warning(true);
  xalanc::XalanDocument* first = value.asXalanDocument(status);
  ASSERT_NE(first, nullptr);
  EXPECT_FALSE(status.failure());
  EXPECT_FALSE(status.warning());
  // A query in between (which runs on the mirror) leaves the wrapper alone.
  take(value.asString(ts("/*"), ts("name()")));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(value.asXalanDocument(status), first);
  ASSERT_NE(first->getDocumentElement(), nullptr);
  EXPECT_EQ(first->getDocumentElement()->getNodeName(),
            xalanc::XalanDOMString(reinterpret_cast<XMLCh const*>(rootName)));
}

TEST_F(DOMTest, AsXalanDocumentIsTheSamePointerOnEveryCall) {
  Document source = catalogueDocument();
  expectSameXalanDocument(TransValue(source.get()), u"catalogue");
  expectSameXalanDocument(TransValue(dictionarySource(4)), u"dictionary");
}

TEST_F(DOMTest, SerialisedTextHasNoLineBreaksBetweenElements) {
  std::string const dictionary = mbcsXML(TransValue(dictionarySource(4)));
  EXPECT_EQ(dictionary.find('\n'), std::string::npos) << dictionary;
  EXPECT_EQ(dictionary.find(std::string(xmlDeclaration) + "<dictionary"), 0u);
  Document source = documentWithOutsideNodes();
  std::string const handBuilt = mbcsXML(TransValue(source.get()));
  EXPECT_EQ(handBuilt.find('\n'), std::string::npos) << handBuilt;
}

TEST_F(DOMTest, MBCSTextIsTheSerializersBytesInUTF8Mode) {
  Document source = documentWithOutsideNodes();
  TransValue value(source.get());
  TransStatus status;
  TransString* text = value.asMBCSXML(status);
  EXPECT_FALSE(status.failure());
  EXPECT_FALSE(status.warning());
  EXPECT_EQ(std::string(text->asMBCS()).substr(0, std::strlen(xmlDeclaration)), xmlDeclaration);
  TransValue::releaseString(text);
}

// ---- a data source whose addDictionary returns null ----

TEST_F(DOMTest, ValueWithoutDocumentReportsFailureEverywhere) {
  std::unique_ptr<TransDOMImpl> value(TransDOMImpl::adopt(nullptr));
  TransStatus status;
  TransString* text = value->asUTF16XML(status);
  EXPECT_TRUE(text->empty());
  EXPECT_TRUE(status.failure());
  EXPECT_TRUE(status.warning());
  TransValue::releaseString(text);
  text = value->asMBCSXML(status);
  EXPECT_TRUE(text->empty());
  EXPECT_TRUE(status.failure());
  TransValue::releaseString(text);
  text = value->asString(status);
  EXPECT_TRUE(status.failure());
  EXPECT_TRUE(status.warning());
  TransValue::releaseString(text);
  EXPECT_EQ(value->asXalanDocument(status), nullptr);
  EXPECT_TRUE(status.failure());
  EXPECT_TRUE(status.warning());
  EXPECT_EQ(value->asDouble(ts("/dictionary"), ts("@rowCount"), status), TransUtil::noNumber);
  EXPECT_TRUE(status.failure());
  EXPECT_TRUE(status.warning());
  text = value->asString(ts("/dictionary"), ts("@rowCount"), status);
  EXPECT_TRUE(text->empty());
  EXPECT_TRUE(status.failure());
  TransValue::releaseString(text);
  TransStringList* list = value->asStringList(ts("/"), ts("."), status);
  EXPECT_EQ(list->size(), 0u);
  EXPECT_TRUE(status.failure());
  EXPECT_TRUE(status.warning());
  TransValue::releaseStringList(list);
  // Copies and assignment of such a value are values with an empty document.
  TransDOMImpl copy(*value);
  EXPECT_EQ(take(copy.asMBCSXML(status)), xmlDeclaration);
  EXPECT_FALSE(status.failure());
}

TEST_F(DOMTest, AdoptedDocumentIsOwnedAndQueried) {
  Document source = catalogueDocument();
  std::unique_ptr<TransDOMImpl> value(TransDOMImpl::adopt(source.release()));
  TransStatus status;
  EXPECT_EQ(take(value->asString(ts("/catalogue"), ts("@name"), status)), "Cat");
}

// ---- the reachable assertion of the document value ----

TEST_F(DOMTest, MBCSXMLAssertsWhenTheCodePageNameDoesNotConvert) {
#ifdef TRANSSPACE_SANITIZED
  GTEST_SKIP() << "death tests are skipped in the sanitizer build";
#else
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  TransValue value(dictionarySource(1));
  EXPECT_DEATH(
      {
        // An empty code page name converts to an empty UTF-16 text: the status reports a warning.
        zorb::SetUTF8Mode(false);
        zorb::SetDefaultCodePage("");
        take(value.asMBCSXML());
      },
      "! c\\.failure\\(\\) && ! c\\.warning\\(\\)");
#endif
}

}  // namespace
