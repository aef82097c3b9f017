// Numbers: absolute value, rounding, roots, logarithms, extremes, angles.
#include <cmath>
#include <string>

#include "eval/arithmetic.h"
#include "eval/convert.h"
#include "eval/eval_error.h"
#include "eval/evaluator.h"
#include "eval/functions.h"
#include "eval/math_checked.h"
#include "eval/number_text.h"

namespace kx {
namespace {

Value Result(double x) {
  return Value::Double(CheckFinite(x));
}

// INT and FIX keep the number type of their argument, as the runtime does;
// texts become doubles and Empty and Booleans 16-bit integers.
Value Whole(const Value& v, double (*round)(double)) {
  switch (v.Type()) {
    case ValueType::kEmpty:
    case ValueType::kBoolean:
    case ValueType::kInteger:
      return Value::Integer(ToInteger(v));
    case ValueType::kLong:
      return v;
    case ValueType::kSingle:
      return Value::Single(static_cast<float>(round(static_cast<double>(v.AsSingle()))));
    case ValueType::kDate:
      return MakeDate(round(v.AsDate()));
    default:
      return Value::Double(round(ToDouble(v)));
  }
}

double Floor(double x) {
  return std::floor(x);
}
double Trunc(double x) {
  return std::trunc(x);
}

}  // namespace

Value FnAbs(const FunctionCall& c) {
  Value v = c.Arg(0);
  if (v.IsString()) return Value::Double(std::fabs(ToDouble(v)));
  if (IsSixteenBit(v)) v = Value::Integer(ToInteger(v));
  if (v.Is(ValueType::kDate)) v = Value::Double(v.AsDate());
  return ToDouble(v) < 0 ? Negate(v) : v;
}

Value FnInt(const FunctionCall& c) {
  return Whole(c.Arg(0), Floor);
}
Value FnFix(const FunctionCall& c) {
  return Whole(c.Arg(0), Trunc);
}
Value FnCeil(const FunctionCall& c) {
  return Negate(Whole(Negate(c.Arg(0)), Floor));
}

// FP subtracts the argument rounded to a 16-bit integer, so FP(2.7) is -0.3.
Value FnFp(const FunctionCall& c) {
  const Value a = c.Arg(0);
  return Subtract(a, Value::Integer(ToInteger(a)));
}
Value FnIp(const FunctionCall& c) {
  return Value::Integer(ToInteger(c.Arg(0)));
}
Value FnSgn(const FunctionCall& c) {
  return Value::Integer(static_cast<std::int16_t>(Sgn(c.Number(0))));
}
Value FnSqr(const FunctionCall& c) {
  return Result(Sqr(c.Number(0)));
}
Value FnExp(const FunctionCall& c) {
  return Result(Exp(c.Number(0)));
}
Value FnLog(const FunctionCall& c) {
  return Result(Log(c.Number(0)));
}

Value FnLogN(const FunctionCall& c) {
  // The base is written in the name: LOG2, LOG10.
  const double base = TextToDouble(c.name.substr(3));
  return Result(Quotient(Log(c.Number(0)), Log(base)));
}

// Both sides are compared as doubles, and the larger (smaller) is returned
// as the double it was compared as.
Value FnMax(const FunctionCall& c) {
  const double a = c.Number(0);
  const double b = c.Number(1);
  return Value::Double(a > b ? a : b);
}
Value FnMin(const FunctionCall& c) {
  const double a = c.Number(0);
  const double b = c.Number(1);
  return Value::Double(a < b ? a : b);
}

Value FnRound(const FunctionCall& c) {
  const Value a = c.Arg(0);
  const std::int32_t decimals = ToLong(c.Arg(1));
  if (decimals < 0) Fail(EvalErrorCode::kInvalidCall);
  if (a.Is(ValueType::kInteger) || a.Is(ValueType::kLong)) return a;
  const double x = ToDouble(a);
  const double scale = std::pow(10.0, decimals);
  const double scaled = x * scale;
  // Too many decimals to matter: the number is already as exact as it gets.
  const double rounded = std::isfinite(scaled) ? RoundHalfEven(scaled) / scale : x;
  if (a.Is(ValueType::kSingle)) return Value::Single(static_cast<float>(rounded));
  return Value::Double(std::isfinite(rounded) ? rounded : x);
}

// The quotient is rounded, not truncated: REMINDER(7,2) is 7 - 4*2 = -1.
Value FnReminder(const FunctionCall& c) {
  const Value a = c.Arg(0);
  const Value b = c.Arg(1);
  return Subtract(a, Multiply(Value::Integer(ToInteger(Divide(a, b))), b));
}

// Despite the name it rounds (half to even) and overflows past 32767.
Value FnTruncate(const FunctionCall& c) {
  const Value a = c.Arg(0);
  const Value scale = Power(Value::Double(10), c.Arg(1));
  return Divide(Value::Integer(ToInteger(Multiply(a, scale))), scale);
}

Value FnDegrees(const FunctionCall& c) {
  return Result(c.Number(0) * kRadiansToDegrees);
}
Value FnRadians(const FunctionCall& c) {
  return Result(c.Number(0) * kDegreesToRadians);
}

}  // namespace kx
