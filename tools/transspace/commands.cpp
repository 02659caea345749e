#include "command.h"

#include <ostream>

namespace cli {

namespace {

// Every command, in the order the usage lists them.
std::vector<std::unique_ptr<Command>> const& commands() {
  static std::vector<std::unique_ptr<Command>> const all = [] {
    std::vector<std::unique_ptr<Command>> list;
    list.push_back(dictCommand());
    list.push_back(queryCommand());
    list.push_back(schemaCommand());
    return list;
  }();
  return all;
}

Command const* commandNamed(std::string const& name) {
  for (auto const& command : commands()) {
    if (command->name() == name) return command.get();
  }
  return nullptr;
}

std::string optionsText(Command const& command) {
  std::string text;
  for (OptionSpec const& option : command.options()) {
    std::string form = option.shortName.empty() ? option.name : option.shortName + ", " + option.name;
    if (!option.valueName.empty()) form += " " + option.valueName;
    text += "  " + form + std::string(form.size() < 24 ? 24 - form.size() : 1, ' ') + option.help + "\n";
  }
  return text;
}

std::string const commonNotes =
    "FILE is a system file (.sav, .zsav), whose dictionary is exported as XML, or an XML\n"
    "document (parsed without namespace processing, so bare element names match).\n"
    "Letter case and the dictionary's locale follow the environment's LC_CTYPE; numbers are\n"
    "parsed in the C notation.\n"
    "Warnings of the file reader and the answer's status go to standard error.\n"
    "Exit status: 0 answered; 1 no result (the failure flag, or an empty answer);\n"
    "2 bad usage, unreadable input, a malformed CONTEXT, or standard output that cannot be\n"
    "written (a full disk, a closed pipe).\n";

}  // namespace

Invocation parseCommandLine(std::vector<std::string> const& arguments) {
  if (arguments.empty()) throw UsageError{"a command is missing"};
  std::string const& name = arguments[0];
  Invocation invocation;
  if (name == "--help" || name == "-h" || name == "help") return invocation;  // help wins whatever follows
  if (name == "--version" || name == "version") {
    if (arguments.size() > 1) throw UsageError{"--version takes no operands"};
    invocation.version = true;
    return invocation;
  }
  invocation.command = commandNamed(name);
  if (invocation.command == nullptr) throw UsageError{"unknown command '" + name + "'"};
  invocation.arguments = splitArguments(arguments, 1, invocation.command->options());
  if (!invocation.arguments.help) invocation.command->check(invocation.arguments);
  return invocation;
}

int run(Invocation const& invocation, std::ostream& out, std::ostream& err) {
  if (invocation.version) {
    out << "transspace " << TRANSSPACE_VERSION << '\n';
    return Answered;
  }
  if (invocation.command == nullptr) {
    out << usageText();
    return Answered;
  }
  if (invocation.arguments.help) {
    out << helpText(*invocation.command);
    return Answered;
  }
  return invocation.command->run(invocation.arguments, out, err);
}

std::string usageText() {
  std::string text = "Usage:\n";
  for (auto const& command : commands()) text += "  transspace " + command->synopsis() + "\n";
  text += "  transspace --help | --version\n  transspace COMMAND --help\n\n";
  for (auto const& command : commands()) {
    std::string const name = command->name();
    std::string description = command->description();
    // The first line beside the name, the rest indented under it.
    std::string indented;
    for (char c : description) indented += c == '\n' ? std::string("\n         ") : std::string(1, c);
    text += name + std::string(name.size() < 9 ? 9 - name.size() : 1, ' ') + indented + "\n";
  }
  return text + "\n" + commonNotes;
}

std::string helpText(Command const& command) {
  std::string text = "Usage:\n  transspace " + command.synopsis() + "\n\n" + command.description() + "\n";
  std::string const options = optionsText(command);
  if (!options.empty()) text += "\nOptions:\n" + options;
  return text + "\n" + commonNotes;
}

}  // namespace cli
