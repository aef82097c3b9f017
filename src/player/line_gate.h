#pragma once
// Where a debugger meets the player: before a line of the editor's text runs,
// the player asks whether to pause there. The pause is the pause/resume
// hotkey's: the play ends with CurrentLine and CyclesLeft kept, and resuming
// runs that line first, without asking again.
namespace kx {

class LineGate {
 public:
  virtual ~LineGate() = default;
  // A cheap first question, asked before every line of the top-level pass:
  // could the play pause before line `index` (from 0)? Only when it could
  // does the player work out whether the line does anything.
  virtual bool MayPauseBefore(int index) const = 0;
  // Line `index` is about to run and does something (it is not blank and
  // not inside a switch region that is being skipped). True pauses the play
  // before it.
  virtual bool PauseBefore(int index) = 0;
};

}  // namespace kx
