// The `transspace` binary run as a subprocess: exit statuses, standard output and standard error.
#include <clocale>
#include <filesystem>
#include <sstream>
#include <regex>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "dictcommand.h"
#include "inputdocument.h"
#include "subprocess.h"
#include <transspace/transspace.h>
#include <transspace/transvalue.h>
#include "xmlcompare.h"

namespace {

using clitest::canonicalText;
using clitest::demoSav;
using clitest::linesOf;
using clitest::Outcome;
using clitest::parseXml;
using clitest::readFile;
using clitest::runCli;
using clitest::TempDir;
using clitest::XmlElement;
using Lines = std::vector<std::string>;

std::string const usageStart = "Usage:\n  transspace dict";

// Prints the whole outcome when an expectation on it fails.
std::string describe(Outcome const& o) {
  return "exit " + std::to_string(o.exitCode) + (o.signal != 0 ? ", signal " + std::to_string(o.signal) : "") +
         "\n--- stdout:\n" + o.out.substr(0, 2000) + "\n--- stderr:\n" + o.err.substr(0, 2000);
}

bool contains(std::string const& text, std::string const& part) { return text.find(part) != std::string::npos; }

// A usage error: status 2, nothing on standard output, the reason and the usage text on standard error.
void expectUsageError(std::vector<std::string> const& arguments, std::string const& reason) {
  Outcome const o = runCli(arguments);
  EXPECT_EQ(o.exitCode, 2) << describe(o);
  EXPECT_EQ(o.out, "") << describe(o);
  EXPECT_EQ(o.err.rfind("transspace: ", 0), 0u) << describe(o);
  EXPECT_TRUE(contains(o.err, reason)) << reason << "\n" << describe(o);
  EXPECT_TRUE(contains(o.err, usageStart)) << describe(o);
}

Outcome query(std::string const& form, std::string const& file, std::string const& context, std::string const& path) {
  return runCli({"query", form, file, "--", context, path});
}

// An answer: status 0, the lines on standard output, nothing on standard error.
void expectAnswer(Outcome const& o, Lines const& lines) {
  EXPECT_EQ(o.exitCode, 0) << describe(o);
  EXPECT_EQ(linesOf(o.out), lines) << describe(o);
  EXPECT_EQ(o.err, "") << describe(o);
}

// No result: status 1, nothing on standard output, "no result" on standard error.
void expectNoResult(Outcome const& o) {
  EXPECT_EQ(o.exitCode, 1) << describe(o);
  EXPECT_EQ(o.out, "") << describe(o);
  EXPECT_TRUE(contains(o.err, "transspace: no result")) << describe(o);
}

// ---------------------------------------------------------------------------------------------------
// Help, version and usage errors

TEST(CliProcess, HelpExitsZeroWithTheUsageOnStandardOutput) {
  for (std::string const help : {"--help", "-h", "help"}) {
    Outcome const o = runCli({help});
    EXPECT_EQ(o.exitCode, 0) << describe(o);
    EXPECT_EQ(o.out.rfind(usageStart, 0), 0u) << describe(o);
    EXPECT_TRUE(contains(o.out, "transspace query")) << describe(o);
    EXPECT_TRUE(contains(o.out, "Exit status")) << describe(o);
    // main exits 2 when the answer cannot be written (AFailedWriteToStandardOutputIsAnError).
    EXPECT_TRUE(contains(o.out, "standard output that cannot be\nwritten")) << describe(o);
    EXPECT_EQ(o.err, "") << describe(o);
  }
  Outcome const within = runCli({"query", "--help"});
  EXPECT_EQ(within.exitCode, 0) << describe(within);
  EXPECT_EQ(within.out.rfind("Usage:\n  transspace query", 0), 0u) << describe(within);
  EXPECT_TRUE(contains(within.out, "--double")) << describe(within);
}

TEST(CliProcess, VersionExitsZero) {
  Outcome const o = runCli({"--version"});
  EXPECT_EQ(o.exitCode, 0) << describe(o);
  EXPECT_TRUE(std::regex_match(o.out, std::regex("transspace [0-9]+\\.[0-9]+\\.[0-9]+\n"))) << describe(o);
  EXPECT_EQ(o.err, "") << describe(o);
}

TEST(CliProcess, SchemaPrintsTheDictionarySchemaOfTheSourceTree) {
  Outcome const o = runCli({"schema"});
  EXPECT_EQ(o.exitCode, 0) << describe(o);
  EXPECT_EQ(o.err, "") << describe(o);
  std::string const schema = readFile(TRANSSPACE_SCHEMA);
  ASSERT_FALSE(schema.empty());
  EXPECT_TRUE(o.out == schema) << "`transspace schema` differs from " << TRANSSPACE_SCHEMA;
}

TEST(CliProcess, NoArgumentsIsAUsageError) { expectUsageError({}, "a command is missing"); }

TEST(CliProcess, BadUsageExitsTwoWithTheUsageOnStandardError) {
  expectUsageError({"frob", demoSav()}, "unknown command 'frob'");
  expectUsageError({"dict"}, "dict takes FILE (0 given)");
  expectUsageError({"dict", demoSav(), demoSav()}, "(2 given)");
  expectUsageError({"dict", "--list", demoSav()}, "unknown option '--list'");
  expectUsageError({"query", "--pretty", demoSav(), "/", "."}, "unknown option '--pretty'");
  expectUsageError({"query", demoSav(), "/dictionary"}, "query takes FILE CONTEXT PATH (2 given)");
  expectUsageError({"query", demoSav(), "/dictionary", "-count(variable)"}, "unknown option '-count(variable)'");
}

TEST(CliProcess, UsageIsCheckedBeforeTheFileIsRead) {
  expectUsageError({"dict", "--frob", "/nonexistent/file.sav"}, "--frob");
}

// ---------------------------------------------------------------------------------------------------
// dict

struct Variable {
  std::string name, label, measurementLevel;
};

// What demo.sps puts into demo.sav.
std::vector<Variable> const demoVariables = {
    {"id", "Respondent number", "nominal"},    {"age", "Age in years", "scale"},
    {"sex", "Sex of respondent", "nominal"},   {"income", "Yearly income (EUR)", "scale"},
    {"news1", "Reads newspapers", "nominal"},  {"news2", "Watches TV news", "nominal"},
    {"news3", "Reads news online", "nominal"}, {"region", "Region of residence", "nominal"},
    {"wt", "Design weight", "scale"},
};

XmlElement parsed(std::string const& xml) {
  XmlElement root;
  std::string error;
  EXPECT_TRUE(parseXml(xml, root, error)) << error << "\n" << xml.substr(0, 2000);
  return root;
}

// The user attributes of an attributeSet as "name=value1|value2".
Lines userAttributes(XmlElement const& owner) {
  Lines found;
  for (XmlElement const* set : owner.childrenNamed("attributeSet"))
    for (XmlElement const* attribute : set->childrenNamed("attribute")) {
      if (attribute->attribute("type") != "user") continue;
      std::string text = attribute->attribute("name") + "=";
      bool first = true;
      for (XmlElement const* value : attribute->childrenNamed("attributeValue")) {
        text += (first ? "" : "|") + value->attribute("value");
        first = false;
      }
      found.push_back(text);
    }
  std::sort(found.begin(), found.end());  // the order of attributes is the reader's business
  return found;
}

class DemoDict : public ::testing::Test {
protected:
  static void SetUpTestSuite() {
    compact_ = new Outcome(runCli({"dict", demoSav()}));
    pretty_ = new Outcome(runCli({"dict", "--pretty", demoSav()}));
  }
  static void TearDownTestSuite() {
    delete compact_;
    delete pretty_;
  }
  static Outcome* compact_;
  static Outcome* pretty_;
};
Outcome* DemoDict::compact_ = nullptr;
Outcome* DemoDict::pretty_ = nullptr;

TEST_F(DemoDict, PrintsOneXmlDocument) {
  Outcome const& o = *compact_;
  ASSERT_EQ(o.exitCode, 0) << describe(o);
  EXPECT_EQ(o.err, "") << "demo.sav reads without warnings\n" << describe(o);
  EXPECT_EQ(o.out.rfind("<?xml version=\"1.0\" encoding=\"UTF-8\"", 0), 0u) << describe(o);
  EXPECT_EQ(o.out.find("<?xml", 1), std::string::npos) << "one XML declaration";
  ASSERT_GE(o.out.size(), 14u);
  EXPECT_EQ(o.out.substr(o.out.size() - 14), "</dictionary>\n") << "one document, ended by a newline";
  EXPECT_EQ(linesOf(o.out).size(), 1u) << "the compact form is one line";
  EXPECT_EQ(parsed(o.out).name, "dictionary");
}

// The tool writes the dictionary of a system file by the text road; its bytes are those of the
// document value's XML text (and, with --pretty, of that text re-serialised with indentation).
TEST_F(DemoDict, BothLayoutsAreTheBytesOfTheDocumentValue) {
  // The tool's character-type locale (the dictionary's `locale`) is the environment's.
  std::string const ownLocale = std::setlocale(LC_CTYPE, nullptr);
  std::setlocale(LC_CTYPE, "");
  TransSpace space;
  std::ostringstream warnings;
  TransValue value = cli::loadDocument(demoSav(), warnings);
  TransStatus status;
  TransString* xml = value.asMBCSXML(status);
  std::string const text = xml->asMBCS();
  TransSpace::releaseString(xml);
  std::setlocale(LC_CTYPE, ownLocale.c_str());
  ASSERT_FALSE(status.failure());
  EXPECT_EQ(compact_->out, text + "\n");
  EXPECT_EQ(pretty_->out, cli::indent(text) + "\n");
}

TEST_F(DemoDict, HoldsAllNineVariablesInOrder) {
  XmlElement const root = parsed(compact_->out);
  EXPECT_EQ(root.attribute("rowCount"), "4");
  auto const variables = root.childrenNamed("variable");
  ASSERT_EQ(variables.size(), demoVariables.size());
  for (std::size_t i = 0; i < variables.size(); ++i) {
    EXPECT_EQ(variables[i]->attribute("name"), demoVariables[i].name) << i;
    EXPECT_EQ(variables[i]->attribute("label"), demoVariables[i].label) << i;
    EXPECT_EQ(variables[i]->attribute("measurementLevel"), demoVariables[i].measurementLevel) << i;
  }
  // String variables (sex A1, region A12) carry their width as the type.
  EXPECT_EQ(variables[2]->attribute("type"), "1");
  EXPECT_EQ(variables[7]->attribute("type"), "12");
  EXPECT_EQ(variables[7]->attribute("alignment"), "left");
  EXPECT_EQ(variables[7]->attribute("displayWidth"), "14");
}

TEST_F(DemoDict, HoldsMissingValues) {
  XmlElement const root = parsed(compact_->out);
  auto const variables = root.childrenNamed("variable");
  ASSERT_EQ(variables.size(), 9u);
  auto missing = [&](std::size_t i) {
    Lines found;
    for (XmlElement const* m : variables[i]->childrenNamed("missingValue"))
      found.push_back(m->attribute("data") + (m->attribute("type") == "<absent>" ? "" : "/" + m->attribute("type")));
    return found;
  };
  EXPECT_EQ(missing(1), (Lines{"-9"}));
  EXPECT_EQ(missing(3), (Lines{"99999/lowerBound", "highest/upperBound"}));
  EXPECT_EQ(missing(7), (Lines{"unknown"}));
  EXPECT_EQ(missing(0), Lines{});
}

TEST_F(DemoDict, HoldsTheWeightVariableValueLabelsMultipleResponseSetAndAttributes) {
  XmlElement const root = parsed(compact_->out);
  auto const weight = root.childrenNamed("weightVariable");
  ASSERT_EQ(weight.size(), 1u);
  EXPECT_EQ(weight[0]->attribute("name"), "wt");

  // Value label sets: "variable: value=label ..." for each set.
  Lines sets;
  for (XmlElement const* set : root.childrenNamed("valueLabelSet")) {
    std::string text;
    for (XmlElement const* v : set->childrenNamed("valueLabelVariable")) text += v->attribute("name") + " ";
    text += ":";
    for (XmlElement const* l : set->childrenNamed("valueLabel"))
      text += " " + l->attribute("value") + "=" + l->attribute("label");
    sets.push_back(text);
  }
  std::sort(sets.begin(), sets.end());
  EXPECT_EQ(sets, (Lines{"age : -9=refused", "news1 : 0=no 1=yes", "news2 : 0=no 1=yes", "news3 : 0=no 1=yes",
                         "sex : f=female m=male"}));

  auto const mrSets = root.childrenNamed("multipleResponseSet");
  ASSERT_EQ(mrSets.size(), 1u);
  XmlElement const& news = *mrSets[0];
  EXPECT_EQ(news.attribute("name"), "$news");
  Lines members;
  for (XmlElement const* v : news.childrenNamed("multipleResponseSetVariable")) members.push_back(v->attribute("name"));
  EXPECT_EQ(members, (Lines{"news1", "news2", "news3"}));
  ASSERT_EQ(news.childrenNamed("multipleResponseSetLabel").size(), 1u);
  EXPECT_EQ(news.childrenNamed("multipleResponseSetLabel")[0]->attribute("value"), "News sources");
  ASSERT_EQ(news.childrenNamed("multipleResponseSetDichotomy").size(), 1u);
  EXPECT_EQ(news.childrenNamed("multipleResponseSetDichotomy")[0]->attribute("value"), "1");

  EXPECT_EQ(userAttributes(root), (Lines{"Study=transspace demo", "Wave=1"}));
  auto const variables = root.childrenNamed("variable");
  ASSERT_EQ(variables.size(), 9u);
  EXPECT_EQ(userAttributes(*variables[3]), (Lines{"Source=tax records", "Unit=EUR"}));
  EXPECT_EQ(userAttributes(*variables[1]), (Lines{"Range=18|99"}));
  EXPECT_EQ(userAttributes(*variables[0]), Lines{});
}

TEST_F(DemoDict, PrettyIsIndentedWithTheSameContent) {
  Outcome const& o = *pretty_;
  ASSERT_EQ(o.exitCode, 0) << describe(o);
  EXPECT_EQ(o.err, "") << describe(o);
  EXPECT_EQ(o.out.rfind("<?xml version=\"1.0\" encoding=\"UTF-8\"", 0), 0u) << describe(o);
  EXPECT_EQ(o.out.find("<?xml", 1), std::string::npos) << "one XML declaration";
  Lines const lines = linesOf(o.out);
  EXPECT_GT(lines.size(), 50u);
  EXPECT_TRUE(std::find(lines.begin(), lines.end(), "  <weightVariable name=\"wt\"/>") != lines.end()) << o.out;
  EXPECT_GT(std::count_if(lines.begin(), lines.end(), [](std::string const& l) { return l.rfind("    <", 0) == 0; }), 9)
      << "nested elements are indented deeper";
  ASSERT_EQ(compact_->exitCode, 0);
  EXPECT_NE(o.out, compact_->out);
  EXPECT_EQ(canonicalText(parsed(o.out)), canonicalText(parsed(compact_->out)));
}

TEST(CliProcess, PrettyKeepsTheContentOfAnXmlInputWithEscapesAndNonAsciiText) {
  TempDir dir;
  std::string const file =
      dir.write("latin1.xml",
                "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n"
                "<a t=\"caf\xe9 &amp; &lt;x&gt; &quot;q&quot;\"><b>na\xefve &amp; more</b><!-- note --><b/></a>\n");
  Outcome const compact = runCli({"dict", file});
  Outcome const pretty = runCli({"dict", "--pretty", file});
  ASSERT_EQ(compact.exitCode, 0) << describe(compact);
  ASSERT_EQ(pretty.exitCode, 0) << describe(pretty);
  XmlElement const root = parsed(compact.out);
  EXPECT_EQ(root.attribute("t"), "caf\xc3\xa9 & <x> \"q\"");
  ASSERT_EQ(root.children.size(), 2u);
  EXPECT_EQ(root.children[0].text, "na\xc3\xafve & more");
  EXPECT_EQ(canonicalText(parsed(pretty.out)), canonicalText(root));
}

// ---------------------------------------------------------------------------------------------------
// query on demo.sav

TEST(CliProcess, QueryListsTheVariableNamesInOrder) {
  Lines names;
  for (Variable const& v : demoVariables) names.push_back(v.name);
  expectAnswer(query("--list", demoSav(), "/dictionary", "variable/@name"), names);
  // --list is the default.
  expectAnswer(runCli({"query", demoSav(), "/dictionary", "variable/@name"}), names);
  // The context is evaluated from the document node.
  expectAnswer(query("--list", demoSav(), "/", "dictionary/variable/@name"), names);
  Lines labels;
  for (Variable const& v : demoVariables) labels.push_back(v.label);
  expectAnswer(query("--list", demoSav(), "//variable", "../variable/@label"), labels);
}

TEST(CliProcess, QueryAnswersSingleValues) {
  expectAnswer(query("--string", demoSav(), "/dictionary", "variable[@name='income']/@label"), {"Yearly income (EUR)"});
  expectAnswer(query("--string", demoSav(), "/dictionary/variable[@name='income']", "@label"), {"Yearly income (EUR)"});
  expectAnswer(query("--double", demoSav(), "/dictionary", "count(variable)"), {"9"});
  expectAnswer(query("--string", demoSav(), "/dictionary", "count(variable)"), {"9"});
  expectAnswer(query("--list", demoSav(), "/dictionary", "count(variable)"), {"9"});
  expectAnswer(query("--string", demoSav(), "/dictionary", "weightVariable/@name"), {"wt"});
  expectAnswer(query("--double", demoSav(), "/dictionary", "@rowCount"), {"4"});
  expectAnswer(query("--string", demoSav(), "/dictionary/variable[@name='age']", "missingValue/@data"), {"-9"});
  expectAnswer(query("--double", demoSav(), "/dictionary/variable[@name='age']", "missingValue/@data"), {"-9"});
  expectAnswer(query("--double", demoSav(), "/dictionary", "sum(variable/variableFormat/@decimals)"), {"4"});
  expectAnswer(query("--string", demoSav(), "/dictionary", "concat(variable[1]/@name, '+', variable[9]/@name)"),
               {"id+wt"});
}

TEST(CliProcess, QueryTheMembersOfTheMultipleResponseSet) {
  expectAnswer(
      query("--list", demoSav(), "/dictionary/multipleResponseSet[@name='$news']", "multipleResponseSetVariable/@name"),
      {"news1", "news2", "news3"});
  expectAnswer(query("--double", demoSav(), "/dictionary", "count(multipleResponseSet/multipleResponseSetVariable)"),
               {"3"});
  // The labels of the members, through the variables.
  expectAnswer(query("--list", demoSav(), "/dictionary",
                     "variable[@name = ../multipleResponseSet/multipleResponseSetVariable/@name]/@label"),
               {"Reads newspapers", "Watches TV news", "Reads news online"});
}

TEST(CliProcess, QueryBooleans) {
  expectAnswer(query("--string", demoSav(), "/dictionary", "count(variable) = 9"), {"true"});
  expectAnswer(query("--list", demoSav(), "/dictionary", "count(variable) = 9"), {"true"});
  expectAnswer(query("--double", demoSav(), "/dictionary", "count(variable) = 9"), {"1"});
  expectAnswer(query("--string", demoSav(), "/dictionary", "boolean(variable[@name='nosuch'])"), {"false"});
  expectAnswer(query("--double", demoSav(), "/dictionary", "boolean(variable[@name='nosuch'])"), {"0"});
}

TEST(CliProcess, SeveralNodesAsOneValueGiveTheFirstWithAWarning) {
  for (std::string const form : {"--string", "--double"}) {
    Outcome const o = query(form, demoSav(), "/dictionary", "variable/variableFormat/@width");
    EXPECT_EQ(o.exitCode, 0) << describe(o);
    EXPECT_EQ(o.out, "8\n") << describe(o);
    EXPECT_EQ(linesOf(o.err), (Lines{"transspace: warning: several nodes; the first one is shown"})) << describe(o);
  }
  Outcome const o = query("--string", demoSav(), "/dictionary", "variable/@name");
  EXPECT_EQ(o.exitCode, 0) << describe(o);
  EXPECT_EQ(o.out, "id\n") << describe(o);
  EXPECT_TRUE(contains(o.err, "warning")) << describe(o);
  // As a list, several nodes are the normal case: no warning.
  EXPECT_EQ(query("--list", demoSav(), "/dictionary", "variable/variableFormat/@width").err, "");
}

TEST(CliProcess, AContextSeveralNodesSelectTakesTheFirst) {
  expectAnswer(query("--string", demoSav(), "/dictionary/variable", "@name"), {"id"});
  expectAnswer(query("--string", demoSav(), "//variable[last()]", "@name"), {"wt"});
}

TEST(CliProcess, ElementsAreListedByTheirDomValueWhichIsEmpty) {
  // The library answers with the node's DOM value: empty for an element.
  expectAnswer(query("--list", demoSav(), "/dictionary", "weightVariable"), {""});
  expectNoResult(query("--string", demoSav(), "/dictionary", "weightVariable"));
}

TEST(CliProcess, AnXPathMayStartWithAMinusAfterDoubleDash) {
  expectAnswer(runCli({"query", "--double", demoSav(), "/dictionary", "--", "-count(variable)"}), {"-9"});
  expectAnswer(runCli({"query", "--string", "--", demoSav(), "/dictionary", "-1 + count(variable)"}), {"8"});
}

TEST(CliProcess, NonFiniteNumbers) {
  expectAnswer(query("--string", demoSav(), "/", "1 div 0"), {"Infinity"});
  expectAnswer(query("--double", demoSav(), "/", "1 div 0"), {"Infinity"});
  expectAnswer(query("--double", demoSav(), "/", "-1 div 0"), {"-Infinity"});
  expectAnswer(query("--double", demoSav(), "/", "0 div 0"), {"NaN"});
  expectAnswer(query("--double", demoSav(), "/", "0.1 + 0.2"), {"0.30000000000000004"});
}

TEST(CliProcess, AnswersDoNotDependOnTheLocale) {
  // Numbers keep the C notation and letter case does not touch names, whatever LC_ALL says (Turkish
  // has a dotless i; German writes a decimal comma).
  std::vector<std::tuple<std::string, std::string, Lines>> const queries = {
      {"--double", "sum(variable/variableFormat/@decimals) + 0.5", {"4.5"}},
      {"--list", "count(variable) div 4", {"2.25"}},
      {"--string", "variable[@name='income']/@label", {"Yearly income (EUR)"}},
      {"--list", "variable[starts-with(@name, 'i')]/@name", {"id", "income"}},
  };
  for (std::string const locale : {"C", "C.UTF-8", "tr_TR.UTF-8", "de_DE.UTF-8"}) {
    for (auto const& [form, path, answer] : queries) {
      Outcome const o = runCli({"query", form, demoSav(), "/dictionary", path}, {"LC_ALL=" + locale});
      expectAnswer(o, answer);
    }
  }
}

// ---------------------------------------------------------------------------------------------------
// No result

TEST(CliProcess, AContextThatSelectsNothingIsNoResult) {
  for (std::string const form : {"--list", "--string", "--double"}) {
    expectNoResult(query(form, demoSav(), "/nothing", "variable/@name"));
    expectNoResult(query(form, demoSav(), "/dictionary/variable[@name='nosuch']", "@label"));
  }
}

TEST(CliProcess, AnEmptyAnswerIsNoResult) {
  for (std::string const form : {"--list", "--string", "--double"}) {
    expectNoResult(query(form, demoSav(), "/dictionary", "nothing"));
    expectNoResult(query(form, demoSav(), "/dictionary", "variable[@name='income']/@nosuch"));
  }
  expectNoResult(query("--string", demoSav(), "/dictionary", "string(@nosuch)"));
  expectNoResult(query("--double", demoSav(), "/dictionary", "'not a number'"));
}

TEST(CliProcess, AMalformedPathIsNoResult) {
  for (std::string const form : {"--list", "--string", "--double"}) {
    for (std::string const path : {"variable[[", "foo()", "nosuch:prefix", "$unbound", "variable/"}) {
      Outcome const o = query(form, demoSav(), "/dictionary", path);
      EXPECT_EQ(o.signal, 0) << describe(o);
      expectNoResult(o);
    }
  }
}

TEST(CliProcess, BlankArgumentsAreNoResult) {
  expectNoResult(query("--list", demoSav(), "", "variable"));
  expectNoResult(query("--list", demoSav(), "   ", "variable"));
  expectNoResult(query("--list", demoSav(), "/dictionary", ""));
  expectNoResult(query("--string", demoSav(), "/dictionary", " \t "));
}

TEST(CliProcess, AMalformedContextIsAnInvalidXPathError) {
  for (std::string const form : {"--list", "--string", "--double"}) {
    for (std::string const context : {"/dictionary[[", "/dictionary/", "foo()", "nosuch:prefix", "((/"}) {
      Outcome const o = query(form, demoSav(), context, "@name");
      EXPECT_EQ(o.signal, 0) << describe(o);
      EXPECT_EQ(o.exitCode, 2) << context << "\n" << describe(o);
      EXPECT_EQ(o.out, "") << describe(o);
      EXPECT_TRUE(contains(o.err, "transspace: invalid XPath: ")) << describe(o);
    }
  }
}

// ---------------------------------------------------------------------------------------------------
// Unreadable input

TEST(CliProcess, ANonexistentFileExitsTwoNamingTheFile) {
  TempDir dir;
  std::string const missing = dir.path("missing.sav");
  for (auto const& arguments : {std::vector<std::string>{"dict", missing},
                                std::vector<std::string>{"query", missing, "/dictionary", "variable/@name"},
                                std::vector<std::string>{"dict", dir.path("missing.xml")}}) {
    Outcome const o = runCli(arguments);
    EXPECT_EQ(o.exitCode, 2) << describe(o);
    EXPECT_EQ(o.out, "") << describe(o);
    EXPECT_EQ(o.err.rfind("transspace: " + arguments[1] + ": cannot open", 0), 0u) << describe(o);
  }
}

TEST(CliProcess, ADirectoryExitsTwoNamingIt) {
  TempDir dir;
  Outcome const o = runCli({"dict", dir.path("")});
  EXPECT_EQ(o.exitCode, 2) << describe(o);
  EXPECT_EQ(o.out, "") << describe(o);
  EXPECT_TRUE(contains(o.err, dir.path("") + ": is a directory")) << describe(o);
}

TEST(CliProcess, ATruncatedSavExitsTwoNamingTheFileAndTheOffset) {
  std::string const demo = readFile(demoSav());
  TempDir dir;
  for (std::size_t length : {0, 2, 100, 176, 300, 1000}) {
    std::string const file = dir.write("truncated-" + std::to_string(length) + ".sav", demo.substr(0, length));
    for (auto const& arguments : {std::vector<std::string>{"dict", file},
                                  std::vector<std::string>{"query", file, "/dictionary", "variable/@name"}}) {
      Outcome const o = runCli(arguments);
      EXPECT_EQ(o.exitCode, 2) << describe(o);
      EXPECT_EQ(o.out, "") << describe(o);
      EXPECT_TRUE(std::regex_search(
          o.err, std::regex("^transspace: " + std::regex_replace(file, std::regex("[.^$|()\\[\\]{}*+?\\\\]"), "\\$&") +
                            ": near offset 0x[0-9a-f]+: ")))
          << describe(o);
    }
  }
}

TEST(CliProcess, ACorruptRecordExitsTwoNamingTheOffset) {
  // The count of the first variable's label length made huge: the reader must refuse it, not allocate.
  std::string demo = readFile(demoSav());
  ASSERT_GT(demo.size(), 200u);
  std::string corrupt = demo;
  // Record type 2 of `id` starts at 176; its label length is the word at 176 + 28 (after type, width,
  // has_label, n_missing, print, write and the 8-byte name): 4 + 4 + 4 + 4 + 4 + 4 + 8 = 32.
  std::string const huge("\xff\xff\xff\x7f", 4);
  corrupt.replace(176 + 32, 4, huge);
  TempDir dir;
  std::string const file = dir.write("corrupt.sav", corrupt);
  Outcome const o = runCli({"dict", file});
  EXPECT_EQ(o.signal, 0) << describe(o);
  EXPECT_EQ(o.exitCode, 2) << describe(o);
  EXPECT_EQ(o.out, "") << describe(o);
  EXPECT_TRUE(contains(o.err, file + ": near offset 0x")) << describe(o);
}

TEST(CliProcess, TheDamagedFileIsACleanErrorOrAReadWithWarnings) {
  std::string const file = std::string(TRANSSPACE_TEST_DATA) + "/sav/builder-made/corrupt-extension-headers.sav";
  if (!std::filesystem::exists(file)) GTEST_SKIP() << file << " is not there (yet)";
  for (auto const& arguments : {std::vector<std::string>{"dict", file},
                                std::vector<std::string>{"query", file, "/dictionary", "variable/@name"}}) {
    Outcome const o = runCli(arguments);
    EXPECT_EQ(o.signal, 0) << describe(o);
    if (o.exitCode == 2) {
      EXPECT_EQ(o.out, "") << describe(o);
      EXPECT_TRUE(contains(o.err, file + ": near offset 0x")) << describe(o);
    } else {
      EXPECT_EQ(o.exitCode, 0) << describe(o);
      EXPECT_FALSE(o.out.empty()) << describe(o);
      Lines const warnings = linesOf(o.err);
      ASSERT_FALSE(warnings.empty()) << "a file that needs tolerance reads with warnings\n" << describe(o);
      for (std::string const& w : warnings) {
        EXPECT_EQ(w.rfind("transspace: warning: ", 0), 0u) << w;
        EXPECT_TRUE(contains(w, file)) << w;
        EXPECT_TRUE(contains(w, "offset 0x")) << w;
      }
    }
  }
}

// ---------------------------------------------------------------------------------------------------
// XML input

TEST(CliProcess, QueryAnXmlDocument) {
  TempDir dir;
  std::string const file = dir.write("small.xml",
                                     "<?xml version=\"1.0\"?>\n"
                                     "<catalog owner=\"me\">\n"
                                     "  <book id=\"b1\" price=\"12.5\"><title>First</title></book>\n"
                                     "  <book id=\"b2\" price=\"7\"><title>Second</title></book>\n"
                                     "  <book id=\"b3\" price=\"0.25\"><title>Third</title></book>\n"
                                     "</catalog>\n");
  expectAnswer(query("--list", file, "/catalog", "book/@id"), {"b1", "b2", "b3"});
  expectAnswer(query("--list", file, "/catalog", "book/title/text()"), {"First", "Second", "Third"});
  expectAnswer(query("--string", file, "/catalog/book[@id='b2']", "title/text()"), {"Second"});
  expectAnswer(query("--string", file, "/", "catalog/@owner"), {"me"});
  expectAnswer(query("--double", file, "/catalog", "sum(book/@price)"), {"19.75"});
  expectAnswer(query("--double", file, "/catalog", "count(book)"), {"3"});
  expectAnswer(query("--string", file, "/catalog", "string(book[3]/title)"), {"Third"});
  expectNoResult(query("--list", file, "/dictionary", "variable"));
  expectNoResult(query("--list", file, "/catalog", "magazine"));

  Outcome const dict = runCli({"dict", file});
  EXPECT_EQ(dict.exitCode, 0) << describe(dict);
  EXPECT_EQ(parsed(dict.out).childrenNamed("book").size(), 3u);
}

TEST(CliProcess, NamespacesAreNotProcessedSoBareNamesMatch) {
  TempDir dir;
  std::string const file = dir.write("ns.xml", "<r xmlns=\"urn:x\" xmlns:p=\"urn:p\"><p:e v=\"1\"/><e v=\"2\"/></r>");
  expectAnswer(query("--list", file, "/r", "e/@v"), {"2"});
}

TEST(CliProcess, AMalformedXmlExitsTwoWithLineAndColumn) {
  TempDir dir;
  std::string const file = dir.write("bad.xml", "<a>\n  <b>one</b>\n  <c></a>\n");
  for (auto const& arguments :
       {std::vector<std::string>{"query", file, "/a", "b"}, std::vector<std::string>{"dict", file}}) {
    Outcome const o = runCli(arguments);
    EXPECT_EQ(o.exitCode, 2) << describe(o);
    EXPECT_EQ(o.out, "") << describe(o);
    EXPECT_TRUE(contains(o.err, "transspace: " + file + ": not well-formed XML: line 3, column ")) << describe(o);
  }
  for (std::string const& content : {std::string(), std::string("plain text"), std::string("<a>unclosed")}) {
    std::string const other = dir.write("other.xml", content);
    Outcome const o = runCli({"dict", other});
    EXPECT_EQ(o.exitCode, 2) << content << "\n" << describe(o);
    EXPECT_TRUE(std::regex_search(o.err, std::regex("line [0-9]+, column [0-9]+"))) << describe(o);
  }
}

TEST(CliProcess, AnXmlWithAnExternalEntityIsNotFetched) {
  TempDir dir;
  dir.write("secret.txt", "secret");
  std::string const file = dir.write("entity.xml", "<?xml version=\"1.0\"?>\n<!DOCTYPE a [<!ENTITY s SYSTEM \"" +
                                                       dir.path("secret.txt") + "\">]>\n<a>&s;</a>\n");
  Outcome const o = runCli({"dict", file});
  EXPECT_EQ(o.signal, 0) << describe(o);
  EXPECT_FALSE(contains(o.out, "secret")) << describe(o);
}

// ---------------------------------------------------------------------------------------------------
// Round trip: the dictionary saved as XML answers like the system file.

TEST(CliProcess, TheDictionarySavedAsXmlAnswersLikeTheSystemFile) {
  Outcome const dict = runCli({"dict", demoSav()});
  ASSERT_EQ(dict.exitCode, 0) << describe(dict);
  TempDir dir;
  std::string const xml = dir.write("demo.xml", dict.out);

  std::vector<std::tuple<std::string, std::string, std::string>> const queries = {
      {"--list", "/dictionary", "variable/@name"},
      {"--list", "/", "dictionary/variable/@label"},
      {"--string", "/dictionary", "variable[@name='income']/@label"},
      {"--double", "/dictionary", "count(variable)"},
      {"--string", "/dictionary", "weightVariable/@name"},
      {"--list", "/dictionary/multipleResponseSet[@name='$news']", "multipleResponseSetVariable/@name"},
      {"--list", "/dictionary/variable[@name='income']", "attributeSet/attribute[@type='user']/attributeValue/@value"},
      {"--list", "/dictionary", "variable/missingValue/@data"},
      {"--list", "/dictionary", "valueLabelSet/valueLabel/@label"},
      {"--double", "/dictionary", "@rowCount"},
      {"--string", "/dictionary", "count(*) = 19"},
      {"--string", "/dictionary", "variable/@name"},  // several nodes: the warning too
      {"--list", "/dictionary", "nothing"},
      {"--list", "/nothing", "variable"},
  };
  for (auto const& [form, context, path] : queries) {
    Outcome const fromSav = query(form, demoSav(), context, path);
    Outcome const fromXml = query(form, xml, context, path);
    EXPECT_EQ(fromXml.exitCode, fromSav.exitCode) << form << " " << context << " " << path;
    EXPECT_EQ(fromXml.out, fromSav.out) << form << " " << context << " " << path;
    EXPECT_EQ(fromXml.err, fromSav.err) << form << " " << context << " " << path;
  }
  EXPECT_EQ(linesOf(query("--list", xml, "/dictionary", "variable/@name").out).size(), 9u);

  // And `dict` of the saved XML is the same document again.
  Outcome const again = runCli({"dict", xml});
  ASSERT_EQ(again.exitCode, 0) << describe(again);
  EXPECT_EQ(canonicalText(parsed(again.out)), canonicalText(parsed(dict.out)));
}

// ---------------------------------------------------------------------------------------------------
// Every corpus file: dict reads (with or without warnings) and its variable count answers.

TEST(CliProcess, EveryCorpusFileGivesADictionaryOrACleanError) {
  std::filesystem::path const corpus = std::filesystem::path(TRANSSPACE_TEST_DATA) / "sav";
  if (!std::filesystem::is_directory(corpus)) GTEST_SKIP() << corpus << " is not there (yet)";
  int files = 0;
  for (auto const& entry : std::filesystem::recursive_directory_iterator(corpus)) {
    std::string const extension = entry.path().extension().string();
    if (!entry.is_regular_file() || (extension != ".sav" && extension != ".zsav")) continue;
    ++files;
    std::string const file = entry.path().string();
    Outcome const dict = runCli({"dict", file});
    EXPECT_EQ(dict.signal, 0) << file << "\n" << describe(dict);
    if (dict.exitCode == 2) {
      EXPECT_TRUE(contains(dict.err, file + ": near offset 0x")) << describe(dict);
      continue;
    }
    ASSERT_EQ(dict.exitCode, 0) << file << "\n" << describe(dict);
    XmlElement const root = parsed(dict.out);
    EXPECT_EQ(root.name, "dictionary") << file;
    Outcome const count = query("--double", file, "/dictionary", "count(variable)");
    EXPECT_EQ(count.exitCode, 0) << file << "\n" << describe(count);
    EXPECT_EQ(count.out, std::to_string(root.childrenNamed("variable").size()) + "\n") << file;
  }
  EXPECT_GT(files, 0);
}

}  // namespace

namespace {

// ---------------------------------------------------------------------------------------------------
// Output that cannot be written

TEST(CliProcess, AFailedWriteToStandardOutputIsAnError) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full";
  for (std::string const command : {"dict", "--help"}) {
    Outcome const o =
        clitest::runProgram("/bin/sh", {"-c", "\"$0\" $1 \"$2\" > /dev/full", TRANSSPACE_CLI, command, demoSav()});
    EXPECT_EQ(o.exitCode, 2) << command << "\n" << describe(o);
    EXPECT_TRUE(contains(o.err, "transspace: cannot write to standard output")) << describe(o);
  }
}

}  // namespace
