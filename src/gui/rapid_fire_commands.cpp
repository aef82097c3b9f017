// Rapid fire as the main window drives it: the three menu items, the two
// timers, the editor as its status display and the window title.
#include "gui/main_controller.h"

namespace kx::gui {

namespace {

struct RapidMenu {
  Command command;
  RapidMode mode;
  std::string_view title;  // added to the window title while the mode is on
};
constexpr RapidMenu kRapidMenus[] = {
    {Command::kKeyRapid, RapidMode::kKeyStartStop, "キー連打(Start/Stop)"},
    {Command::kMouseRapid, RapidMode::kMouseStartStop, "マウス連打(Start/Stop)"},
    {Command::kMousePush, RapidMode::kMousePush, "マウス連打(Push)"},
};

bool WatchedBySampling(RapidMode mode) {
  return mode == RapidMode::kKeyStartStop || mode == RapidMode::kMouseStartStop;
}

}  // namespace

// Refused during a play, as the menu items are disabled then.
void MainController::SelectRapidMode(Command command) {
  if (player_.Playing()) return;
  RapidMode chosen = RapidMode::kOff;
  for (const RapidMenu& menu : kRapidMenus)
    if (menu.command == command) chosen = menu.mode;
  const RapidMode previous = rapid_.Mode();
  const RapidMode next = previous == chosen ? RapidMode::kOff : chosen;
  // The editor shows what repeats while a mode is on; its own text comes
  // back when rapid fire ends.
  if (previous == RapidMode::kOff && next != RapidMode::kOff) textBeforeRapid_ = view_.EditorText();
  rapid_.SetMode(next, settings_.hits);
  for (const RapidMenu& menu : kRapidMenus)
    if (const auto id = MenuIdFor(menu.command)) view_.CheckMenuItem(*id, menu.mode == next);
  if (next == RapidMode::kOff) {
    view_.SetEditorText(textBeforeRapid_);
    textBeforeRapid_.clear();
  } else if (previous == RapidMode::kOff) {
    view_.SetEditorText("");
  }
  view_.SetEditorReadOnly(next != RapidMode::kOff);
  if (WatchedBySampling(next))
    view_.StartTimer(Timer::kRecorder, kSamplingIntervalMs);
  else if (WatchedBySampling(previous) && !recording_)
    view_.StopTimer(Timer::kRecorder);
  UpdateCaption();
}

bool MainController::RapidFireTakesHotkey(int id) {
  if (rapid_.Mode() == RapidMode::kOff) return false;
  if (id == kHotkeyPlay || id == kHotkeyPause) rapid_.Stop();
  return true;
}

std::string MainController::RapidTitleSuffix() const {
  for (const RapidMenu& menu : kRapidMenus)
    if (menu.mode == rapid_.Mode()) return " - " + std::string(menu.title);
  return "";
}

void MainController::OnRapidFireTick() {
  rapid_.OnRepeatTick(settings_.hits);
}

// Returns false when no start/stop mode is on: the tick is the recorder's.
bool MainController::OnRapidSamplingTick() {
  if (!WatchedBySampling(rapid_.Mode())) return rapid_.Mode() != RapidMode::kOff;
  rapid_.OnSampleTick(settings_.hits, {settings_.recKeyMouse, settings_.recKeyClick});
  return true;
}

void MainController::StartRepeatTimer(int intervalMs) {
  view_.StartTimer(Timer::kRapidFire, intervalMs);
}

void MainController::StopRepeatTimer() {
  view_.StopTimer(Timer::kRapidFire);
}

void MainController::ShowRapidStatus(std::string_view text) {
  view_.SetEditorText(text);
}

}  // namespace kx::gui
