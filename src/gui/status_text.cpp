// The status bar has one panel. The window timer shows the pointer position
// in it four times a second; a menu's help stays while the menu is open, and
// a message of the program (a lint count, refused hotkeys, waits removed)
// stays a few seconds, long enough to be read, before the pointer position
// takes the panel back.
#include "gui/main_controller.h"

namespace kx::gui {

namespace {

constexpr std::uint32_t kMessageHoldMs = 5000;

}  // namespace

void MainController::ShowStatus(std::string_view text) {
  view_.SetStatus(text);
  pointerShown_.clear();
  statusShownAt_ = ports_.system.clock.TickCount();
  statusHeld_ = true;
}

bool MainController::StatusHeld() {
  // A play the debugger paused keeps its line in the panel.
  if (menuOpen_ || debug_.Paused()) return true;
  if (statusHeld_ && ports_.system.clock.TickCount() - statusShownAt_ >= kMessageHoldMs)
    statusHeld_ = false;
  return statusHeld_;
}

// Always on, recording or not. While recording, it also notes the active
// window for `RecAct`.
void MainController::WindowTick() {
  if (!StatusHeld()) {
    const std::string pointer = PointerText(ports_.system.input.GetCursorPos());
    // Only a change is drawn: the status bar repaints on every new text.
    if (pointer != pointerShown_) view_.SetStatus(pointer);
    pointerShown_ = pointer;
  }
  if (recording_) AppendRecorded(recorder_.WindowTick());
  // Four times a second while playing, however fast the macro runs.
  if (player_.Playing()) debug_.RefreshWatch();
}

void MainController::OnMenuSelect(int id, bool submenu) {
  if (submenu) return;
  menuOpen_ = true;
  const std::string_view help = MenuHelp(id);
  if (!help.empty()) view_.SetStatus(help);
  pointerShown_.clear();
}

// The panel is reset when the menu closes, and stays empty a moment.
void MainController::OnMenuClosed() {
  menuOpen_ = false;
  ShowStatus(debug_.StatusText());
}

}  // namespace kx::gui
