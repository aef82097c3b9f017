#include <gtest/gtest.h>

#include "player/play_fixture.h"

namespace kx::test {
namespace {

size_t Beeps(PlayFixture& f) {
  return f.Effects("beep").size();
}

TEST(PartialLoop, RepeatsTheBlockTheGivenNumberOfTimes) {
  const std::pair<const char*, size_t> cases[] = {
      {"<r 3>", 3}, {"<R 1>", 1}, {"<r 0>", 0}, {"<r -2>", 0}};
  for (const auto& [open, beeps] : cases) {
    PlayFixture f;
    f.Play({open, "beep", "</r>"});
    EXPECT_EQ(Beeps(f), beeps) << open;
  }
}

TEST(PartialLoop, NestedLoopsMultiply) {
  PlayFixture f;
  f.Play({"<r 2>", "<r 3>", "beep", "</r>", "</r>"});
  EXPECT_EQ(Beeps(f), 6u);
}

TEST(PartialLoop, ASkippedBlockEndsAtTheFirstCloseWhateverLoopItCloses) {
  PlayFixture f;
  f.Play({"<r 2>", "<r 0>", "a", "</r>", "b", "</r>"});
  // "b" runs, and the last "</r>" repeats the outer block: b twice.
  EXPECT_EQ(f.Effects("keys"),
            (std::vector<std::string>{PlayFixture::Press(66), PlayFixture::Press(66)}));
}

TEST(PartialLoop, TheSkipSearchDoesNotSeeATabIndentedClose) {
  PlayFixture f;
  f.Play({"<r 0>", "\t</r>", "a", "</r>", "b"});
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{PlayFixture::Press(66)});
}

TEST(PartialLoop, ASkipWithoutACloseRunsThePassToItsEnd) {
  PlayFixture f;
  f.Play({"<r 0>", "a", "b"});
  EXPECT_TRUE(f.Effects("keys").empty());
  EXPECT_EQ(f.player.LastEnd(), PlayEnd::kCompleted);
}

TEST(PartialLoop, ANonNumericCountPushesNothing) {
  PlayFixture f;
  f.Play({"<r 2>", "<r x>", "beep", "</r>", "</r>"});
  // The first "</r>" belongs to "<r 2>": beep twice; the second pops nothing.
  EXPECT_EQ(Beeps(f), 2u);
}

TEST(PartialLoop, AnEmptyCountRepeatsUntilStopped) {
  PlayFixture f;
  f.sim.ScheduleHotkey(1000, kHotkeyPlay);
  f.Play({"<r>", "beep", "</r>"});
  EXPECT_GT(Beeps(f), 50u);
  EXPECT_EQ(f.player.LastEnd(), PlayEnd::kStopped);
}

TEST(PartialLoop, AStrayCloseDoesNothing) {
  PlayFixture f;
  f.Play({"</r>", "beep"});
  EXPECT_EQ(Beeps(f), 1u);
}

TEST(Switch, RandomValueSelectsExactlyOneBlock) {
  for (int round = 0; round < 20; ++round) {
    PlayFixture f;
    f.sim.Sleep(round * 997);  // another time of day, another seed
    f.Play({"rand 3", "<switch>", "<case 1>", "a", "<case 2>", "b", "<default>", "c", "</switch>"});
    const auto keys = f.Effects("keys");
    ASSERT_EQ(keys.size(), 1u);
    const std::string value = f.player.Value().ToText();
    const int expected = value == "1" ? 65 : value == "2" ? 66 : 67;
    EXPECT_EQ(keys[0], PlayFixture::Press(expected)) << value;
  }
}

TEST(Switch, CaseComparisonKeepsCase) {
  PlayFixture f;
  f.Play({"<switch x>", "<case X>", "a", "<case x>", "b", "</switch>"});
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{PlayFixture::Press(66)});
}

TEST(Switch, ALaterCaseWithTheSameValueRunsAgain) {
  PlayFixture f;
  f.Play({"<switch 1>", "<case 1>", "a", "<case 2>", "b", "<case 1>", "c", "</switch>"});
  EXPECT_EQ(f.Effects("keys"),
            (std::vector<std::string>{PlayFixture::Press(65), PlayFixture::Press(67)}));
}

