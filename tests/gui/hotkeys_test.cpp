// The global hotkeys: what is registered from the settings, and what each
// hotkey does when it arrives, idle and during a play.
#include <gtest/gtest.h>

#include <optional>

#include "gui_fixture.h"

namespace kx::test {
namespace {

using gui::ShowMode;
using gui::WindowState;

class HotkeysTest : public GuiFixture, public ::testing::Test {
 protected:
  void Start(const std::string& ini = "") {
    if (!ini.empty()) WriteIni(ini);
    controller.StartUp();
  }
  std::size_t Count(const std::string& kind) { return sim.trace().OfKind(kind).size(); }
};

TEST_F(HotkeysTest, FixedAndPerMacroHotkeysAreRegisteredAndEmptyEntriesCountForIds) {
  // Entries: "a", "", "b", "c": the ids count all four, the paths only three.
  Start(
      "HotkeyStop=120\r\n"
      "Hotkey=65|2|Ctrl + A|/m/a.ksx||||66|6|Shift + Ctrl + B|/m/b.ksx||67|0|C|/m/c.ksx\r\n");
  const std::map<int, std::pair<int, int>> expected = {
      {256, {1, 122}}, {257, {0, 122}}, {258, {0, 19}}, {259, {0, 120}},
      {512, {2, 65}},  {514, {6, 66}},  {515, {0, 67}}};
  EXPECT_EQ(hotkeys.registered, expected);
  EXPECT_TRUE(controller.refusedHotkeys().empty());

  folders.Add("/m/a.ksx", "beep");
  folders.Add("/m/b.ksx", "beep\r\nbeep");
  folders.Add("/m/c.ksx", "beep\r\nbeep\r\nbeep");
  controller.OnHotkey(512);
  EXPECT_EQ(Count("beep"), 1u);
  // 514 is the third position of the list but plays the third path, "c".
  controller.OnHotkey(514);
  EXPECT_EQ(Count("beep"), 4u);
  // 515 has no path of its own: nothing plays.
  controller.OnHotkey(515);
  EXPECT_EQ(Count("beep"), 4u);

  controller.RequestClose();
  EXPECT_TRUE(hotkeys.registered.empty());
}

TEST_F(HotkeysTest, ApplyingAgainReplacesEveryHotkeyAndRefusalsAreNamed) {
  hotkeys.refuse = {257, 513};
  Start("Hotkey=65|2|Ctrl + A|/m/a.ksx||66|2|Ctrl + B|/m/b.ksx\r\n");
  EXPECT_EQ(controller.refusedHotkeys(), (std::vector<int>{257, 513}));
  EXPECT_EQ(view.status, "登録できなかったホットキー: 記録、Ctrl + B (他のプログラムが使用中です)");
  EXPECT_FALSE(hotkeys.registered.contains(257));

  hotkeys.refuse.clear();
  hotkeys.registered.clear();  // stands for the other program letting go
  controller.ApplyHotkeys();
  EXPECT_TRUE(controller.refusedHotkeys().empty());
  EXPECT_EQ(hotkeys.registered.size(), 5u);  // 259 has no key
  EXPECT_EQ(view.status, "");
}

TEST_F(HotkeysTest, ShowHideHidesAVisibleWindowAndBringsBackAHiddenOrMinimisedOne) {
  Start();
  EXPECT_TRUE(view.visible);
  controller.OnHotkey(gui::kHotkeyShowHide);
  EXPECT_FALSE(view.visible);
  EXPECT_EQ(view.editorFocused, 0);
  EXPECT_EQ(view.broughtToFront, 1);

  controller.OnHotkey(gui::kHotkeyShowHide);
  EXPECT_EQ(view.shown, ShowMode::kShown);
  EXPECT_TRUE(view.visible);
  EXPECT_EQ(view.editorFocused, 1);
  EXPECT_EQ(view.broughtToFront, 2);

  // A minimised window counts as not visible and is restored.
  view.visible = false;
  view.state = WindowState::kMinimized;
  controller.OnHotkey(gui::kHotkeyShowHide);
  EXPECT_EQ(view.shown, ShowMode::kRestored);
  EXPECT_EQ(view.state, WindowState::kNormal);
  EXPECT_EQ(view.editorFocused, 2);
  EXPECT_EQ(view.broughtToFront, 3);
}

TEST_F(HotkeysTest, PerMacroHotkeyPlaysItsFileAndPutsTheEditorTextBack) {
  Start("Hotkey=65|2|Ctrl + A|/m/a.ksx||66|2|Ctrl + B|/m/gone.ksx\r\n");
  folders.Add("/m/a.ksx", "beep\r\n100\r\nbeep");
  view.SetEditorText("mine");
  std::string textDuringPlay;
  DuringPlay(150, [&] { textDuringPlay = view.text; });
  controller.OnHotkey(512);
  EXPECT_EQ(textDuringPlay, "beep\r\n100\r\nbeep");
  EXPECT_EQ(Count("beep"), 2u);
  EXPECT_EQ(view.text, "mine");
  EXPECT_FALSE(controller.playing());
  EXPECT_EQ(controller.currentPath(), "");

  // A missing file does nothing at all.
  const auto events = sim.trace().Events().size();
  controller.OnHotkey(513);
  EXPECT_EQ(sim.trace().Events().size(), events);
  EXPECT_EQ(view.text, "mine");
  controller.PlayMacroFileAsHotkey("/m/gone.ksx");
  EXPECT_EQ(sim.trace().Events().size(), events);
}

TEST(HotkeyRelease, AHotkeyPlayWaitsUntilItsModifiersAreLetGo) {
  constexpr int kScheduled = 0;  // a scheduled run of the same file: no hotkey
  struct Case {
    const char* ini;
    int hotkey;
    int releaseAtMs;  // -1: held on
    int startsAtMs;
  };
  // The first case gives the play's own time to its first key; the others
  // count from there.
  const Case cases[] = {
      {"", kScheduled, 300, 0},
      {"", 512, 300, 300},  // Ctrl+Shift+1 held 300 ms
      {"", 512, -1, 1000},  // held on: at most a second
      {"HotkeyReleaseMs=0\r\n", 512, 300, 0},
      {"", kHotkeyPlay, 300, 300},  // the Play hotkey Ctrl+P
  };
  std::optional<std::int64_t> playStartMs;
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << c.ini << c.hotkey << " " << c.releaseAtMs);
    GuiFixture f;
    f.WriteIni(std::string(c.ini) +
               "HotkeyPlayMod=2\r\nHotkeyPlay=80\r\nHotkey=49|6|Shift + Ctrl + 1|/m/abc.ksx\r\n");
    f.controller.StartUp();
    f.folders.Add("/m/abc.ksx", "key abc");
    f.view.SetEditorText("key abc");
    const std::int64_t start = f.sim.NowMs();
    f.sim.SetKeyDown(16, true);
    f.sim.SetKeyDown(17, true);
    if (c.releaseAtMs >= 0)
      f.DuringPlay(start + c.releaseAtMs, [&] {
        f.sim.SetKeyDown(16, false);
        f.sim.SetKeyDown(17, false);
      });
    // The held hotkey repeats meanwhile: the repeats start nothing.
    if (c.hotkey != kScheduled) f.sim.ScheduleHotkey(start + 100, c.hotkey);
    if (c.hotkey == kScheduled)
      f.controller.PlayMacroFileAsHotkey("/m/abc.ksx");
    else
      f.controller.OnHotkey(c.hotkey);
    const auto keys = f.sim.trace().OfKind("keys");
    ASSERT_EQ(keys.size(), 3u);
    if (!playStartMs) playStartMs = keys.front().t - start;
    EXPECT_NEAR(static_cast<double>(keys.front().t - start - *playStartMs), c.startsAtMs, 2);
  }
}

