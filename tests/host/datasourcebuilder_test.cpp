// The builder: its defaults, the rules it enforces, and the odd values it must let through.
#include <transspace/zorb/datasourcebuilder.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Format {
  int type, width, decimals;
  bool operator==(Format const& o) const { return type == o.type && width == o.width && decimals == o.decimals; }
};

std::ostream& operator<<(std::ostream& out, Format const& f) {
  return out << f.type << '/' << f.width << '.' << f.decimals;
}

Format printFormat(ZORB_Variable const& var) {
  Format f{};
  var.GetFormatEx(f.type, f.width, f.decimals);
  return f;
}

Format writeFormat(ZORB_Variable const& var) {
  Format f{};
  var.GetWriteFormatEx(f.type, f.width, f.decimals);
  return f;
}

int missingCount(ZORB_Variable const& var) {
  OBS const *a, *b, *c;
  return var.GetMissingValues(a, b, c);
}

std::vector<std::pair<double, std::string>> numericLabels(ZORB_Variable const& var) {
  ZORB_ValueLabelMap map(var.GetValueLabels());
  std::vector<std::pair<double, std::string>> pairs;
  double value;
  char const* label;
  map.Reset();
  while (map.GetNextPair(value, label)) pairs.emplace_back(value, label);
  return pairs;
}

std::vector<std::pair<std::string, std::string>> textLabels(ZORB_Variable const& var) {
  ZORB_ValueLabelMap map(var.GetValueLabels());
  std::vector<std::pair<std::string, std::string>> pairs;
  std::string value;
  char const* label;
  map.Reset();
  while (map.GetNextPair(value, label)) pairs.emplace_back(value, label);
  return pairs;
}

// ---- defaults ----

TEST(HostDataSourceBuilder, NewDataSourceHasSaneDefaults) {
  zorb::DataSourceBuilder b;
  ZORB_DataSource const& ds = b.dataSource();
  EXPECT_EQ(ds.ColumnCount(), 0);
  EXPECT_EQ(ds.GetWeightVarIndex(), -1);
  EXPECT_EQ(ds.GetTimestamp(), 0.0);
  EXPECT_EQ(ds.RowCount(), -1);
  EXPECT_EQ(ds.GetAttributes().version, 0);
}

TEST(HostDataSourceBuilder, NumericVariableDefaults) {
  zorb::DataSourceBuilder b;
  b.addVariable("x");
  ZORB_Variable const& var = b.dataSource().GetVariable(0);
  EXPECT_EQ(var.GetType(), 0);
  EXPECT_EQ(var.GetLabel(), nullptr);
  EXPECT_EQ(var.GetAlignment(), 1);
  EXPECT_EQ(var.GetMeasurementLevel(), 0);
  EXPECT_EQ(var.GetDisplayWidth(), 8);
  EXPECT_EQ(printFormat(var), (Format{5, 8, 2}));
  EXPECT_EQ(writeFormat(var), (Format{5, 8, 2}));
  EXPECT_EQ(missingCount(var), 0);
  EXPECT_EQ(ZORB_ValueLabelMap(var.GetValueLabels()).Size(), 0u);
  EXPECT_EQ(var.GetAttributes().Size(), 0u);
}

TEST(HostDataSourceBuilder, StringVariableDefaultsToAOfItsWidth) {
  zorb::DataSourceBuilder b;
  b.addVariable("s").string(20);
  ZORB_Variable const& var = b.dataSource().GetVariable(0);
  EXPECT_EQ(var.GetType(), 20);
  EXPECT_EQ(printFormat(var), (Format{1, 20, 0}));
  EXPECT_EQ(writeFormat(var), (Format{1, 20, 0}));
}

