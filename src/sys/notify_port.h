#pragma once
// What the program shows about itself: sounds, flashes, balloons, caption and
// status bar of the main window.
#include <string_view>

namespace kx {

class NotifyPort {
 public:
  virtual ~NotifyPort() = default;
  virtual void Beep() = 0;
  // Flashes caption and taskbar button the given number of times, until the
  // main window comes to the foreground.
  virtual void FlashWindow(int count) = 0;
  // An information balloon at the tray icon.
  virtual void Balloon(std::string_view title, std::string_view text) = 0;
  virtual void SetCaption(std::string_view text) = 0;
  virtual void SetStatusText(std::string_view text) = 0;
};

}  // namespace kx