TEST_F(HotkeysTest, DuringAPlayThePlayAndPerMacroHotkeysStopIt) {
  Start("Hotkey=65|2|Ctrl + A|/m/a.ksx\r\n");
  folders.Add("/m/a.ksx", "beep\r\nbeep");
  view.SetEditorText("beep\r\n60000\r\nbeep");
  DuringPlay(200, [&] { controller.OnHotkey(512); });
  controller.OnHotkey(kHotkeyPlay);
  // The per-macro hotkey acted as the play hotkey: the running play stopped
  // at once, and the editor holds its own text again.
  EXPECT_EQ(Count("beep"), 1u);
  EXPECT_LT(sim.NowMs(), 1000);
  EXPECT_EQ(view.text, "beep\r\n60000\r\nbeep");
  EXPECT_EQ(view.selectedLine, -1);  // stopped, not paused

  // The record hotkey is refused during a play.
  DuringPlay(sim.NowMs() + 200, [&] {
    controller.OnHotkey(gui::kHotkeyRecord);
    controller.OnHotkey(kHotkeyPlay);
  });
  controller.OnHotkey(kHotkeyPlay);
  EXPECT_NE(view.buttonCaptions[gui::Button::kRecord], "終了");
}

TEST_F(HotkeysTest, LockIgnoresThePlayPauseAndPerMacroHotkeysUntilThePlayEnds) {
  Start("Hotkey=65|2|Ctrl + A|/m/a.ksx\r\n");
  folders.Add("/m/a.ksx", "beep\r\nbeep\r\nbeep");
  view.SetEditorText("lock\r\n1000\r\nbeep");
  DuringPlay(200, [&] {
    controller.OnHotkey(kHotkeyPlay);
    controller.OnHotkey(kHotkeyPause);
    controller.OnHotkey(512);
    EXPECT_EQ(view.text, "lock\r\n1000\r\nbeep");
  });
  controller.OnButton(gui::Button::kPlay);
  EXPECT_EQ(Count("beep"), 1u);  // the play ran to its end
  EXPECT_GE(sim.NowMs(), 1000);
  EXPECT_FALSE(controller.player().HotkeysLocked());
  controller.OnHotkey(512);  // the lock ended with the play
  EXPECT_EQ(Count("beep"), 4u);
}

}  // namespace
}  // namespace kx::test
