// The debugger on the simulated system: where a play pauses, where a step
// lands, and how breakpoints follow the text.
#include "player/debugger.h"

#include <gtest/gtest.h>

#include "player/play_fixture.h"
#include "player/watch.h"

namespace kx::test {
namespace {

// A player with the debugger as its line gate, driven as the main window
// drives it: F5, F10 and the stop button.
struct DebugFixture : PlayFixture {
  DebugFixture() { player.SetLineGate(&debugger); }

  void Break(int index) { debugger.breakpoints().Toggle(index, view.Text()); }
  // Plays the script; true when it paused.
  bool Start(std::initializer_list<std::string> lines) {
    Play(lines);
    return Paused();
  }
  bool Paused() const { return debugger.PausedAt().has_value(); }
  void Go() {
    debugger.Resuming();
    if (player.LastEnd() == PlayEnd::kPaused)
      player.sLoopPlay();
    else
      player.PlayOrStop();
  }
  bool Continue() {
    debugger.RunToBreakpoint();
    Go();
    return Paused();
  }
  bool Step() {
    debugger.Step();
    Go();
    return Paused();
  }
  Debugger debugger{sim};
};

TEST(Debugger, StepsLandWhereThePlayerGoesNext) {
  struct Case {
    std::vector<std::string> lines;
    std::vector<int> stops;
  };
  const Case cases[] = {
      {{"goto 3", "a", "beep"}, {0, 2}},
      {{"<r 2>", "beep", "</r>", "b"}, {0, 1, 2, 1, 2, 3}},
      {{"<r 0>", "a", "</r>", "beep"}, {0, 3}},
      // The lines of a case that does not run are not stopped at.
      {{"<switch x>", "<case y>", "a", "<case x>", "beep", "</switch>"}, {0, 1, 3, 4, 5}},
      {{"#v = 1", "<switch #v>", "<case 2>", "#v = 5", "</switch>"}, {0, 1, 2, 4}},
      // Blank lines do nothing, so nothing stops there.
      {{"beep", "", "  ", "beep"}, {0, 3}},
  };
  for (const Case& c : cases) {
    DebugFixture f;
    std::string text;
    for (const auto& l : c.lines) text += (text.empty() ? "" : "\r\n") + l;
    f.view.SetText(text);
    std::vector<int> stops;
    while (f.Step() && stops.size() < 20) stops.push_back(*f.debugger.PausedAt());
    EXPECT_EQ(stops, c.stops) << text;
    EXPECT_EQ(f.player.LastEnd(), PlayEnd::kCompleted) << text;
  }
}

TEST(Debugger, ABreakpointInAPartialLoopPausesOncePerPass) {
  DebugFixture f;
  f.view.SetText(PlayFixture::Script({"<r 3>", "beep", "</r>", "a"}));
  f.Break(1);
  f.Play(f.view.Text());
  std::vector<std::size_t> beepsAtPauses;
  while (f.Paused() && beepsAtPauses.size() < 10) {
    EXPECT_EQ(f.player.CurrentLine(), 1);
    beepsAtPauses.push_back(f.Effects("beep").size());
    f.Continue();
  }
  EXPECT_EQ(beepsAtPauses, (std::vector<std::size_t>{0, 1, 2}));
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{PlayFixture::Press(65)});
  EXPECT_EQ(f.player.LastEnd(), PlayEnd::kCompleted);
}

TEST(Debugger, ABreakpointInACaseThatDoesNotRunNeverPauses) {
  DebugFixture f;
  f.view.SetText(
      PlayFixture::Script({"<switch b>", "<case a>", "key x", "<case b>", "beep", "</switch>"}));
  f.Break(2);
  EXPECT_FALSE(f.Start({"<switch b>", "<case a>", "key x", "<case b>", "beep", "</switch>"}));
  EXPECT_EQ(f.Effects("beep").size(), 1u);
  f.Break(4);
  EXPECT_TRUE(f.Start({"<switch b>", "<case a>", "key x", "<case b>", "beep", "</switch>"}));
  EXPECT_EQ(f.debugger.PausedAt(), 4);
}

TEST(Debugger, AStepOverAWaitWaitsItsWholeLengthHoweverLongThePause) {
  DebugFixture f;
  f.view.SetText(PlayFixture::Script({"beep", "500", "beep"}));
  f.Break(1);
  ASSERT_TRUE(f.Start({"beep", "500", "beep"}));
  f.sim.Sleep(10'000);  // the user looks at the watch for ten seconds
  const std::int64_t resumed = f.sim.NowMs();
  ASSERT_TRUE(f.Step());
  EXPECT_EQ(f.debugger.PausedAt(), 2);
  EXPECT_EQ(f.Effects("beep").size(), 1u);
  EXPECT_GE(f.sim.NowMs() - resumed, 500);
  EXPECT_LT(f.sim.NowMs() - resumed, 700);
  EXPECT_FALSE(f.Continue());
  EXPECT_EQ(f.Effects("beep").size(), 2u);
}

TEST(Debugger, AStepOnAMacroFileLineRunsTheWholeFile) {
  DebugFixture f;
  f.sim.AddFile("/kestrelix/Macro/sub.ksx", "a\r\nb\r\nbeep");
  f.view.SetText(PlayFixture::Script({"mf sub.ksx", "c"}));
  f.Break(0);
  ASSERT_TRUE(f.Start({"mf sub.ksx", "c"}));
  ASSERT_TRUE(f.Step());
  EXPECT_EQ(f.debugger.PausedAt(), 1);
  EXPECT_EQ(f.Effects("keys"),
            (std::vector<std::string>{PlayFixture::Press(65), PlayFixture::Press(66)}));
  EXPECT_EQ(f.Effects("beep").size(), 1u);
}

TEST(Debugger, StoppingAPausedPlayEndsItAndTheNextPlayStartsAtTheTop) {
  DebugFixture f;
  f.player.Options().endNotifier = 1;
  f.view.SetText(PlayFixture::Script({"a", "b", "c"}));
  f.Break(1);
  ASSERT_TRUE(f.Start({"a", "b", "c"}));
  f.player.StopPaused();
  f.debugger.Forget();
  EXPECT_EQ(f.player.LastEnd(), PlayEnd::kStopped);
  EXPECT_EQ(f.player.CurrentLine(), 0);
  EXPECT_EQ(f.Effects("beep").size(), 1u);  // the end notification
  // The next play runs line 1 again and pauses at the breakpoint again.
  ASSERT_TRUE(f.Start({"a", "b", "c"}));
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{PlayFixture::Press(65)});
}

TEST(Debugger, RunToALineStopsThereOrAtAnEarlierBreakpoint) {
  DebugFixture f;
  f.view.SetText(PlayFixture::Script({"a", "b", "c", "d"}));
  f.debugger.RunTo(2);
  f.Go();
  EXPECT_EQ(f.debugger.PausedAt(), 2);
  f.Break(3);
  f.debugger.RunTo(0);  // a line the play does not come back to
  f.Go();
  EXPECT_EQ(f.debugger.PausedAt(), 3);
}

TEST(Debugger, TheWindowInFrontAtThePauseComesBackBeforeTheNextLine) {
  DebugFixture f;
  sim::SimWindow window;
  window.className = "Notepad";
  const WindowHandle target = f.sim.AddWindow(window);
  window.className = "KestrelixMain";
  const WindowHandle mainWindow = f.sim.AddWindow(window);
  f.sim.SetForegroundWindow(target);
  f.view.SetText(PlayFixture::Script({"a", "b"}));
  f.Break(1);
  ASSERT_TRUE(f.Start({"a", "b"}));
  f.sim.SetForegroundWindow(mainWindow);  // F10 is pressed in the main window
  f.sim.trace().Clear();
  f.Step();
  const auto events = f.Effects();
  ASSERT_FALSE(events.empty());
  EXPECT_EQ(events.front(), R"({"ev":"activate","hwnd":)" + std::to_string(target) + "}");
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{PlayFixture::Press(66)});
}

