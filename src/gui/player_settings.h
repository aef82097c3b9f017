#pragma once
// What the player and its hotkeys take from the settings at start-up.
#include <string_view>

#include "player/player.h"
#include "settings/settings.h"

namespace kx {

// End notification, modifier release, speed, running-line display, comment
// balloons, Unicode typing and the DevTools port of page commands.
PlayerOptions PlayerOptionsFromSettings(const Settings& settings);

// The loop-count box: the stored count when the box is remembered ("Loop"),
// else the box's own start value of 1.
int LoopCountFromSettings(const Settings& settings);
// The loop-count box's text as a count: a number as it stands, kept within
// 0-9999; anything else (text pasted into the box, or none) counts 1.
int LoopCountFromText(std::string_view text);

struct HotkeyChord {
  int modifiers = 0;
  int key = 0;
  // A hotkey whose modifiers and key are both 0 is not registered.
  bool Registered() const { return modifiers != 0 || key != 0; }
};

HotkeyChord PlayHotkeyFromSettings(const Settings& settings);

}  // namespace kx
