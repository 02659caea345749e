// The command line of `transspace`: what to do, on which file, and how to answer.
#pragma once

#include <string>
#include <vector>

namespace cli {

enum class Command { Help, Version, Dict, Query, Schema };
enum class AnswerForm { List, String, Double };

struct Options {
  Command command = Command::Help;
  std::string file;
  std::string context;
  std::string path;
  AnswerForm answer = AnswerForm::List;
  bool pretty = false;
};

// Thrown for a command line that does not make sense; the message says why.
struct UsageError {
  std::string message;
};

Options parseOptions(std::vector<std::string> const& arguments);
std::string usageText();

}  // namespace cli
