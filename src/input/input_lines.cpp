#include "input/input_lines.h"

#include <cstdlib>
#include <optional>

#include "input/key_codes.h"
#include "util/basic_text.h"

namespace kx {

namespace {

// The key a pseudo code acts on, and whether it releases it.
struct ModifierAction {
  int vk;
  bool up;
};

constexpr ModifierAction kModifierActions[] = {
    {kVkShift, false}, {kVkShift, true}, {kVkControl, false}, {kVkControl, true},
    {kVkMenu, false},  {kVkMenu, true},  {kVkLeftWin, false}, {kVkLeftWin, true},
};

std::optional<Point> ParsePoint(std::string_view text) {
  const auto open = text.find('(');
  const auto comma = text.find(',');
  const auto close = text.find(')');
  if (open == std::string_view::npos || comma == std::string_view::npos ||
      close == std::string_view::npos || comma < open || close < comma)
    return std::nullopt;
  const auto x = basic::ToLong(text.substr(open + 1, comma - open - 1));
  const auto y = basic::ToLong(text.substr(comma + 1, close - comma - 1));
  if (!x || !y) return std::nullopt;
  return Point{*x, *y};
}

struct ButtonFlags {
  char letter;
  std::string_view written;
  std::uint32_t down;
  std::uint32_t up;
};

constexpr ButtonFlags kButtons[] = {
    {'l', "L", kMouseLeftDown, kMouseLeftUp},
    {'r', "R", kMouseRightDown, kMouseRightUp},
    {'m', "M", kMouseMiddleDown, kMouseMiddleUp},
};

// Characters 5-6 of a button line: screen or foreground-client coordinates.
struct Place {
  std::string_view key;
  std::string_view written;
  bool client;
};

constexpr Place kPlaces[] = {{"se", "Mouse", false}, {"cl", "MouCl", true}};

enum class Action { kDown, kUp, kDouble };

struct ActionWord {
  std::string_view key;
  std::string_view written;
  Action action;
};

constexpr ActionWord kActions[] = {
    {"down", "Down", Action::kDown},
    {"up", "Up", Action::kUp},
    {"double", "Double", Action::kDouble},
};

// The pointer lines beside the button lines, as written.
constexpr std::string_view kPointerLines[] = {"MousePos(x,y)", "MouClPos(x,y)", "MousePos c",
                                              "MousePos s", "Wheel n"};

}  // namespace

std::vector<std::string> MouseLineForms() {
  std::vector<std::string> forms;
  for (const auto& place : kPlaces)
    for (const auto& button : kButtons)
      for (const auto& action : kActions)
        forms.push_back(std::string(button.written)
                            .append(place.written)
                            .append(" ")
                            .append(action.written)
                            .append(" (x,y)"));
  for (auto line : kPointerLines) forms.emplace_back(line);
  return forms;
}

void InputLines::PressKey(KeyCode code) {
  if (code < 0 && code >= kWinUp) {
    const auto& action = kModifierActions[-code - 1];
    queue_.QueueKey(action.vk, action.up);
    queue_.FlushKeys();
    return;
  }
  if (code == 42) {
    queue_.PressChord(kVkSnapshot);
    WaitMs(100);
    return;
  }
  if (code >= 1 && code <= 255) queue_.PressChord(code);
}

void InputLines::PressKeys(std::string_view names) {
  std::vector<int> codes;
  for (const auto& part : basic::Split(basic::LCase(basic::Trim(names)), "+")) {
    const KeyCode code = KeyCodeFromWord(basic::Trim(part), sys_.input);
    // Pseudo codes and layout codes with a shift state are no plain keys.
    if (code >= 1 && code <= 255) codes.push_back(code);
  }
  for (int code : codes) queue_.QueueKey(code, false);
  for (auto it = codes.rbegin(); it != codes.rend(); ++it) queue_.QueueKey(*it, true);
  queue_.FlushKeys();
}

void InputLines::TypeText(std::string_view text) {
  while (!text.empty()) {
    const char32_t ch = basic::FirstChar(text);
    const auto rest = basic::Mid(text, 2);
    text = rest;
    const CharKey key = KeyCodeFromChar(ch, sys_.input);
    if (key.code < 1 || key.code > 255) {
      if (!unicodeKeys_) continue;
      queue_.QueueUnicode(ch);
      queue_.FlushKeys();
      continue;
    }
    if (key.shift)
      queue_.PressChord(16, key.code);
    else
      queue_.PressChord(key.code);
  }
}

void InputLines::MoveScreen(std::string_view text) {
  if (auto p = ParsePoint(text)) sys_.input.SetCursorPos(*p);
}

void InputLines::MoveClient(std::string_view text) {
  if (auto p = ParsePoint(text))
    sys_.input.SetCursorPos(sys_.windows.ClientToScreen(sys_.windows.Foreground(), *p));
}

void InputLines::MoveToScreenCentre() {
  const Size screen = sys_.windows.ScreenSize();
  sys_.input.SetCursorPos({screen.width / 2, screen.height / 2});
}

void InputLines::PlayMouseLine(std::string_view key) {
  const ButtonFlags* button = nullptr;
  for (const auto& b : kButtons)
    if (key[0] == b.letter) button = &b;
  if (!button) return;
  const auto placeKey = key.substr(4, 2);
  const auto word = key.size() > 7 ? key.substr(7) : std::string_view{};
  std::optional<Action> action;
  for (const auto& a : kActions)
    if (word.starts_with(a.key)) {
      action = a.action;
      break;
    }
  const Place* place = nullptr;
  for (const auto& p : kPlaces)
    if (placeKey == p.key) place = &p;
  if (!action || !place) return;

  if (place->client)
    MoveClient(key);
  else
    MoveScreen(key);
  switch (*action) {
    case Action::kDown:
      queue_.QueueMouse(0, 0, button->down);
      break;
    case Action::kUp:
      queue_.QueueMouse(0, 0, button->up);
      break;
    case Action::kDouble:
      for (int i = 0; i < 2; ++i) {
        queue_.QueueMouse(0, 0, button->down);
        queue_.QueueMouse(0, 0, button->up);
      }
      break;
  }
  queue_.FlushMouse();
}

void InputLines::Wheel(std::string_view amount, const bool& playing) {
  const auto value = basic::ToDouble(amount);
  if (!value || amount == "0") return;
  const auto n = basic::ToLong(*value);
  if (!n) return;
  // The direction comes from comparing the text with "0": a leading "-" sorts
  // below it.
  const int notch = amount < std::string_view("0") ? -120 : 120;
  const long long notches = std::llabs(static_cast<long long>(*n)) / 120;
  for (long long i = 0; i < notches; ++i) {
    sys_.input.Wheel(notch);
    sys_.clock.PumpMessages();
    if (!playing) return;
    sys_.clock.Sleep(1);
  }
  sys_.input.Wheel(*n % 120);
}

void InputLines::SetLockKey(int vk, std::string_view word) {
  const std::int16_t state = sys_.input.GetKeyState(vk);
  if ((word == "on" && state == 0) || (word == "off" && state == 1)) queue_.PressChord(vk);
}

void InputLines::WaitMs(int milliseconds) {
  const std::uint32_t start = sys_.clock.TickCount();
  for (;;) {
    sys_.clock.PumpMessages();
    const std::uint32_t elapsed = sys_.clock.TickCount() - start;
    if (elapsed >= static_cast<std::uint32_t>(milliseconds)) return;
    sys_.clock.WaitForMessageOrTimeout(milliseconds - static_cast<int>(elapsed));
  }
}

}  // namespace kx
