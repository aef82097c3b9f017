#include "sim/sim_view.h"

namespace kx::sim {

void SimView::OnAssigned(const std::string& name, const std::string& value) {
  sim_.trace().Add(sim_.NowMs(), "var",
                   "\"name\":" + JsonString(name) + ",\"value\":" + JsonString(value));
}

void SimView::OnLineFailed(int line) {
  sim_.trace().Add(sim_.NowMs(), "error", "\"line\":" + std::to_string(line));
}

}  // namespace kx::sim
