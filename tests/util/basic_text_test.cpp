#include "util/basic_text.h"

#include <gtest/gtest.h>

namespace kx::basic {
namespace {

TEST(BasicText, TrimRemovesBlanksOnlyAndCaseMapsAsciiAndFullWidth) {
  EXPECT_EQ(Trim("  a b \t "), "a b \t");
  EXPECT_EQ(Trim("\ta "), "\ta");
  EXPECT_EQ(LCase("ABCａＢｃ日本"), "abcａｂｃ日本");
  EXPECT_EQ(UCase("abcａｂｃ"), "ABCＡＢＣ");
}

TEST(BasicText, PositionsCountCharactersNotBytes) {
  EXPECT_EQ(Length("日本a"), 3u);
  EXPECT_EQ(Mid("日本語", 2), "本語");
  EXPECT_EQ(Mid("abc", 9), "");
  EXPECT_EQ(Left("日本語", 2), "日本");
  EXPECT_EQ(DropLast("ab日"), std::optional<std::string_view>("ab"));
  EXPECT_EQ(DropLast(""), std::nullopt);
  EXPECT_EQ(FirstChar("日本"), U'日');
  EXPECT_EQ(FirstChar("\xE6"), 0xFFFDu);
}

TEST(BasicText, NumericTextIsPlainDecimalWithOptionalFractionAndExponent) {
  for (const char* yes : {"0", "-50", "+1", "1.5", ".5", "5.", "1e3", "1E-2", " 3 "})
    EXPECT_TRUE(IsNumeric(yes)) << yes;
  for (const char* no : {"", "-", ".", "1e", "x1", "1x", "1,000", "&h10", "1 2", "e3"})
    EXPECT_FALSE(IsNumeric(no)) << no;
  EXPECT_EQ(ToDouble("1e3"), 1000.0);
}

TEST(BasicText, ValReadsTheLeadingNumberIgnoringBlanks) {
  EXPECT_EQ(Val("12abc"), 12);
  EXPECT_EQ(Val("1 2"), 12);
  EXPECT_EQ(Val("x"), 0);
  EXPECT_EQ(Val(""), 0);
  EXPECT_EQ(Val("-3.5e1z"), -35);
}

TEST(BasicText, LongConversionRoundsHalvesToEvenAndRejectsOverflow) {
  EXPECT_EQ(ToLong(2.5), 2);
  EXPECT_EQ(ToLong(3.5), 4);
  EXPECT_EQ(ToLong(-2.5), -2);
  EXPECT_EQ(ToLong(1.25 * 1), 1);
  EXPECT_EQ(ToLong(2147483647.4), 2147483647);
  EXPECT_EQ(ToLong(2147483648.0), std::nullopt);
  EXPECT_EQ(ToLong("x"), std::nullopt);
  EXPECT_EQ(ToLong(" 7 "), 7);
}

TEST(BasicText, SplitAndReplaceKeepEmptyPieces) {
  EXPECT_EQ(Split("a,,b", ","), (std::vector<std::string>{"a", "", "b"}));
  EXPECT_EQ(Split("", ","), std::vector<std::string>{""});
  EXPECT_EQ(Split("a\r\nb\r\n", "\r\n"), (std::vector<std::string>{"a", "b", ""}));
  EXPECT_EQ(ReplaceAll("a\\nb\\n", "\\n", "\r\n"), "a\r\nb\r\n");
}

}  // namespace
}  // namespace kx::basic
