#include "gui/hotkey_entry.h"

#include <array>

#include "input/key_codes.h"

namespace kx::gui {

namespace {

constexpr std::string_view kJoin = " + ";

// The modifiers in the order the text names them, with their bit in each
// order.
struct ModifierBit {
  int keyEventBit;
  int hotkeyFlag;
  std::string_view name;
};
constexpr std::array<ModifierBit, 3> kModifierBits{{
    {kKeyEventAlt, kHotkeyAlt, "Alt"},
    {kKeyEventShift, kHotkeyShift, "Shift"},
    {kKeyEventCtrl, kHotkeyCtrl, "Ctrl"},
}};

struct NamedKey {
  int virtualKey;
  std::string_view name;
};
// Keys with a name of their own; digits, letters, the numeric pad and the
// function keys are formed in HotkeyKeyName.
constexpr NamedKey kNamedKeys[] = {
    {8, "BackSpace"},
    {9, "Tab"},
    {12, "Clear"},
    {13, "Enter"},
    {19, "Pause"},
    {20, "CapsLock"},
    {27, "Esc"},
    {28, "変換"},
    {29, "無変換"},
    {32, "スペース"},
    {33, "PageUp"},
    {34, "PageDown"},
    {35, "End"},
    {36, "Home"},
    {37, "←"},
    {38, "↑"},
    {39, "→"},
    {40, "↓"},
    {41, "Select"},
    {42, "PrintScreen"},
    {43, "Execute"},
    {44, "Snapshot"},
    {45, "Insert"},
    {46, "Delete"},
    {47, "Help"},
    {93, "Application"},
    {106, "*"},
    {107, "+"},
    {109, "-"},
    {110, "."},
    {111, "/"},
    {144, "NumLock"},
    {145, "ScrollLock"},
    {186, ":"},
    {187, ";"},
    {188, ","},
    {189, "OEM(-)"},
    {190, "OEM(.)"},
    {191, "OEM(/)"},
    {192, "@"},
    {219, "["},
    {220, "\\"},
    {221, "]"},
    {222, "^"},
    {226, "BackSlash"},
    {229, "ひらがな"},
    {240, "CapsLock"},
    // The Japanese keyboard's kana key and its width key, which sends one
    // of two codes by the IME's state.
    {242, "カタカナ/ひらがな"},
    {243, "半角/全角"},
    {244, "半角/全角"},
};

// The names of the one-character keys, indexed by their code.
constexpr std::string_view kDigits[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};
constexpr std::string_view kLetters[] = {"A", "B", "C", "D", "E", "F", "G", "H", "I",
                                         "J", "K", "L", "M", "N", "O", "P", "Q", "R",
                                         "S", "T", "U", "V", "W", "X", "Y", "Z"};
constexpr std::string_view kPadDigits[] = {"Numpad0", "Numpad1", "Numpad2", "Numpad3", "Numpad4",
                                           "Numpad5", "Numpad6", "Numpad7", "Numpad8", "Numpad9"};
constexpr std::string_view kFunctionKeys[] = {"F1",  "F2",  "F3",  "F4",  "F5",  "F6",
                                              "F7",  "F8",  "F9",  "F10", "F11", "F12",
                                              "F13", "F14", "F15", "F16"};

// The modifier text of RegisterHotKey flags: "Win", "Alt", "Shift", "Ctrl".
std::string ModifierText(int hotkeyFlags) {
  std::string text = (hotkeyFlags & kHotkeyWin) != 0 ? "Win" : "";
  for (const ModifierBit& bit : kModifierBits) {
    if ((hotkeyFlags & bit.hotkeyFlag) == 0) continue;
    if (!text.empty()) text += kJoin;
    text += bit.name;
  }
  return text;
}

std::string_view SingleKeyModifierName(int virtualKey) {
  switch (virtualKey) {
    case kVkShift:
      return "Shift";
    case kVkControl:
      return "Ctrl";
    case kVkMenu:
      return "Alt";
    case kVkLeftWin:
      return "LWin";
    case kVkRightWin:
      return "RWin";
    default:
      return {};
  }
}

}  // namespace

int HotkeyFlagsFromKeyEvent(int keyEventBits, bool winDown) {
  int flags = winDown ? kHotkeyWin : 0;
  for (const ModifierBit& bit : kModifierBits)
    if ((keyEventBits & bit.keyEventBit) != 0) flags |= bit.hotkeyFlag;
  return flags;
}

int KeyEventBitsFromHotkeyFlags(int hotkeyFlags) {
  int bits = 0;
  for (const ModifierBit& bit : kModifierBits)
    if ((hotkeyFlags & bit.hotkeyFlag) != 0) bits |= bit.keyEventBit;
  return bits;
}

std::optional<std::string_view> HotkeyKeyName(int virtualKey) {
  if (virtualKey >= kVk0 && virtualKey <= kVk9) return kDigits[virtualKey - kVk0];
  if (virtualKey >= kVkA && virtualKey <= kVkZ) return kLetters[virtualKey - kVkA];
  if (virtualKey >= kVkNumpad0 && virtualKey <= kVkNumpad9)
    return kPadDigits[virtualKey - kVkNumpad0];
  if (virtualKey >= kVkF1 && virtualKey <= kVkF16) return kFunctionKeys[virtualKey - kVkF1];
  for (const NamedKey& key : kNamedKeys)
    if (key.virtualKey == virtualKey) return key.name;
  return std::nullopt;
}

std::string HotkeyDisplayText(int virtualKey, int hotkeyFlags) {
  if (virtualKey == 0) return "";
  std::string text = ModifierText(hotkeyFlags);
  const auto name = HotkeyKeyName(virtualKey);
  if (!name) return text;
  if (!text.empty()) text += kJoin;
  text += *name;
  return text;
}

void HotkeyEntry::Set(int virtualKey, int hotkeyFlags) {
  if (mode_ == HotkeyEntryMode::kSingleKey) {
    keyCode_ = virtualKey;
    modifiers_ = 0;
    const std::string_view own = SingleKeyModifierName(virtualKey);
    text_ = !own.empty() ? std::string(own) : HotkeyDisplayText(virtualKey, 0);
    return;
  }
  keyCode_ = virtualKey;
  modifiers_ = hotkeyFlags;
  text_ = HotkeyDisplayText(virtualKey, hotkeyFlags);
}

void HotkeyEntry::Clear() {
  keyCode_ = 0;
  modifiers_ = 0;
  text_.clear();
}

void HotkeyEntry::OnKeyDown(int virtualKey, int keyEventBits, bool winDown) {
  if (mode_ == HotkeyEntryMode::kSingleKey)
    OnSingleKeyDown(virtualKey);
  else
    OnHotkeyKeyDown(virtualKey, keyEventBits, winDown);
}

void HotkeyEntry::OnHotkeyKeyDown(int virtualKey, int keyEventBits, bool winDown) {
  const int flags = HotkeyFlagsFromKeyEvent(keyEventBits, winDown);
  // Backspace and Delete clear only on their own: Ctrl+Backspace is a key.
  if ((virtualKey == kVkBackspace || virtualKey == kVkDelete) && flags == 0) {
    Clear();
    return;
  }
  const bool modifierKey = virtualKey == kVkShift || virtualKey == kVkControl ||
                           virtualKey == kVkMenu || virtualKey == kVkLeftWin ||
                           virtualKey == kVkRightWin;
  if (modifierKey) {
    // Shows what is held so far; with no key there is nothing to register.
    keyCode_ = 0;
    modifiers_ = 0;
    text_ = ModifierText(flags);
    return;
  }
  const auto name = HotkeyKeyName(virtualKey);
  if (!name) return;
  keyCode_ = virtualKey;
  modifiers_ = flags;
  text_ = HotkeyDisplayText(virtualKey, flags);
}

void HotkeyEntry::OnSingleKeyDown(int virtualKey) {
  if (virtualKey == kVkBackspace || virtualKey == kVkDelete) {
    Clear();
    return;
  }
  const std::string_view own = SingleKeyModifierName(virtualKey);
  const auto name = own.empty() ? HotkeyKeyName(virtualKey) : std::optional(own);
  if (!name) return;
  keyCode_ = virtualKey;
  modifiers_ = 0;
  text_ = *name;
}

}  // namespace kx::gui
