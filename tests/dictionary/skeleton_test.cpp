// The vocabulary, the document skeleton, the root's attributes and insertAfterTag.
#include "dictionarytestsupport.h"

#include <algorithm>
#include <clocale>
#include <cstring>

using namespace dicttest;
using X = TransXMLChArray;

namespace {

class SkeletonTest : public DictionaryTest {};

// A data source whose row count comes from an override of the virtual RowCount.
class CountingDataSource : public ZORB_DataSource {
public:
  explicit CountingDataSource(std::int64_t rows) : rows_(rows) {}
  std::int64_t RowCount() const override { return rows_; }

private:
  std::int64_t rows_;
};

TEST_F(SkeletonTest, VocabularyTextsAreTheWordsTheyAreNamedAfter) {
  EXPECT_EQ(utf8(X::variableWriteFormat_s), "variableWriteFormat");
  EXPECT_EQ(utf8(X::multipleResponseSetCategoryLabels_s), "multipleResponseSetCategoryLabels");
  EXPECT_EQ(utf8(X::creationDateTime_s), "creationDateTime");
  EXPECT_EQ(utf8(X::xmlnsXsi_s), "xmlns:xsi");
  EXPECT_EQ(utf8(X::xsiSchemaLocation_s), "xsi:schemaLocation");
  EXPECT_EQ(utf8(X::schemaVersion_s), "1.0");
  EXPECT_EQ(utf8(X::LS_s), "LS");
  EXPECT_EQ(utf8(X::UTF16_s), "UTF-16");
  EXPECT_EQ(utf8(X::YMDHMS_s), "YMDHMS");
  EXPECT_EQ(utf8(X::variableNameType_s), "variableNameType");
  EXPECT_EQ(utf8(X::schemaInstanceValue_s), "http://www.w3.org/2001/XMLSchema-instance");
  EXPECT_EQ(utf8(X::schemaDefaultNSValue_s), "http://transspace.example.org/zorb/data");
}

TEST_F(SkeletonTest, SchemaLocationIsTheNamespaceASpaceAndTheSchemaFile) {
  std::string ns = utf8(X::schemaDefaultNSValue_s);
  EXPECT_EQ(ns.substr(0, 7), "http://");
  EXPECT_EQ(ns.substr(ns.size() - 10), "/zorb/data");
  EXPECT_EQ(utf8(X::schemaLocationValue_s), ns + " " + ns + "/dictionary-1.0.xsd");
}

TEST_F(SkeletonTest, EmptyDataSourceGivesARootWithItsAttributesAndNoChildren) {
  zorb::DataSourceBuilder b;
  b.rowCount(12).timestamp(0);
  DocumentPtr doc = buildDictionary(b.build());
  ASSERT_TRUE(doc);
  xc::DOMElement* root = doc->getDocumentElement();
  EXPECT_EQ(utf8(root->getTagName()), "dictionary");
  EXPECT_EQ(root->getFirstChild(), nullptr);
  EXPECT_EQ(attr(root, "xmlns"), "http://transspace.example.org/zorb/data");
  EXPECT_EQ(attr(root, "xmlns:xsi"), "http://www.w3.org/2001/XMLSchema-instance");
  EXPECT_EQ(attr(root, "xsi:schemaLocation"),
            "http://transspace.example.org/zorb/data http://transspace.example.org/zorb/data/dictionary-1.0.xsd");
  EXPECT_EQ(attr(root, "locale"), "en_US");
  EXPECT_EQ(attr(root, "creationDateTime"), "1970-01-01T00:00:00");
  EXPECT_EQ(attr(root, "rowCount"), "12");
  EXPECT_EQ(root->getAttributes()->getLength(), 6u);
  EXPECT_EQ(serialize(doc.get()),
            "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>"
            "<dictionary creationDateTime=\"1970-01-01T00:00:00\" locale=\"en_US\" rowCount=\"12\""
            " xmlns=\"http://transspace.example.org/zorb/data\""
            " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
            " xsi:schemaLocation=\"http://transspace.example.org/zorb/data"
            " http://transspace.example.org/zorb/data/dictionary-1.0.xsd\"/>");
}

TEST_F(SkeletonTest, DocumentPropertiesAndElementsWithoutNamespace) {
  DocumentPtr doc = buildDictionary(ZORB_DataSource());
  ASSERT_TRUE(doc);
  EXPECT_EQ(utf8(doc->getXmlVersion()), "1.0");
  EXPECT_FALSE(doc->getXmlStandalone());
  EXPECT_TRUE(doc->getStrictErrorChecking());
  EXPECT_EQ(doc->getDoctype(), nullptr);
  EXPECT_EQ(doc->getDocumentElement()->getNamespaceURI(), nullptr);
  EXPECT_EQ(doc->getDocumentElement()->getLocalName(), nullptr);  // made with plain createElement
}

// The DOM keeps attributes in its own order (Xerces sorts them by name), so the creation order
// cannot be observed through the document; what can be checked is that exactly these six
// attributes exist and that the serializer writes them as the DOM lists them.
TEST_F(SkeletonTest, RootHasExactlyTheSixAttributes) {
  zorb::DataSourceBuilder b;
  b.rowCount(3);
  DocumentPtr doc = buildDictionary(b.build());
  std::vector<std::string> names = attrNames(doc->getDocumentElement());
  std::sort(names.begin(), names.end());
  EXPECT_EQ(names, (std::vector<std::string>{"creationDateTime", "locale", "rowCount", "xmlns", "xmlns:xsi",
                                             "xsi:schemaLocation"}));
}

TEST_F(SkeletonTest, UnknownRowCountLeavesRowCountOut) {
  zorb::DataSourceBuilder b;
  b.rowCount(-1);
  DocumentPtr doc = buildDictionary(b.build());
  EXPECT_FALSE(hasAttr(doc->getDocumentElement(), "rowCount"));
  EXPECT_EQ(doc->getDocumentElement()->getAttributes()->getLength(), 5u);
}

TEST_F(SkeletonTest, AnyNegativeRowCountLeavesRowCountOut) {
  CountingDataSource ds(-123456789012LL);
  DocumentPtr doc = buildDictionary(ds);
  EXPECT_FALSE(hasAttr(doc->getDocumentElement(), "rowCount"));
}

TEST_F(SkeletonTest, ZeroRowCountIsWrittenAsZero) {
  zorb::DataSourceBuilder b;
  b.rowCount(0);
  DocumentPtr doc = buildDictionary(b.build());
  EXPECT_EQ(attr(doc->getDocumentElement(), "rowCount"), "0");
}

TEST_F(SkeletonTest, RowCountComesFromTheVirtualRowCountWithAllDigits) {
  CountingDataSource ds(1200000);
  DocumentPtr doc = buildDictionary(ds);
  EXPECT_EQ(attr(doc->getDocumentElement(), "rowCount"), "1200000");
  CountingDataSource big(9000000000000000001LL);
  DocumentPtr bigDoc = buildDictionary(big);
  EXPECT_EQ(attr(bigDoc->getDocumentElement(), "rowCount"), "9000000000000000001");
}

// Integer attributes follow the numeric locale (the integer convention formats with it), and the
// decimal pattern has no grouping: under a decimal-comma locale every integer keeps its plain
// digits and sign. Numbers of values are always written in English notation.
TEST_F(SkeletonTest, IntegerAttributesUnderADecimalCommaLocale) {
  if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr) GTEST_SKIP() << "locale de_DE.UTF-8 not installed";
  zorb::DataSourceBuilder b;
  b.rowCount(1234567890123LL);
  b.addVariable("x")
      .format(5, 40, 16)
      .displayWidth(-3)
      .missingValues({2.5})
      .valueLabel(1234.5, "a")
      .attribute("a", {"v"})
      .attributesVersion(12345);
  b.extension(3, 4, std::string(8, '\0'));
  DocumentPtr doc = buildDictionary(b.build());
  std::setlocale(LC_NUMERIC, "C");
  xc::DOMElement* root = doc->getDocumentElement();
  EXPECT_EQ(attr(root, "rowCount"), "1234567890123");
  xc::DOMElement* variable = child(root, "variable");
  EXPECT_EQ(attr(variable, "type"), "0");
  EXPECT_EQ(attr(variable, "displayWidth"), "-3");
  EXPECT_EQ(attr(child(variable, "variableFormat"), "width"), "40");
  EXPECT_EQ(attr(child(variable, "variableFormat"), "decimals"), "16");
  EXPECT_EQ(attr(child(variable, "attributeSet"), "version"), "12345");
  EXPECT_EQ(attr(child(variable, "missingValue"), "data"), "2.5");
  EXPECT_EQ(attr(child(child(root, "valueLabelSet"), "valueLabel"), "value"), "1234.5");
  xc::DOMElement* extension = child(root, "extension");
  EXPECT_EQ(attr(extension, "type"), "3");
  EXPECT_EQ(attr(extension, "elementSize"), "4");
  EXPECT_EQ(attr(extension, "length"), "2");
}

