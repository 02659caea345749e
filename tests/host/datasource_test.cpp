// The model's operations as the library calls them, on data sources made with the builder.
#include <transspace/zorb/datasource.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include <transspace/zorb/datasourcebuilder.h>

namespace {

// All bytes of `count` consecutive OBS, the unused tail of the last one included.
std::string obsBytes(OBS const* values, std::size_t count) {
  return std::string(reinterpret_cast<char const*>(values), count * sizeof(OBS));
}

// ---- ZORB_Variable ----

TEST(HostZorbVariable, ReportsWhatWasStored) {
  zorb::DataSourceBuilder b;
  b.addVariable("city").string(12).label("City").alignment(2).measurementLevel(1).displayWidth(-3);
  ZORB_Variable const& var = b.dataSource().GetVariable(0);
  EXPECT_STREQ(var.GetName(), "city");
  EXPECT_STREQ(var.GetLabel(), "City");
  EXPECT_EQ(var.GetType(), 12);
  EXPECT_EQ(var.GetAlignment(), 2);
  EXPECT_EQ(var.GetMeasurementLevel(), 1);
  EXPECT_EQ(var.GetDisplayWidth(), -3);
}

TEST(HostZorbVariable, LabelAbsentIsNullAndEmptyLabelIsEmptyText) {
  zorb::DataSourceBuilder b;
  b.addVariable("none");
  b.addVariable("empty").label("");
  ASSERT_EQ(b.dataSource().GetVariable(0).GetLabel(), nullptr);
  ASSERT_NE(b.dataSource().GetVariable(1).GetLabel(), nullptr);
  EXPECT_STREQ(b.dataSource().GetVariable(1).GetLabel(), "");
}

TEST(HostZorbVariable, PrintAndWriteFormatsAreSeparate) {
  zorb::DataSourceBuilder b;
  b.addVariable("d").printFormat(20, 11, 0).writeFormat(22, 20, 3);
  ZORB_Variable const& var = b.dataSource().GetVariable(0);
  ZORB_Variable::FormatType type = -1;
  int width = -1, decimals = -1;
  var.GetFormatEx(type, width, decimals);
  EXPECT_EQ(type, 20);
  EXPECT_EQ(width, 11);
  EXPECT_EQ(decimals, 0);
  var.GetWriteFormatEx(type, width, decimals);
  EXPECT_EQ(type, 22);
  EXPECT_EQ(width, 20);
  EXPECT_EQ(decimals, 3);
}

// Sets the three pointers to a non-null sentinel first, so a test sees which ones were nulled.
struct Missing {
  OBS sentinel{};
  OBS const* p[3] = {&sentinel, &sentinel, &sentinel};
  int count = 99;
  explicit Missing(ZORB_Variable const& var) { count = var.GetMissingValues(p[0], p[1], p[2]); }
};

TEST(HostZorbVariable, NoMissingValuesGiveZeroAndNullPointers) {
  zorb::DataSourceBuilder b;
  b.addVariable("x");
  Missing m(b.dataSource().GetVariable(0));
  EXPECT_EQ(m.count, 0);
  EXPECT_EQ(m.p[0], nullptr);
  EXPECT_EQ(m.p[1], nullptr);
  EXPECT_EQ(m.p[2], nullptr);
}

TEST(HostZorbVariable, DiscreteMissingValuesFillOnlyTheirPointers) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingValues({7, -9});
  Missing m(b.dataSource().GetVariable(0));
  ASSERT_EQ(m.count, 2);
  ASSERT_NE(m.p[0], nullptr);
  ASSERT_NE(m.p[1], nullptr);
  EXPECT_EQ(m.p[0]->f, 7.0);
  EXPECT_EQ(m.p[1]->f, -9.0);
  EXPECT_EQ(m.p[2], nullptr);
}

TEST(HostZorbVariable, ThreeDiscreteMissingValues) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingValues({1, 2, 3});
  Missing m(b.dataSource().GetVariable(0));
  ASSERT_EQ(m.count, 3);
  EXPECT_EQ(m.p[0]->f, 1.0);
  EXPECT_EQ(m.p[1]->f, 2.0);
  EXPECT_EQ(m.p[2]->f, 3.0);
}

