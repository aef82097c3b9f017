#pragma once
// Tidying a recorded macro: fewer lines that play the same. A pointer path
// becomes the place where it comes to rest, a run of waits becomes one wait,
// and keys typed one line each become one "key" line where the layout types
// them alike. The tidied macro presses the same keys and buttons in the same
// order, every click at the same place, and takes the same time: what the
// line pauses of the lines left out took goes into its waits.
#include <string>
#include <string_view>

#include "input/input_port.h"
#include "sys/file_port.h"

namespace kx {

struct TidyOptions {
  // Keeps every pointer line: a program may follow the path itself (a menu
  // that opens while the pointer passes over it).
  bool keepMoves = false;
  // Waits shorter than this are left out, and the play then takes less time.
  long long minWaitMs = 0;
};

struct TidyResult {
  std::string text;
  // The waits left out for being shorter than TidyOptions::minWaitMs.
  int droppedWaits = 0;
};

// Tidies a macro's text (lines separated by CR LF). `layout` types the keys
// as the player would; `files` tells lines that name a file, which the
// player opens instead of pressing them. A macro whose jumps cannot be known
// before it plays (a goto to a line out of range or given by a variable) is
// returned as it is.
TidyResult TidyMacro(std::string_view text, InputPort& layout, FilePort& files,
                     const TidyOptions& options = {});

}  // namespace kx
