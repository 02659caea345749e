// TransPathIndex: which expressions the index answers itself, and what it selects. (That its
// answers equal Xalan's is the equivalence test's business.)
#include "domtest.h"

#include "document/transpathindex.h"
#include "document/transsourcetree.h"

#include <memory>
#include <string>
#include <vector>

#include <unicode/unistr.h>
#include <xalanc/XalanDOM/XalanDocument.hpp>
#include <xalanc/XalanDOM/XalanNode.hpp>

using namespace domtest;

namespace {

class PathIndexTest : public DomTest {
protected:
  // The mirror goes before the value space shuts the platform down.
  void TearDown() override {
    index_.reset();
    tree_.reset();
    DomTest::TearDown();
  }

  void mirror(xercesc::DOMDocument const& document) {
    tree_ = TransSourceTree::build(document);
    ASSERT_NE(tree_, nullptr);
    index_.reset(new TransPathIndex(tree_->document()));
  }

  xalanc::XalanNode* document() { return tree_->document(); }

  // The node values of what `expression` selects from `context`; "declined" when not handled.
  std::vector<std::string> select(xalanc::XalanNode* context, std::u16string const& expression) {
    std::vector<xalanc::XalanNode*> nodes;
    if (!index_->select(context, expression.c_str(), nodes)) return {"declined"};
    std::vector<std::string> values;
    for (xalanc::XalanNode* node : nodes) {
      std::string value;
      icu::UnicodeString(node->getNodeValue().c_str(), static_cast<int32_t>(node->getNodeValue().length()))
          .toUTF8String(value);
      values.push_back(node->getNodeType() == xalanc::XalanNode::ELEMENT_NODE ? "<element>" : value);
    }
    return values;
  }

  std::unique_ptr<TransSourceTree> tree_;
  std::unique_ptr<TransPathIndex> index_;
};

using Values = std::vector<std::string>;
Values const declined{"declined"};

TEST_F(PathIndexTest, AnswersTheDictionaryQueries) {
  Document source = plainDeclarationsDocument();
  mirror(*source);
  EXPECT_EQ(select(document(), u"/dictionary/variable[@name='b']/@label"), Values{"some label"});
  EXPECT_EQ(select(document(), u"/dictionary/variable[@name=\"a\"]"), Values{"<element>"});
  EXPECT_EQ(select(document(), u"/dictionary/variable[@name='zz']"), Values{});
  EXPECT_EQ(select(document(), u"/dictionary/variable/@name"), (Values{"a", "b"}));
  EXPECT_EQ(select(document(), u"/dictionary/@rowCount"), Values{"7"});
  EXPECT_EQ(select(document(), u"dictionary/variable[@label='some label']/variableFormat/@type"), (Values{"F", "F"}));
  xalanc::XalanNode* root = document()->getFirstChild();
  EXPECT_EQ(select(root, u"variable[@name='a']/@label"), Values{"some label"});
  EXPECT_EQ(select(root, u"@rowCount"), Values{"7"});
  // Namespace declarations are not attributes for XPath.
  EXPECT_EQ(select(root, u"@xmlns"), Values{});
}

TEST_F(PathIndexTest, DeclinesWhatItDoesNotParse) {
  Document source = plainDeclarationsDocument();
  mirror(*source);
  xalanc::XalanNode* root = document()->getFirstChild();
  for (std::u16string const expression :
       {u"/", u"//variable", u"variable[1]", u"variable[ @name='a']", u"variable[@name='a'] ", u"*",
        u"variable[@name='a']/@*", u"x:variable", u"@xsi:schemaLocation", u"variable[@name=a]", u"variable[@name='a'",
        u"@name/variable", u"and", u"text()", u"variable/..", u"1variable", u""}) {
    EXPECT_EQ(select(root, expression), declined) << icu::UnicodeString(expression.c_str()).length();
  }
}

TEST_F(PathIndexTest, DeclinesNamesXalanMightReadDifferently) {
  Document source = plainDeclarationsDocument();
  mirror(*source);
  xalanc::XalanNode* root = document()->getFirstChild();
  // xsi:schemaLocation is a DOM level 1 name with a colon: its local name is Xalan's to decide.
  EXPECT_EQ(select(root, u"@schemaLocation"), declined);
  EXPECT_EQ(select(root, u"@rowCount"), Values{"7"});
  Document catalogue = catalogueDocument();
  mirror(*catalogue);
  EXPECT_EQ(select(document(), u"/catalogue/name"), declined);  // <prefixed:name>
  EXPECT_EQ(select(document(), u"/catalogue/item[@id='a']/@label"), Values{"Apple"});
  // An element in a namespace never matches a bare name.
  EXPECT_EQ(select(document(), u"/catalogue/extra"), Values{});
}

}  // namespace
