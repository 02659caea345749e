#include "options.h"

namespace cli {

namespace {

bool isOption(std::string const& argument) { return argument.size() > 1 && argument[0] == '-'; }

// Applies one option to `options`; false when the option is not one of `command`'s.
bool applyOption(std::string const& option, Options& options) {
  if (option == "--help" || option == "-h") {
    options.command = Command::Help;
    return true;
  }
  if (options.command == Command::Dict && option == "--pretty") {
    options.pretty = true;
    return true;
  }
  if (options.command == Command::Query) {
    if (option == "--list")
      options.answer = AnswerForm::List;
    else if (option == "--string")
      options.answer = AnswerForm::String;
    else if (option == "--double")
      options.answer = AnswerForm::Double;
    else
      return false;
    return true;
  }
  return false;
}

Command commandNamed(std::string const& name) {
  if (name == "dict") return Command::Dict;
  if (name == "query") return Command::Query;
  if (name == "schema") return Command::Schema;
  if (name == "help" || name == "--help" || name == "-h") return Command::Help;
  if (name == "--version" || name == "version") return Command::Version;
  throw UsageError{"unknown command '" + name + "'"};
}

void checkOperands(Options& options, std::vector<std::string> const& operands) {
  std::size_t const wanted = options.command == Command::Query ? 3 : 1;
  if (operands.size() != wanted) {
    throw UsageError{std::string(options.command == Command::Query ? "query" : "dict") + " takes " +
                     (wanted == 3 ? "FILE CONTEXT PATH" : "FILE") + " (" + std::to_string(operands.size()) + " given)"};
  }
  options.file = operands[0];
  if (wanted == 3) {
    options.context = operands[1];
    options.path = operands[2];
  }
}

}  // namespace

Options parseOptions(std::vector<std::string> const& arguments) {
  Options options;
  if (arguments.empty()) throw UsageError{"a command is missing"};
  options.command = commandNamed(arguments[0]);
  if (options.command == Command::Help) return options;  // help wins whatever follows
  if (options.command == Command::Version || options.command == Command::Schema) {
    if (arguments.size() > 1) {
      throw UsageError{std::string(options.command == Command::Schema ? "schema" : "--version") + " takes no operands"};
    }
    return options;
  }

  std::vector<std::string> operands;
  bool optionsEnded = false;  // after "--", everything is an operand (an XPath may start with '-')
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    std::string const& argument = arguments[i];
    if (!optionsEnded && argument == "--") {
      optionsEnded = true;
    } else if (!optionsEnded && isOption(argument)) {
      if (!applyOption(argument, options)) throw UsageError{"unknown option '" + argument + "'"};
      if (options.command == Command::Help) return options;
    } else {
      operands.push_back(argument);
    }
  }
  checkOperands(options, operands);
  return options;
}

std::string usageText() {
  return "Usage:\n"
         "  transspace dict [--pretty] FILE\n"
         "  transspace query [--list | --string | --double] FILE CONTEXT PATH\n"
         "  transspace schema\n"
         "  transspace --help | --version\n"
         "\n"
         "FILE is a system file (.sav, .zsav), whose dictionary is exported as XML, or an XML\n"
         "document (parsed without namespace processing, so bare element names match).\n"
         "\n"
         "dict     prints the dictionary XML of FILE (--pretty indents it).\n"
         "query    selects the first node of CONTEXT (an XPath evaluated from the document node),\n"
         "         evaluates PATH from it and prints the answer:\n"
         "           --list    one line per entry (the default)\n"
         "           --string  the answer as one text (the first node of a node set)\n"
         "           --double  the answer as a number\n"
         "         Use -- before CONTEXT or PATH when they start with '-'.\n"
         "schema   prints the XML Schema that every dictionary document conforms to.\n"
         "\n"
         "Letter case and the dictionary's locale follow the environment's LC_CTYPE; numbers are\n"
         "parsed in the C notation.\n"
         "Warnings of the file reader and the answer's status go to standard error.\n"
         "Exit status: 0 answered; 1 no result (the failure flag, or an empty answer);\n"
         "2 bad usage, unreadable input, a malformed CONTEXT, or standard output that cannot be\n"
         "written (a full disk, a closed pipe).\n";
}

}  // namespace cli
