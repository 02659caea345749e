// The fast road against the Part's literal road: every query of a broad set (every result type of
// Part 2.5's table, node sets of 0, 1 and many nodes, booleans, numbers, strings, malformed and
// failing expressions, namespace prefixes, text nodes, comments, processing instructions,
// attributes, element values, every axis) is asked through the source-tree mirror and through
// the Xalan wrapper of Part 2.4 with a resolver per query, on hand-built and dictionary documents,
// and the answers and flags of all three accessors must be identical.
#include "domtest.h"

#include "transdomimpl.h"

#include <cmath>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <xalanc/PlatformSupport/XSLException.hpp>

using namespace domtest;
using QueryPath = TransDOMImpl::QueryPath;

namespace {

// What the three accessors make of one query.
struct Answer {
  bool raised = false;
  std::string text;
  TransStatus textStatus;
  std::vector<std::string> list;
  TransStatus listStatus;
  double number = 0;
  TransStatus numberStatus;
};

std::string flags(TransStatus const& status) {
  return std::string(status.failure() ? "F" : "-") + (status.warning() ? "W" : "-");
}

std::string describe(Answer const& answer) {
  if (answer.raised) return "raised";
  std::ostringstream out;
  out.precision(17);
  out << "string \"" << answer.text << "\" " << flags(answer.textStatus) << "; list [";
  for (std::string const& entry : answer.list) out << '"' << entry << "\" ";
  out << "] " << flags(answer.listStatus) << "; number " << answer.number << ' ' << flags(answer.numberStatus);
  return out.str();
}

bool sameNumber(double a, double b) { return (std::isnan(a) && std::isnan(b)) || std::memcmp(&a, &b, sizeof a) == 0; }

// A malformed context raises from all three accessors or from none.
Answer ask(TransDOMImpl const& value, std::string const& context, std::string const& path) {
  Answer answer;
  try {
    answer.text = take(value.asString(ts(context), ts(path), answer.textStatus));
    answer.list = take(value.asStringList(ts(context), ts(path), answer.listStatus));
    answer.number = value.asDouble(ts(context), ts(path), answer.numberStatus);
  } catch (xalanc::XSLException const&) {
    answer.raised = true;
  }
  return answer;
}

bool operator==(Answer const& a, Answer const& b) {
  if (a.raised || b.raised) return a.raised == b.raised;
  return a.text == b.text && flags(a.textStatus) == flags(b.textStatus) && a.list == b.list &&
         flags(a.listStatus) == flags(b.listStatus) && sameNumber(a.number, b.number) &&
         flags(a.numberStatus) == flags(b.numberStatus);
}

std::vector<std::string> const contexts = {
    "/", "/*", "/*/*[1]", "/*/*[last()]", "//*[@*][last()]", "/*/@*[1]", "//text()[1]", "//comment()",
    "//processing-instruction()", "/*/*[2]/*[1]", "/nothing", "/*[",
    // forms the path index answers (and near misses that it leaves to Xalan)
    "/dictionary", "dictionary", "/dictionary/variable[@name='v1']", "/dictionary/variable[@name=\"v2\"]",
    "/dictionary/variable[@name='nope']", "/dictionary/variable", "/catalogue", "/catalogue/item[@id='b']",
    "/catalogue/item[@label='']", "/catalogue/empty", "/catalogue/name", "/dictionary/variable[ @name='v1']",
    "/root/child", "/dictionary/@rowCount"};

// Paths that make sense on any document: every result type and axis.
std::vector<std::string> const paths = {
    // node sets of 0, 1 and many nodes; element values; attributes
    ".", "..", "*", "*[1]", "*[last()]", "nothing", "@*", "@*[1]", "@*[last()]", "*/@*", "//@*", "//*",
    "descendant::*[3]", "descendant-or-self::node()", "ancestor::*", "ancestor-or-self::node()",
    "following-sibling::*", "preceding-sibling::*", "following::*[1]", "preceding::node()", "parent::*",
    "self::node()", "attribute::*[2]", "child::node()", "node()[2]", "*[@*]", "*[not(@*)]", "//*[@*][1]/@*",
    "*[position() < 3]/@*[1]", "(//@*)[last()]", "//@*[. = '']", "*/@*[. != '']",
    // text nodes, comments, processing instructions
    "text()", "//text()", "//text()[normalize-space()]", "comment()", "//comment()", "processing-instruction()",
    "//processing-instruction()", "//processing-instruction('render')", "//node()[not(self::*)]",
    // namespaces and names
    "namespace::*", "count(namespace::*)", "name(namespace::*[1])", "string(namespace::*[last()])",
    "@xmlns", "@xmlns:x", "@*[name() = 'xmlns']", "x:extra", "x:extra/@x:flag", "//x:*", "//@x:*",
    "@xsi:schemaLocation", "xsi:nothing", "//*[local-name() = 'extra']", "name()", "local-name()",
    "namespace-uri()", "name(*[last()])", "local-name(*[last()])", "namespace-uri(*[last()])",
    "name(@*[1])", "local-name(@*[1])", "namespace-uri(@*[1])", "name(/)", "local-name(/)",
    "name(//processing-instruction())", "local-name(//processing-instruction())", "//*[name() = 'prefixed:name']",
    "local-name(//*[contains(name(), ':')])", "prefixed:name",
    // numbers
    "count(*)", "count(//node())", "count(//@*)", "count(//text())", "sum(//@*)", "sum(//@count | //@rowCount)",
    "1 div 0", "-1 div 0", "0 div 0", "string-length(name())", "count(//*) * 2.5", "position()", "last()",
    "number(@*[1])", "floor(3.7)", "-0", "3", "7 mod 3",
    // strings
    "string(.)", "string(@*[1])", "concat(name(), '|', string(@*[last()]))", "'literal'", "''", "normalize-space(.)",
    "substring-before(string(//@*[1]), ' ')", "translate(name(), 'aeiou', 'AEIOU')", "string(1 div 3)",
    "string(//text()[1])", "string(/)",
    // booleans
    "true()", "false()", "boolean(*)", "not(*)", "boolean(@*)", "* = 'apple text'", "@* = 'v1'",
    "count(*) > 1", "lang('en')", "boolean(id('a'))", "starts-with(name(), 'd')",
    // forms the path index answers (and near misses that it leaves to Xalan)
    "variable[@name='v1']/@label", "variable[@name='v1']/@nope", "variable[@name='v0']/variableFormat/@type",
    "variable[@name='']", "variable[@label='Label 2']/@name", "variable/@name", "@label", "@name", "@rowCount",
    "@schemaLocation", "@xsi", "@xmlns", "@x", "@id", "variable", "valueLabelSet[@name='v1']/valueLabel/@label",
    "item[@id='a']/@label", "item[@id='a']/@id", "item/@price", "item[@price='-2']", "name", "extra", "flag",
    "x:extra[@plain='p']", "item[@id = 'a']", "item[@id='a'] ", "/catalogue/item[@id='c']/@label", "child",
    "/dictionary/variable[@name='v2']/@label", "dictionary/variable[@name='v2']/@label", "and", "div",
    "variable[@name='v1']/variableFormat", "item[@flag='yes']", "*[@flag='yes']", "extra[@flag='yes']",
    // malformed or failing paths
    "*[", "count(1)", "key('k', 'v')", "nope:thing", "@", "foo(", "1 +", "document('x')", "///", "$var",
};

// Paths specific to the dictionary document.
std::vector<std::string> const dictionaryPaths = {
    "@rowCount", "@locale", "variable[@name='v1']/@label", "variable[@name='v99']/@label", "variable/@name",
    "variable[1]/variableFormat/@*", "valueLabelSet/valueLabel/@label", "valueLabelSet[1]/valueLabelVariable/@name",
    "count(variable)", "sum(valueLabelSet/valueLabel/@value)", "weightVariable/@name", "boolean(weightVariable)",
    "variableSet/variableSetVariable/@name", "multipleResponseSet/@*", "attributeSet/attribute/@name",
    "attributeSet/attribute/attributeValue/@value", "variable[missingValue]/@name", "variable/missingValue/@*",
    "string(variable[2]/@label)", "variable[@name='v1'] | weightVariable", "//*[@name='v0']",
};

// Paths specific to the hand-built catalogue.
std::vector<std::string> const cataloguePaths = {
    "item[@id='b']/@label", "item[@id='zz']/@label", "item", "item/text()", "item[2]/text()", "item/@price",
    "sum(item/@price)", "item[1]/@price * 2", "string(item[1]/@label)", "concat(@name, '-', @count)",
    "x:extra/@plain", "@x:flag | x:extra/@plain", "*[local-name()='extra']/text()", "boolean(item)",
    "item[@id='a'] = 'apple text'", "id('a')/@label", "item[last()]/@id", "item[position() < 3]/@id",
    "//@*[. = 'yes']", "descendant-or-self::node()[self::text()]",
};

class XPathEquivalenceTest : public DomTest {
protected:
  // Asks every context with every path on both roads of one value.
  void compareAll(TransDOMImpl& value, std::vector<std::string> const& specific, bool expectMirror = true) {
    std::vector<std::string> all = paths;
    all.insert(all.end(), specific.begin(), specific.end());
    int compared = 0;
    for (std::string const& context : contexts) {
      for (std::string const& path : all) {
        value.queryPath(QueryPath::wrapper);
        Answer const literal = ask(value, context, path);
        value.queryPath(QueryPath::sourceTree);
        Answer const tree = ask(value, context, path);
        value.queryPath(QueryPath::automatic);
        Answer const fast = ask(value, context, path);
        EXPECT_TRUE(tree == literal) << "context " << context << ", path " << path << "\n  wrapper: "
                                     << describe(literal) << "\n  mirror:  " << describe(tree);
        EXPECT_TRUE(fast == literal) << "context " << context << ", path " << path << "\n  wrapper: "
                                     << describe(literal) << "\n  indexed: " << describe(fast);
        ++compared;
      }
    }
    EXPECT_EQ(value.queriedOnMirror(), expectMirror);
    EXPECT_GT(compared, 1000);
  }
};

TEST_F(XPathEquivalenceTest, HandBuiltCatalogue) {
  Document source = catalogueDocument();
  TransDOMImpl value(source.get());
  compareAll(value, cataloguePaths);
}

TEST_F(XPathEquivalenceTest, HandBuiltWithPlainNamespaceDeclarations) {
  Document source = plainDeclarationsDocument();
  TransDOMImpl value(source.get());
  compareAll(value, dictionaryPaths);
}

TEST_F(XPathEquivalenceTest, HandBuiltWithNodesOutsideTheRoot) {
  Document source = documentWithOutsideNodes();
  TransDOMImpl value(source.get());
  compareAll(value, {});
}


TEST_F(XPathEquivalenceTest, SmallDictionary) {
  TransDOMImpl value(dictionarySource(4));
  compareAll(value, dictionaryPaths);
}

TEST_F(XPathEquivalenceTest, DictionaryOfOneVariable) {
  TransDOMImpl value(dictionarySource(1));
  compareAll(value, dictionaryPaths);
}

TEST_F(XPathEquivalenceTest, EmptyDictionary) {
  TransDOMImpl value(dictionarySource(0));
  compareAll(value, dictionaryPaths);
}

TEST_F(XPathEquivalenceTest, LargerDictionaryAndItsCopy) {
  TransDOMImpl value(dictionarySource(300));
  compareAll(value, dictionaryPaths);
  // A copy builds its own mirror and answers the same.
  TransDOMImpl copy(value);
  Answer const original = ask(value, "/dictionary", "variable[@name='v123']/@label");
  Answer const copied = ask(copy, "/dictionary", "variable[@name='v123']/@label");
  EXPECT_TRUE(original == copied) << describe(copied);
  EXPECT_EQ(original.text, "Label 123");
  EXPECT_TRUE(copy.queriedOnMirror());
}

// Documents the mirror refuses go through the wrapper on both roads: same answers, no mirror.
TEST_F(XPathEquivalenceTest, DocumentWithIdAttributesStaysOnTheWrapper) {
  Document source = catalogueDocument();
  xercesc::DOMElement* first = static_cast<xercesc::DOMElement*>(source->getElementsByTagName(u"item")->item(0));
  first->setIdAttribute(u"id", true);
  TransDOMImpl value(source.get());
  TransStatus status;
  compareAll(value, cataloguePaths, false);
}

TEST_F(XPathEquivalenceTest, DocumentWithCDATAStaysOnTheWrapper) {
  Document source = catalogueDocument();
  source->getDocumentElement()->appendChild(source->createCDATASection(u" cdata "));
  TransDOMImpl value(source.get());
  compareAll(value, cataloguePaths, false);
}

TEST_F(XPathEquivalenceTest, DocumentWithEntityReferenceStaysOnTheWrapper) {
  Document source = catalogueDocument();
  source->getDocumentElement()->appendChild(source->createEntityReference(u"ent"));
  TransDOMImpl value(source.get());
  compareAll(value, cataloguePaths, false);
}

}  // namespace
