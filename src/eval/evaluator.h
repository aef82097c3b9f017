#pragma once
// The evaluator as the player sees it: the right side of an assignment line
// in, the text to store out.
#include <string>
#include <string_view>

#include "eval/variable_table.h"
#include "sys/system.h"

namespace kx {

// What an evaluation may read or show: the variables, and through the ports
// the clock, the random generator, the clipboard, the input box, the
// environment and the status bar.
struct EvalEnv {
  const VariableTable& variables;
  System& system;
};

// Evaluates the expression and returns the text an assignment line stores:
// the value's text, re-formatted in plain decimals when it came out in
// exponent form with a negative exponent. Never throws.
std::string EvaluateAssignment(std::string_view expression, const EvalEnv& env);

}  // namespace kx
