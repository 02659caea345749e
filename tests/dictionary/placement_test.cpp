// The placement convention: the fixed order of the root's sections whatever the order of
// the builders, and the proof that the linear placement gives the same document as the literal
// getElementsByTagName search.
#include "dictionarytestsupport.h"
#include "richdatasources.h"

#include <algorithm>
#include <array>
#include <functional>
#include <random>

using namespace dicttest;
using X = TransXMLChArray;

namespace {

class PlacementTest : public DictionaryTest {};

// A data source with every section and two elements in each repeating one.
ZORB_DataSource everySection() {
  zorb::DataSourceBuilder b;
  b.addVariable("a").valueLabel(1, "one").attribute("va", {"x"}).missingValues({9});
  b.addVariable("b").valueLabel(2, "two");
  b.addVariable("w");
  b.weightVariable("w");
  b.variableSet("vs1", {"a"});
  b.variableSet("vs2", {"b"});
  b.categorySet("$m1", "L", {"a"});
  b.dichotomySet("$m2", "", "1", false, {"a", "b"});
  b.attribute("ds", {"v"});
  b.extension(3, 1, std::string("\x03"));
  b.extension(9, 1, std::string("\x09"));
  return b.build();
}

std::vector<std::string> const kSectionOrder = {
    "variable",      "variable",    "variable",    "weightVariable",      "valueLabelSet",
    "valueLabelSet", "variableSet", "variableSet", "multipleResponseSet", "multipleResponseSet",
    "attributeSet",  "extension",   "extension"};

using SectionBuilder = std::function<void(TransDictionaryImpl&, ZORB_DataSource const&, xc::DOMElement*)>;

std::array<SectionBuilder, 6> const kBuilders = {
    [](TransDictionaryImpl& t, ZORB_DataSource const& ds, xc::DOMElement* r) { t.addVariables(ds, r); },
    [](TransDictionaryImpl& t, ZORB_DataSource const& ds, xc::DOMElement* r) { t.addWeightVariable(ds, r); },
    [](TransDictionaryImpl& t, ZORB_DataSource const& ds, xc::DOMElement* r) { t.addVariableSets(ds, r); },
    [](TransDictionaryImpl& t, ZORB_DataSource const& ds, xc::DOMElement* r) { t.addMultipleResponseSets(ds, r); },
    [](TransDictionaryImpl& t, ZORB_DataSource const& ds, xc::DOMElement* r) { t.addDatasourceAttributes(ds, r); },
    [](TransDictionaryImpl& t, ZORB_DataSource const& ds, xc::DOMElement* r) { t.addExtensions(ds, r); }};

std::string buildInOrder(ZORB_DataSource const& ds, std::array<int, 6> const& order, bool literal,
                         std::vector<std::string>* names = nullptr) {
  TransDictionaryImpl builder;
  builder.setLiteralPlacement(literal);
  DocumentPtr doc = freshDocument(builder);
  xc::DOMElement* root = doc->getDocumentElement();
  for (int index : order) kBuilders[static_cast<std::size_t>(index)](builder, ds, root);
  if (names != nullptr) *names = childNames(root);
  return serialize(doc.get());
}

TEST_F(PlacementTest, AddDictionaryListsTheSectionsInTheirOrder) {
  DocumentPtr doc = buildDictionary(everySection());
  EXPECT_EQ(childNames(doc->getDocumentElement()), kSectionOrder);
}

// Every one of the 720 orders of the six section builders, on a fresh document: the same sections
// in the same order, and the same document as addDictionary's own order; fast and literal agree.
TEST_F(PlacementTest, SectionOrderHoldsWhateverTheBuildersOrder) {
  ZORB_DataSource ds = everySection();
  std::array<int, 6> order = {0, 1, 2, 3, 4, 5};
  std::string canonical = buildInOrder(ds, order, false);
  ASSERT_EQ(canonical, serialize(buildDictionary(ds).get()));
  int permutations = 0;
  do {
    std::vector<std::string> names;
    std::string fast = buildInOrder(ds, order, false, &names);
    std::string literal = buildInOrder(ds, order, true);
    std::string trace;
    for (int i : order) trace += std::to_string(i);
    SCOPED_TRACE(trace);
    EXPECT_EQ(names, kSectionOrder);
    EXPECT_EQ(fast, literal);
    EXPECT_EQ(fast, canonical);
    ++permutations;
  } while (std::next_permutation(order.begin(), order.end()));
  EXPECT_EQ(permutations, 720);
}

// Sections left out in every combination (64 subsets of the builders), built in reverse order.
TEST_F(PlacementTest, MissingSectionsInEveryCombination) {
  ZORB_DataSource ds = everySection();
  for (int mask = 0; mask < 64; ++mask) {
    std::vector<int> chosen;
    for (int i = 5; i >= 0; --i) {
      if (mask & (1 << i)) chosen.push_back(i);
    }
    TransDictionaryImpl fastBuilder;
    TransDictionaryImpl literalBuilder;
    literalBuilder.setLiteralPlacement(true);
    DocumentPtr fastDoc = freshDocument(fastBuilder);
    DocumentPtr literalDoc = freshDocument(literalBuilder);
    for (int i : chosen) {
      kBuilders[static_cast<std::size_t>(i)](fastBuilder, ds, rootOf(fastDoc));
      kBuilders[static_cast<std::size_t>(i)](literalBuilder, ds, rootOf(literalDoc));
    }
    SCOPED_TRACE(mask);
    EXPECT_EQ(serialize(fastDoc.get()), serialize(literalDoc.get()));
    // The names that are present keep the fixed order.
    std::vector<std::string> names = childNames(rootOf(fastDoc));
    std::vector<std::string> expected;
    std::copy_if(
        kSectionOrder.begin(), kSectionOrder.end(), std::back_inserter(expected),
        [&names](std::string const& name) { return std::find(names.begin(), names.end(), name) != names.end(); });
    EXPECT_EQ(names, expected);
  }
}

TEST_F(PlacementTest, FastAndLiteralAgreeOnTheRichDataSources) {
  for (auto make : {surveyDataSource, formatsDataSource, textDataSource}) {
    ZORB_DataSource ds = make();
    std::string fast = serialize(buildDictionary(ds, false).get());
    std::string literal = serialize(buildDictionary(ds, true).get());
    EXPECT_EQ(fast, literal);
    EXPECT_GT(fast.size(), 1000u);
  }
}

TEST_F(PlacementTest, FastAndLiteralAgreeOnAGeneratedDataSource) {
  zorb::DataSourceBuilder b;
  for (int i = 0; i < 300; ++i) {
    zorb::VariableBuilder& v = b.addVariable("v" + std::to_string(i));
    if (i % 2 == 0) v.label("Label " + std::to_string(i));
    if (i % 3 == 0) v.missingRange(-9, -1);
    if (i % 5 != 0) v.valueLabel(1, "one").valueLabel(2, "two").valueLabel(3, "three");
    if (i % 7 == 0) v.attribute("$a", {"x"});
  }
  b.weightVariable(17);
  for (int s = 0; s < 20; ++s) {
    b.variableSet("set" + std::to_string(s), {"v" + std::to_string(s), "v" + std::to_string(s + 1)});
    b.categorySet("$mr" + std::to_string(s), "L", {"v" + std::to_string(s)});
  }
  b.attribute("x", {"y"});
  b.extension(3, 1, std::string("\x01"));
  ZORB_DataSource ds = b.build();
  EXPECT_EQ(serialize(buildDictionary(ds, false).get()), serialize(buildDictionary(ds, true).get()));
}

// Builders called more than once on one document: a second weightVariable goes in front of the
// first (its chain starts with variable), and later sections still follow the last one.
TEST_F(PlacementTest, RepeatedBuildersAgreeWithTheLiteralSearch) {
  ZORB_DataSource ds = everySection();
  std::array<int, 6> order = {1, 0, 1, 4, 2, 3};
  std::string results[2];
  for (bool literal : {false, true}) {
    SCOPED_TRACE(literal);
    TransDictionaryImpl builder;
    builder.setLiteralPlacement(literal);
    DocumentPtr doc = freshDocument(builder);
    for (int round = 0; round < 2; ++round) {
      for (int i : order) kBuilders[static_cast<std::size_t>(i)](builder, ds, rootOf(doc));
    }
    builder.addValueLabelSet(ds.GetVariable(0), rootOf(doc));
    builder.addWeightVariable(ds, rootOf(doc));
    std::vector<std::string> names = childNames(rootOf(doc));
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end(), [](std::string const& x, std::string const& y) {
      auto rank = [](std::string const& n) { return std::find(kSectionOrder.begin(), kSectionOrder.end(), n); };
      return rank(x) < rank(y);
    }));
    EXPECT_EQ(children(rootOf(doc), "weightVariable").size(), 5u);
    results[literal] = serialize(doc.get());
  }
  EXPECT_EQ(results[0], results[1]);
}

