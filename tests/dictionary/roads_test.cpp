// The two roads of the dictionary export give the same bytes: the document (TransValue(ds),
// serialised) and the text written straight from the host model (TransDictionaryWriter), in the
// compact layout and in the pretty one (the compact text re-serialised with pretty printing, as the
// command-line tool did before it had the text road). Proved on every system file in tests/data,
// the demo file, the rich data sources, files of both byte orders and randomised data sources,
// also with the host's code page switched away from UTF-8.
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <filesystem>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "richdatasources.h"
#include <transspace/savfile/bytesource.h>
#include <transspace/savfile/reader.h>
#include "savfilebuilder.h"
#include <transspace/transdictionarywriter.h>
#include "values/transnumbertext.h"
#include <transspace/transspace.h>
#include <transspace/transvalue.h>
#include <transspace/zorb/datasource.h>
#include <transspace/zorb/datasourcebuilder.h>
#include <transspace/zorb/platform.h>

namespace {

namespace xc = XERCES_CPP_NAMESPACE;
using Layout = TransDictionaryWriter::Layout;

// The value space brings up the XML platform for the whole program.
class SpaceEnvironment : public ::testing::Environment {
public:
  void SetUp() override { space_ = new TransSpace(); }
  void TearDown() override { delete space_; }

private:
  TransSpace* space_ = nullptr;
};
::testing::Environment* const spaceEnvironment = ::testing::AddGlobalTestEnvironment(new SpaceEnvironment);

// The document road: the document value's multibyte XML text; empty when it cannot be serialised.
std::string documentRoad(ZORB_DataSource const& ds, bool* serialised = nullptr) {
  TransValue value(ds);
  TransStatus status;
  TransString* xml = value.asMBCSXML(status);
  std::string text = status.failure() ? std::string() : std::string(xml->asMBCS());
  TransValue::releaseString(xml);
  if (serialised != nullptr) *serialised = !status.failure();
  return text;
}

// The compact text parsed and written again with pretty printing.
std::string prettyPrinted(std::string const& xml) {
  xc::XercesDOMParser parser;
  parser.setValidationScheme(xc::XercesDOMParser::Val_Never);
  parser.setDoNamespaces(false);
  parser.setLoadExternalDTD(false);
  parser.setDisableDefaultEntityResolution(true);
  xc::MemBufInputSource input(reinterpret_cast<XMLByte const*>(xml.data()), xml.size(), "dictionary");
  parser.parse(input);
  xc::DOMImplementation* ls = xc::DOMImplementationRegistry::getDOMImplementation(u"LS");
  xc::DOMLSSerializer* serializer = static_cast<xc::DOMImplementationLS*>(ls)->createLSSerializer();
  serializer->getDomConfig()->setParameter(xc::XMLUni::fgDOMWRTFormatPrettyPrint, true);
  xc::DOMLSOutput* output = static_cast<xc::DOMImplementationLS*>(ls)->createLSOutput();
  xc::MemBufFormatTarget target;
  output->setByteStream(&target);
  output->setEncoding(u"UTF-8");
  serializer->write(parser.getDocument(), output);
  std::string text(reinterpret_cast<char const*>(target.getRawBuffer()), target.getLen());
  output->release();
  serializer->release();
  return text;
}

std::string textRoad(ZORB_DataSource const& ds, Layout layout) {
  std::ostringstream out;
  TransDictionaryWriter::write(ds, out, layout);
  return out.str();
}

// Both layouts; returns whether both agreed (the first difference is reported). A dictionary that
// holds a character XML cannot carry (a code page's substitute character, for one) cannot be
// serialised by the document road, and the text road refuses it too.
bool expectSameBytes(ZORB_DataSource const& ds, int* unwritable = nullptr) {
  bool serialised = false;
  std::string const document = documentRoad(ds, &serialised);
  if (!serialised) {
    EXPECT_THROW(textRoad(ds, Layout::compact), TransDictionaryWriter::Unwritable);
    EXPECT_THROW(textRoad(ds, Layout::pretty), TransDictionaryWriter::Unwritable);
    if (unwritable != nullptr) ++*unwritable;
    return unwritable != nullptr;
  }
  std::string const compact = textRoad(ds, Layout::compact);
  std::string const pretty = textRoad(ds, Layout::pretty);
  EXPECT_EQ(compact, document);
  EXPECT_EQ(pretty, prettyPrinted(document));
  return compact == document && pretty == prettyPrinted(document);
}

std::shared_ptr<ZORB_DataSource> readBytes(std::string const& bytes) {
  savfile::MemoryByteSource source(bytes);
  return savfile::read(source, "built.sav").dataSource;
}

class RoadsTest : public ::testing::Test {
protected:
  void SetUp() override { zorb::ResetPlatformSettings(); }
  void TearDown() override { zorb::ResetPlatformSettings(); }
};

TEST_F(RoadsTest, EverySystemFileInTheTestDataAndTheDemoFile) {
  std::vector<std::filesystem::path> files;
  for (auto const& entry : std::filesystem::recursive_directory_iterator(TRANSSPACE_TEST_DATA)) {
    std::string extension = entry.path().extension().string();
    if (extension == ".sav" || extension == ".zsav") files.push_back(entry.path());
  }
  files.push_back(std::filesystem::path(TRANSSPACE_TEST_DATA) / ".." / ".." / "examples" / "data" / "demo.sav");
  int compared = 0;
  for (auto const& file : files) {
    SCOPED_TRACE(file.string());
    std::shared_ptr<ZORB_DataSource> ds;
    try {
      ds = savfile::readFile(file.string()).dataSource;
    } catch (std::exception const&) {
      continue;  // a file the reader refuses has no dictionary on either road
    }
    expectSameBytes(*ds);
    ++compared;
  }
  EXPECT_GE(compared, 20);
}

TEST_F(RoadsTest, TheRichDataSources) {
  for (auto make : {dicttest::surveyDataSource, dicttest::formatsDataSource, dicttest::textDataSource}) {
    expectSameBytes(make());
  }
}

TEST_F(RoadsTest, AnEmptyDataSource) { expectSameBytes(ZORB_DataSource()); }

// A file with a label, value labels, missing values and a long string, in either byte order.
TEST_F(RoadsTest, FilesOfBothByteOrders) {
  std::string const label =
      "K\xC3\xB6rpergr\xC3\xB6\xC3\x9F"
      "e & <Ma\xC3\x9F>";
  std::string texts[2];
  for (bool bigEndian : {false, true}) {
    savfiletest::SavFileBuilder b(bigEndian);
    b.numeric("AGE", &label, 3, {-9, -1, 99});
    b.string("CITY", 20, nullptr, {"n/a"});
    b.valueLabels({{b.f64(1), "one \"1\""}, {b.f64(2), "two\ttabs"}}, {1});
    b.text(20, "UTF-8");
    std::shared_ptr<ZORB_DataSource> ds = readBytes(b.build());
    SCOPED_TRACE(bigEndian);
    expectSameBytes(*ds);
    texts[bigEndian] = textRoad(*ds, Layout::compact);
  }
  EXPECT_EQ(texts[0], texts[1]);
}

// ---- randomised data sources ----

class RandomDataSource {
public:
  // `pieces`: letters of the host's code page beyond ASCII, as that code page's bytes.
  explicit RandomDataSource(unsigned seed, std::vector<std::string> pieces = {"\xC3\xA9", "\xC3\x9F", "\xE6\x97\xA5",
                                                                              "\xE2\x82\xAC", "\xF0\x9F\x98\x80"})
      : random_(seed), pieces_(std::move(pieces)) {}

