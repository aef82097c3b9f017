#pragma once
// The arguments of the screen waits, read the same way by the player and by
// "kx lint":
//   waitpixel x,y,color[,variation[,timeout]]
//   waitimage file[,variation[,timeout[,left,top,right,bottom]]]
#include <optional>
#include <string>
#include <string_view>

#include "sys/geometry.h"
#include "sys/pixels.h"

namespace kx {

inline constexpr double kDefaultScreenWaitMs = 10000;

struct WaitPixelArgs {
  Point at;
  Pixel colour = 0;
  int variation = 0;
  double timeoutMs = kDefaultScreenWaitMs;
};

struct WaitImageArgs {
  std::string file;
  int variation = 0;
  double timeoutMs = kDefaultScreenWaitMs;
  std::optional<Rect> area;  // right and bottom are outside it
};

// A line's arguments, or the message that says what is wrong with them (the
// status bar shows it when the line runs, lint warns with it).
template <typename Args>
struct ParsedScreenLine {
  std::optional<Args> args;
  std::string error;
};

ParsedScreenLine<WaitPixelArgs> ParseWaitPixel(std::string_view argument);
ParsedScreenLine<WaitImageArgs> ParseWaitImage(std::string_view argument);

// "RRGGBB" with an optional "#", in either case.
std::optional<Pixel> ParseColour(std::string_view text);
// "RRGGBB", as the capture tool writes a colour.
std::string ColourText(Pixel colour);

}  // namespace kx
