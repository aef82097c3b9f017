// The capture tool: window paths of simulated window trees, the lines each
// kind writes on Alt + left click, Esc/Enter, and how the main window opens,
// feeds and closes the tool, also while a macro plays.
#include <gtest/gtest.h>

#include "gui/capture_path.h"
#include "gui_fixture.h"
#include "input/key_codes.h"
#include "screen/image_file.h"

namespace kx::test {

namespace {

using gui::CaptureKind;
using gui::Command;
using gui::Timer;

constexpr int kVkLeftButton = 1;
constexpr int kVkReturn = 13;
constexpr int kVkEscape = 27;

// A form with two edit boxes and a button, a dialog with a button, and a
// form of the classic Basic runtime holding an edit box.
struct Desktop {
  explicit Desktop(sim::SimSystem& sim) {
    form = sim.AddWindow({0, "KxForm", "フォーム", {100, 100, 500, 400}});
    edit1 = sim.AddWindow({0, "Edit", "一つ目", {110, 140, 300, 170}, {0, 0}, false, form});
    edit2 = sim.AddWindow({0, "Edit", "二つ目\r\n続き", {110, 180, 300, 210}, {0, 0}, false, form});
    button = sim.AddWindow({0, "Button", "実行", {110, 220, 200, 250}, {0, 0}, false, form});
    dialog = sim.AddWindow({0, "#32770", "確認", {600, 100, 800, 300}});
    ok = sim.AddWindow({0, "Button", "OK", {620, 250, 700, 280}, {0, 0}, false, dialog});
    vbForm = sim.AddWindow({0, "ThunderRT6FormDC", "VB画面", {100, 500, 400, 700}});
    vbFrame =
        sim.AddWindow({0, "ThunderRT6Frame", "", {110, 520, 390, 690}, {0, 0}, false, vbForm});
    vbEdit =
        sim.AddWindow({0, "ThunderRT6TextBox", "", {120, 540, 300, 570}, {0, 0}, false, vbFrame});
  }
  WindowHandle form, edit1, edit2, button, dialog, ok, vbForm, vbFrame, vbEdit;
};

TEST(CapturePathTest, PathsOfSimulatedWindowTrees) {
  sim::SimSystem sim;
  // A second form of the same class first: the captured form is the second.
  sim.AddWindow({0, "KxForm", "別のフォーム", {0, 0, 50, 50}});
  const Desktop d(sim);
  EXPECT_EQ(gui::BuildWindowPath(sim, d.edit1), "KxForm*2,Edit*1");
  EXPECT_EQ(gui::BuildWindowPath(sim, d.edit2), "KxForm*2,Edit*2");
  EXPECT_EQ(gui::BuildWindowPath(sim, d.button), "KxForm*2,Button*1");
  // A dialog names itself by title and ends the walk.
  EXPECT_EQ(gui::BuildWindowPath(sim, d.ok), "#32770+確認,Button*1");
  EXPECT_EQ(gui::BuildWindowPath(sim, d.dialog), "#32770+確認");
  // A titled Basic form names itself by title and the walk goes on.
  EXPECT_EQ(gui::BuildWindowPath(sim, d.vbEdit),
            "ThunderRT6FormDC+VB画面,ThunderRT6Frame*1,ThunderRT6TextBox*1");
  EXPECT_EQ(gui::TopLevelOf(sim, d.vbEdit), d.vbForm);
  EXPECT_EQ(gui::TopLevelOf(sim, d.form), d.form);
  // No window, or one that went away: no path.
  EXPECT_EQ(gui::BuildWindowPath(sim, 0), "");
  EXPECT_EQ(gui::BuildWindowPath(sim, 0x7777), "");
}

TEST(CapturePathTest, AnUntitledBasicFormIsCountedLikeAnyOtherWindow) {
  sim::SimSystem sim;
  const auto form = sim.AddWindow({0, "ThunderRT6FormDC", "", {0, 0, 100, 100}});
  const auto edit = sim.AddWindow({0, "Edit", "", {10, 10, 50, 30}, {0, 0}, false, form});
  EXPECT_EQ(gui::BuildWindowPath(sim, edit), "ThunderRT6FormDC*1,Edit*1");
}

TEST(CaptureKindTest, EachCommandItemOpensItsKind) {
  const std::pair<std::string_view, CaptureKind> kinds[] = {
      {"w", CaptureKind::kWindow},        {"gt", CaptureKind::kGetText},
      {"st", CaptureKind::kSetText},      {"ad", CaptureKind::kAddText},
      {"bc", CaptureKind::kButtonClick},  {"cc", CaptureKind::kBackgroundClick},
      {"pw", CaptureKind::kPageInput},    {"waitpixel", CaptureKind::kPixelColour},
      {"waitimage", CaptureKind::kImage},
  };
  for (const auto& [argument, kind] : kinds) {
    ASSERT_TRUE(gui::MenuIdFor(Command::kCapture, argument)) << argument;
    EXPECT_EQ(gui::CaptureKindFor(argument), kind) << argument;
  }
  EXPECT_EQ(gui::CaptureKindFor("xx"), std::nullopt);
}

// A question box that, like the real one, lets timer ticks through while
// it waits for the answer.
class PumpingDialogs final : public DialogPort {
 public:
  MessageResult MessageBox(WindowHandle, std::string_view, std::string_view,
                           MessageStyle) override {
    ++asked;
    if (whileAsking) whileAsking();
    return MessageResult::kYes;
  }
  std::optional<std::string> InputBox(std::string_view, std::string_view,
                                      std::string_view) override {
    return std::nullopt;
  }
  std::function<void()> whileAsking;
  int asked = 0;
};

TEST(CaptureToolTest, TicksWhileTheQuestionIsUpAreDroppedNotNested) {
  sim::SimSystem sim;
  const Desktop d(sim);
  sim::SimCaptureView view;
  PumpingDialogs dialogs;
  std::string written;
  gui::CaptureTool tool({sim, sim, dialogs, view, [&](std::string_view t) { written += t; }});
  // The user clicks again while the box is up; the ticks of that click
  // must not ask a second time inside the first question.
  dialogs.whileAsking = [&] {
    sim.SetKeyDown(kVkLeftButton, false);
    tool.Tick();
    sim.SetKeyDown(kVkLeftButton, true);
    tool.Tick();
  };
  tool.Open(CaptureKind::kGetText);
  sim.SetCursorPos({150, 150});
  sim.SetKeyDown(kVkMenu, true);
  sim.SetKeyDown(kVkLeftButton, true);
  tool.Tick();
  EXPECT_EQ(dialogs.asked, 1);
  EXPECT_EQ(written, "GT KxForm*1,Edit*1\r\n");
}

class CaptureTest : public GuiFixture, public ::testing::Test {
 protected:
  static constexpr WindowHandle kMainWindow = 0x900;
  static constexpr WindowHandle kToolWindow = 0x901;

