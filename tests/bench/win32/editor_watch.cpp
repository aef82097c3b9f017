// Recorder benchmark helper (Windows console program, run under Wine):
//   kx_editor_watch COUNT
// finds Kestrelix's editor, prints "ready", then polls the length of its
// text every millisecond and prints the Unix time in microseconds of each of
// the next COUNT changes, one per line; it gives up after a minute of
// silence.
#include <windows.h>

#include <cstdio>
#include <cwchar>

namespace {

constexpr DWORD kPollMs = 1;
constexpr ULONGLONG kSilenceLimitMs = 60000;
constexpr UINT kSendTimeoutMs = 1000;
// 100 ns file-time units from 1601-01-01 to 1970-01-01.
constexpr unsigned long long kUnixEpochFileTime = 116444736000000000ULL;

long long UnixMicros() {
  FILETIME now{};
  ::GetSystemTimePreciseAsFileTime(&now);
  const unsigned long long t =
      (static_cast<unsigned long long>(now.dwHighDateTime) << 32) | now.dwLowDateTime;
  return static_cast<long long>((t - kUnixEpochFileTime) / 10);
}

LRESULT TextLength(HWND edit) {
  DWORD_PTR length = 0;
  ::SendMessageTimeoutW(edit, WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, kSendTimeoutMs, &length);
  return static_cast<LRESULT>(length);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc < 2) {
    std::fputs("usage: kx_editor_watch COUNT\n", stderr);
    return 2;
  }
  const long count = std::wcstol(argv[1], nullptr, 10);
  HWND main = ::FindWindowW(L"KestrelixMainWindow", nullptr);
  HWND frame = main ? ::FindWindowExW(main, nullptr, L"KestrelixTextEditor", nullptr) : nullptr;
  HWND edit = frame ? ::FindWindowExW(frame, nullptr, L"Edit", nullptr) : nullptr;
  if (!edit) {
    std::fputs("kx_editor_watch: no Kestrelix editor\n", stderr);
    return 1;
  }
  std::printf("ready\n");
  std::fflush(stdout);
  LRESULT last = TextLength(edit);
  ULONGLONG quietSince = ::GetTickCount64();
  for (long seen = 0; seen < count;) {
    const LRESULT length = TextLength(edit);
    if (length != last) {
      std::printf("%lld\n", UnixMicros());
      std::fflush(stdout);
      last = length;
      quietSince = ::GetTickCount64();
      ++seen;
    } else if (::GetTickCount64() - quietSince > kSilenceLimitMs) {
      return 1;
    }
    ::Sleep(kPollMs);
  }
  return 0;
}
