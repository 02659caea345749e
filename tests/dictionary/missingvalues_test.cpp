// Missing values and value labels.
#include "dictionarytestsupport.h"

#include <cstring>
#include <limits>

using namespace dicttest;
using X = TransXMLChArray;

namespace {

class MissingValuesTest : public DictionaryTest {};

double fromBits(std::uint64_t bits) {
  double value;
  std::memcpy(&value, &bits, sizeof value);
  return value;
}

double const kLowest = fromBits(0xFFEFFFFFFFFFFFFEull);  // -1.7976931348623155e308
double const kHighest = std::numeric_limits<double>::max();
double const kMostNegative = -std::numeric_limits<double>::max();  // not lowest

// Runs addMissingValues for variable 0 of `b` on a fresh variable element holding its two formats.
struct MissingRun {
  int count;
  std::vector<xc::DOMElement*> values;
  std::vector<std::string> names;
};

class MissingFixture : public MissingValuesTest {
protected:
  MissingRun run(zorb::DataSourceBuilder& b) {
    ds_ = b.build();
    doc_ = freshDocument(builder_);
    xc::DOMElement* var = doc_->createElement(X::variable_s);
    builder_.addVariableFormat(ds_.GetVariable(0), var);
    builder_.addVariableWriteFormat(ds_.GetVariable(0), var);
    MissingRun result;
    result.count = builder_.addMissingValues(ds_.GetVariable(0), var);
    result.values = children(var, "missingValue");
    result.names = childNames(var);
    return result;
  }
  ZORB_DataSource ds_;
  TransDictionaryImpl builder_;
  DocumentPtr doc_;
};

TEST_F(MissingFixture, NoMissingValuesAddsNothingAndReturnsZero) {
  zorb::DataSourceBuilder b;
  b.addVariable("x");
  MissingRun r = run(b);
  EXPECT_EQ(r.count, 0);
  EXPECT_EQ(r.names, (std::vector<std::string>{"variableFormat", "variableWriteFormat"}));
}

TEST_F(MissingFixture, DiscreteValuesHaveDataAndNoType) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingValues({-9, 2.5, 1234567.891});
  MissingRun r = run(b);
  EXPECT_EQ(r.count, 3);
  ASSERT_EQ(r.values.size(), 3u);
  EXPECT_EQ(attr(r.values[0], "data"), "-9");
  EXPECT_EQ(attr(r.values[1], "data"), "2.5");
  EXPECT_EQ(attr(r.values[2], "data"), "1234567.891");
  for (xc::DOMElement* value : r.values) EXPECT_FALSE(hasAttr(value, "type"));
  EXPECT_EQ(r.names, (std::vector<std::string>{"variableFormat", "variableWriteFormat", "missingValue", "missingValue",
                                               "missingValue"}));
}

TEST_F(MissingFixture, RangeReturnsANegativeCountAndTypesTheBounds) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingRange(-9, -1);
  MissingRun r = run(b);
  EXPECT_EQ(r.count, -2);
  ASSERT_EQ(r.values.size(), 2u);
  EXPECT_EQ(attr(r.values[0], "data"), "-9");
  EXPECT_EQ(attr(r.values[0], "type"), "lowerBound");
  EXPECT_EQ(attr(r.values[1], "data"), "-1");
  EXPECT_EQ(attr(r.values[1], "type"), "upperBound");
}

TEST_F(MissingFixture, RangePlusDiscreteWritesThreeTheThirdWithoutType) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingRange(90, 99, 0.125);
  MissingRun r = run(b);
  EXPECT_EQ(r.count, -3);
  ASSERT_EQ(r.values.size(), 3u);
  EXPECT_EQ(attr(r.values[0], "type"), "lowerBound");
  EXPECT_EQ(attr(r.values[1], "type"), "upperBound");
  EXPECT_EQ(attr(r.values[2], "data"), "0.125");
  EXPECT_FALSE(hasAttr(r.values[2], "type"));
  EXPECT_EQ(r.values[2]->getAttributes()->getLength(), 1u);
}

TEST_F(MissingFixture, LowestAndHighestAreWrittenAsWords) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingRange(kLowest, kHighest);
  MissingRun r = run(b);
  ASSERT_EQ(r.values.size(), 2u);
  EXPECT_EQ(attr(r.values[0], "data"), "lowest");
  EXPECT_EQ(attr(r.values[0], "type"), "lowerBound");
  EXPECT_EQ(attr(r.values[1], "data"), "highest");
  EXPECT_EQ(attr(r.values[1], "type"), "upperBound");
}

TEST_F(MissingFixture, LowestThroughAValueAndValueThroughHighest) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingRange(kLowest, 0, kHighest);
  MissingRun r = run(b);
  ASSERT_EQ(r.values.size(), 3u);
  EXPECT_EQ(attr(r.values[0], "data"), "lowest");
  EXPECT_EQ(attr(r.values[1], "data"), "0");
  EXPECT_EQ(attr(r.values[2], "data"), "highest");  // also as a discrete value
  EXPECT_FALSE(hasAttr(r.values[2], "type"));
}

