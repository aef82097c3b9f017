#pragma once
// Rapid fire: repeating a key or a mouse button at a fixed interval, in one
// of three modes. A state machine fed by two ticks: the sampling tick (the
// recorder's 50 ms timer, which watches the keys that start and stop the
// repeat) and the repeat tick (its own timer, one key press or click each).
// The window owns both timers and the editor that shows what repeats.
#include <cstdint>
#include <string>
#include <string_view>

#include "input/input_queue.h"
#include "sys/clock_port.h"

namespace kx {

enum class RapidMode {
  kOff,
  kKeyStartStop,    // a key pressed is repeated until it is pressed again
  kMouseStartStop,  // Alt+F1/F3/F2 starts or stops clicking; Shift, Ctrl or Alt stop it
  kMousePush,       // clicks while Alt+F1/F2/F3 is held
};

// What the state machine asks of the window.
class RapidFireHost {
 public:
  virtual ~RapidFireHost() = default;
  // Starting a running timer restarts it with the new interval.
  virtual void StartRepeatTimer(int intervalMs) = 0;
  virtual void StopRepeatTimer() = 0;
  // The editor's text, which shows what repeats while a mode is on.
  virtual void ShowRapidStatus(std::string_view text) = 0;
};

// The keys that never start a key repeat, besides those without a recorded
// name: the two record keys of the settings.
struct RapidFireKeys {
  int recKeyMouse = 0;
  int recKeyClick = 0;
};

class RapidFire {
 public:
  // Pauses after a key is chosen and after a stop: the user's press ends
  // before the repeating (or the watching) goes on.
  static constexpr int kChooseDelayMs = 200;
  static constexpr int kStopDelayMs = 500;

  RapidFire(InputPort& input, ClockPort& clock, RapidFireHost& host);

  RapidMode Mode() const { return mode_; }
  // Switches to a mode (kOff ends rapid fire). Whatever repeated stops;
  // push mode starts its timer at once with `hitsMs`.
  void SetMode(RapidMode mode, int hitsMs);
  // The play and pause hotkeys while a mode is on: the repeating stops and
  // the status is emptied; the mode stays on.
  void Stop();

  // The sampling timer's tick; `hitsMs` is the interval a repeat starts with.
  void OnSampleTick(int hitsMs, const RapidFireKeys& keys = {});
  // The repeat timer's tick.
  void OnRepeatTick(int hitsMs);

  bool Repeating() const { return timerOn_; }
  // The repeated key code, or a mouse button's down flag; 0 for none.
  int Code() const { return code_; }
  const std::string& Status() const { return status_; }

 private:
  void SampleKeys(int hitsMs, const RapidFireKeys& keys);
  void SampleMouseToggle(int hitsMs);
  void RepeatKey();
  void RepeatMouse();
  void RepeatPush(int hitsMs);
  void Click();
  void StopWithPause();
  void SetStatus(std::string_view text);
  void StartTimer(int hitsMs);
  void StopTimer();
  // The highest key that went down since the last tick, as the recorder
  // sees it; 0 for none.
  int PressedKey(const RapidFireKeys& keys);

  InputPort& input_;
  ClockPort& clock_;
  RapidFireHost& host_;
  InputQueue queue_;
  RapidMode mode_ = RapidMode::kOff;
  int code_ = 0;
  bool timerOn_ = false;
  int interval_ = 0;
  std::string status_;
  bool inTick_ = false;  // a tick's pumps must not run another tick
  // Left/right Ctrl, Shift and Alt start a repeat on their press only.
  bool modifierDown_[6] = {};
};

}  // namespace kx