TEST(HostZorbVariable, RangeIsNegativeTwo) {
  double lowest = -std::numeric_limits<double>::max();
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingRange(lowest, -1);
  Missing m(b.dataSource().GetVariable(0));
  ASSERT_EQ(m.count, -2);
  EXPECT_EQ(m.p[0]->f, lowest);
  EXPECT_EQ(m.p[1]->f, -1.0);
  EXPECT_EQ(m.p[2], nullptr);
}

TEST(HostZorbVariable, RangeWithDiscreteValueIsNegativeThree) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingRange(90, 99, -1);
  Missing m(b.dataSource().GetVariable(0));
  ASSERT_EQ(m.count, -3);
  EXPECT_EQ(m.p[0]->f, 90.0);
  EXPECT_EQ(m.p[1]->f, 99.0);
  EXPECT_EQ(m.p[2]->f, -1.0);
}

TEST(HostZorbVariable, StringMissingValuesAreBlankPaddedAcrossConsecutiveObs) {
  zorb::DataSourceBuilder b;
  b.addVariable("s").string(12).missingStrings({"ab cd", "abcdefghijkl"});
  Missing m(b.dataSource().GetVariable(0));
  ASSERT_EQ(m.count, 2);
  // A width of 12 needs two OBS per value; the library reads the first 12 bytes.
  EXPECT_EQ(std::string(m.p[0]->s, 12), "ab cd       ");
  EXPECT_EQ(std::string(m.p[1]->s, 12), "abcdefghijkl");
  EXPECT_EQ(obsBytes(m.p[1], 2), "abcdefghijkl    ");
  EXPECT_EQ(m.p[2], nullptr);
}

TEST(HostZorbVariable, MissingValuePointersFollowACopyOfTheVariable) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").missingValues({5});
  ZORB_DataSource copy = b.build();
  Missing original(b.dataSource().GetVariable(0));
  Missing copied(copy.GetVariable(0));
  EXPECT_NE(original.p[0], copied.p[0]);
  EXPECT_EQ(copied.p[0]->f, 5.0);
}

// ---- ZORB_ValueLabelMap ----

TEST(HostValueLabelMap, IteratesNumericPairsInOrderAndResets) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").valueLabel(2, "two").valueLabel(1, "one").valueLabel(-0.5, "");
  ZORB_ValueLabelMap map(b.dataSource().GetVariable(0).GetValueLabels());
  EXPECT_EQ(map.Size(), 3u);
  std::vector<std::pair<double, std::string>> seen;
  double value = 0;
  char const* label = nullptr;
  map.Reset();
  while (map.GetNextPair(value, label)) seen.emplace_back(value, label);
  EXPECT_EQ(seen, (std::vector<std::pair<double, std::string>>{{2, "two"}, {1, "one"}, {-0.5, ""}}));
  EXPECT_FALSE(map.GetNextPair(value, label));
  map.Reset();
  ASSERT_TRUE(map.GetNextPair(value, label));
  EXPECT_EQ(value, 2.0);
  EXPECT_STREQ(label, "two");
}

TEST(HostValueLabelMap, IteratesStringPairsWithPaddedValues) {
  zorb::DataSourceBuilder b;
  b.addVariable("s").string(6).valueLabel("ab", "first").valueLabel("abcdef", "second");
  ZORB_ValueLabelMap map(b.dataSource().GetVariable(0).GetValueLabels());
  EXPECT_EQ(map.Size(), 2u);
  std::string value;
  char const* label = nullptr;
  map.Reset();
  ASSERT_TRUE(map.GetNextPair(value, label));
  EXPECT_EQ(value, "ab    ");
  EXPECT_STREQ(label, "first");
  ASSERT_TRUE(map.GetNextPair(value, label));
  EXPECT_EQ(value, "abcdef");
  EXPECT_STREQ(label, "second");
  EXPECT_FALSE(map.GetNextPair(value, label));
  // A string variable has no numeric pairs.
  double number = 0;
  map.Reset();
  EXPECT_FALSE(map.GetNextPair(number, label));
}

