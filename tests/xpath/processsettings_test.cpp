// Queries under the process-wide settings the library follows at each call: the C library's
// numeric locale (numbers read from node text) and the host's code page with UTF-8 mode off
// (contexts and paths given as multibyte text, answers read back as multibyte text), on every road.
#include "xpathtest.h"

#include "core/transutil.h"
#include <transspace/zorb/platform.h>

#include <clocale>
#include <string>

#include <unicode/unistr.h>
#include <xercesc/dom/DOM.hpp>

using namespace domtest;
using namespace xpathtest;

namespace {

class ProcessSettingsTest : public RoadTest {
protected:
  // A document of one element `root` with the given attributes and text, built through the DOM.
  std::unique_ptr<TransDOMImpl> document(std::u16string const& root,
                                         std::vector<std::pair<std::u16string, std::u16string>> const& attributes,
                                         std::u16string const& text) {
    Document source(xercesc::DOMImplementation::getImplementation()->createDocument());
    xercesc::DOMElement* element = source->createElement(root.c_str());
    source->appendChild(element);
    for (auto const& attribute : attributes) element->setAttribute(attribute.first.c_str(), attribute.second.c_str());
    element->appendChild(source->createTextNode(text.c_str()));
    return onRoad(new TransDOMImpl(source.get()));
  }

