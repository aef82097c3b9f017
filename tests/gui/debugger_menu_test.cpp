// The debugger from the main window: F9 on the caret's line, a play that
// pauses there, F10 and F5, the watch, and what ends a paused play.
#include <gtest/gtest.h>

#include "gui_fixture.h"
#include "settings/settings_lists.h"

namespace kx::test {
namespace {

using gui::Button;
using gui::Command;

class DebuggerMenuTest : public GuiFixture, public ::testing::Test {
 protected:
  void Start(const std::string& ini = "") {
    if (!ini.empty()) WriteIni(ini);
    controller.StartUp();
  }
  void Choose(gui::Command command) { controller.OnMenuCommand(MenuId(command)); }
  // The caret on line `index` of the editor's text.
  void CaretOn(int index) {
    std::size_t at = 0;
    for (int i = 0; i < index; ++i) at = view.text.find('\n', at) + 1;
    view.caret = at;
    view.selection.reset();
  }
  std::vector<std::string> Keys() {
    std::vector<std::string> out;
    for (const auto& e : sim.trace().OfKind("keys")) out.push_back(e.fields.dump());
    return out;
  }
  static std::string Press(int vk) {
    return "{\"keys\":[[" + std::to_string(vk) + ",\"down\"],[" + std::to_string(vk) + ",\"up\"]]}";
  }
};

TEST_F(DebuggerMenuTest, F9PausesThePlayF10RunsOneLineF5TheRest) {
  Start();
  view.text = "a\r\nb\r\nc\r\nd";
  CaretOn(2);
  Choose(Command::kToggleBreakpoint);
  EXPECT_EQ(view.breakpoints, std::set<int>{2});

  controller.OnButton(Button::kPlay);
  EXPECT_EQ(Keys(), (std::vector<std::string>{Press(65), Press(66)}));
  EXPECT_EQ(view.status, "ブレークポイントで一時停止: 3 行目 (F5 続行 / F10 ステップ実行)");
  EXPECT_EQ(view.highlighted, 2) << "shown with Trace off";
  EXPECT_TRUE(view.readOnly);
  controller.OnTimer(gui::Timer::kWindow);
  EXPECT_EQ(view.status.substr(0, 12), "ブレーク") << "the pointer position waits";

  Choose(Command::kStep);
  EXPECT_EQ(Keys().size(), 3u);
  EXPECT_EQ(view.status, "ブレークポイントで一時停止: 4 行目 (F5 続行 / F10 ステップ実行)");
  Choose(Command::kContinue);
  EXPECT_EQ(Keys().size(), 4u);
  EXPECT_FALSE(controller.debugger().Paused());
  EXPECT_FALSE(view.readOnly);
}

TEST_F(DebuggerMenuTest, ThePlayButtonAndThePlayHotkeyStopAPausedPlay) {
  Start();
  for (const bool byHotkey : {false, true}) {
    view.text = "a\r\nb\r\nc";
    CaretOn(1);
    Choose(Command::kClearBreakpoints);
    Choose(Command::kToggleBreakpoint);
    sim.trace().Clear();
    controller.OnButton(Button::kPlay);
    ASSERT_TRUE(controller.debugger().Paused());
    if (byHotkey)
      controller.OnHotkey(kHotkeyPlay);
    else
      controller.OnButton(Button::kPlay);
    EXPECT_FALSE(controller.debugger().Paused());
    EXPECT_FALSE(controller.playing());
    EXPECT_EQ(Keys().size(), 1u) << "nothing more runs";
    EXPECT_EQ(controller.player().CurrentLine(), 0);
    EXPECT_EQ(view.status, "");
  }
}

TEST_F(DebuggerMenuTest, F10FromIdlePausesOnTheFirstLineAndCtrlF10RunsToTheCaret) {
  Start();
  view.text = "a\r\nb\r\nc\r\nd";
  Choose(Command::kStep);
  EXPECT_TRUE(Keys().empty());
  EXPECT_EQ(view.highlighted, 0);
  CaretOn(3);
  Choose(Command::kRunToCursor);
  EXPECT_EQ(Keys().size(), 3u);
  EXPECT_EQ(view.highlighted, 3);
}

TEST_F(DebuggerMenuTest, TheWatchListsTheVariablesAtThePauseAndKeepsItsPlace) {
  Start();
  view.text = "#a = 2+3\r\nbeep\r\nbeep";
  CaretOn(1);
  Choose(Command::kToggleBreakpoint);
  Choose(Command::kWatch);
  EXPECT_TRUE(view.watch.open);
  EXPECT_EQ(view.watch.placement.width, 0) << "never placed: beside the main window";
  controller.OnButton(Button::kPlay);
  ASSERT_FALSE(view.watch.rows.empty());
  EXPECT_EQ(view.watch.rows[0], (WatchRow{"#a", "5"}));

  view.watch.placement = {1500, 750, 4000, 4500};
  controller.RequestClose();
  EXPECT_NE(IniText().find("WatchX=1500\r\nWatchY=750\r\nWatchW=4000\r\nWatchH=4500"),
            std::string::npos)
      << IniText();
}

TEST_F(DebuggerMenuTest, BreakpointsFollowEditsAndGoWithALoadOrAClear) {
  Start();
  view.text = "a\r\nb\r\nc";
  CaretOn(2);
  Choose(Command::kToggleBreakpoint);
  view.caret = 0;
  view.InsertAtCaret("x\r\n");
  controller.OnEditorChanged();
  EXPECT_EQ(view.breakpoints, std::set<int>{3});
  controller.OnGutterClick(0);
  EXPECT_EQ(view.breakpoints, (std::set<int>{0, 3}));
  controller.OnButton(Button::kClear);
  EXPECT_TRUE(view.breakpoints.empty());

  sim.AddFile("/m/one.ksx", "a\r\nb");
  view.text = "a\r\nb";
  controller.OnGutterClick(1);
  view.openAnswers = {"/m/one.ksx"};
  controller.OnButton(Button::kOpen);
  EXPECT_TRUE(view.breakpoints.empty());
}

TEST_F(DebuggerMenuTest, PerMacroHotkeysPlayTheirFileWithoutStoppingAtBreakpoints) {
  sim.AddFile("/m/hot.ksx", "a\r\nb\r\nc");
  Start("Hotkey=65|2|Ctrl + A|/m/hot.ksx\r\n");
  view.text = "x\r\ny\r\nz";
  controller.OnGutterClick(1);
  controller.OnHotkey(kFirstScriptHotkeyId);
  EXPECT_EQ(Keys().size(), 3u);
  EXPECT_FALSE(controller.debugger().Paused());
  EXPECT_EQ(view.breakpoints, std::set<int>{1});
  EXPECT_EQ(view.text, "x\r\ny\r\nz");
}

TEST_F(DebuggerMenuTest, DebuggerKeysAreNeverGlobalHotkeys) {
  Start();
  for (const auto& [id, hotkey] : hotkeys.registered)
    for (const int vk : {gui::kVkF5, gui::kVkF9, gui::kVkF10}) EXPECT_NE(hotkey.second, vk) << id;
  const auto* entry = gui::MenuEntryById(MenuId(Command::kRunToCursor));
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(gui::ShortcutText(entry->shortcut), "Ctrl+F10");
  EXPECT_TRUE(entry->whilePlaying);
}

}  // namespace
}  // namespace kx::test
