#include "eval/arithmetic.h"

#include <cmath>
#include <cstdint>
#include <functional>

#include "eval/convert.h"
#include "eval/eval_error.h"

namespace kx {
namespace {

enum class Width { kInteger, kLong, kSingle, kDouble };

Width WidthOf(const Value& v) {
  switch (v.Type()) {
    case ValueType::kEmpty:
    case ValueType::kBoolean:
    case ValueType::kInteger:
      return Width::kInteger;
    case ValueType::kLong:
      return Width::kLong;
    case ValueType::kSingle:
      return Width::kSingle;
    default:
      return Width::kDouble;
  }
}

// The runtime widens Single with Long to Double, since neither holds the other.
Width Common(Width a, Width b) {
  if ((a == Width::kSingle && b == Width::kLong) || (a == Width::kLong && b == Width::kSingle))
    return Width::kDouble;
  return a > b ? a : b;
}

// One arithmetic operation in the common width, widening on overflow:
// Integer to Long, Long and Single to Double; Double overflows.
template <typename Op>
Value InWidth(Width w, double x, double y, Op op) {
  if (w == Width::kInteger) {
    const double r = op(x, y);
    if (r >= -32768 && r <= 32767) return Value::Integer(static_cast<std::int16_t>(r));
    w = Width::kLong;
  }
  if (w == Width::kLong) {
    const double r = op(x, y);
    if (r >= -2147483648.0 && r <= 2147483647.0) return Value::Long(static_cast<std::int32_t>(r));
  }
  if (w == Width::kSingle) {
    const auto r = static_cast<float>(
        op(static_cast<double>(static_cast<float>(x)), static_cast<double>(static_cast<float>(y))));
    if (std::isfinite(r)) return Value::Single(r);
  }
  return Value::Double(CheckFinite(op(x, y)));
}

bool IsDate(const Value& v) {
  return v.Is(ValueType::kDate);
}

struct IntegerOperands {
  std::int64_t x;
  std::int64_t y;
  bool sixteen;
};

IntegerOperands ToIntegers(const Value& a, const Value& b) {
  const bool sixteen = IsSixteenBit(a) && IsSixteenBit(b);
  return {ToLong(a), ToLong(b), sixteen};
}

Value IntegerResult(std::int64_t r, bool sixteen) {
  if (sixteen && r >= -32768 && r <= 32767) return Value::Integer(static_cast<std::int16_t>(r));
  if (r < -2147483648LL || r > 2147483647LL) Fail(EvalErrorCode::kOverflow);
  return Value::Long(static_cast<std::int32_t>(r));
}

template <typename Op>
Value Logical(const Value& a, const Value& b, Op op) {
  if (a.Is(ValueType::kBoolean) && b.Is(ValueType::kBoolean))
    return Value::Boolean(op(a.AsBoolean() ? -1 : 0, b.AsBoolean() ? -1 : 0) != 0);
  const IntegerOperands i = ToIntegers(a, b);
  const auto r = op(static_cast<std::int32_t>(i.x), static_cast<std::int32_t>(i.y));
  return i.sixteen ? Value::Integer(static_cast<std::int16_t>(r)) : Value::Long(r);
}

}  // namespace

Value Add(const Value& a, const Value& b) {
  if (IsDate(a) || IsDate(b)) return MakeDate(ToDouble(a) + ToDouble(b));
  return InWidth(Common(WidthOf(a), WidthOf(b)), ToDouble(a), ToDouble(b), std::plus<double>());
}

Value Subtract(const Value& a, const Value& b) {
  if (IsDate(a) && IsDate(b)) return Value::Double(a.AsDate() - b.AsDate());
  if (IsDate(a) || IsDate(b)) return MakeDate(ToDouble(a) - ToDouble(b));
  return InWidth(Common(WidthOf(a), WidthOf(b)), ToDouble(a), ToDouble(b), std::minus<double>());
}

Value Multiply(const Value& a, const Value& b) {
  return InWidth(Common(WidthOf(a), WidthOf(b)), ToDouble(a), ToDouble(b),
                 std::multiplies<double>());
}

Value Divide(const Value& a, const Value& b) {
  const double x = ToDouble(a);
  const double y = ToDouble(b);
  // 0/0 is an overflow in the runtime, anything else over zero a division by zero.
  if (y == 0) Fail(x == 0 ? EvalErrorCode::kOverflow : EvalErrorCode::kDivisionByZero);
  const Width w = Common(WidthOf(a), WidthOf(b));
  if (w == Width::kSingle) {
    const auto r = static_cast<float>(x / y);
    if (std::isfinite(r)) return Value::Single(r);
  }
  return Value::Double(CheckFinite(x / y));
}

Value IntegerDivide(const Value& a, const Value& b) {
  const IntegerOperands i = ToIntegers(a, b);
  if (i.y == 0) Fail(EvalErrorCode::kDivisionByZero);
  return IntegerResult(i.x / i.y, i.sixteen);
}

Value Modulo(const Value& a, const Value& b) {
  const IntegerOperands i = ToIntegers(a, b);
  if (i.y == 0) Fail(EvalErrorCode::kDivisionByZero);
  return IntegerResult(i.x % i.y, i.sixteen);
}

Value Power(const Value& a, const Value& b) {
  const double x = ToDouble(a);
  const double y = ToDouble(b);
  if (x < 0 && y != std::trunc(y)) Fail(EvalErrorCode::kInvalidCall);
  if (x == 0 && y < 0) Fail(EvalErrorCode::kDivisionByZero);
  return Value::Double(CheckFinite(std::pow(x, y)));
}

Value Negate(const Value& a) {
  switch (a.Type()) {
    case ValueType::kEmpty:
      return Value::Integer(0);
    case ValueType::kDate:
      return MakeDate(-a.AsDate());
    case ValueType::kString:
      return Value::Double(-ToDouble(a));
    default:
      return InWidth(WidthOf(a), 0, ToDouble(a), std::minus<double>());
  }
}

Value And(const Value& a, const Value& b) {
  return Logical(a, b, [](std::int32_t x, std::int32_t y) { return x & y; });
}
Value Or(const Value& a, const Value& b) {
  return Logical(a, b, [](std::int32_t x, std::int32_t y) { return x | y; });
}
Value Xor(const Value& a, const Value& b) {
  return Logical(a, b, [](std::int32_t x, std::int32_t y) { return x ^ y; });
}

Value Not(const Value& a) {
  if (a.Is(ValueType::kBoolean)) return Value::Boolean(!a.AsBoolean());
  if (IsSixteenBit(a)) return Value::Integer(static_cast<std::int16_t>(~ToInteger(a)));
  return Value::Long(~ToLong(a));
}

int Compare(const Value& a, const Value& b) {
  auto order = [](auto x, auto y) { return x < y ? -1 : (y < x ? 1 : 0); };
  if (a.IsEmpty() && b.IsEmpty()) return 0;
  const bool aText = a.IsString() || (a.IsEmpty() && b.IsString());
  const bool bText = b.IsString() || (b.IsEmpty() && a.IsString());
  if (aText && bText) return order(ToText(a), ToText(b));
  if (aText) return 1;
  if (bText) return -1;
  return order(ToDouble(a), ToDouble(b));
}

}  // namespace kx
