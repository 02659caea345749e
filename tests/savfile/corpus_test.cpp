// The fixtures: every file written by PSPP, ReadStat or the test builder that is not damaged on
// purpose reads without error; the damaged one gives a clean error or a read with warnings; the
// builder-made files are what the builder makes today; the fuzz seed corpus replays cleanly.
#include <gtest/gtest.h>

#include <dirent.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "binaryrecords.h"
#include "builderfixtures.h"
#include "corpusfiles.h"
#include <transspace/savfile/reader.h>
#include <transspace/zorb/datasource.h>

namespace {

std::string const dataDir = std::string(TRANSSPACE_TEST_DATA) + "/sav/";
std::string const repoRoot = std::string(TRANSSPACE_TEST_DATA) + "/../../";
std::string const damagedFile = "builder-made/corrupt-extension-headers.sav";

std::string contentsOf(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

std::vector<std::string> filesIn(std::string const& dir) {
  std::vector<std::string> files;
  if (DIR* d = opendir(dir.c_str())) {
    while (dirent* e = readdir(d)) {
      if (e->d_name[0] != '.') files.push_back(e->d_name);
    }
    closedir(d);
  }
  std::sort(files.begin(), files.end());
  return files;
}

TEST(Corpus, EveryGoodFileReadsWithoutError) {
  int files = 0;
  for (auto const& name : savfiletest::corpusFiles(dataDir, {damagedFile})) {
    SCOPED_TRACE(name);
    savfile::ReadResult r;
    ASSERT_NO_THROW(r = savfile::readFile(dataDir + name));
    EXPECT_GT(r.dataSource->ColumnCount(), 0);
    ++files;
  }
  EXPECT_GE(files, 23);
}

TEST(Corpus, DamagedFileGivesCleanErrorOrWarnings) {
  try {
    savfile::ReadResult r = savfile::readFile(dataDir + damagedFile);
    EXPECT_FALSE(r.warnings.empty());
  } catch (savfile::ReadError const& e) {
    EXPECT_NE(std::string(e.what()).find("near offset 0x"), std::string::npos);
  }
}

TEST(Corpus, BigEndianAndZsavFiles) {
  auto be = savfile::readFile(dataDir + "builder-made/big-endian.sav");
  EXPECT_TRUE(be.info.bigEndian);
  EXPECT_EQ(be.dataSource->ColumnCount(), 6);
  auto z = savfile::readFile(dataDir + "pspp-made/rich.zsav");
  EXPECT_TRUE(z.info.zsav);
  EXPECT_EQ(z.info.compression, 2);
  EXPECT_TRUE(z.warnings.empty());
  auto fake = savfile::readFile(dataDir + "builder-made/fl2-named.zsav");
  EXPECT_FALSE(fake.info.zsav);
}

// Old writers: the month of the date in upper case; a file label that starts with blanks, kept as
// written; no encoding record, so the Western code page.
TEST(Corpus, OldWritersDatesAndLabels) {
  auto be = savfile::readFile(dataDir + "builder-made/big-endian.sav");
  EXPECT_EQ(be.dataSource->GetTimestamp(), 1047633300.0);  // 14 MAR 03 09:15:00
  EXPECT_TRUE(be.warnings.empty());
  auto old = savfile::readFile(dataDir + "builder-made/only-subtypes-3-4.sav");
  EXPECT_EQ(old.info.fileLabel, std::string(23, ' ') + "Bird count");
  EXPECT_EQ(old.info.encoding, "windows-1252");
  EXPECT_TRUE(old.warnings.empty());
}

TEST(Corpus, VeryLongStringsAreMerged) {
  auto r = savfile::readFile(dataDir + "builder-made/max-string.sav");
  ZORB_DataSource const& ds = *r.dataSource;
  ASSERT_EQ(ds.ColumnCount(), 2);
  EXPECT_EQ(ds.GetVariable(0).GetType(), 32767);
  auto v13 = savfile::readFile(dataDir + "builder-made/release13-very-long-strings.sav");
  ASSERT_EQ(v13.dataSource->ColumnCount(), 4);
  EXPECT_EQ(v13.dataSource->GetVariable(3).GetType(), 2000);
}

TEST(Corpus, FormatsThatPsppWritesWithOtherCodes) {
  // pspp-made/formats.sav, written by PSPP 1.6.2 from formats.sps: MTIME and YMDHMS are 40 and 41
  // on disk, 85 and 86 in the host's table.
  auto r = savfile::readFile(dataDir + "pspp-made/formats.sav");
  ZORB_DataSource const& ds = *r.dataSource;
  int t, w, d;
  ds.GetVariable(0).GetFormatEx(t, w, d);
  EXPECT_EQ(t, 85);
  EXPECT_EQ(w, 8);
  ds.GetVariable(1).GetFormatEx(t, w, d);
  EXPECT_EQ(t, 86);
  EXPECT_EQ(w, 19);
  ds.GetVariable(2).GetFormatEx(t, w, d);
  EXPECT_EQ(t, 20);
  ds.GetVariable(3).GetFormatEx(t, w, d);
  EXPECT_EQ(t, 21);
  EXPECT_TRUE(r.warnings.empty());
}

TEST(Corpus, VariableSetsNameLongNames) {
  // Release-12 files list upper-case short names; they are mapped to the variables' names.
  auto r = savfile::readFile(dataDir + "builder-made/variable-sets-short-names.sav");
  auto sets = VariableSets(*r.dataSource, PlainVariableSets);
  ASSERT_FALSE(sets.empty());
  for (auto const& set : sets) {
    for (auto const& name : set.GetVariableNames(VariableSet::AsStored)) {
      EXPECT_GE(r.dataSource->FindVarIndex(name.c_str(), 0), 0) << name;
    }
  }
  EXPECT_TRUE(r.warnings.empty());
}

// The committed builder-made files are what the builder makes: after a change to the builder,
// remake them with savfile_make_fixtures.
TEST(BuilderFixtures, CommittedFixturesAreWhatTheBuilderMakes) {
  auto const fixtures = savfiletest::builderFixtures();
  ASSERT_FALSE(fixtures.empty());
  for (auto const& f : fixtures) EXPECT_TRUE(contentsOf(repoRoot + f.path) == f.bytes) << f.path;
}

TEST(BuilderFixtures, CommittedFuzzSeedsAreWhatTheBuilderMakes) {
  auto const seeds = savfiletest::builderFuzzSeeds();
  ASSERT_FALSE(seeds.empty());
  for (auto const& f : seeds) EXPECT_TRUE(contentsOf(repoRoot + f.path) == f.bytes) << f.path;
}

// Every fixture and seed names its writer in the header: PSPP, ReadStat or this test builder.
TEST(BuilderFixtures, EveryFileNamesAnOpenWriter) {
  std::vector<std::string> paths;
  for (auto const& name : savfiletest::corpusFiles(dataDir)) paths.push_back(dataDir + name);
  std::string const seedDir = repoRoot + "fuzz/corpus/savfile/";
  for (auto const& name : filesIn(seedDir)) paths.push_back(seedDir + name);
  for (auto const& path : paths) {
    std::string const product = contentsOf(path).substr(4, 60);
    bool open = product.find("GNU pspp") != std::string::npos || product.find("ReadStat") != std::string::npos ||
                product.rfind("@(#) transspace test builder", 0) == 0;
    EXPECT_TRUE(open) << path << ": " << product;
  }
}

// The fuzz seed corpus (and the findings added to it) replay in the normal test run.
TEST(FuzzCorpus, ReplaysCleanly) {
  std::string dir = repoRoot + "fuzz/corpus/savfile/";
  auto files = filesIn(dir);
  ASSERT_FALSE(files.empty());
  for (auto const& name : files) {
    SCOPED_TRACE(name);
    std::string const bytes = contentsOf(dir + name);
    savfile::MemoryByteSource source(bytes);
    try {
      savfile::read(source, name);
    } catch (savfile::ReadError const& e) {
      EXPECT_NE(std::string(e.what()).find("near offset 0x"), std::string::npos);
    }
  }
}

TEST(BinaryRecords, DisplayParametersBothByteOrders) {
  for (bool big : {false, true}) {
    savfile::ByteOrder order(big);
    std::string data;
    for (int v : {1, 2}) data += big ? std::string("\0\0\0", 3) + char(v) : std::string(1, char(v)) + std::string("\0\0\0", 3);
    savfile::Diagnostics diag("t");
    auto p = savfile::parseDisplayParameters(data, 4, 2, 1, order, 0, diag);
    ASSERT_EQ(p.size(), 1u);
    EXPECT_EQ(p[0].measure, 1);
    EXPECT_EQ(p[0].width, -1);
    EXPECT_EQ(p[0].alignment, 2);
    EXPECT_TRUE(savfile::parseDisplayParameters(data, 4, 2, 3, order, 0, diag).empty());
    EXPECT_EQ(diag.warnings().size(), 1u);
  }
}

TEST(BinaryRecords, LongStringMissingOldPsppLayout) {
  // Old PSPP repeated the value length before each value after the first.
  savfile::ByteOrder order(false);
  std::string data = std::string("\3\0\0\0abc\2\x08\0\0\0", 12) + "x       " + std::string("\x08\0\0\0", 4) + "y       ";
  savfile::Diagnostics diag("t");
  auto m = savfile::parseLongStringMissing(data, order, 0, diag);
  ASSERT_EQ(m.size(), 1u);
  EXPECT_EQ(m[0].values, (std::vector<std::string>{"x       ", "y       "}));
  EXPECT_TRUE(diag.warnings().empty());
}

}  // namespace
