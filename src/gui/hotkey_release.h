#pragma once
// Before a play started by a hotkey with modifiers, the user's fingers are
// still on them: the macro's first keys would come out as chords. The play
// waits until the hotkey's modifiers are physically up, for a limited time,
// pumping messages meanwhile.
#include "input/input_port.h"
#include "sys/clock_port.h"

namespace kx::gui {

// True when a key of the RegisterHotKey modifier flags (1 Alt, 2 Ctrl,
// 4 Shift, 8 Win) is physically down.
bool HotkeyModifiersDown(InputPort& input, int modifiers);

// Waits until no key of `modifiers` is down or `limitMs` have passed (0 or
// less: no wait). Returns the milliseconds waited.
int AwaitModifiersUp(InputPort& input, ClockPort& clock, int modifiers, int limitMs);

}  // namespace kx::gui
