#pragma once
// The evaluator as the player sees it: the right side of an assignment line
// in, the text to store out. Inside, Evaluator computes values of expression
// texts by rewriting them: it cuts a text into operands and operators,
// evaluates each operand by calling itself again, and folds the operators.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "eval/value.h"
#include "eval/variable_table.h"
#include "sys/system.h"

namespace kx {

// What an evaluation may read or show: the variables, and through the ports
// the clock, the random generator, the clipboard, the input box, the
// environment and the status bar; and where the play's last screen wait
// found what it waited for (FoundX, FoundY), when there is a play.
struct EvalEnv {
  const VariableTable& variables;
  System& system;
  const std::optional<Point>* found = nullptr;
};

// The diagnostic code the evaluator leaves behind; nothing acts on it.
enum class LastError : std::int32_t {
  kNone = 0,
  kRuntimeError = 2,     // a run-time error was caught
  kCountMismatch = 3,    // operands and operators do not pair up
  kInputForm = 5,        // INPUT$ in a form it does not support
  kTextConversion = 10,  // a value could not be written as text
};

// The message every caught run-time error puts in the status bar.
inline constexpr std::string_view kEvalErrorMessage =
    "計算中にエラーが発生しました。計算式を確認して下さい";

// Limits that keep an evaluation finite: how deep evaluations may nest
// (beyond it the innermost fails as "out of stack space"), and the longest
// text the evaluator builds (beyond it "out of memory").
inline constexpr int kMaxNesting = 100;
inline constexpr size_t kMaxTextBytes = 1u << 20;

class Evaluator {
 public:
  explicit Evaluator(const EvalEnv& env) : env_(env) {}

  // The value of an expression. Never throws: a run-time error shows the
  // status-bar message, sets the last-error code to 2 and gives Empty.
  Value Eval(std::string_view text);
  // A value as text; on failure code 10 and "".
  std::string SStr(const Value& value);

  LastError LastErrorCode() const { return lastError_; }
  void SetLastError(LastError code) { lastError_ = code; }
  const EvalEnv& Env() const { return env_; }

 private:
  Value EvalOrThrow(std::string_view text);
  Value SingleOperand(const std::string& operand, std::string_view prepared);

  EvalEnv env_;  // two references: cheap to keep, and no dangling temporary
  LastError lastError_ = LastError::kNone;
  int nesting_ = 0;
};

// The value of a string of binary digits: fewer than 32 characters of "0"
// and "1", read from the right; anything else gives 0.
std::int32_t BinVal(std::string_view digits);

// The text an assignment line stores for a value: its text, written again
// in plain decimals (up to 57 places) when it came out in exponent form with
// a negative exponent.
std::string AssignmentText(Evaluator& evaluator, const Value& value);

// Evaluates the expression and returns the text an assignment line stores.
// Never throws.
std::string EvaluateAssignment(std::string_view expression, const EvalEnv& env);

}  // namespace kx
