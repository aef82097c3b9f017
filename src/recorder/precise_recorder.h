#pragma once
// The hook-driven recorder (PreciseRec): every key and button edge the
// low-level hooks report becomes a line, in the order the events happened,
// each button line at its own event's position, and with `Time` the waits
// are the times between the events themselves. It writes the same lines as
// the sampling recorder and keeps its rules: no auto-repeat, the excluded
// and record keys, no clicks on the program's own window, MouCl, Move.
//
// The hooks' events are kept until Drain: a click activates its window only
// after the hook has seen it, and which window is in front decides both the
// client coordinates and whether the click was on the program itself.
//
// A hook that does not answer in time (a machine under load) misses events.
// The system has passed an event on once the physical key state shows it, so
// a key or button held by the recording's account but up by the system's was
// let go unseen: Drain writes its release then, so that no modifier stays
// held in the macro and the next press is not taken for a repeat.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "input/input_port.h"
#include "recorder/hook_keys.h"
#include "recorder/hook_port.h"
#include "recorder/recorder.h"
#include "sys/clock_port.h"
#include "sys/window_port.h"

namespace kx {

class PreciseRecorder {
 public:
  PreciseRecorder(InputPort& input, WindowPort& windows, ClockPort& clock)
      : input_(input), windows_(windows), clock_(clock) {}

  // Forgets every key and event, and takes the reference time for the first
  // wait now.
  void Start(const RecorderOptions& options, WindowHandle ownWindow);
  void SetOptions(const RecorderOptions& options) { options_ = options; }

  // The hooks' events. An event taken with `record` false (rapid fire's own
  // input while it runs) writes only the release of a press already written;
  // it keeps the key and button states right.
  void OnKey(const HookKey& key, bool record = true);
  void OnButton(const HookButton& button, bool record = true);
  void OnMouseMove(Point screen, std::uint32_t time, bool record = true);
  void OnWheel(int delta, std::uint32_t time, bool record = true);

  // The lines of every event kept so far, in order (CR LF after each).
  std::string Drain();
  // Drain, then the release of every key and button the recording holds
  // down, so that a recording stopped mid-chord replays with nothing stuck.
  std::string Stop();

 private:
  enum class Kind : std::uint8_t { kKey, kButton, kMove, kWheel };
  struct Event {
    Kind kind;
    bool record;
    int vk = 0;
    int message = 0;  // keys: the hook's message
    bool altDown = false;
    bool rightSide = false;
    bool down = false;  // buttons
    Point screen;
    int delta = 0;
    std::uint32_t time = 0;
  };
  std::string KeyLine(const Event& e);
  std::string ButtonEventLine(const Event& e);
  std::string MoveEventLine(const Event& e);
  Point Place(Point screen);
  std::string Write(std::string_view line, std::uint32_t time);
  // The owed releases: of every held key and button, or (`all` false) of
  // those the system already reports up.
  std::string Releases(bool all);

  InputPort& input_;
  WindowPort& windows_;
  ClockPort& clock_;
  RecorderOptions options_;
  WindowHandle ownWindow_ = 0;
  std::vector<Event> events_;
  HookKeyState keys_;
  // Keys and buttons whose down line was written: their up line is owed.
  std::array<bool, 256> recordedDown_{};
  bool mouseKeyHeld_ = false;
  bool clickKeyHeld_ = false;
  std::string lastMove_;
  std::uint32_t reference_ = 0;
};

}  // namespace kx
