#include "sys/win32/win32_notify.h"

#include <shellapi.h>

#include <algorithm>

#include "sys/win32/wide.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

void Win32Notify::Beep() {
  ::MessageBeep(MB_OK);
}

void Win32Notify::FlashWindow(int count) {
  if (!main_) return;
  FLASHWINFO info{};
  info.cbSize = sizeof info;
  info.hwnd = main_;
  info.dwFlags = FLASHW_ALL | FLASHW_TIMERNOFG;
  info.uCount = static_cast<UINT>(std::max(count, 0));
  ::FlashWindowEx(&info);
}

void Win32Notify::Balloon(std::string_view title, std::string_view text) {
  if (!main_) return;
  // Modifies the tray icon the main window added; without one nothing shows.
  NOTIFYICONDATAW data{};
  data.cbSize = sizeof data;
  data.hWnd = main_;
  data.uID = trayId_;
  data.uFlags = NIF_INFO;
  data.dwInfoFlags = NIIF_INFO;
  const std::wstring t = Widen(title).substr(0, std::size(data.szInfoTitle) - 1);
  const std::wstring m = Widen(text).substr(0, std::size(data.szInfo) - 1);
  std::copy(t.begin(), t.end(), data.szInfoTitle);
  std::copy(m.begin(), m.end(), data.szInfo);
  ::Shell_NotifyIconW(NIM_MODIFY, &data);
}

void Win32Notify::SetCaption(std::string_view text) {
  if (main_) ::SetWindowTextW(main_, Widen(text).c_str());
}

void Win32Notify::SetStatusText(std::string_view text) {
  lastStatus_ = std::string(text);
  if (status_) status_(text);
}

}  // namespace kx::win32
