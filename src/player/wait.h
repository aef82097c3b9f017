#pragma once
// The player's waits: they pump the message queue each turn so that the stop
// and pause hotkeys are seen, and end once their time has passed or the play
// was stopped.
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

// A wait of its own length from now. `playing` is read after every pump; the
// wait returns as soon as it is false.
void PumpingWait(ClockPort& clock, double milliseconds, const bool& playing);

// A wait that ends once the performance counter has passed `deadline`. The
// counter read at `start` tells a counter that runs backwards: the measure
// then restarts from zero, as the millisecond wait does.
void PumpingWaitUntil(ClockPort& clock, std::int64_t start, std::int64_t deadline,
                      const bool& playing);

// Milliseconds to and from ticks of the performance counter.
std::int64_t CounterTicks(ClockPort& clock, double milliseconds);
double CounterMilliseconds(ClockPort& clock, std::int64_t ticks);

}  // namespace kx
