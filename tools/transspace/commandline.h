// The command line of `transspace`, split by the rules every command shares: an argument that
// starts with '-' (and is not "-" alone) is an option, an option that takes a value gets it after
// '=' or as the next argument, "--" ends the options (an XPath expression may start with '-'), and
// everything else is an operand, in order.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace cli {

// Thrown for a command line that does not make sense; the message says why.
struct UsageError {
  std::string message;
};

// One option a command takes.
struct OptionSpec {
  std::string name;       // "--format"
  std::string shortName;  // "-o", or empty
  std::string valueName;  // "FORMAT" when the option takes a value; empty for a flag
  std::string help;       // one line for the command's --help
};

// What a command line gave one command.
struct Arguments {
  std::vector<std::pair<std::string, std::string>> options;  // long name and value ("" for a flag), in order
  std::vector<std::string> operands;
  bool help = false;  // --help or -h before "--"; what follows it is not read

  bool has(std::string const& name) const;
  // The value the option was given last, or `otherwise`.
  std::string value(std::string const& name, std::string const& otherwise = std::string()) const;
  // Every value the option was given, in order.
  std::vector<std::string> values(std::string const& name) const;
};

// Splits the arguments that follow a command's name by the command's options; throws UsageError
// for an option the command does not take or an option without its value.
Arguments splitArguments(std::vector<std::string> const& arguments, std::size_t first,
                         std::vector<OptionSpec> const& options);

// Throws "COMMAND takes OPERANDS (N given)" unless between `least` and `most` operands were given.
void requireOperands(Arguments const& arguments, std::string const& command, std::string const& operands,
                     std::size_t least, std::size_t most);

// Throws unless the option's value is one of `allowed` (when the option was given).
void requireChoice(Arguments const& arguments, std::string const& option, std::vector<std::string> const& allowed);

}  // namespace cli