  ZORB_DataSource make() {
    zorb::DataSourceBuilder b;
    b.timestamp(pick(0, 2000000000) + 0.5).rowCount(pick(-2, 5) < 0 ? -1 : pick(0, 1 << 30));
    int const count = pick(0, 12);
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) {
      std::string name = text(1, 12) + std::to_string(i);  // distinct names
      names.push_back(name);
      addVariable(b, name);
    }
    if (count > 0 && chance(2)) b.weightVariable(pick(0, count - 1));
    for (int s = pick(0, 3); s > 0; --s) b.variableSet(text(0, 10), members(names));
    for (int s = pick(0, 3); s > 0; --s) {
      if (chance(2)) {
        b.categorySet("$" + text(0, 8), chance(3) ? "" : text(0, 20), members(names), chance(3));
      } else {
        b.dichotomySet("$" + text(0, 8), text(0, 20), chance(3) ? "" : text(1, 4), chance(2), members(names),
                       chance(3));
      }
    }
    addAttributes(b);
    for (int e = pick(0, 4); e > 0; --e) {
      std::string bytes;
      for (int k = pick(0, 40); k > 0; --k) bytes.push_back(static_cast<char>(pick(0, 255)));
      b.extension(pick(1, 16), 1, bytes);
    }
    return b.build();
  }

private:
  int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  bool chance(int oneIn) { return pick(1, oneIn) == 1; }

