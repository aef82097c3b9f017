#pragma once
// Date serials (days since 1899-12-30, the fraction being the time of day)
// to and from the Japanese short form "2024/03/05 9:05:03".
#include <optional>
#include <string>
#include <string_view>

namespace kx {

struct DateParts {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;
};

// The range of dates the runtime accepts: 100/01/01 to 9999/12/31.
inline constexpr double kMinDateSerial = -657434.0;
inline constexpr double kMaxDateSerial = 2958465.999988426;

// Nothing when a field is out of range or the date falls outside the range.
std::optional<double> SerialFromParts(const DateParts& parts);
// Rounded to the nearest second.
DateParts PartsFromSerial(double serial);
// "yyyy/mm/dd" for midnight, "h:nn:ss" for a time alone (day 0), both
// separated by a blank otherwise.
std::string FormatDate(double serial);
// "yyyy/m/d", "yyyy/m/d h:m[:s]", "h:m[:s]" ("-" also separates dates).
std::optional<double> ParseDate(std::string_view text);

}  // namespace kx
