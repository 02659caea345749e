// Variable sets and multiple response sets.
#include "dictionarytestsupport.h"

using namespace dicttest;
using X = TransXMLChArray;

namespace {

class SetsTest : public DictionaryTest {
protected:
  static void addVariables(zorb::DataSourceBuilder& b) {
    b.addVariable("q1");
    b.addVariable("q2");
    b.addVariable("Q3");
  }
};

TEST_F(SetsTest, NoSetsAddNoElementsAndBothBuildersReturnZero) {
  zorb::DataSourceBuilder b;
  addVariables(b);
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  EXPECT_EQ(builder.addVariableSets(ds, rootOf(doc)), 0u);
  EXPECT_EQ(builder.addMultipleResponseSets(ds, rootOf(doc)), 0u);
  EXPECT_EQ(rootOf(doc)->getFirstChild(), nullptr);
}

TEST_F(SetsTest, PlainSetWithItsMembers) {
  zorb::DataSourceBuilder b;
  addVariables(b);
  b.variableSet("Demographics", {"q1", "Q3"});
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* set = child(doc->getDocumentElement(), "variableSet");
  ASSERT_NE(set, nullptr);
  EXPECT_EQ(attr(set, "name"), "Demographics");
  EXPECT_EQ(set->getAttributes()->getLength(), 1u);
  std::vector<xc::DOMElement*> members = children(set, "variableSetVariable");
  ASSERT_EQ(members.size(), 2u);
  EXPECT_EQ(attr(members[0], "name"), "q1");
  EXPECT_EQ(attr(members[1], "name"), "Q3");
  EXPECT_EQ(childNames(set).size(), 2u);
}

TEST_F(SetsTest, MembersAreSpelledAsTheDataSourceSpellsThem) {
  zorb::DataSourceBuilder b;
  addVariables(b);
  b.variableSet("s", {"Q1", "q3"});
  DocumentPtr doc = buildDictionary(b.build());
  std::vector<xc::DOMElement*> members =
      children(child(doc->getDocumentElement(), "variableSet"), "variableSetVariable");
  ASSERT_EQ(members.size(), 2u);
  EXPECT_EQ(attr(members[0], "name"), "q1");
  EXPECT_EQ(attr(members[1], "name"), "Q3");
}

TEST_F(SetsTest, MissingMembersAreLeftOutTheSetIsStillCounted) {
  zorb::DataSourceBuilder b;
  addVariables(b);
  b.variableSet("partly", {"q1", "deleted", "q2"});
  b.variableSet("gone", {"deleted", "also_deleted"});
  b.variableSet("none", {});
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  std::vector<VariableSet> sets = VariableSets(ds, PlainVariableSets);
  ASSERT_EQ(sets.size(), 3u);
  EXPECT_EQ(builder.addVariableSet(sets[0], ds, rootOf(doc)), 2u);
  EXPECT_EQ(builder.addVariableSet(sets[1], ds, rootOf(doc)), 0u);
  DocumentPtr doc2 = freshDocument(builder);
  EXPECT_EQ(builder.addVariableSets(ds, rootOf(doc2)), 3u);
  std::vector<xc::DOMElement*> written = children(rootOf(doc2), "variableSet");
  ASSERT_EQ(written.size(), 3u);
  EXPECT_EQ(childNames(written[0]), (std::vector<std::string>{"variableSetVariable", "variableSetVariable"}));
  EXPECT_EQ(attr(child(written[0], "variableSetVariable", 1), "name"), "q2");
  EXPECT_EQ(written[1]->getFirstChild(), nullptr);  // written even without members
  EXPECT_EQ(written[2]->getFirstChild(), nullptr);
}

TEST_F(SetsTest, CategorySetHasNeitherCategoryLabelsNorDichotomy) {
  zorb::DataSourceBuilder b;
  addVariables(b);
  b.categorySet("$cats", "Categories", {"q1", "q2"});
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* set = child(doc->getDocumentElement(), "multipleResponseSet");
  ASSERT_NE(set, nullptr);
  EXPECT_EQ(attr(set, "name"), "$cats");
  EXPECT_EQ(childNames(set), (std::vector<std::string>{"multipleResponseSetLabel", "multipleResponseSetVariable",
                                                       "multipleResponseSetVariable"}));
  EXPECT_EQ(attr(child(set, "multipleResponseSetLabel"), "value"), "Categories");
}

TEST_F(SetsTest, DichotomySetWithCountedValueAndCategoryLabels) {
  zorb::DataSourceBuilder b;
  addVariables(b);
  b.dichotomySet("$dich", "Owned", "1", true, {"q1", "q2", "Q3"});
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* set = child(doc->getDocumentElement(), "multipleResponseSet");
  EXPECT_EQ(childNames(set),
            (std::vector<std::string>{"multipleResponseSetCategoryLabels", "multipleResponseSetDichotomy",
                                      "multipleResponseSetLabel", "multipleResponseSetVariable",
                                      "multipleResponseSetVariable", "multipleResponseSetVariable"}));
  EXPECT_EQ(attr(child(set, "multipleResponseSetCategoryLabels"), "value"), "countedValues");
  EXPECT_EQ(attr(child(set, "multipleResponseSetDichotomy"), "value"), "1");
  EXPECT_EQ(attr(child(set, "multipleResponseSetLabel"), "value"), "Owned");
}

TEST_F(SetsTest, DichotomySetWithEmptyCountedValueHasNoDichotomy) {
  zorb::DataSourceBuilder b;
  addVariables(b);
  b.dichotomySet("$dich", "", "", false, {"q1"});
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* set = child(doc->getDocumentElement(), "multipleResponseSet");
  EXPECT_EQ(childNames(set),
            (std::vector<std::string>{"multipleResponseSetCategoryLabels", "multipleResponseSetVariable"}));
  EXPECT_EQ(attr(child(set, "multipleResponseSetCategoryLabels"), "value"), "variableLabels");
}

TEST_F(SetsTest, LabelSetByVariableGivesALabelSourceAndNoLabel) {
  zorb::DataSourceBuilder b;
  addVariables(b);
  b.categorySet("$bylabel", "ignored label", {"q2"}, true);
  b.dichotomySet("$dbylabel", "ignored", "Y", false, {}, true);
  DocumentPtr doc = buildDictionary(b.build());
  std::vector<xc::DOMElement*> sets = children(doc->getDocumentElement(), "multipleResponseSet");
  ASSERT_EQ(sets.size(), 2u);
  EXPECT_EQ(childNames(sets[0]),
            (std::vector<std::string>{"multipleResponseSetLabelSource", "multipleResponseSetVariable"}));
  EXPECT_EQ(attr(child(sets[0], "multipleResponseSetLabelSource"), "value"), "variableLabel");
  EXPECT_EQ(childNames(sets[1]),
            (std::vector<std::string>{"multipleResponseSetCategoryLabels", "multipleResponseSetDichotomy",
                                      "multipleResponseSetLabelSource"}));
}

TEST_F(SetsTest, EmptyLabelGivesNeitherLabelNorSource) {
  zorb::DataSourceBuilder b;
  addVariables(b);
  b.categorySet("$nolabel", "", {"q1"});
  DocumentPtr doc = buildDictionary(b.build());
  EXPECT_EQ(childNames(child(doc->getDocumentElement(), "multipleResponseSet")),
            (std::vector<std::string>{"multipleResponseSetVariable"}));
}

TEST_F(SetsTest, ResponseSetReturnsTheMembersWrittenAndOnlyType2IsDichotomy) {
  zorb::DataSourceBuilder b;
  addVariables(b);
  b.addMultipleResponseSet("$seven", 7)
      .label("Type seven")
      .countedValue("1")
      .useCategoryLabels(true)
      .members({"q1", "nope", "q2"});
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  std::vector<VariableSet> sets = VariableSets(ds, MultipleResponseSets);
  ASSERT_EQ(sets.size(), 1u);
  EXPECT_EQ(builder.addMultipleResponseSet(sets[0], ds, rootOf(doc)), 2u);
  xc::DOMElement* set = child(rootOf(doc), "multipleResponseSet");
  EXPECT_EQ(childNames(set), (std::vector<std::string>{"multipleResponseSetLabel", "multipleResponseSetVariable",
                                                       "multipleResponseSetVariable"}));
  DocumentPtr doc2 = freshDocument(builder);
  EXPECT_EQ(builder.addMultipleResponseSets(ds, rootOf(doc2)), 1u);
}

TEST_F(SetsTest, FirstVariableSetLandsAfterTheLastValueLabelSet) {
  zorb::DataSourceBuilder b;
  b.addVariable("w");
  b.addVariable("x").valueLabel(1, "one");
  b.addVariable("y").valueLabel(2, "two");
  b.weightVariable("w");
  b.variableSet("vs1", {"x"});
  b.variableSet("vs2", {"y"});
  b.categorySet("$mr", "", {"x", "y"});
  DocumentPtr doc = buildDictionary(b.build());
  EXPECT_EQ(childNames(doc->getDocumentElement()),
            (std::vector<std::string>{"variable", "variable", "variable", "weightVariable", "valueLabelSet",
                                      "valueLabelSet", "variableSet", "variableSet", "multipleResponseSet"}));
}

TEST_F(SetsTest, FirstResponseSetLandsAfterTheLastValueLabelSetWithoutPlainSets) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").valueLabel(1, "one");
  b.addVariable("y").valueLabel(2, "two");
  b.weightVariable("y");
  b.categorySet("$mr1", "", {"x"});
  b.categorySet("$mr2", "", {"y"});
  DocumentPtr doc = buildDictionary(b.build());
  EXPECT_EQ(childNames(doc->getDocumentElement()),
            (std::vector<std::string>{"variable", "variable", "weightVariable", "valueLabelSet", "valueLabelSet",
                                      "multipleResponseSet", "multipleResponseSet"}));
  std::vector<xc::DOMElement*> sets = children(doc->getDocumentElement(), "multipleResponseSet");
  EXPECT_EQ(attr(sets[0], "name"), "$mr1");
  EXPECT_EQ(attr(sets[1], "name"), "$mr2");
}

TEST_F(SetsTest, SetsAloneGoBeforeTheFirstChild) {
  zorb::DataSourceBuilder b;
  b.variableSet("only", {"nothing"});
  b.categorySet("$only", "L", {});
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* root = rootOf(doc);
  root->appendChild(doc->createElement(X::extension_s));
  builder.addMultipleResponseSets(ds, root);
  builder.addVariableSets(ds, root);
  EXPECT_EQ(childNames(root), (std::vector<std::string>{"variableSet", "multipleResponseSet", "extension"}));
}

}  // namespace
