#include "eval/evaluator.h"

namespace kx {

// Placeholder until the expression evaluator lands: stores the text as written.
std::string EvaluateAssignment(std::string_view expression, const EvalEnv&) {
  return std::string(expression);
}

}  // namespace kx
