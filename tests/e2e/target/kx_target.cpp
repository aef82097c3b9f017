// kx_target.exe: a plain window with an edit box, a few standard controls and
// a tooltip on its OK button, that logs every keyboard and mouse message it receives, one line
// each, to the file named first on its command line. The window's title is the rest of the command
// line, "KxTarget" when there is none. The end-to-end tests read the log.
// With "/capture" before the title it also shows what the capture tool is
// tested on: a second edit box (text "二つ目") under the first, and a dialog
// "取得テスト" of its own with a button "押す" in it.
//
// Line format (tab-separated key=value):
//   ready hwnd=H client=X,Y            once, the client origin on the screen
//   t=US wall=US mt=MS msg=NAME vk=N scan=N ext=0|1     keyboard messages
//   t=US wall=US mt=MS msg=NAME x=N y=N delta=N          mouse messages
//   sent msg=NAME hwnd=H x=N y=N     mouse buttons sent (not posted) to the main window
//   clicked text=T                    a button reported BN_CLICKED
// t is the performance counter in microseconds when the message was taken
// from the queue, mt the message's own time stamp (milliseconds, set when the
// input was queued), wall the system time in
// microseconds since 1970 (comparable with the clock of the test scripts), x
// and y are positions in the main window's client area.
// The common controls' header needs the Windows headers before it.
// clang-format off
#include <windows.h>
#include <commctrl.h>
// clang-format on

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

constexpr wchar_t kClass[] = L"KxTargetWindow";

struct Log {
  FILE* file = nullptr;
  LARGE_INTEGER frequency{};
  using PreciseTime = void(WINAPI*)(LPFILETIME);
  PreciseTime precise = nullptr;
  ~Log() {
    if (file) std::fclose(file);
  }
  long long Micros() const {
    LARGE_INTEGER c;
    ::QueryPerformanceCounter(&c);
    return static_cast<long long>(static_cast<double>(c.QuadPart) * 1e6 /
                                  static_cast<double>(frequency.QuadPart));
  }
  long long Wall() const {
    FILETIME ft{};
    if (precise)
      precise(&ft);
    else
      ::GetSystemTimeAsFileTime(&ft);
    const unsigned long long t =
        (static_cast<unsigned long long>(ft.dwHighDateTime) << 32) | ft.dwLowDateTime;
    return static_cast<long long>((t - 116444736000000000ULL) / 10);
  }
};

const char* MessageName(UINT m) {
  switch (m) {
    case WM_KEYDOWN:
      return "WM_KEYDOWN";
    case WM_KEYUP:
      return "WM_KEYUP";
    case WM_SYSKEYDOWN:
      return "WM_SYSKEYDOWN";
    case WM_SYSKEYUP:
      return "WM_SYSKEYUP";
    case WM_CHAR:
      return "WM_CHAR";
    case WM_SYSCHAR:
      return "WM_SYSCHAR";
    case WM_DEADCHAR:
      return "WM_DEADCHAR";
    case WM_MOUSEMOVE:
      return "WM_MOUSEMOVE";
    case WM_LBUTTONDOWN:
      return "WM_LBUTTONDOWN";
    case WM_LBUTTONUP:
      return "WM_LBUTTONUP";
    case WM_LBUTTONDBLCLK:
      return "WM_LBUTTONDBLCLK";
    case WM_RBUTTONDOWN:
      return "WM_RBUTTONDOWN";
    case WM_RBUTTONUP:
      return "WM_RBUTTONUP";
    case WM_RBUTTONDBLCLK:
      return "WM_RBUTTONDBLCLK";
    case WM_MBUTTONDOWN:
      return "WM_MBUTTONDOWN";
    case WM_MBUTTONUP:
      return "WM_MBUTTONUP";
    case WM_MBUTTONDBLCLK:
      return "WM_MBUTTONDBLCLK";
    case WM_MOUSEWHEEL:
      return "WM_MOUSEWHEEL";
    default:
      return nullptr;
  }
}