// The remembered last element is checked before use: when a test takes it out of the root, the
// builder searches again and still agrees with the literal placement.
TEST_F(PlacementTest, RemovedSectionElementsAreNotUsedAsAnchors) {
  ZORB_DataSource ds = everySection();
  std::string results[2];
  for (bool literal : {false, true}) {
    TransDictionaryImpl builder;
    builder.setLiteralPlacement(literal);
    DocumentPtr doc = freshDocument(builder);
    xc::DOMElement* root = rootOf(doc);
    builder.addVariables(ds, root);
    builder.addVariableSets(ds, root);
    // Take out the last variable and the last variable set.
    root->removeChild(children(root, "variable").back());
    root->removeChild(children(root, "variableSet").back());
    builder.addWeightVariable(ds, root);
    builder.addVariableSets(ds, root);
    builder.addMultipleResponseSets(ds, root);
    results[literal] = serialize(doc.get());
  }
  EXPECT_EQ(results[0], results[1]);
}

// Section elements that reach the root other than through the section builders (the builder's own
// insertAfterTag, or plain DOM calls) are anchors for the literal search, so the fast placement
// must find them too.
TEST_F(PlacementTest, SectionElementsAddedOutsideTheBuildersAreAnchorsToo) {
  ZORB_DataSource ds = everySection();
  using Scenario = std::function<void(TransDictionaryImpl&, DocumentPtr const&)>;
  std::vector<std::pair<char const*, Scenario>> const scenarios = {
      {"a variable appended by hand, then the weight",
       [&ds](TransDictionaryImpl& t, DocumentPtr const& doc) {
         rootOf(doc)->appendChild(doc->createElement(X::variable_s));
         t.addWeightVariable(ds, rootOf(doc));
         t.addVariables(ds, rootOf(doc));
       }},
      {"a variable placed with insertAfterTag after the builders' variables",
       [&ds](TransDictionaryImpl& t, DocumentPtr const& doc) {
         t.addVariables(ds, rootOf(doc));
         t.insertAfterTag(rootOf(doc), doc->createElement(X::variable_s), X::variable_s);
         t.addWeightVariable(ds, rootOf(doc));
         t.addVariables(ds, rootOf(doc));
       }},
      {"a weightVariable appended by hand before the builder's one",
       [&ds](TransDictionaryImpl& t, DocumentPtr const& doc) {
         rootOf(doc)->appendChild(doc->createElement(X::weightVariable_s));
         t.addWeightVariable(ds, rootOf(doc));  // goes in front of the one by hand
         t.addValueLabelSet(ds.GetVariable(0), rootOf(doc));
         t.addVariableSets(ds, rootOf(doc));
       }},
      {"value label sets and variable sets appended by hand",
       [&ds](TransDictionaryImpl& t, DocumentPtr const& doc) {
         rootOf(doc)->appendChild(doc->createElement(X::valueLabelSet_s));
         rootOf(doc)->appendChild(doc->createElement(X::variableSet_s));
         t.addMultipleResponseSets(ds, rootOf(doc));
         t.addVariableSets(ds, rootOf(doc));
         t.addValueLabelSet(ds.GetVariable(0), rootOf(doc));
         t.addDatasourceAttributes(ds, rootOf(doc));
       }},
  };
  for (auto const& scenario : scenarios) {
    SCOPED_TRACE(scenario.first);
    std::string results[2];
    for (bool literal : {false, true}) {
      TransDictionaryImpl builder;
      builder.setLiteralPlacement(literal);
      DocumentPtr doc = freshDocument(builder);
      scenario.second(builder, doc);
      results[literal] = serialize(doc.get());
    }
    EXPECT_EQ(results[0], results[1]);
  }
}

