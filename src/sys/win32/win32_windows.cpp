#include "sys/win32/win32_windows.h"

#include <algorithm>
#include <string>

#include "sys/win32/unique_handle.h"
#include "sys/win32/wide.h"

namespace kx::win32 {

WindowHandle Win32Windows::Find(std::optional<std::string_view> className,
                                std::optional<std::string_view> title) {
  std::wstring cls, text;
  if (className) cls = Widen(*className);
  if (title) text = Widen(*title);
  return FromHwnd(::FindWindowW(className ? cls.c_str() : nullptr, title ? text.c_str() : nullptr));
}

bool Win32Windows::IsWindow(WindowHandle window) {
  return window != 0 && ::IsWindow(ToHwnd(window));
}

WindowHandle Win32Windows::Foreground() {
  return FromHwnd(::GetForegroundWindow());
}

bool Win32Windows::IsMinimized(WindowHandle window) {
  return ::IsIconic(ToHwnd(window)) != 0;
}

void Win32Windows::Restore(WindowHandle window) {
  ::ShowWindow(ToHwnd(window), SW_RESTORE);
}

void Win32Windows::SetForeground(WindowHandle window) {
  ::SetForegroundWindow(ToHwnd(window));
}

void Win32Windows::WaitForInputIdle(WindowHandle window) {
  DWORD pid = 0;
  ::GetWindowThreadProcessId(ToHwnd(window), &pid);
  // Our own process is idle whenever it pumps, which is what the caller does.
  if (pid == 0 || pid == ::GetCurrentProcessId()) return;
  unique_kernel_handle process(
      ::OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, pid));
  if (process) ::WaitForInputIdle(process.get(), INFINITE);
}

std::optional<Rect> Win32Windows::GetRect(WindowHandle window) {
  RECT r{};
  if (!::GetWindowRect(ToHwnd(window), &r)) return std::nullopt;
  return Rect{r.left, r.top, r.right, r.bottom};
}

void Win32Windows::Move(WindowHandle window, int x, int y, int width, int height, bool repaint) {
  ::MoveWindow(ToHwnd(window), x, y, width, height, repaint ? TRUE : FALSE);
}

Point Win32Windows::ClientToScreen(WindowHandle window, Point client) {
  POINT p{client.x, client.y};
  ::ClientToScreen(ToHwnd(window), &p);
  return {p.x, p.y};
}

Point Win32Windows::ScreenToClient(WindowHandle window, Point screen) {
  POINT p{screen.x, screen.y};
  ::ScreenToClient(ToHwnd(window), &p);
  return {p.x, p.y};
}

kx::Size Win32Windows::ScreenSize() {
  return {::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
}

std::string Win32Windows::ClassName(WindowHandle window) {
  wchar_t buf[256];
  const int n = ::GetClassNameW(ToHwnd(window), buf, 256);
  return n > 0 ? Narrow(std::wstring_view(buf, static_cast<size_t>(n))) : std::string();
}

std::string Win32Windows::Title(WindowHandle window) {
  const int len = ::GetWindowTextLengthW(ToHwnd(window));
  if (len <= 0) return {};
  std::wstring buf(static_cast<size_t>(len) + 1, L'\0');
  const int n = ::GetWindowTextW(ToHwnd(window), buf.data(), len + 1);
  buf.resize(static_cast<size_t>(std::max(n, 0)));
  return Narrow(buf);
}

WindowHandle Win32Windows::FindChild(WindowHandle parent, WindowHandle after,
                                     std::optional<std::string_view> className,
                                     std::optional<std::string_view> title) {
  std::wstring cls, text;
  if (className) cls = Widen(*className);
  if (title) text = Widen(*title);
  return FromHwnd(::FindWindowExW(ToHwnd(parent), ToHwnd(after), className ? cls.c_str() : nullptr,
                                  title ? text.c_str() : nullptr));
}

WindowHandle Win32Windows::Parent(WindowHandle window) {
  return FromHwnd(::GetParent(ToHwnd(window)));
}

WindowHandle Win32Windows::FromPoint(Point screen) {
  return FromHwnd(::WindowFromPoint(POINT{screen.x, screen.y}));
}

namespace {

// A window that does not answer within this time is left alone, so that a
// hung program never hangs the player.
constexpr UINT kAnswerMs = 1000;

LRESULT SendBounded(WindowHandle window, UINT message, WPARAM wParam, LPARAM lParam) {
  DWORD_PTR result = 0;
  ::SendMessageTimeoutW(ToHwnd(window), message, wParam, lParam, SMTO_ABORTIFHUNG, kAnswerMs,
                        &result);
  return static_cast<LRESULT>(result);
}

}  // namespace

std::string Win32Windows::Text(WindowHandle window) {
  // WM_GETTEXT crosses processes where GetWindowText does not.
  DWORD_PTR length = 0;
  if (!::SendMessageTimeoutW(ToHwnd(window), WM_GETTEXTLENGTH, 0, 0, SMTO_ABORTIFHUNG, kAnswerMs,
                             &length) ||
      length == 0)
    return {};
  std::wstring buf(static_cast<size_t>(length) + 1, L'\0');
  DWORD_PTR copied = 0;
  if (!::SendMessageTimeoutW(ToHwnd(window), WM_GETTEXT, buf.size(),
                             reinterpret_cast<LPARAM>(buf.data()), SMTO_ABORTIFHUNG, kAnswerMs,
                             &copied))
    return {};
  buf.resize(std::min<size_t>(static_cast<size_t>(copied), buf.size()));
  return Narrow(buf);
}

void Win32Windows::SetText(WindowHandle window, std::string_view text) {
  const std::wstring wide = Widen(text);
  SendBounded(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str()));
}

void Win32Windows::ClickButton(WindowHandle window) {
  SendBounded(window, BM_CLICK, 0, 0);
}

void Win32Windows::SendClick(WindowHandle window, Point client) {
  // The button state travels in wParam and the client point in lParam, as
  // the system itself sends them; the pointer stays where it is.
  const LPARAM at = MAKELPARAM(static_cast<WORD>(client.x), static_cast<WORD>(client.y));
  SendBounded(window, WM_LBUTTONDOWN, MK_LBUTTON, at);
  SendBounded(window, WM_LBUTTONUP, 0, at);
}

void Win32Windows::PostKeyDown(WindowHandle window, int vk) {
  // A repeat count of 1 and the key's scan code, as a real key-down carries.
  const UINT scan = ::MapVirtualKeyW(static_cast<UINT>(vk), MAPVK_VK_TO_VSC);
  const LPARAM info = static_cast<LPARAM>(1 | (scan << 16));
  ::PostMessageW(ToHwnd(window), WM_KEYDOWN, static_cast<WPARAM>(vk), info);
}

}  // namespace kx::win32
