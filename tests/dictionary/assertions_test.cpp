// The dictionary builder's assertions: broken preconditions end the process with fixed texts.
#include "dictionarytestsupport.h"

using namespace dicttest;
using X = TransXMLChArray;

namespace {

class DictionaryDeathTest : public DictionaryTest {};

// A data source of one variable made by `configure`.
template <typename Configure>
ZORB_DataSource oneVariable(Configure configure) {
  zorb::DataSourceBuilder b;
  configure(b.addVariable("x"));
  return b.build();
}

TEST_F(DictionaryDeathTest, UnknownFormatTypesAssert) {
  DICT_SKIP_DEATH_UNDER_SANITIZERS();
  for (int code : {0, 13, 14, 18, 19, 54, 84, 87, 1000, -1, -5}) {
    SCOPED_TRACE(code);
    ZORB_DataSource print = oneVariable([code](zorb::VariableBuilder& v) { v.printFormat(code, 8, 2); });
    EXPECT_DEATH(buildDictionary(print), assertionRegex("! \"unknown format type.\""));
    ZORB_DataSource write = oneVariable([code](zorb::VariableBuilder& v) { v.writeFormat(code, 8, 2); });
    EXPECT_DEATH(buildDictionary(write), assertionRegex("! \"unknown format type.\""));
  }
}

TEST_F(DictionaryDeathTest, SetFormatAttributesAssertsOnAGap) {
  DICT_SKIP_DEATH_UNDER_SANITIZERS();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* element = doc->createElement(X::variableFormat_s);
  EXPECT_DEATH(builder.setFormatAttributes(element, 18, 8, 2), assertionRegex("! \"unknown format type.\""));
}

TEST_F(DictionaryDeathTest, UnknownAlignmentAsserts) {
  DICT_SKIP_DEATH_UNDER_SANITIZERS();
  for (int code : {3, -1, 100}) {
    ZORB_DataSource ds = oneVariable([code](zorb::VariableBuilder& v) { v.alignment(code); });
    EXPECT_DEATH(buildDictionary(ds), assertionRegex("! \"unknown alignment.\""));
  }
}

TEST_F(DictionaryDeathTest, UnknownMeasurementLevelAsserts) {
  DICT_SKIP_DEATH_UNDER_SANITIZERS();
  for (int code : {4, -1, 100}) {
    ZORB_DataSource ds = oneVariable([code](zorb::VariableBuilder& v) { v.measurementLevel(code); });
    EXPECT_DEATH(buildDictionary(ds), assertionRegex("! \"unknown measurement level.\""));
  }
}

TEST_F(DictionaryDeathTest, InsertAfterTagAssertsItsArguments) {
  DICT_SKIP_DEATH_UNDER_SANITIZERS();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* root = rootOf(doc);
  xc::DOMElement* element = doc->createElement(X::variable_s);
  EXPECT_DEATH(builder.insertAfterTag(nullptr, element, X::variable_s), assertionRegex("parent"));
  EXPECT_DEATH(builder.insertAfterTag(root, nullptr, X::variable_s), assertionRegex("child"));
  EXPECT_DEATH(builder.insertAfterTag(root, element, nullptr), assertionRegex("tag"));
  // The first null argument is the one reported.
  EXPECT_DEATH(builder.insertAfterTag(nullptr, nullptr, nullptr), assertionRegex("parent"));
}

TEST_F(DictionaryDeathTest, SectionBuildersAssertTheRoot) {
  DICT_SKIP_DEATH_UNDER_SANITIZERS();
  zorb::DataSourceBuilder b;
  b.addVariable("x").valueLabel(1, "one");
  b.variableSet("s", {"x"});
  ZORB_DataSource ds = b.build();
  VariableSet set = VariableSets(ds, PlainVariableSets).front();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  std::string const domdict = assertionRegex("domdict");
  EXPECT_DEATH(builder.addVariables(ds, nullptr), domdict);
  EXPECT_DEATH(builder.addWeightVariable(ds, nullptr), domdict);
  EXPECT_DEATH(builder.addValueLabelSet(ds.GetVariable(0), nullptr), domdict);
  EXPECT_DEATH(builder.addVariableSets(ds, nullptr), domdict);
  EXPECT_DEATH(builder.addVariableSet(set, ds, nullptr), domdict);
  EXPECT_DEATH(builder.addMultipleResponseSets(ds, nullptr), domdict);
  EXPECT_DEATH(builder.addMultipleResponseSet(set, ds, nullptr), domdict);
  EXPECT_DEATH(builder.addDatasourceAttributes(ds, nullptr), domdict);
  EXPECT_DEATH(builder.addExtensions(ds, nullptr), domdict);
}

TEST_F(DictionaryDeathTest, VariableBuildersAssertTheVariable) {
  DICT_SKIP_DEATH_UNDER_SANITIZERS();
  ZORB_DataSource ds = oneVariable([](zorb::VariableBuilder& v) { v.missingValues({1}); });
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  std::string const domvar = assertionRegex("domvar");
  EXPECT_DEATH(builder.addVariableFormat(ds.GetVariable(0), nullptr), domvar);
  EXPECT_DEATH(builder.addVariableWriteFormat(ds.GetVariable(0), nullptr), domvar);
  EXPECT_DEATH(builder.addMissingValues(ds.GetVariable(0), nullptr), domvar);
  EXPECT_DEATH(builder.addVariableAttributes(ds.GetVariable(0), nullptr), domvar);
}

TEST_F(DictionaryDeathTest, AddAttributeAssertsTheSet) {
  DICT_SKIP_DEATH_UNDER_SANITIZERS();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  EXPECT_DEATH(builder.addAttribute("a", {"b"}, nullptr), assertionRegex("domset"));
}

// Without a document (no createDocument yet) every section builder stops, after checking its
// element argument.
TEST_F(DictionaryDeathTest, BuildersWithoutADocumentAssert) {
  DICT_SKIP_DEATH_UNDER_SANITIZERS();
  zorb::DataSourceBuilder b;
  b.addVariable("x");
  b.variableSet("s", {"x"});
  ZORB_DataSource ds = b.build();
  VariableSet set = VariableSets(ds, PlainVariableSets).front();
  ZORB_Variable const& var = ds.GetVariable(0);
  // An element of some other document serves as the non-null argument.
  TransDictionaryImpl other;
  DocumentPtr otherDoc = freshDocument(other);
  xc::DOMElement* element = rootOf(otherDoc);

  TransDictionaryImpl builder;  // never created a document
  std::string const document = assertionRegex("document_");
  EXPECT_DEATH(builder.addVariables(ds, element), document);
  EXPECT_DEATH(builder.addVariableFormat(var, element), document);
  EXPECT_DEATH(builder.addVariableWriteFormat(var, element), document);
  EXPECT_DEATH(builder.addMissingValues(var, element), document);
  EXPECT_DEATH(builder.addValueLabelSet(var, element), document);
  EXPECT_DEATH(builder.addVariableSets(ds, element), document);
  EXPECT_DEATH(builder.addVariableSet(set, ds, element), document);
  EXPECT_DEATH(builder.addMultipleResponseSets(ds, element), document);
  EXPECT_DEATH(builder.addMultipleResponseSet(set, ds, element), document);
  EXPECT_DEATH(builder.addWeightVariable(ds, element), document);
  EXPECT_DEATH(builder.addAttribute("a", {}, element), document);
  EXPECT_DEATH(builder.addAttributes(DatasourceAttributes()), document);
  EXPECT_DEATH(builder.addVariableAttributes(var, element), document);
  EXPECT_DEATH(builder.addDatasourceAttributes(ds, element), document);
  EXPECT_DEATH(builder.addExtensions(ds, element), document);
  // The element is checked first.
  EXPECT_DEATH(builder.addVariables(ds, nullptr), assertionRegex("domdict"));
}

// "nelems == ext.Length()": a host whose extension record delivers fewer elements than its
// Length() claims ends the process (the model's extensionDeliveringFewer makes such a record).
TEST_F(DictionaryDeathTest, ShortExtensionReadAsserts) {
  DICT_SKIP_DEATH_UNDER_SANITIZERS();
  zorb::DataSourceBuilder b;
  b.extensionDeliveringFewer(3, 4, 8, std::string(4 * 5, '\x01'));
  ZORB_DataSource const ds = b.build();
  EXPECT_DEATH(buildDictionary(ds), assertionRegex("nelems == ext.Length()"));
}

// A whole record of the same size is written without complaint: the check is on the count alone.
TEST_F(DictionaryDeathTest, WholeExtensionReadPasses) {
  zorb::DataSourceBuilder b;
  b.extension(3, 4, 8, std::string(4 * 8, '\x01'));
  ZORB_DataSource const ds = b.build();
  EXPECT_NO_FATAL_FAILURE(buildDictionary(ds));
}

}  // namespace