TEST(HostDataSourceBuilder, DefaultFormatFollowsTheKindUntilSetExplicitly) {
  zorb::DataSourceBuilder b;
  b.addVariable("a").string(4).numeric();
  b.addVariable("b").printFormat(2, 8, 0).string(4);  // AHEX8 chosen before the width
  b.addVariable("c").format(20, 11, 0);
  ZORB_DataSource const& ds = b.dataSource();
  EXPECT_EQ(printFormat(ds.GetVariable(0)), (Format{5, 8, 2}));
  EXPECT_EQ(printFormat(ds.GetVariable(1)), (Format{2, 8, 0}));
  EXPECT_EQ(writeFormat(ds.GetVariable(1)), (Format{1, 4, 0}));
  EXPECT_EQ(printFormat(ds.GetVariable(2)), (Format{20, 11, 0}));
  EXPECT_EQ(writeFormat(ds.GetVariable(2)), (Format{20, 11, 0}));
}

// ---- values the builder must let through ----

TEST(HostDataSourceBuilder, KeepsCodesTheLibraryRejects) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").printFormat(13, 8, 2).writeFormat(-1, 0, -4).alignment(7).measurementLevel(9).displayWidth(-5);
  ZORB_Variable const& var = b.dataSource().GetVariable(0);
  EXPECT_EQ(printFormat(var), (Format{13, 8, 2}));
  EXPECT_EQ(writeFormat(var), (Format{-1, 0, -4}));
  EXPECT_EQ(var.GetAlignment(), 7);
  EXPECT_EQ(var.GetMeasurementLevel(), 9);
  EXPECT_EQ(var.GetDisplayWidth(), -5);
}

TEST(HostDataSourceBuilder, LabelCanBeEmptyOrRemoved) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").label("").label("Age").noLabel();
  b.addVariable("y").label("");
  EXPECT_EQ(b.dataSource().GetVariable(0).GetLabel(), nullptr);
  EXPECT_STREQ(b.dataSource().GetVariable(1).GetLabel(), "");
}

TEST(HostDataSourceBuilder, SetMembersNeedNotExist) {
  zorb::DataSourceBuilder b;
  b.addVariable("a");
  b.variableSet("s", {"a", "gone"});
  EXPECT_EQ(VariableSets(b.dataSource(), PlainVariableSets).at(0).GetVariableNames(VariableSet::AsStored),
            (std::vector<std::string>{"a", "gone"}));
}