TEST(Switch, DefaultRunsOnlyWhenNoCaseMatched) {
  PlayFixture f;
  f.Play({"<switch 1>", "<case 1>", "a", "<default>", "b", "</switch>", "c"});
  EXPECT_EQ(f.Effects("keys"),
            (std::vector<std::string>{PlayFixture::Press(65), PlayFixture::Press(67)}));
}

TEST(Switch, ANestedSwitchClosingInASkippedCaseRunsTheRestOfThatCase) {
  PlayFixture f;
  f.Play({"<switch 1>", "<case 2>", "<switch>", "</switch>", "a", "</switch>"});
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{PlayFixture::Press(65)});
}

TEST(Switch, AssignmentsInASkippedCaseChangeNothing) {
  PlayFixture f;
  f.Play({"<switch 1>", "<case 2>", "#a = 5", "</switch>"});
  EXPECT_TRUE(f.Effects("var").empty());
  EXPECT_EQ(f.player.Variables().Find("#a"), nullptr);
}

TEST(Switch, CaseMatchesTheWindowResultAsText) {
  PlayFixture f;
  f.Play({"w nothing here", "<switch>", "<case False>", "a", "<case True>", "b", "</switch>"});
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{PlayFixture::Press(65)});
}

TEST(Switch, AnUnclosedSwitchValueLineFails) {
  PlayFixture f;
  f.Play({"<switch", "beep"});
  EXPECT_EQ(f.Effects("error").size(), 1u);
  EXPECT_TRUE(f.Effects("beep").empty());
}

TEST(Goto, JumpsToTheLineCountedFromOne) {
  PlayFixture f;
  f.Play({"goto 3", "a", "b"});
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{PlayFixture::Press(66)});
}

TEST(Goto, OnePastTheEndEndsThePassNormallyAndFurtherFails) {
  PlayFixture f;
  f.Play({"goto 3", "a"});
  EXPECT_TRUE(f.Effects("error").empty());
  EXPECT_EQ(f.player.CurrentLine(), 0);
  f.Play({"goto 4", "a"});  // two past the end
  EXPECT_EQ(f.Effects("error").size(), 1u);
  f.Play({"goto 9", "a"});
  EXPECT_EQ(f.Effects("error").size(), 1u);
  f.Play({"goto 0", "a"});
  EXPECT_EQ(f.Effects("error").size(), 1u);
}

TEST(Goto, AsTheLastLineMakesAnEndlessPass) {
  PlayFixture f;
  f.sim.ScheduleHotkey(2000, kHotkeyPlay);
  f.Play({"beep", "goto 1"});
  EXPECT_GT(Beeps(f), 100u);
  EXPECT_EQ(f.player.LastEnd(), PlayEnd::kStopped);
}

TEST(ValueCommands, GetloopCountsTheCyclesDown) {
  PlayFixture f;
  f.view.SetLoopCount(3);
  f.Play({"getloop", "<switch>", "<case 1>", "beep", "</switch>"});
  EXPECT_EQ(Beeps(f), 1u);  // only in the last cycle
}

TEST(ValueCommands, GetclipAndDebugShowTheValue) {
  PlayFixture f;
  f.sim.SetClipboard("クリップ");
  f.Play({"getclip", "<debug>"});
  EXPECT_EQ(f.Effects("msgbox"),
            std::vector<std::string>{R"({"ev":"msgbox","title":"現在の値","text":"クリップ"})"});
}

TEST(ValueCommands, RandGivesANumberFromOneToN) {
  PlayFixture f;
  for (int i = 0; i < 30; ++i) {
    f.sim.Sleep(1234);
    f.Play({"rand 6"});
    const int v = std::stoi(f.player.Value().ToText());
    EXPECT_GE(v, 1);
    EXPECT_LE(v, 6);
  }
  f.Play({"rand 0"});
  EXPECT_EQ(f.Effects("error").size(), 1u);
  f.Play({"rand x", "beep"});
  EXPECT_EQ(Beeps(f), 1u);
}

TEST(Pause, PauseLineStopsBeforeTheNextLineAndResumesThere) {
  PlayFixture f;
  f.Play({"a", "<pause>", "b"});
  EXPECT_EQ(f.player.LastEnd(), PlayEnd::kPaused);
  EXPECT_EQ(f.player.CurrentLine(), 2);
  f.sim.trace().Clear();
  f.player.HandleHotkey(kHotkeyPause);
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{PlayFixture::Press(66)});
}

}  // namespace
}  // namespace kx::test
