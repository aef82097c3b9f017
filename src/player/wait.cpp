#include "player/wait.h"

#include <cstdint>

namespace kx {

void PumpingWait(ClockPort& clock, double milliseconds, const bool& playing) {
  milliseconds = BoundedWaitMs(milliseconds);
  if (clock.HasPerformanceCounter()) {
    const double frequency = static_cast<double>(clock.PerformanceFrequency());
    std::int64_t start = clock.PerformanceCounter();
    for (;;) {
      clock.PumpMessages();
      if (!playing) return;
      const std::int64_t now = clock.PerformanceCounter();
      // A counter that appears to run backwards restarts the measure from 0.
      if (now < start) start = 0;
      const double elapsed = static_cast<double>(now - start) / frequency * 1000.0;
      if (elapsed > milliseconds) return;
      clock.WaitForMessageOrTimeout(milliseconds - elapsed);
    }
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
