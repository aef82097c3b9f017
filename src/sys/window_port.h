#pragma once
// Finding, activating and placing windows, top-level and child.
#include <optional>
#include <string>
#include <string_view>

#include "sys/geometry.h"

namespace kx {

class WindowPort {
 public:
  virtual ~WindowPort() = default;
  // FindWindow: a missing class or title matches any; titles and classes
  // compare without regard to case, as the system does.
  virtual WindowHandle Find(std::optional<std::string_view> className,
                            std::optional<std::string_view> title) = 0;
  virtual bool IsWindow(WindowHandle window) = 0;
  virtual WindowHandle Foreground() = 0;
  virtual bool IsMinimized(WindowHandle window) = 0;
  virtual void Restore(WindowHandle window) = 0;
  virtual void SetForeground(WindowHandle window) = 0;
  // Waits, without a limit, until the window's process is idle for input.
  virtual void WaitForInputIdle(WindowHandle window) = 0;
  virtual std::optional<Rect> GetRect(WindowHandle window) = 0;
  virtual void Move(WindowHandle window, int x, int y, int width, int height, bool repaint) = 0;
  virtual Point ClientToScreen(WindowHandle window, Point client) = 0;
  virtual Point ScreenToClient(WindowHandle window, Point screen) = 0;
  // Primary screen size in pixels.
  virtual Size ScreenSize() = 0;
  virtual std::string ClassName(WindowHandle window) = 0;
  virtual std::string Title(WindowHandle window) = 0;

  // --- window trees ---
  // FindWindowEx: the next window after `after` (0: from the first) among
  // the children of `parent` (0: the top-level windows), a missing class or
  // title matching any.
  virtual WindowHandle FindChild(WindowHandle parent, WindowHandle after,
                                 std::optional<std::string_view> className,
                                 std::optional<std::string_view> title) = 0;
  // GetParent: the parent of a child window, the owner of an owned top-level
  // window, 0 otherwise.
  virtual WindowHandle Parent(WindowHandle window) = 0;
  // WindowFromPoint: the deepest visible window at a screen point; 0 for none.
  virtual WindowHandle FromPoint(Point screen) = 0;
  // The window's text as WM_GETTEXT gives it, also from another process's
  // controls (an edit box's contents); empty when the window does not answer.
  virtual std::string Text(WindowHandle window) = 0;

  // --- messages to other programs' windows ---
  // WM_SETTEXT: replaces the window's text (an edit box's contents, a
  // caption).
  virtual void SetText(WindowHandle window, std::string_view text) = 0;
  // BM_CLICK: presses a button as a click on it would.
  virtual void ClickButton(WindowHandle window) = 0;
  // WM_LBUTTONDOWN and WM_LBUTTONUP sent at a client point: a click that
  // neither moves the pointer nor activates the window.
  virtual void SendClick(WindowHandle window, Point client) = 0;
  // WM_KEYDOWN posted with a virtual-key code.
  virtual void PostKeyDown(WindowHandle window, int vk) = 0;
};

}  // namespace kx
