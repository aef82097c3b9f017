#pragma once
// The play-speed menu: its entries in order, and the factor each multiplies
// every wait by. The setting "rate" holds the index of the checked entry.
#include <array>
#include <string_view>

namespace kx {

struct PlaySpeed {
  std::string_view caption;
  double factor;
};

inline constexpr std::array kPlaySpeeds = {
    PlaySpeed{"標準(&S)", 1}, PlaySpeed{"2倍速", 0.5}, PlaySpeed{"4倍速", 0.25},
    PlaySpeed{"1/2倍速", 2},  PlaySpeed{"1/4倍速", 4}, PlaySpeed{"1/8倍速", 8},
};

// The pause between two lines of which neither is a wait, at normal speed;
// the play speed scales it as it scales a wait.
inline constexpr int kLinePauseMs = 8;

// The factor of the entry with the given index; an index outside the menu
// selects the normal speed.
inline double SpeedFactorFromRate(int rate) {
  if (rate < 0 || rate >= static_cast<int>(kPlaySpeeds.size())) return 1;
  return kPlaySpeeds[static_cast<size_t>(rate)].factor;
}

}  // namespace kx
