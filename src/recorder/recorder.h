#pragma once
// The recorder: turns sampled key and button states, pointer moves and wheel
// turns into macro lines. Every call returns the text to append at the end of
// the editor (lines ending in CR LF), empty when there is nothing to write.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "input/input_port.h"
#include "recorder/hook_keys.h"
#include "recorder/hook_port.h"
#include "sys/clock_port.h"
#include "sys/window_port.h"

namespace kx {

struct Settings;

struct RecorderOptions {
  bool mouse = true;    // mouse buttons
  bool mouCl = false;   // positions in the foreground window's client area
  bool move = true;     // pointer moves
  bool recAct = false;  // "W class,title" when the active window changes
  bool time = false;    // waits between lines
  bool stamp = false;   // a date-time comment before each "W" line
  int recKeyMouse = 0;  // held: pointer moves are recorded even without `move`
  int recKeyClick = 0;  // held: mouse buttons are recorded even without `mouse`
  // The program's hotkeys: their presses belong to the program, not to the
  // recording (the hook sees them before the system takes them).
  std::vector<HotkeyCombo> hotkeys;
};

// `time` only counts where the machine has the performance counter.
RecorderOptions RecorderOptionsFromSettings(const Settings& settings, bool hasPerformanceCounter);

// The pointer position as the status bar shows it: "640x480".
std::string PointerText(Point screen);

class Recorder {
 public:
  Recorder(InputPort& input, WindowPort& windows, ClockPort& clock)
      : input_(input), windows_(windows), clock_(clock) {}

  // Forgets every key and the last line, and takes the reference time for
  // waits now. `ownWindow`: left clicks on it and its activation are never
  // recorded.
  void Start(const RecorderOptions& options, WindowHandle ownWindow);
  void SetOptions(const RecorderOptions& options) { options_ = options; }
  // The end of a recording: the "Up" lines of every key and button recorded
  // as down and not yet as up, in the tracked order, so that the recording
  // never replays as a stuck key.
  std::string Stop();

  // One tick of the sampling timer: at most one press (the highest key code
  // down) or else one release, in the tracked order.
  std::string Tick();
  // One tick of the window timer: the "W" line of a newly active window.
  std::string WindowTick();

  // Hook events.
  std::string OnMouseMove(Point screen);
  std::string OnWheel(int delta);
  void OnKey(int vk, int message, bool altDown);

  // The keyboard hook's presses that no tick wrote, for the user to learn
  // what sampling loses: a press counts when it could have given a line (a
  // named key, not excluded, no hotkey), and the presses a tick wrote of a
  // key are taken off that key's count. `count` false: the event only keeps
  // the held keys right.
  void CountHookKey(int vk, int message, bool count = true);
  int UnrecordedPresses() const;

 private:
  struct Tracked {
    int vk;
    bool downNow = false;
    bool recordedDown = false;
  };
  bool Excluded(int vk) const;
  Point Position(bool pumpFirst);
  std::string SampledButtonLine(int vk, bool down);
  std::string ReleaseLine();
  std::string Write(std::string_view line);

  InputPort& input_;
  WindowPort& windows_;
  ClockPort& clock_;
  RecorderOptions options_;
  WindowHandle ownWindow_ = 0;
  std::array<Tracked, 9> tracked_{};
  // The keys are asked about only when input came since the last look or
  // something was down then: otherwise nothing can be down now.
  bool looked_ = false;
  bool anyDown_ = false;
  std::uint32_t lastInput_ = 0;
  std::string previousLine_;
  bool written_ = false;
  std::int64_t reference_ = 0;
  WindowHandle lastWindow_ = 0;
  std::string lastMove_;
  bool mouseKeyHeld_ = false;
  bool clickKeyHeld_ = false;
  HookKeyState hookKeys_;
  std::array<int, 256> hookPresses_{};
  std::array<int, 256> writtenPresses_{};
};

}  // namespace kx
