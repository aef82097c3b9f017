#include "eval/convert.h"
#include "eval/evaluator.h"
#include "eval/number_text.h"

namespace kx {
namespace {

// "e-" or "E-" anywhere in the text.
bool HasNegativeExponent(std::string_view text) {
  for (size_t i = text.find('-', 1); i != std::string_view::npos; i = text.find('-', i + 1))
    if (text[i - 1] == 'e' || text[i - 1] == 'E') return true;
  return false;
}

}  // namespace

std::string AssignmentText(Evaluator& evaluator, const Value& value) {
  std::string text = evaluator.SStr(value);
  if (!HasNegativeExponent(text)) return text;
  // The pattern "0." and 57 optional digits: numbers (and texts that read
  // as numbers) in plain decimals, from the same significant digits their
  // text shows; any other text stays as it is.
  if (value.Is(ValueType::kSingle))
    return FormatPlainDecimals(static_cast<double>(value.AsSingle()), 7);
  if (value.IsNumeric()) return FormatPlainDecimals(ToDouble(value), 15);
  const ParsedNumber p = ParseNumber(text);
  if (p.status == ParseStatus::kOk) return FormatPlainDecimals(p.value, 15);
  return text;
}

std::string EvaluateAssignment(std::string_view expression, const EvalEnv& env) {
  Evaluator evaluator(env);
  const Value value = evaluator.Eval(expression);
  return AssignmentText(evaluator, value);
}

}  // namespace kx
