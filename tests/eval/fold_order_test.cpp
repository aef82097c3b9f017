#include <gtest/gtest.h>

#include "eval/fold.h"
#include "eval/operators.h"
#include "eval_test_support.h"

namespace kx {
namespace {

using testing::EvalFixture;

TEST(FoldOrder, MovesATighterOperatorBackOnePlaceInASinglePass) {
  const std::int32_t addMulPow[] = {kOpAdd, kOpMultiply, kOpPower};
  EXPECT_EQ(FoldOrder(addMulPow), (std::vector<int>{1, 2, 0}));
  const std::int32_t powMulAdd[] = {kOpPower, kOpMultiply, kOpAdd};
  EXPECT_EQ(FoldOrder(powMulAdd), (std::vector<int>{0, 1, 2}));
  const std::int32_t lessAndLess[] = {kOpLess, kOpAnd, kOpLess};
  EXPECT_EQ(FoldOrder(lessAndLess), (std::vector<int>{0, 2, 1}));
  const std::int32_t sameClass[] = {kOpSubtract, kOpAdd, kOpSubtract};
  EXPECT_EQ(FoldOrder(sameClass), (std::vector<int>{0, 1, 2}));
}

class Fold : public EvalFixture {};

TEST_F(Fold, FollowsTheSinglePassOrderNotOrdinaryPrecedence) {
  ExpectAll({
      {"2+3*4", "Double", "14"},
      {"1+2*3^2", "Double", "37"},
      {"2^3*2", "Double", "16"},
      {"10-2-3", "Double", "5"},
      {"1+2*3-4/2", "Double", "5"},
      {"1+2=3", "Boolean", "True"},
  });
}

TEST_F(Fold, SkipsBooleanSlotsAsIfTheyWereUsed) {
  ExpectAll({
      {"1<2 AND 3<4", "Boolean", "False"},
      {"1<2 OR 3<4", "Boolean", "True"},
      {"(1<2) AND (3<4)", "Boolean", "False"},
      {"(1<2) AND 3", "Long", "3"},
  });
}

TEST_F(Fold, FoldsASignedOperandAndFlagsTheCountMismatch) {
  EXPECT_EQ(Stored("2*-3"), "-6");
  EXPECT_EQ(evaluator.LastErrorCode(), LastError::kCountMismatch);
  EXPECT_FALSE(Failed());
}

TEST_F(Fold, LeavesTheLastErrorCodeAloneWhenCountsAgree) {
  EXPECT_EQ(Stored("2*3"), "6");
  EXPECT_EQ(evaluator.LastErrorCode(), LastError::kNone);
}

TEST_F(Fold, HandlesAHundredOperatorsButNotAHundredAndTwo) {
  std::string expr = "1";
  for (int i = 0; i < 100; ++i) expr += "+1";
  EXPECT_EQ(Stored(expr), "101");
  EXPECT_FALSE(Failed());
  expr += "+1+1";
  EXPECT_EQ(TypeOf(expr), "Empty");
  EXPECT_TRUE(Failed());
}

}  // namespace
}  // namespace kx