TEST_F(SkeletonTest, CreationDateTimeIsTheIsoTextOfTheTimestamp) {
  zorb::DataSourceBuilder b;
  b.timestamp(1795241020.0);  // 2026-11-21T06:03:40 (seconds since 1970)
  DocumentPtr doc = buildDictionary(b.build());
  EXPECT_EQ(attr(doc->getDocumentElement(), "creationDateTime"), "2026-11-21T06:03:40");
}

TEST_F(SkeletonTest, CreationDateTimeIsEmptyWhenTheHostGivesNoText) {
  zorb::DataSourceBuilder b;
  b.timestamp(1e300);  // outside the years the host can write
  DocumentPtr doc = buildDictionary(b.build());
  ASSERT_TRUE(hasAttr(doc->getDocumentElement(), "creationDateTime"));
  EXPECT_EQ(attr(doc->getDocumentElement(), "creationDateTime"), "");
}

TEST_F(SkeletonTest, LocaleIsTheFirstServerLocale) {
  zorb::SetServerLocaleResolver([](std::string&, std::vector<std::string>& list) {
    list.assign({"de_CH", "de_DE"});
    return 2;
  });
  DocumentPtr doc = buildDictionary(ZORB_DataSource());
  EXPECT_EQ(attr(doc->getDocumentElement(), "locale"), "de_CH");
}

