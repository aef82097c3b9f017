// Start-up benchmark helper (Windows console program, run under Wine):
//   kx_start_watch CLASS PROGRAM [ARGS...]
// starts PROGRAM, waits until a visible top-level window of CLASS exists and
// its thread has gone idle (the first paint is done), and prints
//   startup_ms=T private_bytes=P pid=N
// then leaves the program running; the caller closes it.
#include <windows.h>
// clang-format off
#include <psapi.h>
// clang-format on

#include <cstdio>
#include <string>

namespace {

constexpr DWORD kPollMs = 1;
constexpr DWORD kTimeoutMs = 60000;
constexpr UINT kIdleTimeoutMs = 10000;

double Milliseconds(LARGE_INTEGER from, LARGE_INTEGER to, LARGE_INTEGER frequency) {
  return static_cast<double>(to.QuadPart - from.QuadPart) * 1000.0 /
         static_cast<double>(frequency.QuadPart);
}

HWND FindVisible(const wchar_t* cls, DWORD pid) {
  for (HWND w = ::FindWindowExW(nullptr, nullptr, cls, nullptr); w;
       w = ::FindWindowExW(nullptr, w, cls, nullptr)) {
    DWORD owner = 0;
    ::GetWindowThreadProcessId(w, &owner);
    if (owner == pid && ::IsWindowVisible(w)) return w;
  }
  return nullptr;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc < 3) {
    std::fputs("usage: kx_start_watch CLASS PROGRAM [ARGS...]\n", stderr);
    return 2;
  }
  std::wstring line = L"\"" + std::wstring(argv[2]) + L"\"";
  for (int i = 3; i < argc; ++i) line += L" " + std::wstring(argv[i]);
  LARGE_INTEGER frequency;
  LARGE_INTEGER start;
  LARGE_INTEGER now;
  ::QueryPerformanceFrequency(&frequency);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  ::QueryPerformanceCounter(&start);
  if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process))
    return 1;
  HWND window = nullptr;
  for (;;) {
    window = FindVisible(argv[1], process.dwProcessId);
    ::QueryPerformanceCounter(&now);
    if (window || Milliseconds(start, now, frequency) > kTimeoutMs) break;
    ::Sleep(kPollMs);
  }
  if (!window) return 1;
  // The window's thread answers once it is back in its message loop, after
  // the first paint.
  DWORD_PTR ignored = 0;
  ::SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, kIdleTimeoutMs, &ignored);
  ::QueryPerformanceCounter(&now);
  const double ms = Milliseconds(start, now, frequency);
  ::Sleep(500);  // idle for a moment before memory is read
  PROCESS_MEMORY_COUNTERS_EX memory{};
  memory.cb = sizeof memory;
  ::GetProcessMemoryInfo(process.hProcess, reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory),
                         sizeof memory);
  std::printf("startup_ms=%.1f private_bytes=%llu pid=%lu\n", ms,
              static_cast<unsigned long long>(memory.PrivateUsage), process.dwProcessId);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return 0;
}
