#pragma once
// The hotkey entry box's logic: a key-down (its key, the Shift/Ctrl/Alt
// state of the key event and whether a Windows key is held) becomes the
// captured key, its RegisterHotKey modifier flags and the text the box
// shows, e.g. "Win + Alt + Shift + Ctrl + F5". The Win32 box only feeds key
// events in and shows the text.
#include <optional>
#include <string>
#include <string_view>

namespace kx::gui {

// Shift/Ctrl/Alt bits of a key event.
inline constexpr int kKeyEventShift = 1;
inline constexpr int kKeyEventCtrl = 2;
inline constexpr int kKeyEventAlt = 4;

// RegisterHotKey modifier flags, the form setting.ini keeps.
inline constexpr int kHotkeyAlt = 1;
inline constexpr int kHotkeyCtrl = 2;
inline constexpr int kHotkeyShift = 4;
inline constexpr int kHotkeyWin = 8;

// The one conversion between the two bit orders. The Windows key has no
// key-event bit: it is added from `winDown` and dropped on the way back.
int HotkeyFlagsFromKeyEvent(int keyEventBits, bool winDown);
int KeyEventBitsFromHotkeyFlags(int hotkeyFlags);

// The name the box shows for a key; nothing for keys it does not name (the
// modifier keys themselves among them).
std::optional<std::string_view> HotkeyKeyName(int virtualKey);

// The box's text for a stored combination: "Win", then "Alt", "Shift",
// "Ctrl" and the key's name, joined with " + ". Empty for no key.
std::string HotkeyDisplayText(int virtualKey, int hotkeyFlags);

enum class HotkeyEntryMode {
  kHotkey,     // modifiers + key, for RegisterHotKey
  kSingleKey,  // one key alone, for the recorder keys
};

// What the hotkey entry box (usrHotKeyEx) holds: its Mode, KeyCode,
// Modifiers (RegisterHotKey flags) and Text.
class HotkeyEntry {
 public:
  explicit HotkeyEntry(HotkeyEntryMode mode = HotkeyEntryMode::kHotkey) : mode_(mode) {}

  // Shows a stored combination (modifiers are ignored in single-key mode).
  void Set(int virtualKey, int hotkeyFlags);
  void Clear();
  // A key-down in the box. Keys the box has no name for leave it as it is;
  // a modifier key alone shows the held modifiers but captures nothing.
  void OnKeyDown(int virtualKey, int keyEventBits, bool winDown);

  HotkeyEntryMode Mode() const { return mode_; }
  int KeyCode() const { return keyCode_; }
  int Modifiers() const { return modifiers_; }
  const std::string& Text() const { return text_; }

 private:
  void OnHotkeyKeyDown(int virtualKey, int keyEventBits, bool winDown);
  void OnSingleKeyDown(int virtualKey);

  HotkeyEntryMode mode_;
  int keyCode_ = 0;
  int modifiers_ = 0;
  std::string text_;
};

}  // namespace kx::gui
