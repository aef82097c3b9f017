#pragma once
// The keyboard as the keyboard hook reports it: which keys are held, which
// event is a new press rather than the system's repeat of a held key, and
// whether a press is one of the program's own hotkeys.
#include <bitset>
#include <span>
#include <vector>

namespace kx {

// A hotkey the program registers: its key and RegisterHotKey's modifier
// flags (1 Alt, 2 Ctrl, 4 Shift, 8 Win).
struct HotkeyCombo {
  int modifiers = 0;
  int vk = 0;
};

class HookKeyState {
 public:
  // Takes one event of the hook; true for a press, a key going down that was
  // up (the repeats of a held key come as further down events).
  bool Take(int vk, int message);
  // The RegisterHotKey flags of the modifiers held now.
  int Modifiers() const;
  bool Down(int vk) const;
  // Forgets that a key is down: its release went past the hook unseen.
  void Release(int vk);
  // The keys held now, in rising order.
  std::vector<int> Held() const;

 private:
  std::bitset<256> down_;
};

// True when a press of `vk` with `modifiers` held fires one of the hotkeys:
// the system takes it for the program, it is not part of the user's work.
bool IsHotkeyPress(std::span<const HotkeyCombo> hotkeys, int modifiers, int vk);

}  // namespace kx
