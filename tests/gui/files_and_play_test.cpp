// Opening and saving macros from the main window, and what the window does
// while a macro plays.
#include <gtest/gtest.h>

#include "gui_fixture.h"

namespace kx::test {
namespace {

using gui::Button;
using gui::Command;

class FilesTest : public GuiFixture, public ::testing::Test {
 protected:
  void Start(const std::string& ini = "") {
    if (!ini.empty()) WriteIni(ini);
    controller.StartUp();
  }
  std::string FileText(const std::string& path) {
    const auto bytes = sim.ReadAll(path);
    return bytes ? std::string(bytes->begin(), bytes->end()) : "<missing>";
  }
};

TEST_F(FilesTest, OpenShowsTheDialogAndReadsAnyEncoding) {
  Start();
  // "日本" in UTF-16LE with its mark, and the same in Shift_JIS.
  sim.AddFile("/m/u16.ksx", std::string("\xFF\xFE\xE5\x65\x2C\x67", 6));
  sim.AddFile("/m/sjis.txt", "\x93\xFA\x96\x7B");
  view.openAnswers = {"/m/u16.ksx", "/m/sjis.txt"};
  controller.OnButton(Button::kOpen);
  EXPECT_EQ(view.text, "日本");
  EXPECT_EQ(view.caption, "Kestrelix - u16.ksx");
  EXPECT_EQ(controller.currentPath(), "/m/u16.ksx");
  controller.OnMenuCommand(MenuId(Command::kOpen));
  EXPECT_EQ(view.text, "日本");
  EXPECT_EQ(view.caption, "Kestrelix - sjis.txt");

  const gui::FileDialogRequest& request = view.dialogs.front();
  EXPECT_EQ(request.title, "ファイルを開く");
  ASSERT_EQ(request.filters.size(), 3u);
  EXPECT_EQ(request.filters[0].description, "全てのファイル(*.*)");
  EXPECT_EQ(request.filters[0].pattern, "*.*");
  EXPECT_EQ(request.filters[1].description, "テキストファイル(*.txt)");
  EXPECT_EQ(request.filters[2].description, "Kestrelixファイル(*.ksx)");
  EXPECT_EQ(request.folder, "/kestrelix/Macro");
}

TEST_F(FilesTest, SaveAsFiltersAndExtensionFollowLinkage) {
  Start();
  view.saveAnswers = {std::nullopt};
  controller.OnButton(Button::kSave);
  gui::FileDialogRequest request = view.dialogs.back();
  EXPECT_EQ(request.title, "名前を付けて保存");
  EXPECT_EQ(request.defaultExtension, "txt");
  EXPECT_EQ(request.filters.at(0).description, "テキストファイル(*.txt)");
  EXPECT_EQ(request.filters.at(1).description, "Kestrelixファイル(*.ksx)");
  EXPECT_EQ(view.caption, "Kestrelix");  // cancelled: nothing saved

  WriteIni("Linkage=8\r\n");
  GuiFixture other;
  other.sim.AddFile(kIni, "[Macro]\r\nLinkage=8\r\n");
  other.controller.StartUp();
  other.controller.OnButton(Button::kSave);
  request = other.view.dialogs.back();
  EXPECT_EQ(request.defaultExtension, "ksx");
  EXPECT_EQ(request.filters.at(0).description, "Kestrelix マクロファイル(*.ksx)");
  EXPECT_EQ(request.filters.at(0).pattern, "*.ksx");
  EXPECT_EQ(request.filters.at(1).description, "テキストファイル(*.txt)");
}

TEST_F(FilesTest, SaveAsWritesUtf8WithAMarkAndRefreshesCaptionAndTree) {
  Start();
  view.SetEditorText("key 日本");
  view.saveAnswers = {"/kestrelix/Macro/new.txt"};
  folders.Add("/kestrelix/Macro/new.txt");  // the tree lists what the folder holds
  controller.OnButton(Button::kSave);
  EXPECT_EQ(FileText("/kestrelix/Macro/new.txt"), "\xEF\xBB\xBFkey 日本");
  EXPECT_EQ(view.caption, "Kestrelix - new.txt");
  ASSERT_EQ(view.tree.size(), 1u);
  EXPECT_EQ(view.tree[0].name, "new.txt");
}

TEST_F(FilesTest, OverwriteAsksAndCancelLeavesTheFileAsItWas) {
  Start();
  // Without a current file the overwrite asks for a name.
  controller.OnSaveRightClick();
  EXPECT_EQ(view.dialogs.back().title, "名前を付けて保存");

  sim.AddFile("/m/a.ksx", "old");
  view.openAnswers = {"/m/a.ksx"};
  controller.OnButton(Button::kOpen);
  view.SetEditorText("new");
  sim.QueueMessageBoxAnswer(MessageResult::kCancel);
  controller.OnSaveRightClick();
  EXPECT_EQ(LastFields("msgbox"),
            R"("title":"Kestrelix","text":"/m/a.ksx\r\n上書き保存しますか？")");
  EXPECT_EQ(FileText("/m/a.ksx"), "old");
  controller.OnMenuCommand(MenuId(Command::kSave));  // OK
  EXPECT_EQ(FileText("/m/a.ksx"), "\xEF\xBB\xBFnew");
}

TEST_F(FilesTest, AFailedSaveKeepsTheOldFileAndTellsTheUser) {
  Start();
  sim.AddFile("/m/a.ksx", "old");
  view.SetEditorText("new");
  view.saveAnswers = {"/m/a.ksx"};
  sim.FailFileWrites(1);
  controller.OnButton(Button::kSave);
  EXPECT_EQ(FileText("/m/a.ksx"), "old");
  EXPECT_NE(LastFields("msgbox").find("保存できませんでした"), std::string::npos);
  EXPECT_EQ(view.caption, "Kestrelix");
}

class PlayTest : public FilesTest {
 protected:
  void SetUp() override { Start(); }
  std::size_t Count(const std::string& kind) { return sim.trace().OfKind(kind).size(); }
};

TEST_F(PlayTest, PlayRunsTheEditorForTheLoopCountAndHighlightsWithTrace) {
  controller.OnMenuCommand(MenuId(Command::kToggleOption, "Trace"));
  view.SetEditorText("beep\r\n'x\r\nbeep");
  view.loopCount = 3;
  controller.OnButton(Button::kPlay);
  EXPECT_EQ(Count("beep"), 6u);
  EXPECT_EQ(view.highlights, (std::vector<int>{0, 1, 2, 0, 1, 2, 0, 1, 2, -1}));
  EXPECT_FALSE(controller.playing());
  EXPECT_EQ(view.caption, "Kestrelix");
}

TEST_F(PlayTest, WhilePlayingOnlyPlayingCommandsRunAndTheControlsAreLocked) {
  view.SetEditorText("beep\r\n500\r\n500\r\nbeep");
  DuringPlay(100, [&] {
    EXPECT_TRUE(controller.playing());
    EXPECT_FALSE(view.buttonEnabled[Button::kClear]);
    EXPECT_FALSE(view.buttonEnabled[Button::kOpen]);
    EXPECT_EQ(view.buttonEnabled.count(Button::kPlay), 0u);  // never disabled
    EXPECT_FALSE(view.treeEnabled);
    EXPECT_TRUE(view.loopLocked);
    EXPECT_TRUE(view.readOnly);
    EXPECT_TRUE(view.playingIcon);
    EXPECT_FALSE(view.menuEnabled[MenuId(Command::kClear)]);
    EXPECT_EQ(view.menuEnabled.count(MenuId(Command::kPlay)), 0u);
    // Refused: the editor, files and the tree.
    controller.OnButton(Button::kClear);
    controller.OnMenuCommand(MenuId(Command::kClear));
    controller.OnMenuCommand(MenuId(Command::kPartialLoop));
    controller.OnMenuCommand(MenuId(Command::kTidyRecording));
    controller.OnButton(Button::kOpen);
    controller.OnTreeOpen("a.ksx");
    EXPECT_EQ(view.text, "beep\r\n500\r\n500\r\nbeep");
    EXPECT_TRUE(view.dialogs.empty());
    // Allowed: speed and option checks.
    controller.OnMenuCommand(*gui::SpeedMenuId(1));
    controller.OnMenuCommand(MenuId(Command::kToggleOption, "Stamp"));
  });
  controller.OnButton(Button::kPlay);
  EXPECT_EQ(Count("beep"), 2u);
  EXPECT_EQ(controller.settings().rate, 1);
  EXPECT_TRUE(controller.settings().stamp);
  EXPECT_TRUE(view.buttonEnabled[Button::kClear]);
  EXPECT_TRUE(view.treeEnabled);
  EXPECT_FALSE(view.readOnly);
  EXPECT_TRUE(view.menuEnabled[MenuId(Command::kClear)]);
}

TEST_F(PlayTest, ThePlayButtonDuringAPlayStopsIt) {
  view.SetEditorText("beep\r\n60000\r\nbeep");
  DuringPlay(50, [&] { controller.OnButton(Button::kPlay); });
  controller.OnButton(Button::kPlay);
  EXPECT_EQ(Count("beep"), 1u);
  EXPECT_LT(sim.NowMs(), 1000);
}

TEST_F(PlayTest, ClosingDuringAPlayStopsItAndClosesAfterwards) {
  view.SetEditorText("beep\r\n60000\r\nbeep");
  DuringPlay(50, [&] {
    controller.RequestClose();
    EXPECT_FALSE(view.closed);  // not while the player is still on the stack
  });
  controller.OnButton(Button::kPlay);
  EXPECT_EQ(Count("beep"), 1u);
  EXPECT_TRUE(view.closed);
  EXPECT_NE(IniText().find("rate=0"), std::string::npos);
}

TEST_F(PlayTest, TheSessionEndingDuringAPlayWritesAtOnceAndClosesAfterThePlay) {
  view.SetEditorText("beep\r\n60000\r\nbeep");
  DuringPlay(50, [&] {
    controller.OnSessionEnd();
    // The process may end any moment now: everything is on disk already.
    EXPECT_NE(IniText().find("Split=1335\r\nWinState=0"), std::string::npos);
    EXPECT_NE(IniText().find("rate=0"), std::string::npos);
    EXPECT_EQ(LastFields("keys"), R"("keys":[[16,"up"],[17,"up"],[18,"up"]])");
    EXPECT_FALSE(view.closed);
  });
  controller.OnButton(Button::kPlay);
  EXPECT_EQ(Count("beep"), 1u);
  EXPECT_TRUE(view.closed);
}

TEST_F(PlayTest, PlayAndPauseHotkeysReachThePlayer) {
  view.SetEditorText("beep\r\n1000\r\nbeep");
  DuringPlay(50, [&] { controller.OnHotkey(kHotkeyPause); });
  controller.OnHotkey(kHotkeyPlay);
  EXPECT_EQ(Count("beep"), 1u);
  EXPECT_EQ(view.selectedLine, 2);    // paused: the next line is selected
  controller.OnHotkey(kHotkeyPause);  // resumes at that line
  EXPECT_EQ(Count("beep"), 2u);
}

}  // namespace
}  // namespace kx::test
