// The dictionary of every system file in the repository (test fixtures, fuzzing seeds, the demo)
// and of the rich test data sources conforms to the schema.
#include <algorithm>
#include <cctype>
#include <filesystem>

#include "dictionarytestsupport.h"
#include "richdatasources.h"
#include <transspace/savfile/reader.h>
#include <transspace/savfile/readerror.h>
#include "schemavalidator.h"

namespace {

namespace fs = std::filesystem;
using schematest::dictionaryText;
using schematest::joined;

// Every .sav and .zsav below the source directory, outside build trees and hidden directories.
std::vector<fs::path> systemFiles() {
  std::vector<fs::path> files;
  fs::path const root(TRANSSPACE_SOURCE_DIR);
  for (auto it = fs::recursive_directory_iterator(root); it != fs::recursive_directory_iterator(); ++it) {
    std::string const name = it->path().filename().string();
    if (it->is_directory() && it.depth() == 0 && (name.rfind("build", 0) == 0 || name[0] == '.')) {
      it.disable_recursion_pending();
      continue;
    }
    std::string const extension = it->path().extension().string();
    if (it->is_regular_file() && (extension == ".sav" || extension == ".zsav")) files.push_back(it->path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string testName(fs::path const& file) {
  std::string name = fs::relative(file, TRANSSPACE_SOURCE_DIR).string();
  for (char& c : name) {
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  }
  return name;
}

class SchemaOfSystemFile : public dicttest::DictionaryTest, public ::testing::WithParamInterface<fs::path> {};

TEST_P(SchemaOfSystemFile, DictionaryIsValid) {
  savfile::ReadResult file;
  try {
    file = savfile::readFile(GetParam().string());
  } catch (savfile::ReadError const& e) {
    GTEST_SKIP() << "not a readable system file, so it has no dictionary: " << e.what();
  }
  schematest::SchemaValidator validator;
  std::vector<std::string> const errors = validator.errors(dictionaryText(*file.dataSource));
  EXPECT_TRUE(errors.empty()) << GetParam() << ":\n" << joined(errors);
}

INSTANTIATE_TEST_SUITE_P(Repository, SchemaOfSystemFile, ::testing::ValuesIn(systemFiles()),
                         [](::testing::TestParamInfo<fs::path> const& info) { return testName(info.param); });

class SchemaTest : public dicttest::DictionaryTest {};

TEST_F(SchemaTest, LoadsWithoutErrors) {
  schematest::SchemaValidator validator;
  EXPECT_TRUE(validator.schemaErrors().empty()) << joined(validator.schemaErrors());
}

TEST_F(SchemaTest, TheRepositoryHoldsSystemFilesAndMostAreReadable) {
  std::size_t readable = 0;
  for (fs::path const& file : systemFiles()) {
    try {
      savfile::readFile(file.string());
      ++readable;
    } catch (savfile::ReadError const&) {
    }
  }
  EXPECT_GE(readable, 20u) << "the fixtures have moved: the parameterised test above checks too few files";
}

TEST_F(SchemaTest, RichDataSourcesAreValid) {
  schematest::SchemaValidator validator;
  for (ZORB_DataSource const& ds :
       {dicttest::surveyDataSource(), dicttest::formatsDataSource(), dicttest::textDataSource()}) {
    std::vector<std::string> const errors = validator.errors(dictionaryText(ds));
    EXPECT_TRUE(errors.empty()) << joined(errors);
  }
}

TEST_F(SchemaTest, AnEmptyDataSourceIsValid) {
  schematest::SchemaValidator validator;
  zorb::DataSourceBuilder b;
  std::vector<std::string> const errors = validator.errors(dictionaryText(b.build()));
  EXPECT_TRUE(errors.empty()) << joined(errors);
}

TEST_F(SchemaTest, ATimeStampOutsideTheYearsOneToNineThousandIsAnEmptyDateAndValid) {
  schematest::SchemaValidator validator;
  zorb::DataSourceBuilder b;
  b.timestamp(1e13).rowCount(0);
  std::string const text = dictionaryText(b.build());
  ASSERT_NE(text.find("creationDateTime=\"\""), std::string::npos) << text;
  std::vector<std::string> const errors = validator.errors(text);
  EXPECT_TRUE(errors.empty()) << joined(errors);
}

}  // namespace
