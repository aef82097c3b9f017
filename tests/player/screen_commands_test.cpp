#include <gtest/gtest.h>

#include "player/play_fixture.h"
#include "screen/image_file.h"
#include "screen/pictures.h"

namespace kx::test {
namespace {

// A 1920x1080 screen of noise; the button picture is in the Macro folder.
struct Screen : PlayFixture {
  PixelImage button = Blocks(8, 3, 77);
  Screen() {
    sim.ShowImage(Noise(1920, 1080, 1), {0, 0});
    const Bytes png = EncodePng(button, 96);
    sim.AddFile("/kestrelix/Macro/button.png", std::string(png.begin(), png.end()));
  }
  std::vector<std::string> Vars() { return Effects("var"); }
  // When the first variable was set, from the start of the line before it.
  std::int64_t FirstVarAfterStart() { return Times("var").front() - Times("beep").front(); }
  static std::string Var(const std::string& name, const std::string& value) {
    return R"({"ev":"var","name":")" + name + R"(","value":")" + value + R"("})";
  }
};

const std::vector<std::string> kReport = {"<switch>", "<case True>", "#r = 1",      "<case False>",
                                          "#r = 0",   "</switch>",   "#x = FoundX", "#y = FoundY"};

// The line after a beep, which marks the moment the line starts (a play
// begins a little after its start), then the report of what it found.
std::vector<std::string> With(std::string first) {
  std::vector<std::string> lines{"beep", std::move(first)};
  lines.insert(lines.end(), kReport.begin(), kReport.end());
  return lines;
}

std::string Join(const std::vector<std::string>& lines) {
  std::string text;
  for (const auto& l : lines) text += (text.empty() ? "" : "\r\n") + l;
  return text;
}

TEST(ScreenWaits, AnImageThatAppearsEndsTheWaitSoonAfterAndTellsWhereItIs) {
  Screen s;
  s.sim.ShowImage(s.button, {700, 400}, 1500);
  s.Play(Join(With("WaitImage button.png,0,5000")));
  EXPECT_EQ(s.Vars(), (std::vector<std::string>{Screen::Var("#r", "1"), Screen::Var("#x", "712"),
                                                Screen::Var("#y", "412")}));
  const auto t = s.Times("var").front();
  EXPECT_GE(t, 1500);
  EXPECT_LT(t, 1500 + 100);  // the picture shows at 1500 ms of the play's clock
}

TEST(ScreenWaits, AbsentGivesFalseAtTheTimeOutScaledBySpeedAndFoundXStaysEmpty) {
  Screen s;
  s.player.Options().speedFactor = 2;
  s.Play(Join(With("waitimage button.png,0,1000")));
  EXPECT_EQ(s.Vars(), (std::vector<std::string>{Screen::Var("#r", "0"), Screen::Var("#x", ""),
                                                Screen::Var("#y", "")}));
  EXPECT_GE(s.FirstVarAfterStart(), 2000);
  EXPECT_LT(s.FirstVarAfterStart(), 2000 + 100);
  // A time-out of 0 looks once.
  const int before = s.sim.Captures();
  s.Play(Join(With("waitimage button.png,0,0")));
  EXPECT_EQ(s.sim.Captures() - before, 1);
}

TEST(ScreenWaits, APixelIsWaitedForByColourWithinTheVariation) {
  Screen s;
  PixelImage dot(1, 1, 0xFF102030u);
  s.sim.ShowImage(dot, {-1, -1});  // on no monitor: never seen
  s.sim.ShowImage(dot, {5, 6}, 300);
  s.Play(Join(With("waitpixel 5,6,#112233,3")));
  EXPECT_EQ(s.Vars(), (std::vector<std::string>{Screen::Var("#r", "1"), Screen::Var("#x", "5"),
                                                Screen::Var("#y", "6")}));
  s.Play(Join(With("WaitPixel 5,6,112233,2,100")));
  EXPECT_EQ(s.Vars().front(), Screen::Var("#r", "0"));
}

TEST(ScreenWaits, StoppingDuringTheWaitEndsThePlayAtOnce) {
  Screen s;
  s.sim.ScheduleHotkey(700, kHotkeyPlay);
  s.Play({"waitimage button.png,0,60000", "beep"});
  EXPECT_TRUE(s.Effects("beep").empty());
  EXPECT_LT(s.sim.NowMs(), 700 + 50);
}

TEST(ScreenWaits, BadInputGivesFalseAtOnceWithAStatusMessage) {
  struct Case {
    const char* line;
    const char* status;
  };
  const Case cases[] = {
      {"waitimage missing.png", "waitimage: 画像ファイルを読み込めません: missing.png"},
      {"waitimage notimage.png", "waitimage: 画像ファイルを読み込めません: notimage.png"},
      {"waitimage button.png,0,100,3000,0,3100,100",
       "waitimage: 検索範囲はどのモニタの上にもありません"},
      {"waitimage button.png,0,100,10,10,20,20",
       "waitimage: 画像が検索範囲より大きいため見つかりません"},
      {"waitimage button.png,0,100,20,20,10,10",
       "waitimage: 検索範囲の右と下は左と上より大きくして下さい"},
      {"waitpixel 5,6,red", "waitpixel: 色 \"red\" はRRGGBBの16進数ではありません (例 FF0000)"},
      {"waitpixel a,6,ff0000", "waitpixel: 座標 \"a\",\"6\" は数値ではありません"},
      {"waitpixel 5,6,ff0000,x", "waitpixel: 許容差 \"x\" は0から255の数値ではありません"},
      {"waitpixel 5,6", "waitpixel: x,y,色[,許容差[,タイムアウト]] の形で書いて下さい"},
      {"waitpixel 5000,6,ff0000", "waitpixel: 座標はどのモニタの上にもありません"},
  };
  for (const Case& c : cases) {
    Screen s;
    s.sim.AddFile("/kestrelix/Macro/notimage.png", "not an image");
    s.Play(Join(With(c.line)));
    // The trace writes the message as a JSON string: its quotes escaped.
    std::string text;
    for (const char* p = c.status; *p; ++p)
      text += *p == '"' ? std::string(R"(\")") : std::string(1, *p);
    EXPECT_EQ(s.Effects("status"),
              std::vector<std::string>{R"({"ev":"status","text":")" + text + R"("})"})
        << c.line;
    EXPECT_EQ(s.Vars().front(), Screen::Var("#r", "0")) << c.line;
    EXPECT_LT(s.FirstVarAfterStart(), 100) << c.line;
  }
}

}  // namespace
}  // namespace kx::test
