#include <gtest/gtest.h>

#include "eval/convert.h"
#include "eval/date_text.h"
#include "eval/eval_error.h"
#include "eval/like.h"
#include "eval/number_text.h"
#include "eval/prepare.h"
#include "eval_test_support.h"

namespace kx {
namespace {

using testing::EvalFixture;

TEST(NumberText, WritesDoublesWithFifteenDigitsAndExponentsAtTheExtremes) {
  const std::pair<double, std::string_view> cases[] = {
      {0, "0"},
      {1, "1"},
      {-2.5, "-2.5"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3, "0.333333333333333"},
      {0.0001, "0.0001"},
      {0.00001, "1E-05"},
      {0.000123, "0.000123"},
      {0.0000123, "1.23E-05"},
      {1.5e20, "1.5E+20"},
      {1e15, "1E+15"},
      {999999999999999, "999999999999999"},
      {123456789012345678.0, "1.23456789012346E+17"},
      {-1e-300, "-1E-300"},
  };
  for (const auto& [x, text] : cases) EXPECT_EQ(FormatDouble(x), text) << x;
}

TEST(NumberText, RoundsLongShortestFormsAndSubnormalsAtFifteenDigits) {
  const std::pair<double, std::string_view> cases[] = {
      {0.1, "0.1"},
      {0.1 + 0.7, "0.8"},                 // shortest form 0.7999999999999999
      {9999999999999995.0, "1E+16"},      // rounds up into the next decade
      {1e23, "1E+23"},                    // exactly 9.99999999999999916e22
      {5e-324, "4.94065645841247E-324"},  // the smallest subnormal
      {2.2250738585072014e-308, "2.2250738585072E-308"},
      {-123456.7890123456, "-123456.789012346"},
  };
  for (const auto& [x, text] : cases) EXPECT_EQ(FormatDouble(x), text) << x;
  EXPECT_EQ(FormatWithSignPosition(0.1 + 0.7, 15), " .8");
  EXPECT_EQ(FormatPlainDecimals(0.1 + 0.7, 15), "0.8");
}

TEST(NumberText, WritesSinglesWithSevenDigits) {
  EXPECT_EQ(FormatSingle(1.0f / 3), "0.3333333");
  EXPECT_EQ(FormatSingle(1.1f), "1.1");
  EXPECT_EQ(FormatSingle(12345678.0f), "1.234568E+07");
  EXPECT_EQ(FormatSingle(0.1f), "0.1");
  EXPECT_EQ(FormatSingle(16777217.0f), "1.677722E+07");
  EXPECT_EQ(FormatSingle(3.4028235e38f), "3.402823E+38");
  EXPECT_EQ(FormatSingle(1e-45f), "1.401298E-45");
}

TEST(NumberText, WritesPlainDecimalsForThePatternWithFiftySevenPlaces) {
  EXPECT_EQ(FormatPlainDecimals(0.00001, 15), "0.00001");
  EXPECT_EQ(FormatPlainDecimals(-1.5e-7, 15), "-0.00000015");
  EXPECT_EQ(FormatPlainDecimals(1e-57, 15), "0." + std::string(56, '0') + "1");
  EXPECT_EQ(FormatPlainDecimals(1e-60, 15), "0.");
  EXPECT_EQ(FormatPlainDecimals(5, 15), "5.");
}

TEST(NumberText, ReadsNumbersStrictly) {
  const std::pair<std::string_view, double> good[] = {
      {"12", 12},   {" 1,000 ", 1000}, {"-2.5", -2.5}, {"+3", 3},      {"1e3", 1000},
      {"1D2", 100}, {".5", 0.5},       {"&HFF", 255},  {"&HFFFF", -1}, {"&o17", 15},
  };
  for (const auto& [text, v] : good) {
    const ParsedNumber p = ParseNumber(text);
    EXPECT_EQ(p.status, ParseStatus::kOk) << text;
    EXPECT_EQ(p.value, v) << text;
  }
  for (std::string_view bad : {"", " ", "1 2", "12!", "abc", "1e", ".", "-", "1.2.3", "&H"})
    EXPECT_EQ(ParseNumber(bad).status, ParseStatus::kNotNumeric) << bad;
  EXPECT_EQ(ParseNumber("1e999").status, ParseStatus::kOverflow);
  EXPECT_EQ(ParseNumber("&H123456789").status, ParseStatus::kOverflow);
}

TEST(NumberText, ReadsTheLeadingNumberLikeVal) {
  EXPECT_EQ(LeadingNumber("  12abc"), 12);
  EXPECT_EQ(LeadingNumber("1 2 3"), 123);
  EXPECT_EQ(LeadingNumber("-1.5e2x"), -150);
  EXPECT_EQ(LeadingNumber("1,000"), 1);
  EXPECT_EQ(LeadingNumber("&HFFz"), 255);
  EXPECT_EQ(LeadingNumber("abc"), 0);
}

TEST(Conversions, RoundHalfToEven) {
  const std::pair<double, double> cases[] = {{0.5, 0},   {1.5, 2}, {2.5, 2},
                                             {-2.5, -2}, {2.6, 3}, {-0.4, -0}};
  for (const auto& [x, r] : cases) EXPECT_EQ(RoundHalfEven(x), r) << x;
  EXPECT_EQ(ToInteger(Value::Double(32767.4)), 32767);
  EXPECT_THROW(ToInteger(Value::Double(32767.5)), EvalError);
  EXPECT_EQ(ToInteger(Value::Double(-32768.5)), -32768);
  EXPECT_THROW(ToLong(Value::Double(2147483647.5)), EvalError);
  EXPECT_THROW(ToDouble(Value::String("x")), EvalError);
  EXPECT_EQ(ToDouble(Value::Boolean(true)), -1);
  EXPECT_EQ(ToDouble(Value()), 0);
}

TEST(Conversions, WriteBooleansDatesAndEmptyAsTheRuntimeDoes) {
  EXPECT_EQ(ToText(Value::Boolean(true)), "True");
  EXPECT_EQ(ToText(Value::Boolean(false)), "False");
  EXPECT_EQ(ToText(Value()), "");
  EXPECT_EQ(ToText(Value::Integer(-7)), "-7");
  EXPECT_EQ(ToSignedText(Value::Double(5)), " 5");
  EXPECT_EQ(ToSignedText(Value::Double(-0.5)), "-.5");
}

TEST(DateText, WritesTheJapaneseShortForm) {
  const double day = *SerialFromParts({2024, 3, 5, 0, 0, 0});
  EXPECT_EQ(FormatDate(day), "2024/03/05");
  EXPECT_EQ(FormatDate(*SerialFromParts({2024, 3, 5, 9, 5, 3})), "2024/03/05 9:05:03");
  EXPECT_EQ(FormatDate(*SerialFromParts({1899, 12, 30, 13, 0, 0})), "13:00:00");
  EXPECT_EQ(FormatDate(0), "0:00:00");
  EXPECT_EQ(day, 45356);
  EXPECT_EQ(FormatDate(-1.25), "1899/12/29 6:00:00");
}

TEST(DateText, ReadsDatesAndTimes) {
  EXPECT_EQ(ParseDate("2024/3/5"), SerialFromParts({2024, 3, 5, 0, 0, 0}));
  EXPECT_EQ(ParseDate("2024-03-05 9:05"), SerialFromParts({2024, 3, 5, 9, 5, 0}));
  EXPECT_EQ(ParseDate("9:05:03"), SerialFromParts({1899, 12, 30, 9, 5, 3}));
  EXPECT_FALSE(ParseDate("2024/2/30"));
  EXPECT_FALSE(ParseDate("25:00"));
  EXPECT_FALSE(ParseDate("soon"));
}

TEST(Like, MatchesThePatternsTheEvaluatorUses) {
  EXPECT_TRUE(Like("12a", "*[!0-9,! ]*"));
  EXPECT_FALSE(Like("1,000 !", "*[!0-9,! ]*"));
  EXPECT_TRUE(Like("(x)", "(*)"));
  EXPECT_FALSE(Like("(x", "(*)"));
  EXPECT_TRUE(Like("DNA ", "DNA[),0-9, ]"));
  EXPECT_TRUE(Like("RO0X", "RO[),0-9, ]?"));
  EXPECT_FALSE(Like("RO0", "RO[),0-9, ]?"));
  EXPECT_TRUE(Like("a7", "?#"));
}

TEST(Like, EdgesOfTheCommonShapes) {
  // A prefix and a suffix around one "*" cannot share a character.
  EXPECT_FALSE(Like("\"", "\"*\""));
  EXPECT_TRUE(Like("\"\"", "\"*\""));
  EXPECT_TRUE(Like("-", "-*"));
  EXPECT_FALSE(Like("NO", "NOT*"));
  EXPECT_TRUE(Like("", "*"));
  // "*x*" asks for any character matching x.
  EXPECT_FALSE(Like("", "*[!0-9]*"));
  EXPECT_TRUE(Like("12.5", "*[!0-9]*"));
  EXPECT_FALSE(Like("125", "*[!0-9]*"));
  EXPECT_TRUE(Like("1-", "*[!0-9]*"));
  EXPECT_TRUE(Like("ab", "*?*"));
  EXPECT_FALSE(Like("", "*?*"));
  EXPECT_TRUE(Like("f(1)", "*(*)"));
  EXPECT_FALSE(Like("f)", "*(*)"));
}

TEST(Preparation, RewritesSignsGroupsAndLiterals) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"-5", "0-5"},  {"((3))", "3"}, {"(1)+(2)", "(1)+(2)"}, {"(-2)", "0-2"}, {"&hff", "255"},
      {"ffh", "255"}, {"1Fh", "31"},  {"10h", "16"},          {"101b", "5"},   {"FFFFh", "-1"},
      {"()", ""},     {"abc", "abc"},
  };
  for (const auto& [text, prepared] : cases) EXPECT_EQ(Prepare(text), prepared) << text;
  const std::string deep = std::string(5000, '(') + "7" + std::string(5000, ')');
  EXPECT_EQ(Prepare(deep), "7");
  EXPECT_THROW(Prepare("&h123456789"), EvalError);
}

TEST(BinVal, ReadsFewerThanThirtyTwoBinaryDigits) {
  EXPECT_EQ(BinVal("101"), 5);
  EXPECT_EQ(BinVal(""), 0);
  EXPECT_EQ(BinVal(std::string(31, '1')), 2147483647);
  EXPECT_EQ(BinVal(std::string(32, '1')), 0);
  EXPECT_EQ(BinVal("1021"), 0);
}

class AssignmentText : public EvalFixture {};

TEST_F(AssignmentText, WritesSmallNumbersInPlainDecimals) {
  ExpectAll({
      {"1/100000", "Double", "0.00001"},
      {"CSNG(0.00001)", "Single", "0.00001"},
      {"\"1E-05\"", "String", "0.00001"},
      {"\"see-saw\"", "String", "see-saw"},
      {"1.5*10^20", "Double", "1.5E+20"},
      {"12", "Double", "12"},
      {"1,000", "Double", "1000"},
  });
}

TEST_F(AssignmentText, IsWhatEvaluateAssignmentStores) {
  EXPECT_EQ(EvaluateAssignment("1/100000", env), "0.00001");
  EXPECT_EQ(EvaluateAssignment("1+2*3^2", env), "37");
}

}  // namespace
}  // namespace kx
