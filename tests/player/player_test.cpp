#include "player/player.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "player/play_fixture.h"
#include "player/wait.h"

namespace kx::test {
namespace {

TEST(PlayerCycles, LoopCountBoxGivesTheNumberOfCycles) {
  PlayFixture f;
  f.view.SetLoopCount(3);
  f.Play({"beep"});
  EXPECT_EQ(f.Effects("beep").size(), 3u);
  EXPECT_EQ(f.player.CyclesLeft(), 0);
}

TEST(PlayerCycles, ZeroInTheBoxRunsNoCycleButStillNotifies) {
  PlayFixture f;
  f.view.SetLoopCount(0);
  f.player.Options().endNotifier = 1;
  f.Play({"a"});
  EXPECT_TRUE(f.Effects("keys").empty());
  EXPECT_EQ(f.Effects("beep").size(), 1u);
}

TEST(PlayerCycles, ALoopFirstLineOverridesTheBoxAndIsNotPressed) {
  PlayFixture f;
  f.view.SetLoopCount(7);
  f.Play({"loop 3", "a"});
  EXPECT_EQ(f.Effects("keys").size(), 3u);
  EXPECT_TRUE(f.Effects("open").empty() || f.Effects("open")[0].find("loop") == std::string::npos);
}

TEST(PlayerCycles, ANonNumericLoopLineRunsNothingAndStillEnds) {
  PlayFixture f;
  f.player.Options().endNotifier = 2;
  f.Play({"loop x", "a"});
  EXPECT_TRUE(f.Effects("keys").empty());
  ASSERT_EQ(f.Effects("msgbox").size(), 1u);
  EXPECT_EQ(f.Effects("msgbox")[0],
            R"({"ev":"msgbox","title":"Kestrelix","text":"再生が終了しました"})");
}

TEST(PlayerCycles, CaptionCountsDownTheCyclesAndIsRestored) {
  PlayFixture f;
  f.view.SetLoopCount(2);
  f.Play({"beep"});
  std::vector<std::string> captions;
  for (const auto& e : f.sim.trace().OfKind("caption"))
    captions.push_back(e.fields["text"].get<std::string>());
  EXPECT_EQ(captions, (std::vector<std::string>{"残り2回", "残り1回", "Kestrelix"}));
}

TEST(PlayerTiming, ThePlayStartsAfterAHundredMilliseconds) {
  PlayFixture f;
  f.Play({"beep"});
  EXPECT_EQ(f.Times("beep"), std::vector<std::int64_t>{100});
}

TEST(PlayerTiming, ConsecutiveLinesAreEightMillisecondsApart) {
  PlayFixture f;
  f.Play({"beep", "beep", "beep"});
  EXPECT_EQ(f.Times("beep"), (std::vector<std::int64_t>{100, 108, 116}));
}

TEST(PlayerTiming, NoLinePauseAroundAWaitLine) {
  PlayFixture f;
  f.Play({"beep", "20", "beep"});
  EXPECT_EQ(f.Times("beep"), (std::vector<std::int64_t>{100, 120}));
}

struct SpeedCase {
  double factor;
  const char* wait;
  std::int64_t waited;
  std::int64_t pause;
};

TEST(PlayerTiming, WaitsAndPausesScaleWithTheSpeedRoundingHalvesToEven) {
  const SpeedCase cases[] = {
      {8, "10", 80, 64}, {0.25, "05", 1, 2}, {0.25, "10", 2, 2},
      {0.5, "15", 8, 4}, {2, "1.5", 3, 16},
  };
  for (const auto& c : cases) {
    PlayFixture f;
    f.player.Options().speedFactor = c.factor;
    f.Play({"beep", c.wait, "beep", "beep"});
    const auto t = f.Times("beep");
    ASSERT_EQ(t.size(), 3u);
    EXPECT_EQ(t[1] - t[0], c.waited) << c.factor << " " << c.wait;
    EXPECT_EQ(t[2] - t[1], c.pause) << c.factor;
  }
}

TEST(PlayerTiming, ANegativeWaitEndsAtOnce) {
  PlayFixture f;
  f.Play({"beep", "-50", "beep"});
  EXPECT_EQ(f.Times("beep"), (std::vector<std::int64_t>{100, 100}));
}

TEST(PlayerTiming, AWaitBeyondTheClocksRangeIsCutToTheLongestWait) {
  PlayFixture f;
  f.sim.ScheduleHotkey(500, kHotkeyPlay);
  f.Play({"1e16", "beep"});
  EXPECT_EQ(f.player.LastEnd(), PlayEnd::kStopped);
  EXPECT_LE(f.sim.NowMs(), 600);
  // Unstopped, the bounds of the play end it within a virtual day.
  f.Play({"1e16", "beep"});
  EXPECT_TRUE(f.limiter.Reached());
  EXPECT_TRUE(f.Effects("beep").empty());
  EXPECT_LE(f.sim.NowMs(), 86'400'000 + 10);
}

TEST(PlayerTiming, TheLongestWaitIsTwoToTheThirtyFirstMillisecondsLessOne) {
  EXPECT_EQ(WaitLengthMs(1e16), 2147483647);
  EXPECT_EQ(WaitLengthMs(2147483646.5), 2147483646);
  EXPECT_EQ(WaitLengthMs(-50), 0);
  EXPECT_EQ(BoundedWaitMs(std::nan("")), 0);
}

TEST(PlayerLimits, AnEndlessPassEndsAtTheLineBound) {
  PlayFixture f;
  f.Play({"-1", "goto 1"});
  EXPECT_TRUE(f.limiter.Reached());
  EXPECT_EQ(f.player.LastEnd(), PlayEnd::kPaused);  // ended as a stop would, not by the user
}

TEST(PlayerTiming, WithoutThePerformanceCounterWaitsUseTheMillisecondTimer) {
  PlayFixture f;
  f.sim.SetPerformanceCounter(false);
  f.Play({"beep", "50", "beep"});
  const auto t = f.Times("beep");
  ASSERT_EQ(t.size(), 2u);
  EXPECT_GE(t[1] - t[0], 50);
  EXPECT_LE(t[1] - t[0], 52);
}

TEST(PlayerStop, ThePlayHotkeyEndsASixtySecondWaitAtOnce) {
  PlayFixture f;
  f.player.Options().endNotifier = 1;
  f.sim.ScheduleHotkey(5000, kHotkeyPlay);
  f.Play({"60000", "beep"});
  EXPECT_EQ(f.sim.NowMs(), 5000);
  EXPECT_EQ(f.player.LastEnd(), PlayEnd::kStopped);
  EXPECT_EQ(f.player.CurrentLine(), 0);
  // The user's stop still gives the end notification.
  EXPECT_EQ(f.Effects(), std::vector<std::string>{R"({"ev":"beep"})"});
  EXPECT_FALSE(f.player.Playing());
}

TEST(PlayerStop, PauseKeepsTheLineAndResumeGoesOnInTheSameCycle) {
  PlayFixture f;
  f.player.Options().endNotifier = 1;
  f.view.SetLoopCount(2);
  f.sim.ScheduleHotkey(150, kHotkeyPause);
  f.Play({"a", "1000", "b"});
  EXPECT_EQ(f.player.LastEnd(), PlayEnd::kPaused);
  EXPECT_EQ(f.player.CurrentLine(), 2);
  EXPECT_EQ(f.view.selected(), 2);
  EXPECT_TRUE(f.Effects("beep").empty());  // a pause gives no notification

  f.sim.trace().Clear();
  f.player.HandleHotkey(kHotkeyPause);
  // "b" of the first cycle, then the whole second cycle.
  EXPECT_EQ(f.Effects("keys"),
            (std::vector<std::string>{PlayFixture::Press(66), PlayFixture::Press(65),
                                      PlayFixture::Press(66)}));
  EXPECT_EQ(f.player.LastEnd(), PlayEnd::kCompleted);
}

TEST(PlayerStop, LockedHotkeysAreIgnoredUntilTheScriptUnlocks) {
  PlayFixture f;
  f.sim.ScheduleHotkey(150, kHotkeyPlay);
  f.Play({"lock", "100", "beep", "unlock", "500", "beep"});
  // The stop at 150 ms came while locked; nothing stops the play later.
  EXPECT_EQ(f.Effects("beep").size(), 2u);
  EXPECT_FALSE(f.player.HotkeysLocked());
}

TEST(PlayerStop, PauseBelongsToRapidFireWhileItIsArmed) {
  PlayFixture f;
  f.player.SetRapidFireArmed([] { return true; });
  f.Play({"<pause>", "beep"});
  EXPECT_EQ(f.Effects("beep").size(), 1u);
}

TEST(PlayerFailure, AFailingLineEndsThePassAndTheNextCycleStartsThere) {
  PlayFixture f;
  f.view.SetLoopCount(2);
  f.Play({"a", "goto x", "b"});
  // Cycle 1: a, then goto fails; cycle 2 starts again at the failing line.
  EXPECT_EQ(f.Effects("keys"), std::vector<std::string>{PlayFixture::Press(65)});
  EXPECT_EQ(f.Effects("error"),
            (std::vector<std::string>{R"({"ev":"error","line":2})", R"({"ev":"error","line":2})"}));
  EXPECT_EQ(f.player.CurrentLine(), 1);
  EXPECT_EQ(f.view.selected(), 1);
}

TEST(PlayerEnd, NotificationsFollowTheSetting) {
  const std::pair<int, const char*> cases[] = {
      {0, nullptr}, {1, "beep"}, {2, "msgbox"}, {3, "flash"}};
  for (const auto& [setting, ev] : cases) {
    PlayFixture f;
    f.player.Options().endNotifier = setting;
    f.Play({"'nothing"});
    for (const char* kind : {"beep", "msgbox", "flash"})
      EXPECT_EQ(f.Effects(kind).size(), ev && std::string(ev) == kind ? 1u : 0u) << setting << kind;
  }
}

TEST(PlayerEnd, UpReleasesTheModifiersInOneBatch) {
  PlayFixture f;
  f.player.Options().releaseModifiers = true;
  f.Play({"ctrl down"});
  EXPECT_EQ(f.Effects("keys").back(),
            PlayFixture::Keys(R"([17,"up"],[16,"up"],[18,"up"],[91,"up"],[92,"up"])"));
}

TEST(PlayerEnd, TraceHighlightsEachLineAndClearsAtTheEnd) {
  PlayFixture f;
  f.player.Options().trace = true;
  f.Play({"beep", "beep"});
  EXPECT_EQ(f.view.highlighted(), -1);
  EXPECT_FALSE(f.view.playingShown());
}

TEST(PlayerVariables, AssignmentsStoreTextAndAreSubstitutedLater) {
  PlayFixture f;
  f.Play({"#who = \"World\"", "key #who", "#who = 1+1"});
  EXPECT_EQ(f.Effects("var").front(), R"({"ev":"var","name":"#who","value":"World"})");
  EXPECT_EQ(f.Effects("keys").size(), 5u);
  EXPECT_EQ(f.view.variablesRefreshed(), 1);  // only a new name refreshes the display
  ASSERT_NE(f.player.Variables().Find("#who"), nullptr);
  EXPECT_EQ(*f.player.Variables().Find("#who"), "2");
}

TEST(PlayerVariables, SmallResultsAreStoredInPlainDecimals) {
  PlayFixture f;
  f.Play({"#a = 1/100000", "#b = 1+2*3^2", "#n = #b"});
  EXPECT_EQ(f.Effects("var"),
            (std::vector<std::string>{R"({"ev":"var","name":"#a","value":"0.00001"})",
                                      R"({"ev":"var","name":"#b","value":"37"})",
                                      R"({"ev":"var","name":"#n","value":"37"})"}));
}

TEST(PlayerVariables, EveryPlayStartsWithAnEmptyTable) {
  PlayFixture f;
  f.Play({"#a = 1"});
  f.Play({"key #a"});
  // "#a" is no longer a variable: the text is typed as written.
  EXPECT_EQ(f.Effects("keys").size(), 2u);
}

TEST(PlayerCycles, AnExceptionOutOfAPlayStillGivesTheWindowBack) {
  PlayFixture f;
  f.view.SetText("beep\r\nbeep");
  f.view.SetLineHook([](std::int64_t n) {
    if (n == 2) throw std::runtime_error("system failure");
  });
  EXPECT_THROW(f.player.PlayOrStop(), std::runtime_error);
  EXPECT_FALSE(f.player.Playing());
  EXPECT_FALSE(f.view.playingShown());
}

}  // namespace
}  // namespace kx::test

namespace kx::test {
namespace {

TEST(PlayerBlockedInput, IsToldOncePerPlayAndThePlayGoesOn) {
  PlayFixture f;
  f.sim.BlockInput(true);
  f.Play({"a", "lmouse down", "beep", "b"});
  EXPECT_EQ(f.Effects("status"),
            std::vector<std::string>{R"({"ev":"status","text":")" +
                                     std::string(Player::kInputBlockedMessage) + "\"}"});
  EXPECT_EQ(f.Effects("error"),
            std::vector<std::string>{R"({"ev":"error","line":1,"reason":"input-blocked"})"});
  EXPECT_TRUE(f.Effects("balloon").empty());
  EXPECT_EQ(f.Effects("beep").size(), 1u);
  EXPECT_TRUE(f.Effects("keys").empty());

  // The next play tells it again, with a balloon when comments show as balloons.
  f.player.Options().balloon = true;
  f.Play({"beep", "lmouse down"});
  EXPECT_EQ(f.Effects("error"),
            std::vector<std::string>{R"({"ev":"error","line":2,"reason":"input-blocked"})"});
  EXPECT_EQ(f.Effects("balloon").size(), 1u);
}

TEST(PlayerBlockedInput, InputTheSystemTakesIsNotReported) {
  PlayFixture f;
  f.Play({"a", "lmouse down", "key abc", "keys ctrl+c"});
  EXPECT_TRUE(f.Effects("error").empty());
  EXPECT_TRUE(f.Effects("status").empty());
}

}  // namespace
}  // namespace kx::test
