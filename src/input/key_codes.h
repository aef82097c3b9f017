#pragma once
// Windows virtual-key codes the program presses, releases or looks at by name.
#include <cstdint>

namespace kx {

inline constexpr std::uint16_t kVkLeftButton = 1;
inline constexpr std::uint16_t kVkRightButton = 2;
inline constexpr std::uint16_t kVkMiddleButton = 4;
inline constexpr std::uint16_t kVkBackspace = 8;
inline constexpr std::uint16_t kVkReturn = 13;
inline constexpr std::uint16_t kVkShift = 16;
inline constexpr std::uint16_t kVkControl = 17;
inline constexpr std::uint16_t kVkMenu = 18;  // Alt
inline constexpr std::uint16_t kVkEscape = 27;
inline constexpr std::uint16_t kVkSnapshot = 44;  // Print Screen
inline constexpr std::uint16_t kVkDelete = 46;
inline constexpr std::uint16_t kVk0 = 48;
inline constexpr std::uint16_t kVk9 = 57;
inline constexpr std::uint16_t kVkA = 65;
inline constexpr std::uint16_t kVkV = 86;
inline constexpr std::uint16_t kVkZ = 90;
inline constexpr std::uint16_t kVkLeftWin = 91;
inline constexpr std::uint16_t kVkRightWin = 92;
inline constexpr std::uint16_t kVkNumpad0 = 96;
inline constexpr std::uint16_t kVkNumpad9 = 105;
inline constexpr std::uint16_t kVkF1 = 112;
inline constexpr std::uint16_t kVkF2 = 113;
inline constexpr std::uint16_t kVkF3 = 114;
inline constexpr std::uint16_t kVkF16 = 127;
inline constexpr std::uint16_t kVkLeftAlt = 164;
inline constexpr std::uint16_t kVkRightAlt = 165;
// The highest virtual-key code.
inline constexpr std::uint16_t kVkLast = 255;

}  // namespace kx
