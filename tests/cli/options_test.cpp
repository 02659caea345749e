// cli::parseOptions: commands, the options each command takes, "--", operand counts, usage errors.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "options.h"

namespace {

using cli::AnswerForm;
using cli::Command;
using cli::Options;
using cli::parseOptions;
using cli::UsageError;
using Arguments = std::vector<std::string>;

// The message of the UsageError that parsing `arguments` throws; fails the test when none is thrown.
std::string usageErrorOf(Arguments const& arguments) {
  try {
    parseOptions(arguments);
  } catch (UsageError const& e) {
    EXPECT_FALSE(e.message.empty());
    return e.message;
  }
  ADD_FAILURE() << "no UsageError";
  return std::string();
}

TEST(ParseOptions, DictTakesOneFile) {
  Options const options = parseOptions({"dict", "demo.sav"});
  EXPECT_EQ(options.command, Command::Dict);
  EXPECT_EQ(options.file, "demo.sav");
  EXPECT_FALSE(options.pretty);
}

TEST(ParseOptions, DictPrettyBeforeOrAfterTheFile) {
  for (Arguments const& arguments : {Arguments{"dict", "--pretty", "a.sav"}, Arguments{"dict", "a.sav", "--pretty"}}) {
    Options const options = parseOptions(arguments);
    EXPECT_EQ(options.command, Command::Dict);
    EXPECT_EQ(options.file, "a.sav");
    EXPECT_TRUE(options.pretty);
  }
}

TEST(ParseOptions, QueryTakesFileContextAndPathAndAnswersAsAListByDefault) {
  Options const options = parseOptions({"query", "demo.sav", "/dictionary", "variable/@name"});
  EXPECT_EQ(options.command, Command::Query);
  EXPECT_EQ(options.file, "demo.sav");
  EXPECT_EQ(options.context, "/dictionary");
  EXPECT_EQ(options.path, "variable/@name");
  EXPECT_EQ(options.answer, AnswerForm::List);
  EXPECT_FALSE(options.pretty);
}

TEST(ParseOptions, QueryAnswerForms) {
  EXPECT_EQ(parseOptions({"query", "--list", "f", "c", "p"}).answer, AnswerForm::List);
  EXPECT_EQ(parseOptions({"query", "--string", "f", "c", "p"}).answer, AnswerForm::String);
  EXPECT_EQ(parseOptions({"query", "--double", "f", "c", "p"}).answer, AnswerForm::Double);
  // Options may stand between and after the operands.
  Options const options = parseOptions({"query", "f", "c", "--double", "p"});
  EXPECT_EQ(options.answer, AnswerForm::Double);
  EXPECT_EQ(options.file, "f");
  EXPECT_EQ(options.context, "c");
  EXPECT_EQ(options.path, "p");
  EXPECT_EQ(parseOptions({"query", "f", "c", "p", "--string"}).answer, AnswerForm::String);
}

TEST(ParseOptions, PrettyIsOnlyForDict) {
  EXPECT_NE(usageErrorOf({"query", "--pretty", "f", "c", "p"}).find("--pretty"), std::string::npos);
}

TEST(ParseOptions, AnswerFormsAreOnlyForQuery) {
  for (std::string const option : {"--list", "--string", "--double"}) {
    EXPECT_NE(usageErrorOf({"dict", option, "f"}).find(option), std::string::npos) << option;
  }
}

TEST(ParseOptions, DoubleDashEndsTheOptionsSoThatAnXPathMayStartWithAMinus) {
  Options options = parseOptions({"query", "--double", "f", "--", "-1", "-count(x)"});
  EXPECT_EQ(options.answer, AnswerForm::Double);
  EXPECT_EQ(options.file, "f");
  EXPECT_EQ(options.context, "-1");
  EXPECT_EQ(options.path, "-count(x)");

  options = parseOptions({"query", "--", "f", "/a", "--string"});
  EXPECT_EQ(options.answer, AnswerForm::List) << "--string after -- is an operand, not an option";
  EXPECT_EQ(options.path, "--string");

  options = parseOptions({"query", "f", "/a", "--", "--"});
  EXPECT_EQ(options.path, "--") << "only the first -- ends the options";

  options = parseOptions({"dict", "--", "--pretty"});
  EXPECT_EQ(options.file, "--pretty");
  EXPECT_FALSE(options.pretty);
}

TEST(ParseOptions, WithoutDoubleDashAnOperandStartingWithAMinusIsAnUnknownOption) {
  EXPECT_NE(usageErrorOf({"query", "f", "/a", "-count(x)"}).find("-count(x)"), std::string::npos);
}

TEST(ParseOptions, ALoneMinusIsAnOperand) {
  Options const options = parseOptions({"query", "f", "-", "p"});
  EXPECT_EQ(options.context, "-");
  EXPECT_EQ(parseOptions({"dict", "-"}).file, "-");
}

TEST(ParseOptions, EmptyOperandsAreOperands) {
  Options const options = parseOptions({"query", "f", "", ""});
  EXPECT_EQ(options.context, "");
  EXPECT_EQ(options.path, "");
}

TEST(ParseOptions, WrongOperandCounts) {
  EXPECT_NE(usageErrorOf({"dict"}).find("0 given"), std::string::npos);
  EXPECT_NE(usageErrorOf({"dict", "--pretty"}).find("0 given"), std::string::npos);
  EXPECT_NE(usageErrorOf({"dict", "a", "b"}).find("2 given"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query"}).find("0 given"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query", "f"}).find("1 given"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query", "f", "c"}).find("2 given"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query", "f", "c", "p", "q"}).find("4 given"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query", "f", "c", "--", "p", "q"}).find("4 given"), std::string::npos);
}

TEST(ParseOptions, MissingOrUnknownCommand) {
  EXPECT_NE(usageErrorOf({}).find("missing"), std::string::npos);
  EXPECT_NE(usageErrorOf({"frob", "f"}).find("frob"), std::string::npos);
  EXPECT_NE(usageErrorOf({"Dict", "f"}).find("Dict"), std::string::npos);
  usageErrorOf({""});
  usageErrorOf({"--pretty", "dict", "f"});  // options follow the command
  usageErrorOf({"demo.sav"});
}

TEST(ParseOptions, UnknownOptions) {
  EXPECT_NE(usageErrorOf({"dict", "--frob", "f"}).find("--frob"), std::string::npos);
  EXPECT_NE(usageErrorOf({"dict", "-p", "f"}).find("-p"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query", "--strings", "f", "c", "p"}).find("--strings"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query", "--version", "f", "c", "p"}).find("--version"), std::string::npos);
}

