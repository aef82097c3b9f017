#pragma once
// The program's preferences, all keys of section "Macro" of setting.ini: one
// table gives every key its type and default, in the order start-up reads
// them, and the reads and writes go through a settings store.
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "settings/settings_store.h"

namespace kx {

// Linkage: macros are saved as .ksx and associated, or saved as .txt.
inline constexpr int kLinkageAssociated = 8;
inline constexpr int kLinkageRemoved = 9;

struct Settings {
  int hotkeyPlayMod = 0;
  int hotkeyPlay = 19;
  bool time = false;
  int fontSize = 9;
  int textMode = 0;
  bool hide = false;
  int hotkeyVMod = 1;
  int hotkeyV = 122;
  int hotkeyRecMod = 0;
  int hotkeyRec = 122;
  int hotkeyStopMod = 0;
  int hotkeyStop = 0;
  bool mouse = true;
  bool move = true;
  bool mouCl = false;
  bool recAct = false;
  bool stamp = false;
  bool balloon = false;
  bool tray = false;
  bool treeIcon = true;
  bool loop = false;
  int loopCnt = 1;
  bool trace = false;
  bool top = false;
  int recKeyMouse = 0;
  int recKeyClick = 0;
  std::string defMacro;
  int split = 1335;
  std::string hotkey;
  int rate = 0;
  int bundle2 = 0;
  int linkage = kLinkageRemoved;
  int endNotifer = 0;
  bool up = false;
  int hits = 100;
  std::string autoRuns;
  int winState = 0;
  int x = 0;
  int y = 0;
  int w = 5200;
  int h = 6000;
  int unicodeKeys = 0;  // 1: "key" lines send untypeable characters as Unicode
  // A play cut short (stopped, paused, failed) and the end of the program
  // let go of every key and mouse button a macro left held down.
  bool releaseHeld = true;
  int devToolsPort = 9222;    // the loopback port page commands reach Chromium browsers on
  std::string browser;        // full path of the automation browser; empty: Edge, else Chrome
  int browserWaitMs = 30000;  // how long a browser line waits for its page
  // Recording takes key and button edges from the low-level hooks, in order,
  // instead of sampling the key states.
  bool preciseRec = false;
  // A play started by a hotkey with modifiers waits at most this long for
  // them to be let go; 0 starts at once.
  int hotkeyReleaseMs = 1000;
  // The variable watch's window in twips; a width of 0: never placed, it
  // opens beside the main window.
  int watchX = 0;
  int watchY = 0;
  int watchW = 0;
  int watchH = 0;
};

enum class SettingType {
  kInt,
  kBool,     // written "-1" or "0"; any non-zero value reads as on
  kOnlyOne,  // written "1" or "0"; only 1 reads as on (the key Up)
  kString,   // cut at the first NUL; empty when missing
};

// Who writes a key back to the file.
// kMenuToggle: a menu check written as soon as it is toggled, so that a
// fresh start and shutdown write the file as they always have.
enum class SettingWriter { kOptionsDialog, kShutdown, kStartUp, kMenuToggle };

struct SettingKey {
  std::string_view name;
  SettingType type;
  int defaultValue;  // for kBool: -1 on, 0 off; unused for kString
  SettingWriter writer;
  std::variant<int Settings::*, bool Settings::*, std::string Settings::*> field;
};

// Every key, in the order start-up reads them.
std::span<const SettingKey> SettingKeys();
const SettingKey* FindSettingKey(std::string_view name);

// Keys of earlier versions, deleted from the file at every start.
inline constexpr std::string_view kObsoleteSettingKeys[] = {"Bundle", "Bundle1"};

// Reads every key in table order; LoopCnt only when Loop is on. A missing,
// corrupt or unreadable file gives the defaults.
Settings ReadSettings(SettingsStore& store);

// The text a key is written as.
std::string SettingText(const Settings& settings, const SettingKey& key);
void WriteSetting(SettingsStore& store, const Settings& settings, std::string_view name);

// The keys the options dialog writes when confirmed, in table order.
void WriteOptionsSettings(SettingsStore& store, const Settings& settings);

// The keys the shutdown writes, in its order: the menu-mirrored booleans,
// Split, LoopCnt only when Loop is on, WinState, the placement only for a
// normal window, and rate.
void WriteShutdownSettings(SettingsStore& store, const Settings& settings);

void DeleteObsoleteSettings(SettingsStore& store);

}  // namespace kx