TEST(Debugger, TheWatchShowsVariablesCurrentValueCyclesAndOpenLoops) {
  DebugFixture f;
  f.view.SetText(
      PlayFixture::Script({"#a = 2+3", "#b = \"x\"", "<r 3>", "rand 1", "beep", "</r>"}));
  f.Break(4);
  ASSERT_TRUE(f.Start({"#a = 2+3", "#b = \"x\"", "<r 3>", "rand 1", "beep", "</r>"}));
  EXPECT_EQ(
      WatchRows(f.player),
      (std::vector<WatchRow>{
          {"#a", "5"}, {"#b", "x"}, {"現在の値", "1"}, {"サイクル", "1"}, {"<r> 3 行目", "2"}}));
}

TEST(Breakpoints, FollowTheirLinesThroughInsertsAndDeletes) {
  struct Case {
    const char* edit;
    std::string after;
    std::set<int> lines;
  };
  // Breakpoints on "b" (1) and "d" (3) of "a b c d e".
  const Case cases[] = {
      {"line inserted above both", "x\r\na\r\nb\r\nc\r\nd\r\ne", {2, 4}},
      {"line inserted between", "a\r\nb\r\nx\r\ny\r\nc\r\nd\r\ne", {1, 5}},
      {"line inserted below both", "a\r\nb\r\nc\r\nd\r\ne\r\nx", {1, 3}},
      {"break before a marked line", "a\r\n\r\nb\r\nc\r\nd\r\ne", {2, 4}},
      {"line deleted above", "b\r\nc\r\nd\r\ne", {0, 2}},
      {"marked line deleted", "a\r\nc\r\nd\r\ne", {2}},
      {"marked line edited", "a\r\nbee\r\nc\r\nd\r\ne", {1, 3}},
      {"everything replaced", "z", {}},
  };
  for (const Case& c : cases) {
    Breakpoints b;
    const std::string before = "a\r\nb\r\nc\r\nd\r\ne";
    b.Toggle(1, before);
    b.Toggle(3, before);
    b.TextChanged(c.after);
    EXPECT_EQ(b.Lines(), c.lines) << c.edit;
  }
  Breakpoints b;
  EXPECT_FALSE(b.Toggle(5, "a\r\nb")) << "past the end";
  EXPECT_TRUE(b.Toggle(1, "a\r\nb"));
  EXPECT_FALSE(b.Toggle(1, "a\r\nb")) << "a second toggle removes it";
  EXPECT_TRUE(b.Empty());
}

}  // namespace
}  // namespace kx::test
