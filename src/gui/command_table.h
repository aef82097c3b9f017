#pragma once
// The menu bar of the main window as one table: every entry's caption, its
// status-bar help, what it does and whether it may run while a macro plays.
// Menu ids are derived from an entry's position, so they are unique by
// construction, and the help of an id is looked up here and nowhere else.
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kx::gui {

enum class MenuKind : std::uint8_t {
  kPopup,     // opens a submenu; the entries up to the matching kPopupEnd
  kPopupEnd,  // closes the innermost open submenu
  kSeparator,
  kItem,
};

// What choosing an item does. The argument of an entry (text to insert, the
// setting it mirrors, the play-speed index) says the rest.
enum class Command : std::uint8_t {
  kNone,
  // ファイル
  kClear,
  kSaveAs,
  kOpen,
  kSave,
  kExit,
  // 再生
  kRecord,
  kPlay,
  kSpeed,
  // the debugger of the editor's text
  kToggleBreakpoint,
  kClearBreakpoints,
  kStep,
  kContinue,
  kRunToCursor,
  kWatch,
  // 連打機能
  kKeyRapid,
  kMouseRapid,
  kMousePush,
  // Lines inserted at the caret: the caption's word with a line break, the
  // word alone (the user types the coordinates), or the argument as it stands.
  kInsertLine,
  kInsertWord,
  kInsertText,
  // 命令
  kPartialLoop,
  kInsertFile,
  kInsertFolder,
  kInsertMacroFile,
  kCapture,
  kDeleteWaits,
  kTidyRecording,
  // システム
  kEmptyRecycleBin,
  // 設定
  kToggleOption,
  kOptionsDialog,
  kLintMacro,
  // ヘルプ
  kReadMe,
  kKeyList,
  kHomePage,
  kAbout,
  // the macro tree's popup menus
  kTreeDelete,
  kTreeOpenFolder,
  kTreeChooseFolder,
  kTreeCopyPath,
};

// The arguments of the popups that belong to the macro tree, not the bar.
inline constexpr std::string_view kTreeFileMenu = "tree-file";
inline constexpr std::string_view kTreeMenu = "tree";

// A key of the main window's accelerator table: it works while that window
// is active and is never registered as a global hotkey.
struct Shortcut {
  int virtualKey = 0;  // 0: none
  bool ctrl = false;
};
inline constexpr int kVkF5 = 0x74;
inline constexpr int kVkF9 = 0x78;
inline constexpr int kVkF10 = 0x79;

// "F9", "Ctrl+F10"; empty for none. The menu shows it after the caption.
std::string ShortcutText(Shortcut shortcut);

struct MenuEntry {
  MenuKind kind;
  std::string_view caption;
  std::string_view help;
  Command command = Command::kNone;
  std::string_view argument = {};
  int value = 0;              // the play-speed index of a kSpeed entry
  bool whilePlaying = false;  // may run while a play is running
  Shortcut shortcut = {};
};

// The first menu id; an item's help is found at its id minus this.
inline constexpr int kFirstMenuId = 2;
// The status bar's help table holds at most this many texts.
inline constexpr int kMaxMenuHelp = 150;

std::span<const MenuEntry> MenuEntries();

inline int MenuIdOf(std::size_t index) {
  return kFirstMenuId + static_cast<int>(index);
}
// The entry of a menu id; nothing for an id outside the menu.
const MenuEntry* MenuEntryById(int id);
// The id of the first entry with the given command and argument.
std::optional<int> MenuIdFor(Command command, std::string_view argument = {});
std::optional<int> SpeedMenuId(int rate);

// The status-bar help of a menu id; empty for ids outside the menu.
std::string_view MenuHelp(int id);

// The text an insert item puts at the caret: the caption up to the first
// run of two blanks (the word before its description), without "&"; key and
// system lines get a line break, mouse words none.
std::string InsertedText(const MenuEntry& entry);

}  // namespace kx::gui
