#include "sys/win32/win32_clock.h"

#include <mmsystem.h>

#include <algorithm>
#include <cmath>

#include "sys/win32/windows_api.h"

#ifndef CREATE_WAITABLE_TIMER_HIGH_RESOLUTION
#define CREATE_WAITABLE_TIMER_HIGH_RESOLUTION 0x00000002
#endif

namespace kx::win32 {

namespace {

// How long before its end a long wait wakes to finish with short ones: a
// little more than the timer is late by at most (under Wine it rounds up to
// whole milliseconds).
constexpr double kEarlyWakeMs = 2;
// The slices of the end of a wait, and so how soon a message ends it there.
constexpr double kFineSliceMs = 0.25;
// Fine sleeps are used when one of a few slices of this length ...
constexpr double kProbeSliceMs = 0.2;
constexpr int kProbeSlices = 5;
// ... takes no longer than this. Where sleeps end on the system timer's tick
// (1 to 15.6 ms), the timer keeps ending the waits.
constexpr double kProbeLimitMs = 0.7;
// A slice this much longer than asked for means the system's sleeps have
// become coarse (another program lowered the timer resolution it had
// raised): the timer takes over, and the sleeps are tried again later.
constexpr double kSliceOverrunMs = 2;
constexpr double kReprobeAfterMs = 5000;
constexpr double kHundredNanosecondsPerMs = 10000.0;

}  // namespace

Win32Clock::Win32Clock() {
  LARGE_INTEGER f{};
  if (::QueryPerformanceFrequency(&f) && f.QuadPart > 0) frequency_ = f.QuadPart;
  // A high-resolution timer ends a wait within a fraction of a millisecond of
  // its deadline; older systems only have the ordinary timer, which is made
  // precise by raising the system timer resolution.
  timer_.reset(::CreateWaitableTimerExW(nullptr, nullptr, CREATE_WAITABLE_TIMER_HIGH_RESOLUTION,
                                        TIMER_ALL_ACCESS));
  highResolution_ = static_cast<bool>(timer_);
  if (!timer_) {
    timer_.reset(::CreateWaitableTimerExW(nullptr, nullptr, 0, TIMER_ALL_ACCESS));
    periodRaised_ = ::timeBeginPeriod(1) == TIMERR_NOERROR;
  }
  // The native sleep takes its length in 100 ns units, where Sleep takes
  // whole milliseconds. Whether it keeps a fraction of a millisecond depends
  // on the system, so it is tried, away from the window's thread.
  if (HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll"); ntdll && frequency_ > 0) {
    delay_ = reinterpret_cast<DelayFunction>(
        reinterpret_cast<void*>(::GetProcAddress(ntdll, "NtDelayExecution")));
    if (delay_) StartProbe();
  }
}

void Win32Clock::StartProbe() {
  if (probe_.joinable()) probe_.join();
  probing_.store(true);
  lastProbe_ = PerformanceCounter();
  probe_ = std::thread([this] {
    ProbeFineSleeps();
    probing_.store(false);
  });
}

void Win32Clock::ProbeAgainLater() {
  if (delay_ && !FineSleeps() && !probing_.load() &&
      Milliseconds(PerformanceCounter() - lastProbe_) >= kReprobeAfterMs)
    StartProbe();
}

double Win32Clock::Milliseconds(std::int64_t ticks) const {
  return static_cast<double>(ticks) * 1000.0 / static_cast<double>(frequency_);
}

Win32Clock::~Win32Clock() {
  if (probe_.joinable()) probe_.join();
  if (periodRaised_) ::timeEndPeriod(1);
}

void Win32Clock::FineSleep(double milliseconds) {
  LARGE_INTEGER interval{};
  // Negative: relative to now.
  interval.QuadPart = -std::max<LONGLONG>(1, std::llround(milliseconds * kHundredNanosecondsPerMs));
  delay_(FALSE, &interval);
}

void Win32Clock::ProbeFineSleeps() {
  // The shortest try tells what the sleep can do; the others may have waited
  // for a busy processor.
  double shortest = kProbeLimitMs + 1;
  for (int i = 0; i < kProbeSlices; ++i) {
    const std::int64_t start = PerformanceCounter();
    FineSleep(kProbeSliceMs);
    shortest = std::min(shortest, Milliseconds(PerformanceCounter() - start));
  }
  fineSleeps_.store(shortest <= kProbeLimitMs, std::memory_order_relaxed);
}

bool Win32Clock::FinishFinely(std::int64_t deadline, bool wakeOnMessage) {
  for (;;) {
    // Messages already seen by an earlier peek count too, as with
    // MWMO_INPUTAVAILABLE.
    if (wakeOnMessage && HIWORD(::GetQueueStatus(QS_ALLINPUT)) != 0) return true;
    const std::int64_t start = PerformanceCounter();
    const double remaining = Milliseconds(deadline - start);
    if (remaining <= 0) return false;
    const double slice = std::min(remaining, kFineSliceMs);
    FineSleep(slice);
    if (Milliseconds(PerformanceCounter() - start) > slice + kSliceOverrunMs) {
      fineSleeps_.store(false, std::memory_order_relaxed);
      lastProbe_ = PerformanceCounter();
      return WaitUntil(deadline, wakeOnMessage);
    }
  }
}

std::int64_t Win32Clock::PerformanceCounter() {
  LARGE_INTEGER c{};
  ::QueryPerformanceCounter(&c);
  return c.QuadPart;
}

std::uint32_t Win32Clock::TickCount() {
  return ::timeGetTime();
}

void Win32Clock::PumpMessages() {
  MSG msg;
  while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
    if (msg.message == WM_QUIT) {
      // The main loop must still see the request to end.
      ::PostQuitMessage(static_cast<int>(msg.wParam));
      return;
    }
    if (filter_ && filter_(msg)) continue;
    ::TranslateMessage(&msg);
    ::DispatchMessageW(&msg);
  }
}

