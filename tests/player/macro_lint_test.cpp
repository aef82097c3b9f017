#include "player/macro_lint.h"

#include <gtest/gtest.h>

#include "screen/image_file.h"
#include "sim/sim_system.h"

namespace kx {
namespace {

class MacroLint : public ::testing::Test {
 protected:
  MacroLint() {
    sim.AddFile("/macros/here.ksx", "beep");
    sim.AddFile("/kestrelix/Macro/library.ksx", "beep");
  }

  std::vector<LintWarning> Lint(std::initializer_list<std::string> lines,
                                bool unicodeKeys = false) {
    std::string text;
    for (const auto& l : lines) text += (text.empty() ? "" : "\r\n") + l;
    return LintMacro(text, LintContext{"/macros", "/kestrelix/Macro", sim, sim, unicodeKeys});
  }
  // The one warning of a macro, or a failure naming what came instead.
  std::string Only(std::initializer_list<std::string> lines, int line) {
    const auto warnings = Lint(lines);
    if (warnings.size() != 1) {
      std::string all;
      for (const auto& w : warnings) all += std::to_string(w.line) + ": " + w.text + "\n";
      ADD_FAILURE() << "expected one warning, got " << warnings.size() << "\n" << all;
      return "";
    }
    EXPECT_EQ(warnings[0].line, line);
    return warnings[0].text;
  }

