#include "commandline.h"

#include <algorithm>

namespace cli {

namespace {

bool isOption(std::string const& argument) { return argument.size() > 1 && argument[0] == '-'; }

OptionSpec const* find(std::vector<OptionSpec> const& options, std::string const& name) {
  for (OptionSpec const& option : options) {
    if (name == option.name || (!option.shortName.empty() && name == option.shortName)) return &option;
  }
  return nullptr;
}

}  // namespace

bool Arguments::has(std::string const& name) const {
  return std::any_of(options.begin(), options.end(), [&](auto const& option) { return option.first == name; });
}

std::string Arguments::value(std::string const& name, std::string const& otherwise) const {
  for (auto option = options.rbegin(); option != options.rend(); ++option) {
    if (option->first == name) return option->second;
  }
  return otherwise;
}

std::vector<std::string> Arguments::values(std::string const& name) const {
  std::vector<std::string> found;
  for (auto const& option : options) {
    if (option.first == name) found.push_back(option.second);
  }
  return found;
}

Arguments splitArguments(std::vector<std::string> const& arguments, std::size_t first,
                         std::vector<OptionSpec> const& options) {
  Arguments split;
  bool optionsEnded = false;
  for (std::size_t i = first; i < arguments.size(); ++i) {
    std::string const& argument = arguments[i];
    if (optionsEnded || !isOption(argument)) {
      split.operands.push_back(argument);
    } else if (argument == "--") {
      optionsEnded = true;
    } else if (argument == "--help" || argument == "-h") {
      split.help = true;  // help wins whatever follows
      return split;
    } else {
      std::size_t const equals = argument.rfind("--", 0) == 0 ? argument.find('=') : std::string::npos;
      std::string const name = argument.substr(0, equals);
      OptionSpec const* option = find(options, name);
      if (option == nullptr) throw UsageError{"unknown option '" + argument + "'"};
      if (option->valueName.empty()) {
        if (equals != std::string::npos) throw UsageError{"option '" + name + "' takes no value"};
        split.options.emplace_back(option->name, std::string());
      } else if (equals != std::string::npos) {
        split.options.emplace_back(option->name, argument.substr(equals + 1));
      } else if (i + 1 < arguments.size()) {
        split.options.emplace_back(option->name, arguments[++i]);
      } else {
        throw UsageError{"option '" + name + "' needs a value (" + option->valueName + ")"};
      }
    }
  }
  return split;
}

void requireOperands(Arguments const& arguments, std::string const& command, std::string const& operands,
                     std::size_t least, std::size_t most) {
  std::size_t const given = arguments.operands.size();
  if (given < least || given > most) {
    throw UsageError{command + " takes " + operands + " (" + std::to_string(given) + " given)"};
  }
}

void requireChoice(Arguments const& arguments, std::string const& option, std::vector<std::string> const& allowed) {
  for (std::string const& value : arguments.values(option)) {
    if (std::find(allowed.begin(), allowed.end(), value) != allowed.end()) continue;
    std::string choices;
    for (std::string const& choice : allowed) choices += (choices.empty() ? "" : ", ") + choice;
    throw UsageError{"option '" + option + "' takes one of " + choices + " ('" + value + "' given)"};
  }
}

}  // namespace cli
