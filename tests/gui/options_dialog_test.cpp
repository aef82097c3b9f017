// The options dialog as the main window uses it: opening, confirming,
// cancelling, what it does during a play, and the scheduled runs it edits.
#include <gtest/gtest.h>

#include "gui/schedule.h"
#include "gui_fixture.h"

namespace kx::test {
namespace {

using gui::Command;
using gui::EditorMode;
using gui::OptionsDialog;
using gui::Timer;

class OptionsTest : public GuiFixture, public ::testing::Test {
 protected:
  void Start(const std::string& ini = "") {
    if (!ini.empty()) WriteIni(ini);
    controller.StartUp();
  }
  void OpenOptions(std::function<void(OptionsDialog&)> script) {
    view.optionsScript = std::move(script);
    controller.OnMenuCommand(MenuId(Command::kOptionsDialog));
  }
  // 800 ms ticks of the schedule timer for `seconds` of virtual time.
  void Ticks(int seconds) {
    for (int t = 0; t < seconds * 1000 / gui::kScheduleTickMs; ++t) {
      sim.Sleep(gui::kScheduleTickMs);
      if (view.timers.contains(Timer::kSchedule)) controller.OnTimer(Timer::kSchedule);
    }
  }
  std::size_t Count(const std::string& kind) { return sim.trace().OfKind(kind).size(); }
};

TEST_F(OptionsTest, ConfirmWritesReRegistersAndTheEditorFollowsAtOnce) {
  Start("FontSize=9\r\nTextMode=0\r\n");
  OpenOptions([&](OptionsDialog& dialog) {
    EXPECT_EQ(dialog.values.play, (gui::HotkeyChoice{19, 0}));
    dialog.values.play = {119, 0};  // F8
    dialog.values.fontSize = 16;
    dialog.values.displayMode = 2;
    dialog.Confirm();  // 適用: the dialog stays open
    EXPECT_EQ(hotkeys.registered.at(kHotkeyPlay), std::make_pair(0, 119));
    EXPECT_EQ(view.fontSize, 16);
    EXPECT_EQ(view.editorMode, EditorMode::kPlain);
    dialog.values.editorShown = false;
    dialog.Confirm();  // OK
  });
  EXPECT_EQ(view.optionsShown, 1);
  EXPECT_EQ(view.editorMode, EditorMode::kHidden);
  EXPECT_NE(IniText().find("HotkeyPlay=119"), std::string::npos);
  EXPECT_NE(IniText().find("TextMode=3"), std::string::npos);
  EXPECT_EQ(controller.settings().hotkeyPlay, 119);

  // The new key plays.
  view.SetEditorText("beep");
  controller.OnHotkey(kHotkeyPlay);
  EXPECT_EQ(Count("beep"), 1u);
}

TEST_F(OptionsTest, TheDialogReadsTheFileWhenItOpens) {
  Start("HotkeyPlay=19\r\nHits=100\r\n");
  // Edited with a text editor while the program runs.
  WriteIni("HotkeyPlay=120\r\nHits=250\r\n");
  OpenOptions([&](OptionsDialog& dialog) {
    EXPECT_EQ(dialog.values.play, (gui::HotkeyChoice{120, 0}));
    EXPECT_EQ(dialog.values.hits, "250");
    dialog.Confirm();
  });
  EXPECT_NE(IniText().find("HotkeyPlay=120"), std::string::npos);
  EXPECT_NE(IniText().find("Hits=250"), std::string::npos);
  EXPECT_EQ(hotkeys.registered.at(kHotkeyPlay), std::make_pair(0, 120));
}

TEST_F(OptionsTest, CancelLeavesTheSettingsFileByteForByte) {
  Start("HotkeyPlay=19\r\nAuto=毎日,9:00:00,/m/a.ksx\r\nHits=abc\r\n");
  const auto before = sim.ReadAll(kIni);
  const auto registered = hotkeys.registered;
  OpenOptions([&](OptionsDialog& dialog) {
    dialog.values.play = {119, 0};
    dialog.AddSchedule(1, "0:00:05", "/m/b.ksx");
    dialog.values.fontSize = 24;
    // キャンセル: the dialog closes without a confirm.
  });
  EXPECT_EQ(sim.ReadAll(kIni), before);
  EXPECT_EQ(hotkeys.registered, registered);
  EXPECT_EQ(view.fontSize, 9);
}

TEST_F(OptionsTest, TheDialogDoesNotOpenDuringAPlay) {
  Start();
  view.SetEditorText("beep\r\n500\r\nbeep");
  DuringPlay(100, [&] {
    OpenOptions([](OptionsDialog& dialog) { dialog.Confirm(); });
    EXPECT_FALSE(view.menuEnabled[MenuId(Command::kOptionsDialog)]);
  });
  controller.OnButton(gui::Button::kPlay);
  EXPECT_EQ(view.optionsShown, 0);
  EXPECT_EQ(Count("beep"), 2u);
  OpenOptions(nullptr);
  EXPECT_EQ(view.optionsShown, 1);
}

TEST_F(OptionsTest, AssociationLinkageIsStoredOnConfirm) {
  Start();
  OpenOptions([&](OptionsDialog& dialog) {
    dialog.Associate();
    EXPECT_EQ(sim.ClassKeys().at("ksx_auto_file\\Shell\\open\\command"),
              "/kestrelix/Kestrelix.exe \"%1\"");
    EXPECT_EQ(controller.settings().linkage, 9);  // not before the confirm
    dialog.Confirm();
  });
  EXPECT_EQ(controller.settings().linkage, 8);
  EXPECT_NE(IniText().find("Linkage=8"), std::string::npos);
  OpenOptions([&](OptionsDialog& dialog) {
    EXPECT_FALSE(dialog.AssociateEnabled());
    dialog.RemoveAssociation();
    dialog.Confirm();
  });
  EXPECT_TRUE(sim.ClassKeys().empty());
  EXPECT_NE(IniText().find("Linkage=9"), std::string::npos);
}

TEST_F(OptionsTest, TheScheduleTimerRunsOnlyWithRecords) {
  Start();
  EXPECT_FALSE(view.timers.contains(Timer::kSchedule));
  OpenOptions([&](OptionsDialog& dialog) {
    dialog.AddSchedule(2, "0:00:04", "/m/a.ksx");
    dialog.Confirm();
  });
  EXPECT_EQ(view.timers.at(Timer::kSchedule), 800);
  EXPECT_NE(IniText().find("Auto=インターバル,0:00:04,/m/a.ksx"), std::string::npos);
  OpenOptions([&](OptionsDialog& dialog) {
    dialog.DeleteSchedule(0);
    dialog.Confirm();
  });
  EXPECT_FALSE(view.timers.contains(Timer::kSchedule));
  Start();  // not again, but the shutdown stops it in any case
  controller.RequestClose();
  EXPECT_FALSE(view.timers.contains(Timer::kSchedule));
}

TEST_F(OptionsTest, ScheduledRunsPlayTheirFileAndGiveTheEditorItsTextBack) {
  folders.Add("/m/every.ksx", "beep");
  folders.Add("/m/once.ksx", "a");
  Start(
      "Auto=インターバル,0:00:04,/m/every.ksx|起動後,0:00:05,/m/once.ksx|"
      "インターバル,0:00:01,/m/missing.ksx|停止,0:00:01,/m/every.ksx\r\n");
  view.SetEditorText("my text");
  Ticks(13);
  EXPECT_EQ(Count("beep"), 3u);  // at 4, 8 and 12 s
  EXPECT_EQ(Count("keys"), 1u);  // once, at 5 s
  EXPECT_EQ(view.text, "my text");
  EXPECT_EQ(controller.currentPath(), "");

  // Confirming the dialog restarts the interval counting.
  OpenOptions([](OptionsDialog& dialog) { dialog.Confirm(); });
  Ticks(3);
  EXPECT_EQ(Count("beep"), 3u);
  Ticks(2);
  EXPECT_EQ(Count("beep"), 4u);
}

TEST_F(OptionsTest, ARunFallingInsideAnotherPlayIsLost) {
  folders.Add("/m/after.ksx", "beep");
  Start("Auto=起動後,0:00:02,/m/after.ksx\r\n");
  view.SetEditorText("a\r\n3000\r\na");
  // The schedule timer keeps ticking during the play's pumps.
  for (int t = 1; t <= 4; ++t) DuringPlay(t * 800, [&] { controller.OnTimer(Timer::kSchedule); });
  controller.OnButton(gui::Button::kPlay);
  EXPECT_EQ(Count("keys"), 2u);
  Ticks(5);
  EXPECT_EQ(Count("beep"), 0u);
}

}  // namespace
}  // namespace kx::test