TEST(HostDataSourceBuilder, RowCountAndTimestampTakeAnyValue) {
  zorb::DataSourceBuilder b;
  b.rowCount(-7).timestamp(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(b.dataSource().RowCount(), -7);
  EXPECT_TRUE(std::isnan(b.dataSource().GetTimestamp()));
  b.rowCount(0);
  EXPECT_EQ(b.dataSource().RowCount(), 0);
}

TEST(HostDataSourceBuilder, MultipleResponseSetFieldByField) {
  zorb::DataSourceBuilder b;
  b.addMultipleResponseSet("$odd", 7).label("L").countedValue("yes").member("x").members({"y", "z"});
  b.dichotomySet("$d", "", "", false, {"x"}, true);
  std::vector<VariableSet> sets = VariableSets(b.dataSource(), MultipleResponseSets);
  ASSERT_EQ(sets.size(), 2u);
  EXPECT_EQ(sets[0].GetType(), 7);
  EXPECT_EQ(sets[0].GetValue(), "yes");
  EXPECT_EQ(sets[0].GetVariableNames(VariableSet::AsStored), (std::vector<std::string>{"x", "y", "z"}));
  EXPECT_EQ(sets[1].GetType(), 2);
  EXPECT_EQ(sets[1].GetValue(), "");
  EXPECT_EQ(sets[1].GetLabel(), "");
  EXPECT_FALSE(sets[1].qUseVariableCategoryLabels());
  EXPECT_TRUE(sets[1].qLabelSetByVariable());
}

TEST(HostDataSourceBuilder, SetHandlesSurviveLaterSets) {
  zorb::DataSourceBuilder b;
  zorb::VariableSetBuilder& first = b.addVariableSet("first");
  for (int i = 0; i < 50; ++i) b.variableSet("s" + std::to_string(i), {});
  first.member("late").name("renamed");
  EXPECT_EQ(first.set().GetName(VariableSet::AsStored), "renamed");
  EXPECT_EQ(VariableSets(b.dataSource(), PlainVariableSets).at(0).GetVariableNames(VariableSet::AsStored),
            std::vector<std::string>{"late"});
}

// ---- variable names ----

TEST(HostDataSourceBuilder, DuplicateNamesAreRefusedWithoutRegardToAsciiCase) {
  zorb::DataSourceBuilder b;
  b.addVariable("Age");
  EXPECT_THROW(b.addVariable("AGE"), std::invalid_argument);
  EXPECT_EQ(b.variableCount(), 1);
}

TEST(HostDataSourceBuilder, RenameUpdatesTheLookup) {
  zorb::DataSourceBuilder b;
  b.addVariable("V1");
  b.addVariable("V2");
  b.variable(0).name("household_income");
  ZORB_DataSource const& ds = b.dataSource();
  EXPECT_STREQ(ds.GetVariable(0).GetName(), "household_income");
  EXPECT_EQ(ds.FindVarIndex("V1", 0), -1);
  EXPECT_EQ(ds.FindVarIndex("HOUSEHOLD_INCOME", 0), 0);
  EXPECT_THROW(b.variable(0).name("v2"), std::invalid_argument);
  b.variable(1).name("v2");  // a new spelling of its own name is fine
  EXPECT_STREQ(ds.GetVariable(1).GetName(), "v2");
  EXPECT_EQ(ds.FindVarIndex("V2", 0), 1);
  b.addVariable("V1");  // the old name is free again
  EXPECT_EQ(ds.FindVarIndex("v1", 0), 2);
}

TEST(HostDataSourceBuilder, VariableHandlesSurviveLaterVariables) {
  zorb::DataSourceBuilder b;
  zorb::VariableBuilder& first = b.addVariable("first");
  for (int i = 0; i < 100; ++i) b.addVariable("v" + std::to_string(i));
  first.label("still here");
  EXPECT_EQ(first.index(), 0);
  EXPECT_STREQ(b.dataSource().GetVariable(0).GetLabel(), "still here");
  EXPECT_EQ(&b.variable("FIRST"), &first);
  EXPECT_EQ(b.findVariable("v99"), 100);
  EXPECT_EQ(b.findVariable("nope"), -1);
  EXPECT_THROW(b.variable(101), std::out_of_range);
  EXPECT_THROW(b.variable("nope"), std::out_of_range);
}

// ---- type, missing values, value labels ----

TEST(HostDataSourceBuilder, StringWidthMustBePositive) {
  zorb::DataSourceBuilder b;
  EXPECT_THROW(b.addVariable("s").string(0), std::invalid_argument);
  EXPECT_THROW(b.variable("s").string(-8), std::invalid_argument);
  EXPECT_EQ(b.dataSource().GetVariable(0).GetType(), 0);
}

TEST(HostDataSourceBuilder, KindIsFixedOnceMissingValuesOrLabelsExist) {
  zorb::DataSourceBuilder b;
  b.addVariable("n").missingValues({1});
  b.addVariable("s").string(8).valueLabel("a", "A");
  EXPECT_THROW(b.variable("n").string(8), std::logic_error);
  EXPECT_THROW(b.variable("s").string(9), std::logic_error);
  EXPECT_THROW(b.variable("s").numeric(), std::logic_error);
  b.variable("s").string(8);  // the same width changes nothing
  b.variable("n").noMissingValues().string(3);
  EXPECT_EQ(b.dataSource().GetVariable(0).GetType(), 3);
}

TEST(HostDataSourceBuilder, MissingValuesMustMatchTheKind) {
  zorb::DataSourceBuilder b;
  b.addVariable("n");
  b.addVariable("s").string(4);
  EXPECT_THROW(b.variable("n").missingStrings({"a"}), std::logic_error);
  EXPECT_THROW(b.variable("s").missingValues({1}), std::logic_error);
  EXPECT_THROW(b.variable("s").missingRange(1, 2), std::logic_error);
  EXPECT_THROW(b.variable("s").missingRange(1, 2, 3), std::logic_error);
  EXPECT_THROW(b.variable("n").valueLabel("a", "A"), std::logic_error);
  EXPECT_THROW(b.variable("s").valueLabel(1, "one"), std::logic_error);
}

TEST(HostDataSourceBuilder, AtMostThreeMissingValuesNoneWiderThanTheVariable) {
  zorb::DataSourceBuilder b;
  b.addVariable("n").missingValues({9});
  b.addVariable("s").string(4).missingStrings({"x"});
  EXPECT_THROW(b.variable("n").missingValues({1, 2, 3, 4}), std::invalid_argument);
  EXPECT_THROW(b.variable("s").missingStrings({"a", "b", "c", "d"}), std::invalid_argument);
  EXPECT_THROW(b.variable("s").missingStrings({"abcde"}), std::invalid_argument);
  // A refused call leaves the earlier values in place.
  EXPECT_EQ(missingCount(b.dataSource().GetVariable(0)), 1);
  EXPECT_EQ(missingCount(b.dataSource().GetVariable(1)), 1);
}

TEST(HostDataSourceBuilder, EachMissingValueCallReplacesTheLast) {
  zorb::DataSourceBuilder b;
  zorb::VariableBuilder& v = b.addVariable("n");
  v.missingValues({1, 2, 3});
  EXPECT_EQ(missingCount(v.variable()), 3);
  v.missingRange(1, 5);
  EXPECT_EQ(missingCount(v.variable()), -2);
  v.missingValues({});
  EXPECT_EQ(missingCount(v.variable()), 0);
  v.missingRange(0, 1, 2).noMissingValues();
  EXPECT_EQ(missingCount(v.variable()), 0);
}

TEST(HostDataSourceBuilder, RepeatedValueLabelKeepsItsPlace) {
  zorb::DataSourceBuilder b;
  b.addVariable("n").valueLabel(1, "one").valueLabel(2, "two").valueLabel(1, "uno");
  EXPECT_EQ(numericLabels(b.dataSource().GetVariable(0)),
            (std::vector<std::pair<double, std::string>>{{1, "uno"}, {2, "two"}}));
}

TEST(HostDataSourceBuilder, NumericLabelValuesAreMatchedBitForBit) {
  double nan = std::numeric_limits<double>::quiet_NaN();
  zorb::DataSourceBuilder b;
  b.addVariable("n").valueLabel(0.0, "zero").valueLabel(-0.0, "minus zero").valueLabel(nan, "a").valueLabel(nan, "b");
  auto labels = numericLabels(b.dataSource().GetVariable(0));
  ASSERT_EQ(labels.size(), 3u);
  EXPECT_FALSE(std::signbit(labels[0].first));
  EXPECT_TRUE(std::signbit(labels[1].first));
  EXPECT_TRUE(std::isnan(labels[2].first));
  EXPECT_EQ(labels[2].second, "b");
}

TEST(HostDataSourceBuilder, StringLabelValuesArePaddedAndMatchedPadded) {
  zorb::DataSourceBuilder b;
  b.addVariable("s").string(5).valueLabel("ab", "first").valueLabel("ab   ", "again").valueLabel("", "blank");
  EXPECT_EQ(textLabels(b.dataSource().GetVariable(0)),
            (std::vector<std::pair<std::string, std::string>>{{"ab   ", "again"}, {"     ", "blank"}}));
  EXPECT_THROW(b.variable("s").valueLabel("abcdef", "too wide"), std::invalid_argument);
}

TEST(HostDataSourceBuilder, BuiltCopiesDoNotSeeLaterLabels) {
  zorb::DataSourceBuilder b;
  b.addVariable("n").valueLabel(1, "one");
  ZORB_DataSource before = b.build();
  b.variable(0).valueLabel(1, "changed").valueLabel(2, "two");
  EXPECT_EQ(numericLabels(before.GetVariable(0)), (std::vector<std::pair<double, std::string>>{{1, "one"}}));
  EXPECT_EQ(numericLabels(b.dataSource().GetVariable(0)),
            (std::vector<std::pair<double, std::string>>{{1, "changed"}, {2, "two"}}));
}

TEST(HostDataSourceBuilder, AttributesMergeByName) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").attribute("a", {"1"}).attribute("a", {"2"}).attribute("b", {});
  DatasourceAttributes const& attributes = b.dataSource().GetVariable(0).GetAttributes();
  ASSERT_EQ(attributes.Size(), 2u);
  EXPECT_EQ(attributes.Values(0), (std::vector<std::string>{"1", "2"}));
}

