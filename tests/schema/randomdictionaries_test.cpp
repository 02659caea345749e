// Dictionaries of randomly made data sources conform to the schema: every section, every format
// code, every alignment and measurement level, missing values of all shapes (the ends of open
// ranges too), texts that XML escapes, sets naming unknown variables, extension records of listed
// and unlisted types, unknown row counts and time stamps outside the calendar. The seeds are fixed,
// so a failure names a data source that can be made again.
#include <cmath>
#include <limits>
#include <random>
#include <set>

#include "dictionarytestsupport.h"
#include "richdatasources.h"
#include "schemavalidator.h"

namespace {

using schematest::joined;

// The host's format codes that have a name.
constexpr int kFormatCodes[] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 15, 16, 17, 20, 21,
                                22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38,
                                39, 40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 50, 51, 52, 53, 85, 86};

class RandomDataSource {
public:
  explicit RandomDataSource(unsigned seed) : random_(seed) {}

  ZORB_DataSource make() {
    zorb::DataSourceBuilder b;
    double const stamps[] = {0.0, 1795241020.0, -86400.0 * 365, 1e13, -1e13, std::nan("")};
    b.timestamp(stamps[pick(0, 5)]).rowCount(pick(0, 3) == 0 ? -1 : pick(0, 100000));
    int const count = pick(0, 10);
    for (int i = 0; i < count; ++i) addVariable(b, i);
    if (!numeric_.empty() && chance(50)) b.weightVariable(numeric_[pick(0, static_cast<int>(numeric_.size()) - 1)]);
    for (int i = pick(0, 2); i > 0; --i) b.variableSet("set " + text(), members());
    for (int i = pick(0, 3); i > 0; --i) addResponseSet(b, i);
    for (int i = pick(0, 3); i > 0; --i) b.attribute(attributeName(), values());
    b.attributesVersion(pick(-2, 9));
    for (int i = pick(0, 4); i > 0; --i) {
      int const size = pick(1, 8);
      b.extension(pick(0, 20), size, bytes(size * pick(0, 6)));
    }
    return b.build();
  }

private:
  int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  bool chance(int percent) { return pick(1, 100) <= percent; }

  // Texts with characters that XML escapes and characters beyond ASCII.
  std::string text() {
    char const* const words[] = {"a", "Straße", "<tag>", "x & y", "\"q\"", "'s", "é", "日本", "1", "tab\tbed"};
    std::string out = words[pick(0, 9)];
    if (chance(50)) out += std::string(" ") + words[pick(0, 9)];
    return out;
  }

  double number() {
    double const specials[] = {0.0,
                               -0.0,
                               1.5,
                               -9,
                               1e10,
                               0.3333333,
                               std::numeric_limits<double>::max(),
                               dicttest::lowestDouble(),
                               -std::numeric_limits<double>::max(),
                               std::numeric_limits<double>::infinity(),
                               std::nan("")};
    return specials[pick(0, 10)];
  }

  void addVariable(zorb::DataSourceBuilder& b, int index) {
    std::string const name = "v" + std::to_string(index) + (chance(30) ? "_é" : "");
    zorb::VariableBuilder& v = b.addVariable(name);
    names_.push_back(name);
    int const width = chance(40) ? pick(1, 40) : 0;
    if (width > 0)
      v.string(width);
    else
      numeric_.push_back(index);
    if (chance(70)) v.label(chance(20) ? "" : text());
    v.alignment(pick(0, 2)).measurementLevel(pick(0, 3)).displayWidth(static_cast<std::int16_t>(pick(-5, 300)));
    v.printFormat(formatCode(), pick(1, 40), pick(0, 16)).writeFormat(formatCode(), pick(1, 40), pick(0, 16));
    if (width > 0)
      addStringValues(v, width);
    else
      addNumericValues(v);
    for (int i = pick(0, 2); i > 0; --i) v.attribute(attributeName(), values());
    if (chance(30)) v.attributesVersion(pick(0, 5));
  }

