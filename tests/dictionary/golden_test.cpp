// Golden files: the serialised dictionaries of three rich data sources, compared byte for byte with
// the checked-in files under tests/data/dictionary/. The files were read line by line (see
// README.md beside them). To regenerate after an intended change, run this program with
// TRANSSPACE_UPDATE_GOLDEN=1 and review the difference before committing it.
#include "dictionarytestsupport.h"
#include "richdatasources.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

using namespace dicttest;

namespace {

std::string goldenPath(std::string const& name) { return std::string(TRANSSPACE_TEST_DATA) + "/dictionary/" + name; }

std::string readFile(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

class GoldenTest : public DictionaryTest {
protected:
  void check(ZORB_DataSource const& ds, std::string const& name) {
    std::string actual = serialize(buildDictionary(ds).get());
    std::string path = goldenPath(name);
    char const* update = std::getenv("TRANSSPACE_UPDATE_GOLDEN");
    if (update != nullptr && std::string(update) == "1") {
      std::ofstream(path, std::ios::binary) << actual;
      GTEST_SKIP() << "wrote " << path;
    }
    std::string expected = readFile(path);
    ASSERT_FALSE(expected.empty()) << "missing golden file " << path;
    EXPECT_EQ(actual, expected) << "the dictionary differs from " << path;
    // The literal placement gives the same bytes.
    EXPECT_EQ(serialize(buildDictionary(ds, true).get()), expected);
  }
};

TEST_F(GoldenTest, Survey) { check(surveyDataSource(), "survey.xml"); }
TEST_F(GoldenTest, Formats) { check(formatsDataSource(), "formats.xml"); }
TEST_F(GoldenTest, Texts) { check(textDataSource(), "texts.xml"); }

}  // namespace
