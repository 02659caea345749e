// Weight variable, attributes and extension records.
#include "dictionarytestsupport.h"

using namespace dicttest;
using X = TransXMLChArray;

namespace {

class AttributesTest : public DictionaryTest {};

// ---- weight variable ----

TEST_F(AttributesTest, UnweightedDataSourceHasNoWeightVariableAndIsStillTrue) {
  zorb::DataSourceBuilder b;
  b.addVariable("x");
  ZORB_DataSource ds = b.build();
  ASSERT_LT(ds.GetWeightVarIndex(), 0);
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  EXPECT_TRUE(builder.addWeightVariable(ds, rootOf(doc)));
  EXPECT_EQ(rootOf(doc)->getFirstChild(), nullptr);
}

TEST_F(AttributesTest, WeightVariableDirectlyAfterTheLastVariable) {
  zorb::DataSourceBuilder b;
  b.addVariable("x");
  b.addVariable("wt");
  b.addVariable("z");
  b.weightVariable("wt");
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* root = doc->getDocumentElement();
  EXPECT_EQ(childNames(root), (std::vector<std::string>{"variable", "variable", "variable", "weightVariable"}));
  xc::DOMElement* weight = child(root, "weightVariable");
  EXPECT_EQ(attr(weight, "name"), "wt");
  EXPECT_EQ(weight->getAttributes()->getLength(), 1u);
  EXPECT_EQ(weight->getFirstChild(), nullptr);
}

TEST_F(AttributesTest, WeightVariableWithoutVariablesGoesBeforeTheFirstChild) {
  zorb::DataSourceBuilder b;
  b.addVariable("wt");
  b.weightVariable(0);
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* root = rootOf(doc);
  root->appendChild(doc->createElement(X::extension_s));
  EXPECT_TRUE(builder.addWeightVariable(ds, root));
  EXPECT_EQ(childNames(root), (std::vector<std::string>{"weightVariable", "extension"}));
}

// ---- attributes ----

TEST_F(AttributesTest, SystemAndUserAttributes) {
  zorb::DataSourceBuilder b;
  b.attribute("$sys", {"1"}).attribute("user", {"2"}).attribute("", {"3"}).attribute("x$", {"4"});
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* set = child(doc->getDocumentElement(), "attributeSet");
  ASSERT_NE(set, nullptr);
  std::vector<xc::DOMElement*> entries = children(set, "attribute");
  ASSERT_EQ(entries.size(), 4u);
  EXPECT_EQ(attr(entries[0], "name"), "$sys");
  EXPECT_EQ(attr(entries[0], "type"), "system");
  EXPECT_EQ(attr(entries[1], "name"), "user");
  EXPECT_EQ(attr(entries[1], "type"), "user");
  EXPECT_TRUE(hasAttr(entries[2], "name"));
  EXPECT_EQ(attr(entries[2], "name"), "");
  EXPECT_EQ(attr(entries[2], "type"), "user");
  EXPECT_EQ(attr(entries[3], "type"), "user");
}

TEST_F(AttributesTest, ValuesInOrderAndAnEntryWithoutValues) {
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* set = doc->createElement(X::attributeSet_s);
  EXPECT_TRUE(builder.addAttribute("three", {"a", "", "c c"}, set));
  EXPECT_TRUE(builder.addAttribute("none", {}, set));
  std::vector<xc::DOMElement*> entries = children(set, "attribute");
  ASSERT_EQ(entries.size(), 2u);
  std::vector<xc::DOMElement*> values = children(entries[0], "attributeValue");
  ASSERT_EQ(values.size(), 3u);
  EXPECT_EQ(attr(values[0], "value"), "a");
  EXPECT_TRUE(hasAttr(values[1], "value"));
  EXPECT_EQ(attr(values[1], "value"), "");
  EXPECT_EQ(attr(values[2], "value"), "c c");
  for (xc::DOMElement* value : values) EXPECT_EQ(value->getAttributes()->getLength(), 1u);
  EXPECT_EQ(entries[1]->getFirstChild(), nullptr);
  EXPECT_EQ(entries[1]->getAttributes()->getLength(), 2u);
}

TEST_F(AttributesTest, NameIsCutAtAnEmbeddedZeroByte) {
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* set = doc->createElement(X::attributeSet_s);
  builder.addAttribute(std::string("ab\0cd", 5), {}, set);
  EXPECT_EQ(attr(child(set, "attribute"), "name"), "ab");
}

TEST_F(AttributesTest, AddAttributesOfAnEmptyCollectionIsNull) {
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  EXPECT_EQ(builder.addAttributes(DatasourceAttributes()), nullptr);
}

TEST_F(AttributesTest, AddAttributesBuildsAnUnplacedSetWithItsVersion) {
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  DatasourceAttributes attributes;
  attributes.Add("a", {"1"});
  attributes.Add("b", {});
  attributes.version = -7;
  xc::DOMElement* set = builder.addAttributes(attributes);
  ASSERT_NE(set, nullptr);
  EXPECT_EQ(set->getParentNode(), nullptr);
  EXPECT_EQ(attr(set, "version"), "-7");
  EXPECT_EQ(set->getAttributes()->getLength(), 1u);
  EXPECT_EQ(childNames(set), (std::vector<std::string>{"attribute", "attribute"}));
}

TEST_F(AttributesTest, VariableWithoutAttributesHasNoSet) {
  zorb::DataSourceBuilder b;
  b.addVariable("x");
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* var = doc->createElement(X::variable_s);
  EXPECT_FALSE(builder.addVariableAttributes(ds.GetVariable(0), var));
  EXPECT_EQ(var->getFirstChild(), nullptr);
}

TEST_F(AttributesTest, VariableAttributesAreAppendedToTheVariable) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").attribute("$role", {"input"}).attribute("note", {"n1", "n2"}).attributesVersion(3);
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* var = doc->createElement(X::variable_s);
  var->appendChild(doc->createElement(X::missingValue_s));
  EXPECT_TRUE(builder.addVariableAttributes(ds.GetVariable(0), var));
  EXPECT_EQ(childNames(var), (std::vector<std::string>{"missingValue", "attributeSet"}));
  xc::DOMElement* set = child(var, "attributeSet");
  EXPECT_EQ(attr(set, "version"), "3");
  EXPECT_EQ(attr(child(set, "attribute", 0), "type"), "system");
  EXPECT_EQ(children(child(set, "attribute", 1), "attributeValue").size(), 2u);
}