TEST_F(SkeletonTest, LocaleAsksTheServerWithTheProcessCharacterTypeLocale) {
  std::string asked;
  zorb::SetServerLocaleResolver([&asked](std::string& locale, std::vector<std::string>&) {
    asked = locale;
    return 0;
  });
  buildDictionary(ZORB_DataSource());
  EXPECT_EQ(asked, std::setlocale(LC_CTYPE, nullptr));
}

TEST_F(SkeletonTest, WithoutServerLocalesTheLocaleIsTheProcessCharacterTypeLocale) {
  zorb::SetServerLocaleResolver([](std::string&, std::vector<std::string>&) { return 0; });
  // The test program never sets a locale: LC_CTYPE is "C".
  ASSERT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C");
  DocumentPtr doc = buildDictionary(ZORB_DataSource());
  EXPECT_EQ(attr(doc->getDocumentElement(), "locale"), "C");
}

TEST_F(SkeletonTest, WithoutServerLocalesTheLocaleFollowsSetlocale) {
  zorb::SetServerLocaleResolver([](std::string&, std::vector<std::string>&) { return 0; });
  std::string saved = std::setlocale(LC_CTYPE, nullptr);
  if (std::setlocale(LC_CTYPE, "C.UTF-8") == nullptr) GTEST_SKIP() << "no C.UTF-8 locale";
  DocumentPtr doc = buildDictionary(ZORB_DataSource());
  std::setlocale(LC_CTYPE, saved.c_str());
  EXPECT_EQ(attr(doc->getDocumentElement(), "locale"), "C.UTF-8");
}

TEST_F(SkeletonTest, NegativeServerResultAlsoFallsBack) {
  zorb::SetServerLocaleResolver([](std::string&, std::vector<std::string>& list) {
    list.assign({"xx_YY"});  // entries are ignored when the count is not positive
    return -1;
  });
  DocumentPtr doc = buildDictionary(ZORB_DataSource());
  EXPECT_EQ(attr(doc->getDocumentElement(), "locale"), "C");
}

TEST_F(SkeletonTest, FallbackUsesTheLocaleAsTheHostRewroteIt) {
  zorb::SetServerLocaleResolver([](std::string& locale, std::vector<std::string>&) {
    locale = "POSIX-rewritten";
    return 0;
  });
  DocumentPtr doc = buildDictionary(ZORB_DataSource());
  EXPECT_EQ(attr(doc->getDocumentElement(), "locale"), "POSIX-rewritten");
}

