#pragma once
// The screen on Windows: the monitors from EnumDisplayMonitors with their
// DPI, and captures through GDI, one BitBlt of the rectangle per look.
#include "sys/screen_port.h"
#include "sys/win32/unique_handle.h"

namespace kx::win32 {

class Win32Screen final : public ScreenPort {
 public:
  std::vector<Monitor> Monitors() override;
  std::optional<PixelView> Capture(const Rect& area) override;

 private:
  struct DcDeleter {
    static HDC Null() { return nullptr; }
    void operator()(HDC h) const { ::DeleteDC(h); }
  };
  // The memory DC and its bitmap stay from one look to the next: a wait
  // looks at the same rectangle many times. The DC goes first, so that the
  // bitmap is no longer selected into it when it is deleted.
  unique_handle<HGDIOBJ, GdiDeleter> bitmap_;
  unique_handle<HDC, DcDeleter> memory_;
  HGDIOBJ original_ = nullptr;
  void* bits_ = nullptr;
  int width_ = 0;
  int height_ = 0;
};

}  // namespace kx::win32
