#include "gui/schedule.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace kx::gui {
namespace {

// A virtual clock ticking the schedule every 800 ms, collecting at which
// clock second each macro became due.
class ScheduleClock {
 public:
  explicit ScheduleClock(const LocalTime& start) : ms_(LocalSeconds(start) * 1000) {
    schedule.SetStartTime(Now());
  }
  std::int64_t Now() const { return ms_ / 1000; }
  void Load(std::string_view autoValue) { schedule.Load(autoValue, Now()); }
  // Ticks until `seconds` have passed; `playing` says which ticks fall
  // inside a play.
  void Run(int seconds, const std::function<bool(std::int64_t)>& playing = nullptr) {
    const std::int64_t end = ms_ + seconds * 1000LL;
    while (ms_ + kScheduleTickMs <= end) {
      ms_ += kScheduleTickMs;
      for (const std::string& path : schedule.Tick(Now(), playing && playing(Now())))
        runs[path].push_back(Now());
    }
  }
  void SetBack(int seconds) { ms_ -= seconds * 1000LL; }

  Schedule schedule;
  std::map<std::string, std::vector<std::int64_t>> runs;

 private:
  std::int64_t ms_;
};

constexpr LocalTime kNoon{2026, 11, 22, 12, 0, 0, 0};

std::vector<std::int64_t> After(std::int64_t base, std::vector<std::int64_t> offsets) {
  for (auto& o : offsets) o += base;
  return offsets;
}

TEST(ScheduleTime, ParsesAndFormatsThePickersForm) {
  EXPECT_EQ(ParseScheduleTime("0:00:04"), 4);
  EXPECT_EQ(ParseScheduleTime("00:01:00"), 60);
  EXPECT_EQ(ParseScheduleTime("23:59:59"), 86399);
  for (const char* bad :
       {"", "1:00", "24:00:00", "1:60:00", "a:00:00", "1:00:00x", "1::00", "-1:00:00", "100:00:00"})
    EXPECT_FALSE(ParseScheduleTime(bad).has_value()) << bad;
  EXPECT_EQ(FormatScheduleTime(4), "0:00:04");
  EXPECT_EQ(FormatScheduleTime(9 * 3600 + 5 * 60), "9:05:00");
  EXPECT_EQ(FormatScheduleTime(86399), "23:59:59");
}

TEST(ScheduleTime, LocalSecondsCountAcrossDaysMonthsAndYears) {
  EXPECT_EQ(LocalSeconds({1970, 1, 1, 0, 0, 0, 0}), 0);
  EXPECT_EQ(LocalSeconds({2026, 1, 1, 0, 0, 0, 0}) - LocalSeconds({2025, 12, 31, 23, 59, 59, 0}),
            1);
  EXPECT_EQ(LocalSeconds({2024, 3, 1, 0, 0, 0, 0}) - LocalSeconds({2024, 2, 28, 0, 0, 0, 0}),
            2 * kSecondsPerDay);  // a leap year
  EXPECT_EQ(LocalSeconds({2026, 11, 22, 12, 0, 0, 999}), LocalSeconds(kNoon));
}

TEST(Schedule, IntervalRunsEveryPeriodFromTheLoadNeverAtIt) {
  ScheduleClock clock(kNoon);
  clock.Load("インターバル,0:00:04,C:\\m\\a.ksx");
  const std::int64_t loaded = clock.Now();
  clock.Run(17);
  EXPECT_EQ(clock.runs["C:\\m\\a.ksx"], After(loaded, {4, 8, 12, 16}));
}

TEST(Schedule, IntervalOfAMinuteAndAReloadRestartsCounting) {
  ScheduleClock clock(kNoon);
  clock.Load("インターバル,00:01:00,a");
  clock.Run(130);
  const std::int64_t start = LocalSeconds(kNoon);
  EXPECT_EQ(clock.runs["a"], After(start, {60, 120}));
  clock.Load("インターバル,00:01:00,a");  // the options dialog was confirmed
  const std::int64_t reloaded = clock.Now();
  clock.Run(61);
  EXPECT_EQ(clock.runs["a"], After(start, {60, 120, reloaded - start + 60}));
}

TEST(Schedule, AfterStartRunsOnceCountedFromTheStartNotTheLoad) {
  ScheduleClock clock(kNoon);
  clock.Load("起動後,0:00:05,once");
  clock.Run(3);
  clock.Load("起動後,0:00:05,once|起動後,0:00:01,missed");  // reloaded at 2.4 s
  clock.Run(60);
  EXPECT_EQ(clock.runs["once"], After(LocalSeconds(kNoon), {5}));
  EXPECT_TRUE(clock.runs["missed"].empty());
}

TEST(Schedule, DailyRunsAtItsSecondAcrossADayChange) {
  ScheduleClock clock({2026, 11, 22, 23, 59, 50, 0});
  clock.Load("毎日,0:00:02,night|毎日,23:59:55,late|停止,23:59:56,off|日曜,23:59:57,odd");
  clock.Run(20);
  const std::int64_t midnight = LocalSeconds({2026, 11, 23, 0, 0, 0, 0});
  EXPECT_EQ(clock.runs["night"], After(midnight, {2}));
  EXPECT_EQ(clock.runs["late"], After(midnight, {-5}));
  EXPECT_TRUE(clock.runs["off"].empty());
  EXPECT_TRUE(clock.runs["odd"].empty());
  clock.Run(kSecondsPerDay);  // the next day, once again
  EXPECT_EQ(clock.runs["night"], After(midnight, {2, kSecondsPerDay + 2}));
}

TEST(Schedule, AClockSetBackwardsIsFollowedFromWhereItStands) {
  ScheduleClock clock(kNoon);
  clock.Load("毎日,12:00:10,daily|インターバル,0:00:04,every|起動後,0:00:06,after");
  clock.Run(12);
  const std::int64_t start = LocalSeconds(kNoon);
  EXPECT_EQ(clock.runs["daily"], After(start, {10}));
  EXPECT_EQ(clock.runs["every"], After(start, {4, 8, 12}));
  EXPECT_EQ(clock.runs["after"], After(start, {6}));

  clock.SetBack(60);  // to 11:59:12
  clock.Run(40);      // up to 11:59:52: before the load, nothing counts
  EXPECT_EQ(clock.runs["every"].size(), 3u);
  clock.Run(20);  // 12:00:12 again: the daily second came again
  EXPECT_EQ(clock.runs["daily"], After(start, {10, 10}));
  EXPECT_EQ(clock.runs["every"], After(start, {4, 8, 12, 4, 8, 12}));
  EXPECT_EQ(clock.runs["after"], After(start, {6, 6}));
}

TEST(Schedule, RunsFallingInsideAPlayAreLost) {
  ScheduleClock clock(kNoon);
  clock.Load("インターバル,0:00:02,every|起動後,0:00:03,after");
  const std::int64_t start = LocalSeconds(kNoon);
  // A play runs from 1.x s to 5.x s.
  clock.Run(9, [&](std::int64_t now) { return now - start >= 1 && now - start <= 5; });
  EXPECT_EQ(clock.runs["every"], After(start, {6, 8}));
  EXPECT_TRUE(clock.runs["after"].empty());
}

TEST(Schedule, ALateTickLosesNoSecondAndNoSecondRunsTwice) {
  Schedule schedule;
  const std::int64_t t = LocalSeconds(kNoon);
  schedule.SetStartTime(t);
  schedule.Load("インターバル,0:00:03,every|起動後,0:00:04,after", t);
  EXPECT_TRUE(schedule.Tick(t + 1, false).empty());
  // The timer was held up from 1 s to 5 s: 3 and 4 are still seen.
  EXPECT_EQ(schedule.Tick(t + 5, false), (std::vector<std::string>{"every", "after"}));
  // A second tick in the same second is not due again.
  EXPECT_TRUE(schedule.Tick(t + 5, false).empty());
  // After a long sleep only the last seconds count: one run, not a backlog.
  EXPECT_EQ(schedule.Tick(t + 3600, false), std::vector<std::string>{"every"});
}

TEST(Schedule, EmptyOrMalformedListsRunNothing) {
  ScheduleClock clock(kNoon);
  clock.Load("");
  EXPECT_TRUE(clock.schedule.Empty());
  clock.Load("インターバル,0:00:00,zero|インターバル,soon,bad|毎日|,,");
  EXPECT_FALSE(clock.schedule.Empty());
  clock.Run(10);
  EXPECT_TRUE(clock.runs.empty());
}

}  // namespace
}  // namespace kx::gui
