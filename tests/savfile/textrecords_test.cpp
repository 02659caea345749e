// The parsers of the text-based extension records (subtypes 5, 7/19, 13, 14, 17/18), well-formed
// and malformed.
#include <gtest/gtest.h>

#include "diagnostics.h"
#include "textrecords.h"

using namespace savfile;

namespace {

class TextRecords : public ::testing::Test {
protected:
  Diagnostics diag{"t.sav"};
};

TEST_F(TextRecords, VariableSetsWithCrLfAndEmptySet) {
  auto sets = parseVariableSets("Demographics= age sex\r\nEmpty= \nLong names= aVeryLongName x\n", 0, diag);
  ASSERT_EQ(sets.size(), 3u);
  EXPECT_EQ(sets[0].name, "Demographics");
  EXPECT_EQ(sets[0].members, (std::vector<std::string>{"age", "sex"}));
  EXPECT_TRUE(sets[1].members.empty());
  EXPECT_EQ(sets[2].name, "Long names");
  EXPECT_TRUE(diag.warnings().empty());
}

TEST_F(TextRecords, VariableSetsMalformedLinesAreWarned) {
  auto sets = parseVariableSets("no equals sign\n= a b\nok= c", 100, diag);
  ASSERT_EQ(sets.size(), 1u);
  EXPECT_EQ(sets[0].members, (std::vector<std::string>{"c"}));
  ASSERT_EQ(diag.warnings().size(), 2u);
  EXPECT_EQ(diag.warnings()[0].offset, 100u);
  EXPECT_NE(diag.warnings()[0].text.find("near offset 0x64"), std::string::npos);
}

TEST_F(TextRecords, MrSetsOfAllForms) {
  std::string text =
      "\n$a=C 10 my mcgroup a b c\n"
      "$b=D2 55 0  g e f d\n"
      "$c=D3 Yes 10 mdgroup #2 h i j\n"
      "$d=E 1 2 34 13 third mdgroup k l m\n"
      "$e=E 11 6 choice 0  n o p\n"
      "$mltnews=D8 1        12 News sources news5 news6\n\n\n";
  auto sets = parseMrSets(text, 0, diag);
  ASSERT_EQ(sets.size(), 6u);
  EXPECT_EQ(sets[0].name, "$a");
  EXPECT_EQ(sets[0].kind, 'C');
  EXPECT_EQ(sets[0].label, "my mcgroup");
  EXPECT_EQ(sets[0].variables, (std::vector<std::string>{"a", "b", "c"}));
  EXPECT_EQ(sets[1].kind, 'D');
  EXPECT_EQ(sets[1].countedValue, "55");
  EXPECT_EQ(sets[1].label, "");
  EXPECT_EQ(sets[1].variables, (std::vector<std::string>{"g", "e", "f", "d"}));
  EXPECT_EQ(sets[2].countedValue, "Yes");
  EXPECT_EQ(sets[2].label, "mdgroup #2");
  EXPECT_EQ(sets[3].kind, 'E');
  EXPECT_EQ(sets[3].labelSource, 1);
  EXPECT_EQ(sets[3].countedValue, "34");
  EXPECT_EQ(sets[3].label, "third mdgroup");
  EXPECT_EQ(sets[4].labelSource, 11);
  EXPECT_EQ(sets[4].countedValue, "choice");
  EXPECT_EQ(sets[4].variables, (std::vector<std::string>{"n", "o", "p"}));
  EXPECT_EQ(sets[5].countedValue, "1");  // padded to 8 by an old writer
  EXPECT_EQ(sets[5].label, "News sources");
  EXPECT_TRUE(diag.warnings().empty());
}

TEST_F(TextRecords, MrSetsWithNoOrOneVariable) {
  auto sets = parseMrSets("$x=C 0 \n$y=C 1 L v1\n", 0, diag);
  ASSERT_EQ(sets.size(), 2u);
  EXPECT_TRUE(sets[0].variables.empty());
  EXPECT_EQ(sets[1].variables.size(), 1u);
}

TEST_F(TextRecords, MalformedMrSetsAreSkippedWithWarnings) {
  std::string text =
      "$noequals C 1 x a\n"
      "nodollar=C 1 x a\n"
      "$badtype=X 1 x a\n"
      "$badsource=E 5 1 1 0  a\n"
      "$nodigits=D x 0  a\n"
      "$truncated=D12\n"
      "$good=C 1 x a b\n"
      "$shortlabel=C 99 abc\n";  // a counted label may span lines, but not the record's end
  auto sets = parseMrSets(text, 0, diag);
  ASSERT_EQ(sets.size(), 1u);
  EXPECT_EQ(sets[0].name, "$good");
  EXPECT_EQ(diag.warnings().size(), 7u);
}

TEST_F(TextRecords, LongNames) {
  auto names = parseLongNames("AGE=Age\tINCOME=householdIncome\tA_B=a_b\t", 0, diag);
  ASSERT_EQ(names.size(), 3u);
  EXPECT_EQ(names[1], (std::pair<std::string, std::string>{"INCOME", "householdIncome"}));
  EXPECT_TRUE(diag.warnings().empty());
}

TEST_F(TextRecords, LongNamesMalformed) {
  auto names = parseLongNames("NOEQUALS\t=empty\tX=\tOK=fine", 0, diag);
  ASSERT_EQ(names.size(), 1u);
  EXPECT_EQ(names[0].second, "fine");
  EXPECT_EQ(diag.warnings().size(), 3u);
}

TEST_F(TextRecords, VeryLongStringsPaddedUnpaddedAndWithoutNul) {
  std::string text = std::string("A258=00258\0\tA2000=02000\0\t", 25) + std::string("VL256=256\0\t", 11) + "X=32767";
  auto strings = parseVeryLongStrings(text, 0, diag);
  ASSERT_EQ(strings.size(), 4u);
  EXPECT_EQ(strings[0].name, "A258");
  EXPECT_EQ(strings[0].width, 258);
  EXPECT_EQ(strings[1].width, 2000);
  EXPECT_EQ(strings[2].width, 256);
  EXPECT_EQ(strings[3].width, 32767);
  EXPECT_TRUE(diag.warnings().empty());
}

TEST_F(TextRecords, VeryLongStringsMalformed) {
  auto strings = parseVeryLongStrings(std::string("A=abc\0\tB=99999\0\tC=0\0\tD\0\t=5\0\tE=300", 33), 0, diag);
  ASSERT_EQ(strings.size(), 1u);
  EXPECT_EQ(strings[0].name, "E");
  EXPECT_EQ(diag.warnings().size(), 5u);
}

TEST_F(TextRecords, DataFileAttributes) {
  auto attributes = parseAttributeSet("$VariableView2('name'\n'type'\n)VersionNumber('1'\n)Quote('it''s (odd)'\n)", 0, diag);
  ASSERT_EQ(attributes.size(), 3u);
  EXPECT_EQ(attributes[0].first, "$VariableView2");
  EXPECT_EQ(attributes[0].second, (std::vector<std::string>{"name", "type"}));
  EXPECT_EQ(attributes[1].second, (std::vector<std::string>{"1"}));
  EXPECT_EQ(attributes[2].second, (std::vector<std::string>{"it''s (odd)"}));
  EXPECT_TRUE(diag.warnings().empty());
}

TEST_F(TextRecords, VariableAttributes) {
  std::string text =
      "AvgIncome:Formula('mean(a, b)'\n)DerivedFrom('Income1'\n'Income2'\n)Notes(''\n)$@Role('0'\n)/"
      "dummy:fred('23'\n'34'\n)bert('123'\n)";
  auto entries = parseVariableAttributes(text, 0, diag);
  ASSERT_EQ(entries.size(), 2u);
  EXPECT_EQ(entries[0].variable, "AvgIncome");
  ASSERT_EQ(entries[0].attributes.size(), 4u);
  EXPECT_EQ(entries[0].attributes[0].second, (std::vector<std::string>{"mean(a, b)"}));
  EXPECT_EQ(entries[0].attributes[2].second, (std::vector<std::string>{""}));
  EXPECT_EQ(entries[0].attributes[3].first, "$@Role");
  EXPECT_EQ(entries[1].attributes[0].second, (std::vector<std::string>{"23", "34"}));
  EXPECT_TRUE(diag.warnings().empty());
}

TEST_F(TextRecords, AttributesMalformed) {
  // No '(' ; value without quotes; unclosed set; slash inside a value does not split.
  auto entries = parseVariableAttributes("a:noparen/b:x(unquoted\n)/c:y('p/q'\n)/d:z('open'\n", 0, diag);
  ASSERT_EQ(entries.size(), 4u);
  EXPECT_TRUE(entries[0].attributes.empty());
  EXPECT_EQ(entries[1].attributes[0].second, (std::vector<std::string>{"unquoted"}));
  EXPECT_EQ(entries[2].attributes[0].second, (std::vector<std::string>{"p/q"}));
  EXPECT_EQ(entries[3].attributes[0].second, (std::vector<std::string>{"open"}));
  EXPECT_GE(diag.warnings().size(), 4u);
  auto none = parseVariableAttributes("no colon at all", 0, diag);
  EXPECT_TRUE(none.empty());
}

TEST_F(TextRecords, ParsersSurviveEveryPrefix) {
  // Every truncation of well-formed text parses without reading past its end.
  std::string texts[] = {"$a=E 11 6 choice 0  n o p\n", "A258=00258\0\tB=3", "x:a('1'\n'2'\n)/y:b('3'\n)",
                         "Set= a b\r\n"};
  for (auto const& t : texts) {
    for (std::size_t n = 0; n <= t.size(); ++n) {
      std::string prefix = t.substr(0, n);
      parseMrSets(prefix, 0, diag);
      parseVeryLongStrings(prefix, 0, diag);
      parseVariableAttributes(prefix, 0, diag);
      parseAttributeSet(prefix, 0, diag);
      parseVariableSets(prefix, 0, diag);
      parseLongNames(prefix, 0, diag);
    }
  }
  SUCCEED();
}

}  // namespace
