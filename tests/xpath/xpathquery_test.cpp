// XPath queries — the edge cases, the answer table by result type and the
// flag rules, on hand-built documents and on dictionary documents. Every test runs twice: on the
// source-tree mirror (the default road) and on the literal wrapper road.
#include "domtest.h"

#include "transdomimpl.h"
#include "transutil.h"

#include <memory>
#include <string>
#include <vector>

#include <unicode/unistr.h>
#include <xalanc/PlatformSupport/XSLException.hpp>

using namespace domtest;
using QueryPath = TransDOMImpl::QueryPath;

namespace {

class XPathQueryTest : public DomTest, public ::testing::WithParamInterface<QueryPath> {
protected:
  std::unique_ptr<TransDOMImpl> handBuilt() {
    Document source = catalogueDocument();
    return prepared(new TransDOMImpl(source.get()));
  }
  std::unique_ptr<TransDOMImpl> dictionary(int variables = 3) {
    return prepared(new TransDOMImpl(dictionarySource(variables)));
  }

  std::unique_ptr<TransDOMImpl> prepared(TransDOMImpl* value) {
    value->queryPath(GetParam());
    return std::unique_ptr<TransDOMImpl>(value);
  }

  // After the queries of a test on the default road, the mirror must have answered them.
  void expectRoad(TransDOMImpl const& value) {
    EXPECT_EQ(value.queriedOnMirror(), GetParam() == QueryPath::automatic);
  }
};

struct Flags {
  bool failure;
  bool warning;
};

void expectFlags(TransStatus const& status, Flags expected, char const* what) {
  EXPECT_EQ(status.failure(), expected.failure) << what;
  EXPECT_EQ(status.warning(), expected.warning) << what;
}

std::string askString(TransDOMImpl const& value, std::string const& context, std::string const& path,
                      TransStatus& status) {
  return take(value.asString(ts(context), ts(path), status));
}

std::vector<std::string> askList(TransDOMImpl const& value, std::string const& context, std::string const& path,
                                 TransStatus& status) {
  return take(value.asStringList(ts(context), ts(path), status));
}

double askNumber(TransDOMImpl const& value, std::string const& context, std::string const& path,
                 TransStatus& status) {
  return value.asDouble(ts(context), ts(path), status);
}

// ---- edge cases ----

TEST_P(XPathQueryTest, RowCountOfTheDictionaryRootWithoutWarning) {
  auto value = dictionary();
  TransStatus status;
  EXPECT_EQ(askString(*value, "/dictionary", "@rowCount", status), "42");
  expectFlags(status, {false, false}, "asString");
  EXPECT_EQ(askNumber(*value, "/dictionary", "@rowCount", status), 42.0);
  expectFlags(status, {false, false}, "asDouble");
  EXPECT_EQ(askList(*value, "/dictionary", "@rowCount", status), std::vector<std::string>{"42"});
  expectFlags(status, {false, false}, "asStringList");
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

void expectTwoAttributes(TransDOMImpl const& value, std::string const& context, std::string const& path,
                         std::vector<std::string> const& both) {
  TransStatus status;
  std::vector<std::string> const list = askList(value, context, path, status);
  expectFlags(status, {false, false}, "asStringList");
  ASSERT_EQ(list.size(), 2u);
  EXPECT_TRUE((list == both) || (list == std::vector<std::string>{both[1], both[0]})) << list[0] << ", " << list[1];
  EXPECT_EQ(askString(value, context, path, status), list[0]);
  expectFlags(status, {false, true}, "asString");
}

TEST_P(XPathQueryTest, TwoAttributesGiveTheFirstWithWarningAndBothAsList) {
  auto dictionaryValue = dictionary();
  expectTwoAttributes(*dictionaryValue, "/dictionary/variable[@name='v1']", "@name | @label", {"v1", "Label 1"});
  auto handValue = handBuilt();
  expectTwoAttributes(*handValue, "/catalogue/item[1]", "@id | @label", {"a", "Apple"});
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

void expectNothingSelected(TransDOMImpl const& value, std::string const& context, std::string const& path) {
  TransStatus status;
  EXPECT_EQ(askString(value, context, path, status), "");
  expectFlags(status, {true, true}, "asString");
  EXPECT_EQ(askNumber(value, context, path, status), TransUtil::noNumber);
  expectFlags(status, {true, true}, "asDouble");
  EXPECT_TRUE(askList(value, context, path, status).empty());
  expectFlags(status, {true, true}, "asStringList");
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

// Xalan 1.12 crashes on absolute paths over a document without a root element (XPath::findRoot);
// such a value (made from a null document or from one without a root) answers no query.
TEST_P(XPathQueryTest, DocumentWithoutRootAnswersNoQuery) {
  auto value = prepared(new TransDOMImpl(static_cast<xercesc::DOMDocument const*>(nullptr)));
  expectNothingSelected(*value, "/", ".");
  expectNothingSelected(*value, ".", "count(/)");
  expectNothingSelected(*value, "/*", "@a");
  Document source = emptyDocument();
  auto copied = prepared(new TransDOMImpl(source.get()));
  expectNothingSelected(*copied, "/", "count(*)");
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

INSTANTIATE_TEST_SUITE_P(BothRoads, XPathQueryTest, ::testing::Values(QueryPath::automatic, QueryPath::wrapper),
                         [](::testing::TestParamInfo<QueryPath> const& info) {
                           return info.param == QueryPath::automatic ? std::string("Mirror") : std::string("Wrapper");
                         });

}  // namespace
