#include "player/player.h"

#include <cmath>
#include <exception>
#include <utility>

#include "input/key_codes.h"
#include "player/line_runner.h"
#include "player/play_speed.h"
#include "util/basic_text.h"
#include "util/scope_exit.h"

namespace kx {

namespace {

constexpr std::string_view kEndMessage = "再生が終了しました";
constexpr int kFlashCount = 10;
// Modifier keys released at the end of a play when asked: Ctrl, Shift, Alt,
// left and right Windows.
constexpr int kReleasedModifiers[] = {kVkControl, kVkShift, kVkMenu, kVkLeftWin, kVkRightWin};

}  // namespace

Player::Player(System system, PlayerView& view)
    : sys_(system), view_(view), input_(system.input), timeline_(system.clock) {}

void Player::PlayOrStop() {
  if (playing_) {
    playing_ = false;
    stoppedByUser_ = true;
    return;
  }
  cyclesLeft_ = -1;
  currentLine_ = 0;
  sLoopPlay0();
}

void Player::HandleHotkey(int id) {
  if (id == kHotkeyPause && rapidFireArmed_ && rapidFireArmed_()) return;
  if (hotkeysLocked_) return;
  if (id == kHotkeyPlay) {
    PlayOrStop();
  } else if (id == kHotkeyPause) {
    if (playing_)
      playing_ = false;
    else
      sLoopPlay();
  }
}

void Player::ReleaseHeld() {
  if (options_.releaseHeld) input_.ReleaseHeld();
}

void Player::sLoopPlay0() {
  blockedReported_ = false;
  resumeAt_ = -1;
  input_.TakeBlocked();
  variables_.Clear();
  browserTab_.clear();
  found_.reset();
  loops_.clear();
  switchDepth_ = 0;
  switchState_ = 0;
  sLoopPlay();
}

void Player::sLoopPlay() {
  view_.SetPlaying(true);
  // However the cycles end, even by an exception from the system, no flag
  // stays set and the window gets its controls back.
  passFailed_ = false;
  const scope_exit reset([this] {
    // An exception from the system leaves nothing held either.
    if (std::uncaught_exceptions() > 0) ReleaseHeld();
    playing_ = false;
    stoppedByUser_ = false;
    hotkeysLocked_ = false;
    view_.SetPlaying(false);
  });
  sys_.clock.PumpMessages();
  sys_.clock.Sleep(100);
  playing_ = true;
  timeline_.Restart();

  if (cyclesLeft_ < 1) {
    const std::string text = view_.Text();
    const std::string first = basic::LCase(text.substr(0, text.find("\r\n")));
    if (first.starts_with("loop")) {
      if (auto n = basic::ToLong(basic::Mid(first, 5))) cyclesLeft_ = *n;
    } else {
      cyclesLeft_ = view_.LoopCount();
    }
  }

  while (cyclesLeft_ >= 1) {
    sys_.notify.SetCaption("残り" + std::to_string(cyclesLeft_) + "回");
    sPlayAll(view_.Text());
    if (!playing_) break;
    --cyclesLeft_;
  }

  sys_.notify.SetCaption(view_.IdleCaption());
  lastEnd_ = playing_ ? PlayEnd::kCompleted : stoppedByUser_ ? PlayEnd::kStopped : PlayEnd::kPaused;
  if (playing_ || stoppedByUser_) NotifyEnd();
  if (options_.trace) view_.ClearHighlight();
  if (stoppedByUser_) currentLine_ = 0;
  if (currentLine_ > 0) view_.SelectLine(currentLine_);
  playing_ = false;
  stoppedByUser_ = false;
  hotkeysLocked_ = false;
  if (options_.releaseModifiers) {
    for (int vk : kReleasedModifiers) input_.QueueKey(vk, true);
    input_.FlushKeys();
  }
  // A play that ran to its end leaves held what the macro holds, as the
  // macro says; one cut short lets go of everything.
  if (lastEnd_ != PlayEnd::kCompleted || passFailed_) ReleaseHeld();
}

void Player::NotifyEnd() {
  switch (options_.endNotifier) {
    case 1:
      sys_.notify.Beep();
      break;
    case 2:
      sys_.dialogs.MessageBox(view_.MainWindow(), kEndMessage, options_.appTitle);
      break;
    case 3:
      sys_.notify.FlashWindow(kFlashCount);
      break;
    default:
      break;
  }
}

void Player::StopPaused() {
  if (playing_) return;
  // What was held was let go when the play paused; only the end remains.
  lastEnd_ = PlayEnd::kStopped;
  NotifyEnd();
  currentLine_ = 0;
  cyclesLeft_ = -1;
  resumeAt_ = -1;
}

bool Player::GatePauses(LineRunner& runner, const std::string& line) {
  // A play resumed before the line it paused at runs that line first.
  if (std::exchange(resumeAt_, -1) == currentLine_) return false;
  if (!gate_->MayPauseBefore(currentLine_) || !runner.Runs(line)) return false;
  if (!gate_->PauseBefore(currentLine_)) return false;
  resumeAt_ = currentLine_;
  return true;
}

void Player::ReportBlockedInput() {
  // The play goes on: the next events may get through once the blocking
  // window has gone.
  if (blockedReported_) return;
  blockedReported_ = true;
  sys_.notify.SetStatusText(kInputBlockedMessage);
  if (options_.balloon) sys_.notify.Balloon(options_.appTitle, kInputBlockedMessage);
  view_.OnInputBlocked(currentLine_ + 1);
}

void Player::sPlayAll(const std::string& text) {
  const int linePause = static_cast<int>(basic::RoundHalfEven(options_.speedFactor * kLinePauseMs));
  const std::vector<std::string> lines = basic::Split(text, "\r\n");
  const auto count = static_cast<std::int64_t>(lines.size());
  cursorAtStart_ = sys_.input.GetCursorPos();
  LineRunner runner(*this, lines);
  try {
    for (;;) {
      if (currentLine_ >= count) break;
      if (currentLine_ < 0) throw ScriptFailure{};
      view_.OnLine(currentLine_);
      if (options_.trace) view_.HighlightLine(currentLine_);
      const std::string& line = lines[static_cast<size_t>(currentLine_)];
      if (!playing_) return;
      if (gate_ && nesting_ == 0 && GatePauses(runner, line)) {
        playing_ = false;
        return;
      }
      const std::string key = runner.Run(line);
      if (input_.TakeBlocked()) ReportBlockedInput();
      if (currentLine_ < count - 1) {
        // A jump may have moved the index; the next line is read from there.
        if (currentLine_ + 1 < 0) throw ScriptFailure{};
        const std::string next = KeyOf(lines[static_cast<size_t>(currentLine_ + 1)]);
        if (!IsWaitKey(key) && !IsWaitKey(next)) timeline_.Pause(linePause);
      }
      if (currentLine_ == INT32_MAX) throw ScriptFailure{};
      ++currentLine_;
    }
    if (currentLine_ > count) throw ScriptFailure{};
    currentLine_ = 0;
  } catch (const ScriptFailure&) {
    passFailed_ = true;
    view_.OnLineFailed(currentLine_ + 1);
  }
}

}  // namespace kx
