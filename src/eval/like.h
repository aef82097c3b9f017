#pragma once
// The BASIC "Like" pattern match, binary comparison: "*" any run, "?" any
// one character, "#" one digit, "[a-z]" one of a list, "[!...]" one not in
// it. The evaluator states its text tests in this form.
#include <string_view>

namespace kx {

// Byte-wise: the patterns used are ASCII, and a non-ASCII character is then
// simply a run of bytes outside every list.
bool Like(std::string_view text, std::string_view pattern);

}  // namespace kx
