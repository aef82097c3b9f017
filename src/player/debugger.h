#pragma once
// The debugger of the editor's text: its breakpoints, how a paused play goes
// on (to the next breakpoint, one line, or to a chosen line) and the window
// that was in front when it paused. It is the player's line gate, so it
// decides only about lines that run: a step lands where the player goes next
// (after a goto, a loop's end or a skipped case), never on a line it skips.
#include <optional>
#include <string>

#include "player/breakpoints.h"
#include "player/line_gate.h"
#include "sys/window_port.h"

namespace kx {

// The status bar's text while a play is paused before line `index` (from 0).
std::string DebugPauseText(int index);

class Debugger final : public LineGate {
 public:
  explicit Debugger(WindowPort& windows) : windows_(windows) {}

  Breakpoints& breakpoints() { return breakpoints_; }
  const Breakpoints& breakpoints() const { return breakpoints_; }

  // How the play goes on from now on; each holds until the next pause.
  void RunToBreakpoint();
  void Step();
  // Up to line `index`, or a breakpoint before it.
  void RunTo(int index);

  // The line the play paused before, while the debugger holds it paused.
  std::optional<int> PausedAt() const { return paused_; }
  // The paused play goes on, by whatever means: the window that was in
  // front when it paused comes back to the front before its next line.
  void Resuming();
  // The paused play was given up (stopped, or its text replaced).
  void Forget() { paused_.reset(); }

  bool MayPauseBefore(int index) const override;
  bool PauseBefore(int index) override;

 private:
  enum class Run { kToBreakpoint, kStep, kToLine };

  WindowPort& windows_;
  Breakpoints breakpoints_;
  Run run_ = Run::kToBreakpoint;
  int target_ = -1;
  std::optional<int> paused_;
  WindowHandle foreground_ = 0;
};

}  // namespace kx