TEST_F(SkeletonTest, DefaultResolverMapsAFullLocaleName) {
  zorb::ResetPlatformSettings();
  std::string saved = std::setlocale(LC_CTYPE, nullptr);
  if (std::setlocale(LC_CTYPE, "en_US.UTF-8") == nullptr) GTEST_SKIP() << "no en_US.UTF-8 locale";
  DocumentPtr doc = buildDictionary(ZORB_DataSource());
  std::setlocale(LC_CTYPE, saved.c_str());
  EXPECT_EQ(attr(doc->getDocumentElement(), "locale"), "en_US");
}

TEST_F(SkeletonTest, AddDictionaryTwiceMakesASecondDocument) {
  TransDictionaryImpl builder;
  DocumentPtr first(builder.addDictionary(ZORB_DataSource()));
  DocumentPtr second(builder.addDictionary(ZORB_DataSource()));
  ASSERT_TRUE(first);
  ASSERT_TRUE(second);
  EXPECT_NE(first.get(), second.get());
  EXPECT_EQ(serialize(first.get()), serialize(second.get()));
}

// ---- insertAfterTag ----

TEST_F(SkeletonTest, InsertAfterTagWithoutSuchElementReturnsNullAndLeavesTheParent) {
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* root = rootOf(doc);
  root->appendChild(doc->createElement(X::variable_s));
  std::string before = serialize(doc.get());
  xc::DOMElement* orphan = doc->createElement(X::weightVariable_s);
  EXPECT_EQ(builder.insertAfterTag(root, orphan, X::valueLabelSet_s), nullptr);
  EXPECT_EQ(orphan->getParentNode(), nullptr);
  EXPECT_EQ(serialize(doc.get()), before);
  // Also on an empty parent.
  xc::DOMElement* empty = doc->createElement(X::variable_s);
  EXPECT_EQ(builder.insertAfterTag(empty, orphan, X::variable_s), nullptr);
  EXPECT_EQ(empty->getFirstChild(), nullptr);
}

TEST_F(SkeletonTest, InsertAfterTagPlacesDirectlyAfterTheLastElementOfTheTag) {
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* root = rootOf(doc);
  xc::DOMElement* v1 = doc->createElement(X::variable_s);
  xc::DOMElement* v2 = doc->createElement(X::variable_s);
  xc::DOMElement* set = doc->createElement(X::valueLabelSet_s);
  root->appendChild(v1);
  root->appendChild(v2);
  root->appendChild(set);
  xc::DOMElement* weight = doc->createElement(X::weightVariable_s);
  EXPECT_EQ(builder.insertAfterTag(root, weight, X::variable_s), weight);
  EXPECT_EQ(childNames(root), (std::vector<std::string>{"variable", "variable", "weightVariable", "valueLabelSet"}));
  EXPECT_EQ(v2->getNextSibling(), weight);
  // After the last child: appended.
  xc::DOMElement* set2 = doc->createElement(X::valueLabelSet_s);
  EXPECT_EQ(builder.insertAfterTag(root, set2, X::valueLabelSet_s), set2);
  EXPECT_EQ(root->getLastChild(), set2);
}

TEST_F(SkeletonTest, InsertAfterTagSearchesAllDescendants) {
  // The search is getElementsByTagName on the parent: a nested element of the tag counts, and the
  // insertion then happens at the parent, before that element's next sibling.
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* root = rootOf(doc);
  xc::DOMElement* variable = doc->createElement(X::variable_s);
  root->appendChild(variable);
  xc::DOMElement* format = doc->createElement(X::variableFormat_s);
  variable->appendChild(format);
  xc::DOMElement* write = doc->createElement(X::variableWriteFormat_s);
  EXPECT_EQ(builder.insertAfterTag(variable, write, X::variableFormat_s), write);
  EXPECT_EQ(format->getNextSibling(), write);
  // A match that is a grandchild of the parent: found by the deep search; its next sibling is
  // null, so the child is appended to the parent (not put beside the grandchild).
  xc::DOMElement* last = doc->createElement(X::variable_s);
  root->appendChild(last);
  xc::DOMElement* nested = doc->createElement(X::missingValue_s);
  last->appendChild(nested);
  xc::DOMElement* weight = doc->createElement(X::weightVariable_s);
  EXPECT_EQ(builder.insertAfterTag(root, weight, X::missingValue_s), weight);
  EXPECT_EQ(weight->getParentNode(), root);
  EXPECT_EQ(root->getLastChild(), weight);
  EXPECT_EQ(nested->getNextSibling(), nullptr);
}

}  // namespace
