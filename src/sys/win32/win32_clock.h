#pragma once
// The real clock: the performance counter, the message pump and waits that
// block until their deadline or the next message instead of polling.
#include <atomic>
#include <functional>
#include <thread>

#include "sys/clock_port.h"
#include "sys/win32/unique_handle.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

class Win32Clock final : public ClockPort {
 public:
  Win32Clock();
  ~Win32Clock() override;
  Win32Clock(const Win32Clock&) = delete;
  Win32Clock& operator=(const Win32Clock&) = delete;

  bool HasPerformanceCounter() override { return frequency_ > 0; }
  std::int64_t PerformanceCounter() override;
  std::int64_t PerformanceFrequency() override { return frequency_; }
  std::uint32_t TickCount() override;
  void PumpMessages() override;
  void Sleep(double milliseconds) override;
  void WaitForMessageOrTimeout(double milliseconds) override;
  LocalTime Now() override;

  // Whether waits run on a high-resolution waitable timer (else the system
  // timer resolution was raised to 1 ms for the life of this clock).
  bool HighResolutionTimer() const { return highResolution_; }
  // Whether the last moments of a wait are slept in slices shorter than a
  // millisecond (known a moment after the clock is made).
  bool FineSleeps() const { return fineSleeps_.load(std::memory_order_relaxed); }
  // Sees each message the pump takes before it is dispatched; a message it
  // takes (a window's keyboard shortcut) is not dispatched again.
  void SetMessageFilter(std::function<bool(MSG&)> filter) { filter_ = std::move(filter); }

 private:
  // Arms the timer to fire the given time from now; false when it cannot.
  bool Arm(double milliseconds);
  // Blocks until the counter passes the deadline; with `wakeOnMessage`,
  // returns true as soon as a message is waiting.
  bool WaitUntil(std::int64_t deadline, bool wakeOnMessage);
  std::int64_t DeadlineIn(double milliseconds);
  // Sleeps the last moments before the deadline in short slices; returns
  // true as soon as a message is waiting when `wakeOnMessage` is set.
  bool FinishFinely(std::int64_t deadline, bool wakeOnMessage);
  // Sleeps the given time, below a millisecond, without the timer.
  void FineSleep(double milliseconds);
  // Tries a few fine sleeps and notes whether they keep their length.
  void ProbeFineSleeps();
  // Runs the probe on a thread of its own, away from the window's thread.
  void StartProbe();
  // After fine sleeps were given up, tries them again now and then.
  void ProbeAgainLater();
  double Milliseconds(std::int64_t ticks) const;

  std::int64_t frequency_ = 0;
  unique_kernel_handle timer_;
  bool highResolution_ = false;
  bool periodRaised_ = false;
  using DelayFunction = long(__stdcall*)(unsigned char alertable, LARGE_INTEGER* interval);
  DelayFunction delay_ = nullptr;
  std::atomic<bool> fineSleeps_{false};
  std::atomic<bool> probing_{false};
  std::int64_t lastProbe_ = 0;  // counter value when fine sleeps were last tried or given up
  std::thread probe_;
  std::function<bool(MSG&)> filter_;
};

}  // namespace kx::win32
