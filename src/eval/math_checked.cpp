#include "eval/math_checked.h"

#include <cmath>

#include "eval/convert.h"
#include "eval/eval_error.h"

namespace kx {

double Sqr(double x) {
  if (x < 0) Fail(EvalErrorCode::kInvalidCall);
  return std::sqrt(x);
}

double Log(double x) {
  if (x <= 0) Fail(EvalErrorCode::kInvalidCall);
  return std::log(x);
}

double Exp(double x) {
  return CheckFinite(std::exp(x));
}

double Atn(double x) {
  return std::atan(x);
}

int Sgn(double x) {
  return x > 0 ? 1 : (x < 0 ? -1 : 0);
}

double Quotient(double x, double y) {
  if (y == 0) Fail(x == 0 ? EvalErrorCode::kOverflow : EvalErrorCode::kDivisionByZero);
  return CheckFinite(x / y);
}

double ArcSin(double x) {
  // The short constant is the library's own and stays as written.
  if (x == 1 || x == -1) return Sgn(x) * 1.5707963267949;
  return Atn(Quotient(x, Sqr(1 - x * x)));
}

double ArcCos(double x) {
  if (x == 1) return 0;
  if (x == -1) return 3.14159265358979;
  return Atn(Quotient(-x, Sqr(1 - x * x))) + 2 * Atn(1);
}

}  // namespace kx