TEST_F(PlacementTest, ValueLabelsKeepTheirOrderInALargeSet) {
  zorb::DataSourceBuilder b;
  zorb::VariableBuilder& v = b.addVariable("many");
  for (int i = 0; i < 2000; ++i) v.valueLabel(i, "label " + std::to_string(i));
  ZORB_DataSource ds = b.build();
  DocumentPtr fast = buildDictionary(ds, false);
  std::vector<xc::DOMElement*> labels = children(child(fast->getDocumentElement(), "valueLabelSet"), "valueLabel");
  ASSERT_EQ(labels.size(), 2000u);
  EXPECT_EQ(attr(labels[1234], "value"), "1234");
  EXPECT_EQ(serialize(fast.get()), serialize(buildDictionary(ds, true).get()));
}

// A remembered anchor that the caller takes out of the root and releases: Xerces hands its memory
// to the next element created, here the variableSet, so an unchecked memory of the last variable
// would put the weight after the variable set.
TEST_F(PlacementTest, AReleasedAnchorIsNotMistakenForItsSuccessor) {
  ZORB_DataSource ds = everySection();
  std::vector<std::string> names[2];
  std::string results[2];
  for (bool literal : {false, true}) {
    TransDictionaryImpl builder;
    builder.setLiteralPlacement(literal);
    DocumentPtr doc = freshDocument(builder);
    xc::DOMElement* root = rootOf(doc);
    builder.addVariables(ds, root);
    xc::DOMNode* last = children(root, "variable").back();
    root->removeChild(last)->release();
    builder.addVariableSets(ds, root);
    builder.addWeightVariable(ds, root);
    names[literal] = childNames(root);
    results[literal] = serialize(doc.get());
  }
  EXPECT_EQ(results[0], results[1]);
  EXPECT_EQ(names[0], (std::vector<std::string>{"variable", "variable", "weightVariable", "valueLabelSet",
                                                "valueLabelSet", "variableSet", "variableSet"}));
}

