#pragma once
// Windows virtual-key codes the program presses or releases by name.
#include <cstdint>

namespace kx {

inline constexpr std::uint16_t kVkShift = 16;
inline constexpr std::uint16_t kVkControl = 17;
inline constexpr std::uint16_t kVkMenu = 18;  // Alt
inline constexpr std::uint16_t kVkLeftWin = 91;
inline constexpr std::uint16_t kVkRightWin = 92;
inline constexpr std::uint16_t kVkV = 86;

}  // namespace kx
