// Document values on input that would drive recursion in the XML libraries: documents a host
// builds deeper than the parse allows (copied without recursion, queried, but not serialised) and
// query expressions nested deeper than the evaluator's stack would allow.
#include "document/transdomimpl.h"
#include <transspace/transowner.h>
#include <transspace/transxmlinput.h>

#include <transspace/transspace.h>
#include "transtestsupport.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include <xercesc/dom/DOM.hpp>

namespace {

using transtest::flags;
using transtest::kBoth;
using transtest::text;

struct DocumentRelease {
  void operator()(xercesc::DOMDocument* document) const { document->release(); }
};
using Document = std::unique_ptr<xercesc::DOMDocument, DocumentRelease>;

class DeepDocumentTest : public ::testing::Test {
protected:
  TransSpace space_;

  // `depth` elements <e> nested in one another, built through the DOM (no parse limits apply).
  // Built from the bottom up: the DOM checks each new child against the ancestors of its parent,
  // so joining detached elements keeps the build linear in the depth.
  static Document chain(std::size_t depth) {
    Document document(xercesc::DOMImplementation::getImplementation()->createDocument());
    xercesc::DOMNode* below = document->createTextNode(u"bottom");
    for (std::size_t i = depth; i-- > 0;) {
      xercesc::DOMElement* element = document->createElement(u"e");
      element->setAttribute(u"n", i % 2 == 0 ? u"even" : u"odd");
      element->appendChild(below);
      below = element;
    }
    document->appendChild(below);
    return document;
  }

