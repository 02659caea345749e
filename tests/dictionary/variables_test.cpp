// Variables and formats.
#include "dictionarytestsupport.h"

#include <utility>

using namespace dicttest;
using X = TransXMLChArray;

namespace {

class VariablesTest : public DictionaryTest {};

TEST_F(VariablesTest, NoColumnsWritesNothingAndReturnsZero) {
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  EXPECT_EQ(builder.addVariables(ZORB_DataSource(), rootOf(doc)), 0u);
  EXPECT_EQ(rootOf(doc)->getFirstChild(), nullptr);
}

TEST_F(VariablesTest, ReturnsTheNumberOfVariablesWritten) {
  zorb::DataSourceBuilder b;
  b.addVariable("a");
  b.addVariable("b");
  b.addVariable("c");
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  EXPECT_EQ(builder.addVariables(b.build(), rootOf(doc)), 3u);
  EXPECT_EQ(children(rootOf(doc), "variable").size(), 3u);
}

TEST_F(VariablesTest, AttributesOfAVariable) {
  zorb::DataSourceBuilder b;
  b.addVariable("age").label("Age in years").alignment(2).measurementLevel(3).displayWidth(10);
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* var = child(doc->getDocumentElement(), "variable");
  ASSERT_NE(var, nullptr);
  EXPECT_EQ(attr(var, "name"), "age");
  EXPECT_EQ(attr(var, "label"), "Age in years");
  EXPECT_EQ(attr(var, "type"), "0");
  EXPECT_EQ(attr(var, "alignment"), "center");
  EXPECT_EQ(attr(var, "measurementLevel"), "scale");
  EXPECT_EQ(attr(var, "displayWidth"), "10");
  EXPECT_EQ(var->getAttributes()->getLength(), 6u);
}

TEST_F(VariablesTest, StringVariableTypeIsItsWidth) {
  zorb::DataSourceBuilder b;
  b.addVariable("city").string(24);
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* var = child(doc->getDocumentElement(), "variable");
  EXPECT_EQ(attr(var, "type"), "24");
  EXPECT_EQ(attr(child(var, "variableFormat"), "type"), "A");
  EXPECT_EQ(attr(child(var, "variableFormat"), "width"), "24");
}

TEST_F(VariablesTest, LabelAbsentVersusEmpty) {
  zorb::DataSourceBuilder b;
  b.addVariable("nolabel");
  b.addVariable("emptylabel").label("");
  DocumentPtr doc = buildDictionary(b.build());
  std::vector<xc::DOMElement*> vars = children(doc->getDocumentElement(), "variable");
  ASSERT_EQ(vars.size(), 2u);
  EXPECT_FALSE(hasAttr(vars[0], "label"));
  EXPECT_EQ(vars[0]->getAttributes()->getLength(), 5u);
  EXPECT_TRUE(hasAttr(vars[1], "label"));
  EXPECT_EQ(attr(vars[1], "label"), "");
  EXPECT_NE(serialize(vars[1]).find("label=\"\""), std::string::npos);
}

TEST_F(VariablesTest, NonAsciiTextsAreConvertedFromTheHostEncoding) {
  zorb::DataSourceBuilder b;
  b.addVariable(
       "gr\xC3\xB6\xC3\x9F"
       "e")
      .label(
          "Gr\xC3\xB6\xC3\x9F"
          "e in \xE2\x82\xAC & <cm>");
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* var = child(doc->getDocumentElement(), "variable");
  EXPECT_EQ(attr(var, "name"),
            "gr\xC3\xB6\xC3\x9F"
            "e");
  EXPECT_EQ(attr(var, "label"),
            "Gr\xC3\xB6\xC3\x9F"
            "e in \xE2\x82\xAC & <cm>");
  EXPECT_NE(serialize(var).find("label=\"Gr\xC3\xB6\xC3\x9F"
                                "e in \xE2\x82\xAC &amp; &lt;cm>\""),
            std::string::npos);
}

TEST_F(VariablesTest, AlignmentAndMeasurementLevelNames) {
  std::pair<int, char const*> const alignments[] = {{0, "left"}, {1, "right"}, {2, "center"}};
  std::pair<int, char const*> const levels[] = {{0, "unknown"}, {1, "nominal"}, {2, "ordinal"}, {3, "scale"}};
  zorb::DataSourceBuilder b;
  int n = 0;
  for (auto const& a : alignments) {
    for (auto const& l : levels) b.addVariable("v" + std::to_string(n++)).alignment(a.first).measurementLevel(l.first);
  }
  DocumentPtr doc = buildDictionary(b.build());
  std::vector<xc::DOMElement*> vars = children(doc->getDocumentElement(), "variable");
  ASSERT_EQ(vars.size(), 12u);
  n = 0;
  for (auto const& a : alignments) {
    for (auto const& l : levels) {
      EXPECT_EQ(attr(vars[n], "alignment"), a.second);
      EXPECT_EQ(attr(vars[n], "measurementLevel"), l.second);
      ++n;
    }
  }
}

TEST_F(VariablesTest, FormatF82) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").printFormat(5, 8, 2).writeFormat(5, 8, 2);
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* format = child(child(doc->getDocumentElement(), "variable"), "variableFormat");
  ASSERT_NE(format, nullptr);
  EXPECT_EQ(attr(format, "type"), "F");
  EXPECT_EQ(attr(format, "width"), "8");
  EXPECT_EQ(attr(format, "decimals"), "2");
  EXPECT_EQ(format->getAttributes()->getLength(), 3u);
}

