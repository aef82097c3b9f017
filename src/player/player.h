#pragma once
// The player: runs the editor's macro for a number of cycles, one pass over
// the lines per cycle, and reacts to stop and pause hotkeys that arrive while
// its waits pump the message queue.
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "eval/variable_table.h"
#include "input/input_queue.h"
#include "player/current_value.h"
#include "player/line_gate.h"
#include "player/player_view.h"
#include "player/timeline.h"
#include "sys/system.h"

namespace kx {

class LineRunner;

// Hotkey identifiers the player answers to.
inline constexpr int kHotkeyPlay = 258;
inline constexpr int kHotkeyPause = 259;

// Preferences the player reads; the main window fills them from the settings.
struct PlayerOptions {
  int endNotifier = 0;            // EndNotifer: 0 none, 1 beep, 2 dialog, 3 flash
  bool releaseModifiers = false;  // Up
  // ReleaseHeld: a play that does not run to its end (stopped, paused,
  // failed, aborted) lets go of every key and button it left down.
  bool releaseHeld = true;
  double speedFactor = 1.0;   // 1, 0.5, 0.25, 2, 4 or 8
  bool trace = false;         // highlight the running line
  bool balloon = false;       // show comment lines as balloons
  bool unicodeKeys = false;   // UnicodeKeys: type untypeable characters as Unicode
  int devToolsPort = 9222;    // DevToolsPort: where page commands reach a Chromium browser
  std::string browser;        // Browser: the automation browser; empty: Edge, else Chrome
  int browserWaitMs = 30000;  // BrowserWaitMs: how long a browser line waits for its page
  std::string appTitle = "Kestrelix";
};

// How the last play ended.
enum class PlayEnd { kCompleted, kStopped, kPaused };

// An open partial loop: the repetitions still to come after the running one,
// and the index of its "<r …>" line.
struct LoopFrame {
  std::int32_t remaining;
  std::int32_t openLine;
};

class Player {
 public:
  Player(System system, PlayerView& view);

  PlayerOptions& Options() { return options_; }

  // The play button and the play hotkey: stops a running play, otherwise
  // starts the editor's macro from its first line.
  void PlayOrStop();
  // A hotkey event: the play hotkey (258) or the pause/resume hotkey (259).
  // Ignored while the script has locked the hotkeys.
  void HandleHotkey(int id);
  // Ends the running play as a stop request does, without counting as the
  // user's stop (no end notification); used by hosts that bound a run.
  void Abort() { playing_ = false; }
  // Lets go of every key and mouse button the macro holds down (with
  // ReleaseHeld on); for the end of the program, however it ends.
  void ReleaseHeld();
  // The debugger's hook before each line of the editor's text (not of files
  // run by "mf"); none by default. The gate must outlive its plays.
  void SetLineGate(LineGate* gate) { gate_ = gate; }
  // A paused play is given up as the user's stop ends a running one: the end
  // notification, and the next play starts from the top. Nothing while a
  // play runs.
  void StopPaused();
  // While it returns true, the pause/resume hotkey belongs to rapid fire.
  void SetRapidFireArmed(std::function<bool()> armed) { rapidFireArmed_ = std::move(armed); }

  // The three entry points, named as the main window calls them.
  void sLoopPlay0();
  void sLoopPlay();
  void sPlayAll(const std::string& text);

  // The status-bar text (and, with Balloon, the balloon) when the system
  // refuses synthesized input.
  static constexpr std::string_view kInputBlockedMessage =
      "入力がシステムに拒否されました。管理者として動くウィンドウやセキュリティ画面が前面にある可能"
      "性があります";

  bool Playing() const { return playing_; }
  bool StoppedByUser() const { return stoppedByUser_; }
  bool HotkeysLocked() const { return hotkeysLocked_; }
  std::int32_t CyclesLeft() const { return cyclesLeft_; }
  std::int32_t CurrentLine() const { return currentLine_; }
  PlayEnd LastEnd() const { return lastEnd_; }
  const VariableTable& Variables() const { return variables_; }
  const CurrentValue& Value() const { return currentValue_; }
  const std::vector<LoopFrame>& OpenLoops() const { return loops_; }
  // The centre of the last pixel or image a screen wait found in this play.
  const std::optional<Point>& Found() const { return found_; }

 private:
  friend class LineRunner;
  void ReportBlockedInput();
  void NotifyEnd();
  // Asks the gate about the line at CurrentLine; true when the play pauses.
  bool GatePauses(LineRunner& runner, const std::string& line);

  System sys_;  // the ports, held by reference inside
  PlayerView& view_;
  PlayerOptions options_;
  InputQueue input_;
  Timeline timeline_;
  std::function<bool()> rapidFireArmed_;
  LineGate* gate_ = nullptr;

  bool playing_ = false;
  bool stoppedByUser_ = false;
  bool hotkeysLocked_ = false;
  std::int32_t cyclesLeft_ = -1;
  std::int32_t currentLine_ = 0;
  PlayEnd lastEnd_ = PlayEnd::kCompleted;
  Point cursorAtStart_;
  VariableTable variables_;
  CurrentValue currentValue_;
  // The tab the last browser line of this play opened; page commands with a
  // "chrome" path act on it. Empty: the browser's most recently active tab.
  std::string browserTab_;
  std::optional<Point> found_;
  std::vector<LoopFrame> loops_;
  std::int32_t switchDepth_ = 0;
  std::int32_t switchState_ = 0;
  int nesting_ = 0;               // depth of passes started by "mf"
  bool blockedReported_ = false;  // blocked input is told once per play
  bool passFailed_ = false;       // a pass of this play ended by a failure
  std::int32_t resumeAt_ = -1;    // the line the gate paused before, run on resuming
};

}  // namespace kx
