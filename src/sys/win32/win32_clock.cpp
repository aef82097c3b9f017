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

// How long before its end a long wait wakes to finish with a short one.
constexpr double kEarlyWakeMs = 1.5;

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
}

Win32Clock::~Win32Clock() {
  if (periodRaised_) ::timeEndPeriod(1);
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
  for (;;) {
    const double remaining = static_cast<double>(deadline - PerformanceCounter()) * 1000.0 /
                             static_cast<double>(frequency_);
    if (remaining <= 0) return false;
    // The timer wakes late by more the longer it was set for: a long wait
    // wakes a little before its end and finishes with a short one.
    const double step = remaining > 2 * kEarlyWakeMs ? remaining - kEarlyWakeMs : remaining;
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