TEST_F(VariablesTest, PrintAndWriteFormatsAreSeparate) {
  zorb::DataSourceBuilder b;
  b.addVariable("d").printFormat(20, 11, 0).writeFormat(22, 20, 3);
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* var = child(doc->getDocumentElement(), "variable");
  EXPECT_EQ(attr(child(var, "variableFormat"), "type"), "DATE");
  EXPECT_EQ(attr(child(var, "variableFormat"), "width"), "11");
  EXPECT_EQ(attr(child(var, "variableFormat"), "decimals"), "0");
  EXPECT_EQ(attr(child(var, "variableWriteFormat"), "type"), "DATETIME");
  EXPECT_EQ(attr(child(var, "variableWriteFormat"), "width"), "20");
  EXPECT_EQ(attr(child(var, "variableWriteFormat"), "decimals"), "3");
}

// The whole table of format codes.
std::vector<std::pair<int, std::string>> const kFormatTable = {
    {1, "A"},      {2, "AHEX"},     {3, "COMMA"},  {4, "DOLLAR"},    {5, "F"},      {6, "IB"},       {7, "IBHEX"},
    {8, "P"},      {9, "PIB"},      {10, "PK"},    {11, "RB"},       {12, "RBHEX"}, {15, "Z"},       {16, "N"},
    {17, "E"},     {20, "DATE"},    {21, "TIME"},  {22, "DATETIME"}, {23, "ADATE"}, {24, "JDATE"},   {25, "DTIME"},
    {26, "WKDAY"}, {27, "MONTH"},   {28, "MOYR"},  {29, "QYR"},      {30, "WKYR"},  {31, "PERCENT"}, {32, "DOT"},
    {33, "CCA"},   {34, "CCB"},     {35, "CCC"},   {36, "CCD"},      {37, "CCE"},   {38, "EDATE"},   {39, "SDATE"},
    {40, "G"},     {41, "LNUMBER"}, {42, "LDATE"}, {43, "LTIME"},    {44, "LCA"},   {45, "LCB"},     {46, "LCC"},
    {47, "LCD"},   {48, "LCE"},     {49, "LCF"},   {50, "LCG"},      {51, "LCH"},   {52, "LCI"},     {53, "LCJ"},
    {85, "MTIME"}, {86, "YMDHMS"}};

TEST_F(VariablesTest, EveryFormatCodeOfTheTableHasItsName) {
  ASSERT_EQ(kFormatTable.size(), 51u);
  zorb::DataSourceBuilder b;
  for (std::size_t i = 0; i < kFormatTable.size(); ++i) {
    // The write format takes the code's neighbour in the table, so both elements are exercised and
    // a print/write mix-up shows.
    int next = kFormatTable[(i + 1) % kFormatTable.size()].first;
    b.addVariable("f" + std::to_string(kFormatTable[i].first))
        .printFormat(kFormatTable[i].first, 7, 1)
        .writeFormat(next, 9, 3);
  }
  DocumentPtr doc = buildDictionary(b.build());
  std::vector<xc::DOMElement*> vars = children(doc->getDocumentElement(), "variable");
  ASSERT_EQ(vars.size(), kFormatTable.size());
  for (std::size_t i = 0; i < vars.size(); ++i) {
    SCOPED_TRACE(kFormatTable[i].second);
    EXPECT_EQ(attr(child(vars[i], "variableFormat"), "type"), kFormatTable[i].second);
    EXPECT_EQ(attr(child(vars[i], "variableFormat"), "width"), "7");
    EXPECT_EQ(attr(child(vars[i], "variableFormat"), "decimals"), "1");
    EXPECT_EQ(attr(child(vars[i], "variableWriteFormat"), "type"), kFormatTable[(i + 1) % kFormatTable.size()].second);
    EXPECT_EQ(attr(child(vars[i], "variableWriteFormat"), "width"), "9");
    EXPECT_EQ(attr(child(vars[i], "variableWriteFormat"), "decimals"), "3");
  }
}