TEST_F(MissingFixture, TheMostNegativeFiniteDoubleIsNotLowest) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingValues({kMostNegative});
  MissingRun r = run(b);
  ASSERT_EQ(r.values.size(), 1u);
  std::string data = attr(r.values[0], "data");
  EXPECT_NE(data, "lowest");
  // Formatted as a number, written out in full: a minus sign and 309 digits.
  EXPECT_EQ(data.substr(0, 18), "-17976931348623157");
  EXPECT_EQ(data.size(), 310u);
}

TEST_F(MissingFixture, StringValueIsCutAtTheFirstBlank) {
  zorb::DataSourceBuilder b;
  b.addVariable("s").string(8).missingStrings({"ab cd", "x", " lead"});
  MissingRun r = run(b);
  EXPECT_EQ(r.count, 3);
  ASSERT_EQ(r.values.size(), 3u);
  EXPECT_EQ(attr(r.values[0], "data"), "ab");
  EXPECT_EQ(attr(r.values[1], "data"), "x");  // the padding blanks go too
  EXPECT_TRUE(hasAttr(r.values[2], "data"));
  EXPECT_EQ(attr(r.values[2], "data"), "");  // a leading blank leaves nothing
}

TEST_F(MissingFixture, StringValueIsCutToEightBytes) {
  zorb::DataSourceBuilder b;
  b.addVariable("s").string(12).missingStrings({"abcdefghijkl", "abcdefgh"});
  MissingRun r = run(b);
  ASSERT_EQ(r.values.size(), 2u);
  EXPECT_EQ(attr(r.values[0], "data"), "abcdefgh");
  EXPECT_EQ(attr(r.values[1], "data"), "abcdefgh");
}

TEST_F(MissingFixture, StringValuesHaveNoRangeTypes) {
  zorb::DataSourceBuilder b;
  b.addVariable("s").string(3).missingStrings({"a"});
  MissingRun r = run(b);
  ASSERT_EQ(r.values.size(), 1u);
  EXPECT_EQ(attr(r.values[0], "data"), "a");
  EXPECT_FALSE(hasAttr(r.values[0], "type"));
}

TEST_F(MissingFixture, MissingValuesGoAfterExistingOnesThenAfterTheFormats) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingValues({1, 2});
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  // Without formats: before the first child.
  xc::DOMElement* bare = doc->createElement(X::variable_s);
  bare->appendChild(doc->createElement(X::attributeSet_s));
  EXPECT_EQ(builder.addMissingValues(ds.GetVariable(0), bare), 2);
  EXPECT_EQ(childNames(bare), (std::vector<std::string>{"missingValue", "missingValue", "attributeSet"}));
  // With only a variableFormat: after it; called again: after the last missingValue.
  xc::DOMElement* var = doc->createElement(X::variable_s);
  builder.addVariableFormat(ds.GetVariable(0), var);
  var->appendChild(doc->createElement(X::attributeSet_s));
  builder.addMissingValues(ds.GetVariable(0), var);
  builder.addMissingValues(ds.GetVariable(0), var);
  EXPECT_EQ(childNames(var), (std::vector<std::string>{"variableFormat", "missingValue", "missingValue", "missingValue",
                                                       "missingValue", "attributeSet"}));
}

// ---- value label sets ----

class ValueLabelsTest : public DictionaryTest {};

TEST_F(ValueLabelsTest, NoLabelsAddsNoSetAndReturnsZero) {
  zorb::DataSourceBuilder b;
  b.addVariable("x");
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  EXPECT_EQ(builder.addValueLabelSet(ds.GetVariable(0), rootOf(doc)), 0u);
  EXPECT_EQ(rootOf(doc)->getFirstChild(), nullptr);
}

TEST_F(ValueLabelsTest, NumericLabelsThenTheVariable) {
  zorb::DataSourceBuilder b;
  b.addVariable("x")
      .valueLabel(1, "one")
      .valueLabel(2.5, "two and a half")
      .valueLabel(-3, "")
      .valueLabel(kLowest, "lo");
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  EXPECT_EQ(builder.addValueLabelSet(ds.GetVariable(0), rootOf(doc)), 1u);
  std::vector<xc::DOMElement*> sets = children(rootOf(doc), "valueLabelSet");
  ASSERT_EQ(sets.size(), 1u);
  EXPECT_EQ(sets[0]->getAttributes()->getLength(), 0u);
  EXPECT_EQ(childNames(sets[0]),
            (std::vector<std::string>{"valueLabel", "valueLabel", "valueLabel", "valueLabel", "valueLabelVariable"}));
  std::vector<xc::DOMElement*> labels = children(sets[0], "valueLabel");
  EXPECT_EQ(attr(labels[0], "value"), "1");
  EXPECT_EQ(attr(labels[0], "label"), "one");
  EXPECT_EQ(attr(labels[1], "value"), "2.5");
  EXPECT_EQ(attr(labels[1], "label"), "two and a half");
  EXPECT_EQ(attr(labels[2], "value"), "-3");
  EXPECT_TRUE(hasAttr(labels[2], "label"));
  EXPECT_EQ(attr(labels[2], "label"), "");
  // No special words in value labels: lowest is a number here.
  EXPECT_EQ(attr(labels[3], "value").substr(0, 18), "-17976931348623155");
  xc::DOMElement* owner = child(sets[0], "valueLabelVariable");
  EXPECT_EQ(attr(owner, "name"), "x");
  EXPECT_EQ(owner->getAttributes()->getLength(), 1u);
  EXPECT_EQ(sets[0]->getLastChild(), owner);
}