  static std::string answer(TransValue const& value, std::string const& context, std::string const& path,
                            TransStatus& status) {
    TransStringOwner result(
        value.asString(TransString(context.c_str()), TransString(path.c_str()), status));
    return text(*result);
  }
};

TEST_F(DeepDocumentTest, AHostDocumentFarDeeperThanTheLimitIsCopiedAndQueriedButNotSerialised) {
  Document source = chain(200000);
  TransValue value(source.get());
  source.reset();
  TransValue copy(value);  // the copy of a copy: no recursion either
  TransStatus status;
  EXPECT_EQ(answer(copy, "/", "count(/e/e/e)", status), "1");
  EXPECT_FALSE(status.failure());
  EXPECT_EQ(answer(copy, "/", "string(/)", status), "bottom");
  TransStringOwner utf16(copy.asUTF16XML(status));
  EXPECT_EQ(flags(status), kBoth);
  EXPECT_TRUE(utf16->empty());
  TransStringOwner mbcs(copy.asMBCSXML(status));
  EXPECT_EQ(flags(status), kBoth);
  EXPECT_TRUE(mbcs->empty());
  TransStringOwner asText(copy.asString(status));
  EXPECT_TRUE(status.failure());
}

TEST_F(DeepDocumentTest, AHostDocumentAtTheLimitIsSerialised) {
  Document source = chain(TransXMLInput::maxDepth);
  TransValue value(source.get());
  TransStatus status;
  TransStringOwner xml(value.asMBCSXML(status));
  EXPECT_FALSE(status.failure());
  EXPECT_NE(text(*xml).find("bottom</e></e>"), std::string::npos);
  Document deeper = chain(TransXMLInput::maxDepth + 1);
  TransValue over(deeper.get());
  TransStringOwner none(over.asMBCSXML(status));
  EXPECT_EQ(flags(status), kBoth);
}

TEST_F(DeepDocumentTest, TooDeepCountsTheElementsOpenBelowANode) {
  Document document = chain(TransXMLInput::maxDepth + 1);
  EXPECT_TRUE(TransXMLInput::tooDeep(document.get()));
  EXPECT_TRUE(TransXMLInput::tooDeep(document->getDocumentElement()));
  EXPECT_FALSE(TransXMLInput::tooDeep(document->getDocumentElement()->getFirstChild()));
  EXPECT_FALSE(TransXMLInput::tooDeep(nullptr));
}

// The copy without recursion makes what Xerces' deep import makes, for every kind of node a
// parsed document can hold.
TEST_F(DeepDocumentTest, TheCopyIsWhatADeepImportMakes) {
  std::string const xml =
      "<r xmlns:x='urn:x' a='1'><!-- c --><?pi d?><x:v x:n='2'>t<![CDATA[<raw>]]>u</x:v>"
      "<w><w><w b='&amp;'/></w>tail</w>  <e/></r>";
  std::unique_ptr<xercesc::DOMDocument> parsed = TransXMLInput::parseDOM(xml.data(), xml.size());
  Document imported(xercesc::DOMImplementation::getImplementation()->createDocument());
  imported->appendChild(imported->importNode(parsed->getDocumentElement(), true));
  std::unique_ptr<TransDOMImpl> byImport(TransDOMImpl::adopt(imported.release()));
  TransDOMImpl copied(parsed.get());
  TransStatus status;
  std::unique_ptr<TransString> expected(byImport->asMBCSXML(status));
  std::unique_ptr<TransString> actual(copied.asMBCSXML(status));
  EXPECT_EQ(text(*actual), text(*expected));
  EXPECT_NE(text(*actual).find("<![CDATA[<raw>]]>"), std::string::npos);
}

TEST_F(DeepDocumentTest, ExpressionsNestedUpToTheLimitAreEvaluated) {
  std::string const xml = "<r>1</r>";
  TransValue value = TransXMLInput::parseDocument(xml.data(), xml.size());
  TransStatus status;
  EXPECT_EQ(answer(value, "/", std::string(1000, '(') + "1" + std::string(1000, ')'), status), "1");
  EXPECT_FALSE(status.failure());
  EXPECT_EQ(answer(value, "/r", std::string(999, '(') + "text()[1]" + std::string(999, ')'), status), "1");
  EXPECT_FALSE(status.failure());
  // Brackets inside literals are text, not nesting.
  EXPECT_EQ(answer(value, "/", "string-length('" + std::string(5000, '(') + "')", status), "5000");
  EXPECT_FALSE(status.failure());
}

TEST_F(DeepDocumentTest, ExpressionsNestedDeeperFailWithoutBeingEvaluated) {
  std::string const xml = "<r>1</r>";
  TransValue value = TransXMLInput::parseDocument(xml.data(), xml.size());
  for (std::size_t depth : {std::size_t(1001), std::size_t(100000)}) {
    std::string const parens = std::string(depth, '(') + "1" + std::string(depth, ')');
    std::string const brackets = "r" + std::string(depth, '[') + "1" + std::string(depth, ']');
    TransStatus status;
    EXPECT_EQ(answer(value, "/", parens, status), "");
    EXPECT_EQ(flags(status), kBoth);
    EXPECT_EQ(answer(value, "/", brackets, status), "");
    EXPECT_EQ(flags(status), kBoth);
    // A context nested too deep fails as one that selects nothing (no exception).
    EXPECT_EQ(answer(value, parens, "1", status), "");
    EXPECT_EQ(flags(status), kBoth);
    TransStatus listStatus;
    TransStringListOwner list(
        value.asStringList(TransString("/"), TransString(parens.c_str()), listStatus));
    EXPECT_EQ(flags(listStatus), kBoth);
    EXPECT_EQ(value.asDouble(TransString("/"), TransString(parens.c_str()), status), transtest::kNoNumber);
    EXPECT_EQ(flags(status), kBoth);
  }
}

// Xalan writes numbers into a fixed stack buffer that a number of a hundred digits would overflow
// (the process aborted); the library writes such numbers itself, digit for digit as Xalan does.
TEST_F(DeepDocumentTest, HugeNumbersAreWrittenOutInFull) {
  std::string const xml = "<r>1</r>";
  TransValue value = TransXMLInput::parseDocument(xml.data(), xml.size());
  TransStatus status;
  std::string const big = answer(value, "/",
                                 "string(1000000000000000000000 * 1000000000000000000000 * 1000000000000000000000 "
                                 "* 1000000000000000000000 * 1000000000000000000000)",
                                 status);
  EXPECT_EQ(big.size(), 106u) << big;
  EXPECT_EQ(big.substr(0, 6), "100000");
  EXPECT_EQ(answer(value, "/", std::string(120, '6'), status).size(), 120u);
  std::string const negative = answer(value, "/", "-" + std::string(200, '9'), status);
  EXPECT_EQ(negative.size(), 201u);
  EXPECT_EQ(negative.substr(0, 4), "-999");
  EXPECT_EQ(answer(value, "/", "10000000000000000000", status), "10000000000000000000");
  EXPECT_EQ(answer(value, "/", "123456789012345678", status), "123456789012345680");  // the nearest double
  EXPECT_EQ(answer(value, "/", "0.1 + 0.2", status), "0.30000000000000004");
  EXPECT_EQ(answer(value, "/", "1 div 3", status), "0.3333333333333333");
  EXPECT_EQ(answer(value, "/", "concat(1 div 0, ' ', -1 div 0, ' ', 0 div 0, ' ', -0)", status),
            "Infinity -Infinity NaN 0");
  EXPECT_EQ(value.asDouble(TransString("/"), TransString(("1" + std::string(150, '0')).c_str()), status), 1e150);
}

}  // namespace
