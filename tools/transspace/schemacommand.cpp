#include <ostream>

#include "command.h"
#include "schematext.h"

namespace cli {

namespace {

class SchemaCommand : public Command {
public:
  std::string name() const override { return "schema"; }
  std::string synopsis() const override { return "schema"; }
  std::string description() const override {
    return "prints the XML Schema that every dictionary document conforms to.";
  }
  bool readsFiles() const override { return false; }

  void check(Arguments const& arguments) const override {
    if (!arguments.operands.empty() || !arguments.options.empty()) throw UsageError{"schema takes no operands"};
  }

  int run(Arguments const&, std::ostream& out, std::ostream&) const override {
    out << dictionarySchema();
    return Answered;
  }
};

}  // namespace

std::unique_ptr<Command> schemaCommand() { return std::make_unique<SchemaCommand>(); }

}  // namespace cli
