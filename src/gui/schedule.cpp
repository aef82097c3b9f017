#include "gui/schedule.h"

#include <algorithm>
#include <charconv>

namespace kx::gui {

namespace {

constexpr int kSecondsPerHour = 3600;
constexpr int kSecondsPerMinute = 60;
constexpr int kMaxHours = 23;
constexpr int kMaxMinutesOrSeconds = 59;

// Days since 1970-01-01 of a proleptic Gregorian date.
std::int64_t DaysFromCivil(int year, int month, int day) {
  const std::int64_t y = static_cast<std::int64_t>(year) - (month <= 2 ? 1 : 0);
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const std::int64_t yearOfEra = y - era * 400;
  const std::int64_t shiftedMonth = month > 2 ? month - 3 : month + 9;
  const std::int64_t dayOfYear = (153 * shiftedMonth + 2) / 5 + day - 1;
  const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + dayOfEra - 719468;
}

std::optional<int> Number(std::string_view text, int max) {
  int value = 0;
  if (text.empty() || text.size() > 2) return std::nullopt;
  for (const char c : text)
    if (c < '0' || c > '9') return std::nullopt;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size() || value > max) return std::nullopt;
  return value;
}

std::string TwoDigits(int value) {
  return std::string(value < 10 ? "0" : "") + std::to_string(value);
}

}  // namespace

std::int64_t LocalSeconds(const LocalTime& time) {
  return DaysFromCivil(time.year, time.month, time.day) * kSecondsPerDay +
         time.hour * kSecondsPerHour + time.minute * kSecondsPerMinute + time.second;
}

std::optional<int> ParseScheduleTime(std::string_view text) {
  const std::size_t first = text.find(':');
  if (first == std::string_view::npos) return std::nullopt;
  const std::size_t second = text.find(':', first + 1);
  if (second == std::string_view::npos) return std::nullopt;
  const auto hours = Number(text.substr(0, first), kMaxHours);
  const auto minutes = Number(text.substr(first + 1, second - first - 1), kMaxMinutesOrSeconds);
  const auto seconds = Number(text.substr(second + 1), kMaxMinutesOrSeconds);
  if (!hours || !minutes || !seconds) return std::nullopt;
  return *hours * kSecondsPerHour + *minutes * kSecondsPerMinute + *seconds;
}

std::string FormatScheduleTime(int secondsOfDay) {
  const int s = ((secondsOfDay % kSecondsPerDay) + kSecondsPerDay) % kSecondsPerDay;
  return std::to_string(s / kSecondsPerHour) + ":" +
         TwoDigits(s / kSecondsPerMinute % kSecondsPerMinute) + ":" +
         TwoDigits(s % kSecondsPerMinute);
}

void Schedule::Load(std::string_view autoValue, std::int64_t now) {
  runs_ = ParseAutoList(autoValue);
  loadTime_ = now;
  lastSeen_ = now - 1;  // the load's own second is looked at too
}

bool Schedule::DueAt(const ScheduledRun& run, std::int64_t second) const {
  const auto seconds = ParseScheduleTime(run.time);
  if (!seconds) return false;  // a malformed record never runs
  if (run.kind == kScheduleAfterStart) return second - startTime_ == *seconds;
  if (run.kind == kScheduleInterval) {
    const std::int64_t elapsed = second - loadTime_;
    return *seconds > 0 && elapsed > 0 && elapsed % *seconds == 0;
  }
  if (run.kind == kScheduleDaily) {
    const std::int64_t ofDay = ((second % kSecondsPerDay) + kSecondsPerDay) % kSecondsPerDay;
    return ofDay == *seconds;
  }
  return false;  // 停止, or a kind this program does not know
}

std::vector<std::string> Schedule::Tick(std::int64_t now, bool playing) {
  std::vector<std::string> due;
  if (now < lastSeen_) lastSeen_ = now - 1;  // the clock went back
  const std::int64_t from = std::max(lastSeen_ + 1, now - kScheduleCatchUpSeconds + 1);
  lastSeen_ = std::max(lastSeen_, now);
  if (playing) return due;
  for (const ScheduledRun& run : runs_) {
    for (std::int64_t second = from; second <= now; ++second) {
      if (DueAt(run, second)) {
        due.push_back(run.path);
        break;
      }
    }
  }
  return due;
}

}  // namespace kx::gui
