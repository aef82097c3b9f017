#pragma once
// The options dialog's logic: the settings it edits as the values its
// controls show, and back; its two lists with their add, change and delete
// (the per-macro hotkeys refuse a display text another row shows); the
// association buttons; and the order in which a confirm writes the keys.
// The Win32 dialog shows `values` and hands every button here.
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gui/main_view.h"
#include "settings/settings.h"
#include "settings/settings_lists.h"
#include "sys/registry_port.h"

namespace kx::gui {

inline constexpr char kOptionsTitle[] = "Kestrelix オプション";
inline constexpr char kDuplicateHotkeyMessage[] = "既に同じホットキーが登録されています";
// A per-macro hotkey without its file would play nothing; the words are the
// file box's own tip.
inline constexpr char kNoMacroFileMessage[] = "マクロファイルを指定してください";

// The schedule's kinds in the order of their option buttons.
inline constexpr std::string_view kScheduleKinds[] = {"停止", "起動後", "インターバル", "毎日"};
// The font sizes the editor offers.
inline constexpr int kEditorFontSizes[] = {8, 9, 10, 11, 12, 14, 16, 18, 20, 22, 24};
inline constexpr int kHitsMin = 1;
inline constexpr int kHitsMax = 9999;
inline constexpr int kPortMin = 1;
inline constexpr int kPortMax = 65535;
// TextMode of the editor with its display check box off.
inline constexpr int kTextModeHidden = 3;

struct HotkeyChoice {
  int key = 0;
  int modifiers = 0;  // RegisterHotKey flags
  bool operator==(const HotkeyChoice&) const = default;
};

// A row of the per-macro hotkey list: its columns and, as its tag, the
// whole entry as the Hotkey setting keeps it.
struct HotkeyRow {
  std::string display;
  std::string path;
  std::string tag;
  bool operator==(const HotkeyRow&) const = default;
};

struct OptionsValues {
  HotkeyChoice showHide;  // HotkeyV
  HotkeyChoice record;    // HotkeyRec
  HotkeyChoice play;      // HotkeyPlay
  HotkeyChoice pause;     // HotkeyStop
  int recKeyMouse = 0;
  int recKeyClick = 0;
  std::vector<HotkeyRow> hotkeys;
  std::vector<ScheduledRun> schedule;
  int endNotifer = 0;  // なし, 音, ダイアログ, タイトル点滅
  bool up = false;
  std::string hits;  // the text box, as typed
  int fontSize = 9;
  bool editorShown = true;
  int displayMode = 0;  // 行数+ルーラー, 行数, なし
  std::string defMacro;
  int linkage = 9;
  std::string browser;       // Browser: the automation browser's path
  std::string devToolsPort;  // the text box, as typed
  bool operator==(const OptionsValues&) const = default;
};

OptionsValues OptionsFromSettings(const Settings& settings);
// The values into the settings. A Hits box that holds no number keeps the
// old interval; a number outside 1-9999 is brought inside. A DevToolsPort
// box without a port (1-65535) keeps the old port.
void ApplyOptions(const OptionsValues& values, Settings& settings);
// The keys a confirm writes, in the order it writes them.
std::span<const std::string_view> OptionsWriteOrder();
void WriteOptions(SettingsStore& store, const Settings& settings);

// The editor's display for a TextMode.
EditorMode EditorModeFromTextMode(int textMode);

enum class ListEdit {
  kDone,
  kDuplicate,  // the hotkey's display text is another row's: show the message
  kNoMacro,    // a hotkey without a macro file: show the message
  kNothing,    // no row selected, no hotkey captured or no kind chosen
};

enum class BrowseTarget { kHotkeyMacro, kScheduleMacro, kStartUpMacro, kBrowser };

class OptionsDialog {
 public:
  // `confirm` carries OK and 適用 out; browse dialogs start in `browseFolder`;
  // `programPath` is what a double click
  // on a macro file starts.
  OptionsDialog(const Settings& settings, RegistryPort& registry, std::string browseFolder,
                std::string programPath, std::function<void(const OptionsValues&)> confirm);

  // What the controls show; the window writes them back before a confirm.
  OptionsValues values;

  ListEdit AddHotkey(const HotkeyChoice& hotkey, std::string_view display, std::string_view path);
  ListEdit ChangeHotkey(int row, const HotkeyChoice& hotkey, std::string_view display,
                        std::string_view path);
  ListEdit DeleteHotkey(int row);
  // `kind` indexes kScheduleKinds; nothing when no option button is chosen.
  ListEdit AddSchedule(std::optional<int> kind, std::string_view time, std::string_view path);
  ListEdit ChangeSchedule(int row, std::optional<int> kind, std::string_view time,
                          std::string_view path);
  ListEdit DeleteSchedule(int row);

  // The association buttons act at once; Linkage follows on the confirm. An
  // association whose ".ksx" key could not be written changes nothing.
  void Associate();
  void RemoveAssociation();
  bool AssociateEnabled() const;
  bool RemoveEnabled() const;

  FileDialogRequest BrowseRequest(BrowseTarget target) const;
  void Confirm() { confirm_(values); }

 private:
  std::optional<ScheduledRun> ScheduleRow(std::optional<int> kind, std::string_view time,
                                          std::string_view path) const;
  RegistryPort& registry_;
  std::string browseFolder_;
  std::string programPath_;
  std::function<void(const OptionsValues&)> confirm_;
};

}  // namespace kx::gui