// ---- data source settings ----

TEST(HostDataSourceBuilder, WeightMustNameAVariable) {
  zorb::DataSourceBuilder b;
  EXPECT_THROW(b.weightVariable(0), std::out_of_range);
  b.addVariable("w");
  EXPECT_THROW(b.weightVariable(1), std::out_of_range);
  EXPECT_THROW(b.weightVariable("x"), std::out_of_range);
  b.weightVariable("W");
  EXPECT_EQ(b.dataSource().GetWeightVarIndex(), 0);
  b.weightVariable(-3);
  EXPECT_EQ(b.dataSource().GetWeightVarIndex(), -1);
  b.weightVariable(0).noWeight();
  EXPECT_EQ(b.dataSource().GetWeightVarIndex(), -1);
}

TEST(HostDataSourceBuilder, ExtensionBytesMustFillWholeElements) {
  zorb::DataSourceBuilder b;
  EXPECT_THROW(b.extension(3, 4, std::string(6, 'x')), std::invalid_argument);
  EXPECT_THROW(b.extension(3, 0, std::string(4, 'x')), std::invalid_argument);
  EXPECT_THROW(b.extension(3, -1, std::string()), std::invalid_argument);
  EXPECT_THROW(b.extension(3, 4, std::int64_t{3}, std::string(8, 'x')), std::invalid_argument);
  EXPECT_THROW(b.extension(3, 4, std::int64_t{-1}, std::string()), std::invalid_argument);
  EXPECT_THROW(b.extension(3, 0, std::int64_t{2}, std::string(1, 'x')), std::invalid_argument);
  EXPECT_FALSE(b.dataSource().HasExtension(3));
  b.extension(3, 4, std::int64_t{2}, std::string(8, 'x'));
  EXPECT_EQ(ZORB_DataSource::Extension(b.dataSource(), 3).Length(), 2);
}

