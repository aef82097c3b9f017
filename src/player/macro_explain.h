#pragma once
// What each line of a macro will do, told without playing it: the form the
// player takes it as, its argument, and for key lines and waits what they
// press or how long they wait.
#include <string>
#include <string_view>
#include <vector>

#include "input/input_port.h"
#include "sys/file_port.h"

namespace kx {

struct ExplainedLine {
  int line = 0;          // counted from 1
  std::string form;      // the form's name: "wait", "key-line", "switch", ...
  std::string argument;  // as the form cuts it
  std::string detail;    // key codes pressed, milliseconds waited; may be empty
};

// One entry per line of the text (lines separated by CR LF). Variables are
// not substituted: their values are only known while playing.
std::vector<ExplainedLine> ExplainMacro(std::string_view text, FilePort& files, InputPort& layout);

// "LINE: FORM "ARGUMENT" -> DETAIL", the parts that are empty left out.
std::string FormatExplained(const ExplainedLine& line);

}  // namespace kx
