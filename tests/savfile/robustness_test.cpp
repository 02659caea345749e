// Hostile dictionaries built in memory: inputs whose cost would grow faster than their size (a hang
// in practice) or whose counts would overflow. Each must read in time proportional to its size,
// or give a clean ReadError.
#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <string>
#include <vector>

#include <transspace/savfile/reader.h>
#include "savfilebuilder.h"
#include <transspace/zorb/datasource.h>

using savfiletest::SavFileBuilder;

namespace {

savfile::ReadResult readBytes(std::string const& bytes) {
  savfile::MemoryByteSource source(bytes);
  return savfile::read(source, "mem.sav");
}

// Seconds a read of `bytes` takes; the read must succeed.
double secondsToRead(std::string const& bytes, savfile::ReadResult* out = nullptr) {
  auto start = std::chrono::steady_clock::now();
  savfile::ReadResult r = readBytes(bytes);
  double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  if (out) *out = std::move(r);
  return seconds;
}

// Generous: a linear read of these inputs takes well under a second even under a sanitizer, a
// quadratic one minutes.
constexpr double timeLimit = 20.0;

class Robustness : public ::testing::TestWithParam<bool> {
protected:
  SavFileBuilder b{GetParam()};
};

// Every variable has the same short name: renaming the duplicates must not try the suffixes 2, 3,
// ... again for every variable (that was quadratic in the number of variables).
TEST_P(Robustness, ManyDuplicateNamesAreRenamedInLinearTime) {
  constexpr int n = 40000;
  for (int i = 0; i < n; ++i) b.numeric("A");
  savfile::ReadResult r;
  EXPECT_LT(secondsToRead(b.build(), &r), timeLimit);
  ASSERT_EQ(r.dataSource->ColumnCount(), n);
  EXPECT_STREQ(r.dataSource->GetVariable(0).GetName(), "a");
  EXPECT_STREQ(r.dataSource->GetVariable(1).GetName(), "a_2");
  EXPECT_STREQ(r.dataSource->GetVariable(n - 1).GetName(), ("a_" + std::to_string(n)).c_str());
}

// The renaming stays the same when a suffixed name is already taken by a later or earlier variable.
TEST_P(Robustness, RenamingSkipsNamesInUse) {
  b.numeric("A");
  b.numeric("A_2");
  b.numeric("A");
  b.numeric("A");
  b.numeric("A_3");
  auto r = readBytes(b.build());
  ASSERT_EQ(r.dataSource->ColumnCount(), 5);
  EXPECT_STREQ(r.dataSource->GetVariable(2).GetName(), "a_3");
  EXPECT_STREQ(r.dataSource->GetVariable(3).GetName(), "a_4");
  EXPECT_STREQ(r.dataSource->GetVariable(4).GetName(), "a_3_2");
}

// Repeated subtype 18 records are concatenated; their counts must not overflow an int32 (element
// size 0 lets a record claim 2^31-1 elements in no bytes at all).
TEST_P(Robustness, ConcatenatedAttributeRecordCountsDoNotOverflow) {
  b.numeric("X");
  b.extension(18, 0, INT_MAX, "");
  b.extension(18, 0, INT_MAX, "");
  b.extension(18, 0, 5, "");
  auto r = readBytes(b.build());
  ASSERT_TRUE(r.dataSource->HasExtension(18));
  ZORB_DataSource::Extension e(*r.dataSource, 18);
  EXPECT_EQ(e.ElementSize(), 0);
  EXPECT_EQ(static_cast<std::int64_t>(e.Length()), 2 * static_cast<std::int64_t>(INT_MAX) + 5);
}

// One value label record whose variables record names the same variable over and over: the labels
// are given to the variable once, not once per index (that was labels x indices work).
TEST_P(Robustness, RepeatedValueLabelIndicesCostNoMoreThanOnce) {
  b.numeric("X");
  std::vector<std::pair<std::string, std::string>> labels;
  for (int i = 0; i < 20000; ++i) labels.emplace_back(b.f64(i), "l");
  std::vector<std::int32_t> indices(200000, 1);
  b.valueLabels(labels, indices);
  savfile::ReadResult r;
  EXPECT_LT(secondsToRead(b.build(), &r), timeLimit);
  EXPECT_EQ(ZORB_ValueLabelMap(r.dataSource->GetVariable(0).GetValueLabels()).Size(), 20000u);
}

// A long attribute name followed by very many malformed values: each value warns, and the warning
// text must not copy the whole name every time (that was name length x values work).
TEST_P(Robustness, WarningsDoNotRepeatLongTextsOverAndOver) {
  b.numeric("X");
  std::string name(400000, 'N');
  b.text(17, name + "(" + std::string(400000, '\n') + ")");
  savfile::ReadResult r;
  EXPECT_LT(secondsToRead(b.build(), &r), timeLimit);
  ASSERT_FALSE(r.warnings.empty());
  for (auto const& w : r.warnings) EXPECT_LT(w.text.size(), 1000u) << w.text.substr(0, 200);
}

// The same for the members of a variable set and of a multiple response set that name no variable.
TEST_P(Robustness, UnknownSetMembersWithALongSetNameWarnInLinearTime) {
  b.numeric("X");
  std::string members;
  for (int i = 0; i < 100000; ++i) members += " q";
  b.text(5, std::string(300000, 'S') + "=" + members + "\n");
  b.text(7, "$" + std::string(300000, 'M') + "=C 1 L" + members + "\n");
  savfile::ReadResult r;
  EXPECT_LT(secondsToRead(b.build(), &r), timeLimit);
  for (auto const& w : r.warnings) EXPECT_LT(w.text.size(), 1000u) << w.text.substr(0, 200);
}

// One record of many labels listing many variables: every variable keeps its own copy, so the
// model would grow with labels x variables (a 160 KB file asked for 9 million entries, 1 GB).
// Beyond a budget the remaining variables get no labels, with a warning.
TEST_P(Robustness, ValueLabelsSharedByManyVariablesStayWithinABudget) {
  constexpr int variables = 3000, labelCount = 3000;
  std::vector<std::pair<std::string, std::string>> labels;
  for (int i = 0; i < labelCount; ++i) labels.emplace_back(b.f64(i), "l");
  std::vector<std::int32_t> indices;
  for (int i = 0; i < variables; ++i) {
    b.numeric("V" + std::to_string(i));
    indices.push_back(i + 1);
  }
  b.valueLabels(labels, indices);
  savfile::ReadResult r;
  EXPECT_LT(secondsToRead(b.build(), &r), timeLimit);
  std::size_t total = 0;
  for (int i = 0; i < variables; ++i) total += ZORB_ValueLabelMap(r.dataSource->GetVariable(i).GetValueLabels()).Size();
  EXPECT_GT(total, 1000000u);
  EXPECT_LE(total, 1u << 22);
  EXPECT_EQ(ZORB_ValueLabelMap(r.dataSource->GetVariable(0).GetValueLabels()).Size(), 3000u);
  EXPECT_EQ(ZORB_ValueLabelMap(r.dataSource->GetVariable(variables - 1).GetValueLabels()).Size(), 0u);
  bool warned = false;
  for (auto const& w : r.warnings) warned = warned || w.message.find("get none") != std::string::npos;
  EXPECT_TRUE(warned);
}

// A long name has at most 64 bytes; a longer one is ignored with a warning (it would be copied for
// every set member that names its variable by the short name).
TEST_P(Robustness, LongNamesOfMoreThan64BytesAreIgnored) {
  b.numeric("A");
  b.numeric("B");
  std::string const ok(64, 'o'), tooLong(65, 'x');
  b.text(13, "A=" + ok + "\tB=" + tooLong);
  auto r = readBytes(b.build());
  EXPECT_EQ(std::string(r.dataSource->GetVariable(0).GetName()), ok);
  EXPECT_STREQ(r.dataSource->GetVariable(1).GetName(), "B");
  bool warned = false;
  for (auto const& w : r.warnings) warned = warned || w.message.find("more than 64 bytes") != std::string::npos;
  EXPECT_TRUE(warned);
}

// A second machine integer record is reported once, not once per use of the record.
TEST_P(Robustness, ARepeatedSubtypeIsWarnedOnce) {
  b.numeric("X");
  std::string info;
  for (int v : {20, 0, 1, -1, 1, 1, GetParam() ? 1 : 2, 65001}) info += b.i32(v);
  b.extension(3, 4, 8, info);
  b.extension(3, 4, 8, info);
  auto r = readBytes(b.build());
  ASSERT_EQ(r.warnings.size(), 1u);
  EXPECT_NE(r.warnings[0].message.find("second extension record of subtype 3"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(ByteOrders, Robustness, ::testing::Values(false, true),
                         [](::testing::TestParamInfo<bool> const& info) { return info.param ? "BigEndian" : "LittleEndian"; });

}  // namespace
