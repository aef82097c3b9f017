// The global hotkeys: their registration from the settings and what each one
// does when it arrives.
#include "gui/hotkey_release.h"
#include "gui/main_controller.h"
#include "settings/settings_lists.h"
#include "text/macro_text.h"

namespace kx::gui {

namespace {

std::string FixedHotkeyName(int id) {
  switch (id) {
    case kHotkeyShowHide:
      return "表示/非表示";
    case kHotkeyRecord:
      return "記録";
    case kHotkeyPlay:
      return "再生/停止";
    case kHotkeyPause:
      return "一時停止/再開";
    default:
      return std::to_string(id);
  }
}

// A per-macro hotkey is named by its display text, else by its file.
std::string ScriptHotkeyName(const ScriptHotkey& entry) {
  if (!entry.display.empty()) return entry.display;
  const auto slash = entry.path.find_last_of("\\/");
  if (!entry.path.empty())
    return slash == std::string::npos ? entry.path : entry.path.substr(slash + 1);
  return std::to_string(entry.id);
}

constexpr std::string_view kRefusedPrefix = "登録できなかったホットキー: ";

}  // namespace

void MainController::RegisterHotkey(int id, int modifiers, int key, std::string name) {
  if (modifiers == 0 && key == 0) return;
  if (ports_.hotkeys.Register(id, modifiers, key)) {
    registeredHotkeys_.push_back(id);
    hotkeyModifiers_[id] = modifiers;
  } else {
    refusedHotkeys_.push_back(id);
    refusedNames_.push_back(std::move(name));
  }
}

void MainController::ApplyHotkeys() {
  UnregisterHotkeys();
  refusedHotkeys_.clear();
  refusedNames_.clear();
  struct Fixed {
    int id;
    int modifiers;
    int key;
  };
  const Fixed fixed[] = {
      {kHotkeyShowHide, settings_.hotkeyVMod, settings_.hotkeyV},
      {kHotkeyRecord, settings_.hotkeyRecMod, settings_.hotkeyRec},
      {kHotkeyPlay, settings_.hotkeyPlayMod, settings_.hotkeyPlay},
      {kHotkeyPause, settings_.hotkeyStopMod, settings_.hotkeyStop},
  };
  for (const Fixed& f : fixed) RegisterHotkey(f.id, f.modifiers, f.key, FixedHotkeyName(f.id));

  // The ids count every entry of the list, empty ones included, while the
  // paths are kept for the non-empty ones only: a hand-edited list with an
  // empty entry makes the later hotkeys play the path of the entry before.
  hotkeyPaths_.clear();
  for (const ScriptHotkey& entry : ParseHotkeyList(settings_.hotkey)) {
    hotkeyPaths_.push_back(entry.path);
    RegisterHotkey(entry.id, entry.modifiers, entry.virtualKey, ScriptHotkeyName(entry));
  }
  ShowRefusedHotkeys();
}

// The user learns which keys do nothing, and why; a message of an earlier
// registration goes once every key is taken.
void MainController::ShowRefusedHotkeys() {
  if (refusedNames_.empty()) {
    if (refusedShown_) ShowStatus("");
    refusedShown_ = false;
    return;
  }
  std::string names;
  for (const std::string& name : refusedNames_) names += (names.empty() ? "" : "、") + name;
  ShowStatus(std::string(kRefusedPrefix) + names + " (他のプログラムが使用中です)");
  refusedShown_ = true;
}

void MainController::UnregisterHotkeys() {
  for (const int id : registeredHotkeys_) ports_.hotkeys.Unregister(id);
  registeredHotkeys_.clear();
  hotkeyModifiers_.clear();
}

// While a play runs, this is reached from its pumps: the play and pause
// hotkeys change the player's flags, a per-macro hotkey acts as the play
// hotkey does (it stops the play), and the record hotkey does nothing. While
// a hotkey's play waits for its modifiers to be let go, only show/hide works.
void MainController::OnHotkey(int id) {
  if (id == kHotkeyShowHide) {
    ShowOrHide();
    return;
  }
  if (awaitingRelease_) return;
  if (id == kHotkeyRecord || id == kHotkeyPlay || id == kHotkeyPause) {
    FixedHotkey(id, id);
    return;
  }
  if (id < kFirstScriptHotkeyId || player_.HotkeysLocked()) return;
  const auto n = static_cast<std::size_t>(id - kFirstScriptHotkeyId);
  if (n < hotkeyPaths_.size()) PlayMacroFileAsHotkey(hotkeyPaths_[n], id);
}

void MainController::FixedHotkey(int id, int releaseId) {
  if (RapidFireTakesHotkey(id)) return;
  if (id == kHotkeyRecord) {
    if (!player_.Playing()) Record();
    return;
  }
  // The play hotkey stops a play the debugger holds paused.
  if (id == kHotkeyPlay && !player_.HotkeysLocked() && debug_.StopIfPaused()) return;
  // A play or a resumed pause ends the recording first: the player and
  // the recorder never run together.
  if (recording_) StopRecording();
  if (!player_.Playing() && !player_.HotkeysLocked()) {
    AwaitHotkeyRelease(releaseId);
    if (closed_ || closePending_) return;
  }
  player_.HandleHotkey(id);
  AfterPlay();
}

void MainController::AwaitHotkeyRelease(int id) {
  const auto modifiers = hotkeyModifiers_.find(id);
  if (modifiers == hotkeyModifiers_.end()) return;
  awaitingRelease_ = true;
  AwaitModifiersUp(ports_.system.input, ports_.system.clock, modifiers->second,
                   settings_.hotkeyReleaseMs);
  awaitingRelease_ = false;
}

void MainController::ShowOrHide() {
  if (view_.Visible()) {
    view_.Show(ShowMode::kHidden);
  } else if (!shownOnce_) {
    // Started hidden: the first show is in the stored state (maximised
    // with WinState 2).
    view_.Show(ShowMode::kNormal);
    shownOnce_ = true;
    view_.FocusEditor();
  } else {
    view_.Show(view_.State() == WindowState::kMinimized ? ShowMode::kRestored : ShowMode::kShown);
    view_.FocusEditor();
  }
  view_.BringToFront();
}

void MainController::PlayMacroFileAsHotkey(const std::string& path, int hotkeyId) {
  if (path.empty() || !ports_.system.files.IsFile(path)) return;
  // The debugger is for the editor's own text.
  const DebugController::Detached detached(debug_);
  const std::string kept = view_.EditorText();
  view_.SetEditorText(sReadText(ports_.system.files, path));
  FixedHotkey(kHotkeyPlay, hotkeyId);
  view_.SetEditorText(kept);
}

}  // namespace kx::gui