TEST(HostValueLabelMap, EmptyAndNullMapsHaveNoPairs) {
  zorb::DataSourceBuilder b;
  b.addVariable("x");
  ZORB_ValueLabelMap empty(b.dataSource().GetVariable(0).GetValueLabels());
  ZORB_ValueLabelMap null(nullptr);
  double value = 0;
  char const* label = nullptr;
  EXPECT_EQ(empty.Size(), 0u);
  EXPECT_EQ(null.Size(), 0u);
  null.Reset();
  EXPECT_FALSE(empty.GetNextPair(value, label));
  EXPECT_FALSE(null.GetNextPair(value, label));
}

TEST(HostValueLabelMap, LabelPointerOutlivesTheBuilderAndLaterChanges) {
  ZORB_VLImplPointer labels;
  {
    zorb::DataSourceBuilder b;
    zorb::VariableBuilder& v = b.addVariable("x").valueLabel(1, "one");
    labels = b.dataSource().GetVariable(0).GetValueLabels();
    v.valueLabel(1, "changed").valueLabel(2, "two");
  }
  ZORB_ValueLabelMap map(labels);
  double value = 0;
  char const* label = nullptr;
  EXPECT_EQ(map.Size(), 1u);
  ASSERT_TRUE(map.GetNextPair(value, label));
  EXPECT_STREQ(label, "one");
}

// ---- ZORB_DataSource ----

TEST(HostZorbDataSource, EmptyDataSource) {
  ZORB_DataSource ds;
  EXPECT_EQ(ds.ColumnCount(), 0);
  EXPECT_LT(ds.GetWeightVarIndex(), 0);
  EXPECT_EQ(ds.GetTimestamp(), 0.0);
  EXPECT_LT(ds.RowCount(), 0);
  EXPECT_EQ(ds.GetAttributes().Size(), 0u);
  EXPECT_EQ(ds.FindVarIndex("x", 0), -1);
  EXPECT_TRUE(VariableSets(ds, PlainVariableSets).empty());
  EXPECT_TRUE(VariableSets(ds, MultipleResponseSets).empty());
  for (int type = 0; type <= 16; ++type) EXPECT_FALSE(ds.HasExtension(type));
}

TEST(HostZorbDataSource, GetVariableChecksTheIndex) {
  zorb::DataSourceBuilder b;
  b.addVariable("a");
  b.addVariable("b");
  ZORB_DataSource const& ds = b.dataSource();
  EXPECT_EQ(ds.ColumnCount(), 2);
  EXPECT_STREQ(ds.GetVariable(1).GetName(), "b");
  EXPECT_THROW(ds.GetVariable(2), std::out_of_range);
  EXPECT_THROW(ds.GetVariable(-1), std::out_of_range);
}

TEST(HostZorbDataSource, FindVarIndexIgnoresAsciiCaseOnly) {
  zorb::DataSourceBuilder b;
  b.addVariable("Age");
  b.addVariable("\xC3\xA4rger");  // "ärger" in UTF-8
  b.addVariable("Q1_a");
  ZORB_DataSource const& ds = b.dataSource();
  EXPECT_EQ(ds.FindVarIndex("Age", 0), 0);
  EXPECT_EQ(ds.FindVarIndex("AGE", 0), 0);
  EXPECT_EQ(ds.FindVarIndex("age", 0), 0);
  EXPECT_EQ(ds.FindVarIndex("q1_A", 0), 2);
  EXPECT_EQ(ds.FindVarIndex("\xC3\xA4RGER", 0), 1);
  EXPECT_EQ(ds.FindVarIndex("\xC3\x84RGER", 0), -1);  // "Ä" is not folded: the host folds ASCII only
}

TEST(HostZorbDataSource, FindVarIndexIsAnExactMatch) {
  zorb::DataSourceBuilder b;
  b.addVariable("age");
  ZORB_DataSource const& ds = b.dataSource();
  EXPECT_EQ(ds.FindVarIndex("ag", 0), -1);
  EXPECT_EQ(ds.FindVarIndex("ages", 0), -1);
  EXPECT_EQ(ds.FindVarIndex("age ", 0), -1);
  EXPECT_EQ(ds.FindVarIndex("", 0), -1);
  EXPECT_EQ(ds.FindVarIndex(nullptr, 0), -1);
}

