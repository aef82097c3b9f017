#include "recorder/recorder.h"

#include <algorithm>
#include <span>
#include <vector>

#include "eval/date_text.h"
#include "input/key_codes.h"
#include "input/key_names.h"
#include "recorder/recorded_lines.h"
#include "settings/settings.h"
#include "settings/settings_lists.h"

namespace kx {

namespace {

constexpr std::int64_t kMsPerSecond = 1000;

// The tracked keys, in the order releases are looked for.
constexpr int kTrackedKeys[] = {
    kVkLeftButton, kVkRightButton, kVkMiddleButton, 162, 163, 160, 161, kVkLeftAlt, kVkRightAlt,
};
static_assert(std::size(kTrackedKeys) == 9);

// Foreground windows that are the desktop, the taskbar or the start menu.
constexpr std::string_view kIgnoredWindowClasses[] = {"Static", "Shell_TrayWnd", "Progman",
                                                      "WorkerW", "DV2ControlHost"};

// The keys a tick asks about, in rising order: those that can give a line.
// Asking about the others could change nothing, and every question costs
// (under Wine a round to the display's event queue).
const std::vector<int>& SampledKeys() {
  static const std::vector<int> keys = [] {
    std::vector<int> out;
    for (int vk = 1; vk <= kVkLast; ++vk)
      if (IsMouseButton(vk) || !WordFromKeyCode(vk).empty()) out.push_back(vk);
    return out;
  }();
  return keys;
}

std::string DateTimeText(const LocalTime& t) {
  const DateParts parts{t.year, t.month, t.day, t.hour, t.minute, t.second};
  const auto serial = SerialFromParts(parts);
  return serial ? FormatDate(*serial) : std::string();
}

}  // namespace

RecorderOptions RecorderOptionsFromSettings(const Settings& s, bool hasPerformanceCounter) {
  RecorderOptions o;
  o.mouse = s.mouse;
  o.mouCl = s.mouCl;
  o.move = s.move;
  o.recAct = s.recAct;
  o.time = s.time && hasPerformanceCounter;
  o.stamp = s.stamp;
  o.recKeyMouse = s.recKeyMouse;
  o.recKeyClick = s.recKeyClick;
  const HotkeyCombo fixed[] = {{s.hotkeyVMod, s.hotkeyV},
                               {s.hotkeyRecMod, s.hotkeyRec},
                               {s.hotkeyPlayMod, s.hotkeyPlay},
                               {s.hotkeyStopMod, s.hotkeyStop}};
  o.hotkeys.assign(std::begin(fixed), std::end(fixed));
  for (const ScriptHotkey& entry : ParseHotkeyList(s.hotkey))
    o.hotkeys.push_back({entry.modifiers, entry.virtualKey});
  return o;
}

std::string PointerText(Point screen) {
  return std::to_string(screen.x) + "x" + std::to_string(screen.y);
}

void Recorder::Start(const RecorderOptions& options, WindowHandle ownWindow) {
  options_ = options;
  ownWindow_ = ownWindow;
  for (std::size_t i = 0; i < tracked_.size(); ++i) tracked_[i] = Tracked{kTrackedKeys[i]};
  looked_ = false;
  anyDown_ = false;
  previousLine_.clear();
  written_ = false;
  lastWindow_ = 0;
  lastMove_.clear();
  mouseKeyHeld_ = false;
  clickKeyHeld_ = false;
  hookKeys_ = {};
  hookPresses_ = {};
  writtenPresses_ = {};
  reference_ = clock_.PerformanceCounter();
}

bool Recorder::Excluded(int vk) const {
  if (IsNeverRecorded(vk)) return true;
  if (vk == options_.recKeyMouse || vk == options_.recKeyClick) return true;
  return IsMouseButton(vk) && !options_.mouse && !clickKeyHeld_;
}

Point Recorder::Position(bool pumpFirst) {
  const Point screen = input_.GetCursorPos();
  if (!options_.mouCl) return screen;
  // A click activates its window: let that settle before asking which
  // window is in front.
  if (pumpFirst) clock_.PumpMessages();
  return windows_.ScreenToClient(windows_.Foreground(), screen);
}

std::string Recorder::SampledButtonLine(int vk, bool down) {
  return ButtonLine(vk, down, options_.mouCl, Position(down && vk == kVkLeftButton));
}

std::string Recorder::ReleaseLine() {
  for (std::size_t i = 0; i < tracked_.size(); ++i) {
    Tracked& t = tracked_[i];
    if (!t.recordedDown || t.downNow) continue;
    t.recordedDown = false;
    return IsMouseButton(t.vk) ? SampledButtonLine(t.vk, false) : std::string(ModifierUpLine(t.vk));
  }
  return {};
}

std::string Recorder::Stop() {
  std::string out;
  for (Tracked& t : tracked_) {
    if (!t.recordedDown) continue;
    t.recordedDown = false;
    out += IsMouseButton(t.vk) ? SampledButtonLine(t.vk, false) : std::string(ModifierUpLine(t.vk));
    out += kLineEnd;
  }
  return out;
}

std::string Recorder::Tick() {
  for (Tracked& t : tracked_) t.downNow = false;
  std::string line;
  int pressed = 0;  // the key of a press line
  const std::uint32_t lastInput = input_.LastInputTick();
  const bool quiet = looked_ && !anyDown_ && lastInput == lastInput_;
  if (!quiet) {
    looked_ = true;
    anyDown_ = false;
    lastInput_ = lastInput;
  }
  for (const int vk : quiet ? std::span<const int>() : std::span<const int>(SampledKeys())) {
    if (!input_.IsKeyDown(vk)) continue;
    anyDown_ = true;  // excluded keys too: the exclusions change with a record key
    if (Excluded(vk)) continue;
    const auto t = std::ranges::find(tracked_, vk, &Tracked::vk);
    if (t == tracked_.end()) {
      if (std::string word = WordFromKeyCode(vk); !word.empty()) {
        line = std::move(word);
        pressed = vk;
      }
      continue;
    }
    t->downNow = true;
    // Clicks on the program itself (its buttons, its editor) are not part
    // of the user's work.
    if (vk == kVkLeftButton && ownWindow_ != 0 && windows_.Foreground() == ownWindow_) return {};
    if (t->recordedDown) continue;  // only the press edge is written
    t->recordedDown = true;
    line = IsMouseButton(vk) ? SampledButtonLine(vk, true) : WordFromKeyCode(vk);
    pressed = vk;
  }
  if (line.empty()) line = ReleaseLine();

  // A key held over several ticks, and auto-repeat, give one line; an
  // empty tick in between makes the same line count again.
  if (line != previousLine_) written_ = false;
  if (line.empty() || written_) return {};
  std::string out = Write(line);
  if (pressed != 0) ++writtenPresses_[static_cast<std::size_t>(pressed)];
  written_ = true;
  previousLine_ = std::move(line);
  return out;
}

std::string Recorder::Write(std::string_view line) {
  std::int64_t elapsedMs = 0;
  if (options_.time) {
    const std::int64_t now = clock_.PerformanceCounter();
    const std::int64_t frequency = std::max<std::int64_t>(1, clock_.PerformanceFrequency());
    elapsedMs = (now - reference_) * kMsPerSecond / frequency;
    reference_ = now;
  }
  return TimedLine(line, options_.time, elapsedMs);
}

std::string Recorder::WindowTick() {
  if (!options_.recAct) return {};
  const WindowHandle window = windows_.Foreground();
  if (window == 0 || window == ownWindow_ || window == lastWindow_) return {};
  lastWindow_ = window;
  const std::string className = windows_.ClassName(window);
  if (className.empty() ||
      std::ranges::find(kIgnoredWindowClasses, className) != std::end(kIgnoredWindowClasses))
    return {};
  std::string out;
  if (options_.stamp) out += "'" + DateTimeText(clock_.Now()) + kLineEnd;
  out += "W " + className + "," + windows_.Title(window) + kLineEnd;
  return out;
}

std::string Recorder::OnMouseMove(Point screen) {
  if (!options_.move && !mouseKeyHeld_) return {};
  std::string line =
      MoveLine(options_.mouCl,
               options_.mouCl ? windows_.ScreenToClient(windows_.Foreground(), screen) : screen);
  // The hook reports a move for every pixel and for some events in place;
  // a position is written once.
  if (line == lastMove_) return {};
  lastMove_ = line;
  return Write(line);
}

std::string Recorder::OnWheel(int delta) {
  if (delta == 0) return {};
  return Write(WheelLine(delta));
}

void Recorder::OnKey(int vk, int message, bool altDown) {
  const bool down = message == kMsgKeyDown || message == kMsgSysKeyDown;
  const bool up = message == kMsgKeyUp || message == kMsgSysKeyUp;
  for (auto [key, held] : {std::pair{options_.recKeyMouse, &mouseKeyHeld_},
                           std::pair{options_.recKeyClick, &clickKeyHeld_}}) {
    if (key == 0 || vk != key) continue;
    if (key == kVkLeftAlt || key == kVkRightAlt)
      *held = altDown;
    else if (down || up)
      *held = down;
  }
}

void Recorder::CountHookKey(int vk, int message, bool count) {
  if (!hookKeys_.Take(vk, message) || !count) return;
  if (Excluded(vk) || WordFromKeyCode(vk).empty()) return;
  // A hotkey's press, such as the record key ending the recording, is the
  // program's own and not the user's work.
  if (IsHotkeyPress(options_.hotkeys, hookKeys_.Modifiers(), vk)) return;
  ++hookPresses_[static_cast<std::size_t>(vk)];
}

int Recorder::UnrecordedPresses() const {
  int missed = 0;
  // A key held when the hooks came is written without the hook seeing its
  // press: a key's count does not go below zero.
  for (std::size_t vk = 0; vk < hookPresses_.size(); ++vk)
    missed += std::max(0, hookPresses_[vk] - writtenPresses_[vk]);
  return missed;
}

}  // namespace kx
