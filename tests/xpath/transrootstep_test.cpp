// TransRootStep: root steps found wherever they stand in a compiled expression, and only there.
#include "domtest.h"

#include "document/transrootstep.h"

#include <memory>
#include <string>

#include <xalanc/DOMSupport/XalanDocumentPrefixResolver.hpp>
#include <xalanc/XPath/XPath.hpp>
#include <xalanc/XPath/XPathEvaluator.hpp>
#include <xalanc/XalanSourceTree/XalanSourceTreeDocument.hpp>

namespace {

class TransRootStepTest : public domtest::DomTest {
protected:
  // `ascii` widened to UTF-16.
  bool holdsRootStep(std::string const& ascii) {
    std::u16string const expression(ascii.begin(), ascii.end());
    xalanc::XalanSourceTreeDocument document(xalanc::XalanMemMgrs::getDefaultXercesMemMgr());
    xalanc::XalanDocumentPrefixResolver resolver(&document);
    xalanc::XPathEvaluator evaluator;  // after SetUp: the space initialised Xalan's XPath
    xalanc::XPath* compiled = evaluator.createXPath(expression.c_str(), resolver);
    bool const held = TransRootStep::occursIn(compiled->getExpression());
    evaluator.destroyXPath(compiled);
    return held;
  }
};

TEST_F(TransRootStepTest, RootStepsWhereverTheyStand) {
  for (std::string const expression : {"/",
                                       "/x",
                                       "//x",
                                       "/x/y[1]/@a",
                                       "count(/)",
                                       "name(/)",
                                       "string(/)",
                                       "concat('a', string(/))",
                                       "sum(/x)",
                                       "(/)",
                                       "(/)/x",
                                       "-/",
                                       "x | /y",
                                       ". = /",
                                       "x[count(/) > 1]",
                                       "x[position() = count(//y)]",
                                       "boolean(/)",
                                       "not(/x)",
                                       "id(/x)",
                                       "lang(string(/))",
                                       "1 + count(//x) * 2",
                                       "x/y[z = /a]"}) {
    EXPECT_TRUE(holdsRootStep(expression)) << expression;
  }
}

TEST_F(TransRootStepTest, NoRootStep) {
  for (std::string const expression : {".",
                                       "x",
                                       "x/y[1]/@a",
                                       ".//x",
                                       "count(*)",
                                       "'/'",
                                       "'//x'",
                                       "id('a')",
                                       "id('a')/x",
                                       "lang('en')",
                                       "self::node()",
                                       "true()",
                                       "1 div 0",
                                       "concat('/', name())",
                                       "x[position() = last()]",
                                       "../x",
                                       "ancestor-or-self::node()",
                                       "x | y",
                                       "(x)[1]",
                                       "-count(x)",
                                       "string-length('//')",
                                       "x[@a = 'b/c']"}) {
    EXPECT_FALSE(holdsRootStep(expression)) << expression;
  }
}

}  // namespace
