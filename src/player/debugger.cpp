#include "player/debugger.h"

namespace kx {

std::string DebugPauseText(int index) {
  return "ブレークポイントで一時停止: " + std::to_string(index + 1) +
         " 行目 (F5 続行 / F10 ステップ実行)";
}

void Debugger::RunToBreakpoint() {
  run_ = Run::kToBreakpoint;
}

void Debugger::Step() {
  run_ = Run::kStep;
}

void Debugger::RunTo(int index) {
  run_ = Run::kToLine;
  target_ = index;
}

void Debugger::Resuming() {
  if (!paused_) return;
  paused_.reset();
  // The macro's keys are for that window, not for the main window where the
  // step was given.
  if (foreground_ != 0 && windows_.IsWindow(foreground_) && windows_.Foreground() != foreground_)
    windows_.SetForeground(foreground_);
}

bool Debugger::MayPauseBefore(int index) const {
  switch (run_) {
    case Run::kStep:
      return true;
    case Run::kToLine:
      return index == target_ || breakpoints_.Has(index);
    case Run::kToBreakpoint:
      return breakpoints_.Has(index);
  }
  return false;
}

bool Debugger::PauseBefore(int index) {
  if (!MayPauseBefore(index)) return false;
  paused_ = index;
  foreground_ = windows_.Foreground();
  // A step or a run to a line is done once the play pauses.
  run_ = Run::kToBreakpoint;
  return true;
}

}  // namespace kx
