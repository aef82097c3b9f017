#pragma once
// The key and mouse vocabulary of macro lines, in both directions.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "input/input_port.h"

namespace kx {

// A key code: 1-255 are virtual keys, -1..-8 hold or release a modifier, 0 is
// no key. Layout lookups may return codes with a shift-state byte (>= 256).
using KeyCode = std::int16_t;

inline constexpr KeyCode kShiftDown = -1, kShiftUp = -2, kCtrlDown = -3, kCtrlUp = -4,
                         kAltDown = -5, kAltUp = -6, kWinDown = -7, kWinUp = -8;

// Play side: the whole trimmed, lower-cased line, or one part of a keys line.
KeyCode KeyCodeFromWord(std::string_view word, InputPort& layout);

// True when the word is a name of the vocabulary itself: a table word, a
// numeric-pad word ("numpad" and one digit), a function key ("f" and a number
// from 1 to 24) or a single character. Other words still press something
// (the key of their first character), which is rarely what was meant.
bool IsKeyWord(std::string_view word);

struct CharKey {
  KeyCode code = 0;
  bool shift = false;
};
// The key that types one character of a "key" line (case as written).
CharKey KeyCodeFromChar(char32_t ch, InputPort& layout);

// Record side: the text written for a key that went down; empty when the key
// is not recorded. Mouse buttons (1, 2, 4) are written by the recorder.
std::string WordFromKeyCode(int vk);

// The vocabulary as lists, for the key-name list shipped with the program.
// Play side: the table words, each once, in lookup order.
std::vector<std::string_view> PlayTableWords();
// The numbered play-side words: "numpad0".."numpad9", "f1".."f24".
std::vector<std::string> PlayNumberedWords();
// Record side: every name WordFromKeyCode writes, each once, in key-code
// order, followed by the release forms of the modifier names ("LCtrl Up").
std::vector<std::string> RecordedKeyNames();

}  // namespace kx