  // A text of the host's code page: ASCII with XML's special characters, tab, line feed and
  // carriage return, the code page's own letters, and now and then any byte at all.
  std::string text(int low, int high) {
    static char const* const ascii[] = {"a", "Z",  "7",  " ",  "&",   "<",     ">", "\"",
                                        "'", "\t", "\n", "\r", "]]>", "&amp;", "$"};
    std::string out;
    if (chance(150)) out.push_back(static_cast<char>(pick(1, 255)));
    for (int n = pick(low, high); n > 0; --n) {
      if (chance(3)) {
        out += pieces_[static_cast<std::size_t>(pick(0, static_cast<int>(pieces_.size()) - 1))];
      } else {
        out += ascii[pick(0, 14)];
      }
    }
    return out;
  }

  std::string longOrShort() { return chance(10) ? text(3000, 5000) : text(0, 30); }

  double number() {
    static double const specials[] = {0.0,
                                      -0.0,
                                      1.0,
                                      -9.0,
                                      0.125,
                                      1e15,
                                      123456789.987654321,
                                      -2.5e-7,
                                      1e300,
                                      std::numeric_limits<double>::max(),
                                      dicttest::lowestDouble(),
                                      -std::numeric_limits<double>::max(),
                                      9007199254740993.0};
    if (chance(2)) return specials[pick(0, 12)];
    return std::uniform_real_distribution<double>(-1e6, 1e6)(random_) * (chance(2) ? 1 : 0.001);
  }

  void addVariable(zorb::DataSourceBuilder& b, std::string const& name) {
    static int const formats[] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 15, 16, 17, 20, 21,
                                  22, 23, 24, 25, 26, 27, 28, 29, 30, 31, 32, 33, 34, 35, 36, 37, 38,
                                  39, 40, 41, 42, 43, 44, 45, 46, 47, 48, 49, 50, 51, 52, 53, 85, 86};
    zorb::VariableBuilder& v = b.addVariable(name);
    bool const isString = chance(3);
    std::size_t const width = static_cast<std::size_t>(pick(1, 40));
    if (isString) v.string(static_cast<int>(width));
    switch (pick(0, 2)) {
      case 0: v.noLabel(); break;
      case 1: v.label(""); break;
      default: v.label(longOrShort()); break;
    }
    v.printFormat(formats[pick(0, 50)], pick(0, 40), pick(0, 16))
        .writeFormat(formats[pick(0, 50)], pick(0, 40), pick(0, 16));
    v.alignment(pick(0, 2)).measurementLevel(pick(0, 3)).displayWidth(static_cast<std::int16_t>(pick(-32768, 32767)));
    if (isString) {
      std::vector<std::string> missing;
      for (int k = pick(0, 3); k > 0; --k) missing.push_back(text(0, 3).substr(0, width));
      if (!missing.empty()) v.missingStrings(missing);
      for (int k = pick(0, 4); k > 0; --k)
        v.valueLabel((text(0, 6) + std::to_string(k)).substr(0, width), longOrShort());
    } else {
      switch (pick(0, 3)) {
        case 0: break;
        case 1: v.missingValues(std::vector<double>(static_cast<std::size_t>(pick(1, 3)), number())); break;
        case 2: v.missingRange(number(), number()); break;
        default: v.missingRange(number(), number(), number()); break;
      }
      for (int k = pick(0, 4); k > 0; --k) v.valueLabel(number() + k, longOrShort());
    }
    if (chance(2)) {
      for (int k = pick(1, 3); k > 0; --k) v.attribute(chance(3) ? "$" + text(0, 6) : text(0, 6), values());
      v.attributesVersion(pick(-5, 100000));
    }
  }

  std::vector<std::string> values() {
    std::vector<std::string> out;
    for (int k = chance(5) ? pick(10, 60) : pick(0, 3); k > 0; --k) out.push_back(longOrShort());
    return out;
  }

  void addAttributes(zorb::DataSourceBuilder& b) {
    for (int k = pick(0, 3); k > 0; --k)
      b.attribute(chance(3) ? "$" + text(0, 6) : text(0, 6) + std::to_string(k), values());
  }

  std::vector<std::string> members(std::vector<std::string> const& names) {
    std::vector<std::string> out;
    for (int k = pick(0, 4); k > 0; --k) {
      out.push_back(names.empty() || chance(4) ? "unknown" + std::to_string(k)
                                               : names[pick(0, static_cast<int>(names.size()) - 1)]);
    }
    return out;
  }

  std::mt19937 random_;
  std::vector<std::string> pieces_;
};

TEST_F(RoadsTest, RandomDataSources) {
  int failures = 0;
  int unwritable = 0;
  for (unsigned seed = 1; seed <= 400 && failures < 3; ++seed) {
    SCOPED_TRACE(seed);
    ZORB_DataSource ds = RandomDataSource(seed).make();
    if (!expectSameBytes(ds, &unwritable)) ++failures;
  }
  EXPECT_LT(unwritable, 100);  // most of them were compared byte for byte
}

