// cli::parseCommandLine: commands, the options each command takes, "--", operand counts, usage errors.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "command.h"
#include "querycommand.h"

namespace {

using cli::AnswerForm;
using cli::Invocation;
using cli::parseCommandLine;
using cli::UsageError;
using Arguments = std::vector<std::string>;

// The message of the UsageError that parsing `arguments` throws; fails the test when none is thrown.
std::string usageErrorOf(Arguments const& arguments) {
  try {
    parseCommandLine(arguments);
  } catch (UsageError const& e) {
    EXPECT_FALSE(e.message.empty());
    return e.message;
  }
  ADD_FAILURE() << "no UsageError";
  return std::string();
}

std::string commandOf(Invocation const& invocation) {
  return invocation.command == nullptr ? std::string() : invocation.command->name();
}

AnswerForm answerOf(Arguments const& arguments) { return answerForm(parseCommandLine(arguments).arguments); }

TEST(ParseCommandLine, DictTakesOneFile) {
  Invocation const invocation = parseCommandLine({"dict", "demo.sav"});
  EXPECT_EQ(commandOf(invocation), "dict");
  EXPECT_EQ(invocation.arguments.operands, Arguments{"demo.sav"});
  EXPECT_FALSE(invocation.arguments.has("--pretty"));
  EXPECT_FALSE(invocation.help());
}

TEST(ParseCommandLine, DictPrettyBeforeOrAfterTheFile) {
  for (Arguments const& arguments : {Arguments{"dict", "--pretty", "a.sav"}, Arguments{"dict", "a.sav", "--pretty"}}) {
    Invocation const invocation = parseCommandLine(arguments);
    EXPECT_EQ(commandOf(invocation), "dict");
    EXPECT_EQ(invocation.arguments.operands, Arguments{"a.sav"});
    EXPECT_TRUE(invocation.arguments.has("--pretty"));
  }
}

TEST(ParseCommandLine, QueryTakesFileContextAndPathAndAnswersAsAListByDefault) {
  Invocation const invocation = parseCommandLine({"query", "demo.sav", "/dictionary", "variable/@name"});
  EXPECT_EQ(commandOf(invocation), "query");
  EXPECT_EQ(invocation.arguments.operands, (Arguments{"demo.sav", "/dictionary", "variable/@name"}));
  EXPECT_EQ(answerForm(invocation.arguments), AnswerForm::List);
}

TEST(ParseCommandLine, QueryAnswerForms) {
  EXPECT_EQ(answerOf({"query", "--list", "f", "c", "p"}), AnswerForm::List);
  EXPECT_EQ(answerOf({"query", "--string", "f", "c", "p"}), AnswerForm::String);
  EXPECT_EQ(answerOf({"query", "--double", "f", "c", "p"}), AnswerForm::Double);
  EXPECT_EQ(answerOf({"query", "--double", "--string", "f", "c", "p"}), AnswerForm::String) << "the last one counts";
  // Options may stand between and after the operands.
  Invocation const invocation = parseCommandLine({"query", "f", "c", "--double", "p"});
  EXPECT_EQ(answerForm(invocation.arguments), AnswerForm::Double);
  EXPECT_EQ(invocation.arguments.operands, (Arguments{"f", "c", "p"}));
  EXPECT_EQ(answerOf({"query", "f", "c", "p", "--string"}), AnswerForm::String);
}

TEST(ParseCommandLine, PrettyIsOnlyForDict) {
  EXPECT_NE(usageErrorOf({"query", "--pretty", "f", "c", "p"}).find("--pretty"), std::string::npos);
}

TEST(ParseCommandLine, AnswerFormsAreOnlyForQuery) {
  for (std::string const option : {"--list", "--string", "--double"}) {
    EXPECT_NE(usageErrorOf({"dict", option, "f"}).find(option), std::string::npos) << option;
  }
}

TEST(ParseCommandLine, DoubleDashEndsTheOptionsSoThatAnXPathMayStartWithAMinus) {
  Invocation invocation = parseCommandLine({"query", "--double", "f", "--", "-1", "-count(x)"});
  EXPECT_EQ(answerForm(invocation.arguments), AnswerForm::Double);
  EXPECT_EQ(invocation.arguments.operands, (Arguments{"f", "-1", "-count(x)"}));

  invocation = parseCommandLine({"query", "--", "f", "/a", "--string"});
  EXPECT_EQ(answerForm(invocation.arguments), AnswerForm::List) << "--string after -- is an operand, not an option";
  EXPECT_EQ(invocation.arguments.operands.back(), "--string");

  invocation = parseCommandLine({"query", "f", "/a", "--", "--"});
  EXPECT_EQ(invocation.arguments.operands.back(), "--") << "only the first -- ends the options";

  invocation = parseCommandLine({"dict", "--", "--pretty"});
  EXPECT_EQ(invocation.arguments.operands, Arguments{"--pretty"});
  EXPECT_FALSE(invocation.arguments.has("--pretty"));
}

TEST(ParseCommandLine, WithoutDoubleDashAnOperandStartingWithAMinusIsAnUnknownOption) {
  EXPECT_NE(usageErrorOf({"query", "f", "/a", "-count(x)"}).find("-count(x)"), std::string::npos);
}

TEST(ParseCommandLine, ALoneMinusIsAnOperand) {
  EXPECT_EQ(parseCommandLine({"query", "f", "-", "p"}).arguments.operands[1], "-");
  EXPECT_EQ(parseCommandLine({"dict", "-"}).arguments.operands, Arguments{"-"});
}

TEST(ParseCommandLine, EmptyOperandsAreOperands) {
  EXPECT_EQ(parseCommandLine({"query", "f", "", ""}).arguments.operands, (Arguments{"f", "", ""}));
}

TEST(ParseCommandLine, WrongOperandCounts) {
  EXPECT_NE(usageErrorOf({"dict"}).find("dict takes FILE (0 given)"), std::string::npos);
  EXPECT_NE(usageErrorOf({"dict", "--pretty"}).find("0 given"), std::string::npos);
  EXPECT_NE(usageErrorOf({"dict", "a", "b"}).find("2 given"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query"}).find("query takes FILE CONTEXT PATH (0 given)"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query", "f"}).find("1 given"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query", "f", "c"}).find("2 given"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query", "f", "c", "p", "q"}).find("4 given"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query", "f", "c", "--", "p", "q"}).find("4 given"), std::string::npos);
}

TEST(ParseCommandLine, MissingOrUnknownCommand) {
  EXPECT_NE(usageErrorOf({}).find("missing"), std::string::npos);
  EXPECT_NE(usageErrorOf({"frob", "f"}).find("frob"), std::string::npos);
  EXPECT_NE(usageErrorOf({"Dict", "f"}).find("Dict"), std::string::npos);
  usageErrorOf({""});
  usageErrorOf({"--pretty", "dict", "f"});  // options follow the command
  usageErrorOf({"demo.sav"});
}

TEST(ParseCommandLine, UnknownOptions) {
  EXPECT_NE(usageErrorOf({"dict", "--frob", "f"}).find("--frob"), std::string::npos);
  EXPECT_NE(usageErrorOf({"dict", "-p", "f"}).find("-p"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query", "--strings", "f", "c", "p"}).find("--strings"), std::string::npos);
  EXPECT_NE(usageErrorOf({"query", "--version", "f", "c", "p"}).find("--version"), std::string::npos);
  EXPECT_NE(usageErrorOf({"dict", "--pretty=yes", "f"}).find("takes no value"), std::string::npos);
}

TEST(ParseCommandLine, VersionTakesNoOperands) {
  EXPECT_NE(usageErrorOf({"--version", "extra"}).find("--version takes no operands"), std::string::npos);
  EXPECT_NE(usageErrorOf({"version", "--pretty"}).find("--version takes no operands"), std::string::npos);
}

TEST(ParseCommandLine, SchemaTakesNoOperands) {
  EXPECT_EQ(commandOf(parseCommandLine({"schema"})), "schema");
  EXPECT_NE(usageErrorOf({"schema", "file.sav"}).find("schema takes no operands"), std::string::npos);
  EXPECT_NE(usageErrorOf({"schema", "--pretty"}).find("--pretty"), std::string::npos);
}

TEST(ParseCommandLine, HelpAndVersion) {
  for (std::string const help : {"--help", "-h", "help"}) {
    Invocation const invocation = parseCommandLine({help});
    EXPECT_TRUE(invocation.help() && invocation.command == nullptr) << help;
  }
  for (std::string const version : {"--version", "version"}) EXPECT_TRUE(parseCommandLine({version}).version);
  // --help within a command asks for the command's help, whatever else the line holds.
  for (Arguments const& arguments :
       {Arguments{"dict", "--help"}, Arguments{"query", "f", "-h"}, Arguments{"query", "--help", "--frob"}}) {
    Invocation const invocation = parseCommandLine(arguments);
    EXPECT_TRUE(invocation.help());
    EXPECT_EQ(commandOf(invocation), arguments[0]);
  }
  // ... but not after "--", where it is an operand.
  Invocation const invocation = parseCommandLine({"dict", "--", "--help"});
  EXPECT_FALSE(invocation.help());
  EXPECT_EQ(invocation.arguments.operands, Arguments{"--help"});
}

TEST(UsageText, NamesEveryCommandAndOption) {
  std::string const usage = cli::usageText();
  for (char const* word : {"Usage:", "transspace dict", "transspace query", "--pretty", "--list", "--string",
                           "--double", "--help", "--version", "transspace schema", "FILE", "CONTEXT", "PATH", "--"}) {
    EXPECT_NE(usage.find(word), std::string::npos) << word;
  }
}

TEST(HelpText, ACommandsHelpGivesItsUsageAndOptions) {
  std::string const help = cli::helpText(*parseCommandLine({"query", "--help"}).command);
  EXPECT_EQ(help.rfind("Usage:\n  transspace query [--list | --string | --double] FILE CONTEXT PATH\n", 0), 0u) << help;
  for (char const* word : {"Options:", "--list", "--string", "--double", "Exit status"}) {
    EXPECT_NE(help.find(word), std::string::npos) << word;
  }
}

}  // namespace
