// The options dialog and the scheduled runs it edits.
//
// While a macro plays the dialog does not open (its menu item is not a
// "while playing" one). A play started by a hotkey or the schedule while
// the dialog is open runs as usual; a confirm during it applies at once:
// the hotkeys are registered again (the running play is not stopped) and
// the schedule is reloaded.
#include "gui/file_association.h"
#include "gui/main_controller.h"
#include "gui/player_settings.h"
#include "text/macro_text.h"

namespace kx::gui {

void MainController::OpenOptions() {
  if (player_.Playing()) return;
  FilePort& files = ports_.system.files;
  const std::string app = files.AppFolder();
  // The dialog shows the file as it is now, so that an edit made with a text
  // editor while the program runs is seen and not overwritten on OK. The
  // menu-mirrored keys it does not show stay as the menu has them.
  OptionsDialog dialog(ReadSettings(ports_.settings), ports_.system.registry,
                       JoinPath(files, app, "macro"), JoinPath(files, app, kProgramFileName),
                       [this](const OptionsValues& values) { ConfirmOptions(values); });
  view_.ShowOptionsDialog(dialog);
}

void MainController::ConfirmOptions(const OptionsValues& values) {
  ApplyOptions(values, settings_);
  WriteOptions(ports_.settings, settings_);
  PlayerOptions& options = player_.Options();
  options.endNotifier = settings_.endNotifer;
  options.releaseModifiers = settings_.up;
  ApplyHotkeys();
  view_.StopTimer(Timer::kSchedule);
  LoadSchedule();
  view_.SetEditorFontSize(settings_.fontSize);
  view_.SetEditorMode(EditorModeFromTextMode(settings_.textMode));
}

void MainController::LoadSchedule() {
  schedule_.Load(settings_.autoRuns, LocalSeconds(ports_.system.clock.Now()));
  if (!schedule_.Empty()) view_.StartTimer(Timer::kSchedule, kScheduleTickMs);
}

// Ticks during a play only pass the time: what falls due inside a play is
// lost. A due macro whose file is missing does nothing.
void MainController::OnScheduleTick() {
  // A play the debugger holds paused is running as far as the schedule goes.
  const auto due =
      schedule_.Tick(LocalSeconds(ports_.system.clock.Now()), player_.Playing() || debug_.Paused());
  for (const std::string& path : due) PlayMacroFileAsHotkey(path);
}

}  // namespace kx::gui
