#pragma once
// The recorder's hooks on the simulated system: remembers when each hook was
// installed and removed, and delivers the events a test makes up while the
// hooks are installed (none reach a sink otherwise, as on Windows). Events
// carry the virtual clock's millisecond time.
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
  // The system refuses the hooks, as it may when another program's hook
  // chain is broken or the desktop is a secure one.
  bool refuse = false;
  bool Installed() const { return sink_ != nullptr; }

  bool Install(RecorderHookSink& sink) override {
    if (refuse) return false;
    if (!sink_) {
      changes.push_back({"install mouse", sim_.NowMs()});
      changes.push_back({"install keyboard", sim_.NowMs()});
    }
    sink_ = &sink;
    return true;
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
    if (sink_) sink_->OnHookMouseMove(screen, sim_.TickCount());
  }
  void TurnWheel(int delta) {
    if (sink_) sink_->OnHookWheel(delta, sim_.TickCount());
  }
  void Key(int vk, int message, bool altDown = false) {
    if (sink_) sink_->OnHookKey({vk, message, altDown, sim_.TickCount()});
  }
  // A key or mouse button going down or up: the hook's event, and the
  // physical state the sampling sees.
  void Press(int vk, bool down) {
    sim_.SetKeyDown(vk, down);
    if (vk == 1 || vk == 2 || vk == 4) {
      if (sink_) sink_->OnHookButton({vk, down, sim_.GetCursorPos(), sim_.TickCount()});
      return;
    }
    Key(vk, down ? kMsgKeyDown : kMsgKeyUp);
  }

 private:
  SimSystem& sim_;
  RecorderHookSink* sink_ = nullptr;
};

}  // namespace kx::sim
