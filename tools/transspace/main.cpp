// transspace: exports the dictionary of a system file as XML and answers XPath queries about
// it (or about any XML document) through the library's value space.
#include <clocale>
#include <iostream>
#include <string>
#include <vector>

#include "command.h"

int main(int argc, char** argv) {
  // Letter case and the dictionary's `locale` follow the user's character-type locale; numbers
  // keep the C notation, so that a query's numeric text parses the same in every environment.
  std::setlocale(LC_CTYPE, "");
  std::vector<std::string> arguments(argv + 1, argv + argc);
  cli::Invocation invocation;
  try {
    invocation = cli::parseCommandLine(arguments);
  } catch (cli::UsageError const& e) {
    std::cerr << "transspace: " << e.message << "\n\n" << cli::usageText();
    return cli::BadInput;
  }
  int const status = cli::run(invocation, std::cout, std::cerr);
  if (!std::cout.flush()) {  // a full disk or a closed pipe: the answer did not arrive
    std::cerr << "transspace: cannot write to standard output\n";
    return cli::BadInput;
  }
  return status;
}
