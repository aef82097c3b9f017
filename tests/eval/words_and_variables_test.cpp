#include <gtest/gtest.h>

#include "eval/functions.h"
#include "eval_test_support.h"

namespace kx {
namespace {

TEST(FunctionTable, KeepsTheDispatchOrderWithItsShadowedEntries) {
  const std::vector<std::string_view> expected = {
      "ABS",    "AKCNV$", "ASC",     "ATAN",    "ATAND",    "ASIN",   "ASIND",  "ASC",
      "ASCD",   "ACOS",   "ACOSD",   "ACT",     "ACTD",     "CDBL",   "CEIL",   "CHR$",
      "CINT",   "CLNG",   "COT",     "COTD",    "COS",      "COSD",   "CSC",    "CSCD",
      "CSNG",   "CTN",    "CTND",    "DEGREES", "ENVIRON$", "EOF",    "EXP",    "EVAL",
      "FIX",    "FP",     "HEX$",    "HOUR",    "HSIN",     "HCOS",   "HTAN",   "HSEC",
      "HCSE",   "HCTN",   "HASN",    "HACS",    "HATN",     "HASC",   "HACSE",  "HATN",
      "IIF",    "INPUT$", "INSTR",   "INT",     "INP",      "IP",     "JIS$",   "KACNV$",
      "KINSTR", "KLEN",   "KMID$",   "KNJ$",    "LCASE$",   "LEFT$",  "LEN",    "LOC",
      "LOF",    "LOG",    "LOGn",    "LTRIM$",  "MAX",      "MID$",   "MIN",    "MINUTE",
      "OCT$",   "POS",    "RADIANS", "RIGHT$",  "RND",      "ROUND",  "RTRIM$", "REMINDER",
      "SEC",    "SECD",   "SGN",     "SIN",     "SIND",     "SPACE$", "SPC",    "SQR",
      "STR$",   "SSTR$",  "STRING$", "TAB",     "TAN",      "TAND",   "TRIM",   "TRUNCATE",
      "UCASE",  "VAL"};
  std::vector<std::string_view> names;
  for (const auto& f : FunctionTable()) names.push_back(f.name);
  EXPECT_EQ(names, expected);

  std::vector<std::string_view> words;
  for (const auto& w : WordTable()) words.push_back(w.name);
  EXPECT_EQ(words, (std::vector<std::string_view>{"CSRLIN", "ERR", "COMMAND$", "DATE", "INKEY$",
                                                  "NOW", "TIME", "RND", "GETCLIP", "INPUTBOX",
                                                  "FOUNDX", "FOUNDY"}));
}

TEST(FunctionTable, SplitsArgumentsAtCommasOutsideParenthesesEvenInsideQuotes) {
  int count = 0;
  auto args = SplitArguments(" a , MID$(b,1) ,\"x,y\"", count);
  EXPECT_EQ(count, 4);
  EXPECT_EQ(args[0], "a");
  EXPECT_EQ(args[1], "MID$(b,1)");
  EXPECT_EQ(args[2], "\"x");
  EXPECT_EQ(args[3], "y\"");
  SplitArguments("1,2,3,4,5,6,7,8", count);
  EXPECT_EQ(count, 8);
  EXPECT_ANY_THROW(SplitArguments("1,2,3,4,5,6,7,8,9", count));
}

class Words : public testing::EvalFixture {};

TEST_F(Words, ReadTheClockThroughTheClockPort) {
  sim.SetStartTime({2024, 3, 5, 9, 5, 3, 0});
  ExpectAll({
      {"DATE", "String", "2024/03/05"},
      {"date", "String", "2024/03/05"},
      {"NOW", "Date", "2024/03/05 9:05:03"},
      {"TIME", "Date", "9:05:03"},
      {"HOUR(NOW)", "Integer", "9"},
      {"MINUTE(\"2024/03/05 10:42:00\")", "Integer", "42"},
  });
}

TEST_F(Words, ReadTheClipboardEnvironmentAndCommandLine) {
  sim.SetClipboard("copied");
  sim.SetEnvironment("PATH", "C:\\bin");
  sim.SetCommandLine("/m test.ksx");
  ExpectAll({
      {"GETCLIP", "String", "copied"},
      {"ENVIRON$(\"path\")", "String", "C:\\bin"},
      {"ENVIRON$(1)", "String", "PATH=C:\\bin"},
      {"ENVIRON$(2)", "String", ""},
      {"COMMAND$", "String", "/m test.ksx"},
  });
  sim.SetClipboard(std::nullopt);
  EXPECT_EQ(Stored("GETCLIP"), "");
}

TEST_F(Words, AskTheInputBoxWithItsPrompt) {
  sim.QueueInputBoxAnswer("typed");
  sim.QueueInputBoxAnswer(std::nullopt);
  EXPECT_EQ(Stored("INPUTBOX"), "typed");
  EXPECT_EQ(Stored("INPUTBOX"), "");
  const auto asked = sim.trace().OfKind("inputbox");
  ASSERT_EQ(asked.size(), 2u);
  EXPECT_EQ(asked[0].ToUntimedJson(),
            R"({"ev":"inputbox","title":"Kestrelix","prompt":"値を入力して下さい。"})");
}

TEST_F(Words, DrawRandomSinglesAfterReseeding) {
  const Value a = Eval("RND");
  const Value b = Eval("RND(1)");
  ASSERT_EQ(a.Type(), ValueType::kSingle);
  ASSERT_EQ(b.Type(), ValueType::kSingle);
  EXPECT_GE(a.AsSingle(), 0.0f);
  EXPECT_LT(a.AsSingle(), 1.0f);
  // The simulated clock stands still, so reseeding gives the same draw.
  EXPECT_EQ(a, b);
}

TEST_F(Words, AnswerEmptyOrNothingForTheRest) {
  ExpectAll({
      {"CSRLIN", "Empty", ""},
      {"ERR", "Long", "0"},
      {"INKEY$", "String", ""},
      {"POS(1/0)", "Empty", ""},
      {"INP(5)", "Integer", "0"},
      {"INPUT$(1)", "String", ""},
      {"unknown", "String", ""},
      {"unknown(1)", "Integer", "0"},
      {"unknown$(1,2)", "String", ""},
  });
  EXPECT_FALSE(Failed());
  EXPECT_EQ(evaluator.LastErrorCode(), LastError::kNone);
  EXPECT_EQ(Stored("INPUT$(1,2)"), "");
  EXPECT_EQ(evaluator.LastErrorCode(), LastError::kInputForm);
}

class Variables : public testing::EvalFixture {};

TEST_F(Variables, AreFoundCaseSensitivelyAndNumbersComeBackAsDoubles) {
  variables.Set("#n", "41");
  variables.Set("#N", "x");
  variables.Set("#t", "hello");
  variables.Set("#d", "1,000");
  ExpectAll({
      {"#n", "Double", "41"},
      {"#n+1", "Double", "42"},
      {"#N", "String", "x"},
      {"#t+1", "String", "hello1"},
      {"#d*2", "Double", "2000"},
      {"#missing", "String", ""},
      {"LEN(#t)", "Long", "5"},
  });
}

}  // namespace
}  // namespace kx
