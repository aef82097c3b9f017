#include "eval/operators.h"

#include "eval/arithmetic.h"

namespace kx {
namespace {

Value Equal(const Value& a, const Value& b) {
  return Value::Boolean(Compare(a, b) == 0);
}
Value NotEqual(const Value& a, const Value& b) {
  return Value::Boolean(Compare(a, b) != 0);
}
Value Less(const Value& a, const Value& b) {
  return Value::Boolean(Compare(a, b) < 0);
}
Value LessOrEqual(const Value& a, const Value& b) {
  return Value::Boolean(Compare(a, b) <= 0);
}
Value Greater(const Value& a, const Value& b) {
  return Value::Boolean(Compare(a, b) > 0);
}
Value GreaterOrEqual(const Value& a, const Value& b) {
  return Value::Boolean(Compare(a, b) >= 0);
}

}  // namespace

const std::array<OperatorInfo, 16> kOperators = {{
    {kOpPower, "^", Power},
    {kOpMultiply, "*", Multiply},
    {kOpDivide, "/", Divide},
    {kOpIntegerDivide, "\\", IntegerDivide},
    {kOpModulo, "MOD", Modulo},
    {kOpAdd, "+", Add},
    {kOpSubtract, "-", Subtract},
    {kOpEqual, "=", Equal},
    {kOpNotEqual, "<>", NotEqual},
    {kOpLess, "<", Less},
    {kOpLessOrEqual, "<=", LessOrEqual},
    {kOpGreater, ">", Greater},
    {kOpGreaterOrEqual, ">=", GreaterOrEqual},
    {kOpAnd, "AND", And},
    {kOpOr, "OR", Or},
    {kOpXor, "XOR", Xor},
}};

const OperatorInfo* FindOperator(std::int32_t code) {
  for (const auto& op : kOperators)
    if (op.code == code) return &op;
  return nullptr;
}

}  // namespace kx
