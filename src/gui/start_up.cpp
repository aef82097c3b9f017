// Start-up and shutdown of the main window, in the order setting.ini and the
// system's resources expect.
#include <algorithm>

#include "gui/autosave.h"
#include "gui/command_line.h"
#include "gui/main_controller.h"
#include "gui/options_model.h"
#include "gui/player_settings.h"
#include "input/key_codes.h"
#include "player/play_speed.h"
#include "settings/settings_lists.h"
#include "text/macro_text.h"

namespace kx::gui {

namespace {

constexpr int kBundleShown = 1;
constexpr std::string_view kNoPerformanceCounterMessage =
    "ハードウェアが高分解能パフォーマンスカウンタをサポートしていません";

WindowState StoredState(int winState) {
  // A window minimised at the last exit comes back normal.
  return winState == static_cast<int>(WindowState::kMaximized) ? WindowState::kMaximized
                                                               : WindowState::kNormal;
}

}  // namespace

StartResult MainController::StartUp() {
  settings_ = ReadSettings(ports_.settings);
  player_.Options() = PlayerOptionsFromSettings(settings_);
  // The speed comes from `rate` at the end of the start-up, after the
  // command-line run: a macro run from the command line plays at normal
  // speed.
  player_.Options().speedFactor = kPlaySpeeds[0].factor;

  // The Play hotkey comes first, so that it can stop a command-line macro.
  if (const HotkeyChord play = PlayHotkeyFromSettings(settings_); play.Registered()) {
    if (ports_.hotkeys.Register(kHotkeyPlay, play.modifiers, play.key))
      registeredHotkeys_.push_back(kHotkeyPlay);
    else
      refusedHotkeys_.push_back(kHotkeyPlay);
  }
  if (ports_.system.clock.HasPerformanceCounter()) {
    if (const auto id = MenuIdFor(Command::kToggleOption, "Time"))
      view_.CheckMenuItem(*id, settings_.time);
  } else {
    if (const auto id = MenuIdFor(Command::kToggleOption, "Time")) view_.EnableMenuItem(*id, false);
    // The user learns why 時間記録 cannot be chosen.
    ShowStatus(kNoPerformanceCounterMessage);
  }

  const auto tokens = SplitCommandLine(ports_.system.environment.CommandLine());
  if (RunCommandLineMacro(tokens)) return StartResult::kRanMacro;

  ApplyPlacement();
  if (ports_.instance.OtherInstanceRunning()) {
    view_.SetCaption("$");
    ports_.instance.RaiseOtherInstance();
    UnregisterHotkeys();
    return StartResult::kSecondInstance;
  }

  macroFolder_ = JoinPath(ports_.system.files, ports_.system.files.AppFolder(), "Macro");
  view_.SetEditorFontSize(settings_.fontSize);
  editorMode_ = EditorModeFromTextMode(settings_.textMode);
  view_.SetEditorMode(editorMode_);
  ApplyHotkeys();
  ApplyChecks();
  view_.SetTrayIcon(settings_.tray);
  view_.SetLoopCount(LoopCountFromSettings(settings_));
  if (settings_.top) view_.SetTopMost(true);
  if (!settings_.defMacro.empty() && ports_.system.files.IsFile(settings_.defMacro))
    view_.SetEditorText(sReadText(ports_.system.files, settings_.defMacro));
  RefreshTree();
  view_.SetSplitTwips(std::max(settings_.split, kDefaultSplitTwips));
  UpdateCaption();
  schedule_.SetStartTime(LocalSeconds(ports_.system.clock.Now()));
  LoadSchedule();

  const StartSwitches switches = ParseSwitches(tokens);
  if (switches.record) {
    autosaveRecording_ = true;
    Record();
  }
  SelectSpeed(settings_.rate);

  for (const std::string_view key : kObsoleteSettingKeys)
    ports_.settings.Delete(kSettingsSection, key);
  if (settings_.bundle2 == 0) {
    settings_.bundle2 = kBundleShown;
    WriteSetting(ports_.settings, settings_, "Bundle2");
  }

  if (switches.hidden) {
    view_.Show(ShowMode::kHidden);
  } else {
    view_.Show(switches.minimized ? ShowMode::kMinimized : ShowMode::kNormal);
    shownOnce_ = true;
  }
  view_.StartTimer(Timer::kWindow, kWindowTimerMs);
  return StartResult::kRunning;
}

// The first token naming an existing file is played once; the program then
// ends without touching the settings.
bool MainController::RunCommandLineMacro(const std::vector<std::string>& tokens) {
  const auto checkOption = [&](std::string_view name, bool on) {
    if (const auto id = MenuIdFor(Command::kToggleOption, name)) view_.CheckMenuItem(*id, on);
  };
  checkOption("Balloon", settings_.balloon);
  checkOption("Tray", settings_.tray);
  if (settings_.tray) view_.SetTrayIcon(true);
  const auto path = FirstExistingFile(tokens, ports_.system.files);
  if (path) {
    view_.SetEditorText(sReadText(ports_.system.files, *path));
    currentPath_ = *path;
    // The loop-count box still has its initial value: LoopCnt comes later.
    player_.PlayOrStop();
  }
  if (settings_.tray) view_.SetTrayIcon(false);
  if (path) UnregisterHotkeys();
  return path.has_value();
}

void MainController::ApplyPlacement() {
  const PlacementTwips placement{settings_.x, settings_.y, settings_.w, settings_.h};
  view_.SetPlacement(placement, StoredState(settings_.winState));
}

void MainController::ApplyChecks() {
  for (const MenuEntry& entry : MenuEntries()) {
    if (entry.command != Command::kToggleOption || entry.argument == "Time") continue;
    if (const bool* field = OptionField(entry.argument))
      if (const auto id = MenuIdFor(Command::kToggleOption, entry.argument))
        view_.CheckMenuItem(*id, *field);
  }
}

void MainController::Shutdown() {
  view_.Show(ShowMode::kHidden);
  view_.StopTimer(Timer::kSchedule);
  view_.StopTimer(Timer::kWindow);
  rapid_.SetMode(RapidMode::kOff, settings_.hits);
  CloseCapture();
  // No key the program pressed stays down after it ends.
  const KeyRecord release[] = {{kVkShift, true}, {kVkControl, true}, {kVkMenu, true}};
  ports_.system.input.SendKeys(release);
  player_.ReleaseHeld();
  // Removes the hooks and stops the recorder's timers; the text stays.
  StopRecording();
  if (autosaveRecording_)
    AutosaveRecording(ports_.system.files, settings_.linkage, view_.EditorText());
  view_.SetTrayIcon(false);
  UnregisterHotkeys();

  if (view_.Watch().IsOpen()) OnWatchClosed();
  settings_.split = view_.SplitTwips();
  if (settings_.loop) settings_.loopCnt = view_.LoopCount();
  // A window never shown ("/h") keeps the state it was stored with.
  const WindowState state = shownOnce_ ? view_.State() : StoredState(settings_.winState);
  settings_.winState = static_cast<int>(state);
  if (state == WindowState::kNormal) {
    const PlacementTwips p = view_.Placement();
    settings_.x = p.x;
    settings_.y = p.y;
    settings_.w = p.width;
    settings_.h = p.height;
  }
  WriteShutdownSettings(ports_.settings, settings_);
}

}  // namespace kx::gui
