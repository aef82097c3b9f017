#include "gui/main_controller.h"

#include <algorithm>

#include "page/page_fields.h"
#include "page/window_document.h"
#include "player/play_speed.h"

namespace kx::gui {

namespace {

// The buttons a play leaves enabled: 再生 stops it.
constexpr bool EnabledWhilePlaying(Button button) {
  return button == Button::kPlay;
}

}  // namespace

int ClampSplit(int twips, int innerWidthTwips) {
  return std::max(kDefaultSplitTwips, std::min(twips, innerWidthTwips - kDefaultSplitTwips));
}

MainController::MainController(GuiPorts ports, MainView& view)
    : ports_(ports),
      view_(view),
      player_(ports.system, *this),
      debug_(player_, view, ports.system.windows),
      rapid_(ports.system.input, ports.system.clock, *this),
      capture_({ports.system.input, ports.system.windows, ports.system.dialogs,
                view.CaptureToolView(),
                [this](std::string_view text) { view_.InsertAtCaret(text); }, &ports.system.screen,
                &ports.system.files}),
      recorder_(ports.system.input, ports.system.windows, ports.system.clock),
      precise_(ports.system.input, ports.system.windows, ports.system.clock) {
  // Kind 7 of the capture tool reads the fields of the page under the pointer.
  capture_.SetPageFieldsReader([this](WindowHandle window) -> std::optional<std::string> {
    const auto document = DocumentOfWindow(ports_.system.windows, ports_.system.documents, window,
                                           settings_.devToolsPort);
    return document ? CapturePageFields(*document) : std::nullopt;
  });
  // A "<pause>" line reaches rapid fire first, as the pause hotkey does.
  player_.SetRapidFireArmed([this] { return RapidFireTakesHotkey(kHotkeyPause); });
}

// --- PlayerView --------------------------------------------------------------

std::string MainController::Text() {
  return view_.EditorText();
}

int MainController::LoopCount() {
  return view_.LoopCount();
}

void MainController::SetPlaying(bool playing) {
  for (int b = 0; b < kButtonCount; ++b) {
    const auto button = static_cast<Button>(b);
    if (!EnabledWhilePlaying(button)) view_.EnableButton(button, !playing);
  }
  view_.EnableTree(!playing);
  view_.LockLoopCount(playing);
  view_.SetEditorReadOnly(playing || rapid_.Mode() != RapidMode::kOff || debug_.Paused());
  view_.SetPlayingIcon(playing);
  const auto entries = MenuEntries();
  for (std::size_t i = 0; i < entries.size(); ++i)
    if (entries[i].kind == MenuKind::kItem && !entries[i].whilePlaying)
      view_.EnableMenuItem(MenuIdOf(i), !playing);
  // Time recording needs the performance counter; a play must not enable
  // the item on a machine without one.
  if (!playing && !ports_.system.clock.HasPerformanceCounter())
    if (const auto id = MenuIdFor(Command::kToggleOption, "Time")) view_.EnableMenuItem(*id, false);
  debug_.PlayingChanged(playing);
}

void MainController::HighlightLine(int index) {
  view_.HighlightLine(index);
}

void MainController::ClearHighlight() {
  view_.HighlightLine(-1);
}

void MainController::SelectLine(int index) {
  view_.SelectLine(index);
}

std::string MainController::IdleCaption() {
  if (currentPath_.empty()) return kAppTitle;
  const auto slash = currentPath_.find_last_of("\\/");
  return std::string(kAppTitle) + " - " +
         (slash == std::string::npos ? currentPath_ : currentPath_.substr(slash + 1));
}

WindowHandle MainController::MainWindow() {
  return mainWindow_;
}

// --- events ------------------------------------------------------------------

void MainController::OnMenuCommand(int id) {
  const MenuEntry* entry = MenuEntryById(id);
  if (!entry || entry->kind != MenuKind::kItem) return;
  if (player_.Playing() && !entry->whilePlaying) return;
  switch (entry->command) {
    case Command::kClear:
      Clear();
      break;
    case Command::kSaveAs:
      SaveAs();
      break;
    case Command::kOpen:
      Open();
      break;
    case Command::kSave:
      Save();
      break;
    case Command::kExit:
      RequestClose();
      break;
    case Command::kRecord:
      Record();
      break;
    case Command::kPlay:
      Play();
      break;
    case Command::kSpeed:
      SelectSpeed(entry->value);
      break;
    case Command::kToggleBreakpoint:
      debug_.ToggleBreakpoint();
      break;
    case Command::kClearBreakpoints:
      debug_.ClearBreakpoints();
      break;
    case Command::kStep:
      Debug(debug_.Step());
      break;
    case Command::kContinue:
      Debug(debug_.Continue());
      break;
    case Command::kRunToCursor:
      Debug(debug_.RunToCursor());
      break;
    case Command::kWatch:
      debug_.OpenWatch(WatchPlacement());
      break;
    case Command::kKeyRapid:
    case Command::kMouseRapid:
    case Command::kMousePush:
      SelectRapidMode(entry->command);
      break;
    case Command::kInsertLine:
    case Command::kInsertWord:
    case Command::kInsertText:
      Insert(*entry);
      break;
    case Command::kPartialLoop:
      PartialLoop();
      break;
    case Command::kInsertFile:
      InsertFileLine(false);
      break;
    case Command::kInsertMacroFile:
      InsertFileLine(true);
      break;
    case Command::kInsertFolder:
      InsertFolderLine();
      break;
    case Command::kCapture:
      OpenCapture(entry->argument);
      break;
    case Command::kDeleteWaits:
      DeleteWaits();
      break;
    case Command::kTidyRecording:
      TidyRecording();
      break;
    case Command::kEmptyRecycleBin:
      EmptyRecycleBin();
      break;
    case Command::kToggleOption:
      ToggleOption(entry->argument);
      break;
    case Command::kOptionsDialog:
      OpenOptions();
      break;
    case Command::kLintMacro:
      LintMacro();
      break;
    case Command::kReadMe:
      OpenHelpFile("ReadMe.txt");
      break;
    case Command::kKeyList:
      OpenHelpFile("操作記録名一覧.txt");
      break;
    case Command::kHomePage:
      ports_.system.shell.Open(kHomePageUrl, "");
      break;
    case Command::kAbout:
      view_.ShowAbout();
      break;
    case Command::kTreeDelete:
      OnTreeDelete(view_.SelectedTreePath().value_or(""));
      break;
    case Command::kTreeCopyPath:
      OnTreeCopyPath(view_.SelectedTreePath().value_or(""));
      break;
    case Command::kTreeOpenFolder:
      OnOpenMacroFolder();
      break;
    case Command::kTreeChooseFolder:
      if (const auto folder = view_.AskFolder("Macroフォルダの指定")) {
        macroFolder_ = *folder;
        RefreshTree();
      }
      break;
    case Command::kNone:
      break;
  }
}

void MainController::OnButton(Button button) {
  if (player_.Playing() && !EnabledWhilePlaying(button)) return;
  switch (button) {
    case Button::kRecord:
      Record();
      break;
    case Button::kPlay:
      Play();
      break;
    case Button::kClear:
      Clear();
      break;
    case Button::kSave:
      SaveAs();
      break;
    case Button::kOpen:
      Open();
      break;
  }
}

void MainController::OnSaveRightClick() {
  if (!player_.Playing()) Save();
}

// Each timer's owner takes its ticks; a tick of a stopped timer that was
// already queued is dropped by its owner. Ticks come from the message loop
// and from a play's pumps alike.
void MainController::OnTimer(Timer timer) {
  switch (timer) {
    case Timer::kRapidFire:
      OnRapidFireTick();
      return;
    case Timer::kRecorder:
      // One sampling timer serves both: a rapid-fire mode that watches keys
      // takes the tick, and the recorder then records nothing.
      if (OnRapidSamplingTick()) return;
      RecorderTick();
      return;
    case Timer::kWindow:
      WindowTick();
      return;
    case Timer::kSchedule:
      OnScheduleTick();
      return;
    case Timer::kCapture:
      // A play pumps messages, so ticks arrive while the editor's text is
      // being played: the tool keeps showing what is under the pointer and
      // Esc/Enter work, but it writes nothing into the running macro (and a
      // played Alt + click is not the user's).
      if (capture_.IsOpen()) capture_.Tick(!player_.Playing());
      return;
  }
}

// The tray icon does what the show/hide hotkey does.
void MainController::OnTrayClick() {
  ShowOrHide();
}

// --- commands ----------------------------------------------------------------

void MainController::Play() {
  // A play the debugger holds paused is still running for the user: 再生
  // stops it.
  if (debug_.StopIfPaused()) return;
  // Playing ends a running recording first: its ticks must not record what
  // the macro sends.
  if (recording_) StopRecording();
  player_.PlayOrStop();
  AfterPlay();
}

// Runs after every call that may have played: a close requested during the
// play is carried out now that the player has returned.
void MainController::AfterPlay() {
  if (destroyPending_ && !player_.Playing()) {
    destroyPending_ = false;
    view_.Close();
    return;
  }
  if (closePending_ && !player_.Playing()) {
    closePending_ = false;
    RequestClose();
  }
}

void MainController::Debug(DebugController::Go go) {
  if (go == DebugController::Go::kNothing) return;
  if (recording_) StopRecording();
  if (go == DebugController::Go::kResume)
    player_.sLoopPlay();
  else
    player_.PlayOrStop();
  AfterPlay();
}

PlacementTwips MainController::WatchPlacement() const {
  return {settings_.watchX, settings_.watchY, settings_.watchW, settings_.watchH};
}

void MainController::OnWatchClosed() {
  const PlacementTwips p = view_.Watch().Placement();
  settings_.watchX = p.x;
  settings_.watchY = p.y;
  settings_.watchW = p.width;
  settings_.watchH = p.height;
}

void MainController::RequestClose() {
  if (closed_) return;
  if (player_.Playing()) {
    closePending_ = true;
    player_.Abort();
    return;
  }
  Shutdown();
  closed_ = true;
  view_.Close();
}

void MainController::OnSessionEnd() {
  if (closed_) return;
  const bool playing = player_.Playing();
  player_.Abort();
  closePending_ = false;
  Shutdown();
  closed_ = true;
  if (playing)
    destroyPending_ = true;
  else
    view_.Close();
}

void MainController::Clear() {
  view_.SetEditorText("");
  debug_.TextReplaced();
}

// Opening the tool is refused while a macro plays (its menu items are not
// "while playing" ones); an open tool is only switched to the new kind.
void MainController::OpenCapture(std::string_view argument) {
  const auto kind = CaptureKindFor(argument);
  if (!kind) return;
  capture_.Open(*kind);
  view_.StartTimer(Timer::kCapture, kCaptureIntervalMs);
}

void MainController::CloseCapture() {
  capture_.Close();
  view_.StopTimer(Timer::kCapture);
}

// Closing the tool needs nothing of the player, so it is the same during a
// play.
void MainController::OnCaptureClosed() {
  CloseCapture();
}

void MainController::SelectSpeed(int rate) {
  if (rate < 0 || rate >= static_cast<int>(kPlaySpeeds.size())) rate = 0;
  settings_.rate = rate;
  player_.Options().speedFactor = SpeedFactorFromRate(rate);
  for (int r = 0; r < static_cast<int>(kPlaySpeeds.size()); ++r)
    if (const auto id = SpeedMenuId(r)) view_.CheckMenuItem(*id, r == rate);
}

bool* MainController::OptionField(std::string_view setting) {
  const SettingKey* key = FindSettingKey(setting);
  if (!key || key->type != SettingType::kBool) return nullptr;
  return &(settings_.*std::get<bool Settings::*>(key->field));
}

void MainController::ToggleOption(std::string_view setting) {
  bool* field = OptionField(setting);
  if (!field) return;
  *field = !*field;
  if (const auto id = MenuIdFor(Command::kToggleOption, setting)) view_.CheckMenuItem(*id, *field);
  // Options with an effect beyond their check take it at once.
  if (setting == "Tray") view_.SetTrayIcon(*field);
  if (setting == "Top") view_.SetTopMost(*field);
  if (setting == "TreeIcon") RefreshTree();
  if (setting == "Trace") {
    player_.Options().trace = *field;
    if (!*field) view_.HighlightLine(-1);
  }
  if (setting == "Balloon") player_.Options().balloon = *field;
  if (const SettingKey* key = FindSettingKey(setting);
      key && key->writer == SettingWriter::kMenuToggle)
    WriteSetting(ports_.settings, settings_, setting);
  // The recorder's options count from the next tick; PreciseRec from the
  // next recording.
  if (recording_) {
    const RecorderOptions options =
        RecorderOptionsFromSettings(settings_, ports_.system.clock.HasPerformanceCounter());
    recorder_.SetOptions(options);
    precise_.SetOptions(options);
  }
}

void MainController::RefreshTree() {
  view_.SetTree(ReadMacroTree(ports_.folders, macroFolder_, ports_.system.files.Separator()),
                settings_.treeIcon);
}

}  // namespace kx::gui
