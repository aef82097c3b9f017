#include "sys/win32/win32_screen.h"

namespace kx::win32 {

namespace {

constexpr int kMdtEffectiveDpi = 0;  // MDT_EFFECTIVE_DPI of GetDpiForMonitor

// The screen DC, released when the look is over.
class ScreenDc {
 public:
  ScreenDc() : dc_(::GetDC(nullptr)) {}
  ~ScreenDc() {
    if (dc_) ::ReleaseDC(nullptr, dc_);
  }
  ScreenDc(const ScreenDc&) = delete;
  ScreenDc& operator=(const ScreenDc&) = delete;
  HDC get() const { return dc_; }

 private:
  HDC dc_;
};

// The DPI of the system, for systems without per-monitor DPI.
int SystemDpi() {
  const ScreenDc screen;
  const int dpi = screen.get() ? ::GetDeviceCaps(screen.get(), LOGPIXELSX) : 0;
  return dpi > 0 ? dpi : kBaseDpi;
}

// GetDpiForMonitor lives in shcore.dll from Windows 8.1 on; older systems
// have one DPI for all monitors. The library stays loaded for the process.
int MonitorDpi(HMONITOR monitor) {
  using GetDpiForMonitorFn = HRESULT(WINAPI*)(HMONITOR, int, UINT*, UINT*);
  static const auto getDpiForMonitor = [] {
    HMODULE shcore = ::LoadLibraryW(L"shcore.dll");
    return shcore ? reinterpret_cast<GetDpiForMonitorFn>(
                        reinterpret_cast<void*>(::GetProcAddress(shcore, "GetDpiForMonitor")))
                  : nullptr;
  }();
  UINT x = 0;
  UINT y = 0;
  if (getDpiForMonitor && SUCCEEDED(getDpiForMonitor(monitor, kMdtEffectiveDpi, &x, &y)) && x > 0)
    return static_cast<int>(x);
  return SystemDpi();
}

BOOL CALLBACK AddMonitor(HMONITOR monitor, HDC, LPRECT, LPARAM context) {
  auto* monitors = reinterpret_cast<std::vector<Monitor>*>(context);
  MONITORINFO info{};
  info.cbSize = sizeof info;
  if (::GetMonitorInfoW(monitor, &info)) {
    const RECT& r = info.rcMonitor;
    monitors->push_back({Rect{r.left, r.top, r.right, r.bottom}, MonitorDpi(monitor)});
  }
  return TRUE;
}

}  // namespace

std::vector<Monitor> Win32Screen::Monitors() {
  std::vector<Monitor> monitors;
  ::EnumDisplayMonitors(nullptr, nullptr, AddMonitor, reinterpret_cast<LPARAM>(&monitors));
  if (monitors.empty()) {
    monitors.push_back(
        {Rect{0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)},
         SystemDpi()});
  }
  return monitors;
}

std::optional<PixelView> Win32Screen::Capture(const Rect& area) {
  const int width = area.right - area.left;
  const int height = area.bottom - area.top;
  if (width <= 0 || height <= 0) return std::nullopt;
  const ScreenDc screen;
  if (!screen.get()) return std::nullopt;
  if (!memory_) {
    memory_.reset(::CreateCompatibleDC(screen.get()));
    if (!memory_) return std::nullopt;
  }
  if (width != width_ || height != height_ || !bitmap_) {
    if (original_) ::SelectObject(memory_.get(), original_);
    original_ = nullptr;
    bitmap_.reset();
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // rows top to bottom
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    bitmap_.reset(::CreateDIBSection(screen.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap_ || !bits) {
      bitmap_.reset();
      width_ = height_ = 0;
      return std::nullopt;
    }
    original_ = ::SelectObject(memory_.get(), bitmap_.get());
    bits_ = bits;
    width_ = width;
    height_ = height;
  }
  // CAPTUREBLT takes in layered windows (tool tips, many of today's
  // programs), which are what a user sees.
  if (!::BitBlt(memory_.get(), 0, 0, width, height, screen.get(), area.left, area.top,
                SRCCOPY | CAPTUREBLT))
    return std::nullopt;
  ::GdiFlush();
  return PixelView{static_cast<const Pixel*>(bits_), width, height, width};
}

}  // namespace kx::win32
