#pragma once
// The scanner: cuts an expression into operands and operators at
// parenthesis depth 0 in one pass over its characters.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kx {

struct ScanResult {
  std::vector<std::string> operands;  // always at least one, possibly empty
  std::vector<std::int32_t> ops;
};

// The fixed bounds of the scanner's arrays; going past one is a run-time
// error (subscript out of range).
inline constexpr int kMaxOperandIndex = 1000;
inline constexpr int kMaxOperatorIndex = 1000;
inline constexpr int kMaxDepthIndex = 255;

// Throws EvalError when a bound is passed.
ScanResult Scan(std::string_view text);

}  // namespace kx
