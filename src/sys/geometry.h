#pragma once
// Plain geometry and handle types shared by the ports.
#include <cstdint>

namespace kx {

struct Point {
  int x = 0;
  int y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
  int width = 0;
  int height = 0;
};

// left, top, right, bottom in screen pixels, as the system reports a window.
struct Rect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
};

// A top-level window's handle as a number; 0 is no window. Scripts name
// windows by this number ("w 132456"), so it is kept as plain data.
using WindowHandle = std::uint64_t;

// The window a script's number names: handles are 32-bit values, also on
// 64-bit Windows, so a number outside 1 to 2^32 - 1 names no window.
inline WindowHandle WindowHandleFromNumber(double number) {
  constexpr double kLargestHandle = 4294967295.0;
  if (!(number >= 1 && number <= kLargestHandle)) return 0;
  return static_cast<WindowHandle>(number);
}

}  // namespace kx
