#pragma once
// What the main window's logic needs from the window: the editor, the macro
// tree, the buttons, the loop-count box, menus, status bar, tray icon and
// placement, and the modal dialogs it opens. The Win32 window implements it;
// tests use a recording one.
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "gui/capture_view.h"
#include "gui/macro_tree.h"
#include "player/watch.h"

namespace kx::gui {

class OptionsDialog;

// Placement of the main window in twips, the unit setting.ini keeps.
struct PlacementTwips {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  friend bool operator==(const PlacementTwips&, const PlacementTwips&) = default;
};

// The variable watch's window: one, owned by the main window, resizable,
// with a list of names and values.
class WatchView {
 public:
  virtual ~WatchView() = default;
  // Shows the window at `placement` (a width of 0: beside the main window),
  // or brings an open one to the front.
  virtual void Open(const PlacementTwips& placement) = 0;
  virtual bool IsOpen() = 0;
  // The rows top to bottom; only what changed is redrawn.
  virtual void SetRows(const std::vector<WatchRow>& rows) = 0;
  // Where the window is, in twips.
  virtual PlacementTwips Placement() = 0;
};

enum class WindowState { kNormal = 0, kMinimized = 1, kMaximized = 2 };
// kNormal is the first show, in the stored state; kRestored brings a
// minimised window back; kShown makes a hidden window visible as it was.
enum class ShowMode { kNormal, kMinimized, kHidden, kRestored, kShown };

// Editor display: line numbers and ruler, line numbers, plain, or hidden.
enum class EditorMode { kNumbersAndRuler, kNumbers, kPlain, kHidden };

// The lines covered by the editor's selection, from 0; nothing when the
// selection is empty.
struct LineRange {
  int first = 0;
  int last = 0;
};

struct FileFilter {
  std::string description;
  std::string pattern;
};

struct FileDialogRequest {
  std::string title;
  std::vector<FileFilter> filters;
  std::string defaultExtension;  // without the dot; empty for none
  std::string folder;            // where the dialog starts
};

// The main window's timers; each arrives as MainController::OnTimer(id).
// kRecorder samples keys (every kSamplingIntervalMs, for the recorder or for
// rapid fire, which never run together) and kWindow notes the active window
// and the pointer (250 ms).
enum class Timer { kSchedule = 1, kRecorder = 2, kRapidFire = 3, kCapture = 4, kWindow = 5 };
inline constexpr int kSamplingIntervalMs = 50;

enum class Button { kRecord = 0, kPlay = 1, kClear = 2, kSave = 3, kOpen = 4 };
inline constexpr int kButtonCount = 5;

class MainView {
 public:
  virtual ~MainView() = default;

  // --- editor ---
  virtual std::string EditorText() = 0;
  virtual void SetEditorText(std::string_view text) = 0;
  // Replaces the whole text as one change the user can undo.
  virtual void ReplaceEditorText(std::string_view text) = 0;
  // Replaces the selection (or inserts at the caret) and leaves the caret
  // after the new text.
  virtual void InsertAtCaret(std::string_view text) = 0;
  // Puts the caret at the end of the text, adds the text there and scrolls
  // it into view (the recorder's lines).
  virtual void AppendEditorText(std::string_view text) = 0;
  virtual std::optional<LineRange> SelectedLines() = 0;
  virtual void SetEditorReadOnly(bool readOnly) = 0;
  virtual void SetEditorFontSize(int points) = 0;
  virtual void SetEditorMode(EditorMode mode) = 0;
  // Colours (selects) line `index`, scrolling it into view; -1 removes it.
  virtual void HighlightLine(int index) = 0;
  virtual void SelectLine(int index) = 0;
  // The caret's line (the line where the selection starts), from 0.
  virtual int CaretLine() = 0;
  // The breakpoints drawn in the gutter, as line indexes.
  virtual void ShowBreakpoints(const std::set<int>& lines) = 0;

  // --- the other controls ---
  virtual void SetCaption(std::string_view text) = 0;
  virtual void SetStatus(std::string_view text) = 0;
  virtual void SetButtonCaption(Button button, std::string_view text) = 0;
  virtual void EnableButton(Button button, bool enabled) = 0;
  virtual void EnableTree(bool enabled) = 0;
  virtual int LoopCount() = 0;
  virtual void SetLoopCount(int count) = 0;
  virtual void LockLoopCount(bool locked) = 0;
  virtual void SetTree(const std::vector<TreeNode>& nodes, bool icons) = 0;
  // The selected node's path relative to the Macro folder; nothing when no
  // node is selected.
  virtual std::optional<std::string> SelectedTreePath() = 0;
  virtual void CheckMenuItem(int id, bool checked) = 0;
  virtual void EnableMenuItem(int id, bool enabled) = 0;
  // The splitter's position in twips: the tree's and each button's width.
  virtual int SplitTwips() = 0;
  virtual void SetSplitTwips(int twips) = 0;

  // --- the window ---
  virtual void Show(ShowMode mode) = 0;
  virtual bool Visible() = 0;
  virtual void FocusEditor() = 0;
  virtual void BringToFront() = 0;
  virtual WindowState State() = 0;
  virtual PlacementTwips Placement() = 0;
  virtual void SetPlacement(const PlacementTwips& placement, WindowState state) = 0;
  virtual void SetTopMost(bool topMost) = 0;
  // With a tray icon the window has no task-bar button, and the other way.
  virtual void SetTrayIcon(bool shown) = 0;
  virtual void SetPlayingIcon(bool playing) = 0;
  virtual void Close() = 0;

  // --- dialogs and the shell ---
  virtual std::optional<std::string> AskOpenPath(const FileDialogRequest& request) = 0;
  virtual std::optional<std::string> AskSavePath(const FileDialogRequest& request) = 0;
  virtual std::optional<std::string> AskFolder(std::string_view title) = 0;
  // Starts a program with a command line, in a normal window.
  virtual void RunCommandLine(std::string_view commandLine) = 0;
  virtual void ShowAbout() = 0;
  // The options dialog, modal; it confirms through `dialog`.
  virtual void ShowOptionsDialog(OptionsDialog& dialog) = 0;

  // --- timers (a window timer: it fires only while messages are pumped) ---
  // Starting a running timer restarts it with the new interval.
  virtual void StartTimer(Timer timer, int intervalMs) = 0;
  virtual void StopTimer(Timer timer) = 0;

  // --- the capture tool's window (one, owned by this window) ---
  virtual CaptureView& CaptureToolView() = 0;
  // --- the variable watch's window ---
  virtual WatchView& Watch() = 0;
};

}  // namespace kx::gui
