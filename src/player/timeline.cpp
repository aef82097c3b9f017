#include "player/timeline.h"

#include <algorithm>
#include <cmath>

#include "player/wait.h"

namespace kx {

void Timeline::Restart() {
  if (clock_.HasPerformanceCounter()) mark_ = last_ = clock_.PerformanceCounter();
}

std::int64_t Timeline::Advance(std::int64_t now, double milliseconds, double catchUpMs) {
  // Before the last deadline the counter ran backwards; far behind the
  // timeline, a line took long (a message box, a window that was waited for)
  // or many steps were late. Either way there is no timeline to keep to.
  if (now < last_ || now - mark_ > CounterTicks(clock_, kFallenBehindMs)) mark_ = now;
  const std::int64_t length = CounterTicks(clock_, std::max(milliseconds, 0.0));
  mark_ += length;
  last_ = std::max(mark_, now + length - CounterTicks(clock_, catchUpMs));
  return last_;
}

void Timeline::Wait(double milliseconds, const bool& playing) {
  milliseconds = BoundedWaitMs(milliseconds);
  if (!clock_.HasPerformanceCounter() || milliseconds < 0) {
    PumpingWait(clock_, milliseconds, playing);
    return;
  }
  const std::int64_t start = clock_.PerformanceCounter();
  PumpingWaitUntil(clock_, start, Advance(start, milliseconds, milliseconds * kWaitCatchUpShare),
                   playing);
}

void Timeline::Pause(double milliseconds) {
  clock_.PumpMessages();
  if (!clock_.HasPerformanceCounter()) {
    clock_.Sleep(milliseconds);
    return;
  }
  const std::int64_t start = clock_.PerformanceCounter();
  const std::int64_t deadline = Advance(start, milliseconds, kPauseCatchUpMs);
  // A counter that runs backwards ends the pause rather than stretching it.
  for (std::int64_t now = start; now >= start && now < deadline;
       now = clock_.PerformanceCounter()) {
    clock_.Sleep(CounterMilliseconds(clock_, deadline - now));
  }
}

}  // namespace kx
