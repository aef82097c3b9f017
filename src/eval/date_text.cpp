#include "eval/date_text.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace kx {
namespace {

// Days from 1970-01-01 in the proleptic Gregorian calendar.
constexpr std::int64_t DaysFromCivil(std::int64_t y, int m, int d) {
  y -= m <= 2;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const std::int64_t yoe = y - era * 400;
  const std::int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

void CivilFromDays(std::int64_t z, int& y, int& m, int& d) {
  z += 719468;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const std::int64_t doe = z - era * 146097;
  const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const std::int64_t mp = (5 * doy + 2) / 153;
  d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  y = static_cast<int>(yoe + era * 400 + (m <= 2));
}

constexpr std::int64_t kEpoch = DaysFromCivil(1899, 12, 30);

int DaysInMonth(int y, int m) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
  return m == 2 && leap ? 29 : kDays[m - 1];
}

// Splits "a/b/c" into numbers; nothing unless every field is digits.
std::optional<std::vector<int>> Fields(std::string_view text, char sep) {
  std::vector<int> out;
  int v = 0;
  int digits = 0;
  for (char c : text) {
    if (c >= '0' && c <= '9') {
      if (++digits > 5) return std::nullopt;
      v = v * 10 + (c - '0');
    } else if (c == sep && digits > 0) {
      out.push_back(v);
      v = digits = 0;
    } else {
      return std::nullopt;
    }
  }
  if (digits == 0) return std::nullopt;
  out.push_back(v);
  return out;
}

}  // namespace

std::optional<double> SerialFromParts(const DateParts& p) {
  if (p.year < 100 || p.year > 9999 || p.month < 1 || p.month > 12 || p.day < 1 ||
      p.day > DaysInMonth(p.year, p.month) || p.hour < 0 || p.hour > 23 || p.minute < 0 ||
      p.minute > 59 || p.second < 0 || p.second > 59)
    return std::nullopt;
  const auto days = static_cast<double>(DaysFromCivil(p.year, p.month, p.day) - kEpoch);
  const double time = (p.hour * 3600 + p.minute * 60 + p.second) / 86400.0;
  // Before the epoch the fraction still counts forward from midnight.
  return days < 0 ? days - time : days + time;
}

DateParts PartsFromSerial(double serial) {
  double whole = std::trunc(serial);
  auto seconds = static_cast<std::int64_t>(std::llround(std::fabs(serial - whole) * 86400.0));
  if (seconds >= 86400) {
    seconds -= 86400;
    whole += serial < 0 ? -1 : 1;
  }
  DateParts p;
  CivilFromDays(static_cast<std::int64_t>(whole) + kEpoch, p.year, p.month, p.day);
  p.hour = static_cast<int>(seconds / 3600);
  p.minute = static_cast<int>(seconds / 60 % 60);
  p.second = static_cast<int>(seconds % 60);
  return p;
}

std::string FormatDate(double serial) {
  const DateParts p = PartsFromSerial(serial);
  char date[32];
  char time[32];
  std::snprintf(date, sizeof date, "%04d/%02d/%02d", p.year, p.month, p.day);
  std::snprintf(time, sizeof time, "%d:%02d:%02d", p.hour, p.minute, p.second);
  const bool dayZero = p.year == 1899 && p.month == 12 && p.day == 30;
  const bool midnight = p.hour == 0 && p.minute == 0 && p.second == 0;
  if (dayZero) return time;
  if (midnight) return date;
  return std::string(date) + " " + time;
}

std::optional<double> ParseDate(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  std::string_view datePart;
  std::string_view timePart;
  const size_t blank = text.find(' ');
  if (blank != std::string_view::npos) {
    datePart = text.substr(0, blank);
    timePart = text.substr(text.find_first_not_of(' ', blank));
  } else if (text.find(':') != std::string_view::npos) {
    timePart = text;
  } else {
    datePart = text;
  }
  DateParts p;
  if (!datePart.empty()) {
    auto f = Fields(datePart, datePart.find('-') != std::string_view::npos ? '-' : '/');
    if (!f || f->size() != 3) return std::nullopt;
    p.year = (*f)[0];
    p.month = (*f)[1];
    p.day = (*f)[2];
  }
  if (!timePart.empty()) {
    auto f = Fields(timePart, ':');
    if (!f || f->size() < 2 || f->size() > 3) return std::nullopt;
    p.hour = (*f)[0];
    p.minute = (*f)[1];
    p.second = f->size() == 3 ? (*f)[2] : 0;
  }
  return SerialFromParts(p);
}

}  // namespace kx
