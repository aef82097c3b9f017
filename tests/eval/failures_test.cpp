#include <gtest/gtest.h>

#include <string>

#include "eval_test_support.h"

namespace kx {
namespace {

class Failures : public testing::EvalFixture {
 protected:
  // The expression ends in Empty with the status-bar message and code 2.
  void ExpectFailure(std::string_view e) {
    sim.SetStatusText("");
    evaluator.SetLastError(LastError::kNone);
    EXPECT_TRUE(Eval(e).IsEmpty()) << e;
    EXPECT_EQ(sim.LastStatus(), kEvalErrorMessage) << e;
    EXPECT_EQ(evaluator.LastErrorCode(), LastError::kRuntimeError) << e;
  }
};

TEST_F(Failures, ShowTheStatusMessageAndGiveEmpty) {
  for (std::string_view e : {"", "1+", "1/0", "0/0", "1\\0", "5 MOD 0", "CINT(40000)", "2^9999",
                             "\"a\"*2", "1 2", "12!", "&h123456789", "CHR$(-1)", "EOF(1)", "LOC(1)",
                             "LOF(1)", "MID$(1,2,3,4,5,6,7,8,9)", "1)+2", "NOTE"})
    ExpectFailure(e);
}

TEST_F(Failures, LetTheOuterExpressionGoOnWithAnEmptyOperand) {
  EXPECT_EQ(Stored("1+(1/0)"), "1");
  EXPECT_TRUE(Failed());
  EXPECT_EQ(Stored("\"a\"+SQR(-1)"), "a");
}

TEST_F(Failures, LeaveTheStatusBarAloneWhenNothingFails) {
  for (std::string_view e : {"1+2", "\"x\"", "DATE", "#v", "()", "(((1)))"})
    EXPECT_FALSE(Eval(e).IsEmpty() && Failed()) << e;
  EXPECT_EQ(sim.LastStatus(), "");
  EXPECT_EQ(Stored("()"), "");
}

TEST_F(Failures, EndDeepNestingInAValueOrTheMessage) {
  // Parentheses around everything are peeled without recursion.
  EXPECT_EQ(Stored(std::string(20000, '(') + "4" + std::string(20000, ')')), "4");
  // Nested groups with operators recurse, up to a fixed nesting.
  std::string nested = "1";
  for (int i = 0; i < 50; ++i) nested = "1+(" + nested + ")";
  EXPECT_EQ(Stored(nested), "51");
  EXPECT_FALSE(Failed());
  for (int i = 0; i < 200; ++i) nested = "1+(" + nested + ")";
  Eval(nested);
  EXPECT_TRUE(Failed());
  std::string calls = "1";
  for (int i = 0; i < 500; ++i) calls = "ABS(" + calls + ")";
  Eval(calls);
  EXPECT_TRUE(Failed());
}

TEST_F(Failures, EndLongAndMalformedTextsInAValueOrTheMessage) {
  std::string longSum = "1";
  while (longSum.size() < 100000) longSum += "+1";
  Eval(longSum);
  EXPECT_TRUE(Failed());
  std::string garbage;
  for (int i = 0; i < 100000; ++i) garbage.push_back(static_cast<char>((i * 7919) % 256));
  Eval(garbage);
  for (std::string_view e :
       std::initializer_list<std::string_view>{"\"abc", "((\"", ")))", "\"\"\"", "MID$(\"a,b\",1)",
                                               "((((", "SIN(", std::string_view("\0\0", 2)})
    Eval(e);
  SUCCEED() << "every text above ended";
}

}  // namespace
}  // namespace kx
