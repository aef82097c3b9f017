#include <gtest/gtest.h>

#include "eval/text_codes.h"
#include "eval_test_support.h"

namespace kx {
namespace {

class TextFunctions : public testing::EvalFixture {};

TEST_F(TextFunctions, TakePiecesAndPositionsInCharacters) {
  ExpectAll({
      {"LEFT$(\"abcdef\",2)", "String", "ab"},
      {"RIGHT$(\"abcdef\",2)", "String", "ef"},
      {"RIGHT$(\"ab\",5)", "String", "ab"},
      {"MID$(\"abcdef\",2,3)", "String", "bcd"},
      {"MID$(\"abcdef\",4)", "String", "def"},
      {"MID$(\"abc\",9)", "String", ""},
      {"KMID$(\"あいうえ\",2,2)", "String", "いう"},
      {"LEN(\"あいう\")", "Long", "3"},
      {"KLEN(\"abc\")", "Long", "3"},
      {"LEN(12.5)", "Long", "4"},
      {"INSTR(\"abcabc\",\"c\")", "Long", "3"},
      {"INSTR(4,\"abcabc\",\"c\")", "Long", "6"},
      {"INSTR(\"abc\",\"x\")", "Long", "0"},
      // The start at the text's last character still finds it; one past does not.
      {"INSTR(3,\"abc\",\"c\")", "Long", "3"},
      {"INSTR(6,\"abcabc\",\"c\")", "Long", "6"},
      {"INSTR(4,\"abc\",\"c\")", "Long", "0"},
      {"KINSTR(\"あいう\",\"う\")", "Long", "3"},
  });
}

TEST_F(TextFunctions, ChangeCaseBlanksAndRepetitions) {
  ExpectAll({
      {"LCASE$(\"AbＣ\")", "String", "abｃ"},
      {"UCASE(\"aBｃ\")", "String", "ABＣ"},
      {"LTRIM$(\"  a \")", "String", "a "},
      {"RTRIM$(\"  a \")", "String", "  a"},
      {"TRIM(\"  a \")", "String", "a"},
      {"SPACE$(3)+\"|\"", "String", "   |"},
      {"SPC(2)+\"|\"", "String", "  |"},
      {"TAB(2)", "String", "\t\t"},
      {"STRING$(3,\"xy\")", "String", "xxx"},
      {"STRING$(3,65)", "String", "AAA"},
      {"STRING$(2,321)", "String", "AA"},
  });
}

TEST_F(TextFunctions, ConvertCharacterCodesOfTheJapaneseCodePage) {
  ExpectAll({
      {"ASC(\"A\")", "Integer", "65"},
      {"ASC(\"あ\")", "Integer", "-32096"},
      {"ASC(\"ｱ\")", "Integer", "177"},
      {"JIS$(\"あ\")", "String", "82A0"},
      {"JIS$(\"ア\")", "String", "8341"},
      {"CHR$(65)", "String", "A"},
      {"CHR$(177)", "String", "ｱ"},
      {"KNJ$(\"82A0\")", "String", "あ"},
      {"KNJ$(\"41\")", "String", "A"},
      {"ASC(\"漢\")", "Integer", "-30017"},
      {"JIS$(\"漢\")", "String", "8ABF"},
      {"AKCNV$(\"ab 1ｶﾞﾊﾟ\")", "String", "ａｂ　１ガパ"},
      {"KACNV$(\"ａｂ　１ガパ\")", "String", "ab 1ｶﾞﾊﾟ"},
  });
}

TEST_F(TextFunctions, FailOnBadCountsAndCodes) {
  for (std::string_view e :
       {"LEFT$(\"a\",-1)", "MID$(\"abc\",0)", "SPACE$(-1)", "CHR$(256)", "ASC(\"\")",
        "STRING$(2,\"\")", "INSTR(0,\"a\",\"a\")", "SPACE$(2000000)", "VAL(\"1e999\")"}) {
    sim.SetStatusText("");
    EXPECT_TRUE(Eval(e).IsEmpty()) << e;
    EXPECT_TRUE(Failed()) << e;
  }
}

TEST(TextCodes, MapKanaAndFullWidthFormsBothWays) {
  for (char32_t c : {U'A', U'ｱ', U'ぁ', U'ん', U'ァ', U'ミ', U'ム', U'ヶ', U'０', U'Ｚ', U'ｚ',
                     U'　', U'漢', U'〒'})
    EXPECT_EQ(CharFromAnsi(AnsiCode(c)), c) << static_cast<int>(c);
  EXPECT_EQ(AnsiCode(U'ミ'), 0x837E);
  EXPECT_EQ(AnsiCode(U'ム'), 0x8380);
  EXPECT_EQ(AnsiCode(U'漢'), 0x8ABF);
  EXPECT_EQ(AnsiCode(U'😀'), '?');
  EXPECT_EQ(CharFromAnsi(0x889F), U'亜');
  EXPECT_EQ(CharFromAnsi(0x81), U'・');
  EXPECT_EQ(CharFromAnsi(0x8140 + 0x3F), U'・');
  EXPECT_EQ(EncodeUtf8(DecodeUtf8("aé漢😀")), "aé漢😀");
  EXPECT_EQ(DecodeUtf8("\xff"), U"\uFFFD");
}

class ConversionFunctions : public testing::EvalFixture {};

TEST_F(ConversionFunctions, ConvertBetweenTypesAndNumberTexts) {
  ExpectAll({
      {"CDBL(\"1e3\")", "Double", "1000"},
      {"CINT(2.5)", "Integer", "2"},
      {"CINT(3.5)", "Integer", "4"},
      {"CLNG(-2.5)", "Long", "-2"},
      {"CSNG(1/3)", "Single", "0.3333333"},
      {"HEX$(255)", "String", "FF"},
      {"HEX$(-1)", "String", "FFFFFFFF"},
      {"HEX$(CINT(-1))", "String", "FFFF"},
      {"OCT$(8)", "String", "10"},
      {"VAL(\" 1 2abc\")", "Double", "12"},
      {"VAL(\"&H10\")", "Double", "16"},
      {"STR$(5)", "String", " 5"},
      {"STR$(-0.5)", "String", "-.5"},
      {"SSTR$(1<2)", "String", "True"},
      {"EVAL(\"1+2*3\")", "Double", "7"},
      {"EVAL(\"\"\"a\"\"+\"\"b\"\"\")", "String", "ab"},
      {"IIF(1<2,\"yes\",\"no\")", "String", "yes"},
      {"IIF(0,\"yes\",\"no\")", "String", "no"},
  });
}

TEST_F(ConversionFunctions, EvaluateEveryArgumentOfIif) {
  EXPECT_EQ(Stored("IIF(1,2,1/0)"), "2");
  EXPECT_TRUE(Failed());
}

}  // namespace
}  // namespace kx