TEST_F(AttributesTest, DatasourceAttributesAreFalseWhenEmpty) {
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  EXPECT_FALSE(builder.addDatasourceAttributes(ZORB_DataSource(), rootOf(doc)));
  EXPECT_EQ(rootOf(doc)->getFirstChild(), nullptr);
}

TEST_F(AttributesTest, DatasourceAttributeSetStandsAfterTheResponseSets) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").valueLabel(1, "one").attribute("va", {"1"});
  b.weightVariable(0);
  b.variableSet("vs", {"x"});
  b.categorySet("$mr", "", {"x"});
  b.attribute("ds", {"v"});
  b.extension(3, 4, std::string(8, '\x01'));
  DocumentPtr doc = buildDictionary(b.build());
  EXPECT_EQ(childNames(doc->getDocumentElement()),
            (std::vector<std::string>{"variable", "weightVariable", "valueLabelSet", "variableSet",
                                      "multipleResponseSet", "attributeSet", "extension"}));
  // The root's set, not the variable's.
  EXPECT_EQ(attr(child(child(doc->getDocumentElement(), "attributeSet"), "attribute"), "name"), "ds");
}

TEST_F(AttributesTest, DatasourceAttributeSetFollowsEachPrecedingSection) {
  struct Case {
    char const* what;
    std::vector<std::string> expected;
  };
  // Each case removes sections from the end of the chain: after variableSet, valueLabelSet,
  // weightVariable, variable, and alone.
  for (int drop = 0; drop <= 4; ++drop) {
    SCOPED_TRACE(drop);
    zorb::DataSourceBuilder b;
    std::vector<std::string> expected;
    if (drop < 4) {
      b.addVariable("x");
      expected.push_back("variable");
    }
    if (drop < 3) {
      b.weightVariable(0);
      expected.push_back("weightVariable");
    }
    if (drop < 2) {
      b.variable("x").valueLabel(1, "one");
      expected.push_back("valueLabelSet");
    }
    if (drop < 1) {
      b.variableSet("vs", {"x"});
      expected.push_back("variableSet");
    }
    b.attribute("a", {});
    expected.push_back("attributeSet");
    DocumentPtr doc = buildDictionary(b.build());
    EXPECT_EQ(childNames(doc->getDocumentElement()), expected);
  }
}

TEST_F(AttributesTest, DatasourceAttributeSetDirectlyAfterTheVariables) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").attribute("inner", {"i"});
  b.addVariable("y");
  b.attribute("outer", {"o"});
  DocumentPtr doc = buildDictionary(b.build());
  EXPECT_EQ(childNames(doc->getDocumentElement()), (std::vector<std::string>{"variable", "variable", "attributeSet"}));
}

