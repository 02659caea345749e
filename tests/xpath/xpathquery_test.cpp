// XPath queries — the edge cases, the answer table by result type and the
// flag rules, on hand-built documents and on dictionary documents. Every test runs on every road:
// the path index over the source-tree mirror (the default), the mirror alone, and the literal
// wrapper road.
#include "xpathtest.h"

#include "core/transutil.h"

#include <memory>
#include <string>
#include <vector>

#include <unicode/unistr.h>
#include <xalanc/PlatformSupport/XSLException.hpp>

using namespace domtest;
using namespace xpathtest;

namespace {

class XPathQueryTest : public RoadTest {
protected:
  std::unique_ptr<TransDOMImpl> handBuilt() {
    Document source = catalogueDocument();
    return onRoad(new TransDOMImpl(source.get()));
  }
  std::unique_ptr<TransDOMImpl> dictionary(int variables = 3) {
    return onRoad(new TransDOMImpl(dictionarySource(variables)));
  }
  // The values that hold no root element: made from a null document, from a document without
  // one, and a copy of such a value.
  std::vector<std::unique_ptr<TransDOMImpl>> rootlessValues() {
    std::vector<std::unique_ptr<TransDOMImpl>> values;
    values.push_back(onRoad(new TransDOMImpl(static_cast<xercesc::DOMDocument const*>(nullptr))));
    Document source = emptyDocument();
    values.push_back(onRoad(new TransDOMImpl(source.get())));
    values.push_back(onRoad(new TransDOMImpl(*values.front())));
    return values;
  }
};

// ---- edge cases ----

TEST_P(XPathQueryTest, RowCountOfTheDictionaryRootWithoutWarning) {
  auto value = dictionary();
  expectOneAnswer(*value, "/dictionary", "@rowCount", "42", 42.0);
  expectRoad(*value);
}

TEST_P(XPathQueryTest, CountAttributeOfAHandBuiltRoot) {
  auto value = handBuilt();
  TransStatus status;
  EXPECT_EQ(askString(*value, "/catalogue", "@count", status), "3");
  expectFlags(status, {false, false}, "asString");
  EXPECT_EQ(askNumber(*value, "/catalogue", "@count", status), 3.0);
  expectFlags(status, {false, false}, "asDouble");
  expectRoad(*value);
}

// `inOrder` is the order of the set: attributes are in document order, which for the attributes of
// one element is the order of the element's attribute map (Xerces keeps it sorted by name), not
// the order of the expression or of their creation.
void expectTwoAttributes(TransDOMImpl const& value, std::string const& context, std::string const& path,
                         std::vector<std::string> const& inOrder) {
  TransStatus status;
  EXPECT_EQ(askList(value, context, path, status), inOrder) << path;
  expectFlags(status, {false, false}, "asStringList");
  EXPECT_EQ(askString(value, context, path, status), inOrder.front()) << path;
  expectFlags(status, {false, true}, "asString");
}

TEST_P(XPathQueryTest, TwoAttributesGiveTheFirstWithWarningAndBothAsList) {
  auto dictionaryValue = dictionary();
  // name is set before label, yet label comes first; the union's own order does not matter.
  expectTwoAttributes(*dictionaryValue, "/dictionary/variable[@name='v1']", "@name | @label", {"Label 1", "v1"});
  expectTwoAttributes(*dictionaryValue, "/dictionary/variable[@name='v1']", "@label | @name", {"Label 1", "v1"});
  auto handValue = handBuilt();
  expectTwoAttributes(*handValue, "/catalogue/item[1]", "@id | @label", {"a", "Apple"});
  expectTwoAttributes(*handValue, "/catalogue/item[1]", "@price | @id", {"a", "1.5"});
  expectRoad(*dictionaryValue);
  expectRoad(*handValue);
}

void expectElementResult(TransDOMImpl const& value, std::string const& context, std::string const& path) {
  TransStatus status;
  EXPECT_EQ(askString(value, context, path, status), "");
  expectFlags(status, {false, true}, "asString");
  EXPECT_EQ(askList(value, context, path, status), std::vector<std::string>{""});
  expectFlags(status, {false, false}, "asStringList");
  EXPECT_EQ(askNumber(value, context, path, status), TransUtil::noNumber);
  expectFlags(status, {false, true}, "asDouble");
}

TEST_P(XPathQueryTest, ElementResultIsAnEmptyNodeValue) {
  auto dictionaryValue = dictionary();
  expectElementResult(*dictionaryValue, "/dictionary", "variable[2]");
  expectElementResult(*dictionaryValue, "/dictionary", ".");
  auto handValue = handBuilt();
  expectElementResult(*handValue, "/catalogue", "empty");
  // An element with text still has an empty node value: its text is read through text().
  expectElementResult(*handValue, "/catalogue", "item[1]");
}

TEST_P(XPathQueryTest, NonNumericStringGivesWhatUTF16toDoubleGives) {
  auto value = handBuilt();
  TransStatus status;
  double const expected = TransUtil::UTF16toDouble(icu::UnicodeString(u"abc"));
  ASSERT_EQ(expected, TransUtil::noNumber);
  EXPECT_EQ(askNumber(*value, "/catalogue/item[2]", "@price", status), expected);
  expectFlags(status, {false, true}, "node value");
  EXPECT_EQ(askNumber(*value, "/catalogue/item[2]", "string(@price)", status), expected);
  expectFlags(status, {false, true}, "string result");
  EXPECT_EQ(askNumber(*value, "/catalogue/item[1]", "string(@price)", status), 1.5);
  expectFlags(status, {false, false}, "numeric string result");
  auto dictionaryValue = dictionary();
  EXPECT_EQ(askNumber(*dictionaryValue, "/dictionary/variable[1]", "@label", status),
            TransUtil::UTF16toDouble(icu::UnicodeString(u"Label 0")));
  expectFlags(status, {false, true}, "dictionary label");
}

TEST_P(XPathQueryTest, ContextThatSelectsNothingFails) {
  auto dictionaryValue = dictionary();
  expectNothingSelected(*dictionaryValue, "/nothing", "@rowCount");
  expectNothingSelected(*dictionaryValue, "/dictionary/variable[@name='v999']", "@label");
  // Nothing is evaluated: a path that would raise changes nothing either.
  expectNothingSelected(*dictionaryValue, "/nothing", "count(1)");
  auto handValue = handBuilt();
  expectNothingSelected(*handValue, "/catalogue/item[9]", ".");
}

TEST_P(XPathQueryTest, BlankOrEmptyArgumentsFail) {
  auto value = dictionary();
  for (auto const& arguments : std::vector<std::pair<std::string, std::string>>{
           {"", "@rowCount"}, {"   ", "@rowCount"}, {"\t ", "@rowCount"}, {"/dictionary", ""}, {"/dictionary", "  "}}) {
    expectNothingSelected(*value, arguments.first, arguments.second);
  }
  // Only the test is on a trimmed copy: surrounding blanks of a real expression are evaluated.
  TransStatus status;
  EXPECT_EQ(askString(*value, "  /dictionary  ", "  @rowCount ", status), "42");
  expectFlags(status, {false, false}, "padded");
}

TEST_P(XPathQueryTest, BooleanGivesOneOrZero) {
  auto value = dictionary();
  TransStatus status;
  EXPECT_EQ(askNumber(*value, "/dictionary", "boolean(variable)", status), 1.0);
  expectFlags(status, {false, false}, "true");
  EXPECT_EQ(askNumber(*value, "/dictionary", "not(variable)", status), 0.0);
  expectFlags(status, {false, false}, "false");
  EXPECT_EQ(askNumber(*value, "/dictionary", "variable/@name = 'v2'", status), 1.0);
  EXPECT_EQ(askString(*value, "/dictionary", "boolean(variable)", status), "true");
  EXPECT_EQ(askString(*value, "/dictionary", "boolean(nothing)", status), "false");
  expectFlags(status, {false, false}, "string of a boolean");
  EXPECT_EQ(askList(*value, "/dictionary", "boolean(variable)", status), std::vector<std::string>{"true"});
  auto handValue = handBuilt();
  EXPECT_EQ(askNumber(*handValue, "/catalogue", "item[@id='a'] = 'apple text'", status), 1.0);
}

// ---- the answer table ----

TEST_P(XPathQueryTest, NumberResult) {
  auto value = dictionary(4);
  TransStatus status;
  EXPECT_EQ(askNumber(*value, "/dictionary", "count(variable)", status), 4.0);
  expectFlags(status, {false, false}, "asDouble");
  EXPECT_EQ(askString(*value, "/dictionary", "count(variable) div 8", status), "0.5");
  EXPECT_EQ(askList(*value, "/dictionary", "count(variable)", status), std::vector<std::string>{"4"});
  expectFlags(status, {false, false}, "asStringList");
  auto handValue = handBuilt();
  EXPECT_EQ(askString(*handValue, "/catalogue", "sum(item/@price)", status), "NaN");
  expectFlags(status, {false, false}, "NaN as text");
}

TEST_P(XPathQueryTest, StringResult) {
  auto value = dictionary();
  TransStatus status;
  EXPECT_EQ(askString(*value, "/dictionary", "concat(variable[2]/@name, ':', variable[2]/@label)", status),
            "v1:Label 1");
  expectFlags(status, {false, false}, "asString");
  EXPECT_EQ(askList(*value, "/dictionary", "string(variable[3]/@name)", status), std::vector<std::string>{"v2"});
  EXPECT_EQ(askString(*value, "/dictionary", "string(nothing)", status), "");
  expectFlags(status, {false, true}, "empty string");
  EXPECT_TRUE(askList(*value, "/dictionary", "string(nothing)", status) == std::vector<std::string>{""});
  expectFlags(status, {false, false}, "one empty entry");
}

TEST_P(XPathQueryTest, NodeSets) {
  auto value = dictionary(3);
  TransStatus status;
  EXPECT_EQ(askString(*value, "/dictionary", "variable[@name='v9']/@label", status), "");
  expectFlags(status, {false, true}, "empty set as string");
  EXPECT_EQ(askNumber(*value, "/dictionary", "variable[@name='v9']/@label", status), TransUtil::noNumber);
  expectFlags(status, {false, true}, "empty set as number");
  EXPECT_TRUE(askList(*value, "/dictionary", "variable[@name='v9']/@label", status).empty());
  expectFlags(status, {false, true}, "empty set as list");
  EXPECT_EQ(askList(*value, "/dictionary", "variable/@name", status), (std::vector<std::string>{"v0", "v1", "v2"}));
  expectFlags(status, {false, false}, "many as list");
  EXPECT_EQ(askString(*value, "/dictionary", "variable/@name", status), "v0");
  expectFlags(status, {false, true}, "many as string");
  EXPECT_EQ(askNumber(*value, "/dictionary", "valueLabelSet[1]/valueLabel/@value", status), 1.0);
  expectFlags(status, {false, true}, "many as number");
}

TEST_P(XPathQueryTest, TextCommentsInstructionsAndNamespaces) {
  auto value = handBuilt();
  TransStatus status;
  EXPECT_EQ(askString(*value, "/catalogue", "item[1]/text()", status), "apple text");
  EXPECT_EQ(askList(*value, "/catalogue", "item[2]/text()", status), (std::vector<std::string>{"banana", " more"}));
  EXPECT_EQ(askString(*value, "/catalogue", "comment()", status), "first comment");
  EXPECT_EQ(askString(*value, "/catalogue", "processing-instruction('render')", status), "fast");
  EXPECT_EQ(askString(*value, "/catalogue", "x:extra/@x:flag", status), "yes");
  expectFlags(status, {false, false}, "prefixed attribute");
  EXPECT_EQ(askString(*value, "/catalogue/x:extra", "namespace-uri()", status), "urn:x");
  EXPECT_EQ(askString(*value, "/catalogue/item[1]", "string(.)", status), "apple text");
  EXPECT_EQ(askString(*value, "/catalogue/item[3]", "@label", status), "");
  expectFlags(status, {false, true}, "empty attribute");
  expectRoad(*value);
}

// ---- errors ----

TEST_P(XPathQueryTest, MalformedContextRaises) {
  auto value = dictionary();
  TransStatus status;
  EXPECT_THROW(value->asString(ts("/dictionary["), ts("@rowCount"), status), xalanc::XSLException);
  EXPECT_THROW(value->asDouble(ts("/dictionary["), ts("@rowCount"), status), xalanc::XSLException);
  EXPECT_THROW(value->asStringList(ts("///"), ts("@rowCount"), status), xalanc::XSLException);
  // An unbound prefix fails while the context is compiled.
  EXPECT_THROW(value->asString(ts("/nope:dictionary"), ts("@rowCount"), status), xalanc::XSLException);
  // The value is usable afterwards.
  EXPECT_EQ(askString(*value, "/dictionary", "@rowCount", status), "42");
}

TEST_P(XPathQueryTest, MalformedOrFailingPathSetsFailure) {
  auto value = dictionary();
  for (std::string const path : {"variable[", "count(1)", "nope:variable", "@"}) {
    TransStatus status;
    EXPECT_EQ(askString(*value, "/dictionary", path, status), "") << path;
    expectFlags(status, {true, true}, path.c_str());
    EXPECT_EQ(askNumber(*value, "/dictionary", path, status), TransUtil::noNumber) << path;
    expectFlags(status, {true, true}, path.c_str());
    EXPECT_TRUE(askList(*value, "/dictionary", path, status).empty()) << path;
    expectFlags(status, {true, true}, path.c_str());
  }
}

// ---- a document without a root element ----

// Everything but a root step follows the query algorithm: the context is the document node.
TEST_P(XPathQueryTest, DocumentWithoutRootAnswersWhatNeedsNoRoot) {
  for (auto const& value : rootlessValues()) {
    expectOneAnswer(*value, ".", "count(*)", "0", 0.0);
    TransStatus status;
    EXPECT_EQ(askString(*value, ".", "'abc'", status), "abc");
    expectFlags(status, {false, false}, "literal");
    EXPECT_EQ(askString(*value, "self::node()", "true()", status), "true");
    expectFlags(status, {false, false}, "boolean");
    EXPECT_EQ(askNumber(*value, "self::node()", "true()", status), 1.0);
    // id() and lang() look for no root: an empty node set and false.
    EXPECT_TRUE(askList(*value, ".", "id('a')", status).empty());
    expectFlags(status, {false, true}, "id()");
    EXPECT_EQ(askString(*value, ".", "lang('en')", status), "false");
    EXPECT_EQ(askString(*value, ".", "name(.)", status), "");
    expectFlags(status, {false, true}, "name of the document node");
    EXPECT_TRUE(askList(*value, "node()", ".", status).empty());
    expectFlags(status, {true, true}, "a context that selects nothing");
    // A malformed path is a failure as on any document; a malformed context reaches the caller.
    EXPECT_EQ(askString(*value, ".", "x[", status), "");
    expectFlags(status, {true, true}, "malformed path");
    EXPECT_THROW(value->asString(ts("/["), ts("x"), status), xalanc::XSLException);
    EXPECT_THROW(value->asDouble(ts("/["), ts("x"), status), xalanc::XSLException);
    EXPECT_THROW(value->asStringList(ts("/["), ts("x"), status), xalanc::XSLException);
    EXPECT_THROW(value->asString(ts("x["), ts("count(*)"), status), xalanc::XSLException);
  }
}

// Xalan 1.12 dereferences null when it evaluates a step from the root of a document without a
// root element: an expression that holds one fails, wherever the step stands.
TEST_P(XPathQueryTest, DocumentWithoutRootFailsRootSteps) {
  std::vector<std::pair<std::string, std::string>> const queries = {{"/", "."},
                                                                    {"/*", "@a"},
                                                                    {"//x", "."},
                                                                    {"count(/)", "."},
                                                                    {".", "/"},
                                                                    {".", "count(/)"},
                                                                    {".", "//x"},
                                                                    {".", "name(/)"},
                                                                    {".", ". | /"},
                                                                    {"self::node()", "boolean(/)"},
                                                                    {".", "concat('a', string(/))"},
                                                                    {".", "count(.) = count(//node())"},
                                                                    {".", "(/)/x"}};
  for (auto const& value : rootlessValues()) {
    for (auto const& query : queries) expectNothingSelected(*value, query.first, query.second);
  }
}

// Nodes beside a missing root element (possible in a document taken as it is) are queried as usual.
TEST_P(XPathQueryTest, DocumentWithOnlyACommentAnswersBesideTheRoot) {
  Document source = emptyDocument();
  source->appendChild(source->createComment(u"alone"));
  auto value = onRoad(TransDOMImpl::adopt(source.release()));
  TransStatus status;
  EXPECT_EQ(askString(*value, "comment()", ".", status), "alone");
  expectFlags(status, {false, false}, "comment");
  EXPECT_EQ(askNumber(*value, ".", "count(node())", status), 1.0);
  expectNothingSelected(*value, "comment()", "/");
}

// After an expression raised at run time the value's evaluator is renewed (Xalan 1.12 leaves it
// pointing at freed objects), so the next queries still answer.
TEST_P(XPathQueryTest, ValueStaysUsableAfterRunTimeErrors) {
  auto value = dictionary();
  TransStatus status;
  EXPECT_EQ(askString(*value, "/dictionary", "count(1)", status), "");
  expectFlags(status, {true, true}, "path error");
  EXPECT_EQ(askString(*value, "/dictionary", "@rowCount", status), "42");
  EXPECT_THROW(value->asString(ts("count(1)"), ts("@rowCount"), status), xalanc::XSLException);
  EXPECT_EQ(askString(*value, "/dictionary", "@rowCount", status), "42");
  // A context whose result is not a node set raises too (the conversion to a node set fails).
  EXPECT_THROW(value->asString(ts("count(variable)"), ts("@rowCount"), status), xalanc::XSLException);
  EXPECT_EQ(askNumber(*value, "/dictionary", "count(variable)", status), 3.0);
  expectFlags(status, {false, false}, "after the errors");
}

TEST_P(XPathQueryTest, ThroughTheHandle) {
  TransValue value(dictionarySource(2));
  TransStatus status;
  TransString* text = value.asString(ts("/dictionary/variable[@name='v1']"), ts("@label"), status);
  EXPECT_EQ(take(text), "Label 1");
  expectFlags(status, {false, false}, "handle");
  EXPECT_EQ(value.asDouble(ts("/dictionary"), ts("count(variable)")), 2.0);
}

XPATHTEST_ON_EVERY_ROAD(XPathQueryTest);

}  // namespace
