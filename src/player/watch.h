#pragma once
// What the variable watch shows of a play: every variable in the order of
// the table, then the current value, the cycles left and the counter of each
// open partial loop.
#include <string>
#include <vector>

#include "player/player.h"

namespace kx {

struct WatchRow {
  std::string name;
  std::string value;
  friend bool operator==(const WatchRow&, const WatchRow&) = default;
};

inline constexpr char kWatchCurrentValue[] = "現在の値";
inline constexpr char kWatchCycles[] = "サイクル";

// The rows, top to bottom. A loop's row is named after its "<r …>" line
// ("<r> 3 行目") and holds the passes still to come after the running one;
// the endless "<r>" shows "∞".
std::vector<WatchRow> WatchRows(const Player& player);

}  // namespace kx
