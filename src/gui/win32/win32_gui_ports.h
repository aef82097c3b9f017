#pragma once
// The main window's own ports on Win32: hotkeys of the main window, the
// other running instance, and the folders of the macro tree.
#include "gui/gui_ports.h"
#include "sys/win32/unique_handle.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

inline constexpr wchar_t kMainWindowClass[] = L"KestrelixMainWindow";

class Win32Hotkeys final : public gui::HotkeyPort {
 public:
  void SetWindow(HWND window) { window_ = window; }
  bool Register(int id, int modifiers, int key) override;
  void Unregister(int id) override;

 private:
  HWND window_ = nullptr;
};

// A named mutex tells whether another instance runs; its window is found by
// the main window's class.
class Win32Instance final : public gui::InstancePort {
 public:
  void SetWindow(HWND window) { window_ = window; }
  bool OtherInstanceRunning() override;
  void RaiseOtherInstance() override;

 private:
  HWND window_ = nullptr;
  unique_kernel_handle mutex_;
};

class Win32Folders final : public FolderPort {
 public:
  std::vector<FolderEntry> List(std::string_view folder) override;
  bool DeleteFile(std::string_view path) override;
  bool IsFolder(std::string_view path) override;
};

}  // namespace kx::win32
