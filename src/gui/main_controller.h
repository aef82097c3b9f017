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
#include <optional>
#include <string>
#include <vector>

#include "gui/app_info.h"
#include "gui/capture_tool.h"
#include "gui/command_table.h"
#include "gui/gui_ports.h"
#include "gui/main_view.h"
#include "player/macro_lint.h"
#include "player/player.h"
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

// Splitter limits in twips: the tree keeps at least its default width, and
// so does the editor.
inline constexpr int kDefaultSplitTwips = 1335;
int ClampSplit(int twips, int innerWidthTwips);

class MainController final : public PlayerView {
 public:
  MainController(GuiPorts ports, MainView& view);

  // --- start-up and shutdown ---
  StartResult StartUp();
  // Closes the window: stops a play first and closes once it has returned.
  void RequestClose();
  bool Closed() const { return closed_; }

  // --- events from the window ---
  void OnMenuCommand(int id);
  void OnButton(Button button);
  void OnSaveRightClick();
  // Help of the highlighted menu item; submenu titles leave the panel.
  void OnMenuSelect(int id, bool submenu);
  void OnMenuClosed();
  void OnHotkey(int id);
  void OnTimer(Timer timer);
  void OnTrayClick();
  void OnTreeOpen(const std::string& path);
  void OnTreeDelete(const std::string& path);
  void OnTreeCopyPath(const std::string& path);
  void OnOpenMacroFolder();
  void OnFileDropped(const std::string& path);
  // The capture tool's window was closed by the user.
  void OnCaptureClosed();

  // --- state, for the window and for tests ---
  const Settings& settings() const { return settings_; }
  const std::string& currentPath() const { return currentPath_; }
  const std::string& macroFolder() const { return macroFolder_; }
  bool playing() const { return player_.Playing(); }
  bool autosaveRecording() const { return autosaveRecording_; }
  Player& player() { return player_; }
  const CaptureTool& capture() const { return capture_; }
  // Where kind 7 of the capture tool reads a page's fields.
  void SetPageFieldsReader(PageFieldsReader reader) {
    capture_.SetPageFieldsReader(std::move(reader));
  }
  // Ids of the hotkeys the system refused at the last registration.
  const std::vector<int>& refusedHotkeys() const { return refusedHotkeys_; }

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

  void SetMainWindowHandle(WindowHandle handle) {
    mainWindow_ = handle;
    capture_.SetMainWindow(handle);
  }

 private:
  // start_up.cpp
  bool RunCommandLineMacro(const std::vector<std::string>& tokens);
  void ApplyPlacement();
  void ApplyChecks();
  void RegisterHotkeys();
  void UnregisterHotkeys();
  void Shutdown();
  // commands
  void Play();
  void AfterPlay();
  void Clear();
  void SelectSpeed(int rate);
  void ToggleOption(std::string_view setting);
  bool* OptionField(std::string_view setting);
  void RefreshTree();
  void Record();
  void OpenCapture(std::string_view argument);
  void CloseCapture();
  // editor_commands.cpp
  void Insert(const MenuEntry& entry);
  void PartialLoop();
  void InsertFileLine(bool macroCall);
  void InsertFolderLine();
  void DeleteWaits();
  void EmptyRecycleBin();
  void LintMacro();
  std::vector<LintWarning> Lint();
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
  CaptureTool capture_;
  Settings settings_;
  std::string currentPath_;
  std::string macroFolder_;
  WindowHandle mainWindow_ = 0;
  bool autosaveRecording_ = false;
  bool recording_ = false;
  bool closePending_ = false;
  bool closed_ = false;
  std::vector<int> registeredHotkeys_;
  std::vector<int> refusedHotkeys_;
};

}  // namespace kx::gui
