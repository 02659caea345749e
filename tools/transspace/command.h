// The commands of `transspace`. Each is a unit of its own (dictcommand.cpp, querycommand.cpp, ...)
// that says its name, its synopsis, what it does and which options it takes, and runs on the
// arguments the command line gave it; commands.cpp lists them, and parses and runs a command line.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "commandline.h"

namespace cli {

// The process's exit status, the same for every command.
enum ExitStatus { Answered = 0, NoResult = 1, BadInput = 2 };

class Command {
public:
  virtual ~Command() = default;

  virtual std::string name() const = 0;
  // What follows "transspace " in the usage, e.g. "dict [--pretty] FILE".
  virtual std::string synopsis() const = 0;
  // What the command does, a few lines wrapped at 80 columns, as its --help shows them.
  virtual std::string description() const = 0;
  virtual std::vector<OptionSpec> options() const { return {}; }
  // Whether the command reads files: help, version and schema do not, and always answer.
  virtual bool readsFiles() const { return true; }

  // Checks the operands and the options' values before anything is read; throws UsageError.
  virtual void check(Arguments const& arguments) const = 0;
  // Output to `out`, messages to `err` (one line each, "transspace: ..."); returns the exit status.
  virtual int run(Arguments const& arguments, std::ostream& out, std::ostream& err) const = 0;
};

// The units' commands.
std::unique_ptr<Command> dictCommand();
std::unique_ptr<Command> queryCommand();
std::unique_ptr<Command> schemaCommand();

// A parsed command line: the command with its arguments, or a request for help or the version.
struct Invocation {
  Command const* command = nullptr;  // null for `transspace --help` and `--version`
  Arguments arguments;
  bool version = false;

  bool help() const { return command == nullptr ? !version : arguments.help; }
};

// Throws UsageError for a command line that does not make sense.
Invocation parseCommandLine(std::vector<std::string> const& arguments);
int run(Invocation const& invocation, std::ostream& out, std::ostream& err);

// The usage of every command, what `transspace --help` prints and follows a usage error.
std::string usageText();
// The usage and description of one command, what `transspace COMMAND --help` prints.
std::string helpText(Command const& command);

}  // namespace cli
