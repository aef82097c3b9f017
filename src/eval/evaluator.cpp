#include "eval/evaluator.h"

#include <new>

#include "eval/arithmetic.h"
#include "eval/convert.h"
#include "eval/eval_error.h"
#include "eval/fold.h"
#include "eval/functions.h"
#include "eval/like.h"
#include "eval/prepare.h"
#include "eval/scanner.h"
#include "util/basic_text.h"

namespace kx {
namespace {

std::string Unquote(std::string_view quoted) {
  const std::string_view inner = quoted.substr(1, quoted.size() - 2);
  std::string out;
  for (size_t i = 0; i < inner.size(); ++i) {
    out.push_back(inner[i]);
    if (inner[i] == '"' && i + 1 < inner.size() && inner[i + 1] == '"') ++i;
  }
  return out;
}

// Counts the nesting of evaluations for as long as one runs.
class NestingGuard {
 public:
  explicit NestingGuard(int& nesting) : nesting_(nesting) { ++nesting_; }
  ~NestingGuard() { --nesting_; }
  NestingGuard(const NestingGuard&) = delete;
  NestingGuard& operator=(const NestingGuard&) = delete;

 private:
  int& nesting_;
};

char AsciiUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool StartsWithNot(std::string_view text) {
  constexpr std::string_view kNot = "NOT";
  if (text.size() < kNot.size()) return false;
  for (size_t i = 0; i < kNot.size(); ++i)
    if (AsciiUpper(text[i]) != kNot[i]) return false;
  return true;
}

}  // namespace

Value Evaluator::Eval(std::string_view text) {
  NestingGuard guard(nesting_);
  try {
    if (nesting_ > kMaxNesting) Fail(EvalErrorCode::kOutOfStackSpace);
    return EvalOrThrow(text);
  } catch (const EvalError&) {
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  }
  // Each evaluation catches its own errors, so an outer expression goes on
  // with an empty operand after the message.
  env_.system.notify.SetStatusText(kEvalErrorMessage);
  lastError_ = LastError::kRuntimeError;
  return Value();
}

Value Evaluator::EvalOrThrow(std::string_view text) {
  // A text of digits, commas, "!" and blanks is a number as a whole (the
  // empty text too, which then fails to convert).
  if (!Like(text, "*[!0-9,! ]*")) return Value::Double(TextToDouble(text));

  const std::string prepared = Prepare(text);
  const ScanResult scan = Scan(prepared);
  if (scan.operands.size() - 1 != scan.ops.size()) lastError_ = LastError::kCountMismatch;
  if (scan.ops.empty()) return SingleOperand(scan.operands.front(), prepared);
  return Fold(*this, scan);
}

Value Evaluator::SingleOperand(const std::string& operand, std::string_view prepared) {
  if (!Like(operand, "*[!0-9,!.]*")) {
    if (prepared.empty()) return Value::String("");
    return Value::Double(TextToDouble(operand));
  }
  if (Like(operand, "\"*\"")) return Value::String(Unquote(operand));
  if (Like(operand, "(*)")) return Eval(std::string_view(operand).substr(1, operand.size() - 2));
  if (Like(prepared, "-*")) return Negate(Eval(prepared.substr(1)));
  // Only the first three characters can spell the word, in either case.
  if (StartsWithNot(prepared)) return Not(Eval(prepared.substr(3)));
  return Ffc(*this, prepared);
}

std::string Evaluator::SStr(const Value& value) {
  try {
    return ToText(value);
  } catch (const EvalError&) {
    lastError_ = LastError::kTextConversion;
    return "";
  }
}

std::int32_t BinVal(std::string_view digits) {
  if (digits.size() >= 32) return 0;
  std::uint32_t value = 0;
  std::uint32_t bit = 1;
  for (size_t i = digits.size(); i-- > 0; bit <<= 1) {
    if (digits[i] == '1')
      value += bit;
    else if (digits[i] != '0')
      return 0;
  }
  return static_cast<std::int32_t>(value);
}

}  // namespace kx
