// The schema is strict: a document whose sections or children stand out of their order, or that
// uses a word outside an enumeration, is rejected. Each case changes one thing in the valid
// dictionary of the rich survey data source and expects the validator to name what is wrong.
#include "dictionarytestsupport.h"
#include "richdatasources.h"
#include "schemavalidator.h"

namespace {

using schematest::joined;

// The one occurrence of `from` at or after `start` replaced by `to`; fails the test when absent.
std::string replaced(std::string text, std::string const& from, std::string const& to, std::size_t start = 0) {
  std::size_t const at = text.find(from, start);
  if (at == std::string::npos) {
    ADD_FAILURE() << "'" << from << "' is not in the document";
    return text;
  }
  return text.replace(at, from.size(), to);
}

// `element` (a complete element text) moved from where it stands to just before `before`.
std::string moved(std::string const& text, std::string const& element, std::string const& before) {
  return replaced(replaced(text, element, ""), before, element + before);
}

// Moved to be the root's first child.
std::string movedToFront(std::string const& text, std::string const& element) {
  return moved(text, element, "<variable ");
}

struct Breakage {
  char const* name;
  std::string (*apply)(std::string const&);
  char const* named;  // what the validator's message mentions
};

Breakage const breakages[] = {
    // Sections of the root out of their order.
    {"WeightVariableBeforeTheVariables",
     [](std::string const& t) { return movedToFront(t, "<weightVariable name=\"wt\"/>"); }, "weightVariable"},
    {"ValueLabelSetBeforeTheWeightVariable",
     [](std::string const& t) {
       std::size_t const begin = t.find("<valueLabelSet>");
       std::size_t const end = t.find("</valueLabelSet>") + std::string("</valueLabelSet>").size();
       return moved(t, t.substr(begin, end - begin), "<weightVariable");
     },
     "weightVariable"},
    {"VariableSetAfterTheMultipleResponseSets",
     [](std::string const& t) { return moved(t, "<variableSet name=\"Empty set\"/>", "<attributeSet version=\"5\">"); },
     "variableSet"},
    {"ExtensionBeforeTheDataSourceAttributes",
     [](std::string const& t) {
       return moved(t, "<extension data=\"\" elementSize=\"1\" length=\"0\" type=\"12\"/>",
                    "<attributeSet version=\"5\">");
     },
     "attributeSet"},
    {"TwoWeightVariables",
     [](std::string const& t) {
       return replaced(t, "<weightVariable name=\"wt\"/>",
                       "<weightVariable name=\"wt\"/><weightVariable name=\"wt\"/>");
     },
     "weightVariable"},
    // Children of a variable, a value label set and a multiple response set out of their order.
    {"WriteFormatBeforePrintFormat",
     [](std::string const& t) {
       return moved(t, "<variableWriteFormat decimals=\"0\" type=\"F\" width=\"8\"/>",
                    "<variableFormat decimals=\"0\" type=\"F\" width=\"8\"/>");
     },
     "variableFormat"},
    {"MissingValueAfterTheAttributeSet",
     [](std::string const& t) {
       std::string const value = "<missingValue data=\"999999.5\"/>";
       return replaced(replaced(t, value, ""), "</attributeSet></variable>", "</attributeSet>" + value + "</variable>");
     },
     "missingValue"},
    {"ValueLabelVariableBeforeTheLabels",
     [](std::string const& t) { return moved(t, "<valueLabelVariable name=\"sex\"/>", "<valueLabel "); }, "valueLabel"},
    {"LabelBeforeTheCategoryLabels",
     [](std::string const& t) {
       return moved(t, "<multipleResponseSetLabel value=\"Ownership\"/>", "<multipleResponseSetCategoryLabels");
     },
     "multipleResponseSetCategoryLabels"},
    {"MemberBeforeTheLabelSource",
     [](std::string const& t) {
       std::string const member = "<multipleResponseSetVariable name=\"q1\"/>";
       return moved(t, member, "<multipleResponseSetLabelSource");
     },
     "multipleResponseSetLabel"},
    // Words outside an enumeration.
    {"UnknownMeasurementLevel",
     [](std::string const& t) { return replaced(t, "measurementLevel=\"scale\"", "measurementLevel=\"interval\""); },
     "interval"},
    {"UnknownAlignment",
     [](std::string const& t) { return replaced(t, "alignment=\"left\"", "alignment=\"justify\""); }, "justify"},
    {"UnknownFormatType", [](std::string const& t) { return replaced(t, "type=\"DOLLAR\"", "type=\"EURO\""); }, "EURO"},
    {"FormatTypeInLowerCase", [](std::string const& t) { return replaced(t, "type=\"DOLLAR\"", "type=\"dollar\""); },
     "dollar"},
    {"UnknownMissingValueBound",
     [](std::string const& t) { return replaced(t, "type=\"lowerBound\"", "type=\"lower\""); }, "lower"},
    {"UnknownAttributeKind", [](std::string const& t) { return replaced(t, "type=\"system\"", "type=\"custom\""); },
     "custom"},
    {"UnknownCategoryLabelSource",
     [](std::string const& t) { return replaced(t, "value=\"countedValues\"", "value=\"counted\""); }, "counted"},
    {"UnknownLabelSource",
     [](std::string const& t) { return replaced(t, "value=\"variableLabel\"", "value=\"setLabel\""); }, "setLabel"},
    {"UnlistedExtensionType",
     [](std::string const& t) { return replaced(t, "length=\"0\" type=\"12\"", "length=\"0\" type=\"5\""); }, "5"},
    // Other breaks of the vocabulary.
    {"ExtensionDataInLowerCase", [](std::string const& t) { return replaced(t, "data=\"000FFF", "data=\"000fff"); },
     "000fff"},
    {"ExtensionDataOfOddLength", [](std::string const& t) { return replaced(t, "data=\"000FFF", "data=\"000FF"); },
     "000FF"},
    {"UnknownElement",
     [](std::string const& t) { return replaced(t, "<variable ", "<variableKey name=\"id\"/><variable "); },
     "variableKey"},
    {"VariableWithoutName", [](std::string const& t) { return replaced(t, " name=\"id\"", ""); }, "name"},
    {"NegativeRowCount", [](std::string const& t) { return replaced(t, "rowCount=\"1523\"", "rowCount=\"-1\""); },
     "-1"},
    {"WeightVariableNamingNoVariable",
     [](std::string const& t) {
       return replaced(t, "<weightVariable name=\"wt\"/>", "<weightVariable name=\"nosuch\"/>");
     },
     "identity constraint"},
    {"AnotherNamespace",
     [](std::string const& t) {
       return replaced(t, "xmlns=\"http://transspace.example.org/zorb/data\"",
                       "xmlns=\"http://transspace.example.org/other\"");
     },
     "dictionary"},
};

void PrintTo(Breakage const& breakage, std::ostream* out) { *out << breakage.name; }

class SchemaRejects : public dicttest::DictionaryTest, public ::testing::WithParamInterface<Breakage> {};

TEST_P(SchemaRejects, TheBrokenDocument) {
  schematest::SchemaValidator validator;
  std::string const valid = schematest::dictionaryText(dicttest::surveyDataSource());
  ASSERT_TRUE(validator.errors(valid).empty()) << joined(validator.errors(valid));
  std::string const broken = GetParam().apply(valid);
  ASSERT_NE(broken, valid);
  std::vector<std::string> const errors = validator.errors(broken);
  ASSERT_FALSE(errors.empty()) << broken;
  EXPECT_NE(joined(errors).find(GetParam().named), std::string::npos) << joined(errors);
}

INSTANTIATE_TEST_SUITE_P(Dictionary, SchemaRejects, ::testing::ValuesIn(breakages),
                         [](::testing::TestParamInfo<Breakage> const& info) { return std::string(info.param.name); });

}  // namespace
