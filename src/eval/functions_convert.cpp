// Conversions: to the number types, to number texts and back, and the
// functions that evaluate their arguments in a special way (EVAL, IIF).
#include "eval/convert.h"
#include "eval/evaluator.h"
#include "eval/functions.h"
#include "eval/number_text.h"

namespace kx {
namespace {

// HEX$ and OCT$ write a 16-bit integer as 16 bits and anything else as the
// 32 bits of its rounded value.
std::string RadixOf(const Value& v, int radix) {
  if (IsSixteenBit(v)) return RadixText(static_cast<std::uint16_t>(ToInteger(v)), radix);
  return RadixText(static_cast<std::uint32_t>(ToLong(v)), radix);
}

}  // namespace

Value FnCDbl(const FunctionCall& c) {
  return Value::Double(ToDouble(c.Arg(0)));
}
Value FnCInt(const FunctionCall& c) {
  return Value::Integer(ToInteger(c.Arg(0)));
}
Value FnCLng(const FunctionCall& c) {
  return Value::Long(ToLong(c.Arg(0)));
}
Value FnCSng(const FunctionCall& c) {
  return Value::Single(ToSingle(c.Arg(0)));
}
Value FnHex(const FunctionCall& c) {
  return Value::String(RadixOf(c.Arg(0), 16));
}
Value FnOct(const FunctionCall& c) {
  return Value::String(RadixOf(c.Arg(0), 8));
}
Value FnVal(const FunctionCall& c) {
  return Value::Double(CheckFinite(LeadingNumber(c.Text(0))));
}
Value FnStr(const FunctionCall& c) {
  return Value::String(ToSignedText(c.Arg(0)));
}
Value FnSStr(const FunctionCall& c) {
  return Value::String(c.Text(0));
}

// The argument's value is itself an expression: evaluated twice.
Value FnEval(const FunctionCall& c) {
  return c.evaluator.Eval(c.Text(0));
}

// All three arguments are evaluated, whichever is chosen.
Value FnIif(const FunctionCall& c) {
  const Value condition = c.Arg(0);
  Value whenTrue = c.Arg(1);
  Value whenFalse = c.Arg(2);
  return ToBoolean(condition) ? whenTrue : whenFalse;
}

}  // namespace kx