// Elements that the caller puts into the root away from their section's end are anchors of the
// literal search: a format-less variable appended after every section draws the next variables
// (and with them the weight) to the end, and so does one put there with insertAfterTag.
TEST_F(PlacementTest, SectionElementsPutAwayFromTheirSectionAreFoundAsTheSearchFindsThem) {
  ZORB_DataSource ds = everySection();
  for (bool byInsertAfterTag : {false, true}) {
    SCOPED_TRACE(byInsertAfterTag);
    std::string results[2];
    for (bool literal : {false, true}) {
      TransDictionaryImpl builder;
      builder.setLiteralPlacement(literal);
      DocumentPtr doc = freshDocument(builder);
      xc::DOMElement* root = rootOf(doc);
      builder.addVariables(ds, root);
      builder.addVariableSets(ds, root);
      xc::DOMElement* stray = doc->createElement(X::variable_s);
      if (byInsertAfterTag) {
        ASSERT_NE(builder.insertAfterTag(root, stray, X::variableSet_s), nullptr);
      } else {
        root->appendChild(stray);
      }
      builder.addVariables(ds, root);
      builder.addWeightVariable(ds, root);
      std::vector<std::string> names = childNames(root);
      EXPECT_EQ(names, (std::vector<std::string>{"variable", "variable", "variable", "valueLabelSet", "valueLabelSet",
                                                 "valueLabelSet", "valueLabelSet", "variableSet", "variableSet",
                                                 "variable",  // the stray one
                                                 "variable", "variable", "variable", "weightVariable"}));
      results[literal] = serialize(doc.get());
    }
    EXPECT_EQ(results[0], results[1]);
  }
}

// Random sequences of section builders mixed with the caller's own edits of the root: elements of
// every section name appended by hand, put anywhere in the root or inside one of its children,
// placed with insertAfterTag, removed, and removed and released. The fast and the literal
// placement must give the same document after every sequence.
class RandomEdits {
public:
  RandomEdits(ZORB_DataSource const& ds, unsigned seed) : ds_(ds), random_(seed) {}