bool Win32Clock::Arm(double milliseconds) {
  if (!timer_) return false;
  // Relative due times are negative, in units of 100 ns.
  LARGE_INTEGER due{};
  // Bounded so that the count of 100 ns units stays far inside 64 bits.
  constexpr double kLongestArmMs = 2147483647.0;
  due.QuadPart =
      -static_cast<LONGLONG>(std::llround(std::clamp(milliseconds, 0.0, kLongestArmMs) * 10000.0));
  if (due.QuadPart == 0) due.QuadPart = -1;
  return ::SetWaitableTimer(timer_.get(), &due, 0, nullptr, nullptr, FALSE) != 0;
}

bool Win32Clock::WaitUntil(std::int64_t deadline, bool wakeOnMessage) {
  ProbeAgainLater();
  for (;;) {
    const double remaining = Milliseconds(deadline - PerformanceCounter());
    if (remaining <= 0) return false;
    if (remaining <= kEarlyWakeMs && FineSleeps()) return FinishFinely(deadline, wakeOnMessage);
    // The timer wakes late by more the longer it was set for: a long wait
    // wakes a little before its end and finishes with short ones.
    const double step =
        FineSleeps() || remaining > 2 * kEarlyWakeMs ? remaining - kEarlyWakeMs : remaining;
    HANDLE timer = timer_.get();
    if (Arm(step)) {
      if (!wakeOnMessage) {
        ::WaitForSingleObject(timer, INFINITE);
        continue;
      }
      // MWMO_INPUTAVAILABLE also wakes for messages that arrived before the
      // call and were seen, but not removed, by an earlier peek.
      const DWORD woke =
          ::MsgWaitForMultipleObjectsEx(1, &timer, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
      if (woke != WAIT_OBJECT_0) {
        ::CancelWaitableTimer(timer);
        return true;
      }
      continue;
    }
    const auto ms = static_cast<DWORD>(std::ceil(step));
    if (!wakeOnMessage) {
      ::Sleep(ms);
    } else if (::MsgWaitForMultipleObjectsEx(0, nullptr, ms, QS_ALLINPUT, MWMO_INPUTAVAILABLE) !=
               WAIT_TIMEOUT) {
      return true;
    }
  }
}

std::int64_t Win32Clock::DeadlineIn(double milliseconds) {
  return PerformanceCounter() +
         std::llround(milliseconds * static_cast<double>(frequency_) / 1000.0);
}

void Win32Clock::Sleep(double milliseconds) {
  if (milliseconds <= 0) {
    ::Sleep(0);
  } else if (frequency_ > 0) {
    WaitUntil(DeadlineIn(milliseconds), false);
  } else {
    ::Sleep(static_cast<DWORD>(std::ceil(milliseconds)));
  }
}

void Win32Clock::WaitForMessageOrTimeout(double milliseconds) {
  if (milliseconds <= 0) return;
  if (frequency_ > 0) {
    WaitUntil(DeadlineIn(milliseconds), true);
    return;
  }
  const auto ms = static_cast<DWORD>(std::ceil(milliseconds));
  ::MsgWaitForMultipleObjectsEx(0, nullptr, ms, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

LocalTime Win32Clock::Now() {
  SYSTEMTIME st{};
  ::GetLocalTime(&st);
  return LocalTime{st.wYear,   st.wMonth,  st.wDay,         st.wHour,
                   st.wMinute, st.wSecond, st.wMilliseconds};
}

}  // namespace kx::win32
