// Wait benchmark helper (Windows console program, run under Wine):
//   kx_wait_probe [STEPS]
// plays STEPS waits of 8 ms and of 100 ms on the program's own timeline and
// clock, with no other program involved, and prints for each length how far
// each wait ended after its deadline (median, p99, max in ms) and the drift
// of the whole series. Set beside wine_timing.sh, which measures at the
// receiving program, it tells the clock's own lateness from the receiver's.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "player/timeline.h"
#include "player/wait.h"
#include "sys/win32/win32_clock.h"

namespace {

constexpr int kDefaultSteps = 300;
constexpr double kLengthsMs[] = {8, 100};
constexpr double kPercentile = 0.99;

void Measure(kx::win32::Win32Clock& clock, double lengthMs, int steps) {
  kx::Timeline timeline(clock);
  const bool playing = true;
  std::vector<double> late;
  late.reserve(static_cast<std::size_t>(steps));
  timeline.Restart();
  const std::int64_t start = clock.PerformanceCounter();
  for (int i = 1; i <= steps; ++i) {
    timeline.Wait(lengthMs, playing);
    const double due = lengthMs * i;
    late.push_back(kx::CounterMilliseconds(clock, clock.PerformanceCounter() - start) - due);
  }
  const double drift = late.back();
  std::sort(late.begin(), late.end());
  const auto at = [&](double share) {
    return late[std::min(late.size() - 1,
                         static_cast<std::size_t>(share * static_cast<double>(late.size())))];
  };
  std::printf(
      "wait %5.0f ms n=%d late by: median %.3f  p99 %.3f  max %.3f  min %.3f ms  drift %.3f ms\n",
      lengthMs, steps, at(0.5), at(kPercentile), late.back(), late.front(), drift);
}

}  // namespace

int main(int argc, char** argv) {
  const int steps = argc > 1 ? std::max(1, std::atoi(argv[1])) : kDefaultSteps;
  kx::win32::Win32Clock clock;
  std::printf("high-resolution timer: %s\n", clock.HighResolutionTimer() ? "yes" : "no");
  for (double length : kLengthsMs) Measure(clock, length, steps);
  std::printf("fine sleeps at the end of waits: %s\n", clock.FineSleeps() ? "yes" : "no");
  return 0;
}