// Highest is a word only among missing values: as a value label's value it is a number, the
// largest finite double written out in full (309 digits).
TEST_F(ValueLabelsTest, HighestIsANumberAsAValueLabelValue) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").valueLabel(kHighest, "top");
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  ASSERT_EQ(builder.addValueLabelSet(ds.GetVariable(0), rootOf(doc)), 1u);
  xc::DOMElement* label = child(child(rootOf(doc), "valueLabelSet"), "valueLabel");
  ASSERT_NE(label, nullptr);
  std::string value = attr(label, "value");
  EXPECT_NE(value, "highest");
  EXPECT_EQ(value.substr(0, 17), "17976931348623157");
  EXPECT_EQ(value.size(), 309u);
  EXPECT_EQ(value.find_first_not_of("0123456789"), std::string::npos);
  EXPECT_EQ(attr(label, "label"), "top");
}

TEST_F(ValueLabelsTest, StringValuesAreCutAtTheFirstBlankWithoutEightByteLimit) {
  zorb::DataSourceBuilder b;
  b.addVariable("s")
      .string(16)
      .valueLabel("abcdefghijk", "long")
      .valueLabel("ab cd", "inner blank")
      .valueLabel("z", "z");
  DocumentPtr doc = buildDictionary(b.build());
  xc::DOMElement* set = child(doc->getDocumentElement(), "valueLabelSet");
  std::vector<xc::DOMElement*> labels = children(set, "valueLabel");
  ASSERT_EQ(labels.size(), 3u);
  EXPECT_EQ(attr(labels[0], "value"), "abcdefghijk");
  EXPECT_EQ(attr(labels[0], "label"), "long");
  EXPECT_EQ(attr(labels[1], "value"), "ab");
  EXPECT_EQ(attr(labels[2], "value"), "z");
}

TEST_F(ValueLabelsTest, OneSetPerLabelledVariableNeverShared) {
  zorb::DataSourceBuilder b;
  b.addVariable("a").valueLabel(1, "yes");
  b.addVariable("b").valueLabel(1, "yes");
  DocumentPtr doc = buildDictionary(b.build());
  std::vector<xc::DOMElement*> sets = children(doc->getDocumentElement(), "valueLabelSet");
  ASSERT_EQ(sets.size(), 2u);
  EXPECT_EQ(children(sets[0], "valueLabelVariable").size(), 1u);
  EXPECT_EQ(attr(child(sets[0], "valueLabelVariable"), "name"), "a");
  EXPECT_EQ(attr(child(sets[1], "valueLabelVariable"), "name"), "b");
}

TEST_F(ValueLabelsTest, FirstSetLandsAfterTheWeightVariable) {
  zorb::DataSourceBuilder b;
  b.addVariable("w");
  b.addVariable("x");
  b.weightVariable(0);
  ZORB_DataSource unlabelled = b.build();
  b.variable("x").valueLabel(1, "one");
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* root = rootOf(doc);
  // The variables without their value label sets, then the weight, then the labels.
  builder.addVariables(unlabelled, root);
  builder.addWeightVariable(ds, root);
  EXPECT_EQ(builder.addValueLabelSet(ds.GetVariable(1), root), 1u);
  EXPECT_EQ(childNames(root), (std::vector<std::string>{"variable", "variable", "weightVariable", "valueLabelSet"}));
  // And in a whole dictionary, where addVariables adds the set before the weight exists.
  DocumentPtr whole = buildDictionary(ds);
  EXPECT_EQ(childNames(whole->getDocumentElement()),
            (std::vector<std::string>{"variable", "variable", "weightVariable", "valueLabelSet"}));
}

TEST_F(ValueLabelsTest, FirstSetLandsAfterTheLastVariableWithoutWeight) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").valueLabel(1, "one");
  b.addVariable("y");
  b.attribute("a", {"b"});
  DocumentPtr doc = buildDictionary(b.build());
  EXPECT_EQ(childNames(doc->getDocumentElement()),
            (std::vector<std::string>{"variable", "variable", "valueLabelSet", "attributeSet"}));
}

TEST_F(ValueLabelsTest, WithNothingElseTheSetGoesBeforeTheFirstChild) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").valueLabel(1, "one");
  ZORB_DataSource ds = b.build();
  TransDictionaryImpl builder;
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* root = rootOf(doc);
  root->appendChild(doc->createElement(X::extension_s));
  builder.addValueLabelSet(ds.GetVariable(0), root);
  EXPECT_EQ(childNames(root), (std::vector<std::string>{"valueLabelSet", "extension"}));
}

}  // namespace
