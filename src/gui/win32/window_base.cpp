#include "gui/win32/window_base.h"

namespace kx::win32 {

WindowBase::~WindowBase() {
  if (hwnd_) {
    // The object is going: no message may reach it any more.
    ::SetWindowLongPtrW(hwnd_, GWLP_USERDATA, 0);
    ::DestroyWindow(hwnd_);
  }
}

bool WindowBase::Create(const WindowClassArgs& cls, const WindowArgs& args) {
  const HINSTANCE instance = ::GetModuleHandleW(nullptr);
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof wc;
  if (!::GetClassInfoExW(instance, cls.name, &wc)) {
    wc.style = cls.style;
    wc.lpfnWndProc = &WindowBase::Trampoline;
    wc.hInstance = instance;
    wc.hIcon = cls.icon;
    wc.hIconSm = cls.icon;
    wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = cls.background;
    wc.lpszClassName = cls.name;
    if (!::RegisterClassExW(&wc)) return false;
  }
  ::CreateWindowExW(args.exStyle, cls.name, args.title, args.style, args.x, args.y, args.width,
                    args.height, args.parent, args.menuOrId, instance, this);
  return hwnd_ != nullptr;
}

LRESULT CALLBACK WindowBase::Trampoline(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept {
  if (msg == WM_NCCREATE) {
    auto* self = static_cast<WindowBase*>(reinterpret_cast<CREATESTRUCTW*>(lp)->lpCreateParams);
    self->hwnd_ = hwnd;
    ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  }
  auto* self = reinterpret_cast<WindowBase*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (!self) return ::DefWindowProcW(hwnd, msg, wp, lp);
  if (msg == WM_NCDESTROY) {
    ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
    self->hwnd_ = nullptr;
    return ::DefWindowProcW(hwnd, msg, wp, lp);
  }
  // A failing handler is dropped here and the message gets its default
  // treatment.
  try {
    return self->HandleMessage(msg, wp, lp);
  } catch (...) {
    return ::DefWindowProcW(hwnd, msg, wp, lp);
  }
}

}  // namespace kx::win32
