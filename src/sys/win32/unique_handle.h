#pragma once
// Ownership of Win32 resources: one small template for every kind of handle,
// and a scope guard for the odd clean-up that is not a handle.
#include <utility>

#include "sys/win32/windows_api.h"
#include "util/scope_exit.h"

namespace kx::win32 {

// Owns a handle of type T, released by Deleter when it is not Deleter::Null().
template <typename T, typename Deleter>
class unique_handle {
 public:
  unique_handle() = default;
  explicit unique_handle(T h) : h_(h) {}
  ~unique_handle() { reset(); }
  unique_handle(const unique_handle&) = delete;
  unique_handle& operator=(const unique_handle&) = delete;
  unique_handle(unique_handle&& o) noexcept : h_(std::exchange(o.h_, Deleter::Null())) {}
  unique_handle& operator=(unique_handle&& o) noexcept {
    if (this != &o) reset(std::exchange(o.h_, Deleter::Null()));
    return *this;
  }

  T get() const { return h_; }
  explicit operator bool() const { return h_ != Deleter::Null(); }
  T release() { return std::exchange(h_, Deleter::Null()); }
  void reset(T h = Deleter::Null()) {
    if (h_ != Deleter::Null()) Deleter{}(h_);
    h_ = h;
  }

 private:
  T h_ = Deleter::Null();
};

struct KernelHandleDeleter {
  static HANDLE Null() { return nullptr; }
  void operator()(HANDLE h) const { ::CloseHandle(h); }
};
struct WindowDeleter {
  static HWND Null() { return nullptr; }
  void operator()(HWND h) const { ::DestroyWindow(h); }
};
struct GdiDeleter {
  static HGDIOBJ Null() { return nullptr; }
  void operator()(HGDIOBJ h) const { ::DeleteObject(h); }
};
struct FontDeleter {
  static HFONT Null() { return nullptr; }
  void operator()(HFONT h) const { ::DeleteObject(h); }
};
struct IconDeleter {
  static HICON Null() { return nullptr; }
  void operator()(HICON h) const { ::DestroyIcon(h); }
};
struct GlobalDeleter {
  static HGLOBAL Null() { return nullptr; }
  void operator()(HGLOBAL h) const { ::GlobalFree(h); }
};
struct FindDeleter {
  static HANDLE Null() { return INVALID_HANDLE_VALUE; }
  void operator()(HANDLE h) const { ::FindClose(h); }
};
struct FileDeleter {
  static HANDLE Null() { return INVALID_HANDLE_VALUE; }
  void operator()(HANDLE h) const { ::CloseHandle(h); }
};

struct RegKeyDeleter {
  static HKEY Null() { return nullptr; }
  void operator()(HKEY h) const { ::RegCloseKey(h); }
};
struct LocalDeleter {
  static HLOCAL Null() { return nullptr; }
  void operator()(HLOCAL h) const { ::LocalFree(h); }
};
struct MenuDeleter {
  static HMENU Null() { return nullptr; }
  void operator()(HMENU h) const { ::DestroyMenu(h); }
};

struct AccelDeleter {
  static HACCEL Null() { return nullptr; }
  void operator()(HACCEL h) const { ::DestroyAcceleratorTable(h); }
};

using unique_hmenu = unique_handle<HMENU, MenuDeleter>;
using unique_haccel = unique_handle<HACCEL, AccelDeleter>;
using unique_hkey = unique_handle<HKEY, RegKeyDeleter>;
using unique_hlocal = unique_handle<HLOCAL, LocalDeleter>;
using unique_kernel_handle = unique_handle<HANDLE, KernelHandleDeleter>;
using unique_hwnd = unique_handle<HWND, WindowDeleter>;
using unique_hfont = unique_handle<HFONT, FontDeleter>;
using unique_hicon = unique_handle<HICON, IconDeleter>;
using unique_hglobal = unique_handle<HGLOBAL, GlobalDeleter>;
using unique_find = unique_handle<HANDLE, FindDeleter>;
using unique_file = unique_handle<HANDLE, FileDeleter>;

// A registered hotkey: the window and its id, unregistered on destruction.
class HotkeyRegistration {
 public:
  HotkeyRegistration() = default;
  HotkeyRegistration(HWND window, int id, UINT modifiers, UINT vk)
      : window_(window), id_(id), ok_(::RegisterHotKey(window, id, modifiers, vk) != 0) {}
  ~HotkeyRegistration() {
    if (ok_) ::UnregisterHotKey(window_, id_);
  }
  HotkeyRegistration(const HotkeyRegistration&) = delete;
  HotkeyRegistration& operator=(const HotkeyRegistration&) = delete;
  bool registered() const { return ok_; }

 private:
  HWND window_ = nullptr;
  int id_ = 0;
  bool ok_ = false;
};

// A window timer, killed on destruction.
class WindowTimer {
 public:
  WindowTimer(HWND window, UINT_PTR id, UINT ms)
      : window_(window), id_(::SetTimer(window, id, ms, nullptr)) {}
  ~WindowTimer() {
    if (id_ != 0) ::KillTimer(window_, id_);
  }
  WindowTimer(const WindowTimer&) = delete;
  WindowTimer& operator=(const WindowTimer&) = delete;

 private:
  HWND window_;
  UINT_PTR id_;
};

using kx::scope_exit;

}  // namespace kx::win32
