// Whole dictionaries built in memory, in both byte orders: every record kind the reader decodes,
// and malformed variants that must give a clean ReadError or warnings with sane defaults.
#include <gtest/gtest.h>

#include <cfloat>
#include <cstring>

#include <transspace/savfile/reader.h>
#include "savfilebuilder.h"
#include <transspace/zorb/datasource.h>
#include <transspace/zorb/platform.h>

using savfiletest::SavFileBuilder;

namespace {

savfile::ReadResult readBytes(std::string const& bytes) {
  savfile::MemoryByteSource source(bytes);
  return savfile::read(source, "mem.sav");
}

std::string readError(std::string const& bytes) {
  try {
    readBytes(bytes);
  } catch (savfile::ReadError const& e) {
    return e.what();
  }
  return "no error";
}

bool warned(savfile::ReadResult const& r, std::string const& part) {
  for (auto const& w : r.warnings) {
    if (w.message.find(part) != std::string::npos) return true;
  }
  return false;
}

std::string stringOf(OBS const* obs, int width) { return std::string(obs->s, obs->s + width); }

class Reader : public ::testing::TestWithParam<bool> {
protected:
  SavFileBuilder b{GetParam()};
  void TearDown() override { zorb::ResetPlatformSettings(); }
};

TEST_P(Reader, HeaderFacts) {
  b.caseCount = 42;
  b.date = "05 Feb 98";
  b.time = "13:14:15";
  b.fileLabel = "my file";
  b.numeric("x");
  auto r = readBytes(b.build());
  EXPECT_EQ(r.dataSource->RowCount(), 42);
  EXPECT_EQ(r.dataSource->GetTimestamp(), 886684455.0);  // 1998-02-05T13:14:15
  EXPECT_EQ(r.info.fileLabel, "my file");
  EXPECT_EQ(r.info.bigEndian, GetParam());
  EXPECT_TRUE(r.warnings.empty());
}

TEST_P(Reader, VariablesWithLabelsFormatsAndContinuations) {
  std::string label = "Age in years";
  b.numeric("AGE", &label, 0, {}, SavFileBuilder::format(5, 3, 0));
  b.string("NAME", 20);
  b.numeric("W");
  b.weightIndex = 5;  // AGE=1, NAME=2..4, W=5
  auto r = readBytes(b.build());
  ZORB_DataSource const& ds = *r.dataSource;
  ASSERT_EQ(ds.ColumnCount(), 3);
  EXPECT_STREQ(ds.GetVariable(0).GetName(), "age");  // no long names: lower case, as in PSPP
  EXPECT_STREQ(ds.GetVariable(0).GetLabel(), "Age in years");
  int t, w, d;
  ds.GetVariable(0).GetFormatEx(t, w, d);
  EXPECT_EQ(t * 10000 + w * 100 + d, 50300);
  EXPECT_EQ(ds.GetVariable(1).GetType(), 20);
  EXPECT_EQ(ds.GetVariable(1).GetLabel(), nullptr);
  EXPECT_EQ(ds.GetVariable(1).GetAlignment(), 0);
  EXPECT_EQ(ds.GetWeightVarIndex(), 2);
  EXPECT_EQ(ds.RowCount(), -1);
}

// XML 1.0 cannot carry most control characters, so a label holding them could not be exported:
// they become blanks, with one warning; tab, line feed and carriage return stay.
TEST_P(Reader, ControlCharactersUnfitForXmlBecomeBlanks) {
  std::string label = std::string("first\x0Bsecond\x01") + "\tthird\nfourth";
  b.numeric("X", &label);
  auto r = readBytes(b.build());
  EXPECT_STREQ(r.dataSource->GetVariable(0).GetLabel(), "first second \tthird\nfourth");
  EXPECT_TRUE(warned(r, "2 control character(s) that XML cannot carry were replaced by blanks"));
}

TEST_P(Reader, TextWithoutControlCharactersGivesNoSuchWarning) {
  std::string label = "plain\ttext";
  b.numeric("X", &label);
  auto r = readBytes(b.build());
  EXPECT_STREQ(r.dataSource->GetVariable(0).GetLabel(), "plain\ttext");
  EXPECT_FALSE(warned(r, "control character"));
}

TEST_P(Reader, MissingValuesOfEveryKind) {
  b.numeric("D", nullptr, 3, {1, 2, 3});
  b.numeric("R", nullptr, -2, {-DBL_MAX, -1});
  std::uint64_t lowest = 0xFFEFFFFFFFFFFFFEull;
  double lowestValue;
  std::memcpy(&lowestValue, &lowest, 8);
  b.numeric("RV", nullptr, -3, {lowestValue, 0, 99});
  b.numeric("H", nullptr, -2, {5, DBL_MAX});
  b.string("S", 3, nullptr, {"ab", "x"});
  auto r = readBytes(b.build());
  ZORB_DataSource const& ds = *r.dataSource;
  OBS const *p0, *p1, *p2;
  EXPECT_EQ(ds.GetVariable(0).GetMissingValues(p0, p1, p2), 3);
  EXPECT_EQ(p2->f, 3);
  EXPECT_EQ(ds.GetVariable(1).GetMissingValues(p0, p1, p2), -2);
  std::uint64_t bits;
  std::memcpy(&bits, &p0->f, 8);
  EXPECT_EQ(bits, lowest);  // -DBL_MAX as a range's low end means LOWEST
  EXPECT_EQ(p1->f, -1);
  EXPECT_EQ(ds.GetVariable(2).GetMissingValues(p0, p1, p2), -3);
  std::memcpy(&bits, &p0->f, 8);
  EXPECT_EQ(bits, lowest);
  EXPECT_EQ(p2->f, 99);
  EXPECT_EQ(ds.GetVariable(3).GetMissingValues(p0, p1, p2), -2);
  EXPECT_EQ(p1->f, DBL_MAX);
  EXPECT_EQ(ds.GetVariable(4).GetMissingValues(p0, p1, p2), 2);
  EXPECT_EQ(stringOf(p0, 3), "ab ");
  EXPECT_EQ(stringOf(p1, 3), "x  ");
}

TEST_P(Reader, ValueLabelsNumericAndString) {
  b.numeric("N");
  b.string("S", 4);
  b.valueLabels({{b.f64(1), "one"}, {b.f64(2), std::string(120, 'L')}}, {1});
  b.valueLabels({{"ab      ", "AB"}}, {2});
  auto r = readBytes(b.build());
  ZORB_ValueLabelMap n(r.dataSource->GetVariable(0).GetValueLabels());
  double value;
  char const* label;
  ASSERT_TRUE(n.GetNextPair(value, label));
  EXPECT_EQ(value, 1);
  EXPECT_STREQ(label, "one");
  ASSERT_TRUE(n.GetNextPair(value, label));
  EXPECT_EQ(std::string(label), std::string(120, 'L'));
  ZORB_ValueLabelMap s(r.dataSource->GetVariable(1).GetValueLabels());
  std::string text;
  ASSERT_TRUE(s.GetNextPair(text, label));
  EXPECT_EQ(text, "ab  ");
  EXPECT_STREQ(label, "AB");
}

TEST_P(Reader, BadValueLabelIndicesAreWarned) {
  b.numeric("N");
  b.string("L", 16);
  b.valueLabels({{b.f64(1), "one"}}, {0, 3, 2, 99, 1});
  auto r = readBytes(b.build());
  EXPECT_TRUE(warned(r, "dictionary index 0"));
  EXPECT_TRUE(warned(r, "dictionary index 3"));
  EXPECT_TRUE(warned(r, "long string variable"));
  EXPECT_TRUE(warned(r, "dictionary index 99"));
  EXPECT_EQ(ZORB_ValueLabelMap(r.dataSource->GetVariable(0).GetValueLabels()).Size(), 1u);
}

TEST_P(Reader, ExtensionsLongNamesVeryLongStringsDisplayParameters) {
  b.numeric("A");
  b.string("VL256", 255);
  b.string("VL2560", 8);  // second segment of a 256-byte string (8 bytes wide)
  b.string("B", 8);
  b.text(13, "A=alpha\tVL256=veryLong\tB=beta");
  b.text(14, std::string("VL256=256\0\t", 11));
  std::string params;
  for (int i : {3, 10, 1, 1, 40, 0, 1, 5, 0, 2, 12, 2}) params += b.i32(i);  // 4 segments x 3
  b.extension(11, 4, 12, params);
  b.extension(3, 4, 8, b.i32(20) + b.i32(0) + b.i32(1) + b.i32(-1) + b.i32(1) + b.i32(1) + b.i32(GetParam() ? 1 : 2) + b.i32(65001));
  b.extension(4, 8, 3, b.f64(-DBL_MAX) + b.f64(DBL_MAX) + b.f64(-DBL_MAX));
  b.extension(16, 8, 2, b.i64(1) + b.i64(1234));
  b.text(20, "UTF-8");
  b.extension(99, 1, 2, "zz");
  auto r = readBytes(b.build());
  ZORB_DataSource const& ds = *r.dataSource;
  ASSERT_EQ(ds.ColumnCount(), 3);
  EXPECT_STREQ(ds.GetVariable(0).GetName(), "alpha");
  EXPECT_STREQ(ds.GetVariable(1).GetName(), "veryLong");
  EXPECT_EQ(ds.GetVariable(1).GetType(), 256);
  int t, w, d;
  ds.GetVariable(1).GetFormatEx(t, w, d);
  EXPECT_EQ(t, 1);
  EXPECT_EQ(w, 256);
  EXPECT_EQ(ds.GetVariable(0).GetMeasurementLevel(), 3);
  EXPECT_EQ(ds.GetVariable(0).GetDisplayWidth(), 10);
  EXPECT_EQ(ds.GetVariable(1).GetDisplayWidth(), 40);
  EXPECT_EQ(ds.GetVariable(2).GetMeasurementLevel(), 2);
  EXPECT_EQ(ds.GetVariable(2).GetAlignment(), 2);
  EXPECT_EQ(ds.RowCount(), 1234);
  EXPECT_TRUE(ds.HasExtension(99));
  // Numeric elements are kept in the host's byte order, whatever the file's.
  ZORB_DataSource::Extension e(ds, 3);
  std::int32_t ints[8];
  ASSERT_EQ(e.GetNext(ints, 8), 8);
  EXPECT_EQ(ints[0], 20);
  EXPECT_EQ(ints[7], 65001);
  EXPECT_TRUE(r.warnings.empty()) << r.warnings[0].text;
}

TEST_P(Reader, DisplayParametersWithoutWidthAndOutOfRangeCodes) {
  b.numeric("A");
  b.numeric("B");
  b.extension(11, 4, 4, b.i32(7) + b.i32(9) + b.i32(1) + b.i32(1));
  auto r = readBytes(b.build());
  EXPECT_EQ(r.dataSource->GetVariable(0).GetMeasurementLevel(), 0);
  EXPECT_EQ(r.dataSource->GetVariable(0).GetAlignment(), 0);
  EXPECT_EQ(r.dataSource->GetVariable(1).GetMeasurementLevel(), 1);
  EXPECT_TRUE(warned(r, "measurement level 7"));
  EXPECT_TRUE(warned(r, "alignment 9"));
}

TEST_P(Reader, InvalidFormatsBecomeDefaults) {
  b.variableRecord(0, "N", nullptr, 0, {}, SavFileBuilder::format(13, 8, 2), SavFileBuilder::format(1, 8, 0));
  b.variableRecord(3, "S", nullptr, 0, {}, SavFileBuilder::format(5, 8, 2), 0);
  b.variableRecord(0, "M", nullptr, 0, {}, SavFileBuilder::format(40, 8, 0), SavFileBuilder::format(41, 19, 0));
  auto r = readBytes(b.build());
  int t, w, d;
  r.dataSource->GetVariable(0).GetFormatEx(t, w, d);
  EXPECT_EQ(t * 10000 + w * 100 + d, 50802);
  r.dataSource->GetVariable(0).GetWriteFormatEx(t, w, d);
  EXPECT_EQ(t * 10000 + w * 100 + d, 50802);
  r.dataSource->GetVariable(1).GetFormatEx(t, w, d);
  EXPECT_EQ(t * 10000 + w * 100 + d, 10300);
  r.dataSource->GetVariable(1).GetWriteFormatEx(t, w, d);
  EXPECT_EQ(t, 1);
  r.dataSource->GetVariable(2).GetFormatEx(t, w, d);
  EXPECT_EQ(t, 85);  // MTIME: 40 on disk
  r.dataSource->GetVariable(2).GetWriteFormatEx(t, w, d);
  EXPECT_EQ(t, 86);  // YMDHMS: 41 on disk
  EXPECT_EQ(r.warnings.size(), 4u);
}

TEST_P(Reader, SetsAttributesAndLongStringRecords) {
  b.numeric("V1");
  b.numeric("V2");
  b.string("LS", 255);
  b.text(13, "V1=First\tV2=Second\tLS=Long");
  b.text(5, "Both= First SECOND\nShort= V1\n");
  b.text(7, "$c=C 5 label v1 v2\n$d=D1 1 0  v1 v2\n");
  b.text(19, "$e=E 11 1 1 0  v1 v2\n");
  b.text(17, "Owner('me'\n)List('a'\n'b'\n)");
  b.text(18, "First:Note('n1'\n)/Long:$@Role('1'\n)");
  std::string ls21 = b.i32(4) + "Long" + b.i32(255) + b.i32(1) + b.i32(255) + SavFileBuilder::padded("abc", 255) + b.i32(5) + "ABCLB";
  b.extension(21, 1, static_cast<std::int32_t>(ls21.size()), ls21);
  std::string ls22 = b.i32(4) + "Long" + std::string(1, '\2') + b.i32(8) + "x       " + "y       ";
  b.extension(22, 1, static_cast<std::int32_t>(ls22.size()), ls22);
  auto r = readBytes(b.build());
  ZORB_DataSource const& ds = *r.dataSource;
  auto plain = VariableSets(ds, PlainVariableSets);
  ASSERT_EQ(plain.size(), 2u);
  EXPECT_EQ(plain[0].GetVariableNames(VariableSet::AsStored), (std::vector<std::string>{"First", "SECOND"}));
  EXPECT_EQ(plain[1].GetVariableNames(VariableSet::AsStored), (std::vector<std::string>{"First"}));
  auto mr = VariableSets(ds, MultipleResponseSets);
  ASSERT_EQ(mr.size(), 3u);
  EXPECT_EQ(mr[0].GetType(), 1);
  EXPECT_EQ(mr[0].GetLabel(), "label");
  EXPECT_EQ(mr[0].GetVariableNames(VariableSet::AsStored), (std::vector<std::string>{"First", "Second"}));
  EXPECT_EQ(mr[1].GetType(), 2);
  EXPECT_EQ(mr[1].GetValue(), "1");
  EXPECT_FALSE(mr[1].qUseVariableCategoryLabels());
  EXPECT_TRUE(mr[2].qUseVariableCategoryLabels());
  EXPECT_TRUE(mr[2].qLabelSetByVariable());
  EXPECT_EQ(ds.GetAttributes().Size(), 2u);
  EXPECT_EQ(ds.GetAttributes().Values(1), (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(ds.GetVariable(0).GetAttributes().Name(0), "Note");
  EXPECT_EQ(ds.GetVariable(2).GetAttributes().Values(0), (std::vector<std::string>{"1"}));
  ZORB_ValueLabelMap labels(ds.GetVariable(2).GetValueLabels());
  std::string value;
  char const* label;
  ASSERT_TRUE(labels.GetNextPair(value, label));
  EXPECT_EQ(value.substr(0, 4), "abc ");
  EXPECT_STREQ(label, "ABCLB");
  OBS const *p0, *p1, *p2;
  EXPECT_EQ(ds.GetVariable(2).GetMissingValues(p0, p1, p2), 2);
  EXPECT_EQ(stringOf(p1, 2), "y ");
  EXPECT_TRUE(r.warnings.empty()) << r.warnings[0].text;
}

TEST_P(Reader, TextIsConvertedToTheHostCodePage) {
  std::string label = "caf\xe9";  // windows-1252
  b.numeric("X", &label);
  b.text(20, "windows-1252");
  auto r = readBytes(b.build());
  EXPECT_STREQ(r.dataSource->GetVariable(0).GetLabel(), "caf\xc3\xa9");
  zorb::SetUTF8Mode(false);
  zorb::SetDefaultCodePage("ISO-8859-15");
  auto latin = readBytes(b.build());
  EXPECT_STREQ(latin.dataSource->GetVariable(0).GetLabel(), "caf\xe9");
}

TEST_P(Reader, OddTimestampsAreTolerated) {
  b.numeric("X");
  b.date = " 1-Jan- 5";
  b.time = " 0: 0: 0";
  EXPECT_EQ(readBytes(b.build()).dataSource->GetTimestamp(), 1104537600.0);  // 2005-01-01
  b.date = "05 FEB 70";
  b.time = "00:00:01";
  EXPECT_EQ(readBytes(b.build()).dataSource->GetTimestamp(), 35 * 86400.0 + 1);
  b.date = "garbled!!";
  auto r = readBytes(b.build());
  EXPECT_EQ(r.dataSource->GetTimestamp(), 0.0);
  EXPECT_TRUE(warned(r, "not readable"));
}

TEST_P(Reader, MalformedFilesGiveErrorsWithOffsets) {
  b.numeric("X");
  std::string good = b.build();
  EXPECT_NE(readError(good.substr(0, 100)).find("shorter than a file header"), std::string::npos);
  EXPECT_NE(readError("XXXX" + good.substr(4)).find("not a system file (no $FL2 or $FL3 signature)"), std::string::npos);
  EXPECT_NE(readError(good.substr(0, good.size() - 8)).find("near offset 0xd0: the file ends before the dictionary"),
            std::string::npos);
  // Every truncation gives a clean error, never a crash.
  for (std::size_t n = 0; n + 1 < good.size(); ++n) EXPECT_NE(readError(good.substr(0, n)), "no error");
  SavFileBuilder bad(GetParam());
  bad.numeric("X");
  bad.raw(bad.i32(5));
  EXPECT_NE(readError(bad.build()).find("near offset 0xd0: unrecognized record type 5"), std::string::npos);
}

TEST_P(Reader, HugeCountsAreCheckedBeforeAllocating) {
  SavFileBuilder a(GetParam());
  a.raw(a.i32(7) + a.i32(3) + a.i32(0x7fffffff) + a.i32(0x7fffffff));
  EXPECT_NE(readError(a.build()).find("exceeds the"), std::string::npos);
  SavFileBuilder c(GetParam());
  c.raw(c.i32(3) + c.i32(-1));
  EXPECT_NE(readError(c.build()).find("ends inside a value label record"), std::string::npos);
  SavFileBuilder d(GetParam());
  d.raw(d.i32(6) + d.i32(0x7fffffff));
  EXPECT_NE(readError(d.build()).find("document record"), std::string::npos);
  SavFileBuilder e(GetParam());
  e.raw(e.i32(2) + e.i32(0) + e.i32(1) + e.i32(0) + e.i32(0) + e.i32(0) + "NAME    " + e.i32(0x7ffffff0));
  EXPECT_NE(readError(e.build()).find("variable label"), std::string::npos);
  SavFileBuilder f(GetParam());
  f.raw(f.i32(2) + f.i32(0) + f.i32(0) + f.i32(4) + f.i32(0) + f.i32(0) + "NAME    ");
  EXPECT_NE(readError(f.build()).find("missing value code 4"), std::string::npos);
  SavFileBuilder g(GetParam());
  g.valueLabels({{g.f64(1), "x"}}, {1});
  std::string bytes = g.build();
  EXPECT_NO_THROW(readBytes(bytes));  // labels for index 1, which is no variable: a warning
  SavFileBuilder h(GetParam());
  h.numeric("X");
  h.raw(h.i32(3) + h.i32(0) + h.i32(2));  // type 3 followed by a variable record
  EXPECT_NE(readError(h.build()).find("not followed by a variables record"), std::string::npos);
}

TEST_P(Reader, MalformedExtensionContentsAreWarnings) {
  b.numeric("X");
  b.extension(3, 4, 2, b.i32(1) + b.i32(2));
  b.extension(11, 4, 5, std::string(20, '\0'));
  b.extension(16, 4, 1, b.i32(5));
  b.extension(21, 1, 6, b.i32(100) + "ab");
  b.extension(22, 1, 5, b.i32(-5) + "a");
  b.text(14, "X=12345678901");
  b.text(20, "no-such-encoding");
  b.weightIndex = 7;
  b.bias = 99;
  auto r = readBytes(b.build());
  EXPECT_EQ(r.dataSource->ColumnCount(), 1);
  EXPECT_EQ(r.dataSource->GetWeightVarIndex(), -1);
  for (char const* part : {"machine integer info", "display parameter", "extended case count", "long string value labels",
                           "long string missing values", "very long string", "unknown character encoding",
                           "weight index 7", "bias"}) {
    EXPECT_TRUE(warned(r, part)) << part;
  }
}

INSTANTIATE_TEST_SUITE_P(ByteOrders, Reader, ::testing::Values(false, true),
                         [](::testing::TestParamInfo<bool> const& info) { return info.param ? "BigEndian" : "LittleEndian"; });

}  // namespace
