#include "input/key_names.h"

#include <gtest/gtest.h>

#include "sim/sim_system.h"

namespace kx {
namespace {

struct WordCase {
  const char* word;
  KeyCode code;
};

TEST(KeyCodeFromWord, TableWordsAndTheirOrder) {
  sim::SimSystem layout;
  const WordCase cases[] = {
      {"lshift down", kShiftDown},
      {"shift down", kShiftDown},
      {"rshift up", kShiftUp},
      {"ctrl down", kCtrlDown},
      {"lctrl up", kCtrlUp},
      {"alt down", kAltDown},
      {"ralt up", kAltUp},
      {"rwin down", kWinDown},
      {"win up", kWinUp},
      {"↑", 38},
      {"←", 37},
      {"enter", 13},
      {"esc", 27},
      {"win", 91},
      {"rwin", 92},
      {"pgdn", 34},
      {"del", 46},
      {"prtsc", 42},
      {"変換", 28},
      {"無変換", 29},
      {"半角/全角", 243},
      {"英数", 240},
      {"かな", 242},
      {".", 110},
      {"+", 107},
      {"-", 109},
      {"/", 111},
      {":", 186},
      {";", 187},
      {"@", 192},
      {"^", 222},
      {"\\", 220},
      {"＼", 226},
      {"backslash", 226},
      {"oem(-)", 189},
      {"numpadenter", 108},
  };
  for (const auto& c : cases) EXPECT_EQ(KeyCodeFromWord(c.word, layout), c.code) << c.word;
}

TEST(KeyCodeFromWord, NumpadTakesOnlyTheLastCharacter) {
  sim::SimSystem layout;
  EXPECT_EQ(KeyCodeFromWord("numpad7", layout), 103);
  EXPECT_EQ(KeyCodeFromWord("numpad12", layout), 98);
  EXPECT_EQ(KeyCodeFromWord("numpadx", layout), 96);
}

TEST(KeyCodeFromWord, AnyWordStartingWithFIsAFunctionKey) {
  sim::SimSystem layout;
  EXPECT_EQ(KeyCodeFromWord("f1", layout), 112);
  EXPECT_EQ(KeyCodeFromWord("f12", layout), 123);
  EXPECT_EQ(KeyCodeFromWord("fx", layout), 111);
  // Far past the function keys the code is no key, not a wrapped number.
  EXPECT_EQ(KeyCodeFromWord("f32656", layout), 32767);
  EXPECT_EQ(KeyCodeFromWord("f32657", layout), 0);
  EXPECT_EQ(KeyCodeFromWord("f2147483647", layout), 0);
  EXPECT_EQ(KeyCodeFromWord("foo", layout), 111);
  EXPECT_EQ(KeyCodeFromWord("f", layout), 70);  // one character: the layout's F key
}

TEST(KeyCodeFromWord, OtherWordsUseTheLayoutForTheirFirstCharacter) {
  sim::SimSystem layout;
  EXPECT_EQ(KeyCodeFromWord("a", layout), 65);
  EXPECT_EQ(KeyCodeFromWord("5", layout), 53);
  EXPECT_EQ(KeyCodeFromWord("zebra", layout), 90);
  EXPECT_EQ(KeyCodeFromWord("=", layout), 0x100 | 189);  // needs Shift: a key line ignores it
  EXPECT_EQ(KeyCodeFromWord("あ", layout), 0);
  EXPECT_EQ(KeyCodeFromWord("カタカナ", layout), 0);
}

TEST(KeyCodeFromChar, TheTypingTableAndTheUpperCaseRule) {
  sim::SimSystem layout;
  struct CharCase {
    char32_t ch;
    KeyCode code;
    bool shift;
  };
  const CharCase cases[] = {
      {'A', 65, true},     {'a', 65, false},  {'=', 189, true},  {'?', 191, true},
      {'_', 226, true},    {'!', 49, true},   {'"', 50, true},   {'&', 54, true},
      {'(', 56, true},     {'<', 188, true},  {'`', 192, true},  {'|', 220, true},
      {'~', 222, true},    {'.', 110, false}, {'-', 109, false}, {'@', 192, false},
      {':', 186, false},   {',', 188, false}, {' ', 32, false},  {U'↑', 38, false},
      {U'＼', 226, false}, {U'漢', 0, false},
  };
  for (const auto& c : cases) {
    const CharKey k = KeyCodeFromChar(c.ch, layout);
    EXPECT_EQ(k.code, c.code) << static_cast<int>(c.ch);
    EXPECT_EQ(k.shift, c.shift) << static_cast<int>(c.ch);
  }
}

TEST(WordFromKeyCode, RecordSideNames) {
  const std::pair<int, const char*> cases[] = {
      {48, "0"},
      {57, "9"},
      {65, "A"},
      {90, "Z"},
      {96, "Numpad0"},
      {105, "Numpad9"},
      {112, "F1"},
      {127, "F16"},
      {162, "LCtrl Down"},
      {165, "RAlt Down"},
      {8, "BackSpace"},
      {42, "PrintScreen"},
      {44, "PrintScreen"},
      {28, "変換"},
      {226, "BackSlash"},
      {189, "OEM(-)"},
      {220, "\\"},
      {108, "NumpadEnter"},
      {16, ""},
      {1, ""},
      {255, ""},
  };
  for (const auto& [vk, text] : cases) EXPECT_EQ(WordFromKeyCode(vk), text) << vk;
}

TEST(WordFromKeyCode, EveryRecordedWordPlaysBackAsItsKey) {
  sim::SimSystem layout;
  for (int vk = 1; vk < 256; ++vk) {
    const std::string word = WordFromKeyCode(vk);
    if (word.empty() || word.ends_with(" Down")) continue;
    std::string lower;
    for (char c : word) lower += static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    const KeyCode played = KeyCodeFromWord(lower, layout);
    // Snapshot (44) is written as PrintScreen, which plays as 42.
    EXPECT_EQ(played, vk == 44 ? 42 : vk) << word;
  }
}

}  // namespace
}  // namespace kx
