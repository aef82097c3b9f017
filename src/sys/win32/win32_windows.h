#pragma once
// Top-level windows: search, activation and placement.
#include "sys/win32/windows_api.h"
#include "sys/window_port.h"

namespace kx::win32 {

inline HWND ToHwnd(WindowHandle h) {
  return reinterpret_cast<HWND>(static_cast<UINT_PTR>(h));
}
inline WindowHandle FromHwnd(HWND h) {
  return static_cast<WindowHandle>(reinterpret_cast<UINT_PTR>(h));
}

class Win32Windows final : public WindowPort {
 public:
  WindowHandle Find(std::optional<std::string_view> className,
                    std::optional<std::string_view> title) override;
  bool IsWindow(WindowHandle window) override;
  WindowHandle Foreground() override;
  bool IsMinimized(WindowHandle window) override;
  void Restore(WindowHandle window) override;
  void SetForeground(WindowHandle window) override;
  void WaitForInputIdle(WindowHandle window) override;
  std::optional<Rect> GetRect(WindowHandle window) override;
  void Move(WindowHandle window, int x, int y, int width, int height, bool repaint) override;
  Point ClientToScreen(WindowHandle window, Point client) override;
  Point ScreenToClient(WindowHandle window, Point screen) override;
  kx::Size ScreenSize() override;
  std::string ClassName(WindowHandle window) override;
  std::string Title(WindowHandle window) override;
  WindowHandle FindChild(WindowHandle parent, WindowHandle after,
                         std::optional<std::string_view> className,
                         std::optional<std::string_view> title) override;
  WindowHandle Parent(WindowHandle window) override;
  WindowHandle FromPoint(Point screen) override;
  std::string Text(WindowHandle window) override;
  void SetText(WindowHandle window, std::string_view text) override;
  void ClickButton(WindowHandle window) override;
  void SendClick(WindowHandle window, Point client) override;
  void PostKeyDown(WindowHandle window, int vk) override;
};

}  // namespace kx::win32
