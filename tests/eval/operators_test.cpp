#include "eval/operators.h"

#include <gtest/gtest.h>

#include "eval/arithmetic.h"
#include "eval/eval_error.h"
#include "eval_test_support.h"

namespace kx {
namespace {

using testing::EvalFixture;

TEST(OperatorTable, ClassesAreTheCodesWithoutTheirLowFourBits) {
  const std::pair<std::int32_t, std::int32_t> classes[] = {
      {kOpPower, 0x7F2},  {kOpMultiply, 0x7F4}, {kOpDivide, 0x7F4},   {kOpIntegerDivide, 0x7F5},
      {kOpModulo, 0x7F6}, {kOpAdd, 0x7F7},      {kOpSubtract, 0x7F7}, {kOpEqual, 0x7F9},
      {kOpLess, 0x7F9},   {kOpAnd, 0x7FB},      {kOpOr, 0x7FC},       {kOpXor, 0x7FD},
  };
  for (const auto& [code, cls] : classes) EXPECT_EQ(OperatorClass(code), cls) << std::hex << code;
  EXPECT_EQ(kOperators.size(), 16u);
  for (const auto& op : kOperators) EXPECT_EQ(FindOperator(op.code), &op);
  EXPECT_EQ(FindOperator(0x7F80), nullptr);
}

class Operators : public EvalFixture {};

TEST_F(Operators, ComputeWithTheVariantTypeRules) {
  ExpectAll({
      {"7/2", "Double", "3.5"},
      {"7\\2", "Long", "3"},
      {"2.5\\1", "Long", "2"},
      {"3.5\\1", "Long", "4"},
      {"-7 MOD 3", "Double", "-1"},
      {"7.5 MOD 2", "Long", "0"},
      {"2^10", "Double", "1024"},
      {"CINT(200)*CINT(200)", "Long", "40000"},
      {"CINT(2)+CINT(3)", "Integer", "5"},
      {"CLNG(2147483647)+CINT(1)", "Double", "2147483648"},
      {"CSNG(1.5)+CINT(1)", "Single", "2.5"},
      {"CSNG(1.5)+CLNG(1)", "Double", "2.5"},
      {"\"4\"*\"5\"", "Double", "20"},
      {"\"4\"-1", "Double", "3"},
      {"NOW-NOW", "Double", "0"},
      {"NOW+1", "Date", "2024/03/06 9:05:03"},
  });
}

TEST_F(Operators, AddsNumbersAndConcatenatesWhenEitherSideIsAString) {
  ExpectAll({
      {"1+2", "Double", "3"},
      {"\"ab\"+1", "String", "ab1"},
      {"1+\"ab\"", "String", "1ab"},
      {"\"1\"+\"2\"", "String", "12"},
      {"\"a\";\"b\"", "String", "ab"},
      {"SSTR$(1<2)+\"x\"", "String", "Truex"},
      // A Boolean operand looks like a used slot: the "+" finds no right side.
      {"\"x\"+(1<2)", "Boolean", "False"},
  });
}

TEST_F(Operators, CompareNumbersAsNumbersAndTextsByTheirBytes) {
  ExpectAll({
      {"1<2", "Boolean", "True"},
      {"2<=2", "Boolean", "True"},
      {"3>4", "Boolean", "False"},
      {"3>=4", "Boolean", "False"},
      {"1=1", "Boolean", "True"},
      {"1<>1", "Boolean", "False"},
      {"\"abc\"<\"abd\"", "Boolean", "True"},
      {"\"B\"<\"a\"", "Boolean", "True"},
      {"\"9\">10", "Boolean", "True"},
  });
}

TEST_F(Operators, AreLogicalOnBooleansAndBitwiseOnNumbers) {
  ExpectAll({
      {"12 AND 10", "Long", "8"},
      {"12 OR 3", "Long", "15"},
      {"12 XOR 10", "Long", "6"},
      {"NOT 0", "Long", "-1"},
      {"NOT 1 AND 3", "Long", "2"},
      {"not (1<2)", "Boolean", "False"},
      {"CINT(6) AND CINT(3)", "Integer", "2"},
  });
}

TEST(Arithmetic, WidensOnOverflowAndFailsBeyondDouble) {
  EXPECT_EQ(Add(Value::Integer(32766), Value::Integer(1)), Value::Integer(32767));
  EXPECT_EQ(Add(Value::Integer(32767), Value::Integer(1)), Value::Long(32768));
  EXPECT_EQ(Subtract(Value::Integer(-32767), Value::Integer(1)), Value::Integer(-32768));
  EXPECT_EQ(Subtract(Value::Integer(-32768), Value::Integer(1)), Value::Long(-32769));
  EXPECT_EQ(Negate(Value::Integer(-32768)), Value::Long(32768));
  EXPECT_EQ(Negate(Value::Long(INT32_MIN)), Value::Double(2147483648.0));
  EXPECT_EQ(Add(Value(), Value()), Value::Integer(0));
  EXPECT_EQ(Add(Value::Boolean(true), Value::Boolean(true)), Value::Integer(-2));
  EXPECT_THROW(Multiply(Value::Double(1e300), Value::Double(1e300)), EvalError);
  EXPECT_THROW(Divide(Value::Double(1), Value::Double(0)), EvalError);
  EXPECT_THROW(IntegerDivide(Value::Double(1), Value::Double(0.4)), EvalError);
  EXPECT_THROW(Modulo(Value::Double(1e10), Value::Double(3)), EvalError);
  EXPECT_THROW(Power(Value::Double(-8), Value::Double(1.0 / 3)), EvalError);
  EXPECT_THROW(Add(Value::String("x"), Value::Double(1)), EvalError);
}

TEST(Arithmetic, ComparesNumbersBelowStringsAndEmptyAsZeroOrNothing) {
  EXPECT_LT(Compare(Value::Double(99), Value::String("1")), 0);
  EXPECT_EQ(Compare(Value(), Value::Double(0)), 0);
  EXPECT_EQ(Compare(Value(), Value::String("")), 0);
  EXPECT_LT(Compare(Value(), Value::String("a")), 0);
  EXPECT_EQ(Compare(Value(), Value()), 0);
  EXPECT_EQ(Compare(Value::Boolean(true), Value::Integer(-1)), 0);
}

}  // namespace
}  // namespace kx
