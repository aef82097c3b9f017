#pragma once
// A run-time error inside an evaluation, numbered as the classic BASIC
// runtime numbers them. Thrown inside the evaluator and caught by Eval, which
// turns it into the status-bar message; it never leaves the evaluator.
#include <stdexcept>

namespace kx {

enum class EvalErrorCode {
  kInvalidCall = 5,
  kOverflow = 6,
  kOutOfMemory = 7,
  kSubscriptOutOfRange = 9,
  kDivisionByZero = 11,
  kTypeMismatch = 13,
  kOutOfStackSpace = 28,
  kBadFileNumber = 52,
};

class EvalError : public std::runtime_error {
 public:
  explicit EvalError(EvalErrorCode code) : std::runtime_error("evaluation error"), code_(code) {}
  EvalErrorCode Code() const { return code_; }

 private:
  EvalErrorCode code_;
};

[[noreturn]] inline void Fail(EvalErrorCode code) {
  throw EvalError(code);
}

}  // namespace kx
