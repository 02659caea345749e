#include "querycommand.h"

#include <charconv>
#include <cmath>
#include <ostream>
#include <string>

#include <xalanc/PlatformSupport/XSLException.hpp>

#include "command.h"
#include "inputdocument.h"
#include <transspace/transowner.h>
#include <transspace/transspace.h>
#include <transspace/transvalue.h>

namespace cli {

AnswerForm answerForm(Arguments const& arguments) {
  AnswerForm form = AnswerForm::List;
  for (auto const& option : arguments.options) {
    if (option.first == "--string") form = AnswerForm::String;
    if (option.first == "--double") form = AnswerForm::Double;
    if (option.first == "--list") form = AnswerForm::List;
  }
  return form;
}

namespace {

// The shortest text that reads back as `number`; infinities and NaN in XPath's notation, as
// --string shows them.
std::string shortestText(double number) {
  if (std::isnan(number)) return "NaN";
  if (std::isinf(number)) return number < 0 ? "-Infinity" : "Infinity";
  char buffer[64];
  auto result = std::to_chars(buffer, buffer + sizeof buffer, number);
  return std::string(buffer, result.ptr);
}

// The status of an answer: failure or an empty answer is "no result"; a warning beside a
// non-empty single answer means the path selected several nodes and the first was taken.
int report(TransStatus const& status, bool empty, bool single, std::ostream& err) {
  if (status.failure()) {
    err << "transspace: no result: the context selected no node, or the path could not be answered\n";
    return NoResult;
  }
  if (empty) {
    err << "transspace: no result: the answer is empty\n";
    return NoResult;
  }
  if (single && status.warning()) err << "transspace: warning: several nodes; the first one is shown\n";
  return Answered;
}

int answer(TransValue const& value, TransString const& context, TransString const& path, AnswerForm form,
           std::ostream& out, std::ostream& err) {
  TransStatus status;
  switch (form) {
    case AnswerForm::List: {
      TransStringListOwner const answer(value.asStringList(context, path, status));
      for (unsigned long i = 0; i < answer->size(); ++i) out << answer->asMBCS(i) << '\n';
      return report(status, answer->empty(), false, err);
    }
    case AnswerForm::String: {
      TransStringOwner const answer(value.asString(context, path, status));
      bool const empty = answer->empty();
      if (!status.failure() && !empty) out << answer->asMBCS() << '\n';
      return report(status, empty, true, err);
    }
    case AnswerForm::Double: {
      double const number = value.asDouble(context, path, status);
      bool const empty = number == TransValue::noNumber;
      if (!status.failure() && !empty) out << shortestText(number) << '\n';
      return report(status, empty, true, err);
    }
  }
  return NoResult;
}

class QueryCommand : public Command {
public:
  std::string name() const override { return "query"; }
  std::string synopsis() const override { return "query [--list | --string | --double] FILE CONTEXT PATH"; }
  std::string description() const override {
    return "selects the first node of CONTEXT (an XPath evaluated from the document node),\n"
           "evaluates PATH from it and prints the answer: one line per entry (--list, the\n"
           "default), as one text (--string: the first node of a node set) or as a number\n"
           "(--double). Use -- before CONTEXT or PATH when they start with '-'.";
  }
  std::vector<OptionSpec> options() const override {
    return {{"--list", "", "", "one line per entry (the default)"},
            {"--string", "", "", "the answer as one text (the first node of a node set)"},
            {"--double", "", "", "the answer as a number"}};
  }

  void check(Arguments const& arguments) const override {
    requireOperands(arguments, "query", "FILE CONTEXT PATH", 3, 3);
  }

  int run(Arguments const& arguments, std::ostream& out, std::ostream& err) const override {
    std::string const& file = arguments.operands[0];
    TransString const context(arguments.operands[1].c_str());
    TransString const path(arguments.operands[2].c_str());
    TransSpace space;  // brings the XML platform up for as long as the command runs
    return reportingInputErrors(file, err, [&] {
      TransValue const value = loadDocument(file, err);
      try {
        return answer(value, context, path, answerForm(arguments), out, err);
      } catch (XALAN_CPP_NAMESPACE::XSLException const& e) {
        // A malformed context is not the library's to report: its XPath exception reaches the caller.
        err << "transspace: invalid XPath: " << toUtf8(e.getMessage().c_str()) << '\n';
        return int(BadInput);
      }
    });
  }
};

}  // namespace

std::unique_ptr<Command> queryCommand() { return std::make_unique<QueryCommand>(); }

}  // namespace cli
