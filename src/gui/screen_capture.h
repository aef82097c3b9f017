#pragma once
// The capture tool's screen kinds: on Alt + click, the waitpixel line of the
// pixel under the pointer, or a square around the pointer saved as a PNG in
// the Macro folder (with the DPI of its monitor) and the waitimage line that
// waits for it.
#include <string>
#include <string_view>

#include "sys/file_port.h"
#include "sys/screen_port.h"

namespace kx::gui {

// The sizes the tool offers for an image, in pixels at 100% display scale
// (the capture covers as many more pixels as the monitor's scale adds).
inline constexpr int kCaptureImageSizes[] = {16, 24, 32, 48, 64, 96, 128};
inline constexpr int kDefaultCaptureImageSize = 48;

// "WaitPixel x,y,RRGGBB,0,10000" for the pixel at the point; empty when the
// point is on no monitor or the screen cannot be read.
std::string WaitPixelLineAt(ScreenPort& screen, Point point);

// Saves the square of `size` (at 100%) centred on the point, held inside the
// point's monitor, as "画像N.png" (the first N free) in the Macro folder, and
// returns "WaitImage 画像N.png,0,10000"; empty when nothing could be saved.
std::string WaitImageLineAt(ScreenPort& screen, FilePort& files, Point point, int size);

}  // namespace kx::gui
