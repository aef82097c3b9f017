#pragma once
// The main window for the simulated system: keeps every control's state in
// plain members, records what the window was asked to do, and answers its
// dialogs from queues the test fills.
#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "gui/main_view.h"
#include "gui/options_model.h"

namespace kx::sim {

// The capture tool's window: what it shows and whether it is open.
class SimCaptureView final : public gui::CaptureView {
 public:
  bool open = false;
  int opened = 0;  // how many times it was opened
  std::string label;
  gui::CaptureFields fields;
  WindowHandle handle = 0;
  bool imageSizeShown = false;
  int imageSize = 48;

  void Open() override {
    open = true;
    ++opened;
  }
  void Close() override { open = false; }
  void SetLabel(std::string_view text) override { label = std::string(text); }
  void SetFields(const gui::CaptureFields& f) override { fields = f; }
  WindowHandle Handle() override { return handle; }
  void ShowImageSize(bool shown) override { imageSizeShown = shown; }
  int ImageSize() override { return imageSize; }
};

// The variable watch: its rows and where it was put.
class SimWatchView final : public gui::WatchView {
 public:
  bool open = false;
  gui::PlacementTwips placement;
  std::vector<WatchRow> rows;
  int refreshed = 0;  // how many times rows were set

  void Open(const gui::PlacementTwips& p) override {
    open = true;
    placement = p;
  }
  bool IsOpen() override { return open; }
  void SetRows(const std::vector<WatchRow>& r) override {
    rows = r;
    ++refreshed;
  }
  gui::PlacementTwips Placement() override { return placement; }
};

class SimMainView final : public gui::MainView {
 public:
  // --- what the window shows ---
  std::string text;
  std::size_t caret = 0;  // byte offset of the caret in `text`
  std::optional<gui::LineRange> selection;
  bool readOnly = false;
  int fontSize = 0;
  gui::EditorMode editorMode = gui::EditorMode::kNumbersAndRuler;
  int highlighted = -1;
  int selectedLine = -1;
  std::vector<int> highlights;  // every line highlighted, in order
  std::string caption;
  std::string status;
  std::vector<std::string> statusHistory;
  std::map<gui::Button, std::string> buttonCaptions;
  std::map<gui::Button, bool> buttonEnabled;
  bool treeEnabled = true;
  int loopCount = 1;
  bool loopLocked = false;
  std::vector<gui::TreeNode> tree;
  std::optional<std::string> treeSelection;
  bool treeIcons = false;
  std::map<int, bool> checks;
  std::map<int, bool> menuEnabled;
  int split = 0;
  std::optional<gui::ShowMode> shown;
  bool visible = false;
  gui::WindowState state = gui::WindowState::kNormal;
  gui::PlacementTwips placement;
  bool topMost = false;
  bool tray = false;
  bool playingIcon = false;
  bool closed = false;
  bool aboutShown = false;
  int editorFocused = 0;             // times the editor was given the focus
  int broughtToFront = 0;            // times the window was brought to the front
  std::map<gui::Timer, int> timers;  // running timers and their intervals
  std::vector<std::string> commandLines;
  SimCaptureView capture;
  SimWatchView watch;
  std::set<int> breakpoints;                    // drawn in the gutter
  std::vector<gui::FileDialogRequest> dialogs;  // every file dialog opened

  // --- answers of the dialogs; nothing (Cancel) when the queue is empty ---
  std::deque<std::optional<std::string>> openAnswers;
  std::deque<std::optional<std::string>> saveAnswers;
  std::deque<std::optional<std::string>> folderAnswers;