  sim::SimSystem sim;
};

TEST_F(MacroLint, ARecordedMacroGivesNoWarning) {
  EXPECT_EQ(Lint({"loop 3",
                  "w メモ帳",
                  "LCtrl Down",
                  "A",
                  "LCtrl Up",
                  "Enter",
                  "Numpad5",
                  "F12",
                  "PrintScreen",
                  "半角/全角",
                  "LMouse Down (10,20)",
                  "LMouse Up (10,20)",
                  "MousePos(5,5)",
                  "Wheel -120",
                  "250",
                  "05",
                  "-50",
                  "key Hello, world!",
                  "keys ctrl+shift+esc",
                  "#a = 1 + 2 * (3 - 1)",
                  "#b = \"x\" + \"y\"",
                  "<r 3>",
                  "beep",
                  "</r>",
                  "rand 2",
                  "<switch>",
                  "<case 1>",
                  "msgbox one",
                  "<default>",
                  "</switch>",
                  "mf here.ksx",
                  "mf library.ksx",
                  "goto 2",
                  "",
                  "'a comment"}),
            std::vector<LintWarning>{});
}

TEST_F(MacroLint, ASingleDigitIsAKeyNotAWait) {
  EXPECT_NE(Only({"beep", "5"}, 2).find("待ち時間ではありません"), std::string::npos);
  EXPECT_EQ(Lint({"50", "-5", "5.0"}).size(), 0u);
}

TEST_F(MacroLint, AWordThatIsNoKeyNameMayOpenAProgram) {
  const auto text = Only({"notepad"}, 1);
  EXPECT_NE(text.find("開くことがあります"), std::string::npos) << text;
  EXPECT_EQ(Lint({"loop 2", "enter", "a", "/"}).size(), 0u);
  EXPECT_EQ(Lint({"beep", "loop 2"}).size(), 1u);
}

TEST_F(MacroLint, AnExactCommandWordWithMoreTextFallsToTheKeyLine) {
  for (const char* line : {"beep x", "getclip y", "getloop 2", "<pause> now", "logoff please"}) {
    const auto text = Only({line}, 1);
    EXPECT_NE(text.find("はその命令ではなくキーの行になります"), std::string::npos) << line;
  }
}

TEST_F(MacroLint, UnknownKeyNamesInKeyKeysAndModifierLines) {
  EXPECT_NE(Only({"keys ctrl+shfit+a"}, 1).find("\"shfit\""), std::string::npos);
  EXPECT_NE(Only({"keys ctrl++a"}, 1).find("\"\""), std::string::npos);
  EXPECT_NE(Only({"keys shift down+a"}, 1).find("\"shift down\""), std::string::npos);
  EXPECT_NE(Only({"LCtrl Dwn"}, 1).find("\"lctrl down\""), std::string::npos);
  EXPECT_NE(Only({"々"}, 1).find("何も押しません"), std::string::npos);
  EXPECT_EQ(Lint({"f24", "numpad9", "shift down", "shift up"}).size(), 0u);
  EXPECT_EQ(Only({"f25"}, 1).find("不明"), std::string::npos);  // a shell risk instead
}

TEST_F(MacroLint, PartialLoopsMustPair) {
  EXPECT_NE(Only({"<r 2>", "beep"}, 1).find("<r> に対応する </r> がありません"), std::string::npos);
  EXPECT_NE(Only({"beep", "</r>"}, 2).find("</r> に対応する <r> がありません"), std::string::npos);
  EXPECT_EQ(Lint({"<r 2>", "<r>", "</r>", "</r>"}).size(), 0u);
}

TEST_F(MacroLint, SwitchesMustCloseAndNotNest) {
  EXPECT_NE(Only({"<switch>", "<case 1>"}, 1).find("に対応する </switch> がありません"),
            std::string::npos);
  EXPECT_NE(Only({"<switch>", "<switch x>", "</switch>", "</switch>"}, 2).find("入れ子"),
            std::string::npos);
  EXPECT_NE(Only({"<case 1>"}, 1).find("は <switch> の外では"), std::string::npos);
  EXPECT_NE(Only({"<default>"}, 1).find("は <switch> の外では"), std::string::npos);
  EXPECT_NE(Only({"</switch>"}, 1).find("に対応する <switch> がありません"), std::string::npos);
}

TEST_F(MacroLint, GotoMayReachOnePastTheEndButNoFurther) {
  EXPECT_EQ(Lint({"beep", "goto 3"}).size(), 0u);
  EXPECT_NE(Only({"beep", "goto 4"}, 2).find("範囲外"), std::string::npos);
  EXPECT_NE(Only({"beep", "goto 0"}, 2).find("範囲外"), std::string::npos);
  EXPECT_NE(Only({"goto x"}, 1).find("行番号ではありません"), std::string::npos);
}

TEST_F(MacroLint, ABrowserLineNeedsAnAddress) {
  EXPECT_EQ(Lint({"browser https://example.com/", "browser C:\\pages\\a b.html",
                  "browser file:///C:/ページ.html"})
                .size(),
            0u);
  EXPECT_NE(
      Only({"browser www.example.com"}, 1).find("\"www.example.com\" はアドレスではありません"),
      std::string::npos);
  EXPECT_NE(Only({"browser"}, 1).find("アドレスではありません"), std::string::npos);
}

TEST_F(MacroLint, MacroFilesAreLookedForBesideTheMacroAndInTheMacroFolder) {
  EXPECT_EQ(Lint({"mf here.ksx", "mf LIBRARY.KSX", "mf /macros/here.ksx"}).size(), 0u);
  EXPECT_NE(Only({"mf missing.ksx"}, 1).find("\"missing.ksx\""), std::string::npos);
  EXPECT_NE(Only({"mf"}, 1).find("ファイル"), std::string::npos);
}

TEST_F(MacroLint, ScreenWaitsWithBadArgumentsOrNoReadableImage) {
  const Bytes png = EncodePng(PixelImage(2, 2, 0xFF102030u), 96);
  sim.AddFile("/kestrelix/Macro/ok.png", std::string(png.begin(), png.end()));
  sim.AddFile("/macros/text.png", "not an image");
  EXPECT_EQ(Lint({"waitimage ok.png", "WaitImage ok.png,10,5000,0,0,100,100",
                  "waitpixel -5,10,#FF0000,3,0"})
                .size(),
            0u);
  const struct {
    const char* line;
    const char* warning;
  } cases[] = {
      {"waitpixel 1,2,blue", "waitpixel: 色 \"blue\" はRRGGBBの16進数ではありません (例 FF0000)"},
      {"waitpixel 1,2", "waitpixel: x,y,色[,許容差[,タイムアウト]] の形で書いて下さい"},
      {"waitimage missing.png",
       "waitimage: 画像ファイル \"missing.png\" がマクロと同じフォルダにもMacroフォルダにもありま"
       "せん"},
      {"waitimage text.png", "waitimage: \"text.png\" はPNGかBMPの画像として読めません"},
      {"waitimage ok.png,0,100,0,0,100",
       "waitimage: 検索範囲は 左,上,右,下 の4つの数値で書いて下さい"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(Only({c.line}, 1), std::string(c.warning) + ": 再生するとすぐに False になります");
}

TEST_F(MacroLint, KeyTextTheJapaneseLayoutCannotType) {
  EXPECT_NE(Only({"key abcかな漢字"}, 1).find("\"かな漢字\""), std::string::npos);
  EXPECT_EQ(Lint({"key ABC xyz 123 !\"#$%&'()=~|`{}*+<>?_"}).size(), 0u);
  // With UnicodeKeys they are typed as Unicode characters instead.
  EXPECT_EQ(Lint({"key abcかな漢字"}, true).size(), 0u);
}

TEST_F(MacroLint, AssignmentsThatCannotBeParsed) {
  for (const char* line :
       {"#a = 1 +", "#a = (1 + 2", "#a = 1 + 2)", "#a = \"open", "#a =", "#a = (3 *)"}) {
    const auto warnings = Lint({line});
    ASSERT_EQ(warnings.size(), 1u) << line;
    EXPECT_NE(warnings[0].text.find("を解釈できません"), std::string::npos) << line;
  }
  for (const char* line : {"#a = 1", "#a = -5", "#a = left$(\"abc\", 2)", "#a = (1) + (2)",
                           "#a = 1/100000", "#a = not 1", "#a = &hff + 101b"})
    EXPECT_EQ(Lint({line}).size(), 0u) << line;
}

TEST_F(MacroLint, WarningsComeInLineOrder) {
  const auto warnings = Lint({"<r 2>", "5", "goto 9"});
  ASSERT_EQ(warnings.size(), 3u);
  EXPECT_EQ(warnings[0].line, 1);
  EXPECT_EQ(warnings[1].line, 2);
  EXPECT_EQ(warnings[2].line, 3);
}

}  // namespace
}  // namespace kx
