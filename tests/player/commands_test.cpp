#include <gtest/gtest.h>

#include "player/play_fixture.h"

namespace kx::test {
namespace {

TEST(WindowCommand, ActivatesAWindowFoundByTitleOrClass) {
  PlayFixture f;
  const auto notepad = f.sim.AddWindow({0, "Notepad", "無題 - メモ帳", {}, {}, true});
  f.Play({"w 無題 - メモ帳"});
  EXPECT_EQ(f.Effects("activate"), std::vector<std::string>{R"({"ev":"activate","hwnd":)" +
                                                            std::to_string(notepad) + "}"});
  EXPECT_EQ(f.player.Value().ToText(), "True");
  EXPECT_FALSE(f.sim.IsMinimized(notepad));  // restored first
  f.Play({"W NOTEPAD"});
  EXPECT_EQ(f.Effects("activate").size(), 1u);
  f.Play({"w " + std::to_string(notepad)});
  EXPECT_EQ(f.Effects("activate").size(), 1u);
}

TEST(WindowCommand, ClassAndTitleMustBothMatch) {
  PlayFixture f;
  f.sim.AddWindow({0, "Notepad", "memo", {}, {}, false});
  f.Play({"w notepad,other"});
  EXPECT_TRUE(f.Effects("activate").empty());
  EXPECT_EQ(f.player.Value().ToText(), "False");
  f.Play({"w notepad,memo"});
  EXPECT_EQ(f.Effects("activate").size(), 1u);
}

TEST(WindowCommand, WaitsUpToItsTimeOutAndAStopEndsTheWaitAtOnce) {
  PlayFixture f;
  f.Play({"w notepad,,3000", "beep"});
  EXPECT_GE(f.Times("beep")[0], 3100);
  EXPECT_LE(f.Times("beep")[0], 3400);

  f.sim.ScheduleHotkey(1000, kHotkeyPlay);
  f.Play({"w notepad,,3000", "beep"});
  // Only the line pause follows the stop.
  EXPECT_LE(f.sim.NowMs(), 1008);
  EXPECT_TRUE(f.Effects("beep").empty());
}

TEST(MoveCommand, MovesTheForegroundOrANamedWindow) {
  PlayFixture f;
  const auto w = f.sim.AddWindow({0, "Notepad", "memo", {100, 100, 500, 400}, {}, false});
  f.sim.SetForegroundWindow(w);
  f.Play({"move 0,0,800,600"});
  const std::string id = std::to_string(w);
  EXPECT_EQ(f.Effects("move"), std::vector<std::string>{R"({"ev":"move","hwnd":)" + id +
                                                        R"(,"x":0,"y":0,"w":800,"h":600})"});
  f.Play({"move memo,10,20,30,40"});
  EXPECT_EQ(f.Effects("move")[0],
            R"({"ev":"move","hwnd":)" + id + R"(,"x":10,"y":20,"w":30,"h":40})");
}

TEST(MoveCommand, AMissingSizeTakesTheRightAndBottomEdges) {
  PlayFixture f;
  const auto w = f.sim.AddWindow({0, "Notepad", "memo", {100, 50, 500, 400}, {}, false});
  f.sim.SetForegroundWindow(w);
  f.Play({"move 5,6"});
  EXPECT_EQ(f.Effects("move")[0],
            R"({"ev":"move","hwnd":)" + std::to_string(w) + R"(,"x":5,"y":6,"w":500,"h":400})");
}

TEST(WindowCommand, NumbersThatCannotBeHandlesNameNoWindow) {
  PlayFixture f;
  f.sim.AddWindow({0, "Notepad", "memo", {}, {}, false});
  for (const char* line : {"w 1e300", "w -5", "w 0.4", "w 4294967296"}) {
    f.Play({line});
    EXPECT_TRUE(f.Effects("activate").empty()) << line;
    EXPECT_EQ(f.player.Value().ToText(), "False") << line;
  }
}

TEST(WindowCommand, AnEndlessTimeOutEndsAtThePlaysTimeBound) {
  PlayFixture f;
  f.Play({"w nothing,,1e12", "beep"});
  EXPECT_TRUE(f.limiter.Reached());
  EXPECT_TRUE(f.Effects("beep").empty());
  EXPECT_LE(f.sim.NowMs(), 86'400'000 + 200);
}

TEST(MoveCommand, AHandleOutOfRangeMovesNothingAndHugeSizesStayInRange) {
  PlayFixture f;
  const auto w = f.sim.AddWindow({0, "Notepad", "memo", {100, 50, 500, 400}, {}, false});
  f.sim.SetForegroundWindow(w);
  f.Play({"move -5,0,0,10,10", "move 1e300,0,0,10,10"});
  EXPECT_TRUE(f.Effects("move").empty());
  f.Play({"move 2147483647,0,100,100"});
  EXPECT_EQ(f.Effects("move")[0], R"({"ev":"move","hwnd":)" + std::to_string(w) +
                                      R"(,"x":2147483647,"y":0,"w":100,"h":100})");
  EXPECT_EQ(f.sim.GetRect(w)->right, 2147483647);
}

TEST(MacroFileCommand, AGotoInsideTheCalledFileMovesOnlyInsideIt) {
  PlayFixture f;
  f.sim.AddFile("/kestrelix/Macro/sub.ksx", "goto 3\r\nx\r\nb");
  f.sim.AddFile("/work/one.ksx",
                "\xEF\xBB\xBF"
                "c");
  f.Play({"<r 2>", "mf sub.ksx", "</r>", "mf /work/one.ksx", "a"});
  EXPECT_EQ(f.Effects("keys"),
            (std::vector<std::string>{PlayFixture::Press(66), PlayFixture::Press(66),
                                      PlayFixture::Press(67), PlayFixture::Press(65)}));
  EXPECT_EQ(f.player.CurrentLine(), 0);
}

TEST(MacroFileCommand, AMissingFileDoesNothingAndSelfCallsEndInAFailure) {
  PlayFixture f;
  f.Play({"mf none.ksx", "beep"});
  EXPECT_EQ(f.Effects("beep").size(), 1u);
  f.sim.AddFile("/kestrelix/Macro/self.ksx", "mf self.ksx");
  f.Play({"mf self.ksx", "beep"});
  EXPECT_EQ(f.Effects("beep").size(), 1u);
  EXPECT_FALSE(f.Effects("error").empty());
}

// A file opens in its own folder; an address has no working folder.
TEST(ShellCommands, FilesAddressesAndProgramsOpenWithTheShell) {
  PlayFixture f;
  f.sim.AddFile("/docs/a.txt", "x");
  f.Play({"/docs/A.TXT", "http://Example.com/Path", "notepad", "5"});
  EXPECT_EQ(f.Effects("open"),
            (std::vector<std::string>{
                R"({"ev":"open","target":"/docs/a.txt","folder":"/docs","ok":true})",
                R"({"ev":"open","target":"http://Example.com/Path","ok":true})",
                R"({"ev":"open","target":"notepad","ok":true})",
                R"({"ev":"open","target":"5","ok":false})",
            }));
  // "5" could not be opened, so it is the key 5.
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{PlayFixture::Press(53)});
}

TEST(ShellCommands, SlashBackslashAndDotAreNeverOffered) {
  PlayFixture f;
  f.Play({"/", "\\", "."});
  EXPECT_TRUE(f.Effects("open").empty());
  EXPECT_EQ(f.Effects("keys"),
            (std::vector<std::string>{PlayFixture::Press(111), PlayFixture::Press(220),
                                      PlayFixture::Press(110)}));
}

TEST(ClipboardCommands, CopyPutsTheTextAsWritten) {
  PlayFixture f;
  f.Play({"copy a\\nb", "copyall"});
  EXPECT_EQ(f.Effects("clipboard"),
            (std::vector<std::string>{R"({"ev":"clipboard","text":"a\\nb"})",
                                      R"({"ev":"clipboard","text":"all"})"}));
}

TEST(ClipboardCommands, PasteTurnsBackslashNIntoALineBreakAndPressesCtrlV) {
  PlayFixture f;
  f.Play({"paste a\\nb"});
  EXPECT_EQ(f.Effects(), (std::vector<std::string>{
                             R"({"ev":"clipboard","text":"a\r\nb"})",
                             PlayFixture::Keys(R"([17,"down"],[86,"down"],[86,"up"],[17,"up"])"),
                         }));
}

TEST(ClipboardCommands, PasteRetriesWhileAnotherProgramHoldsTheClipboard) {
  PlayFixture f;
  f.sim.FailClipboardWrites(3);
  f.Play({"paste x"});
  EXPECT_EQ(f.sim.Clipboard(), "x");
  f.sim.FailClipboardWrites(20);
  f.sim.SetClipboard("old");
  f.Play({"paste y"});
  EXPECT_EQ(f.sim.Clipboard(), "old");  // nine attempts, then Ctrl+V all the same
  EXPECT_EQ(f.Effects("keys").size(), 1u);
}

TEST(ClipboardCommands, CaretRestoresTheClipboardAndAtKeepsTheText) {
  PlayFixture f;
  f.sim.SetClipboard("before");
  f.Play({"^text"});
  EXPECT_EQ(f.sim.Clipboard(), "before");
  f.Play({"@text"});
  EXPECT_EQ(f.sim.Clipboard(), "text");
}

TEST(SystemCommands, PowerAndCleanupWords) {
  PlayFixture f;
  f.Play({"logoff", "MonitorOff", "delete temp", "delete recycle", "delete nothing"});
  EXPECT_EQ(f.Effects(), (std::vector<std::string>{
                             R"({"ev":"power","action":"logoff"})",
                             R"({"ev":"power","action":"monitoroff"})",
                             R"({"ev":"cleanup","what":"temp"})",
                             R"({"ev":"cleanup","what":"recycle"})",
                         }));
}

TEST(SystemCommands, MsgboxShowsTheTextAndGivesTheForegroundBack) {
  PlayFixture f;
  const auto w = f.sim.AddWindow({0, "Notepad", "memo", {}, {}, false});
  f.sim.SetForegroundWindow(w);
  f.Play({"msgbox こんにちは World"});
  EXPECT_EQ(f.Effects(), (std::vector<std::string>{
                             R"({"ev":"msgbox","title":"Kestrelix","text":"こんにちは World"})",
                             R"({"ev":"activate","hwnd":)" + std::to_string(w) + "}",
                         }));
}

TEST(SystemCommands, RegistryLinesOpenTheEditorAtTheLowerCasedKey) {
  PlayFixture f;
  f.Play({"HKEY_CURRENT_USER\\Software"});
  EXPECT_EQ(f.Effects(),
            (std::vector<std::string>{
                R"({"ev":"regedit","key":"コンピュータ\\hkey_current_user\\software"})",
                R"({"ev":"open","target":"regedit","ok":true})",
            }));
}

TEST(SystemCommands, CommentsShowABalloonOnlyWhenAsked) {
  PlayFixture f;
  f.Play({"' hello "});
  EXPECT_TRUE(f.Effects("balloon").empty());
  f.player.Options().balloon = true;
  f.Play({"' Hello "});
  EXPECT_EQ(f.Effects("balloon"), std::vector<std::string>{R"({"ev":"balloon","text":"Hello"})"});
}

TEST(SystemCommands, PageCommandsWithoutTheirWindowsDoNothing) {
  PlayFixture f;
  f.Play({"waitweb", "st", "gt", "bc 1", "kk x"});
  EXPECT_TRUE(f.Effects().empty());
}

}  // namespace
}  // namespace kx::test
