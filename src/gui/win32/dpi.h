#pragma once
// The one DPI helper: layout is written in device-independent units (1/96
// inch) and scaled by the DPI of the monitor the window is on; setting.ini
// keeps positions in twips (1/1440 inch).
#include "sys/win32/windows_api.h"

#ifndef WM_DPICHANGED
#define WM_DPICHANGED 0x02E0
#endif

namespace kx::win32 {

inline constexpr UINT kBaseDpi = 96;
inline constexpr int kTwipsPerInch = 1440;

// The DPI the window is drawn at; the system DPI when the system cannot
// tell per window.
UINT DpiOf(HWND window);

inline int Scale(int dips, UINT dpi) {
  return ::MulDiv(dips, static_cast<int>(dpi), static_cast<int>(kBaseDpi));
}
inline int TwipsToPixels(int twips, UINT dpi) {
  return ::MulDiv(twips, static_cast<int>(dpi), kTwipsPerInch);
}
inline int PixelsToTwips(int pixels, UINT dpi) {
  return ::MulDiv(pixels, kTwipsPerInch, static_cast<int>(dpi));
}

// Moves a window to the rectangle WM_DPICHANGED suggests (its lParam).
void MoveToSuggestedRect(HWND window, LPARAM suggestedRect);

// The user's message font at the given DPI (the font of dialogs and menus).
HFONT CreateMessageFont(UINT dpi);

}  // namespace kx::win32
