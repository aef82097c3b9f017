#pragma once
// A main window for the simulated system: holds the macro text and the
// loop-count box, and records assignments and failures in the trace.
#include <cstdint>
#include <functional>
#include <string>

#include "player/player_view.h"
#include "sim/sim_system.h"

namespace kx::sim {

class SimView final : public PlayerView {
 public:
  explicit SimView(SimSystem& sim) : sim_(sim) {}

  void SetText(std::string text) { text_ = std::move(text); }
  void SetLoopCount(int n) { loopCount_ = n; }
  // Called before each line with the number of lines run so far.
  void SetLineHook(std::function<void(std::int64_t)> hook) { lineHook_ = std::move(hook); }

  bool playingShown() const { return playingShown_; }
  int highlighted() const { return highlighted_; }
  int selected() const { return selected_; }
  int variablesRefreshed() const { return variablesRefreshed_; }

  std::string Text() override { return text_; }
  int LoopCount() override { return loopCount_; }
  void SetPlaying(bool playing) override { playingShown_ = playing; }
  void HighlightLine(int index) override { highlighted_ = index; }
  void ClearHighlight() override { highlighted_ = -1; }
  void SelectLine(int index) override { selected_ = index; }
  void VariablesChanged() override { ++variablesRefreshed_; }
  std::string IdleCaption() override { return "Kestrelix"; }
  WindowHandle MainWindow() override { return 0x10000; }
  void OnAssigned(const std::string& name, const std::string& value) override;
  void OnLineFailed(int line) override;
  void OnInputBlocked(int line) override;
  void OnLine(int) override {
    if (lineHook_) lineHook_(++linesRun_);
  }

 private:
  SimSystem& sim_;
  std::string text_;
  int loopCount_ = 1;
  std::function<void(std::int64_t)> lineHook_;
  std::int64_t linesRun_ = 0;
  bool playingShown_ = false;
  int highlighted_ = -1;
  int selected_ = -1;
  int variablesRefreshed_ = 0;
};

}  // namespace kx::sim
