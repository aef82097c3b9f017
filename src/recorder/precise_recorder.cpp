#include "recorder/precise_recorder.h"

#include <utility>

#include "input/key_codes.h"
#include "input/key_names.h"
#include "recorder/recorded_lines.h"

namespace kx {

namespace {

// The left or right key of a generic Shift, Ctrl or Alt: the recorder names
// those, whichever way the input reached the hook.
int SidedKey(int vk, bool rightSide) {
  switch (vk) {
    case kVkShift:
      return rightSide ? 161 : 160;
    case kVkControl:
      return rightSide ? 163 : 162;
    case kVkMenu:
      return rightSide ? kVkRightAlt : kVkLeftAlt;
    default:
      return vk;
  }
}

}  // namespace

void PreciseRecorder::Start(const RecorderOptions& options, WindowHandle ownWindow) {
  options_ = options;
  ownWindow_ = ownWindow;
  events_.clear();
  keys_ = {};
  recordedDown_ = {};
  mouseKeyHeld_ = false;
  clickKeyHeld_ = false;
  lastMove_.clear();
  reference_ = clock_.TickCount();
}

void PreciseRecorder::OnKey(const HookKey& key, bool record) {
  events_.push_back({Kind::kKey,
                     record,
                     key.vk,
                     key.message,
                     key.altDown,
                     key.rightSide,
                     false,
                     {},
                     0,
                     key.time});
}

void PreciseRecorder::OnButton(const HookButton& button, bool record) {
  events_.push_back({Kind::kButton, record, button.vk, 0, false, false, button.down, button.screen,
                     0, button.time});
}

void PreciseRecorder::OnMouseMove(Point screen, std::uint32_t time, bool record) {
  events_.push_back({Kind::kMove, record, 0, 0, false, false, false, screen, 0, time});
}

void PreciseRecorder::OnWheel(int delta, std::uint32_t time, bool record) {
  events_.push_back({Kind::kWheel, record, 0, 0, false, false, false, {}, delta, time});
}

std::string PreciseRecorder::Drain() {
  const std::vector<Event> events = std::exchange(events_, {});
  std::string out;
  for (const Event& e : events) {
    std::string line;
    switch (e.kind) {
      case Kind::kKey:
        line = KeyLine(e);
        break;
      case Kind::kButton:
        line = ButtonEventLine(e);
        break;
      case Kind::kMove:
        line = MoveEventLine(e);
        break;
      case Kind::kWheel:
        if (e.record && e.delta != 0) line = WheelLine(e.delta);
        break;
    }
    // The release of a key or button whose press was written is written
    // even when its own event is not to be recorded.
    if (!line.empty()) out += Write(line, e.time);
  }
  return out + Releases(false);
}

std::string PreciseRecorder::Stop() {
  std::string out = Drain();
  return out + Releases(true);
}

std::string PreciseRecorder::Releases(bool all) {
  std::string out;
  for (const int vk : keys_.Held()) {
    if (!all && input_.IsKeyDown(vk)) continue;
    keys_.Release(vk);
    if (std::exchange(recordedDown_[static_cast<std::size_t>(vk)], false))
      out += Write(ModifierUpLine(vk), clock_.TickCount());
  }
  for (const int vk : {kVkLeftButton, kVkRightButton, kVkMiddleButton}) {
    bool& owed = recordedDown_[vk];
    if (!owed || (!all && input_.IsKeyDown(vk))) continue;
    owed = false;
    out += Write(ButtonLine(vk, false, options_.mouCl, Place(input_.GetCursorPos())),
                 clock_.TickCount());
  }
  return out;
}

std::string PreciseRecorder::KeyLine(const Event& e) {
  const bool down = e.message == kMsgKeyDown || e.message == kMsgSysKeyDown;
  const bool up = e.message == kMsgKeyUp || e.message == kMsgSysKeyUp;
  for (auto [key, held] : {std::pair{options_.recKeyMouse, &mouseKeyHeld_},
                           std::pair{options_.recKeyClick, &clickKeyHeld_}}) {
    if (key == 0 || e.vk != key) continue;
    // A record key on Alt follows the event's Alt flag, as in sampling.
    if (key == kVkLeftAlt || key == kVkRightAlt)
      *held = e.altDown;
    else if (down || up)
      *held = down;
  }
  const int vk = SidedKey(e.vk, e.rightSide);
  const bool press = keys_.Take(vk, e.message);
  if (vk <= 0 || vk > kVkLast || IsMouseButton(vk)) return {};
  bool& owed = recordedDown_[static_cast<std::size_t>(vk)];
  if (up) {
    // Only the modifiers are written going up; other keys are one press word.
    if (!std::exchange(owed, false)) return {};
    return std::string(ModifierUpLine(vk));
  }
  // A key already down is the system's repeat of a held key.
  if (!press || !e.record) return {};
  if (IsNeverRecorded(vk) || e.vk == options_.recKeyMouse || e.vk == options_.recKeyClick ||
      vk == options_.recKeyMouse || vk == options_.recKeyClick)
    return {};
  if (IsHotkeyPress(options_.hotkeys, keys_.Modifiers(), vk)) return {};
  std::string word = WordFromKeyCode(vk);
  if (IsTrackedModifier(vk) && !word.empty()) owed = true;
  return word;
}

std::string PreciseRecorder::ButtonEventLine(const Event& e) {
  if (!IsMouseButton(e.vk)) return {};
  bool& owed = recordedDown_[static_cast<std::size_t>(e.vk)];
  if (!e.down)
    return std::exchange(owed, false) ? ButtonLine(e.vk, false, options_.mouCl, Place(e.screen))
                                      : std::string();
  if (!e.record || (!options_.mouse && !clickKeyHeld_)) return {};
  // Clicks on the program itself (its buttons, its editor) are not part of
  // the user's work.
  if (e.vk == kVkLeftButton && ownWindow_ != 0 && windows_.Foreground() == ownWindow_) return {};
  owed = true;
  return ButtonLine(e.vk, true, options_.mouCl, Place(e.screen));
}

std::string PreciseRecorder::MoveEventLine(const Event& e) {
  if (!e.record || (!options_.move && !mouseKeyHeld_)) return {};
  std::string line = MoveLine(options_.mouCl, Place(e.screen));
  // The hook reports some events in place; a position is written once.
  if (line == lastMove_) return {};
  lastMove_ = line;
  return line;
}

Point PreciseRecorder::Place(Point screen) {
  return options_.mouCl ? windows_.ScreenToClient(windows_.Foreground(), screen) : screen;
}

std::string PreciseRecorder::Write(std::string_view line, std::uint32_t time) {
  // The millisecond clock wraps around; an event stamped before the last
  // one (a clock that went back) waits nothing.
  const auto elapsed = static_cast<std::int32_t>(time - reference_);
  if (options_.time) reference_ = time;
  return TimedLine(line, options_.time, elapsed > 0 ? elapsed : 0);
}

}  // namespace kx
