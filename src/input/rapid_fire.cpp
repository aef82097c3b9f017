#include "input/rapid_fire.h"

#include <algorithm>
#include <array>
#include <utility>

#include "input/key_codes.h"
#include "input/key_names.h"
#include "util/scope_exit.h"

namespace kx {

namespace {

// Key codes below this are the mouse buttons and Cancel: never repeated.
constexpr int kFirstRepeatedKey = 5;

// Generic Shift, Ctrl and Alt (their left and right keys are watched
// instead) and the input-method keys.
constexpr std::array<int, 8> kExcludedKeys = {16, 17, 18, 240, 242, 245, 246, 251};
// The left and right modifiers, in the order of modifierDown_.
constexpr std::array<int, 6> kSidedModifiers = {162, 163, 160, 161, 164, 165};

struct ButtonChoice {
  int fKey;
  std::uint32_t downFlag;
};
// The start/stop mode tests F1, F3, F2; the push mode F1, F2, F3.
constexpr std::array<ButtonChoice, 3> kStartStopButtons = {
    {{kVkF1, kMouseLeftDown}, {kVkF3, kMouseRightDown}, {kVkF2, kMouseMiddleDown}}};
constexpr std::array<ButtonChoice, 3> kPushButtons = {
    {{kVkF1, kMouseLeftDown}, {kVkF2, kMouseMiddleDown}, {kVkF3, kMouseRightDown}}};

std::string_view ButtonName(int downFlag) {
  switch (downFlag) {
    case kMouseLeftDown:
      return "左クリック";
    case kMouseRightDown:
      return "右クリック";
    case kMouseMiddleDown:
      return "中クリック";
    default:
      return "";
  }
}

}  // namespace

RapidFire::RapidFire(InputPort& input, ClockPort& clock, RapidFireHost& host)
    : input_(input), clock_(clock), host_(host), queue_(input) {}

void RapidFire::SetMode(RapidMode mode, int hitsMs) {
  Stop();
  mode_ = mode;
  std::fill(std::begin(modifierDown_), std::end(modifierDown_), false);
  if (mode_ == RapidMode::kMousePush) StartTimer(hitsMs);
}

void RapidFire::Stop() {
  StopTimer();
  code_ = 0;
  SetStatus("");
}

void RapidFire::OnSampleTick(int hitsMs, const RapidFireKeys& keys) {
  if (inTick_) return;
  inTick_ = true;
  const scope_exit done([this] { inTick_ = false; });
  if (mode_ == RapidMode::kKeyStartStop) SampleKeys(hitsMs, keys);
  if (mode_ == RapidMode::kMouseStartStop) SampleMouseToggle(hitsMs);
}

void RapidFire::OnRepeatTick(int hitsMs) {
  // A tick already queued when the timer stopped is dropped.
  if (inTick_ || !timerOn_) return;
  inTick_ = true;
  const scope_exit done([this] { inTick_ = false; });
  switch (mode_) {
    case RapidMode::kKeyStartStop:
      RepeatKey();
      break;
    case RapidMode::kMouseStartStop:
      RepeatMouse();
      break;
    case RapidMode::kMousePush:
      RepeatPush(hitsMs);
      break;
    case RapidMode::kOff:
      StopTimer();
      break;
  }
}

int RapidFire::PressedKey(const RapidFireKeys& keys) {
  int pressed = 0;
  for (int vk = kFirstRepeatedKey; vk <= kVkLast; ++vk) {
    if (std::find(kExcludedKeys.begin(), kExcludedKeys.end(), vk) != kExcludedKeys.end()) continue;
    if (vk == keys.recKeyMouse || vk == keys.recKeyClick) continue;
    const auto sided = std::find(kSidedModifiers.begin(), kSidedModifiers.end(), vk);
    const bool down = input_.IsKeyDown(vk);
    if (sided != kSidedModifiers.end()) {
      bool& wasDown = modifierDown_[sided - kSidedModifiers.begin()];
      const bool edge = down && !wasDown;
      wasDown = down;
      if (!edge) continue;
    } else if (!down) {
      continue;
    }
    if (!WordFromKeyCode(vk).empty()) pressed = vk;
  }
  return pressed;
}

void RapidFire::SampleKeys(int hitsMs, const RapidFireKeys& keys) {
  const int vk = PressedKey(keys);
  // The repeated key seen down is the user's press to stop: the repeat tick
  // may miss it, since the key-up of a repeat overwrites the key's state and
  // a press shorter than the interval falls between two repeats.
  if (timerOn_ && vk == code_ && vk != 0) pressedAgain_ = true;
  if (vk < kFirstRepeatedKey || vk == code_) return;
  clock_.Sleep(kChooseDelayMs);
  code_ = vk;
  SetStatus(WordFromKeyCode(vk));
  if (!timerOn_) StartTimer(hitsMs);
}

void RapidFire::SampleMouseToggle(int hitsMs) {
  if (!input_.IsKeyDown(kVkMenu)) return;
  for (const ButtonChoice& choice : kStartStopButtons)
    if (input_.IsKeyDown(choice.fKey)) {
      code_ = static_cast<int>(choice.downFlag);
      break;
    }
  SetStatus(ButtonName(code_));
  if (timerOn_)
    StopTimer();
  else
    StartTimer(hitsMs);
  // One press of the combination toggles once.
  clock_.PumpMessages();
  clock_.Sleep(kStopDelayMs);
  if (!timerOn_) SetStatus("");
}

void RapidFire::RepeatKey() {
  // The user pressed the repeated key again.
  if (std::exchange(pressedAgain_, false) || input_.IsKeyDown(code_)) {
    StopWithPause();
    return;
  }
  queue_.PressChord(code_);
}

void RapidFire::RepeatMouse() {
  if (input_.IsKeyDown(kVkShift) || input_.IsKeyDown(kVkControl) || input_.IsKeyDown(kVkMenu)) {
    StopWithPause();
    return;
  }
  Click();
}

void RapidFire::RepeatPush(int hitsMs) {
  if (hitsMs != interval_) StartTimer(hitsMs);
  code_ = 0;
  if (input_.IsKeyDown(kVkMenu))
    for (const ButtonChoice& choice : kPushButtons)
      if (input_.IsKeyDown(choice.fKey)) {
        code_ = static_cast<int>(choice.downFlag);
        break;
      }
  if (code_ == 0) {
    SetStatus("");
    return;
  }
  if (status_.empty()) SetStatus(ButtonName(code_));
  Click();
}

// One click: the down flag and the up flag (twice the down flag) in one batch.
void RapidFire::Click() {
  if (code_ == 0) return;
  const auto down = static_cast<std::uint32_t>(code_);
  queue_.QueueMouse(0, 0, down);
  queue_.QueueMouse(0, 0, down * 2);
  queue_.FlushMouse();
}

void RapidFire::StopWithPause() {
  StopTimer();
  clock_.PumpMessages();
  clock_.Sleep(kStopDelayMs);
  SetStatus("");
  code_ = 0;
}

void RapidFire::SetStatus(std::string_view text) {
  if (status_ == text) return;
  status_ = std::string(text);
  host_.ShowRapidStatus(status_);
}

void RapidFire::StartTimer(int hitsMs) {
  interval_ = hitsMs;
  timerOn_ = true;
  host_.StartRepeatTimer(hitsMs);
}

void RapidFire::StopTimer() {
  pressedAgain_ = false;
  if (!timerOn_) return;
  timerOn_ = false;
  host_.StopRepeatTimer();
}

}  // namespace kx
