#pragma once
// The main window on Win32: the controls, their layout at any DPI, and the
// messages that become the controller's events. It decides nothing itself.
#include <array>
#include <optional>
#include <string>

#include "gui/main_controller.h"
#include "gui/main_view.h"
#include "gui/win32/capture_window.h"
#include "gui/win32/controls.h"
#include "gui/win32/text_editor.h"
#include "gui/win32/watch_window.h"
#include "gui/win32/window_base.h"
#include "sys/win32/unique_handle.h"

namespace kx::win32 {

class MainWindow final : public WindowBase, public gui::MainView {
 public:
  bool Create();
  void SetController(gui::MainController* controller) { controller_ = controller; }
  // The main window's keyboard shortcuts, for keys given to it or to its
  // controls; true when the message was taken.
  bool TranslateShortcut(MSG& msg);

  // --- gui::MainView ---
  std::string EditorText() override { return editor_.Text(); }
  void SetEditorText(std::string_view text) override { editor_.SetText(text); }
  void ReplaceEditorText(std::string_view text) override { editor_.ReplaceAll(text); }
  void InsertAtCaret(std::string_view text) override { editor_.InsertAtCaret(text); }
  void AppendEditorText(std::string_view text) override { editor_.AppendText(text); }
  std::optional<gui::LineRange> SelectedLines() override { return editor_.SelectedLines(); }
  void SetEditorReadOnly(bool on) override { editor_.SetReadOnly(on); }
  void SetEditorFontSize(int points) override { editor_.SetFont(points); }
  void SetEditorMode(gui::EditorMode mode) override;
  void HighlightLine(int index) override { editor_.sJumpLine(index); }
  void SelectLine(int index) override { editor_.SelectLine(index); }
  int CaretLine() override { return editor_.CaretLine(); }
  void ShowBreakpoints(const std::set<int>& lines) override { editor_.SetBreakpoints(lines); }
  void SetCaption(std::string_view text) override;
  void SetStatus(std::string_view text) override;
  void SetButtonCaption(gui::Button button, std::string_view text) override;
  void EnableButton(gui::Button button, bool enabled) override;
  void EnableTree(bool enabled) override;
  int LoopCount() override { return loopBox_.Value(); }
  void SetLoopCount(int count) override { loopBox_.SetValue(count); }
  void LockLoopCount(bool locked) override { loopBox_.Lock(locked); }
  void SetTree(const std::vector<gui::TreeNode>& nodes, bool icons) override;
  std::optional<std::string> SelectedTreePath() override { return tree_.SelectedPath(); }
  void CheckMenuItem(int id, bool checked) override;
  void EnableMenuItem(int id, bool enabled) override;
  int SplitTwips() override { return splitTwips_; }
  void SetSplitTwips(int twips) override;
  void Show(gui::ShowMode mode) override;
  bool Visible() override;
  void FocusEditor() override;
  void BringToFront() override;
  gui::WindowState State() override;
  gui::PlacementTwips Placement() override;
  void SetPlacement(const gui::PlacementTwips& placement, gui::WindowState state) override;
  void SetTopMost(bool topMost) override;
  void SetTrayIcon(bool shown) override;
  void SetPlayingIcon(bool playing) override;
  void Close() override;
  std::optional<std::string> AskOpenPath(const gui::FileDialogRequest& request) override;
  std::optional<std::string> AskSavePath(const gui::FileDialogRequest& request) override;
  std::optional<std::string> AskFolder(std::string_view title) override;
  void RunCommandLine(std::string_view commandLine) override;
  void ShowAbout() override;
  void ShowOptionsDialog(gui::OptionsDialog& dialog) override;
  void StartTimer(gui::Timer timer, int intervalMs) override;
  void StopTimer(gui::Timer timer) override;
  gui::CaptureView& CaptureToolView() override { return capture_; }
  gui::WatchView& Watch() override { return watch_; }

 protected:
  LRESULT HandleMessage(UINT msg, WPARAM wp, LPARAM lp) override;

 private:
  void CreateControls();
  void ApplyFonts();
  void Layout();
  RECT SplitterRect() const;
  void OnCommand(WPARAM wp, LPARAM lp);
  void OnMenuSelect(WPARAM wp, LPARAM lp);
  LRESULT OnNotify(const NMHDR& header);
  void ShowTreeMenu();
  void DragSplitter(int x);
  void UpdateTrayIcon(DWORD action, bool playing);

  gui::MainController* controller_ = nullptr;
  TextEditor editor_;
  CaptureWindow capture_;
  WatchWindow watch_;
  unique_haccel accelerators_;
  MacroTreeView tree_;
  StatusBar status_;
  LoopCountBox loopBox_;
  std::array<PushButton, gui::kButtonCount> buttons_;
  Tooltips tooltips_;
  unique_hfont uiFont_;
  HICON icon_ = nullptr;  // a resource: not destroyed

  int splitTwips_ = gui::kDefaultSplitTwips;
  bool draggingSplitter_ = false;
  int dragStartX_ = 0;
  int dragStartTwips_ = 0;
  bool tray_ = false;
  // With the tray icon on, the main window is owned by this hidden window:
  // an owned window has no task-bar button.
  unique_hwnd trayOwner_;
  gui::WindowState storedState_ = gui::WindowState::kNormal;
  // The placement last set, in both units: a window that has not moved
  // reports the twips it was given, so that a start and a close never drift.
  std::optional<gui::PlacementTwips> placedTwips_;
  RECT placedPixels_{};
};

}  // namespace kx::win32