  int formatCode() { return kFormatCodes[pick(0, static_cast<int>(std::size(kFormatCodes)) - 1)]; }

  void addNumericValues(zorb::VariableBuilder& v) {
    switch (pick(0, 3)) {
      case 1: {
        std::vector<double> values;
        for (int i = pick(1, 3); i > 0; --i) values.push_back(number());
        v.missingValues(values);
        break;
      }
      case 2: v.missingRange(number(), number()); break;
      case 3: v.missingRange(number(), number(), number()); break;
      default: break;
    }
    for (int i = pick(0, 3); i > 0; --i) v.valueLabel(number(), text());
  }

  void addStringValues(zorb::VariableBuilder& v, int width) {
    std::vector<std::string> missing;
    for (int i = chance(40) ? pick(1, 3) : 0; i > 0; --i) missing.push_back(fitting(width));
    if (!missing.empty()) v.missingStrings(missing);
    for (int i = pick(0, 3); i > 0; --i) v.valueLabel(fitting(width), text());
  }

  // A value of at most `width` bytes, with a blank inside now and then.
  std::string fitting(int width) {
    std::string value = chance(30) ? "ab cd" : "v" + std::to_string(pick(0, 999));
    return value.substr(0, static_cast<std::size_t>(width));
  }

  std::string attributeName() {
    char const* const names[] = {"$VariableView", "note", "", "$", "x<y"};
    return names[pick(0, 4)];
  }

  std::vector<std::string> values() {
    std::vector<std::string> out;
    for (int i = pick(0, 3); i > 0; --i) out.push_back(chance(20) ? "" : text());
    return out;
  }

  // Members named as the data source spells them, in another letter case, or unknown.
  std::vector<std::string> members() {
    std::vector<std::string> out;
    for (int i = pick(0, 4); i > 0; --i) {
      if (names_.empty() || chance(20)) {
        out.push_back("missing" + std::to_string(i));
      } else {
        std::string name = names_[pick(0, static_cast<int>(names_.size()) - 1)];
        if (chance(30)) name[0] = 'V';
        out.push_back(name);
      }
    }
    return out;
  }

  void addResponseSet(zorb::DataSourceBuilder& b, int index) {
    std::string const name = "$mr" + std::to_string(index);
    std::string const label = chance(30) ? "" : text();
    switch (pick(0, 2)) {
      case 0: b.categorySet(name, label, members(), chance(30)); break;
      case 1: b.dichotomySet(name, label, chance(30) ? "" : "1", chance(50), members(), chance(30)); break;
      default: b.addMultipleResponseSet(name, pick(0, 7)).label(label).members(members()); break;
    }
  }

  std::string bytes(int count) {
    std::string out;
    for (int i = 0; i < count; ++i) out += static_cast<char>(pick(0, 255));
    return out;
  }

  std::mt19937 random_;
  std::vector<std::string> names_;
  std::vector<int> numeric_;
};

class RandomDictionaries : public dicttest::DictionaryTest {};

TEST_F(RandomDictionaries, AreValid) {
  schematest::SchemaValidator validator;
  std::set<std::string> sections;  // which sections the random documents reached
  for (unsigned seed = 1; seed <= 300; ++seed) {
    ZORB_DataSource const ds = RandomDataSource(seed).make();
    dicttest::DocumentPtr const document = dicttest::buildDictionary(ds);
    ASSERT_TRUE(document) << "seed " << seed;
    for (std::string const& name : dicttest::childNames(document->getDocumentElement())) sections.insert(name);
    std::vector<std::string> const errors = validator.errors(dicttest::serialize(document.get()));
    ASSERT_TRUE(errors.empty()) << "seed " << seed << ":\n" << joined(errors);
  }
  EXPECT_EQ(sections, (std::set<std::string>{"variable", "weightVariable", "valueLabelSet", "variableSet",
                                             "multipleResponseSet", "attributeSet", "extension"}));
}

}  // namespace
