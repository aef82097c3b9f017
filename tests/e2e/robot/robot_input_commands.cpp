// Commands about the system's input state and about plays driven by the
// play hotkey's message, for the tests that no key is left held down.
#include <random>

#include "robot_commands.h"
#include "robot_output.h"

namespace kx::robot {

namespace {

constexpr int kPlayHotkeyId = 258;
constexpr DWORD kPollMs = 2;
constexpr ULONGLONG kPlayTimeoutMs = 10000;
// The main window's caption while a play runs ("残り3回").
constexpr std::wstring_view kPlayingCaption = L"残り";

bool Playing(HWND h) {
  wchar_t title[256] = {};
  ::GetWindowTextW(h, title, 256);
  return std::wstring_view(title).starts_with(kPlayingCaption);
}

bool AwaitPlaying(HWND h, bool playing) {
  const ULONGLONG limit = ::GetTickCount64() + kPlayTimeoutMs;
  while (Playing(h) != playing) {
    if (::GetTickCount64() >= limit) return false;
    ::Sleep(kPollMs);
  }
  return true;
}

}  // namespace

int KeysDown(const Options&) {
  // Only the sign bit (down now) counts, not "pressed since the last call".
  for (int vk = 1; vk < 255; ++vk)
    if (::GetAsyncKeyState(vk) & 0x8000) Record("key").Number("vk", vk).Print();
  return kOk;
}

int HotkeyPlays(const Options& o) {
  const auto count = ParseNumber(o.args[0]);
  const auto minMs = ParseNumber(o.args[1]);
  const auto maxMs = ParseNumber(o.args[2]);
  if (!count || !minMs || !maxMs || *minMs < 0 || *maxMs < *minMs) return kUsage;
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  std::mt19937 random(std::random_device{}());
  std::uniform_int_distribution<long long> delay(*minMs, *maxMs);
  long long done = 0;
  for (; done < *count; ++done) {
    if (!::PostMessageW(*h, WM_HOTKEY, kPlayHotkeyId, 0) || !AwaitPlaying(*h, true)) break;
    ::Sleep(static_cast<DWORD>(delay(random)));
    if (!::PostMessageW(*h, WM_HOTKEY, kPlayHotkeyId, 0) || !AwaitPlaying(*h, false)) break;
  }
  Record("plays").Number("count", *count).Number("stopped", done).Print();
  return done == *count ? kOk : kNotFound;
}

}  // namespace kx::robot
