#include "core/transconfig.h"

#include "document/transrootstep.h"

#include <utility>
#include <vector>

#include <xalanc/XPath/XPathExpression.hpp>

using XALAN_CPP_NAMESPACE::XPathExpression;

namespace {

// The op-code map is a flat array of ints: every operation starts with its op code and its length
// (both counted in ints), followed by a few fixed slots and then its operands, which are operations
// again, one after the other. Some lists of operands end with an ENDOP.
using Range = std::pair<int, int>;  // [first, end) of a run of sibling operations

// Where the operands of the operation `op` at `position` start, or -1 for an op code whose layout
// is not known here.
int operandsStart(XPathExpression const& expression, int position, int op) {
  if (op >= XPathExpression::eFROM_ANCESTORS && op <= XPathExpression::eFROM_NAMESPACE) {
    // [axis][length][length of the step without its predicates]{node test}{predicates}
    return position + expression.getOpCodeMapValue(position + 2);
  }
  switch (op) {
    case XPathExpression::eOP_FUNCTION:     // [op][length][function id][argument count]{arguments}[ENDOP]
    case XPathExpression::eOP_EXTFUNCTION:  // [op][length][namespace token][name token]{arguments}
      return position + 4;
    case XPathExpression::eOP_LITERAL:  // leaves: their slots hold token and number indexes
    case XPathExpression::eOP_VARIABLE:
    case XPathExpression::eOP_NUMBERLIT: return position + expression.getOpCodeMapValue(position + 1);
    default: break;
  }
  bool const plain = (op >= XPathExpression::eOP_XPATH && op <= XPathExpression::eOP_UNION) ||
                     op == XPathExpression::eOP_GROUP || op == XPathExpression::eOP_ARGUMENT ||
                     op == XPathExpression::eOP_LOCATIONPATH || op == XPathExpression::eOP_PREDICATE ||
                     (op >= XPathExpression::eOP_PREDICATE_WITH_POSITION && op <= XPathExpression::eOP_FUNCTION_CONCAT);
  return plain ? position + 2 : -1;  // [op][length]{operands}
}

}  // namespace

bool TransRootStep::occursIn(XPathExpression const& expression) {
  int const size = expression.opCodeMapLength();
  // A work list rather than recursion: the nesting of an expression is the caller's to choose.
  std::vector<Range> pending{{0, size}};
  while (!pending.empty()) {
    Range const range = pending.back();
    pending.pop_back();
    for (int position = range.first; position < range.second;) {
      int const op = expression.getOpCodeMapValue(position);
      if (op == XPathExpression::eENDOP) break;
      if (op == XPathExpression::eFROM_ROOT) return true;
      if (position + 1 >= range.second) return true;  // no room for a length: not a map this walk knows
      int const length = expression.getOpCodeMapValue(position + 1);
      int const end = position + length;
      int const operands = operandsStart(expression, position, op);
      if (length < 2 || end > range.second || operands < position + 2 || operands > end) return true;
      pending.emplace_back(operands, end);
      position = end;
    }
  }
  return false;
}
