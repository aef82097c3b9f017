#pragma once
// Time, the message pump and sleeping: everything the player's waits use.
#include <cstdint>

namespace kx {

// Local wall-clock time, for the evaluator's DATE, TIME and NOW.
struct LocalTime {
  int year = 2000;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millisecond = 0;
};

class ClockPort {
 public:
  virtual ~ClockPort() = default;
  // Tested once at start-up; waits fall back to TickCount without it.
  virtual bool HasPerformanceCounter() = 0;
  virtual std::int64_t PerformanceCounter() = 0;
  virtual std::int64_t PerformanceFrequency() = 0;
  // The millisecond system timer (timeGetTime); wraps around.
  virtual std::uint32_t TickCount() = 0;
  // Dispatches every pending window message once. Hotkeys arrive here and may
  // change the player's flags.
  virtual void PumpMessages() = 0;
  // Blocks for the given time, fractions of a millisecond included, without
  // waking for messages.
  virtual void Sleep(double milliseconds) = 0;
  // Blocks until a message is waiting or the given time has passed, whichever
  // comes first: one turn of a wait loop, without burning the processor.
  virtual void WaitForMessageOrTimeout(double milliseconds) = 0;
  virtual LocalTime Now() = 0;
};

}  // namespace kx
