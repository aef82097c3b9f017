// Rapid fire from the main window: the menu items, the title, the editor as
// its status display, the timers, and the hotkeys while a mode is on.
#include <gtest/gtest.h>

#include "gui_fixture.h"

namespace kx::test {
namespace {

using gui::Command;
using gui::Timer;

class RapidFireMenuTest : public GuiFixture, public ::testing::Test {
 protected:
  void SetUp() override {
    WriteIni("Hits=80\r\n");
    controller.StartUp();
  }
  void Choose(Command command) { controller.OnMenuCommand(MenuId(command)); }
  bool Check(Command command) { return view.checks[MenuId(command)]; }
  std::size_t Clicks() { return sim.trace().OfKind("mouse").size(); }
};

TEST_F(RapidFireMenuTest, AModeChecksItsItemLocksTheEditorAndNamesItselfInTheTitle) {
  view.SetEditorText("beep");
  Choose(Command::kKeyRapid);
  EXPECT_TRUE(Check(Command::kKeyRapid));
  EXPECT_EQ(controller.rapidMode(), RapidMode::kKeyStartStop);
  EXPECT_EQ(view.caption, "Kestrelix - キー連打(Start/Stop)");
  EXPECT_TRUE(view.readOnly);
  EXPECT_EQ(view.text, "");
  EXPECT_EQ(view.timers.at(Timer::kRecorder), 50);  // the sampling timer watches the keys
  EXPECT_FALSE(view.timers.contains(Timer::kRapidFire));

  // Another mode unchecks the first one.
  Choose(Command::kMousePush);
  EXPECT_FALSE(Check(Command::kKeyRapid));
  EXPECT_TRUE(Check(Command::kMousePush));
  EXPECT_EQ(view.caption, "Kestrelix - マウス連打(Push)");
  EXPECT_EQ(view.timers.at(Timer::kRapidFire), 80);  // push mode runs at once, at Hits
  EXPECT_FALSE(view.timers.contains(Timer::kRecorder));

  Choose(Command::kMouseRapid);
  EXPECT_EQ(view.caption, "Kestrelix - マウス連打(Start/Stop)");
  EXPECT_FALSE(view.timers.contains(Timer::kRapidFire));

  // The same item again ends rapid fire and gives the editor its text back.
  Choose(Command::kMouseRapid);
  EXPECT_FALSE(Check(Command::kMouseRapid));
  EXPECT_EQ(controller.rapidMode(), RapidMode::kOff);
  EXPECT_EQ(view.caption, "Kestrelix");
  EXPECT_FALSE(view.readOnly);
  EXPECT_EQ(view.text, "beep");
  EXPECT_FALSE(view.timers.contains(Timer::kRecorder));
  EXPECT_FALSE(view.timers.contains(Timer::kRapidFire));
}

TEST_F(RapidFireMenuTest, TimerTicksDriveTheRepeatAndTheEditorShowsWhatRepeats) {
  Choose(Command::kMouseRapid);
  sim.SetKeyDown(18, true);
  sim.SetKeyDown(112, true);
  controller.OnTimer(Timer::kRecorder);
  EXPECT_EQ(view.text, "左クリック");
  EXPECT_EQ(view.timers.at(Timer::kRapidFire), 80);
  sim.SetKeyDown(18, false);
  sim.SetKeyDown(112, false);
  controller.OnTimer(Timer::kRapidFire);
  controller.OnTimer(Timer::kRapidFire);
  EXPECT_EQ(Clicks(), 2u);
}

TEST_F(RapidFireMenuTest, WhileAModeIsOnRecordDoesNothingAndPlayOrPauseStopTheRepeat) {
  view.SetEditorText("beep");
  Choose(Command::kMousePush);
  sim.SetKeyDown(18, true);
  sim.SetKeyDown(113, true);
  controller.OnTimer(Timer::kRapidFire);
  EXPECT_EQ(view.text, "中クリック");

  controller.OnHotkey(gui::kHotkeyRecord);
  EXPECT_NE(view.buttonCaptions[gui::Button::kRecord], "終了");
  EXPECT_TRUE(view.timers.contains(Timer::kRapidFire));

  controller.OnHotkey(kHotkeyPlay);
  EXPECT_FALSE(view.timers.contains(Timer::kRapidFire));
  EXPECT_EQ(view.text, "");
  EXPECT_TRUE(view.buttonEnabled.empty());  // no play started
  EXPECT_TRUE(sim.trace().OfKind("beep").empty());
  EXPECT_TRUE(Check(Command::kMousePush));  // the mode stays on

  Choose(Command::kMouseRapid);
  controller.OnTimer(Timer::kRecorder);  // Alt+F2 held: clicking starts
  EXPECT_TRUE(view.timers.contains(Timer::kRapidFire));
  controller.OnHotkey(kHotkeyPause);
  EXPECT_FALSE(view.timers.contains(Timer::kRapidFire));
  EXPECT_TRUE(view.buttonEnabled.empty());

  // Once rapid fire is off the hotkeys play again.
  Choose(Command::kMouseRapid);
  controller.OnHotkey(kHotkeyPlay);
  EXPECT_EQ(sim.trace().OfKind("beep").size(), 1u);
}

TEST_F(RapidFireMenuTest, ThePlayDoesNotUnlockTheEditorNorTakeTheMenuWhilePlaying) {
  view.SetEditorText("beep\r\n500\r\nbeep");
  DuringPlay(200, [&] { Choose(Command::kKeyRapid); });
  controller.OnButton(gui::Button::kPlay);
  EXPECT_EQ(controller.rapidMode(), RapidMode::kOff);  // refused during the play

  Choose(Command::kKeyRapid);
  controller.OnButton(gui::Button::kPlay);  // plays the (empty) status text
  EXPECT_TRUE(view.readOnly);
}

TEST_F(RapidFireMenuTest, ClosingEndsRapidFire) {
  Choose(Command::kMousePush);
  controller.RequestClose();
  EXPECT_TRUE(view.timers.empty());
}

}  // namespace
}  // namespace kx::test