// ---- extensions ----

TEST_F(AttributesTest, UnlistedExtensionTypesAreNeverWritten) {
  zorb::DataSourceBuilder b;
  for (int type : {5, 7, 11, 13, 14, 16, 17, 20, 0, -1}) b.extension(type, 1, std::string("\x2A"));
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  EXPECT_EQ(builder.addExtensions(ds, rootOf(doc)), 0u);
  EXPECT_EQ(rootOf(doc)->getFirstChild(), nullptr);
  DocumentPtr whole = buildDictionary(ds);
  EXPECT_EQ(whole->getDocumentElement()->getFirstChild(), nullptr);
}

TEST_F(AttributesTest, BytesAreTwoUpperCaseHexDigitsEach) {
  zorb::DataSourceBuilder b;
  b.extension(4, 1, std::string("\x00\x0F\xFF", 3));
  b.extension(6, 1, std::string("\x01\xAB\x00", 3));
  DocumentPtr doc = buildDictionary(b.build());
  std::vector<xc::DOMElement*> records = children(doc->getDocumentElement(), "extension");
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(attr(records[0], "data"), "000FFF");
  EXPECT_EQ(attr(records[1], "data"), "01AB00");
}

TEST_F(AttributesTest, ExtensionAttributes) {
  zorb::DataSourceBuilder b;
  std::string bytes;
  for (int i = 0; i < 16; ++i) bytes.push_back(static_cast<char>(i * 17));
  b.extension(3, 4, bytes);
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* record = child(doc->getDocumentElement(), "extension");
  ASSERT_NE(record, nullptr);
  EXPECT_EQ(attr(record, "type"), "3");
  EXPECT_EQ(attr(record, "elementSize"), "4");
  EXPECT_EQ(attr(record, "length"), "4");
  EXPECT_EQ(attr(record, "data"), "00112233445566778899AABBCCDDEEFF");
  EXPECT_EQ(record->getAttributes()->getLength(), 4u);
  EXPECT_EQ(record->getFirstChild(), nullptr);
}

TEST_F(AttributesTest, EmptyRecordHasAnEmptyDataAttribute) {
  zorb::DataSourceBuilder b;
  b.extension(10, 8, std::int64_t{0}, std::string());
  b.extension(15, 0, std::int64_t{5}, std::string());  // five elements of no bytes
  DocumentPtr doc = buildDictionary(b.build());
  std::vector<xc::DOMElement*> records = children(doc->getDocumentElement(), "extension");
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(attr(records[0], "length"), "0");
  EXPECT_TRUE(hasAttr(records[0], "data"));
  EXPECT_EQ(attr(records[0], "data"), "");
  EXPECT_EQ(attr(records[1], "elementSize"), "0");
  EXPECT_EQ(attr(records[1], "length"), "5");
  EXPECT_EQ(attr(records[1], "data"), "");
}

TEST_F(AttributesTest, CountsTheListedTypesAndAppendsThemInListOrder) {
  zorb::DataSourceBuilder b;
  b.addVariable("x");
  b.extension(12, 1, std::string("\x0C"));
  b.extension(3, 1, std::string("\x03"));
  b.extension(7, 1, std::string("\x07"));
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* root = rootOf(doc);
  builder.addVariables(ds, root);
  EXPECT_EQ(builder.addExtensions(ds, root), 2u);
  EXPECT_EQ(childNames(root), (std::vector<std::string>{"variable", "extension", "extension"}));
  std::vector<xc::DOMElement*> records = children(root, "extension");
  EXPECT_EQ(attr(records[0], "type"), "3");
  EXPECT_EQ(attr(records[1], "type"), "12");
  EXPECT_EQ(root->getLastChild(), records[1]);
}

TEST_F(AttributesTest, AllTenListedTypes) {
  zorb::DataSourceBuilder b;
  for (int type = 1; type <= 16; ++type) b.extension(type, 2, std::string(2, static_cast<char>(type)));
  DocumentPtr doc = buildDictionary(b.build());
  std::vector<std::string> types;
  for (xc::DOMElement* record : children(doc->getDocumentElement(), "extension")) types.push_back(attr(record, "type"));
  EXPECT_EQ(types, (std::vector<std::string>{"1", "2", "3", "4", "6", "8", "9", "10", "12", "15"}));
  EXPECT_EQ(attr(child(doc->getDocumentElement(), "extension", 9), "data"), "0F0F");
}

}  // namespace
