#pragma once
// Beep, flashing, balloons, caption and status text of the main window.
#include <functional>
#include <string>

#include "sys/notify_port.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

class Win32Notify final : public NotifyPort {
 public:
  // The main window, once it exists; the tray icon's id for balloons.
  void SetMainWindow(HWND window) { main_ = window; }
  void SetTrayIconId(UINT id) { trayId_ = id; }
  // Where status texts go; the main window provides its status bar.
  void SetStatusSink(std::function<void(std::string_view)> sink) { status_ = std::move(sink); }
  const std::string& LastStatus() const { return lastStatus_; }

  void Beep() override;
  void FlashWindow(int count) override;
  void Balloon(std::string_view title, std::string_view text) override;
  void SetCaption(std::string_view text) override;
  void SetStatusText(std::string_view text) override;

 private:
  HWND main_ = nullptr;
  UINT trayId_ = 0;
  std::function<void(std::string_view)> status_;
  std::string lastStatus_;
};

}  // namespace kx::win32
