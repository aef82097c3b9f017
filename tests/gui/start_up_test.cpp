// Start-up and shutdown of the main window: what they read, register, show
// and write.
#include <gtest/gtest.h>

#include "gui_fixture.h"

namespace kx::test {
namespace {

using gui::Command;
using gui::ShowMode;
using gui::StartResult;
using gui::WindowState;

class StartUpTest : public GuiFixture, public ::testing::Test {};

TEST_F(StartUpTest, FreshStartShowsDefaultsAndCloseWritesTheFreshInstallKeysInOrder) {
  folders.Add("/kestrelix/Macro/b.ksx");
  folders.Add("/kestrelix/Macro/A.txt");
  folders.Add("/kestrelix/Macro/sub/c.ksx");
  ASSERT_EQ(controller.StartUp(), StartResult::kRunning);

  EXPECT_EQ(view.shown, ShowMode::kNormal);
  EXPECT_EQ(view.caption, "Kestrelix");
  EXPECT_EQ(hotkeys.registered,
            (std::map<int, std::pair<int, int>>{{256, {1, 122}}, {257, {0, 122}}, {258, {0, 19}}}));
  EXPECT_TRUE(Checked("Mouse"));
  EXPECT_TRUE(Checked("Move"));
  EXPECT_TRUE(Checked("TreeIcon"));
  EXPECT_FALSE(Checked("Trace"));
  EXPECT_TRUE(view.checks[*gui::SpeedMenuId(0)]);
  EXPECT_FALSE(view.checks[*gui::SpeedMenuId(1)]);
  EXPECT_EQ(view.split, 1335);
  EXPECT_EQ(view.loopCount, 1);
  EXPECT_EQ(view.fontSize, 9);
  EXPECT_EQ(view.editorMode, gui::EditorMode::kNumbersAndRuler);
  EXPECT_FALSE(view.tray);
  EXPECT_EQ(view.placement, (gui::PlacementTwips{0, 0, 5200, 6000}));
  // Folders first, then files, each sorted without regard to case.
  ASSERT_EQ(view.tree.size(), 3u);
  EXPECT_EQ(view.tree[0].name, "sub");
  EXPECT_EQ(view.tree[0].children.at(0).path, "sub/c.ksx");
  EXPECT_EQ(view.tree[1].name, "A.txt");
  EXPECT_EQ(view.tree[2].name, "b.ksx");
  EXPECT_TRUE(view.treeIcons);

  controller.RequestClose();
  EXPECT_TRUE(view.closed);
  EXPECT_TRUE(hotkeys.registered.empty());
  EXPECT_EQ(IniText(),
            "[Macro]\r\nBundle2=1\r\nMouse=-1\r\nMouCl=0\r\nMove=-1\r\nRecAct=0\r\nTime=0\r\n"
            "Stamp=0\r\nBalloon=0\r\nTray=0\r\nTreeIcon=-1\r\nLoop=0\r\nHide=0\r\nTrace=0\r\n"
            "Top=0\r\nSplit=1335\r\nWinState=0\r\nX=0\r\nY=0\r\nH=6000\r\nW=5200\r\nrate=0\r\n");
  // Shift, Ctrl and Alt go up on the way out.
  EXPECT_EQ(LastFields("keys"), R"("keys":[[16,"up"],[17,"up"],[18,"up"]])");
}

TEST_F(StartUpTest, SettingsWrittenByHandTakeEffect) {
  folders.Add("/kestrelix/start.ksx", "beep");
  WriteIni(
      "X=1000\r\nY=2000\r\nW=7000\r\nH=8000\r\nLoop=-1\r\nLoopCnt=7\r\nTop=-1\r\nTray=1\r\n"
      "TextMode=2\r\nFontSize=14\r\nDefMacro=/kestrelix/start.ksx\r\nrate=3\r\nTrace=-1\r\n"
      "Split=3000\r\nHotkeyStop=120\r\nWinState=1\r\n");
  ASSERT_EQ(controller.StartUp(), StartResult::kRunning);
  EXPECT_EQ(view.placement, (gui::PlacementTwips{1000, 2000, 7000, 8000}));
  EXPECT_EQ(view.state, WindowState::kNormal);  // a minimised exit comes back normal
  EXPECT_EQ(view.loopCount, 7);
  EXPECT_TRUE(view.topMost);
  EXPECT_TRUE(view.tray);
  EXPECT_EQ(view.editorMode, gui::EditorMode::kPlain);
  EXPECT_EQ(view.fontSize, 14);
  EXPECT_EQ(view.text, "beep");
  EXPECT_EQ(view.caption, "Kestrelix");  // the start-up macro is not the current file
  EXPECT_TRUE(view.checks[*gui::SpeedMenuId(3)]);
  EXPECT_EQ(controller.player().Options().speedFactor, 2);
  EXPECT_TRUE(controller.player().Options().trace);
  EXPECT_EQ(view.split, 3000);
  EXPECT_EQ(hotkeys.registered.at(259), (std::pair<int, int>{0, 120}));

  view.loopCount = 12;
  controller.RequestClose();
  const std::string ini = IniText();
  EXPECT_NE(ini.find("LoopCnt=12\r\n"), std::string::npos);
  // Keys already in the file keep their places.
  EXPECT_NE(ini.find("X=1000\r\nY=2000\r\nW=7000\r\nH=8000\r\n"), std::string::npos);
  EXPECT_NE(ini.find("Top=-1\r\n"), std::string::npos);
  EXPECT_FALSE(view.tray);
}

TEST_F(StartUpTest, TextModeOutsideItsRangeKeepsTheDesignedEditor) {
  WriteIni("TextMode=7\r\n");
  controller.StartUp();
  EXPECT_EQ(view.editorMode, gui::EditorMode::kNumbersAndRuler);
}

TEST_F(StartUpTest, MinimisedStartAndCloseLeavesTheStoredPlacement) {
  WriteIni("X=1001\r\nY=2002\r\nW=6003\r\nH=7004\r\n");
  sim.SetCommandLine("/M");
  controller.StartUp();
  EXPECT_EQ(view.shown, ShowMode::kMinimized);
  view.placement = {0, 0, 100, 100};  // wherever the minimised window is
  controller.RequestClose();
  const std::string ini = IniText();
  EXPECT_NE(ini.find("WinState=1\r\n"), std::string::npos);
  EXPECT_NE(ini.find("X=1001\r\nY=2002\r\nW=6003\r\nH=7004\r\n"), std::string::npos);
  EXPECT_EQ(ini.find("X=0"), std::string::npos);
}

TEST_F(StartUpTest, HiddenStartShowsNothing) {
  WriteIni("WinState=2\r\n");
  sim.SetCommandLine("/h");
  controller.StartUp();
  EXPECT_EQ(view.shown, ShowMode::kHidden);
  controller.OnHotkey(gui::kHotkeyShowHide);
  EXPECT_EQ(view.shown, ShowMode::kNormal);  // the first show: maximised, as stored
  EXPECT_TRUE(view.visible);
  controller.OnTrayClick();
  EXPECT_FALSE(view.visible);
  // The tray icon shows the window as the hotkey does: the editor gets the
  // focus, and the window keeps its state (a maximised one stays so).
  view.state = WindowState::kMaximized;
  controller.OnTrayClick();
  EXPECT_EQ(view.shown, ShowMode::kShown);
  EXPECT_EQ(view.editorFocused, 2);
  EXPECT_EQ(view.broughtToFront, 3);
}

TEST_F(StartUpTest, RecSwitchStartsRecordingAndSavesTheEditorAtShutdown) {
  WriteIni("Linkage=8\r\n");
  sim.SetCommandLine("/REC /m");
  controller.StartUp();
  EXPECT_TRUE(controller.autosaveRecording());
  EXPECT_EQ(view.buttonCaptions[gui::Button::kRecord], "終了");
  EXPECT_EQ(view.shown, ShowMode::kMinimized);
  view.text = "LCtrl Down";
  controller.RequestClose();
  const auto saved = sim.ReadAll("/kestrelix/Macro/Rec.ksx");
  ASSERT_TRUE(saved);
  EXPECT_EQ(std::string(saved->begin(), saved->end()), "\xEF\xBB\xBFLCtrl Down");
}

TEST_F(StartUpTest, TheSessionEndingWhileRecordingSavesTheRecordingAndTheSettings) {
  sim.SetCommandLine("/rec");
  controller.StartUp();
  view.text = "A";
  controller.OnSessionEnd();
  EXPECT_TRUE(view.closed);
  EXPECT_FALSE(controller.recording());
  EXPECT_TRUE(sim.IsFile("/kestrelix/Macro/Rec.txt"));
  EXPECT_NE(IniText().find("Mouse=-1\r\n"), std::string::npos);
  // A close after the session's runs the shutdown no second time.
  const std::size_t keyEvents = sim.trace().OfKind("keys").size();
  controller.RequestClose();
  EXPECT_EQ(sim.trace().OfKind("keys").size(), keyEvents);
}

TEST_F(StartUpTest, CommandLineMacroPlaysOnceAtNormalSpeedAndEndsWithoutWritingSettings) {
  // The loop count and the speed are applied later in the start-up than the
  // command-line run.
  WriteIni("Loop=-1\r\nLoopCnt=3\r\nrate=5\r\n");
  const std::string before = IniText();
  folders.Add("/kestrelix/m.ksx", "beep\r\n10\r\nbeep");
  sim.SetCommandLine("/kestrelix/m.ksx");
  EXPECT_EQ(controller.StartUp(), StartResult::kRanMacro);
  const auto beeps = sim.trace().OfKind("beep");
  ASSERT_EQ(beeps.size(), 2u);
  EXPECT_EQ(beeps[1].t - beeps[0].t, 10);
  EXPECT_FALSE(view.shown.has_value());
  EXPECT_EQ(IniText(), before);
  EXPECT_TRUE(hotkeys.registered.empty());
}

TEST_F(StartUpTest, SecondInstanceRaisesTheFirstAndEnds) {
  instance.running = true;
  EXPECT_EQ(controller.StartUp(), StartResult::kSecondInstance);
  EXPECT_EQ(instance.raised, 1);
  EXPECT_EQ(view.caption, "$");
  EXPECT_FALSE(view.shown.has_value());
  EXPECT_FALSE(sim.IsFile(kIni));
  EXPECT_TRUE(hotkeys.registered.empty());
}

TEST_F(StartUpTest, RefusedHotkeysAreNamedInTheStatusBar) {
  hotkeys.refuse = {257, 258};
  controller.StartUp();
  EXPECT_EQ(controller.refusedHotkeys(), (std::vector<int>{257, 258}));
  EXPECT_EQ(view.status,
            "登録できなかったホットキー: 記録、再生/停止 (他のプログラムが使用中です)");
}

TEST_F(StartUpTest, WithoutPerformanceCounterTimeRecordingIsDisabled) {
  sim.SetPerformanceCounter(false);
  WriteIni("Time=-1\r\n");
  controller.StartUp();
  const int time = MenuId(Command::kToggleOption, "Time");
  EXPECT_FALSE(view.menuEnabled.at(time));
  EXPECT_FALSE(view.checks[time]);
  EXPECT_EQ(view.status, "ハードウェアが高分解能パフォーマンスカウンタをサポートしていません");
}

TEST_F(StartUpTest, ObsoleteKeysGoAndTheOfferIsMarkedShownOnce) {
  WriteIni("Bundle=1\r\nBundle1=2\r\nBundle2=1\r\n");
  controller.StartUp();
  const std::string ini = IniText();
  EXPECT_EQ(ini.find("Bundle="), std::string::npos);
  EXPECT_EQ(ini.find("Bundle1="), std::string::npos);
  EXPECT_NE(ini.find("Bundle2=1"), std::string::npos);
}

TEST(SplitterTest, KeepsTheDefaultWidthOnBothSides) {
  EXPECT_EQ(gui::ClampSplit(100, 9000), 1335);
  EXPECT_EQ(gui::ClampSplit(4000, 9000), 4000);
  EXPECT_EQ(gui::ClampSplit(8000, 9000), 9000 - 1335);
}

}  // namespace
}  // namespace kx::test
