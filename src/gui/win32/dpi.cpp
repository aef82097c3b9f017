#include "gui/win32/dpi.h"

namespace kx::win32 {

namespace {

// Functions of newer systems, looked up once: older ones lack them.
template <typename F>
F User32Function(const char* name) {
  return reinterpret_cast<F>(
      reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleW(L"user32.dll"), name)));
}

}  // namespace

UINT DpiOf(HWND window) {
  using GetDpiForWindowFn = UINT(WINAPI*)(HWND);
  static const auto getDpiForWindow = User32Function<GetDpiForWindowFn>("GetDpiForWindow");
  if (getDpiForWindow && window) {
    const UINT dpi = getDpiForWindow(window);
    if (dpi != 0) return dpi;
  }
  HDC screen = ::GetDC(nullptr);
  const int dpi = ::GetDeviceCaps(screen, LOGPIXELSY);
  ::ReleaseDC(nullptr, screen);
  return dpi > 0 ? static_cast<UINT>(dpi) : kBaseDpi;
}

void MoveToSuggestedRect(HWND window, LPARAM suggestedRect) {
  const auto* r = reinterpret_cast<const RECT*>(suggestedRect);
  ::SetWindowPos(window, nullptr, r->left, r->top, r->right - r->left, r->bottom - r->top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

HFONT CreateMessageFont(UINT dpi) {
  using SpiForDpiFn = BOOL(WINAPI*)(UINT, UINT, PVOID, UINT, UINT);
  static const auto spiForDpi = User32Function<SpiForDpiFn>("SystemParametersInfoForDpi");
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (spiForDpi && spiForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi))
    return ::CreateFontIndirectW(&metrics.lfMessageFont);
  if (!::SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
    return nullptr;
  // The system's metrics are at the system DPI; bring them to this one.
  LOGFONTW font = metrics.lfMessageFont;
  font.lfHeight = ::MulDiv(font.lfHeight, static_cast<int>(dpi), static_cast<int>(DpiOf(nullptr)));
  return ::CreateFontIndirectW(&font);
}

}  // namespace kx::win32