  // --- MainView ---
  std::string EditorText() override { return text; }
  void SetEditorText(std::string_view t) override {
    text = std::string(t);
    caret = 0;
    selection.reset();
  }
  void ReplaceEditorText(std::string_view t) override {
    text = std::string(t);
    caret = text.size();
    selection.reset();
  }
  void InsertAtCaret(std::string_view t) override {
    caret = std::min(caret, text.size());
    text.insert(caret, t);
    caret += t.size();
  }
  void AppendEditorText(std::string_view t) override {
    text += t;
    caret = text.size();
    selection.reset();
  }
  std::optional<gui::LineRange> SelectedLines() override { return selection; }
  void SetEditorReadOnly(bool on) override { readOnly = on; }
  void SetEditorFontSize(int points) override { fontSize = points; }
  void SetEditorMode(gui::EditorMode mode) override { editorMode = mode; }
  void HighlightLine(int index) override {
    highlighted = index;
    highlights.push_back(index);
  }
  void SelectLine(int index) override { selectedLine = index; }
  int CaretLine() override {
    if (selection) return selection->first;
    const auto upTo = std::string_view(text).substr(0, std::min(caret, text.size()));
    return static_cast<int>(std::count(upTo.begin(), upTo.end(), '\n'));
  }
  void ShowBreakpoints(const std::set<int>& lines) override { breakpoints = lines; }
  void SetCaption(std::string_view t) override { caption = std::string(t); }
  void SetStatus(std::string_view t) override {
    status = std::string(t);
    statusHistory.push_back(status);
  }
  void SetButtonCaption(gui::Button b, std::string_view t) override {
    buttonCaptions[b] = std::string(t);
  }
  void EnableButton(gui::Button b, bool on) override { buttonEnabled[b] = on; }
  void EnableTree(bool on) override { treeEnabled = on; }
  int LoopCount() override { return loopCount; }
  void SetLoopCount(int n) override { loopCount = n; }
  void LockLoopCount(bool on) override { loopLocked = on; }
  void SetTree(const std::vector<gui::TreeNode>& nodes, bool icons) override {
    tree = nodes;
    treeIcons = icons;
  }
  std::optional<std::string> SelectedTreePath() override { return treeSelection; }
  void CheckMenuItem(int id, bool on) override { checks[id] = on; }
  void EnableMenuItem(int id, bool on) override { menuEnabled[id] = on; }
  int SplitTwips() override { return split; }
  void SetSplitTwips(int twips) override { split = twips; }
  void Show(gui::ShowMode mode) override {
    shown = mode;
    visible = mode != gui::ShowMode::kHidden;
    if (mode == gui::ShowMode::kMinimized) state = gui::WindowState::kMinimized;
    if (mode == gui::ShowMode::kRestored) state = gui::WindowState::kNormal;
  }
  bool Visible() override { return visible; }
  void FocusEditor() override { ++editorFocused; }
  void BringToFront() override { ++broughtToFront; }
  gui::WindowState State() override { return state; }
  gui::PlacementTwips Placement() override { return placement; }
  void SetPlacement(const gui::PlacementTwips& p, gui::WindowState s) override {
    placement = p;
    state = s;
  }
  void SetTopMost(bool on) override { topMost = on; }
  void SetTrayIcon(bool on) override { tray = on; }
  void SetPlayingIcon(bool on) override { playingIcon = on; }
  void Close() override { closed = true; }
  std::optional<std::string> AskOpenPath(const gui::FileDialogRequest& request) override {
    return Answer(openAnswers, request);
  }
  std::optional<std::string> AskSavePath(const gui::FileDialogRequest& request) override {
    return Answer(saveAnswers, request);
  }
  std::optional<std::string> AskFolder(std::string_view) override {
    return Answer(folderAnswers, {});
  }
  void RunCommandLine(std::string_view line) override { commandLines.emplace_back(line); }
  void ShowAbout() override { aboutShown = true; }
  // The options dialog runs `optionsScript` (a user at the dialog) when the
  // test set one; otherwise it is closed at once, as with キャンセル.
  void ShowOptionsDialog(gui::OptionsDialog& dialog) override {
    ++optionsShown;
    if (optionsScript) optionsScript(dialog);
  }
  int optionsShown = 0;
  std::function<void(gui::OptionsDialog&)> optionsScript;
  void StartTimer(gui::Timer timer, int intervalMs) override { timers[timer] = intervalMs; }
  void StopTimer(gui::Timer timer) override { timers.erase(timer); }
  gui::CaptureView& CaptureToolView() override { return capture; }
  gui::WatchView& Watch() override { return watch; }

 private:
  std::optional<std::string> Answer(std::deque<std::optional<std::string>>& queue,
                                    const gui::FileDialogRequest& request) {
    dialogs.push_back(request);
    if (queue.empty()) return std::nullopt;
    auto answer = queue.front();
    queue.pop_front();
    return answer;
  }
};

}  // namespace kx::sim
