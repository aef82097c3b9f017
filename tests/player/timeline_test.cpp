#include "player/timeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "player/play_fixture.h"

namespace kx::test {
namespace {

// A clock in microseconds whose sleeps and timed waits wake late by a set
// amount, as a real timer does, and whose message pump runs a handler once
// the clock reaches its time.
class LateClock final : public ClockPort {
 public:
  std::int64_t nowUs = 1'000'000;
  std::int64_t lateUs = 0;
  std::int64_t messageAtUs = -1;
  std::function<void()> onMessage;

  bool HasPerformanceCounter() override { return true; }
  std::int64_t PerformanceCounter() override { return nowUs; }
  std::int64_t PerformanceFrequency() override { return 1'000'000; }
  std::uint32_t TickCount() override { return static_cast<std::uint32_t>(nowUs / 1000); }
  void PumpMessages() override {
    if (messageAtUs >= 0 && nowUs >= messageAtUs) {
      messageAtUs = -1;
      onMessage();
    }
  }
  void Sleep(double milliseconds) override { nowUs += Us(milliseconds) + lateUs; }
  void WaitForMessageOrTimeout(double milliseconds) override {
    // Time moves on, if only by a tick, whenever the program waits.
    const std::int64_t woke = nowUs + std::max<std::int64_t>(Us(milliseconds) + lateUs, 1);
    nowUs = messageAtUs >= nowUs && messageAtUs < woke ? messageAtUs : woke;
  }
  LocalTime Now() override { return {}; }

  double ElapsedMs(std::int64_t fromUs) const { return static_cast<double>(nowUs - fromUs) / 1000; }
  void Work(double milliseconds) { nowUs += Us(milliseconds); }

 private:
  static std::int64_t Us(double milliseconds) {
    return static_cast<std::int64_t>(milliseconds * 1000 + 0.999);
  }
};

struct TimelineSetup {
  LateClock clock;
  Timeline timeline{clock};
  bool playing = true;
  std::int64_t startUs = 0;