TEST_F(VariablesTest, SetFormatAttributesWritesTheThreeAttributesAndIsTrue) {
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* element = doc->createElement(X::variableFormat_s);
  EXPECT_TRUE(builder.setFormatAttributes(element, 86, -3, 40));
  EXPECT_EQ(attr(element, "type"), "YMDHMS");
  EXPECT_EQ(attr(element, "width"), "-3");
  EXPECT_EQ(attr(element, "decimals"), "40");
}

TEST_F(VariablesTest, NegativeDisplayWidthKeepsItsSign) {
  zorb::DataSourceBuilder b;
  b.addVariable("w").displayWidth(-5);
  b.addVariable("m").displayWidth(-32768);
  DocumentPtr doc = buildDictionary(b.build());
  std::vector<xc::DOMElement*> vars = children(doc->getDocumentElement(), "variable");
  EXPECT_EQ(attr(vars[0], "displayWidth"), "-5");
  EXPECT_EQ(attr(vars[1], "displayWidth"), "-32768");
}

TEST_F(VariablesTest, ThreeVariablesInColumnOrderThenTheirValueLabelSets) {
  zorb::DataSourceBuilder b;
  b.addVariable("first").valueLabel(1, "one");
  b.addVariable("second");
  b.addVariable("third").valueLabel(3, "three");
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* root = doc->getDocumentElement();
  EXPECT_EQ(childNames(root),
            (std::vector<std::string>{"variable", "variable", "variable", "valueLabelSet", "valueLabelSet"}));
  std::vector<xc::DOMElement*> vars = children(root, "variable");
  EXPECT_EQ(attr(vars[0], "name"), "first");
  EXPECT_EQ(attr(vars[1], "name"), "second");
  EXPECT_EQ(attr(vars[2], "name"), "third");
  std::vector<xc::DOMElement*> sets = children(root, "valueLabelSet");
  EXPECT_EQ(attr(child(sets[0], "valueLabelVariable"), "name"), "first");
  EXPECT_EQ(attr(child(sets[1], "valueLabelVariable"), "name"), "third");
}

TEST_F(VariablesTest, ChildrenOfAVariableInTheirOrder) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingValues({1, 2}).attribute("note", {"n"});
  b.addVariable("y").attribute("note", {"n"});
  b.addVariable("z").missingValues({9});
  b.addVariable("plain");
  DocumentPtr doc = buildDictionary(b.build());
  std::vector<xc::DOMElement*> vars = children(doc->getDocumentElement(), "variable");
  EXPECT_EQ(childNames(vars[0]), (std::vector<std::string>{"variableFormat", "variableWriteFormat", "missingValue",
                                                           "missingValue", "attributeSet"}));
  EXPECT_EQ(childNames(vars[1]), (std::vector<std::string>{"variableFormat", "variableWriteFormat", "attributeSet"}));
  EXPECT_EQ(childNames(vars[2]), (std::vector<std::string>{"variableFormat", "variableWriteFormat", "missingValue"}));
  EXPECT_EQ(childNames(vars[3]), (std::vector<std::string>{"variableFormat", "variableWriteFormat"}));
}

TEST_F(VariablesTest, FormatBuildersPlaceTheirElementsInAVariable) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").printFormat(1, 4, 0).writeFormat(2, 8, 0);
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* var = doc->createElement(X::variable_s);
  // The write format first: without a variableFormat it goes before the first child.
  var->appendChild(doc->createElement(X::missingValue_s));
  EXPECT_TRUE(builder.addVariableWriteFormat(ds.GetVariable(0), var));
  EXPECT_EQ(childNames(var), (std::vector<std::string>{"variableWriteFormat", "missingValue"}));
  // The print format always goes first.
  EXPECT_TRUE(builder.addVariableFormat(ds.GetVariable(0), var));
  EXPECT_EQ(childNames(var), (std::vector<std::string>{"variableFormat", "variableWriteFormat", "missingValue"}));
  // A second write format goes directly after the variableFormat.
  EXPECT_TRUE(builder.addVariableWriteFormat(ds.GetVariable(0), var));
  EXPECT_EQ(childNames(var),
            (std::vector<std::string>{"variableFormat", "variableWriteFormat", "variableWriteFormat", "missingValue"}));
  EXPECT_EQ(attr(child(var, "variableFormat"), "type"), "A");
  EXPECT_EQ(attr(child(var, "variableWriteFormat"), "type"), "AHEX");
}

}  // namespace
