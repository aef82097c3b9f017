#pragma once
// The one window base of the program's windows: it registers the class,
// stores `this` at WM_NCCREATE so that even the messages of creation reach
// the object, and routes every message through one noexcept trampoline so
// that no exception crosses into the system's dispatcher.
#include "sys/win32/windows_api.h"

namespace kx::win32 {

struct WindowClassArgs {
  const wchar_t* name = nullptr;
  HICON icon = nullptr;
  HBRUSH background = nullptr;
  UINT style = 0;
};

struct WindowArgs {
  DWORD exStyle = 0;
  const wchar_t* title = L"";
  DWORD style = 0;
  int x = CW_USEDEFAULT;
  int y = CW_USEDEFAULT;
  int width = CW_USEDEFAULT;
  int height = CW_USEDEFAULT;
  HWND parent = nullptr;
  HMENU menuOrId = nullptr;
};

class WindowBase {
 public:
  WindowBase() = default;
  virtual ~WindowBase();
  WindowBase(const WindowBase&) = delete;
  WindowBase& operator=(const WindowBase&) = delete;

  HWND hwnd() const { return hwnd_; }

 protected:
  bool Create(const WindowClassArgs& cls, const WindowArgs& args);
  // A message of this window; the default handling is DefWindowProc.
  virtual LRESULT HandleMessage(UINT msg, WPARAM wp, LPARAM lp) = 0;
  LRESULT Default(UINT msg, WPARAM wp, LPARAM lp) { return ::DefWindowProcW(hwnd_, msg, wp, lp); }

 private:
  static LRESULT CALLBACK Trampoline(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept;
  HWND hwnd_ = nullptr;
};

}  // namespace kx::win32
