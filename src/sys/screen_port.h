#pragma once
// The screen: where the monitors sit on the virtual screen and at which DPI,
// and the pixels of a rectangle of it, for the waits that look at the screen.
#include <optional>
#include <vector>

#include "sys/geometry.h"
#include "sys/pixels.h"

namespace kx {

// The DPI of a monitor at 100% display scale, and of an image that does not
// say which DPI it was captured at.
inline constexpr int kBaseDpi = 96;

struct Monitor {
  Rect rect;  // in virtual-screen pixels; monitors left of or above the primary are negative
  int dpi = kBaseDpi;
};

class ScreenPort {
 public:
  virtual ~ScreenPort() = default;
  virtual std::vector<Monitor> Monitors() = 0;
  // The pixels of a rectangle of the virtual screen, valid until the next
  // capture. Parts on no monitor read as black. None when the system could not
  // read the screen (a locked desktop, for one).
  virtual std::optional<PixelView> Capture(const Rect& area) = 0;
};

}  // namespace kx
