// transspace: exports the dictionary of an SPSS system file as XML and answers XPath queries about
// it (or about any XML document) through the library's value space.
#include <iostream>
#include <string>
#include <vector>

#include "commands.h"
#include "options.h"

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  cli::Options options;
  try {
    options = cli::parseOptions(arguments);
  } catch (cli::UsageError const& e) {
    std::cerr << "transspace: " << e.message << "\n\n" << cli::usageText();
    return cli::BadInput;
  }
  return cli::run(options, std::cout, std::cerr);
}
