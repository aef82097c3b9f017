#pragma once
// The main window's logic: owns the player, the settings, the current file,
// the play state and the option checks, and drives the window through
// MainView. Start-up, shutdown, every menu command, the buttons, hotkeys,
// the tray icon and the macro tree end up here.
//
// A play pumps messages, so any handler can run in the middle of one. The
// rule: while a macro plays, only the entries marked "while playing" in the
// menu table run (play/stop, speed, option checks, help, exit); the others
// are disabled in the menu and refused here, the buttons other than 再生 and
// the tree are disabled, and the editor is read-only. A close request during
// a play stops it, and the window closes once the play has returned.
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "gui/app_info.h"
#include "gui/capture_tool.h"
#include "gui/command_table.h"
#include "gui/debug_controller.h"
#include "gui/gui_ports.h"
#include "gui/main_view.h"
#include "gui/options_model.h"
#include "gui/schedule.h"
#include "input/rapid_fire.h"
#include "player/macro_lint.h"
#include "player/player.h"
#include "recorder/precise_recorder.h"
#include "recorder/recorder.h"
#include "settings/settings.h"

namespace kx::gui {

enum class StartResult {
  kRunning,         // the window is shown; run the message loop
  kRanMacro,        // a command-line macro was played: end without writing
  kSecondInstance,  // the first instance was raised: end
};

// Hotkey identifiers of the main window.
inline constexpr int kHotkeyShowHide = 256;
inline constexpr int kHotkeyRecord = 257;

// The window timer: the pointer position, and the active window while
// recording; on from start-up to shutdown.
inline constexpr int kWindowTimerMs = 250;

// Splitter limits in twips: the tree keeps at least its default width, and
// so does the editor.
inline constexpr int kDefaultSplitTwips = 1335;
int ClampSplit(int twips, int innerWidthTwips);

class MainController final : public PlayerView, public RecorderHookSink, private RapidFireHost {
 public:
  MainController(GuiPorts ports, MainView& view);

  // --- start-up and shutdown ---
  StartResult StartUp();
  // Closes the window: stops a play first and closes once it has returned.
  void RequestClose();
  // Windows ends the session (log-off, shut-down) and may end the process
  // as soon as this returns: everything the close writes is written now, a
  // running play is stopped, and the window closes once the play returned.
  void OnSessionEnd();
  bool Closed() const { return closed_; }
  // Lets go of every key and button a macro holds down; the program's last
  // act when it ends by a failure.
  void ReleaseHeldKeys() { player_.ReleaseHeld(); }

  // --- events from the window ---
  void OnMenuCommand(int id);
  void OnButton(Button button);
  void OnSaveRightClick();
  // Help of the highlighted menu item; submenu titles leave the panel.
  void OnMenuSelect(int id, bool submenu);
  void OnMenuClosed();
  // WM_HOTKEY: 256 show/hide, 257 record, 258 play/stop, 259 pause/resume,
  // 512 + n the n-th entry of the Hotkey list.
  void OnHotkey(int id);
  void OnTimer(Timer timer);
  // A message of the program in the status bar (status_text.cpp): it keeps
  // the panel a few seconds before the window timer's pointer position.
  void ShowStatus(std::string_view text);
  void OnTrayClick();
  void OnTreeOpen(const std::string& path);
  void OnTreeDelete(const std::string& path);
  void OnTreeCopyPath(const std::string& path);
  void OnOpenMacroFolder();
  void OnFileDropped(const std::string& path);
  // The capture tool's window was closed by the user.
  void OnCaptureClosed();
  // The user changed the editor's text (typing, pasting, an inserted line).
  void OnEditorChanged() { debug_.TextEdited(); }
  // A click in the editor's gutter beside line `index`.
  void OnGutterClick(int index) { debug_.ToggleBreakpointAt(index); }
  // The variable watch's window is closing: its placement is kept.
  void OnWatchClosed();

  // Unregisters every hotkey in use and registers the four fixed ones and
  // the per-macro ones from the settings; a hotkey the system refuses is
  // named in the status bar. Start-up and the options dialog call it.
  void ApplyHotkeys();
  // A per-macro hotkey's and a scheduled run's action: keeps the editor's
  // text, loads the file, plays it as the play hotkey does and puts the kept
  // text back. A missing file does nothing. `hotkeyId`: the hotkey that asked
  // for it, whose modifiers the play waits for to be let go (0: none).
  void PlayMacroFileAsHotkey(const std::string& path, int hotkeyId = 0);

  // --- state, for the window and for tests ---
  const Settings& settings() const { return settings_; }
  const std::string& currentPath() const { return currentPath_; }
  const std::string& macroFolder() const { return macroFolder_; }
  bool playing() const { return player_.Playing(); }
  bool autosaveRecording() const { return autosaveRecording_; }
  bool recording() const { return recording_; }
  Player& player() { return player_; }
  const CaptureTool& capture() const { return capture_; }
  // Where kind 7 of the capture tool reads a page's fields.
  void SetPageFieldsReader(PageFieldsReader reader) {
    capture_.SetPageFieldsReader(std::move(reader));
  }
  // Ids of the hotkeys the system refused at the last registration.
  const std::vector<int>& refusedHotkeys() const { return refusedHotkeys_; }
  RapidMode rapidMode() const { return rapid_.Mode(); }
  const RapidFire& rapidFire() const { return rapid_; }
  const DebugController& debugger() const { return debug_; }

