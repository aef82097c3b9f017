#include "input/key_names.h"

#include <algorithm>
#include <array>
#include <limits>

#include "util/basic_text.h"

namespace kx {

namespace {

struct WordEntry {
  std::string_view word;
  KeyCode code;
};

// Play-side words in lookup order; the first match wins. "半角/全角" is listed
// twice (243, then 244); the second entry can never match and stays so.
constexpr std::array kPlayWords = {
    WordEntry{"lshift down", kShiftDown},
    WordEntry{"rshift down", kShiftDown},
    WordEntry{"shift down", kShiftDown},
    WordEntry{"lshift up", kShiftUp},
    WordEntry{"rshift up", kShiftUp},
    WordEntry{"shift up", kShiftUp},
    WordEntry{"lalt down", kAltDown},
    WordEntry{"ralt down", kAltDown},
    WordEntry{"alt down", kAltDown},
    WordEntry{"lalt up", kAltUp},
    WordEntry{"ralt up", kAltUp},
    WordEntry{"alt up", kAltUp},
    WordEntry{"lctrl down", kCtrlDown},
    WordEntry{"rctrl down", kCtrlDown},
    WordEntry{"ctrl down", kCtrlDown},
    WordEntry{"lctrl up", kCtrlUp},
    WordEntry{"rctrl up", kCtrlUp},
    WordEntry{"ctrl up", kCtrlUp},
    WordEntry{"lwin down", kWinDown},
    WordEntry{"rwin down", kWinDown},
    WordEntry{"win down", kWinDown},
    WordEntry{"lwin up", kWinUp},
    WordEntry{"rwin up", kWinUp},
    WordEntry{"win up", kWinUp},
    WordEntry{"↑", 38},
    WordEntry{"→", 39},
    WordEntry{"↓", 40},
    WordEntry{"←", 37},
    WordEntry{"alt", 18},
    WordEntry{"backspace", 8},
    WordEntry{"ctrl", 17},
    WordEntry{"tab", 9},
    WordEntry{"enter", 13},
    WordEntry{"esc", 27},
    WordEntry{"lwin", 91},
    WordEntry{"win", 91},
    WordEntry{"rwin", 92},
    WordEntry{"application", 93},
    WordEntry{"pageup", 33},
    WordEntry{"pgup", 33},
    WordEntry{"pagedown", 34},
    WordEntry{"pgdn", 34},
    WordEntry{"home", 36},
    WordEntry{"end", 35},
    WordEntry{"delete", 46},
    WordEntry{"del", 46},
    WordEntry{"insert", 45},
    WordEntry{"pause", 19},
    WordEntry{"printscreen", 42},
    WordEntry{"prtsc", 42},
    WordEntry{"変換", 28},
    WordEntry{"無変換", 29},
    WordEntry{"shift", 16},
    WordEntry{"space", 32},
    WordEntry{"capslock", 20},
    WordEntry{"英数", 240},
    WordEntry{"かな", 242},
    WordEntry{"半角/全角", 243},
    WordEntry{"半角/全角", 244},
    WordEntry{"numlock", 144},
    WordEntry{".", 110},
    WordEntry{"*", 106},
    WordEntry{"+", 107},
    WordEntry{"numpadenter", 108},
    WordEntry{"-", 109},
    WordEntry{"/", 111},
    WordEntry{"scrolllock", 145},
    WordEntry{":", 186},
    WordEntry{";", 187},
    WordEntry{",", 188},
    WordEntry{"oem(-)", 189},
    WordEntry{"oem(.)", 190},
    WordEntry{"oem(/)", 191},
    WordEntry{"@", 192},
    WordEntry{"[", 219},
    WordEntry{"\\", 220},
    WordEntry{"]", 221},
    WordEntry{"^", 222},
    WordEntry{"backslash", 226},
    WordEntry{"＼", 226},
};

struct CharEntry {
  char32_t ch;
  KeyCode code;
  bool alwaysShift;  // otherwise Shift follows the system's upper-case test
};

constexpr std::array kTypedChars = {
    CharEntry{U'↑', 38, false}, CharEntry{U'→', 39, false},  CharEntry{U'↓', 40, false},
    CharEntry{U'←', 37, false}, CharEntry{'.', 110, false},  CharEntry{'*', 106, false},
    CharEntry{'+', 107, false}, CharEntry{'-', 109, false},  CharEntry{'/', 111, false},
    CharEntry{':', 186, false}, CharEntry{';', 187, false},  CharEntry{'@', 192, false},
    CharEntry{'[', 219, false}, CharEntry{'\\', 220, false}, CharEntry{']', 221, false},
    CharEntry{'^', 222, false}, CharEntry{'=', 189, true},   CharEntry{'?', 191, true},
    CharEntry{'_', 226, true},  CharEntry{'!', 49, true},    CharEntry{'"', 50, true},
    CharEntry{'#', 51, true},   CharEntry{'$', 52, true},    CharEntry{'%', 53, true},
    CharEntry{'&', 54, true},   CharEntry{'\'', 55, true},   CharEntry{'(', 56, true},
    CharEntry{')', 57, true},   CharEntry{'<', 188, true},   CharEntry{'>', 190, true},
    CharEntry{'`', 192, true},  CharEntry{'|', 220, true},   CharEntry{'{', 219, true},
    CharEntry{'}', 221, true},  CharEntry{'~', 222, true},   CharEntry{U'＼', 226, false},
};

constexpr int kLastFunctionKey = 24;
constexpr int kNumpadDigits = 10;
constexpr int kLastVirtualKey = 255;
constexpr std::string_view kDownSuffix = " Down";
constexpr std::string_view kUpSuffix = " Up";

char32_t LowerChar(char32_t ch) {
  if (ch >= 'A' && ch <= 'Z') return ch + 32;
  if (ch >= 0xFF21 && ch <= 0xFF3A) return ch + 32;
  return ch;
}

KeyCode LayoutLookup(char32_t ch, InputPort& layout) {
  const std::int16_t code = layout.VkKeyScan(LowerChar(ch));
  return code == -1 ? KeyCode{0} : code;
}

}  // namespace

KeyCode KeyCodeFromWord(std::string_view word, InputPort& layout) {
  for (const auto& e : kPlayWords)
    if (e.word == word) return e.code;
  if (word.substr(0, 6) == "numpad") {
    // Only the last character counts: numpad12 is the numeric-pad 2.
    const auto last = basic::Mid(word, basic::Length(word));
    return static_cast<KeyCode>(96 + basic::ToLong(basic::Val(last)).value_or(0));
  }
  if (!word.empty() && word[0] == 'f' && basic::Length(word) >= 2) {
    // Every "f" goes, the rest is read as a number: fx is 111 as well.
    std::string rest;
    for (char c : word)
      if (c != 'f') rest += c;
    // Far past the last function key the code is no key at all, rather than
    // a number that wraps round to some other key.
    const std::int64_t code = 111 + std::int64_t{basic::ToLong(basic::Val(rest)).value_or(0)};
    if (code < std::numeric_limits<KeyCode>::min() || code > std::numeric_limits<KeyCode>::max())
      return 0;
    return static_cast<KeyCode>(code);
  }
  return LayoutLookup(basic::FirstChar(word), layout);
}

bool IsKeyWord(std::string_view word) {
  for (const auto& e : kPlayWords)
    if (e.word == word) return true;
  if (basic::Length(word) == 1) return true;
  if (word.starts_with("numpad")) return word.size() == 7 && word[6] >= '0' && word[6] <= '9';
  if (word.starts_with("f") && word.size() <= 3) {
    const auto rest = word.substr(1);
    for (char c : rest)
      if (c < '0' || c > '9') return false;
    const int n = std::stoi(std::string(rest));
    return n >= 1 && n <= kLastFunctionKey;
  }
  return false;
}

CharKey KeyCodeFromChar(char32_t ch, InputPort& layout) {
  for (const auto& e : kTypedChars)
    if (e.ch == ch) return {e.code, e.alwaysShift || layout.IsCharUpper(ch)};
  return {LayoutLookup(ch, layout), layout.IsCharUpper(ch)};
}

std::string WordFromKeyCode(int vk) {
  struct Named {
    int vk;
    std::string_view text;
  };
  static constexpr Named kNames[] = {
      {162, "LCtrl Down"},
      {163, "RCtrl Down"},
      {160, "LShift Down"},
      {161, "RShift Down"},
      {164, "LAlt Down"},
      {165, "RAlt Down"},
      {27, "Esc"},
      {32, "Space"},
      {13, "Enter"},
      {8, "BackSpace"},
      {9, "Tab"},
      {107, "+"},
      {109, "-"},
      {106, "*"},
      {111, "/"},
      {110, "."},
      {38, "↑"},
      {39, "→"},
      {40, "↓"},
      {37, "←"},
      {45, "Insert"},
      {46, "Delete"},
      {36, "Home"},
      {35, "End"},
      {33, "PageUp"},
      {34, "PageDown"},
      {144, "NumLock"},
      {42, "PrintScreen"},
      {44, "PrintScreen"},
      {145, "ScrollLock"},
      {19, "Pause"},
      {20, "CapsLock"},
      {28, "変換"},
      {29, "無変換"},
      {91, "LWin"},
      {92, "RWin"},
      {93, "Application"},
      {108, "NumpadEnter"},
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
  };
  if (vk >= 48 && vk <= 57) return std::string(1, static_cast<char>(vk));
  if (vk >= 96 && vk <= 105) return "Numpad" + std::to_string(vk - 96);
  if (vk >= 65 && vk <= 90) return std::string(1, static_cast<char>(vk));
  if (vk >= 112 && vk <= 127) return "F" + std::to_string(vk - 111);
  for (const auto& n : kNames)
    if (n.vk == vk) return std::string(n.text);
  return "";
}

std::vector<std::string_view> PlayTableWords() {
  std::vector<std::string_view> words;
  for (const auto& e : kPlayWords)
    if (std::find(words.begin(), words.end(), e.word) == words.end()) words.push_back(e.word);
  return words;
}

std::vector<std::string> PlayNumberedWords() {
  std::vector<std::string> words;
  for (int i = 0; i < kNumpadDigits; ++i) words.push_back("numpad" + std::to_string(i));
  for (int i = 1; i <= kLastFunctionKey; ++i) words.push_back("f" + std::to_string(i));
  return words;
}

std::vector<std::string> RecordedKeyNames() {
  std::vector<std::string> names;
  std::vector<std::string> releases;
  for (int vk = 1; vk <= kLastVirtualKey; ++vk) {
    std::string name = WordFromKeyCode(vk);
    if (name.empty() || std::find(names.begin(), names.end(), name) != names.end()) continue;
    if (name.ends_with(kDownSuffix))
      releases.push_back(name.substr(0, name.size() - kDownSuffix.size()).append(kUpSuffix));
    names.push_back(std::move(name));
  }
  names.insert(names.end(), releases.begin(), releases.end());
  return names;
}

}  // namespace kx
