#pragma once
// Scheduled runs: given the Auto list, the program's start time, the time
// the schedule was loaded and the current time, which macros are due. Times
// are whole local clock seconds; the window's 800 ms timer asks on each
// tick.
//
// Every clock second since the previous tick is looked at once, so a late
// tick loses no second and a run is never due twice in one second. Ticks
// during a play only move that mark on: a run that falls inside another
// play is lost. A clock set backwards is followed from where it now stands
// (the seconds it went back over come again). After a long gap (the machine
// slept) only the last few seconds are looked at, so no backlog of runs
// starts at once.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/settings_lists.h"
#include "sys/clock_port.h"

namespace kx::gui {

inline constexpr char kScheduleAfterStart[] = "起動後";
inline constexpr char kScheduleInterval[] = "インターバル";
inline constexpr char kScheduleDaily[] = "毎日";
inline constexpr char kScheduleStopped[] = "停止";

inline constexpr int kScheduleTickMs = 800;
inline constexpr int kSecondsPerDay = 24 * 60 * 60;
// The most seconds one tick looks back over.
inline constexpr std::int64_t kScheduleCatchUpSeconds = 5;

// Local time as whole seconds since 1970-01-01 00:00 of the same clock.
std::int64_t LocalSeconds(const LocalTime& time);

// "h:mm:ss" (hours, minutes, seconds) as seconds; nothing when malformed.
std::optional<int> ParseScheduleTime(std::string_view text);
// Seconds of a day as the time picker shows them: "9:05:00".
std::string FormatScheduleTime(int secondsOfDay);

class Schedule {
 public:
  // The start time is taken once at start-up and never changes.
  void SetStartTime(std::int64_t seconds) { startTime_ = seconds; }
  // Reads the Auto value and takes `now` as the interval reference.
  void Load(std::string_view autoValue, std::int64_t now);
  bool Empty() const { return runs_.empty(); }
  const std::vector<ScheduledRun>& Runs() const { return runs_; }

  // The macro paths due at this tick, in list order. While a macro plays
  // nothing is due, and the seconds passed are not looked at again.
  std::vector<std::string> Tick(std::int64_t now, bool playing);

 private:
  bool DueAt(const ScheduledRun& run, std::int64_t second) const;

  std::vector<ScheduledRun> runs_;
  std::int64_t startTime_ = 0;
  std::int64_t loadTime_ = 0;
  std::int64_t lastSeen_ = 0;  // the last second already looked at
};

}  // namespace kx::gui