  // --- PlayerView ---
  std::string Text() override;
  int LoopCount() override;
  void SetPlaying(bool playing) override;
  void HighlightLine(int index) override;
  void ClearHighlight() override;
  void SelectLine(int index) override;
  void VariablesChanged() override {}
  std::string IdleCaption() override;
  WindowHandle MainWindow() override;

  // --- RecorderHookSink: the hooks' events while a recording runs ---
  void OnHookMouseMove(Point screen, std::uint32_t time) override;
  void OnHookWheel(int delta, std::uint32_t time) override;
  void OnHookKey(const HookKey& key) override;
  void OnHookButton(const HookButton& button) override;

  void SetMainWindowHandle(WindowHandle handle) {
    mainWindow_ = handle;
    capture_.SetMainWindow(handle);
  }

 private:
  // start_up.cpp
  bool RunCommandLineMacro(const std::vector<std::string>& tokens);
  void ApplyPlacement();
  void ApplyChecks();
  // hotkey_commands.cpp
  void RegisterHotkey(int id, int modifiers, int key, std::string name);
  void UnregisterHotkeys();
  void ShowRefusedHotkeys();
  void ShowOrHide();
  // Record, play and pause/resume; a play it starts first waits for the
  // modifiers of hotkey `releaseId` to be let go (0: no wait).
  void FixedHotkey(int id, int releaseId);
  void AwaitHotkeyRelease(int id);
  // rapid_fire_commands.cpp
  void SelectRapidMode(Command command);
  // True when a rapid-fire mode is on and so takes the record, play or pause
  // hotkey: record does nothing, play and pause stop the repeating.
  bool RapidFireTakesHotkey(int id);
  std::string RapidTitleSuffix() const;
  void OnRapidFireTick();
  // True when rapid fire took the sampling tick (the recorder then records
  // nothing).
  bool OnRapidSamplingTick();
  // RapidFireHost
  void StartRepeatTimer(int intervalMs) override;
  void StopRepeatTimer() override;
  void ShowRapidStatus(std::string_view text) override;
  void Shutdown();
  // commands
  void Play();
  void AfterPlay();
  // After F10, F5 or Ctrl+F10: resumes or starts the play as the debugger
  // decided.
  void Debug(DebugController::Go go);
  PlacementTwips WatchPlacement() const;
  void Clear();
  void SelectSpeed(int rate);
  void ToggleOption(std::string_view setting);
  bool* OptionField(std::string_view setting);
  void RefreshTree();
  // record_commands.cpp
  void Record();
  void StartRecording();
  void StopRecording();
  void RecorderTick();
  void WindowTick();
  void AppendRecorded(const std::string& text);
  // False while a rapid-fire mode is on: its keys and clicks are its own.
  bool RecordHookEvent() const;
  bool StatusHeld();
  void OpenCapture(std::string_view argument);
  void CloseCapture();
  // editor_commands.cpp
  void Insert(const MenuEntry& entry);
  void PartialLoop();
  void InsertFileLine(bool macroCall);
  void InsertFolderLine();
  void DeleteWaits();
  void TidyRecording();
  void EmptyRecycleBin();
  void LintMacro();
  std::vector<LintWarning> Lint();
  // options_commands.cpp
  void OpenOptions();
  void ConfirmOptions(const OptionsValues& values);
  void LoadSchedule();
  void OnScheduleTick();
  // file_commands.cpp
  void Open();
  void SaveAs();
  void Save();
  void LoadFile(const std::string& path);
  bool WriteFile(const std::string& path);
  FileDialogRequest OpenDialogRequest() const;
  FileDialogRequest SaveDialogRequest() const;
  void OpenHelpFile(std::string_view name);
  void UpdateCaption();

  GuiPorts ports_;
  MainView& view_;
  Player player_;
  DebugController debug_;
  RapidFire rapid_;
  std::string textBeforeRapid_;
  CaptureTool capture_;
  Settings settings_;
  std::string currentPath_;
  std::string macroFolder_;
  WindowHandle mainWindow_ = 0;
  bool autosaveRecording_ = false;
  Recorder recorder_;
  PreciseRecorder precise_;
  bool recording_ = false;
  bool preciseRecording_ = false;  // this recording takes its edges from the hooks
  bool recorderTicking_ = false;   // a tick pumps messages: never re-entered
  std::string pointerShown_;       // the pointer position in the status bar; empty: something else
  bool menuOpen_ = false;          // a menu shows its help in the status bar
  std::uint32_t statusShownAt_ = 0;                       // tick count of the last message
  bool statusHeld_ = false;                               // a message is young enough to stay
  EditorMode editorMode_ = EditorMode::kNumbersAndRuler;  // shown again after `Hide`
  bool shownOnce_ = false;  // "/h" leaves the window unshown until the first show
  bool closePending_ = false;
  bool destroyPending_ = false;  // the session ended during a play: written, not yet closed
  bool closed_ = false;
  std::vector<int> registeredHotkeys_;
  std::vector<int> refusedHotkeys_;
  std::vector<std::string> refusedNames_;
  bool refusedShown_ = false;
  // The macro paths of the non-empty entries of the Hotkey list, in order.
  std::vector<std::string> hotkeyPaths_;
  // The modifier flags of every registered hotkey, by id.
  std::map<int, int> hotkeyModifiers_;
  // A hotkey's play waits for its modifiers to be let go; the held hotkey
  // repeats meanwhile, and those repeats start nothing.
  bool awaitingRelease_ = false;
  Schedule schedule_;
};

}  // namespace kx::gui
