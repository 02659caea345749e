// TransValue::isXPath: the syntax check of the expressions the query views take, without a
// document and without a word on standard error.
#include <transspace/transowner.h>
#include <transspace/transspace.h>
#include <transspace/transvalue.h>

#include <string>

#include <gtest/gtest.h>

namespace {

class IsXPathTest : public ::testing::Test {
protected:
  TransSpace space;  // the XML platform
};

std::string problemOf(char const* expression) {
  TransString* problem = nullptr;
  testing::internal::CaptureStderr();
  bool const wellFormed = TransValue::isXPath(TransString(expression), &problem);
  std::string const printed = testing::internal::GetCapturedStderr();
  EXPECT_EQ(printed, "") << "isXPath wrote on standard error for " << expression;
  TransStringOwner const owned(problem);
  if (wellFormed) {
    EXPECT_EQ(problem, nullptr) << expression;
    return std::string();
  }
  EXPECT_NE(problem, nullptr) << expression;
  return problem == nullptr ? std::string("<no problem given>") : std::string(owned->asMBCS());
}

TEST_F(IsXPathTest, WellFormedExpressionsPass) {
  for (char const* expression : {"/dictionary", "variable[@name='age']/@label", "count(//variable) > 3",
                                 "-count(x)", "concat('a', \"b\")", "..", "@*", "ns:element/@ns:attribute"}) {
    EXPECT_TRUE(TransValue::isXPath(TransString(expression))) << expression;
    EXPECT_EQ(problemOf(expression), "") << expression;
  }
}

TEST_F(IsXPathTest, MalformedExpressionsFailWithTheEvaluatorsDescription) {
  for (char const* expression : {"variable[", "///", ")", "count(", "@", "a b", "'unterminated", ""}) {
    EXPECT_FALSE(TransValue::isXPath(TransString(expression))) << expression;
    EXPECT_NE(problemOf(expression), "") << expression;
  }
}

// Whether a function exists is the evaluator's business at run time, as is a prefix's namespace.
TEST_F(IsXPathTest, UnknownFunctionsAndPrefixesAreNotSyntaxErrors) {
  EXPECT_TRUE(TransValue::isXPath(TransString("p:q[p:r]")));
}

}  // namespace