TEST(ParseOptions, VersionTakesNoOperands) {
  EXPECT_NE(usageErrorOf({"--version", "extra"}).find("--version takes no operands"), std::string::npos);
  EXPECT_NE(usageErrorOf({"version", "--pretty"}).find("--version takes no operands"), std::string::npos);
}

TEST(ParseOptions, SchemaTakesNoOperands) {
  EXPECT_EQ(parseOptions({"schema"}).command, Command::Schema);
  EXPECT_NE(usageErrorOf({"schema", "file.sav"}).find("schema takes no operands"), std::string::npos);
  EXPECT_NE(usageErrorOf({"schema", "--pretty"}).find("schema takes no operands"), std::string::npos);
}

TEST(ParseOptions, HelpAndVersion) {
  for (std::string const help : {"--help", "-h", "help"})
    EXPECT_EQ(parseOptions({help}).command, Command::Help) << help;
  for (std::string const version : {"--version", "version"})
    EXPECT_EQ(parseOptions({version}).command, Command::Version) << version;
  // --help within a command asks for help, whatever else the line holds.
  EXPECT_EQ(parseOptions({"dict", "--help"}).command, Command::Help);
  EXPECT_EQ(parseOptions({"query", "f", "-h"}).command, Command::Help);
  EXPECT_EQ(parseOptions({"query", "--help", "--frob"}).command, Command::Help);
  // ... but not after "--", where it is an operand.
  Options const options = parseOptions({"dict", "--", "--help"});
  EXPECT_EQ(options.command, Command::Dict);
  EXPECT_EQ(options.file, "--help");
}

TEST(UsageText, NamesEveryCommandAndOption) {
  std::string const usage = cli::usageText();
  for (char const* word : {"Usage:", "transspace dict", "transspace query", "--pretty", "--list", "--string",
                           "--double", "--help", "--version", "transspace schema", "FILE", "CONTEXT", "PATH", "--"}) {
    EXPECT_NE(usage.find(word), std::string::npos) << word;
  }
}

}  // namespace