  TimelineSetup() {
    clock.lateUs = 300;
    timeline.Restart();
    startUs = clock.nowUs;
  }
};

TEST(Timeline, LatenessAndTheLinesOwnTimeDoNotAddUpOverManySteps) {
  TimelineSetup s;
  constexpr int kSteps = 1000;
  for (int i = 0; i < kSteps; ++i) {
    s.clock.Work(0.15);  // pressing the key of the step
    if (i % 2 == 0) {
      s.timeline.Wait(8, s.playing);
    } else {
      s.timeline.Pause(8);
    }
  }
  // Only the last step's lateness shows, not a thousand of them.
  EXPECT_GE(s.clock.ElapsedMs(s.startUs), kSteps * 8.0);
  EXPECT_LE(s.clock.ElapsedMs(s.startUs), kSteps * 8.0 + 0.5);
}

TEST(Timeline, EachWaitStillEndsOnlyOnceItsDeadlineHasPassed) {
  TimelineSetup s;
  s.clock.lateUs = 0;
  s.timeline.Wait(100, s.playing);
  EXPECT_GT(s.clock.ElapsedMs(s.startUs), 100);
  s.timeline.Pause(8);
  EXPECT_GE(s.clock.ElapsedMs(s.startUs), 108);
}

TEST(Timeline, LinePausesCatchUpOnlyAMillisecondAStep) {
  TimelineSetup s;
  s.clock.lateUs = 0;
  s.timeline.Wait(8, s.playing);
  s.clock.Work(kFallenBehindMs - 1);  // a slow line
  std::int64_t before = s.clock.nowUs;
  for (int i = 0; i < 30; ++i) {
    s.timeline.Pause(8);
    // No step is cut by more than the catch-up allows.
    EXPECT_GE(s.clock.ElapsedMs(before), 8 - kPauseCatchUpMs);
    before = s.clock.nowUs;
  }
  // Back on the timeline it had before the slow line.
  EXPECT_NEAR(s.clock.ElapsedMs(s.startUs), 8 + 30 * 8, 0.5);
}

TEST(Timeline, WaitLinesCatchUpByAtMostHalfTheirLength) {
  TimelineSetup s;
  s.clock.lateUs = 0;
  s.timeline.Wait(8, s.playing);
  s.clock.Work(kFallenBehindMs - 1);  // a slow line
  std::int64_t before = s.clock.nowUs;
  s.timeline.Wait(10, s.playing);
  EXPECT_NEAR(s.clock.ElapsedMs(before), 10 * (1 - kWaitCatchUpShare), 0.01);
  before = s.clock.nowUs;
  s.timeline.Wait(100, s.playing);
  // The rest of the slow line is made up by the long wait.
  EXPECT_NEAR(s.clock.ElapsedMs(before), 100 - (kFallenBehindMs - 1 - 5), 0.01);
  EXPECT_NEAR(s.clock.ElapsedMs(s.startUs), 8 + 10 + 100, 0.01);
}

TEST(Timeline, WaitsLateByMoreThanAPauseMayCatchUpDoNotDrift) {
  // A loaded machine: every wake-up is 2.5 ms late and each key line takes
  // a millisecond, more than a line pause could make up at each step.
  TimelineSetup s;
  s.clock.lateUs = 2500;
  constexpr int kSteps = 1000;
  for (int i = 0; i < kSteps; ++i) {
    s.clock.Work(1);
    s.timeline.Wait(8, s.playing);
  }
  EXPECT_LE(s.clock.ElapsedMs(s.startUs), kSteps * 8.0 + 3.5);
}

TEST(Timeline, ASlowPatchOfManyStepsIsMadeUpAfterwards) {
  TimelineSetup s;
  // Thirty line pauses each 1.5 ms late: more than one pause may make up,
  // so the play falls behind, but by less than the limit.
  s.clock.lateUs = 1500;
  for (int i = 0; i < 30; ++i) s.timeline.Pause(8);
  EXPECT_GT(s.clock.ElapsedMs(s.startUs), 30 * 8 + 10);
  s.clock.lateUs = 0;
  for (int i = 0; i < 30; ++i) s.timeline.Pause(8);
  EXPECT_NEAR(s.clock.ElapsedMs(s.startUs), 60 * 8, 0.5);
}

TEST(Timeline, AWaitAfterManySlowStepsIsCutByNoMoreThanTheLimit) {
  TimelineSetup s;
  // Line pauses that each fall further behind: by the time of the wait the
  // play is far behind, though no single line overran by far.
  s.clock.lateUs = 3000;
  for (int i = 0; i < 40; ++i) s.timeline.Pause(8);
  s.clock.lateUs = 0;
  const std::int64_t before = s.clock.nowUs;
  s.timeline.Wait(250, s.playing);
  EXPECT_GE(s.clock.ElapsedMs(before), 250 - kFallenBehindMs);
}

TEST(Timeline, APlayFarBehindStartsItsTimelineAfreshInsteadOfRushing) {
  TimelineSetup s;
  s.timeline.Wait(8, s.playing);
  s.clock.Work(kFallenBehindMs + 1);  // a message box, a window that was waited for
  const std::int64_t before = s.clock.nowUs;
  s.timeline.Wait(30, s.playing);
  EXPECT_GE(s.clock.ElapsedMs(before), 30);
  EXPECT_LE(s.clock.ElapsedMs(before), 30.5);
  // The following steps keep to the new timeline.
  const std::int64_t restarted = before;
  for (int i = 0; i < 100; ++i) s.timeline.Pause(8);
  EXPECT_NEAR(s.clock.ElapsedMs(restarted), 30 + 800, 0.5);
}

TEST(Timeline, AStopMessageEndsTheWaitAtOnce) {
  TimelineSetup s;
  s.clock.messageAtUs = s.startUs + 5'000'000;
  s.clock.onMessage = [&] { s.playing = false; };
  s.timeline.Wait(60'000, s.playing);
  EXPECT_EQ(s.clock.nowUs, s.startUs + 5'000'000);
}

TEST(Timeline, OtherMessagesDoNotEndTheWait) {
  TimelineSetup s;
  s.clock.lateUs = 0;
  int seen = 0;
  s.clock.messageAtUs = s.startUs + 20'000;
  s.clock.onMessage = [&] { ++seen; };
  s.timeline.Wait(50, s.playing);
  EXPECT_EQ(seen, 1);
  EXPECT_GT(s.clock.ElapsedMs(s.startUs), 50);
}

TEST(Timeline, ANegativeWaitEndsAtOnceAndDoesNotMoveTheTimelineBack) {
  TimelineSetup s;
  s.timeline.Wait(8, s.playing);
  const std::int64_t before = s.clock.nowUs;
  s.timeline.Wait(-50, s.playing);
  EXPECT_EQ(s.clock.nowUs, before);
  s.timeline.Wait(8, s.playing);
  EXPECT_NEAR(s.clock.ElapsedMs(s.startUs), 16, 0.5);
}

TEST(Timeline, ACounterRunningBackwardsNeitherHangsNorStretchesAWait) {
  TimelineSetup s;
  s.clock.lateUs = 0;
  s.timeline.Wait(8, s.playing);
  s.clock.nowUs -= 500'000;
  const std::int64_t before = s.clock.nowUs;
  s.timeline.Pause(8);
  s.timeline.Wait(8, s.playing);
  EXPECT_LE(s.clock.ElapsedMs(before), 16.5);
}

TEST(PlayerTiming, ALongMacroKeepsToItsTimeline) {
  PlayFixture f;
  std::string text = "beep";
  for (int i = 0; i < 2000; ++i) text += "\r\n08\r\nbeep";
  f.Play(text);
  const auto t = f.Times("beep");
  ASSERT_EQ(t.size(), 2001u);
  EXPECT_EQ(t.back() - t.front(), 2000 * 8);
}

// A command that waits on purpose (the paste's clipboard retries, the sleep
// after "^") ends the timeline's step: what follows keeps its full length.
TEST(PlayerTiming, AfterACommandThatWaitsTheNextStepsKeepTheirLength) {
  const struct {
    std::initializer_list<std::string> lines;
    std::vector<std::int64_t> gaps;  // between consecutive key events, ms
  } cases[] = {
      {{"paste x", "30", "a"}, {30}},
      {{"paste x", "a", "b"}, {8, 8}},
      // "^" sleeps 250 ms after its Ctrl+V, then the wait keeps its 30.
      {{"^x", "30", "a", "b"}, {280, 8}},
      {{"a", "30", "b", "c"}, {30, 8}},
  };
  for (const auto& c : cases) {
    PlayFixture f;
    f.Play(c.lines);
    const auto t = f.Times("keys");
    std::vector<std::int64_t> gaps;
    for (std::size_t i = 1; i < t.size(); ++i) gaps.push_back(t[i] - t[i - 1]);
    EXPECT_EQ(gaps, c.gaps) << *c.lines.begin();
  }
}

}  // namespace
}  // namespace kx::test
