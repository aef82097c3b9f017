#pragma once
// The hotkey entry box (usrHotKeyEx) on Win32: a one-line box that shows the
// captured combination and never takes typed text. Every key-down reaching it,
// system keys such as Alt+F4 and F10 included, goes to the portable
// HotkeyEntry and is consumed there.
#include "gui/hotkey_entry.h"
#include "gui/win32/controls.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

class HotkeyBox {
 public:
  explicit HotkeyBox(gui::HotkeyEntryMode mode = gui::HotkeyEntryMode::kHotkey) : entry_(mode) {}
  bool Create(const ControlArgs& args);
  HWND hwnd() const { return hwnd_; }
  const gui::HotkeyEntry& entry() const { return entry_; }
  void Set(int virtualKey, int hotkeyFlags);

 private:
  static LRESULT CALLBACK Subclass(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR) noexcept;
  void OnKeyDown(WPARAM virtualKey);
  void ShowText();

  gui::HotkeyEntry entry_;
  HWND hwnd_ = nullptr;
};

}  // namespace kx::win32
