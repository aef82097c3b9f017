#pragma once
// Warnings about the traps of the macro language, found without playing: a
// single digit that is a key and not a wait, a line the shell may open, an
// exact command word with extra text, unknown key names, unbalanced blocks,
// jumps past the end, missing macro files, untypeable text and assignments
// that cannot be parsed.
#include <string>
#include <string_view>
#include <vector>

#include "input/input_port.h"
#include "sys/file_port.h"

namespace kx {

struct LintWarning {
  int line = 0;  // counted from 1
  std::string text;
  friend bool operator==(const LintWarning&, const LintWarning&) = default;
};

// Where "mf" lines look for their files, and the keyboard layout that "key"
// lines type with.
struct LintContext {
  std::string macroFolder;   // the folder of the macro being checked
  std::string macroLibrary;  // the "Macro" folder beside the program
  FilePort& files;
  InputPort& layout;
  // UnicodeKeys: characters the layout cannot type go out as Unicode.
  bool unicodeKeys = false;
};

// The warnings of a macro's text (lines separated by CR LF), in line order.
std::vector<LintWarning> LintMacro(std::string_view text, const LintContext& context);

// True when the right side of an assignment can be cut into operands and
// operators at all: quotes and parentheses close, every operator has its
// operands, hexadecimal literals convert. Whether it then computes (unknown
// functions, division by zero) is only known when it runs.
bool ExpressionParses(std::string_view expression);

}  // namespace kx