  void SetUp() override {
    controller.StartUp();
    controller.SetMainWindowHandle(kMainWindow);
    view.capture.handle = kToolWindow;
  }
  void Open(std::string_view argument) {
    controller.OnMenuCommand(MenuId(Command::kCapture, argument));
  }
  void Tick() { controller.OnTimer(Timer::kCapture); }
  void PointAt(Point p) {
    sim.SetCursorPos(p);
    Tick();
  }
  // Alt and the left button go down at the point, stay down for `ticks`
  // ticks and come up again.
  void AltClick(Point p, int ticks = 1) {
    PointAt(p);
    sim.SetKeyDown(kVkMenu, true);
    sim.SetKeyDown(kVkLeftButton, true);
    for (int i = 0; i < ticks; ++i) Tick();
    sim.SetKeyDown(kVkLeftButton, false);
    sim.SetKeyDown(kVkMenu, false);
    Tick();
  }
  void Press(int vk) {
    sim.SetKeyDown(vk, true);
    Tick();
    sim.SetKeyDown(vk, false);
    Tick();
  }

  Desktop d{sim};
  const Point inEdit1{150, 150};
  const Point inEdit2{150, 190};
  const Point inButton{150, 230};
  const Point inOk{650, 260};
};

TEST_F(CaptureTest, TheMenuItemOpensTheToolRunningAndSamplesOnTheTimer) {
  Open("st");
  EXPECT_TRUE(view.capture.open);
  EXPECT_EQ(view.capture.label, "Alt+左クリックで取得します(Escで停止)");
  EXPECT_EQ(view.timers[Timer::kCapture], gui::kCaptureIntervalMs);
  EXPECT_EQ(controller.capture().kind(), CaptureKind::kSetText);
  EXPECT_EQ(view.text, "");  // opening writes nothing

  PointAt(inEdit2);
  EXPECT_EQ(view.capture.fields,
            (gui::CaptureFields{"フォーム", "KxForm*1,Edit*2", "二つ目\r\n続き", "Edit",
                                std::to_string(d.edit2)}));
  PointAt(inOk);
  EXPECT_EQ(view.capture.fields.topCaption, "確認");
  EXPECT_EQ(view.capture.fields.child, "#32770+確認,Button*1");

  // Another item of the menu switches the open tool to its kind.
  Open("bc");
  EXPECT_EQ(view.capture.opened, 1);
  EXPECT_EQ(controller.capture().kind(), CaptureKind::kButtonClick);
}

TEST_F(CaptureTest, EveryKindWritesItsLineAtTheCaret) {
  const struct {
    std::string_view argument;
    Point point;
    std::string line;
  } cases[] = {
      {"w", inEdit1, "W KxForm,フォーム\r\n"},
      {"st", inEdit1, "ST 一つ目,,KxForm*1,Edit*1\r\n"},
      // A multi-line text keeps its first line: a script line has no break.
      {"st", inEdit2, "ST 二つ目,,KxForm*1,Edit*2\r\n"},
      {"ad", inEdit2, "AD ,,KxForm*1,Edit*2\r\n"},
      {"ad", inOk, "AD ,,#32770+確認,Button*1\r\n"},
      {"bc", inOk, "BC " + std::to_string(d.ok) + "\r\n"},
      // Client coordinates of the button (its client area starts at its
      // top-left corner here).
      {"cc", inButton, "CC 40,10,KxForm*1,Button*1\r\n"},
  };
  for (const auto& c : cases) {
    view.SetEditorText("前\r\n後");
    view.caret = std::string("前\r\n").size();  // the start of the second line
    Open(c.argument);
    AltClick(c.point);
    EXPECT_EQ(view.text, "前\r\n" + c.line + "後") << c.argument;
    controller.OnCaptureClosed();
  }
}

TEST_F(CaptureTest, AWindowWithoutAPathWritesNothingWhateverTheKind) {
  const Point inNameless{950, 150};
  sim.AddWindow({0, "", "名無し", {900, 100, 990, 200}});
  for (const char* kind : {"w", "gt", "st", "ad", "bc", "cc", "pw"}) {
    Open(kind);
    AltClick(inNameless);
    EXPECT_EQ(view.text, "") << kind;
    controller.OnCaptureClosed();
  }
  EXPECT_TRUE(sim.trace().OfKind("msgbox").empty());
}

TEST_F(CaptureTest, TheScreenKindsWriteWaitLinesAndSaveTheImageAroundThePointer) {
  PixelImage picture(200, 200);
  for (int y = 0; y < 200; ++y)
    for (int x = 0; x < 200; ++x)
      picture.At(x, y) = kAlphaMask | static_cast<Pixel>(x << 16 | y << 8 | (x ^ y));
  sim.ShowImage(picture, {100, 100});
  Open("waitpixel");
  EXPECT_FALSE(view.capture.imageSizeShown);
  AltClick(inEdit1);
  EXPECT_EQ(view.text, "WaitPixel 150,150,323200,0,10000\r\n");

  Open("waitimage");
  EXPECT_TRUE(view.capture.imageSizeShown);
  view.capture.imageSize = 16;
  AltClick(inEdit1);
  AltClick(inEdit2);
  EXPECT_EQ(view.text,
            "WaitPixel 150,150,323200,0,10000\r\nWaitImage 画像1.png,0,10000\r\n"
            "WaitImage 画像2.png,0,10000\r\n");
  // The square centred on the pointer, at the monitor's DPI.
  const auto saved = DecodeImage(*sim.ReadAll(sim.AppFolder() + "/Macro/画像1.png"));
  ASSERT_TRUE(saved);
  EXPECT_EQ(saved->dpi, 96);
  ASSERT_EQ(saved->image.width, 16);
  EXPECT_EQ(saved->image.At(0, 0), picture.At(42, 42));
  EXPECT_EQ(saved->image.At(15, 15), picture.At(57, 57));
}

TEST_F(CaptureTest, GetTextAsksForThePathOrThePoint) {
  Open("gt");
  sim.QueueMessageBoxAnswer(MessageResult::kYes);
  AltClick(inEdit2);
  EXPECT_EQ(LastFields("msgbox"), R"("title":"Kestrelix","text":"クラス→Yes\r\n位置→No")");
  sim.QueueMessageBoxAnswer(MessageResult::kNo);
  AltClick(inOk);
  EXPECT_EQ(view.text, "GT KxForm*1,Edit*2\r\nGT(650,260)\r\n");
}

TEST_F(CaptureTest, HoldingAltAndTheButtonWritesOneLinePerClick) {
  Open("ad");
  AltClick(inEdit1, 6);
  EXPECT_EQ(view.text, "AD ,,KxForm*1,Edit*1\r\n");
  // Alt held across two clicks: two presses of the button, two lines.
  sim.SetKeyDown(kVkMenu, true);
  for (int i = 0; i < 2; ++i) {
    sim.SetKeyDown(kVkLeftButton, true);
    Tick();
    Tick();
    sim.SetKeyDown(kVkLeftButton, false);
    Tick();
  }
  sim.SetKeyDown(kVkMenu, false);
  EXPECT_EQ(view.text, "AD ,,KxForm*1,Edit*1\r\nAD ,,KxForm*1,Edit*1\r\nAD ,,KxForm*1,Edit*1\r\n");
  // The button alone, or Alt alone, writes nothing.
  sim.SetKeyDown(kVkLeftButton, true);
  Tick();
  sim.SetKeyDown(kVkLeftButton, false);
  Press(kVkMenu);
  EXPECT_EQ(view.text, "AD ,,KxForm*1,Edit*1\r\nAD ,,KxForm*1,Edit*1\r\nAD ,,KxForm*1,Edit*1\r\n");
}

TEST_F(CaptureTest, EscStopsAndEnterResumes) {
  Open("ad");
  Press(kVkEscape);
  EXPECT_EQ(view.capture.label, "停止(Enterで再開)");
  EXPECT_FALSE(controller.capture().IsRunning());
  // Stopped: the display stays and clicks write nothing.
  PointAt(inEdit1);
  const auto before = view.capture.fields;
  AltClick(inEdit2);
  EXPECT_EQ(view.text, "");
  EXPECT_EQ(view.capture.fields, before);

  Press(kVkReturn);
  EXPECT_EQ(view.capture.label, "Alt+左クリックで取得します(Escで停止)");
  AltClick(inEdit2);
  EXPECT_EQ(view.text, "AD ,,KxForm*1,Edit*2\r\n");
}

TEST_F(CaptureTest, KeysAlreadyDownWhenTheToolOpensAreNotPresses) {
  // The Enter that chose the menu item, or a click still held.
  sim.SetKeyDown(kVkReturn, true);
  sim.SetKeyDown(kVkMenu, true);
  sim.SetKeyDown(kVkLeftButton, true);
  sim.SetCursorPos(inEdit1);
  Open("ad");
  Tick();
  EXPECT_EQ(view.text, "");
  EXPECT_TRUE(controller.capture().IsRunning());
}

TEST_F(CaptureTest, NothingIsWrittenWithoutAWindowOrAPath) {
  Open("ad");
  AltClick({5000, 5000});  // no window there
  EXPECT_EQ(view.text, "");
  // The page fields of kind 7: no reader yet, then a window without a page.
  Open("pw");
  AltClick(inEdit1);
  EXPECT_EQ(view.text, "");
  controller.SetPageFieldsReader([](WindowHandle) { return std::nullopt; });
  AltClick(inEdit1);
  EXPECT_EQ(view.text, "");
}

TEST_F(CaptureTest, PageInputWritesAWaitAndTheFieldsOfThePage) {
  WindowHandle asked = 0;
  controller.SetPageFieldsReader([&](WindowHandle w) -> std::optional<std::string> {
    asked = w;
    return "user=abc / pass=xyz";
  });
  Open("pw");
  AltClick(inEdit2);
  EXPECT_EQ(asked, d.edit2);
  EXPECT_EQ(view.text, "1000\r\nIP user=abc / pass=xyz,0,KxForm*1,Edit*2\r\n");
}

// Without a reader of its own the tool reads the simulated page of the
// window under the pointer.
TEST_F(CaptureTest, PageInputReadsThePageUnderThePointer) {
  sim.AddPage(d.edit2, sim::MakeSimPage({{{"INPUT", "text", "user", "abc", false}, 0},
                                         {{"INPUT", "hidden", "token", "t", false}, 0},
                                         {{"TEXTAREA", "", "memo", "a\r\nb", false}, 0}},
                                        1));
  Open("pw");
  AltClick(inEdit1);  // a window without a page writes nothing
  EXPECT_EQ(view.text, "");
  AltClick(inEdit2);
  EXPECT_EQ(view.text, "1000\r\nIP user=abc / memo=a\\nb,0,KxForm*1,Edit*2\r\n");
}

// A Chromium window's page is its browser's tab: the line names it by the
// "chrome" path, whatever windows the browser shows it in.
TEST_F(CaptureTest, PageInputOnAChromiumWindowWritesTheChromePath) {
  const auto frame =
      sim.AddWindow({0, "Chrome_WidgetWin_1", "ログイン - Chromium", {0, 600, 400, 900}});
  sim.AddWindow({0, "Chrome_RenderWidgetHostHWND", "", {10, 640, 390, 890}, {0, 0}, false, frame});
  sim.AddDevToolsPage(9222, sim::MakeSimPage({{{"INPUT", "text", "user", "山田 太郎", false}, 0},
                                              {{"INPUT", "password", "pass", "", false}, 0}},
                                             1));
  Open("pw");
  AltClick({200, 800});
  EXPECT_EQ(view.text, "1000\r\nIP user=山田 太郎 / pass=,0,chrome\r\n");
}

TEST_F(CaptureTest, TheToolAndTheMainWindowAreNeverTargets) {
  const auto tool = sim.AddWindow({kToolWindow, "KxCapture", "取得", {0, 0, 90, 90}});
  const auto label = sim.AddWindow({0, "Static", "ラベル", {10, 10, 80, 30}, {0, 0}, false, tool});
  sim.AddWindow({kMainWindow, "KxMain", "Kestrelix", {0, 800, 300, 900}});
  ASSERT_EQ(tool, kToolWindow);
  Open("bc");
  PointAt(inEdit1);
  const auto shown = view.capture.fields;
  AltClick({20, 20});   // the tool's label
  AltClick({50, 850});  // the main window
  EXPECT_EQ(view.text, "");
  EXPECT_EQ(view.capture.fields, shown);  // the last target stays on show
  (void)label;
}

TEST_F(CaptureTest, ClosingTheToolStopsItsTimer) {
  Open("w");
  controller.OnCaptureClosed();
  EXPECT_FALSE(view.capture.open);
  EXPECT_EQ(view.timers.count(Timer::kCapture), 0u);
  // A tick that was already queued does nothing.
  AltClick(inEdit1);
  EXPECT_EQ(view.text, "");
  // It opens again, and the shutdown closes it with its timer.
  Open("w");
  EXPECT_TRUE(view.capture.open);
  controller.RequestClose();
  EXPECT_FALSE(view.capture.open);
  EXPECT_EQ(view.timers.count(Timer::kCapture), 0u);
}

TEST_F(CaptureTest, WhileAMacroPlaysTheToolWatchesButWritesNothing) {
  Open("ad");
  view.SetEditorText("1000\r\nbeep");
  bool ran = false;
  DuringPlay(100, [&] {
    ran = true;
    // The items are refused: the tool keeps its kind.
    Open("bc");
    EXPECT_EQ(controller.capture().kind(), CaptureKind::kAddText);
    // The display follows the pointer; a click writes nothing into the
    // macro being played, and Esc still stops the tool.
    AltClick(inEdit2);
    EXPECT_EQ(view.capture.fields.child, "KxForm*1,Edit*2");
    Press(kVkEscape);
    EXPECT_FALSE(controller.capture().IsRunning());
  });
  controller.OnButton(gui::Button::kPlay);
  EXPECT_TRUE(ran);
  EXPECT_EQ(view.text, "1000\r\nbeep");
  // After the play the click that was made during it is not written late.
  Press(kVkReturn);
  Tick();
  EXPECT_EQ(view.text, "1000\r\nbeep");
}

}  // namespace
}  // namespace kx::test