TEST_F(RoadsTest, RandomDataSourcesUnderSingleAndMultiByteCodePages) {
  struct CodePage {
    char const* name;
    std::vector<std::string> letters;
  };
  std::vector<CodePage> const codePages = {
      {"windows-1252", {"\xE9", "\xDF", "\x80", "\xFC"}},
      {"ISO-8859-7", {"\xE1", "\xC4", "\xF9"}},
      {"Shift_JIS", {"\x93\xFA", "\x82\xA0", "\x83\x41", "\xB1"}},
      {"GB18030", {"\xC8\xD5", "\xD6\xD0", "\x81\x30\x81\x30", "\x95\x32\x82\x36"}}};
  for (CodePage const& codePage : codePages) {
    SCOPED_TRACE(codePage.name);
    zorb::SetUTF8Mode(false);
    zorb::SetDefaultCodePage(codePage.name);
    int failures = 0;
    int unwritable = 0;
    for (unsigned seed = 1; seed <= 80 && failures < 2; ++seed) {
      SCOPED_TRACE(seed);
      ZORB_DataSource ds = RandomDataSource(seed, codePage.letters).make();
      if (!expectSameBytes(ds, &unwritable)) ++failures;
    }
    EXPECT_LT(unwritable, 30);
  }
}

// A character XML 1.0 cannot carry: the document cannot be serialised, and the text road refuses
// too, before it has written anything of a small dictionary.
TEST_F(RoadsTest, ACharacterXmlCannotCarryStopsBothRoads) {
  for (std::string const& bad : {std::string("a\x01"
                                             "b"),
                                 std::string("\x1F"), std::string("x\xEF\xBF\xBE")}) {
    zorb::DataSourceBuilder b;
    b.addVariable("v").label(bad);
    ZORB_DataSource ds = b.build();
    bool serialised = true;
    documentRoad(ds, &serialised);
    EXPECT_FALSE(serialised);
    std::ostringstream out;
    EXPECT_THROW(TransDictionaryWriter::write(ds, out, Layout::compact), TransDictionaryWriter::Unwritable);
    EXPECT_EQ(out.str(), "");
  }
}

// The numbers' short cuts give exactly the formatter's texts: integers in every numeric locale
// (the C one and decimal-comma ones), whole numbers of values up to and beyond 2^53, negative
// zero and fractions.
TEST_F(RoadsTest, NumberShortCutsGiveTheFormattersTexts) {
  std::mt19937_64 random(7);
  std::vector<long> integers = {0,
                                1,
                                -1,
                                9,
                                10,
                                -10,
                                999,
                                1000,
                                -1000,
                                123456789,
                                std::numeric_limits<long>::max(),
                                std::numeric_limits<long>::min(),
                                std::numeric_limits<long>::min() + 1};
  for (int i = 0; i < 3000; ++i) {
    long value = static_cast<long>(random());
    integers.push_back(value >> (i % 63));
  }
  std::vector<double> numbers = {0.0,
                                 -0.0,
                                 1.0,
                                 -1.0,
                                 0.5,
                                 -0.5,
                                 0.0005,
                                 1e15,
                                 -1e15,
                                 9007199254740991.0,
                                 9007199254740992.0,
                                 -9007199254740992.0,
                                 9007199254740993.0,
                                 1e300,
                                 1.5e-300,
                                 std::numeric_limits<double>::max(),
                                 std::numeric_limits<double>::denorm_min(),
                                 std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN()};
  for (int i = 0; i < 3000; ++i) {
    double whole = static_cast<double>(static_cast<std::int64_t>(random() >> (11 + i % 53)));
    numbers.push_back(i % 2 == 0 ? whole : -whole);
    numbers.push_back(whole / 1024.0);
  }
  int locales = 0;
  for (char const* locale : {"C", "de_DE.UTF-8", "tr_TR.UTF-8", "en_US.UTF-8"}) {
    if (std::setlocale(LC_NUMERIC, locale) == nullptr) continue;
    ++locales;
    SCOPED_TRACE(locale);
    TransNumberText texts;
    auto copy = [](XMLCh const* text) { return text == nullptr ? std::u16string(u"(none)") : std::u16string(text); };
    for (long value : integers) {
      std::u16string const quick = copy(texts.integer(value));
      ASSERT_EQ(quick, copy(texts.integerByFormatter(value))) << value;
    }
    for (double value : numbers) {
      std::u16string const quick = copy(texts.number(value));
      ASSERT_EQ(quick, copy(texts.numberByFormatter(value))) << value;
    }
  }
  std::setlocale(LC_NUMERIC, "C");
  EXPECT_GE(locales, 1);
}

}  // namespace
