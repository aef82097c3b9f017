#pragma once
// Bounds for a play on the simulated system: a macro may loop for ever
// ("goto 1" as its last line), wait for weeks ("1e16") or turn the wheel for
// hours ("wheel 2147483647"). Past a bound of virtual time, of lines run or of
// recorded effects the play is ended as a stop would end it. The bounds are
// checked before every line and at every pump of the message queue, so that
// they end a long wait or a long command too.
#include <cstddef>
#include <cstdint>

#include "player/player.h"
#include "sim/sim_system.h"
#include "sim/sim_view.h"

namespace kx::sim {

struct PlayLimits {
  double maxMs = 86'400'000;  // one virtual day
  std::int64_t maxLines = 1'000'000;
  std::size_t maxEvents = 1'000'000;  // effects in the trace
};

class PlayLimiter {
 public:
  // Installs itself as the view's line hook and the system's pump hook; it
  // must outlive the plays it bounds.
  PlayLimiter(SimSystem& sim, SimView& view, Player& player, PlayLimits limits = {});
  PlayLimiter(const PlayLimiter&) = delete;
  PlayLimiter& operator=(const PlayLimiter&) = delete;

  // True once a play was ended by a bound.
  bool Reached() const { return reached_; }

 private:
  void Check();

  SimSystem& sim_;
  Player& player_;
  PlayLimits limits_;
  std::int64_t linesRun_ = 0;
  bool reached_ = false;
};

}  // namespace kx::sim
