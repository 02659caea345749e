// TransXMLInput: XML text into a document value through the one bounded parse, and the clear
// refusal of each hostile input (bombs, document types, deep nesting, texts over the size limit).
#include <transspace/transowner.h>
#include <transspace/transxmlinput.h>

#include "hostilexml.h"
#include <transspace/transspace.h>
#include "transtestsupport.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include <xercesc/dom/DOM.hpp>

namespace {

using transtest::text;

class XmlInputTest : public ::testing::Test {
protected:
  TransSpace space_;  // the XML platform, up for each test

  static TransValue parse(std::string const& xml) { return TransXMLInput::parseDocument(xml.data(), xml.size()); }

  // The message of the refusal of `xml`; fails the test when the text is accepted.
  static std::string refusal(std::string const& xml) {
    try {
      parse(xml);
    } catch (TransXMLInputError const& e) {
      return e.what();
    }
    ADD_FAILURE() << "accepted: " << xml.substr(0, 200);
    return std::string();
  }

  static std::string answer(TransValue const& value, char const* context, char const* path) {
    TransStatus status;
    TransStringOwner result(value.asString(TransString(context), TransString(path), status));
    EXPECT_FALSE(status.failure()) << context << " " << path;
    return text(*result);
  }
};

TEST_F(XmlInputTest, WellFormedTextBecomesAValueThatAnswersQueries) {
  TransValue value = parse("<r a='1'><v n='x'>one</v><v n='y'>two</v></r>");
  EXPECT_EQ(answer(value, "/r", "v[@n='y']/text()"), "two");
  EXPECT_EQ(answer(value, "/r", "@a"), "1");
}

TEST_F(XmlInputTest, TheTextMayDeclareItsEncodingOrShowItByAByteOrderMark) {
  std::string const latin1 = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r>caf\xE9</r>";
  EXPECT_EQ(answer(parse(latin1), "/r", "text()"), "caf\xC3\xA9");
  std::string utf16 = "\xFF\xFE";  // little-endian byte order mark
  for (char c : std::string("<r>hi</r>")) utf16 += std::string{c, '\0'};
  EXPECT_EQ(answer(parse(utf16), "/r", "text()"), "hi");
}

TEST_F(XmlInputTest, PredefinedEntitiesAndCharacterReferencesStandForOneCharacterEach) {
  EXPECT_EQ(answer(parse("<r>&lt;&amp;&gt;&quot;&apos;&#65;&#x42;</r>"), "/r", "text()"), "<&>\"'AB");
}

TEST_F(XmlInputTest, OnlyTheDocumentElementIsKeptAsWhenAValueCopiesADocument) {
  TransValue value = parse("<!-- before --><?pi data?><r/><!-- after -->");
  TransStatus status;
  TransStringOwner xml(value.asMBCSXML(status));
  EXPECT_EQ(text(*xml), "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?><r/>");
}

TEST_F(XmlInputTest, TextThatIsNotWellFormedIsRefusedWithItsPlace) {
  EXPECT_EQ(refusal("<r><a></r>").rfind("not well-formed XML: line 1, column ", 0), 0u) << refusal("<r><a></r>");
  EXPECT_NE(refusal("").find("not well-formed XML"), std::string::npos);
  EXPECT_NE(refusal("just text").find("not well-formed XML"), std::string::npos);
  EXPECT_THROW(TransXMLInput::parseDocument(nullptr, 0), TransXMLInputError);
}

TEST_F(XmlInputTest, TheEntityExpansionBombIsRefusedAtItsDocumentType) {
  EXPECT_EQ(refusal(hostile::entityBomb()), "line 2, column 16: a document type declaration (DOCTYPE) is not accepted");
}

TEST_F(XmlInputTest, AParameterEntityBombIsRefusedBeforeItsDeclarationsAreRead) {
  EXPECT_EQ(refusal(hostile::parameterEntityBomb()),
            "line 1, column 13: a document type declaration (DOCTYPE) is not accepted");
}

TEST_F(XmlInputTest, ExternalEntitiesAndDtdsAreNeverLoaded) {
  EXPECT_EQ(refusal(hostile::externalEntity()),
            "line 2, column 13: a document type declaration (DOCTYPE) is not accepted");
  EXPECT_EQ(refusal(hostile::externalDtd()),
            "line 1, column 40: a document type declaration (DOCTYPE) is not accepted");
}

TEST_F(XmlInputTest, EvenAPlainDocumentTypeIsRefused) {
  EXPECT_EQ(refusal(hostile::plainDoctype()),
            "line 1, column 13: a document type declaration (DOCTYPE) is not accepted");
}

TEST_F(XmlInputTest, NestingUpToTheLimitIsAccepted) {
  ASSERT_EQ(TransXMLInput::maxDepth, 1000u);
  TransValue value = parse(hostile::nested(TransXMLInput::maxDepth));
  EXPECT_EQ(answer(value, "/", "count(//e)"), "1000");
  EXPECT_EQ(answer(value, "/", "string(/)"), "bottom");
  TransValue copy(value);
  TransStatus status;
  TransStringOwner xml(copy.asMBCSXML(status));
  EXPECT_FALSE(status.failure());
  EXPECT_NE(text(*xml).find(hostile::nested(TransXMLInput::maxDepth)), std::string::npos);
}

TEST_F(XmlInputTest, NestingOneLevelOverTheLimitIsRefusedWhereItHappens) {
  std::string const xml = hostile::nested(TransXMLInput::maxDepth + 1);
  EXPECT_EQ(refusal(xml), "line 1, column 3004: elements are nested deeper than the limit of 1000 levels");
}

TEST_F(XmlInputTest, NestingFarOverTheLimitIsRefusedLikewise) {
  EXPECT_EQ(refusal(hostile::nested(100000)),
            "line 1, column 3004: elements are nested deeper than the limit of 1000 levels");
}

TEST_F(XmlInputTest, EmptyElementsCloseAsTheyOpen) {
  std::string wide = "<r>";
  for (std::size_t i = 0; i < 3 * TransXMLInput::maxDepth; ++i) wide += "<e/>";
  wide += hostile::nested(TransXMLInput::maxDepth - 1) + "</r>";
  EXPECT_EQ(answer(parse(wide), "/r", "count(e)"), "3001");
}

TEST_F(XmlInputTest, TextOverTheSizeLimitIsRefusedBeforeItIsParsed) {
  ASSERT_EQ(TransXMLInput::maxSize, std::size_t(64) << 20);
  std::string const huge = hostile::textNode(100 * 1000 * 1000);  // a 100 MB text node
  EXPECT_EQ(refusal(huge), "the XML text has 100000007 bytes, more than the limit of 67108864");
  EXPECT_THROW(TransXMLInput::checkSize(TransXMLInput::maxSize + 1), TransXMLInputError);
  EXPECT_NO_THROW(TransXMLInput::checkSize(TransXMLInput::maxSize));
}

TEST_F(XmlInputTest, ALargeTextNodeUnderTheLimitIsReadWhole) {
  TransValue value = parse(hostile::textNode(1 << 20));
  EXPECT_EQ(answer(value, "/", "string-length(/r)"), "1048576");
}

TEST_F(XmlInputTest, TheXercesDocumentComesFromTheSameBoundedParse) {
  std::string const ok = "<r><a/></r>";
  std::unique_ptr<xercesc::DOMDocument> document = TransXMLInput::parseDOM(ok.data(), ok.size());
  ASSERT_NE(document->getDocumentElement(), nullptr);
  std::string const bomb = hostile::entityBomb();
  EXPECT_THROW(TransXMLInput::parseDOM(bomb.data(), bomb.size()), TransXMLInputError);
  std::string const deep = hostile::nested(TransXMLInput::maxDepth + 1);
  EXPECT_THROW(TransXMLInput::parseDOM(deep.data(), deep.size()), TransXMLInputError);
}

}  // namespace
