#include "gui/hotkey_release.h"

#include <algorithm>

#include "input/key_codes.h"

namespace kx::gui {

namespace {

// One turn of the wait: as long as the player's waits take.
constexpr double kTurnMs = 1;

struct ModifierKey {
  int flag;
  int vk;
};
// The generic keys: each is down while either of its left and right keys is.
constexpr ModifierKey kModifierKeys[] = {
    {1, kVkMenu}, {2, kVkControl}, {4, kVkShift}, {8, kVkLeftWin}, {8, kVkRightWin},
};

}  // namespace

bool HotkeyModifiersDown(InputPort& input, int modifiers) {
  return std::ranges::any_of(kModifierKeys, [&](const ModifierKey& m) {
    return (modifiers & m.flag) != 0 && input.IsKeyDown(m.vk);
  });
}

int AwaitModifiersUp(InputPort& input, ClockPort& clock, int modifiers, int limitMs) {
  if (limitMs <= 0 || modifiers == 0) return 0;
  const std::uint32_t start = clock.TickCount();
  auto waited = [&] { return static_cast<int>(clock.TickCount() - start); };
  while (HotkeyModifiersDown(input, modifiers) && waited() < limitMs) {
    clock.PumpMessages();
    clock.WaitForMessageOrTimeout(kTurnMs);
  }
  return waited();
}

}  // namespace kx::gui
