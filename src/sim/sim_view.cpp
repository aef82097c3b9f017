#include "sim/sim_view.h"

namespace kx::sim {

void SimView::OnAssigned(const std::string& name, const std::string& value) {
  sim_.trace().Add(sim_.NowMs(), "var", {{"name", name}, {"value", value}});
}

void SimView::OnInputBlocked(int line) {
  sim_.trace().Add(sim_.NowMs(), "error", {{"line", line}, {"reason", "input-blocked"}});
}

void SimView::OnLineFailed(int line) {
  sim_.trace().Add(sim_.NowMs(), "error", {{"line", line}});
}

}  // namespace kx::sim
