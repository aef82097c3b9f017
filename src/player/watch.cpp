#include "player/watch.h"

#include <limits>

namespace kx {

std::vector<WatchRow> WatchRows(const Player& player) {
  std::vector<WatchRow> rows;
  const auto& variables = player.Variables().Entries();
  rows.reserve(variables.size() + 2 + player.OpenLoops().size());
  for (const auto& v : variables) rows.push_back({v.name, v.value});
  rows.push_back({kWatchCurrentValue, player.Value().ToText()});
  rows.push_back({kWatchCycles, std::to_string(player.CyclesLeft())});
  for (const LoopFrame& loop : player.OpenLoops()) {
    const bool endless = loop.remaining == std::numeric_limits<std::int32_t>::max();
    rows.push_back({"<r> " + std::to_string(loop.openLine + 1) + " 行目",
                    endless ? "∞" : std::to_string(loop.remaining)});
  }
  return rows;
}

}  // namespace kx
