#include "gui/hotkey_entry.h"

#include <gtest/gtest.h>

#include <string>

namespace kx::gui {
namespace {

struct NameCase {
  int virtualKey;
  const char* name;
};

// Every key the box names, with its name.
const NameCase kEveryNamedKey[] = {
    {8, "BackSpace"},
    {9, "Tab"},
    {12, "Clear"},
    {13, "Enter"},
    {19, "Pause"},
    {20, "CapsLock"},
    {240, "CapsLock"},
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
    {48, "0"},
    {57, "9"},
    {53, "5"},
    {65, "A"},
    {77, "M"},
    {90, "Z"},
    {93, "Application"},
    {96, "Numpad0"},
    {101, "Numpad5"},
    {105, "Numpad9"},
    {106, "*"},
    {107, "+"},
    {109, "-"},
    {110, "."},
    {111, "/"},
    {112, "F1"},
    {116, "F5"},
    {121, "F10"},
    {127, "F16"},
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
    {242, "カタカナ/ひらがな"},
    {243, "半角/全角"},
    {244, "半角/全角"},
};

TEST(HotkeyKeyName, EveryNamedKeyAndTheUnnamedOnes) {
  for (const NameCase& c : kEveryNamedKey) {
    ASSERT_TRUE(HotkeyKeyName(c.virtualKey).has_value()) << c.virtualKey;
    EXPECT_EQ(*HotkeyKeyName(c.virtualKey), c.name) << c.virtualKey;
  }
  for (int letter = 65; letter <= 90; ++letter)
    EXPECT_EQ(*HotkeyKeyName(letter), std::string(1, static_cast<char>(letter)));
  for (int f = 1; f <= 16; ++f) EXPECT_EQ(*HotkeyKeyName(111 + f), "F" + std::to_string(f));
  for (const int unnamed : {0, 1, 16, 17, 18, 91, 92, 108, 128, 255, -1, 1000})
    EXPECT_FALSE(HotkeyKeyName(unnamed).has_value()) << unnamed;
}

TEST(HotkeyEntry, EveryNamedKeyWithEachModifierGivesTextAndFlags) {
  struct ModifierCase {
    int keyEventBits;
    bool win;
    int flags;
    const char* prefix;
  };
  const ModifierCase modifiers[] = {
      {0, false, 0, ""},
      {kKeyEventShift, false, 4, "Shift + "},
      {kKeyEventCtrl, false, 2, "Ctrl + "},
      {kKeyEventShift | kKeyEventCtrl, false, 6, "Shift + Ctrl + "},
      {kKeyEventAlt, false, 1, "Alt + "},
      {kKeyEventAlt | kKeyEventShift, false, 5, "Alt + Shift + "},
      {kKeyEventAlt | kKeyEventCtrl, false, 3, "Alt + Ctrl + "},
      {kKeyEventAlt | kKeyEventShift | kKeyEventCtrl, false, 7, "Alt + Shift + Ctrl + "},
      {0, true, 8, "Win + "},
      {kKeyEventAlt | kKeyEventShift | kKeyEventCtrl, true, 15, "Win + Alt + Shift + Ctrl + "},
  };
  for (const NameCase& key : kEveryNamedKey) {
    for (const ModifierCase& m : modifiers) {
      const bool clears = (key.virtualKey == 8 || key.virtualKey == 46) && m.flags == 0;
      if (clears) continue;
      HotkeyEntry box;
      box.OnKeyDown(key.virtualKey, m.keyEventBits, m.win);
      const std::string expected = std::string(m.prefix) + key.name;
      EXPECT_EQ(box.Text(), expected);
      EXPECT_EQ(box.KeyCode(), key.virtualKey) << expected;
      EXPECT_EQ(box.Modifiers(), m.flags) << expected;
      // The stored form shows the same text again.
      EXPECT_EQ(HotkeyDisplayText(box.KeyCode(), box.Modifiers()), expected);
    }
  }
}

TEST(HotkeyEntry, WinAltF5StoresNine) {
  HotkeyEntry box;
  box.OnKeyDown(116, kKeyEventAlt, true);
  EXPECT_EQ(box.Text(), "Win + Alt + F5");
  EXPECT_EQ(box.Modifiers(), 9);
  EXPECT_EQ(box.KeyCode(), 116);
}

TEST(HotkeyEntry, BackspaceAndDeleteClearOnlyWithoutModifiers) {
  for (const int key : {8, 46}) {
    HotkeyEntry box;
    box.OnKeyDown(116, kKeyEventCtrl, false);
    box.OnKeyDown(key, 0, false);
    EXPECT_EQ(box.KeyCode(), 0);
    EXPECT_EQ(box.Modifiers(), 0);
    EXPECT_EQ(box.Text(), "");

    box.OnKeyDown(key, kKeyEventCtrl, false);
    EXPECT_EQ(box.KeyCode(), key);
    EXPECT_EQ(box.Modifiers(), kHotkeyCtrl);

    box.OnKeyDown(key, 0, true);  // the Windows key counts as a modifier
    EXPECT_EQ(box.KeyCode(), key);
    EXPECT_EQ(box.Modifiers(), kHotkeyWin);
  }
}

TEST(HotkeyEntry, ModifierKeysAloneAndUnnamedKeysCaptureNothing) {
  HotkeyEntry box;
  box.OnKeyDown(116, 0, false);
  box.OnKeyDown(17, kKeyEventCtrl, false);  // Ctrl pressed on its way to a chord
  EXPECT_EQ(box.Text(), "Ctrl");
  EXPECT_EQ(box.KeyCode(), 0);
  EXPECT_EQ(box.Modifiers(), 0);
  box.OnKeyDown(18, kKeyEventCtrl | kKeyEventAlt, false);
  EXPECT_EQ(box.Text(), "Alt + Ctrl");
  box.OnKeyDown(91, 0, true);
  EXPECT_EQ(box.Text(), "Win");
  EXPECT_EQ(box.KeyCode(), 0);

  box.OnKeyDown(65, kKeyEventShift, false);
  box.OnKeyDown(255, kKeyEventCtrl, false);  // no name: the box keeps Shift + A
  EXPECT_EQ(box.Text(), "Shift + A");
  EXPECT_EQ(box.KeyCode(), 65);
  EXPECT_EQ(box.Modifiers(), kHotkeyShift);
}

TEST(HotkeyEntry, SingleKeyModeNamesTheKeyAlone) {
  HotkeyEntry box(HotkeyEntryMode::kSingleKey);
  box.OnKeyDown(65, kKeyEventCtrl | kKeyEventAlt, true);
  EXPECT_EQ(box.Text(), "A");
  EXPECT_EQ(box.KeyCode(), 65);
  EXPECT_EQ(box.Modifiers(), 0);
  box.OnKeyDown(91, 0, true);
  EXPECT_EQ(box.Text(), "LWin");
  EXPECT_EQ(box.KeyCode(), 91);
  box.OnKeyDown(92, 0, true);
  EXPECT_EQ(box.Text(), "RWin");
  box.OnKeyDown(17, kKeyEventCtrl, false);
  EXPECT_EQ(box.Text(), "Ctrl");
  EXPECT_EQ(box.KeyCode(), 17);
  box.OnKeyDown(8, kKeyEventCtrl, false);  // clears even with a modifier held
  EXPECT_EQ(box.KeyCode(), 0);
  EXPECT_EQ(box.Text(), "");
  box.OnKeyDown(32, 0, false);
  box.OnKeyDown(46, 0, false);
  EXPECT_EQ(box.KeyCode(), 0);

  box.Set(17, kHotkeyAlt);
  EXPECT_EQ(box.Text(), "Ctrl");
  EXPECT_EQ(box.Modifiers(), 0);
}

TEST(HotkeyModifierBits, OneConversionBothWays) {
  struct Case {
    int keyEventBits;
    int hotkeyFlags;
  };
  const Case cases[] = {{0, 0}, {1, 4}, {2, 2}, {3, 6}, {4, 1}, {5, 5}, {6, 3}, {7, 7}};
  for (const Case& c : cases) {
    EXPECT_EQ(HotkeyFlagsFromKeyEvent(c.keyEventBits, false), c.hotkeyFlags);
    EXPECT_EQ(HotkeyFlagsFromKeyEvent(c.keyEventBits, true), c.hotkeyFlags | kHotkeyWin);
    EXPECT_EQ(KeyEventBitsFromHotkeyFlags(c.hotkeyFlags), c.keyEventBits);
    EXPECT_EQ(KeyEventBitsFromHotkeyFlags(c.hotkeyFlags | kHotkeyWin), c.keyEventBits);
  }
}

TEST(HotkeyDisplayText, StoredCombinations) {
  EXPECT_EQ(HotkeyDisplayText(122, 1), "Alt + F11");
  EXPECT_EQ(HotkeyDisplayText(19, 0), "Pause");
  EXPECT_EQ(HotkeyDisplayText(0, 0), "");
  EXPECT_EQ(HotkeyDisplayText(0, 3), "");
  EXPECT_EQ(HotkeyDisplayText(116, 15), "Win + Alt + Shift + Ctrl + F5");
  HotkeyEntry box;
  box.Set(32, kHotkeyCtrl | kHotkeyShift);
  EXPECT_EQ(box.Text(), "Shift + Ctrl + スペース");
  box.Clear();
  EXPECT_EQ(box.Text(), "");
  EXPECT_EQ(box.KeyCode(), 0);
}

}  // namespace
}  // namespace kx::gui
