#pragma once
// The capture tool's window on Win32: a small top-most tool window owned by
// the main window, with the tool's label and its five labelled fields. It
// shows what the tool's logic gives it and reports only its closing.
#include <array>
#include <functional>

#include "gui/capture_view.h"
#include "gui/win32/controls.h"
#include "gui/win32/window_base.h"
#include "sys/win32/unique_handle.h"

namespace kx::win32 {

inline constexpr wchar_t kCaptureWindowClass[] = L"KestrelixCaptureWindow";

class CaptureWindow final : public WindowBase, public gui::CaptureView {
 public:
  static constexpr std::size_t kFieldCount = 5;

  // The window that owns the tool: it stays above it and goes with it.
  void SetOwner(HWND owner) { owner_ = owner; }
  // The user closed the window (its close box or Alt+F4).
  std::function<void()> onClose;

  // --- gui::CaptureView ---
  void Open() override;
  void Close() override;
  void SetLabel(std::string_view text) override;
  void SetFields(const gui::CaptureFields& fields) override;
  WindowHandle Handle() override;
  void ShowImageSize(bool shown) override;
  int ImageSize() override;

 protected:
  LRESULT HandleMessage(UINT msg, WPARAM wp, LPARAM lp) override;

 private:
  bool Create();
  void ApplyFonts();
  void Layout();
  // Size for the DPI and place at the lower right of the owner's monitor.
  void Place();

  HWND owner_ = nullptr;
  TextLine label_;
  std::array<TextLine, kFieldCount> names_;
  std::array<TextLine, kFieldCount> values_;
  // The image kind's size: a label and a drop-down list of sizes.
  TextLine sizeName_;
  HWND sizeList_ = nullptr;
  unique_hfont font_;
};

}  // namespace kx::win32