TEST(HostDataSourceBuilder, AShortRecordMustReallyBeShortOfWholeElements) {
  zorb::DataSourceBuilder b;
  EXPECT_THROW(b.extensionDeliveringFewer(3, 4, 2, std::string(8, 'x')), std::invalid_argument);  // whole
  EXPECT_THROW(b.extensionDeliveringFewer(3, 4, 2, std::string(6, 'x')), std::invalid_argument);  // partial element
  EXPECT_THROW(b.extensionDeliveringFewer(3, 0, 2, std::string()), std::invalid_argument);
  EXPECT_FALSE(b.dataSource().HasExtension(3));
  b.extensionDeliveringFewer(3, 4, 2, std::string(4, 'x'));
  EXPECT_EQ(ZORB_DataSource::Extension(b.dataSource(), 3).Length(), 2);
}

TEST(HostDataSourceBuilder, ExtensionOfAnyTypeCanBeReplacedAndRemoved) {
  zorb::DataSourceBuilder b;
  b.extension(13, 1, "abc").extension(13, 2, "abcd").extension(-4, 1, "z");
  ZORB_DataSource::Extension ext(b.dataSource(), 13);
  EXPECT_EQ(ext.ElementSize(), 2);
  EXPECT_EQ(ext.Length(), 2);
  EXPECT_TRUE(b.dataSource().HasExtension(-4));
  b.removeExtension(13);
  EXPECT_FALSE(b.dataSource().HasExtension(13));
}

TEST(HostDataSourceBuilder, DataSourceAttributesAndVersion) {
  zorb::DataSourceBuilder b;
  b.attribute("$sys", {"x"}).attribute("", {}).attributesVersion(1);
  DatasourceAttributes const& attributes = b.dataSource().GetAttributes();
  ASSERT_EQ(attributes.Size(), 2u);
  EXPECT_EQ(attributes.Name(1), "");
  EXPECT_EQ(attributes.version, 1);
}

}  // namespace
