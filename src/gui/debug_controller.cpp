#include "gui/debug_controller.h"

namespace kx::gui {

DebugController::DebugController(Player& player, MainView& view, WindowPort& windows)
    : player_(player), view_(view), debugger_(windows) {
  player_.SetLineGate(&debugger_);
}

void DebugController::ToggleBreakpointAt(int index) {
  debugger_.breakpoints().Toggle(index, view_.EditorText());
  ShowBreakpoints();
}

void DebugController::ClearBreakpoints() {
  debugger_.breakpoints().Clear();
  ShowBreakpoints();
}

DebugController::Go DebugController::Next() const {
  if (player_.Playing()) return Go::kNothing;
  return Paused() ? Go::kResume : Go::kStart;
}

DebugController::Go DebugController::Step() {
  debugger_.Step();
  return Next();
}

DebugController::Go DebugController::Continue() {
  debugger_.RunToBreakpoint();
  return Next();
}

DebugController::Go DebugController::RunToCursor() {
  debugger_.RunTo(view_.CaretLine());
  return Next();
}

bool DebugController::StopIfPaused() {
  if (!Paused() || player_.Playing()) return false;
  debugger_.Forget();
  debugger_.RunToBreakpoint();
  view_.HighlightLine(-1);
  view_.SetEditorReadOnly(false);
  view_.SetStatus("");
  player_.StopPaused();
  RefreshWatch();
  return true;
}

std::string DebugController::StatusText() const {
  const auto paused = debugger_.PausedAt();
  return paused ? DebugPauseText(*paused) : std::string();
}

void DebugController::TextEdited() {
  if (detached_ > 0 || debugger_.breakpoints().Empty()) return;
  const std::set<int> before = debugger_.breakpoints().Lines();
  debugger_.breakpoints().TextChanged(view_.EditorText());
  if (debugger_.breakpoints().Lines() != before) ShowBreakpoints();
}

void DebugController::TextReplaced() {
  if (detached_ > 0) return;
  if (Paused()) {
    debugger_.Forget();
    view_.SetEditorReadOnly(false);
    view_.SetStatus("");
  }
  debugger_.RunToBreakpoint();
  ClearBreakpoints();
}

void DebugController::PlayingChanged(bool playing) {
  if (detached_ > 0) return;
  if (playing) {
    if (Paused()) view_.SetStatus("");
    debugger_.Resuming();
    return;
  }
  if (const auto paused = debugger_.PausedAt()) {
    // Shown whether or not the running line is traced.
    view_.HighlightLine(*paused);
    view_.SetEditorReadOnly(true);
    view_.SetStatus(DebugPauseText(*paused));
  }
  RefreshWatch();
}

void DebugController::OpenWatch(const PlacementTwips& placement) {
  view_.Watch().Open(placement);
  view_.Watch().SetRows(WatchRows(player_));
}

void DebugController::RefreshWatch() {
  if (view_.Watch().IsOpen()) view_.Watch().SetRows(WatchRows(player_));
}

DebugController::Detached::Detached(DebugController& owner) : owner_(owner) {
  if (owner_.detached_++ == 0) owner_.player_.SetLineGate(nullptr);
}

DebugController::Detached::~Detached() {
  if (--owner_.detached_ == 0) owner_.player_.SetLineGate(&owner_.debugger_);
}

}  // namespace kx::gui
