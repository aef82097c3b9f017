#pragma once
// The two list-valued settings, Hotkey and Auto, as plain structs.
#include <string>
#include <string_view>
#include <vector>

namespace kx {

// The hotkey id of the first per-script hotkey; the n-th entry of the list
// (empty ones counted) gets 512 + n.
inline constexpr int kFirstScriptHotkeyId = 512;

struct ScriptHotkey {
  int id = kFirstScriptHotkeyId;
  int virtualKey = 0;
  int modifiers = 0;    // 1 Alt, 2 Ctrl, 4 Shift, 8 Win
  std::string display;  // as the hotkey entry box shows it
  std::string path;     // full path of the macro file
  bool operator==(const ScriptHotkey&) const = default;
};

// Entries separated by "||", four fields each separated by "|"; any field
// may be empty. Empty entries are skipped but still count for the ids. The
// last entry may lack fields (they are empty); numbers that are not numbers
// read as 0.
std::vector<ScriptHotkey> ParseHotkeyList(std::string_view value);
std::string FormatHotkeyList(const std::vector<ScriptHotkey>& hotkeys);

struct ScheduledRun {
  std::string kind;  // "停止", "起動後", "インターバル" or "毎日"
  std::string time;  // hours:minutes:seconds
  std::string path;  // full path of the macro file
  bool operator==(const ScheduledRun&) const = default;
};

// Records separated by "|", fields by ","; no separator after the last
// record. Empty records are skipped; a path holding "," keeps it.
std::vector<ScheduledRun> ParseAutoList(std::string_view value);
std::string FormatAutoList(const std::vector<ScheduledRun>& runs);

}  // namespace kx
