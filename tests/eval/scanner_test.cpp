#include "eval/scanner.h"

#include <gtest/gtest.h>

#include "eval/eval_error.h"
#include "eval/operators.h"

namespace kx {
namespace {

struct ScanCase {
  std::string_view text;
  std::vector<std::string> operands;
  std::vector<std::int32_t> ops;
};

TEST(Scanner, CutsOperandsAndOperatorsAtDepthZero) {
  const ScanCase cases[] = {
      {"1+2*3", {"1", "2", "3"}, {kOpAdd, kOpMultiply}},
      {"(1+2)*3", {"(1+2)", "3"}, {kOpMultiply}},
      {"SIN(1, 2)-x", {"SIN(1, 2)", "x"}, {kOpSubtract}},
      {"a<>b", {"a", "b"}, {kOpNotEqual}},
      {"a><b", {"a", "b"}, {kOpNotEqual}},
      {"a=<b", {"a", "b"}, {kOpLessOrEqual}},
      {"a=>b", {"a", "b"}, {kOpGreaterOrEqual}},
      {"a<=b>=c", {"a", "b", "c"}, {kOpLessOrEqual, kOpGreaterOrEqual}},
      {"\"x\";\"y\"", {"\"x\"", "\"y\""}, {kOpAdd}},
      {"7\\2^3/4", {"7", "2", "3", "4"}, {kOpIntegerDivide, kOpPower, kOpDivide}},
      {"#a + 1", {"#a", "1"}, {kOpAdd}},
      {"&HFF", {"&HFF"}, {}},
  };
  for (const auto& c : cases) {
    const ScanResult r = Scan(c.text);
    EXPECT_EQ(r.operands, c.operands) << c.text;
    EXPECT_EQ(r.ops, c.ops) << c.text;
  }
}

TEST(Scanner, RecognisesWordOperatorsOnlyAfterABlankDigitOrParenthesis) {
  const ScanCase cases[] = {
      {"1 and 2", {"1", "2"}, {kOpAnd}},
      {"1and 2", {"1", "2"}, {kOpAnd}},
      {"(1)AND(2)", {"(1)", "(2)"}, {kOpAnd}},
      {"1 or 2", {"1", "2"}, {kOpOr}},
      {"1 xor 2", {"1", "2"}, {kOpXor}},
      {"7 mod 2", {"7", "2"}, {kOpModulo}},
      {"xand 1", {"xand1"}, {}},
      {"#mod", {"#", ""}, {kOpModulo}},
      {"\"a\"or 1", {"\"a\"or1"}, {}},
      {"ROUND(1)", {"ROUND(1)"}, {}},
  };
  for (const auto& c : cases) {
    const ScanResult r = Scan(c.text);
    EXPECT_EQ(r.operands, c.operands) << c.text;
    EXPECT_EQ(r.ops, c.ops) << c.text;
  }
}

TEST(Scanner, JoinsASignToTheOperandThatFollowsAnOperator) {
  const ScanResult r = Scan("2*-3");
  EXPECT_EQ(r.operands, (std::vector<std::string>{"2", "-3"}));
  EXPECT_EQ(r.ops, (std::vector<std::int32_t>{kOpMultiply, kOpSubtract}));
}

TEST(Scanner, KeepsQuotedTextWholeAndTakesTheRestOfAnUnclosedQuote) {
  EXPECT_EQ(Scan("\"a+b\"+1").operands, (std::vector<std::string>{"\"a+b\"", "1"}));
  EXPECT_EQ(Scan("\"a\"\"b\"").operands, (std::vector<std::string>{"\"a\"\"b\""}));
  EXPECT_EQ(Scan("1+\"ab+c").operands, (std::vector<std::string>{"1", "\"ab+c"}));
}

TEST(Scanner, DropsBlanksCommasAndTextOutsideQuotesAtDepthZero) {
  EXPECT_EQ(Scan("1 , 2").operands, (std::vector<std::string>{"12"}));
  EXPECT_EQ(Scan("1あ2").operands, (std::vector<std::string>{"12"}));
  EXPECT_EQ(Scan("(あ, b)").operands, (std::vector<std::string>{"(あ, b)"}));
}

TEST(Scanner, FailsPastItsFixedBounds) {
  EXPECT_THROW(Scan(std::string(256, '(')), EvalError);
  EXPECT_NO_THROW(Scan(std::string(255, '(')));
  std::string many = "1";
  for (int i = 0; i < 1001; ++i) many += "+1";
  EXPECT_THROW(Scan(many), EvalError);
  EXPECT_THROW(Scan("1)+2"), EvalError);
  EXPECT_NO_THROW(Scan("1)"));
}

}  // namespace
}  // namespace kx
