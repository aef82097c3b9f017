#include "player/wait.h"

#include <cmath>

namespace kx {

std::int64_t CounterTicks(ClockPort& clock, double milliseconds) {
  return std::llround(milliseconds * static_cast<double>(clock.PerformanceFrequency()) / 1000.0);
}

double CounterMilliseconds(ClockPort& clock, std::int64_t ticks) {
  return static_cast<double>(ticks) / static_cast<double>(clock.PerformanceFrequency()) * 1000.0;
}

void PumpingWaitUntil(ClockPort& clock, std::int64_t start, std::int64_t deadline,
                      const bool& playing) {
  for (;;) {
    clock.PumpMessages();
    if (!playing) return;
    const std::int64_t now = clock.PerformanceCounter();
    // A counter that appears to run backwards restarts the measure from 0.
    if (now < start) {
      deadline -= start;
      start = 0;
    }
    if (now > deadline) return;
    clock.WaitForMessageOrTimeout(CounterMilliseconds(clock, deadline - now));
  }
}

void PumpingWait(ClockPort& clock, double milliseconds, const bool& playing) {
  milliseconds = BoundedWaitMs(milliseconds);
  if (clock.HasPerformanceCounter()) {
    if (milliseconds < 0) {
      // Already over: the wait only pumps once.
      clock.PumpMessages();
      return;
    }
    const std::int64_t start = clock.PerformanceCounter();
    PumpingWaitUntil(clock, start, start + CounterTicks(clock, milliseconds), playing);
    return;
  }
  const std::uint32_t start = clock.TickCount();
  for (;;) {
    clock.PumpMessages();
    if (!playing) return;
    const std::uint32_t now = clock.TickCount();
    // The millisecond timer wraps after 49.7 days; a wrap ends the wait.
    if (now < start) return;
    const double elapsed = static_cast<double>(now - start);
    if (elapsed > milliseconds) return;
    // The timer moves in whole milliseconds: the wait must pass the mark.
    clock.WaitForMessageOrTimeout(milliseconds - elapsed + 1);
  }
}

}  // namespace kx