  static void useNumericLocale(char const* name) {
    ASSERT_NE(std::setlocale(LC_NUMERIC, name), nullptr) << "locale " << name << " is not installed";
  }
};

double parsed(char16_t const* text) { return TransUtil::UTF16toDouble(icu::UnicodeString(text)); }

TEST_P(ProcessSettingsTest, NodeTextIsReadInTheGermanNumericLocale) {
  auto value = document(u"m", {{u"comma", u"1,5"}, {u"point", u"1.5"}, {u"grouped", u"1.234,5"}}, u"1,25");
  useNumericLocale("de_DE.UTF-8");
  TransStatus status;
  EXPECT_EQ(askNumber(*value, "/m", "@comma", status), 1.5);
  expectFlags(status, {false, false}, "decimal comma");
  EXPECT_EQ(askNumber(*value, "/m", "text()", status), 1.25);
  EXPECT_EQ(askNumber(*value, "/m", "@grouped", status), 1234.5);
  EXPECT_EQ(askNumber(*value, "/m", "string(@comma)", status), 1.5);
  expectFlags(status, {false, false}, "string result");
  // A full stop is the German grouping separator: whatever the locale's parse makes of it.
  double const point = parsed(u"1.5");
  EXPECT_NE(point, 1.5);
  EXPECT_EQ(askNumber(*value, "/m", "@point", status), point);
  expectFlags(status, {false, point == TransUtil::noNumber}, "decimal point");
  // XPath's own numbers know no locale: its arithmetic reads 1.5 and its strings write a point.
  EXPECT_EQ(askNumber(*value, "/m", "@point * 2", status), 3.0);
  EXPECT_EQ(askString(*value, "/m", "@point div 4", status), "0.375");
  EXPECT_EQ(askString(*value, "/m", "number(@comma)", status), "NaN");
  expectRoad(*value);
}

TEST_P(ProcessSettingsTest, TheSameTextInTheCLocale) {
  auto value = document(u"m", {{u"comma", u"1,5"}, {u"point", u"1.5"}}, u"");
  TransStatus status;
  EXPECT_EQ(askNumber(*value, "/m", "@point", status), 1.5);
  expectFlags(status, {false, false}, "decimal point");
  double const comma = parsed(u"1,5");
  EXPECT_NE(comma, 1.5);
  EXPECT_EQ(askNumber(*value, "/m", "@comma", status), comma);
}

// `utf8` in a code page, through ICU's converter of that name.
std::string encoded(std::string const& utf8, char const* codepage) {
  icu::UnicodeString const text = icu::UnicodeString::fromUTF8(utf8);
  std::string bytes(static_cast<std::size_t>(text.length()) * 4 + 1, '\0');
  int32_t const length = text.extract(0, text.length(), &bytes[0], static_cast<uint32_t>(bytes.size()), codepage);
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

// Asks with context and path as multibyte text in the current code page; the answers as bytes.
std::string askMBCS(TransDOMImpl const& value, std::string const& context, std::string const& path,
                    TransStatus& status) {
  TransString* answer = value.asString(TransString(context.c_str()), TransString(path.c_str()), status);
  std::string bytes = answer->asMBCS();
  TransValue::releaseString(answer);
  return bytes;
}

std::vector<std::string> askMBCSList(TransDOMImpl const& value, std::string const& context, std::string const& path,
                                     TransStatus& status) {
  TransStringList* answer = value.asStringList(TransString(context.c_str()), TransString(path.c_str()), status);
  std::vector<std::string> entries;
  for (unsigned long i = 0; i < answer->size(); ++i) entries.push_back(answer->asMBCS(i));
  TransValue::releaseStringList(answer);
  return entries;
}

TEST_P(ProcessSettingsTest, MultibyteQueriesInAWesternCodePage) {
  auto value = document(u"gr\u00f6\u00dfe", {{u"ma\u00df", u"gro\u00df"}, {u"z\u00e4hler", u"3"}}, u"\u00e9t\u00e9");
  zorb::SetUTF8Mode(false);
  zorb::SetDefaultCodePage("windows-1252");
  std::string const context = encoded("/größe", "windows-1252");
  ASSERT_EQ(context,
            "/gr\xF6\xDF"
            "e");
  TransStatus status;
  EXPECT_EQ(askMBCS(*value, context, encoded("@maß", "windows-1252"), status), "gro\xDF");
  expectFlags(status, {false, false}, "attribute");
  EXPECT_EQ(askMBCS(*value, context, "text()", status), "\xE9t\xE9");
  EXPECT_EQ(askNumber(*value, context, encoded("@zähler", "windows-1252"), status), 3.0);
  EXPECT_EQ(askMBCSList(*value, context, "@*", status), (std::vector<std::string>{"gro\xDF", "3"}));
  expectFlags(status, {false, false}, "list");
  expectRoad(*value);
}

// Shift_JIS: two bytes per character, and trail bytes that are ASCII punctuation to a byte-wise
// reader ('\' in 表 and ソ, '@' in ァ is not used: names stay valid XML).
TEST_P(ProcessSettingsTest, MultibyteQueriesInAJapaneseCodePage) {
  auto value =
      document(u"\u8868", {{u"\u540d\u524d", u"\u308a\u3093\u3054"}, {u"\u30bd", u"\u8868\u30bd"}}, u"\u54c1\u76ee");
  zorb::SetUTF8Mode(false);
  zorb::SetDefaultCodePage("Shift_JIS");
  std::string const context = encoded("/表", "Shift_JIS");
  ASSERT_EQ(context, "/\x95\x5C");
  TransStatus status;
  EXPECT_EQ(askMBCS(*value, context, encoded("@名前", "Shift_JIS"), status), encoded("りんご", "Shift_JIS"));
  expectFlags(status, {false, false}, "attribute");
  EXPECT_EQ(askMBCS(*value, context, encoded("@ソ", "Shift_JIS"), status), "\x95\x5C\x83\x5C");
  EXPECT_EQ(askMBCS(*value, context, "text()", status), encoded("品目", "Shift_JIS"));
  EXPECT_EQ(askMBCS(*value, encoded("/表[@ソ='表ソ']", "Shift_JIS"), encoded("@名前", "Shift_JIS"), status),
            encoded("りんご", "Shift_JIS"));
  expectFlags(status, {false, false}, "predicate with a multibyte literal");
  EXPECT_EQ(askMBCSList(*value, context, "@*", status).size(), 2u);
  expectRoad(*value);
}

XPATHTEST_ON_EVERY_ROAD(ProcessSettingsTest);

}  // namespace
