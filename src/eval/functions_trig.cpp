// Trigonometry in radians and degrees ("D" names), and the hyperbolic family.
#include <cmath>

#include "eval/convert.h"
#include "eval/functions.h"
#include "eval/math_checked.h"

namespace kx {
namespace {

Value Result(double x) {
  return Value::Double(CheckFinite(x));
}
double Radians(const FunctionCall& c) {
  return c.Number(0) * kDegreesToRadians;
}
double ArcCosecant(double a) {
  return Atn(Quotient(a, Sqr(a * a - 1))) + (Sgn(a) - 1) * 2 * Atn(1);
}

}  // namespace

Value FnSin(const FunctionCall& c) {
  return Result(std::sin(c.Number(0)));
}
Value FnSinD(const FunctionCall& c) {
  return Result(std::sin(Radians(c)));
}
Value FnCos(const FunctionCall& c) {
  return Result(std::cos(c.Number(0)));
}
Value FnCosD(const FunctionCall& c) {
  return Result(std::cos(Radians(c)));
}
Value FnTan(const FunctionCall& c) {
  return Result(std::tan(c.Number(0)));
}
Value FnTanD(const FunctionCall& c) {
  return Result(std::tan(Radians(c)));
}
Value FnCot(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result(Quotient(std::cos(a), std::sin(a)));
}
Value FnCotD(const FunctionCall& c) {
  const double a = Radians(c);
  return Result(Quotient(std::cos(a), std::sin(a)));
}
Value FnCtn(const FunctionCall& c) {
  return Result(Quotient(1, std::tan(c.Number(0))));
}
Value FnCtnD(const FunctionCall& c) {
  return Result(Quotient(1, std::tan(Radians(c))));
}
Value FnSec(const FunctionCall& c) {
  return Result(Quotient(1, std::cos(c.Number(0))));
}
Value FnSecD(const FunctionCall& c) {
  return Result(Quotient(1, std::cos(Radians(c))));
}
Value FnCsc(const FunctionCall& c) {
  return Result(Quotient(1, std::sin(c.Number(0))));
}
Value FnCscD(const FunctionCall& c) {
  return Result(Quotient(1, std::sin(Radians(c))));
}

Value FnAtan(const FunctionCall& c) {
  return Result(Atn(c.Number(0)));
}
Value FnAtanD(const FunctionCall& c) {
  return Result(Atn(c.Number(0)) * kRadiansToDegrees);
}
Value FnAsin(const FunctionCall& c) {
  return Result(ArcSin(c.Number(0)));
}
Value FnAsinD(const FunctionCall& c) {
  return Result(ArcSin(c.Number(0)) * kRadiansToDegrees);
}
Value FnAcos(const FunctionCall& c) {
  const double a = c.Number(0);
  // At 1 the arc-cosine is the integer 0, not a double.
  if (a == 1) return Value::Integer(0);
  return Result(ArcCos(a));
}
Value FnAcosD(const FunctionCall& c) {
  const double a = c.Number(0);
  if (a == 1) return Value::Integer(0);
  return Result(ArcCos(a) * kRadiansToDegrees);
}
Value FnAcsc(const FunctionCall& c) {
  return Result(ArcCosecant(c.Number(0)));
}
Value FnAcscD(const FunctionCall& c) {
  return Result(ArcCosecant(c.Number(0)) * kRadiansToDegrees);
}
Value FnAct(const FunctionCall& c) {
  return Result(Atn(c.Number(0)) + 2 * Atn(1));
}
Value FnActD(const FunctionCall& c) {
  return Result((Atn(c.Number(0)) + 2 * Atn(1)) * kRadiansToDegrees);
}

Value FnHSin(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result((Exp(a) - Exp(-a)) / 2);
}
Value FnHCos(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result((Exp(a) + Exp(-a)) / 2);
}
Value FnHTan(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result(Quotient(Exp(a) - Exp(-a), Exp(a) + Exp(-a)));
}
Value FnHSec(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result(Quotient(2, Exp(a) + Exp(-a)));
}
Value FnHCsc(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result(Quotient(2, Exp(a) - Exp(-a)));
}
Value FnHCtn(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result(Quotient(Exp(a) + Exp(-a), Exp(a) - Exp(-a)));
}
Value FnHAsin(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result(Log(a + Sqr(a * a + 1)));
}
Value FnHAcos(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result(Log(a + Sqr(a * a - 1)));
}
Value FnHAtan(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result(Log(Quotient(1 + a, 1 - a)) / 2);
}
Value FnHAsec(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result(Log(Quotient(Sqr(1 - a * a) + 1, a)));
}
Value FnHAcsc(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result(Log(Quotient(Sgn(a) * Sqr(a * a + 1) + 1, a)));
}
Value FnHAtanOther(const FunctionCall& c) {
  const double a = c.Number(0);
  return Result(Log(Quotient(Sqr(1 - a * a), 1 - a)));
}

}  // namespace kx