void LogMessage(const Log& log, HWND main, const MSG& msg) {
  const char* name = MessageName(msg.message);
  if (!name || !log.file) return;
  const long long t = log.Micros();
  const long long wall = log.Wall();
  if (msg.message >= WM_KEYFIRST && msg.message <= WM_KEYLAST) {
    const auto lp = static_cast<unsigned long long>(msg.lParam);
    std::fprintf(log.file, "t=%lld\twall=%lld\tmt=%lu\tmsg=%s\tvk=%u\tscan=%u\text=%u\n", t, wall,
                 msg.time, name, static_cast<unsigned>(msg.wParam),
                 static_cast<unsigned>((lp >> 16) & 0xFF), static_cast<unsigned>((lp >> 24) & 1));
  } else {
    POINT p{static_cast<short>(LOWORD(msg.lParam)), static_cast<short>(HIWORD(msg.lParam))};
    int delta = 0;
    if (msg.message == WM_MOUSEWHEEL) {
      // Wheel positions are on the screen.
      ::ScreenToClient(main, &p);
      delta = GET_WHEEL_DELTA_WPARAM(msg.wParam);
    } else {
      ::MapWindowPoints(msg.hwnd, main, &p, 1);
    }
    std::fprintf(log.file, "t=%lld\twall=%lld\tmt=%lu\tmsg=%s\tx=%ld\ty=%ld\tdelta=%d\n", t, wall,
                 msg.time, name, p.x, p.y, delta);
  }
  std::fflush(log.file);
}

constexpr wchar_t kCaptureFlag[] = L"/capture";

// The window of "/capture": a dialog owned by the main window, so that its
// path starts with the dialog's class and title.
void AddCaptureWindows(HINSTANCE instance, HWND main) {
  HWND dialog = ::CreateWindowExW(0, WC_DIALOG, L"取得テスト", WS_POPUP | WS_CAPTION | WS_VISIBLE,
                                  100, 560, 300, 140, main, nullptr, instance, nullptr);
  ::CreateWindowExW(0, L"BUTTON", L"押す", WS_CHILD | WS_VISIBLE | BS_PUSHBUTTON, 20, 20, 120, 30,
                    dialog, nullptr, instance, nullptr);
}

FILE* g_log = nullptr;  // the log for what the window procedure sees

