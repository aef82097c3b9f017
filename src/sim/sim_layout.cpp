// The simulated keyboard: the Japanese 106/109-key layout, as VkKeyScanExA
// and IsCharUpperA answer for it.
#include <array>
#include <cstdint>

#include "sim/sim_system.h"

namespace kx::sim {

namespace {

constexpr std::int16_t kShift = 0x100;

struct LayoutEntry {
  char ch;
  std::int16_t code;
};

// Punctuation of the 106/109 layout; letters, digits and blank are computed.
constexpr std::array kPunctuation = {
    LayoutEntry{'!', kShift | 49},  LayoutEntry{'"', kShift | 50},  LayoutEntry{'#', kShift | 51},
    LayoutEntry{'$', kShift | 52},  LayoutEntry{'%', kShift | 53},  LayoutEntry{'&', kShift | 54},
    LayoutEntry{'\'', kShift | 55}, LayoutEntry{'(', kShift | 56},  LayoutEntry{')', kShift | 57},
    LayoutEntry{'-', 189},          LayoutEntry{'=', kShift | 189}, LayoutEntry{'^', 222},
    LayoutEntry{'~', kShift | 222}, LayoutEntry{'\\', 220},         LayoutEntry{'|', kShift | 220},
    LayoutEntry{'@', 192},          LayoutEntry{'`', kShift | 192}, LayoutEntry{'[', 219},
    LayoutEntry{'{', kShift | 219}, LayoutEntry{';', 187},          LayoutEntry{'+', kShift | 187},
    LayoutEntry{':', 186},          LayoutEntry{'*', kShift | 186}, LayoutEntry{']', 221},
    LayoutEntry{'}', kShift | 221}, LayoutEntry{',', 188},          LayoutEntry{'<', kShift | 188},
    LayoutEntry{'.', 190},          LayoutEntry{'>', kShift | 190}, LayoutEntry{'/', 191},
    LayoutEntry{'?', kShift | 191}, LayoutEntry{'_', kShift | 226}, LayoutEntry{' ', 32},
    LayoutEntry{'\t', 9},           LayoutEntry{'\r', 13},          LayoutEntry{'\b', 8},
    LayoutEntry{'\x1b', 27},
};

}  // namespace

std::int16_t SimSystem::VkKeyScan(char32_t ch) {
  if (ch >= 'a' && ch <= 'z') return static_cast<std::int16_t>(ch - 'a' + 'A');
  if (ch >= 'A' && ch <= 'Z') return static_cast<std::int16_t>(kShift | ch);
  if (ch >= '0' && ch <= '9') return static_cast<std::int16_t>(ch);
  for (const auto& e : kPunctuation)
    if (static_cast<char32_t>(e.ch) == ch) return e.code;
  return -1;
}

bool SimSystem::IsCharUpper(char32_t ch) {
  return ch >= 'A' && ch <= 'Z';
}

}  // namespace kx::sim
