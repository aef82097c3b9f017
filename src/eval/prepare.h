#pragma once
// The rewriting of a whole expression before it is scanned: signs at the
// front, parentheses around everything, and number literals in base 16 or 2.
#include <string>
#include <string_view>

namespace kx {

// "-5" becomes "0-5", "((3))" becomes "3" while "(1)+(2)" stays, "&hff",
// "ffh" and "101b" become "255", "255" and "5". Throws EvalError when a
// hexadecimal literal does not convert.
std::string Prepare(std::string_view text);

}  // namespace kx
