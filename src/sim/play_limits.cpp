#include "sim/play_limits.h"

#include <cmath>
#include <limits>

namespace kx::sim {

namespace {

// The first virtual microsecond past the time bound, where a wait must wake
// so that the bound is seen in time.
std::int64_t WakeUs(double maxMs) {
  constexpr double kLatestUs = static_cast<double>(std::numeric_limits<std::int64_t>::max() / 2);
  const double us = std::floor(maxMs) * 1000.0 + 1000.0;
  if (!(us < kLatestUs)) return static_cast<std::int64_t>(kLatestUs);
  return us < 0 ? 0 : static_cast<std::int64_t>(us);
}

}  // namespace

PlayLimiter::PlayLimiter(SimSystem& sim, SimView& view, Player& player, PlayLimits limits)
    : sim_(sim), player_(player), limits_(limits) {
  view.SetLineHook([this](std::int64_t linesRun) {
    linesRun_ = linesRun;
    Check();
  });
  sim.SetPumpHook([this] { Check(); }, WakeUs(limits_.maxMs));
}

void PlayLimiter::Check() {
  if (linesRun_ > limits_.maxLines || static_cast<double>(sim_.NowMs()) > limits_.maxMs ||
      sim_.trace().Events().size() > limits_.maxEvents) {
    reached_ = true;
    player_.Abort();
  }
}

}  // namespace kx::sim