TEST(HostZorbDataSource, WeightTimestampAndRowCount) {
  zorb::DataSourceBuilder b;
  b.addVariable("a");
  b.addVariable("w");
  b.weightVariable("W").timestamp(1795241020.5).rowCount(0);
  ZORB_DataSource const& ds = b.dataSource();
  EXPECT_EQ(ds.GetWeightVarIndex(), 1);
  EXPECT_EQ(ds.GetTimestamp(), 1795241020.5);
  EXPECT_EQ(ds.RowCount(), 0);
}

// A host whose data source learns its row count elsewhere: RowCount is virtual.
class CountingDataSource : public ZORB_DataSource {
public:
  std::int64_t RowCount() const override { return -42; }
};

TEST(HostZorbDataSource, RowCountIsVirtual) {
  zorb::DataSourceBuilder b;
  b.addVariable("a");
  b.rowCount(10);
  CountingDataSource ds;
  b.buildInto(ds);
  ZORB_DataSource const& base = ds;
  EXPECT_EQ(base.RowCount(), -42);
  EXPECT_EQ(base.ColumnCount(), 1);
}

TEST(HostZorbDataSource, CopiesAreIndependent) {
  zorb::DataSourceBuilder b;
  b.addVariable("a").label("first");
  ZORB_DataSource copy = b.build();
  b.variable(0).label("second");
  b.addVariable("b");
  EXPECT_STREQ(copy.GetVariable(0).GetLabel(), "first");
  EXPECT_EQ(copy.ColumnCount(), 1);
  EXPECT_EQ(copy.FindVarIndex("b", 0), -1);
  EXPECT_EQ(b.dataSource().FindVarIndex("b", 0), 1);
}

// ---- DatasourceAttributes ----

TEST(HostDatasourceAttributes, AddKeepsOrderAndMergesTheSameName) {
  DatasourceAttributes attributes;
  attributes.Add("b", {"1"});
  attributes.Add("$a", {});
  attributes.Add("b", {"2", "3"});
  attributes.Add("B", {"other"});  // names are compared exactly
  ASSERT_EQ(attributes.Size(), 3u);
  EXPECT_EQ(attributes.Name(0), "b");
  EXPECT_EQ(attributes.Values(0), (std::vector<std::string>{"1", "2", "3"}));
  EXPECT_EQ(attributes.Name(1), "$a");
  EXPECT_TRUE(attributes.Values(1).empty());
  EXPECT_EQ(attributes.Name(2), "B");
  EXPECT_EQ(attributes.Values(2), std::vector<std::string>{"other"});
  EXPECT_THROW(attributes.Name(3), std::out_of_range);
  EXPECT_EQ(attributes.version, 0);
}

TEST(HostDatasourceAttributes, CopyKeepsEntriesVersionAndMerging) {
  DatasourceAttributes attributes;
  attributes.Add("x", {"1"});
  attributes.version = 3;
  DatasourceAttributes copy(attributes);
  copy.Add("x", {"2"});
  EXPECT_EQ(copy.version, 3);
  EXPECT_EQ(copy.Size(), 1u);
  EXPECT_EQ(copy.Values(0), (std::vector<std::string>{"1", "2"}));
  EXPECT_EQ(attributes.Values(0), std::vector<std::string>{"1"});
}