LRESULT CALLBACK Proc(HWND h, UINT m, WPARAM w, LPARAM l) {
  if (m == WM_DESTROY) {
    ::PostQuitMessage(0);
    return 0;
  }
  // Button presses and sent clicks never pass the message loop: the window
  // procedure logs them.
  if (m == WM_COMMAND && HIWORD(w) == BN_CLICKED && g_log) {
    char text[64] = "";
    ::GetWindowTextA(reinterpret_cast<HWND>(l), text, sizeof text);
    std::fprintf(g_log, "clicked\ttext=%s\n", text);
    std::fflush(g_log);
  }
  if ((m == WM_LBUTTONDOWN || m == WM_LBUTTONUP) && ::InSendMessage() && g_log) {
    std::fprintf(g_log, "sent\tmsg=%s\thwnd=%llu\tx=%d\ty=%d\n",
                 m == WM_LBUTTONDOWN ? "WM_LBUTTONDOWN" : "WM_LBUTTONUP",
                 static_cast<unsigned long long>(reinterpret_cast<UINT_PTR>(h)),
                 static_cast<short>(LOWORD(l)), static_cast<short>(HIWORD(l)));
    std::fflush(g_log);
  }
  return ::DefWindowProcW(h, m, w, l);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR cmd, int) {
  Log log;
  ::QueryPerformanceFrequency(&log.frequency);
  log.precise = reinterpret_cast<Log::PreciseTime>(reinterpret_cast<void*>(
      ::GetProcAddress(::GetModuleHandleW(L"kernel32.dll"), "GetSystemTimePreciseAsFileTime")));
  // The log path comes first, in quotes when it holds a blank.
  std::wstring line = cmd ? cmd : L"";
  std::wstring path, title = L"KxTarget";
  size_t end = 0;
  if (!line.empty() && line.front() == L'"') {
    end = line.find(L'"', 1);
    path = line.substr(1, end == std::wstring::npos ? std::wstring::npos : end - 1);
    end = end == std::wstring::npos ? line.size() : end + 1;
  } else {
    end = std::min(line.find(L' '), line.size());
    path = line.substr(0, end);
  }
  while (end < line.size() && line[end] == L' ') ++end;
  const bool capture = line.compare(end, std::size(kCaptureFlag) - 1, kCaptureFlag) == 0;
  if (capture) {
    end += std::size(kCaptureFlag) - 1;
    while (end < line.size() && line[end] == L' ') ++end;
  }
  if (end < line.size()) title = line.substr(end);
  if (title.size() >= 2 && title.front() == L'"' && title.back() == L'"')
    title = title.substr(1, title.size() - 2);
  if (!path.empty()) log.file = ::_wfopen(path.c_str(), L"wb");
  g_log = log.file;

  WNDCLASSW wc{};
  wc.lpfnWndProc = Proc;
  wc.hInstance = instance;
  wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  wc.lpszClassName = kClass;
  wc.style = CS_DBLCLKS;
  ::RegisterClassW(&wc);
  HWND main = ::CreateWindowExW(0, kClass, title.c_str(), WS_OVERLAPPEDWINDOW, 100, 100, 520, 400,
                                nullptr, nullptr, instance, nullptr);
  auto child = [&](const wchar_t* cls, const wchar_t* text, DWORD style, int x, int y, int w,
                   int h) {
    return ::CreateWindowExW(0, cls, text, WS_CHILD | WS_VISIBLE | style, x, y, w, h, main, nullptr,
                             instance, nullptr);
  };
  HWND edit =
      child(L"EDIT", L"", WS_BORDER | ES_MULTILINE | ES_AUTOVSCROLL | WS_VSCROLL, 10, 10, 300, 200);
  HWND ok = child(L"BUTTON", L"OK", BS_PUSHBUTTON, 330, 10, 100, 30);
  child(L"BUTTON", L"Check", BS_AUTOCHECKBOX, 330, 50, 100, 24);
  HWND list = child(L"LISTBOX", L"", WS_BORDER, 330, 90, 150, 120);
  ::SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"one"));
  ::SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"two"));
  // A second edit box: the same class twice under one parent.
  child(L"EDIT", L"second", WS_BORDER, 10, 220, 300, 24);
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES};
  ::InitCommonControlsEx(&controls);
  HWND tip = ::CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, CW_USEDEFAULT,
                               CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, main, nullptr, instance,
                               nullptr);
  TTTOOLINFOW tool{};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = main;
  tool.uId = reinterpret_cast<UINT_PTR>(ok);
  tool.lpszText = const_cast<LPWSTR>(L"OK ボタンのヒント");
  ::SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  ::ShowWindow(main, SW_SHOWNORMAL);
  ::UpdateWindow(main);
  if (capture) AddCaptureWindows(instance, main);
  ::SetFocus(edit);
  POINT origin{0, 0};
  ::ClientToScreen(main, &origin);
  if (log.file) {
    std::fprintf(log.file, "ready\thwnd=%llu\tclient=%ld,%ld\n",
                 static_cast<unsigned long long>(reinterpret_cast<UINT_PTR>(main)), origin.x,
                 origin.y);
    std::fflush(log.file);
  }
  MSG msg;
  while (::GetMessageW(&msg, nullptr, 0, 0) > 0) {
    LogMessage(log, main, msg);
    ::TranslateMessage(&msg);
    ::DispatchMessageW(&msg);
  }
  return 0;
}
