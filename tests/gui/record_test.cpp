// Recording through the main window: the record button, its timers and
// hooks, what reaches the editor, and how recording and playing exclude
// each other.
#include <gtest/gtest.h>

#include "gui_fixture.h"

namespace kx::test {
namespace {

using gui::Button;
using gui::Command;
using gui::Timer;

constexpr WindowHandle kMainWindow = 500;
constexpr int kA = 65;

class RecordTest : public GuiFixture, public ::testing::Test {
 protected:
  RecordTest() {
    controller.SetMainWindowHandle(kMainWindow);
    sim.AddWindow({kMainWindow, "KestrelixMain", "Kestrelix"});
    target = sim.AddWindow({0, "KxTarget", "target", {100, 50, 500, 450}, {8, 31}});
  }
  void Start(const std::string& ini = "") {
    if (!ini.empty()) WriteIni(ini);
    ASSERT_EQ(controller.StartUp(), gui::StartResult::kRunning);
    sim.SetForegroundWindow(target);
  }
  // One sampling tick with `vk` held (0: none), as the timer would give it.
  void Sample(int vk) {
    for (int k : {kA, 162, 67, 1}) sim.SetKeyDown(k, k == vk);
    sim.Sleep(50);
    controller.OnTimer(Timer::kRecorder);
  }
  WindowHandle target = 0;
};

TEST_F(RecordTest, TheRecordButtonRunsTheRecorderAndStopsIt) {
  Start();
  view.SetEditorText("old\r\n");
  const std::int64_t started = sim.NowMs();
  controller.OnButton(Button::kRecord);
  EXPECT_TRUE(controller.recording());
  EXPECT_EQ(view.buttonCaptions[Button::kRecord], "終了");
  EXPECT_EQ(view.timers, (std::map<Timer, int>{{Timer::kRecorder, 50}, {Timer::kWindow, 250}}));
  // The hooks come 200 ms after the start, mouse first.
  ASSERT_EQ(recorderHooks.changes.size(), 2u);
  EXPECT_EQ(recorderHooks.changes[0].what, "install mouse");
  EXPECT_EQ(recorderHooks.changes[1].what, "install keyboard");
  EXPECT_EQ(recorderHooks.changes[0].atMs - started, 200);

  Sample(162);
  Sample(67);
  Sample(0);
  recorderHooks.MoveMouse({300, 200});
  recorderHooks.TurnWheel(-120);
  Sample(1);
  Sample(0);
  sim.SetCursorPos({640, 480});
  controller.OnTimer(Timer::kWindow);
  EXPECT_EQ(view.status, "640x480");
  EXPECT_EQ(view.text,
            "old\r\nLCtrl Down\r\nC\r\nLCtrl Up\r\nMousePos(300,200)\r\nWheel -120\r\n"
            "LMouse Down (300,200)\r\nLMouse Up (300,200)\r\n");
  EXPECT_EQ(view.caret, view.text.size());

  controller.OnButton(Button::kRecord);
  EXPECT_FALSE(controller.recording());
  EXPECT_EQ(view.buttonCaptions[Button::kRecord], "記録");
  // The window timer goes on showing the pointer; the recorder's is off.
  sim.SetCursorPos({10, 20});
  controller.OnTimer(Timer::kWindow);
  EXPECT_EQ(view.status, "10x20");
  EXPECT_EQ(view.timers.count(Timer::kRecorder), 0u);
  ASSERT_EQ(recorderHooks.changes.size(), 4u);
  EXPECT_EQ(recorderHooks.changes[2].what, "remove mouse");
  EXPECT_EQ(recorderHooks.changes[3].what, "remove keyboard");
  // A tick already queued when the timer stopped writes nothing.
  const std::string recorded = view.text;
  Sample(kA);
  controller.OnTimer(Timer::kWindow);
  recorderHooks.TurnWheel(120);
  EXPECT_EQ(view.text, recorded);
}

TEST_F(RecordTest, AStoppedRecordingEndsWithTheReleasesItOwes) {
  Start();
  controller.OnHotkey(gui::kHotkeyRecord);
  sim.SetCursorPos({300, 200});
  Sample(162);
  sim.SetKeyDown(162, true);
  sim.SetKeyDown(1, true);
  sim.Sleep(50);
  controller.OnTimer(Timer::kRecorder);
  controller.OnHotkey(gui::kHotkeyRecord);
  EXPECT_EQ(view.text,
            "LCtrl Down\r\nLMouse Down (300,200)\r\nLMouse Up (300,200)\r\nLCtrl Up\r\n");
  // A new recording owes nothing of the last one.
  controller.OnHotkey(gui::kHotkeyRecord);
  controller.OnHotkey(gui::kHotkeyRecord);
  EXPECT_EQ(view.text,
            "LCtrl Down\r\nLMouse Down (300,200)\r\nLMouse Up (300,200)\r\nLCtrl Up\r\n");
}

TEST_F(RecordTest, OptionsComeFromTheSettingsAndTheirMenuChecks) {
  Start("MouCl=-1\r\nRecAct=-1\r\nTime=-1\r\n");
  controller.OnMenuCommand(MenuId(Command::kRecord));
  ASSERT_TRUE(controller.recording());
  controller.OnTimer(Timer::kWindow);
  sim.SetCursorPos({300, 200});
  Sample(1);
  // Switched off during the recording: from the next tick on.
  controller.OnMenuCommand(MenuId(Command::kToggleOption, "Time"));
  Sample(0);
  // The first wait counts from the start, 200 ms of it before the hooks.
  EXPECT_EQ(view.text,
            "W KxTarget,target\r\n250\r\nLMouCl Down (192,119)\r\nLMouCl Up (192,119)\r\n");
}

TEST_F(RecordTest, HideHidesTheEditorWhileRecording) {
  Start("Hide=-1\r\nTextMode=1\r\n");
  EXPECT_EQ(view.editorMode, gui::EditorMode::kNumbers);
  controller.OnHotkey(gui::kHotkeyRecord);
  EXPECT_EQ(view.editorMode, gui::EditorMode::kHidden);
  // Switching Hide off meanwhile still brings the editor back.
  controller.OnMenuCommand(MenuId(Command::kToggleOption, "Hide"));
  controller.OnHotkey(gui::kHotkeyRecord);
  EXPECT_EQ(view.editorMode, gui::EditorMode::kNumbers);
}

TEST_F(RecordTest, RecordingIsRefusedDuringAPlayAndAPlayEndsARecording) {
  Start();
  view.SetEditorText("beep\r\n1000\r\nbeep");
  DuringPlay(100, [&] {
    controller.OnButton(Button::kRecord);
    controller.OnMenuCommand(MenuId(Command::kRecord));
    controller.OnHotkey(gui::kHotkeyRecord);
    EXPECT_FALSE(controller.recording());
    EXPECT_EQ(view.timers.count(Timer::kRecorder), 0u);
  });
  controller.OnButton(Button::kPlay);
  EXPECT_FALSE(recorderHooks.Installed());
  EXPECT_EQ(sim.trace().OfKind("beep").size(), 2u);

  // Play button and Play hotkey during a recording: the recording ends,
  // then the macro plays (its keys are not recorded).
  for (const bool byHotkey : {false, true}) {
    controller.OnButton(Button::kRecord);
    ASSERT_TRUE(controller.recording());
    DuringPlay(sim.NowMs() + 100, [&] {
      EXPECT_FALSE(controller.recording());
      EXPECT_FALSE(recorderHooks.Installed());
      EXPECT_EQ(view.buttonCaptions[Button::kRecord], "記録");
    });
    if (byHotkey)
      controller.OnHotkey(kHotkeyPlay);
    else
      controller.OnButton(Button::kPlay);
    EXPECT_FALSE(controller.recording());
  }
  EXPECT_EQ(sim.trace().OfKind("beep").size(), 6u);
}

TEST_F(RecordTest, PreciseRecWritesEveryHookEdgeInOrderAndTheStoppingHotkeyIsNotOne) {
  Start("PreciseRec=-1\r\nMove=0\r\n");
  EXPECT_TRUE(Checked("PreciseRec"));
  controller.OnHotkey(gui::kHotkeyRecord);
  // Typed within a few milliseconds of each other, a 5 ms click between:
  // nothing reaches the editor before the sampling timer's tick.
  for (const int vk : {kA, 66}) {
    recorderHooks.Press(vk, true);
    sim.Sleep(3);
  }
  recorderHooks.Press(kA, false);
  recorderHooks.Press(66, false);
  sim.SetCursorPos({300, 200});
  recorderHooks.Press(1, true);
  sim.Sleep(5);
  recorderHooks.Press(1, false);
  EXPECT_EQ(view.text, "");
  controller.OnTimer(Timer::kRecorder);
  EXPECT_EQ(view.text, "A\r\nB\r\nLMouse Down (300,200)\r\nLMouse Up (300,200)\r\n");
  // A key typed just before F11 ends the recording; F11 itself does not.
  recorderHooks.Press(67, true);
  recorderHooks.Key(122, kMsgKeyDown);
  controller.OnHotkey(gui::kHotkeyRecord);
  EXPECT_FALSE(controller.recording());
  EXPECT_EQ(view.text, "A\r\nB\r\nLMouse Down (300,200)\r\nLMouse Up (300,200)\r\nC\r\n");
  EXPECT_EQ(view.status, "");
}

TEST_F(RecordTest, SamplingSaysHowManyPressesItLostAndPreciseRecFallsBackWithoutHooks) {
  Start();
  controller.OnHotkey(gui::kHotkeyRecord);
  for (const int vk : {kA, 66, kA}) {
    recorderHooks.Press(vk, true);
    recorderHooks.Press(vk, false);
  }
  Sample(kA);
  controller.OnHotkey(gui::kHotkeyRecord);
  EXPECT_EQ(view.text, "A\r\n");
  EXPECT_EQ(view.status, "2 個のキー操作を記録できませんでした (高精度記録(&P) で記録できます)");

  // Switched on from the menu: written to the file at once.
  controller.OnMenuCommand(MenuId(Command::kToggleOption, "PreciseRec"));
  EXPECT_NE(IniText().find("PreciseRec=-1"), std::string::npos);
  view.SetEditorText("");
  recorderHooks.refuse = true;
  controller.OnHotkey(gui::kHotkeyRecord);
  EXPECT_EQ(view.status, "高精度記録に必要なフックを使えないため、通常の方法で記録しています");
  Sample(kA);
  EXPECT_EQ(view.text, "A\r\n");
}

TEST_F(RecordTest, RecSwitchRecordsAndShutdownRemovesTheHooksAndSavesTheText) {
  for (const auto& [linkage, file] : {std::pair{"8", "Rec.ksx"}, std::pair{"9", "Rec.txt"}}) {
    SCOPED_TRACE(file);
    GuiFixture f;
    f.WriteIni(std::string("Linkage=") + linkage + "\r\n");
    f.sim.SetCommandLine("/rec");
    f.controller.StartUp();
    ASSERT_TRUE(f.controller.recording());
    ASSERT_TRUE(f.recorderHooks.Installed());
    f.sim.SetKeyDown(kA, true);
    f.controller.OnTimer(Timer::kRecorder);
    f.controller.RequestClose();
    EXPECT_FALSE(f.recorderHooks.Installed());
    EXPECT_TRUE(f.view.timers.empty());
    const auto saved = f.sim.ReadAll(std::string("/kestrelix/Macro/") + file);
    ASSERT_TRUE(saved);
    EXPECT_EQ(std::string(saved->begin(), saved->end()),
              "\xEF\xBB\xBF"
              "A\r\n");
  }
  // Without "/rec" nothing is saved, recording or not.
  Start();
  controller.OnButton(Button::kRecord);
  controller.RequestClose();
  EXPECT_FALSE(sim.ReadAll("/kestrelix/Macro/Rec.txt"));
}

}  // namespace
}  // namespace kx::test