TEST(HostDatasourceAttributes, VariableAndDataSourceAttributes) {
  zorb::DataSourceBuilder b;
  b.addVariable("x").attribute("$role", {"input"}).attributesVersion(2);
  b.attribute("note", {"a", "b"}).attributesVersion(-5);
  DatasourceAttributes const& var = b.dataSource().GetVariable(0).GetAttributes();
  ASSERT_EQ(var.Size(), 1u);
  EXPECT_EQ(var.Name(0), "$role");
  EXPECT_EQ(var.version, 2);
  DatasourceAttributes const& own = b.dataSource().GetAttributes();
  ASSERT_EQ(own.Size(), 1u);
  EXPECT_EQ(own.Values(0), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(own.version, -5);
}

// ---- ZORB_DataSource::Extension ----

TEST(HostExtension, ReportsItsShape) {
  zorb::DataSourceBuilder b;
  b.extension(3, 4, std::string("\x01\x02\x03\x04\x05\x06\x07\x08", 8));
  ZORB_DataSource const& ds = b.dataSource();
  EXPECT_TRUE(ds.HasExtension(3));
  EXPECT_FALSE(ds.HasExtension(4));
  ZORB_DataSource::Extension ext(ds, 3);
  EXPECT_EQ(ext.Type(), 3);
  EXPECT_EQ(ext.ElementSize(), 4);
  EXPECT_EQ(ext.Length(), 2);
}

TEST(HostExtension, GetNextCopiesWholeElementsAndAdvances) {
  std::string bytes = "abcdefghijkl";  // 4 elements of 3 bytes
  zorb::DataSourceBuilder b;
  b.extension(7, 3, bytes);
  ZORB_DataSource::Extension ext(b.dataSource(), 7);
  char buffer[16];
  std::memset(buffer, '#', sizeof buffer);
  EXPECT_EQ(ext.GetNext(buffer, 1), 1);
  EXPECT_EQ(std::string(buffer, 4), "abc#");
  EXPECT_EQ(ext.GetNext(buffer, 0), 0);
  EXPECT_EQ(ext.GetNext(buffer, -3), 0);
  std::memset(buffer, '#', sizeof buffer);
  EXPECT_EQ(ext.GetNext(buffer, 100), 3);  // only the three elements that remain
  EXPECT_EQ(std::string(buffer, 10), "defghijkl#");
  EXPECT_EQ(ext.GetNext(buffer, 1), 0);
}

TEST(HostExtension, ReadsAllAtOnceLikeTheLibrary) {
  std::string bytes("\x00\x0F\xFF", 3);
  zorb::DataSourceBuilder b;
  b.extension(12, 1, bytes);
  ZORB_DataSource::Extension ext(b.dataSource(), 12);
  std::vector<unsigned char> buffer(static_cast<std::size_t>(ext.ElementSize() * ext.Length()));
  ASSERT_EQ(ext.GetNext(buffer.data(), static_cast<long>(ext.Length())), ext.Length());
  EXPECT_EQ(buffer, (std::vector<unsigned char>{0x00, 0x0F, 0xFF}));
}

TEST(HostExtension, ARecordDeliveringFewerElementsReadsShort) {
  zorb::DataSourceBuilder b;
  b.extensionDeliveringFewer(3, 4, 5, std::string(8, '\x07'));
  ZORB_DataSource::Extension ext(b.dataSource(), 3);
  EXPECT_EQ(ext.Length(), 5);
  std::vector<unsigned char> buffer(20, 0);
  EXPECT_EQ(ext.GetNext(buffer.data(), 5), 2);
  EXPECT_EQ(buffer[7], 0x07);
  EXPECT_EQ(buffer[8], 0x00);
}

TEST(HostExtension, AbsentTypeOpensAnEmptyRecord) {
  ZORB_DataSource ds;
  ZORB_DataSource::Extension ext(ds, 5);
  EXPECT_EQ(ext.Type(), 5);
  EXPECT_EQ(ext.Length(), 0);
  char buffer[4] = {'#', '#', '#', '#'};
  EXPECT_EQ(ext.GetNext(buffer, 4), 0);
  EXPECT_EQ(std::string(buffer, 4), "####");
}

TEST(HostExtension, EmptyRecordExists) {
  zorb::DataSourceBuilder b;
  b.extension(1, 8, std::string());
  EXPECT_TRUE(b.dataSource().HasExtension(1));
  ZORB_DataSource::Extension ext(b.dataSource(), 1);
  EXPECT_EQ(ext.ElementSize(), 8);
  EXPECT_EQ(ext.Length(), 0);
  EXPECT_EQ(ext.GetNext(nullptr, 1), 0);
}

TEST(HostExtension, ZeroSizedElementsAreCountedWithoutBytes) {
  zorb::DataSourceBuilder b;
  b.extension(9, 0, std::int64_t{5}, std::string());
  ZORB_DataSource::Extension ext(b.dataSource(), 9);
  EXPECT_EQ(ext.Length(), 5);
  EXPECT_EQ(ext.GetNext(nullptr, 3), 3);
  EXPECT_EQ(ext.GetNext(nullptr, 3), 2);
}

TEST(HostExtension, EachOpeningReadsFromTheStart) {
  zorb::DataSourceBuilder b;
  b.extension(2, 2, std::string("xyzw"));
  char buffer[4];
  ZORB_DataSource::Extension first(b.dataSource(), 2);
  EXPECT_EQ(first.GetNext(buffer, 2), 2);
  ZORB_DataSource::Extension second(b.dataSource(), 2);
  EXPECT_EQ(second.GetNext(buffer, 1), 1);
  EXPECT_EQ(std::string(buffer, 2), "xy");
}

// ---- VariableSet and VariableSets ----

TEST(HostVariableSets, PlainAndMultipleResponseSetsAreSeparate) {
  zorb::DataSourceBuilder b;
  b.variableSet("Demo", {"age", "Sex"});
  b.categorySet("$cats", "Categories", {"q1", "q2"}, true);
  b.dichotomySet("$dich", "Dichotomies", "1", true, {"d1"});
  b.variableSet("Empty", {});
  ZORB_DataSource const& ds = b.dataSource();

  std::vector<VariableSet> plain = VariableSets(ds, PlainVariableSets);
  ASSERT_EQ(plain.size(), 2u);
  EXPECT_EQ(plain[0].GetName(VariableSet::AsStored), "Demo");
  EXPECT_EQ(plain[0].GetVariableNames(VariableSet::AsStored), (std::vector<std::string>{"age", "Sex"}));
  EXPECT_EQ(plain[0].GetType(), VariableSet::Plain);
  EXPECT_TRUE(plain[1].GetVariableNames(VariableSet::AsStored).empty());

  std::vector<VariableSet> response = VariableSets(ds, MultipleResponseSets);
  ASSERT_EQ(response.size(), 2u);
  EXPECT_EQ(response[0].GetType(), 1);
  EXPECT_EQ(response[0].GetLabel(), "Categories");
  EXPECT_TRUE(response[0].qLabelSetByVariable());
  EXPECT_EQ(response[1].GetType(), 2);
  EXPECT_EQ(response[1].GetValue(), "1");
  EXPECT_TRUE(response[1].qUseVariableCategoryLabels());
  EXPECT_FALSE(response[1].qLabelSetByVariable());
  EXPECT_EQ(response[1].GetVariableNames(VariableSet::AsStored), std::vector<std::string>{"d1"});
}

TEST(HostVariableSets, UnknownKindGivesNoSets) {
  zorb::DataSourceBuilder b;
  b.variableSet("s", {"a"});
  EXPECT_TRUE(VariableSets(b.dataSource(), static_cast<VarSetsType>(2)).empty());
}

TEST(HostVariableSet, ChangeCaseAppliesToAsciiLettersOnly) {
  zorb::DataSourceBuilder b;
  b.variableSet("Mixed_\xC3\xA4Set1", {"Age", "sEX"});
  VariableSet set = VariableSets(b.dataSource(), PlainVariableSets).at(0);
  EXPECT_EQ(set.GetName(VariableSet::ToLower), "mixed_\xC3\xA4set1");
  EXPECT_EQ(set.GetName(VariableSet::ToUpper), "MIXED_\xC3\xA4SET1");
  EXPECT_EQ(set.GetName(VariableSet::AsStored), "Mixed_\xC3\xA4Set1");
  EXPECT_EQ(set.GetVariableNames(VariableSet::ToLower), (std::vector<std::string>{"age", "sex"}));
  EXPECT_EQ(set.GetVariableNames(VariableSet::ToUpper), (std::vector<std::string>{"AGE", "SEX"}));
  EXPECT_EQ(set.GetVariableNames(VariableSet::AsStored), (std::vector<std::string>{"Age", "sEX"}));
}

}  // namespace