  // One step, the same on both documents; the random numbers are drawn once for both. A section
  // element nested by hand makes the search find an anchor outside the root's children, and the
  // insertion then fails with a DOM exception, which passes to the caller: both placements must
  // raise the same one. Returns the two exception codes (0 for none).
  std::pair<int, int> step(TransDictionaryImpl (&builders)[2], DocumentPtr (&docs)[2]) {
    int const operation = pick(12);
    int const a = pick(1000);
    int const b = pick(1000);
    int codes[2] = {0, 0};
    for (int k = 0; k < 2; ++k) {
      try {
        apply(operation, a, b, builders[k], docs[k]);
      } catch (xc::DOMException const& e) {
        codes[k] = e.code;
      }
    }
    return {codes[0], codes[1]};
  }

private:
  int pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(random_); }

  static XMLCh const* tag(int index) {
    static XMLCh const* const tags[] = {X::variable_s,    X::weightVariable_s,      X::valueLabelSet_s,
                                        X::variableSet_s, X::multipleResponseSet_s, X::attributeSet_s,
                                        X::extension_s,   X::valueLabel_s};
    return tags[index % 8];
  }

  void apply(int operation, int a, int b, TransDictionaryImpl& builder, DocumentPtr const& doc) {
    xc::DOMElement* root = rootOf(doc);
    std::vector<xc::DOMElement*> elements = childElements(root);
    xc::DOMElement* some = elements.empty() ? nullptr : elements[static_cast<std::size_t>(b) % elements.size()];
    switch (operation) {
      case 0:
      case 1:
      case 2:
      case 3:
      case 4:
      case 5: kBuilders[static_cast<std::size_t>(operation)](builder, ds_, root); break;
      case 6: builder.addValueLabelSet(ds_.GetVariable(a % ds_.ColumnCount()), root); break;
      case 7:  // appended by hand
        root->appendChild(doc->createElement(tag(a)));
        break;
      case 8:  // put anywhere in the root, or inside one of its children
        if (some == nullptr || a % 3 == 0) {
          root->insertBefore(doc->createElement(tag(a)), some);
        } else {
          some->appendChild(doc->createElement(tag(a)));
        }
        break;
      case 9: builder.insertAfterTag(root, doc->createElement(tag(a)), tag(b)); break;
      case 10:  // removed, kept by the document until it is released
        if (some != nullptr) root->removeChild(some);
        break;
      case 11:
        if (some != nullptr) root->removeChild(some)->release();
        break;
    }
  }

  ZORB_DataSource const& ds_;
  std::mt19937 random_;
};

TEST_F(PlacementTest, RandomBuildersAndCallerEditsAgreeWithTheLiteralSearch) {
  ZORB_DataSource ds = everySection();
  int differences = 0;
  int exceptions = 0;
  for (unsigned seed = 1; seed <= 4000; ++seed) {
    TransDictionaryImpl builders[2];
    builders[1].setLiteralPlacement(true);
    DocumentPtr docs[2] = {freshDocument(builders[0]), freshDocument(builders[1])};
    RandomEdits edits(ds, seed);
    bool same = true;
    for (int i = 0; i < 12; ++i) {
      std::pair<int, int> codes = edits.step(builders, docs);
      same = same && codes.first == codes.second;
      if (codes.second != 0) ++exceptions;
    }
    if (!same || serialize(docs[0].get()) != serialize(docs[1].get())) {
      ++differences;
      ADD_FAILURE() << "seed " << seed;
      if (differences > 5) break;
    }
  }
  EXPECT_EQ(differences, 0);
  EXPECT_GT(exceptions, 0);  // the nested anchors were really met
}

}  // namespace

namespace {

// The search for a section's last element walks the caller's document without recursion: after a
// branch a million elements deep is added by hand (built from the bottom up, so that the DOM's own
// checks stay short), the variable at its bottom is the last one in document order, and the weight
// placed after it lands at the root's end, on both placements.
TEST_F(PlacementTest, TheSearchReachesTheBottomOfAVeryDeepBranch) {
  ZORB_DataSource ds = everySection();
  for (bool literal : {false, true}) {
    SCOPED_TRACE(literal);
    TransDictionaryImpl builder;
    builder.setLiteralPlacement(literal);
    DocumentPtr doc = freshDocument(builder);
    xc::DOMElement* root = rootOf(doc);
    builder.addVariables(ds, root);
    xc::DOMNode* branch = doc->createElement(X::variable_s);
    for (int level = 0; level < 1000000; ++level) {
      xc::DOMElement* outer = doc->createElement(u"x");
      outer->appendChild(branch);
      branch = outer;
    }
    root->appendChild(branch);
    builder.addWeightVariable(ds, root);
    xc::DOMNode* last = root->getLastChild();
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(xc::XMLString::compareString(last->getNodeName(), X::weightVariable_s), 0);
    EXPECT_EQ(last->getPreviousSibling(), branch);
  }
}

}  // namespace
