// The main window's commands: menu help, inserted lines, play speed, option
// checks, the editor commands and the macro tree.
#include <gtest/gtest.h>

#include <set>

#include "gui_fixture.h"

namespace kx::test {
namespace {

using gui::Command;
using gui::MenuEntries;
using gui::MenuKind;

class CommandsTest : public GuiFixture, public ::testing::Test {
 protected:
  void SetUp() override { controller.StartUp(); }
  // The id of the item whose caption starts with `caption`.
  static int ItemId(std::string_view caption) {
    const auto entries = MenuEntries();
    for (std::size_t i = 0; i < entries.size(); ++i)
      if (entries[i].kind == MenuKind::kItem &&
          entries[i].caption.substr(0, caption.size()) == caption)
        return gui::MenuIdOf(i);
    ADD_FAILURE() << "no item " << caption;
    return -1;
  }
};

TEST(MenuTableTest, EveryItemHasItsOwnIdAndHelpAndTheNamedCaptionsExist) {
  std::set<int> ids;
  const auto entries = MenuEntries();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const int id = gui::MenuIdOf(i);
    EXPECT_TRUE(ids.insert(id).second);
    EXPECT_EQ(gui::MenuEntryById(id), &entries[i]);
    if (entries[i].kind == MenuKind::kItem) {
      EXPECT_FALSE(gui::MenuHelp(id).empty());
    }
  }
  EXPECT_EQ(gui::MenuEntryById(1), nullptr);
  EXPECT_EQ(gui::MenuHelp(100000), "");
  std::set<std::string_view> captions;
  for (const auto& e : entries) captions.insert(e.caption);
  for (const std::string_view named : {"ファイル(&F)",
                                       "クリア(&C)",
                                       "マクロの保存(&V)...",
                                       "マクロの読み込み(&O)...",
                                       "マクロの上書き保存(&S)...",
                                       "キー連打(&Start/Stop)",
                                       "マウス連打(S&tart/Stop)",
                                       "マウス連打(&Push)",
                                       "キー操作(&K)",
                                       "マウス操作(&M)",
                                       "システム(&S)",
                                       "指定回数ループ(&R)...",
                                       "ファイルを開く(&F)...",
                                       "フォルダを開く(&O)...",
                                       "マクロファイルを実行(&M)...",
                                       "指定ウィンドウを操作(&W)...",
                                       "指定テキストの文字を取得(&Ｇ)...",
                                       "指定テキストに文字を設定(&S)...",
                                       "指定テキストに文字を追加(&A)...",
                                       "指定のボタンを押す(&B)...",
                                       "バックグラウンドクリック(&C)...",
                                       "自動ログイン(&L)...",
                                       "待ち時間の削除(&D)",
                                       "再生(&P)",
                                       "標準(&S)",
                                       "2倍速",
                                       "4倍速",
                                       "1/2倍速",
                                       "1/4倍速",
                                       "1/8倍速",
                                       "設定(&O)",
                                       "時間記録(&N)",
                                       "記録時はテキストエリアを非表示(&H)",
                                       "マウスクリック記録(&C)",
                                       "マウス移動記録(&M)",
                                       "相対位置でマウス記録(&R)",
                                       "アクティブウィンドウ記録(&A)",
                                       "タイムスタンプ(&S)",
                                       "コメント行をバルーンヘルプで表示(&B)",
                                       "タスクトレイに表示(&T)",
                                       "マクロリストにアイコン表示(&I)",
                                       "ループ回数設定を保存(&L)",
                                       "再生行表示(&P)",
                                       "常に手前に表示(&F)",
                                       "オプション画面表示(&O)...",
                                       "ヘルプ(&H)",
                                       "ReadMeを開く(&R)...",
                                       "操作記録名一覧を開く(&T)...",
                                       "バージョン情報(&V)...",
                                       "Shift Down    ShiftキーDown",
                                       "↑                  上矢印キー",
                                       "&LMouse Down    左クリックDown",
                                       "&Wheel              ホイール回転(120=上回転、-120=下回転)",
                                       "Mouse&Pos         マウス位置変更",
                                       "MouCl&Pos         マウス位置の変更(クライアント座標)"})
    EXPECT_TRUE(captions.count(named)) << named;
}

TEST_F(CommandsTest, MenuHelpFollowsTheHighlightedItemAndResetsWhenTheMenuCloses) {
  const std::pair<std::string_view, std::string_view> helps[] = {
      {"マクロの保存", "マクロの保存"},
      {"マクロの上書き保存", "マクロの上書き保存"},
      {"キー連打", "キー連打機能のON/OFF"},
      {"指定回数ループ", "<r>命令を作成"},
      {"Switch命令", "Switch命令を作成"},
      {"指定テキストの文字を取得", "GT命令を作成"},
      {"標準", "再生速度 - 標準"},
      {"2倍速", "再生速度 - 2倍速"},
      {"マウスクリック記録", "マウスクリック操作を記録します"},
      {"時間記録", "操作の時間間隔を記録します"},
      {"再生行表示", "再生中は実行されている行に色が付きます"},
      {"タイムスタンプ", "操作時の年月日をコメントで記録します"},
      {"オプション画面表示", "オプション画面を表示"},
      {"ReadMeを開く", "ReadMe.txtを開きます"},
  };
  for (const auto& [caption, help] : helps) {
    controller.OnMenuSelect(ItemId(caption), false);
    EXPECT_EQ(view.status, help) << caption;
  }
  controller.OnMenuSelect(gui::kFirstMenuId, true);  // the ファイル title
  EXPECT_EQ(view.status, "ReadMe.txtを開きます");
  controller.OnMenuClosed();
  EXPECT_EQ(view.status, "");
}

// The window timer shows the pointer position from start-up on; menu help
// stays while the menu is open, and a message a few seconds.
TEST_F(CommandsTest, TheStatusBarShowsThePointerBetweenHelpAndMessages) {
  EXPECT_EQ(view.timers.at(gui::Timer::kWindow), gui::kWindowTimerMs);
  sim.SetCursorPos({640, 480});
  controller.OnTimer(gui::Timer::kWindow);
  EXPECT_EQ(view.status, "640x480");

  controller.OnMenuSelect(ItemId("2倍速"), false);
  sim.Sleep(10000);
  controller.OnTimer(gui::Timer::kWindow);
  EXPECT_EQ(view.status, "再生速度 - 2倍速");  // an open menu keeps its help
  controller.OnMenuClosed();
  controller.OnTimer(gui::Timer::kWindow);
  EXPECT_EQ(view.status, "");  // the reset stays a moment
  sim.Sleep(5000);
  controller.OnTimer(gui::Timer::kWindow);
  EXPECT_EQ(view.status, "640x480");  // drawn again though the pointer kept still

  view.text = "1000\r\n2000\r\nA\r\n";
  controller.OnMenuCommand(ItemId("待ち時間の削除"));
  ASSERT_EQ(view.status, "2行の待ち時間を削除しました");
  sim.Sleep(4900);
  controller.OnTimer(gui::Timer::kWindow);
  EXPECT_EQ(view.status, "2行の待ち時間を削除しました");
  sim.Sleep(100);
  sim.SetCursorPos({1, 2});
  controller.OnTimer(gui::Timer::kWindow);
  EXPECT_EQ(view.status, "1x2");
}

TEST_F(CommandsTest, InsertItemsPutTheirWordAtTheCaret) {
  const std::pair<std::string_view, std::string_view> inserts[] = {
      {"Shift Down", "Shift Down\r\n"},
      {"Ctrl Up", "Ctrl Up\r\n"},
      {"↑", "↑\r\n"},
      {"&Application", "Application\r\n"},
      {"&BackSlash", "BackSlash\r\n"},
      {"半角/全角", "半角/全角\r\n"},
      {"&LMouse Down", "LMouse Down"},
      {"RMouCl Double", "RMouCl Double"},
      {"&Wheel", "Wheel"},
      {"Mouse&Pos", "MousePos"},
      {"MouCl&Pos", "MouClPos"},
      {"LogOff", "LogOff\r\n"},
      {"Delete Recycle", "Delete Recycle\r\n"},
      {"Switch命令", "<Switch>\r\n  <Case >\r\n</Switch>\r\n"},
      {"Default命令", "<Default>\r\n"},
  };
  for (const auto& [caption, text] : inserts) {
    view.SetEditorText("ab");
    view.caret = 1;
    controller.OnMenuCommand(ItemId(caption));
    EXPECT_EQ(view.text, "a" + std::string(text) + "b") << caption;
  }
}

TEST_F(CommandsTest, EmptyingTheRecycleBinAsksOnceWithWhatItHolds) {
  const struct {
    RecycleBinContents contents;
    MessageResult answer;
    std::string question;  // empty: nothing asked
    bool emptied;
  } cases[] = {
      {{0, 0}, MessageResult::kOk, "", false},
      {{3, 1536}, MessageResult::kCancel, "ファイル総数 3個 (1.5 KB)", false},
      {{12, 512}, MessageResult::kOk, "ファイル総数 12個 (512 バイト)", true},
      {{1, 5 * 1024 * 1024 + 104858}, MessageResult::kOk, "ファイル総数 1個 (5.1 MB)", true},
  };
  for (const auto& c : cases) {
    sim.trace().Clear();
    sim.recycleBin = c.contents;
    if (!c.question.empty()) sim.QueueMessageBoxAnswer(c.answer);
    controller.OnMenuCommand(ItemId("ごみ箱を空にする(&E)"));
    const auto asked = sim.trace().OfKind("msgbox");
    if (c.question.empty()) {
      EXPECT_TRUE(asked.empty());
    } else {
      ASSERT_EQ(asked.size(), 1u);
      EXPECT_EQ(asked[0].fields["title"].get<std::string>(), "ファイル削除の確認");
      EXPECT_EQ(asked[0].fields["text"].get<std::string>(),
                "ごみ箱を空にしますか？\r\n\r\n" + c.question);
    }
    // The system is not let to ask a second time.
    const auto emptied = sim.trace().OfKind("cleanup");
    ASSERT_EQ(emptied.size(), c.emptied ? 1u : 0u) << c.question;
    if (c.emptied) {
      EXPECT_TRUE(emptied[0].fields["unasked"].get<bool>());
    }
  }
}

TEST_F(CommandsTest, SpeedItemsAreRadioChecksSavedAsRate) {
  controller.OnMenuCommand(ItemId("1/8倍速"));
  EXPECT_EQ(controller.player().Options().speedFactor, 8);
  for (int rate = 0; rate < 6; ++rate) EXPECT_EQ(view.checks[*gui::SpeedMenuId(rate)], rate == 5);
  controller.OnMenuCommand(ItemId("2倍速"));
  EXPECT_EQ(controller.player().Options().speedFactor, 0.5);
  controller.RequestClose();
  EXPECT_NE(IniText().find("rate=1\r\n"), std::string::npos);
}

TEST_F(CommandsTest, OptionChecksAreTheLiveSettingsAndAreWrittenAtShutdown) {
  for (const std::string_view option : {"Time", "Hide", "Mouse", "Move", "MouCl", "RecAct", "Stamp",
                                        "Balloon", "Tray", "TreeIcon", "Loop", "Trace", "Top"})
    controller.OnMenuCommand(MenuId(Command::kToggleOption, option));
  EXPECT_FALSE(Checked("Mouse"));
  EXPECT_TRUE(Checked("Trace"));
  EXPECT_TRUE(view.tray);
  EXPECT_TRUE(view.topMost);
  EXPECT_FALSE(view.treeIcons);
  EXPECT_TRUE(controller.player().Options().trace);
  EXPECT_TRUE(controller.player().Options().balloon);
  view.loopCount = 4;
  controller.RequestClose();
  const std::string ini = IniText();
  EXPECT_NE(ini.find("Mouse=0\r\nMouCl=-1\r\nMove=0\r\nRecAct=-1\r\nTime=-1\r\nStamp=-1\r\n"
                     "Balloon=-1\r\nTray=-1\r\nTreeIcon=0\r\nLoop=-1\r\nHide=-1\r\nTrace=-1\r\n"
                     "Top=-1\r\nSplit=1335\r\nLoopCnt=4\r\n"),
            std::string::npos)
      << ini;
}

TEST_F(CommandsTest, PartialLoopWrapsTheSelectedLinesOrInsertsAnEmptyBlock) {
  view.SetEditorText("a\r\nb\r\nc");
  view.selection = gui::LineRange{1, 2};
  sim.QueueInputBoxAnswer(" 3 ");
  controller.OnMenuCommand(ItemId("指定回数ループ"));
  EXPECT_EQ(view.text, "a\r\n<r 3>\r\nb\r\nc\r\n</r>");
  EXPECT_EQ(LastFields("inputbox"),
            R"("title":"部分ループ","prompt":"ループ回数を入力してください")");

  view.SetEditorText("x");
  view.caret = 1;
  sim.QueueInputBoxAnswer("2");
  controller.OnMenuCommand(ItemId("指定回数ループ"));
  EXPECT_EQ(view.text, "x<r 2>\r\n</r>");

  sim.QueueInputBoxAnswer("two");  // not a number: nothing changes
  controller.OnMenuCommand(ItemId("指定回数ループ"));
  sim.QueueInputBoxAnswer(std::nullopt);  // cancelled
  controller.OnMenuCommand(ItemId("指定回数ループ"));
  EXPECT_EQ(view.text, "x<r 2>\r\n</r>");
}

TEST_F(CommandsTest, DeleteWaitsRemovesWaitLinesOnly) {
  view.SetEditorText("A\r\n100\r\n5\r\n  250\r\nB\r\n0.5");
  controller.OnMenuCommand(ItemId("待ち時間の削除"));
  EXPECT_EQ(view.text, "A\r\n5\r\nB");
  EXPECT_EQ(view.status, "3行の待ち時間を削除しました");
}

TEST_F(CommandsTest, TidyRecordingReplacesTheTextAndSaysHowManyLinesAreLeft) {
  view.SetEditorText("MousePos(1,1)\r\n20\r\nMousePos(2,2)\r\nLMouse Down (2,2)\r\n'memo");
  controller.OnMenuCommand(ItemId("記録の整理"));
  EXPECT_EQ(view.text, "MousePos(2,2)\r\n28\r\nLMouse Down (2,2)\r\n'memo");
  EXPECT_EQ(view.status, "記録を整理しました (5行 → 4行)");
  controller.OnMenuCommand(ItemId("記録の整理"));
  EXPECT_EQ(view.text, "MousePos(2,2)\r\n28\r\nLMouse Down (2,2)\r\n'memo");
  EXPECT_EQ(view.status, "整理できる行はありませんでした");
}

TEST_F(CommandsTest, FileAndMacroItemsInsertTheChosenPath) {
  view.openAnswers = {"C:\\a b\\x.txt", "C:\\m.ksx", std::nullopt};
  view.folderAnswers = {"C:\\dir"};
  controller.OnMenuCommand(ItemId("ファイルを開く"));
  controller.OnMenuCommand(ItemId("マクロファイルを実行"));
  controller.OnMenuCommand(ItemId("フォルダを開く"));
  controller.OnMenuCommand(ItemId("ファイルを開く"));  // cancelled
  EXPECT_EQ(view.text, "C:\\a b\\x.txt\r\nmf C:\\m.ksx\r\nC:\\dir\r\n");
}

TEST_F(CommandsTest, TreeActionsWorkOnTheMacroFolder) {
  folders.Add("/kestrelix/Macro/a.ksx", "beep");
  folders.Add("/kestrelix/Macro/b.ksx");
  controller.OnTreeOpen("a.ksx");
  EXPECT_EQ(view.text, "beep");
  EXPECT_EQ(view.caption, "Kestrelix - a.ksx");

  sim.QueueMessageBoxAnswer(MessageResult::kCancel);
  controller.OnTreeDelete("b.ksx");
  EXPECT_TRUE(folders.deleted.empty());
  controller.OnTreeDelete("b.ksx");
  EXPECT_EQ(folders.deleted, std::vector<std::string>{"/kestrelix/Macro/b.ksx"});
  ASSERT_EQ(view.tree.size(), 1u);
  EXPECT_EQ(view.tree[0].name, "a.ksx");

  view.treeSelection = "a.ksx";
  controller.OnMenuCommand(MenuId(Command::kTreeCopyPath));
  EXPECT_EQ(sim.Clipboard(), "/kestrelix/Macro/a.ksx");
  controller.OnMenuCommand(MenuId(Command::kTreeOpenFolder));
  EXPECT_EQ(view.commandLines, std::vector<std::string>{"explorer.exe /kestrelix/Macro/,/e"});

  folders.Add("/elsewhere/z.ksx");
  view.folderAnswers = {"/elsewhere"};
  controller.OnMenuCommand(MenuId(Command::kTreeChooseFolder));
  ASSERT_EQ(view.tree.size(), 1u);
  EXPECT_EQ(view.tree[0].name, "z.ksx");
}

TEST_F(CommandsTest, HelpItemsOpenTheirFilesBesideTheProgram) {
  sim.AddFile("/kestrelix/ReadMe.txt", "");
  controller.OnMenuCommand(ItemId("ReadMeを開く"));
  EXPECT_NE(LastFields("open").find("ReadMe.txt"), std::string::npos);
  controller.OnMenuCommand(ItemId("操作記録名一覧を開く"));  // missing: the user is told
  EXPECT_NE(LastFields("msgbox").find("見つかりません"), std::string::npos);
  controller.OnMenuCommand(ItemId("バージョン情報"));
  EXPECT_TRUE(view.aboutShown);
}

TEST_F(CommandsTest, TheMacroCheckNamesTrapsAndALoadedMacroIsCheckedAtOnce) {
  view.SetEditorText("beep\r\n100");
  controller.OnMenuCommand(ItemId("マクロのチェック"));
  EXPECT_EQ(view.status, "マクロに注意の必要な行は見つかりませんでした");

  view.SetEditorText("5\r\ngoto 9");
  controller.OnMenuCommand(ItemId("マクロのチェック"));
  const std::string box = LastFields("msgbox");
  EXPECT_NE(box.find("2件の注意があります"), std::string::npos) << box;
  EXPECT_NE(box.find("1行目: "), std::string::npos) << box;
  EXPECT_NE(box.find("2行目: "), std::string::npos) << box;

  folders.Add("/kestrelix/Macro/trap.ksx", "beep x");
  controller.OnTreeOpen("trap.ksx");
  EXPECT_EQ(view.status, "1件の注意があります (設定 - マクロのチェック)");
}

class UnicodeKeysCommandsTest : public CommandsTest {
 protected:
  void SetUp() override {
    WriteIni("UnicodeKeys=1\r\n");
    CommandsTest::SetUp();
  }
};

TEST_F(UnicodeKeysCommandsTest, TheMacroCheckKnowsUntypeableTextGoesOutAsUnicode) {
  view.SetEditorText("key 漢字");
  controller.OnMenuCommand(ItemId("マクロのチェック"));
  EXPECT_EQ(view.status, "マクロに注意の必要な行は見つかりませんでした");
}

}  // namespace
}  // namespace kx::test
