#pragma once
// The player's wait: pumps the message queue each turn so that the stop and
// pause hotkeys are seen, and ends once the time has passed or the play was
// stopped.
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "sys/clock_port.h"

namespace kx {

// The longest wait: what a signed 32-bit count of milliseconds holds (24.8
// days). Longer waits ("1e16") are cut to it, so that every clock below can
// count them.
inline constexpr double kLongestWaitMs = 2147483647.0;

// A wait's length, bounded above by the longest wait; a wait of 0 or less
// ends at once. NaN counts as 0.
inline double BoundedWaitMs(double milliseconds) {
  if (!(milliseconds == milliseconds)) return 0;
  return std::min(milliseconds, kLongestWaitMs);
}

// The whole milliseconds a wait line of the given value waits at speed 1
// (halves round to the even neighbour, as the player rounds).
inline std::int64_t WaitLengthMs(double value) {
  return static_cast<std::int64_t>(std::nearbyint(std::max(0.0, BoundedWaitMs(value))));
}

// `playing` is read after every pump; the wait returns as soon as it is false.
void PumpingWait(ClockPort& clock, double milliseconds, const bool& playing);

}  // namespace kx
