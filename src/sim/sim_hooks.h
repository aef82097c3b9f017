#pragma once
// The recorder's hooks on the simulated system: remembers when each hook was
// installed and removed, and delivers the events a test makes up while the
// hooks are installed (none reach a sink otherwise, as on Windows).
#include <cstdint>
#include <string>
#include <vector>

#include "recorder/hook_port.h"
#include "sim/sim_system.h"

namespace kx::sim {

class SimRecorderHooks final : public RecorderHookPort {
 public:
  explicit SimRecorderHooks(SimSystem& sim) : sim_(sim) {}

  struct Change {
    std::string what;  // "install mouse", "install keyboard", "remove mouse", ...
    std::int64_t atMs = 0;
  };
  std::vector<Change> changes;
  bool Installed() const { return sink_ != nullptr; }

  void Install(RecorderHookSink& sink) override {
    if (!sink_) {
      changes.push_back({"install mouse", sim_.NowMs()});
      changes.push_back({"install keyboard", sim_.NowMs()});
    }
    sink_ = &sink;
  }
  void Remove() override {
    if (!sink_) return;
    changes.push_back({"remove mouse", sim_.NowMs()});
    changes.push_back({"remove keyboard", sim_.NowMs()});
    sink_ = nullptr;
  }

  // --- events, as the system would report them ---
  void MoveMouse(Point screen) {
    sim_.SetCursorPos(screen);
    if (sink_) sink_->OnHookMouseMove(screen);
  }
  void TurnWheel(int delta) {
    if (sink_) sink_->OnHookWheel(delta);
  }
  void Key(int vk, int message, bool altDown = false) {
    if (sink_) sink_->OnHookKey(vk, message, altDown);
  }

 private:
  SimSystem& sim_;
  RecorderHookSink* sink_ = nullptr;
};

}  // namespace kx::sim
