// libFuzzer target over the command line of `transspace`: the input is split at NUL bytes into
// arguments. Any command line must give an invocation or a UsageError; an invocation that would
// run a command on a file must name one, and help, version and schema, which read no file, must
// run.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "command.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::vector<std::string> arguments;
  std::string const input(reinterpret_cast<char const*>(data), size);
  std::size_t start = 0;
  while (start <= input.size() && !input.empty()) {
    std::size_t const end = input.find('\0', start);
    arguments.push_back(input.substr(start, end == std::string::npos ? std::string::npos : end - start));
    if (end == std::string::npos) break;
    start = end + 1;
  }
  cli::Invocation invocation;
  try {
    invocation = cli::parseCommandLine(arguments);
  } catch (cli::UsageError const& e) {
    if (e.message.empty()) __builtin_trap();
    return 0;
  }
  bool const readsNoFile = invocation.command == nullptr || invocation.help() || !invocation.command->readsFiles();
  if (readsNoFile) {
    std::ostringstream out, err;
    if (cli::run(invocation, out, err) != cli::Answered || out.str().empty()) __builtin_trap();
  } else if (arguments.size() < 2) {
    __builtin_trap();  // a command on a file needs at least the file
  }
  return 0;
}
