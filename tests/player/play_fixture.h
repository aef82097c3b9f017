#pragma once
// A player on the simulated system, with helpers to run a script and read
// back what it did.
#include <initializer_list>
#include <string>
#include <vector>

#include "player/player.h"
#include "sim/play_limits.h"
#include "sim/sim_system.h"
#include "sim/sim_view.h"

namespace kx::test {

class PlayFixture {
 public:
  PlayFixture() {
    sim.SetHotkeySink([this](int id) { player.HandleHotkey(id); });
  }

  static std::string Script(std::initializer_list<std::string> lines) {
    std::string text;
    for (const auto& l : lines) text += (text.empty() ? "" : "\r\n") + l;
    return text;
  }

  // Plays the script as the play button does; returns the trace without
  // the caption events, as JSON objects without their time.
  std::vector<std::string> Play(const std::string& text) {
    view.SetText(text);
    sim.trace().Clear();
    sim.ResetClock();
    player.PlayOrStop();
    return Effects();
  }
  std::vector<std::string> Play(std::initializer_list<std::string> lines) {
    return Play(Script(lines));
  }

  std::vector<std::string> Effects() const {
    std::vector<std::string> out;
    for (const auto& e : sim.trace().Events())
      if (e.ev != "caption") out.push_back(Untimed(e));
    return out;
  }
  std::vector<std::string> Effects(const std::string& kind) const {
    std::vector<std::string> out;
    for (const auto& e : sim.trace().OfKind(kind)) out.push_back(Untimed(e));
    return out;
  }
  // The virtual times of the events of one kind.
  std::vector<std::int64_t> Times(const std::string& kind) const {
    std::vector<std::int64_t> out;
    for (const auto& e : sim.trace().OfKind(kind)) out.push_back(e.t);
    return out;
  }

  static std::string Untimed(const sim::TraceEvent& e) { return e.ToUntimedJson(); }
  static std::string Keys(const std::string& list) {
    return R"({"ev":"keys","keys":[)" + list + "]}";
  }
  static std::string Press(int vk) {
    return Keys("[" + std::to_string(vk) + ",\"down\"],[" + std::to_string(vk) + ",\"up\"]");
  }

  sim::SimSystem sim;
  sim::SimView view{sim};
  Player player{sim.Ports(), view};
  // The bounds of "kx run --dry": a control-flow fault fails its test
  // instead of hanging the run.
  sim::PlayLimiter limiter{sim, view, player};
};

}  // namespace kx::test
