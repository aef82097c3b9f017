#pragma once
// The pacing of a play: one timeline on the performance counter that every
// wait line and line pause moves on by its length. A step ends at the
// previous point of the timeline plus its length, so the time the lines
// themselves take and the lateness of the timer are absorbed instead of
// adding up over a long macro. A play that is behind catches up: a wait line
// may give up to half of its length for it, a line pause only a millisecond,
// because the line pause is there to keep the input from outrunning the
// program that receives it. Only the player's own lateness is made up: a
// command that waits on purpose (for a window, the clipboard, a program, a
// page, a message box) starts the timeline afresh where it ends, as do the
// start and the resumption of a play, and so does a play far behind its
// timeline after many late steps, rather than rushing through the waits
// that follow.
#include <cstdint>

#include "sys/clock_port.h"

namespace kx {

// How far behind its timeline a play may be and still catch up.
inline constexpr double kFallenBehindMs = 20;
// How much shorter than its length a line pause may be while catching up.
inline constexpr double kPauseCatchUpMs = 1;
// The share of its length a wait line may give up while catching up.
inline constexpr double kWaitCatchUpShare = 0.5;

class Timeline {
 public:
  explicit Timeline(ClockPort& clock) : clock_(clock) {}

  // The timeline starts from now (the start or the resumption of a play, the
  // end of a command that waits on purpose).
  void Restart();
  // A wait line: pumps messages until the next deadline has passed, and
  // returns at once when `playing` is cleared.
  void Wait(double milliseconds, const bool& playing);
  // The pause between two lines: pumps the message queue once and sleeps
  // until the next deadline.
  void Pause(double milliseconds);

 private:
  // Moves the timeline on by the given time (from now when the last line
  // overran by far) and returns the deadline of the step: the timeline, but
  // no more than `catchUpMs` short of the step's length from now.
  std::int64_t Advance(std::int64_t now, double milliseconds, double catchUpMs);

  ClockPort& clock_;
  std::int64_t mark_ = 0;  // where the play should be, in counter ticks
  std::int64_t last_ = 0;  // the deadline of the last step
};

}  // namespace kx
