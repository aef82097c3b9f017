#pragma once
// The program's command line: split into tokens, the macro file to play and
// the start-up switches.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sys/file_port.h"

namespace kx {

// Empty for an empty command line. A line that begins with a double quote
// loses its first and last characters and is split at quote-blank-blank-quote,
// or, when that gives one piece, at quote-blank-quote; any other line is split
// at single blanks (so two blanks in a row give an empty token).
std::vector<std::string> SplitCommandLine(std::string_view line);

// The first token that names an existing file.
std::optional<std::string> FirstExistingFile(const std::vector<std::string>& tokens,
                                             FilePort& files);

struct StartSwitches {
  bool minimized = false;  // "/m"
  bool hidden = false;     // "/h"
  bool record = false;     // "/rec"
};

// Compares every token, lower-cased, with the switches; others are ignored.
StartSwitches ParseSwitches(const std::vector<std::string>& tokens);

}  // namespace kx
