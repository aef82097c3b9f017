#include "settings/settings.h"

#include <algorithm>
#include <array>

namespace kx {

namespace {

using enum SettingType;
using enum SettingWriter;

// The keys of setting.ini, in the order start-up reads them. "EndNotifer" is
// spelled so on purpose: existing files use that name.
constexpr std::array<SettingKey, 52> kKeys = {{
    {"HotkeyPlayMod", kInt, 0, kOptionsDialog, &Settings::hotkeyPlayMod},
    {"HotkeyPlay", kInt, 19, kOptionsDialog, &Settings::hotkeyPlay},
    {"Time", kBool, 0, kShutdown, &Settings::time},
    {"FontSize", kInt, 9, kOptionsDialog, &Settings::fontSize},
    {"TextMode", kInt, 0, kOptionsDialog, &Settings::textMode},
    {"Hide", kBool, 0, kShutdown, &Settings::hide},
    {"HotkeyVMod", kInt, 1, kOptionsDialog, &Settings::hotkeyVMod},
    {"HotkeyV", kInt, 122, kOptionsDialog, &Settings::hotkeyV},
    {"HotkeyRecMod", kInt, 0, kOptionsDialog, &Settings::hotkeyRecMod},
    {"HotkeyRec", kInt, 122, kOptionsDialog, &Settings::hotkeyRec},
    {"HotkeyStopMod", kInt, 0, kOptionsDialog, &Settings::hotkeyStopMod},
    {"HotkeyStop", kInt, 0, kOptionsDialog, &Settings::hotkeyStop},
    {"Mouse", kBool, -1, kShutdown, &Settings::mouse},
    {"Move", kBool, -1, kShutdown, &Settings::move},
    {"MouCl", kBool, 0, kShutdown, &Settings::mouCl},
    {"RecAct", kBool, 0, kShutdown, &Settings::recAct},
    {"Stamp", kBool, 0, kShutdown, &Settings::stamp},
    {"Balloon", kBool, 0, kShutdown, &Settings::balloon},
    {"Tray", kBool, 0, kShutdown, &Settings::tray},
    {"TreeIcon", kBool, -1, kShutdown, &Settings::treeIcon},
    {"Loop", kBool, 0, kShutdown, &Settings::loop},
    {"LoopCnt", kInt, 1, kShutdown, &Settings::loopCnt},
    {"Trace", kBool, 0, kShutdown, &Settings::trace},
    {"Top", kBool, 0, kShutdown, &Settings::top},
    {"RecKeyMouse", kInt, 0, kOptionsDialog, &Settings::recKeyMouse},
    {"RecKeyClick", kInt, 0, kOptionsDialog, &Settings::recKeyClick},
    {"DefMacro", kString, 0, kOptionsDialog, &Settings::defMacro},
    {"Split", kInt, 1335, kShutdown, &Settings::split},
    {"Hotkey", kString, 0, kOptionsDialog, &Settings::hotkey},
    {"rate", kInt, 0, kShutdown, &Settings::rate},
    {"Bundle2", kInt, 0, kStartUp, &Settings::bundle2},
    {"Linkage", kInt, 9, kOptionsDialog, &Settings::linkage},
    {"EndNotifer", kInt, 0, kOptionsDialog, &Settings::endNotifer},
    {"Up", kOnlyOne, 0, kOptionsDialog, &Settings::up},
    {"Hits", kInt, 100, kOptionsDialog, &Settings::hits},
    {"Auto", kString, 0, kOptionsDialog, &Settings::autoRuns},
    {"WinState", kInt, 0, kShutdown, &Settings::winState},
    {"X", kInt, 0, kShutdown, &Settings::x},
    {"Y", kInt, 0, kShutdown, &Settings::y},
    {"W", kInt, 5200, kShutdown, &Settings::w},
    {"H", kInt, 6000, kShutdown, &Settings::h},
    {"UnicodeKeys", kInt, 0, kOptionsDialog, &Settings::unicodeKeys},
    {"ReleaseHeld", kBool, -1, kOptionsDialog, &Settings::releaseHeld},
    {"DevToolsPort", kInt, 9222, kOptionsDialog, &Settings::devToolsPort},
    {"Browser", kString, 0, kOptionsDialog, &Settings::browser},
    {"BrowserWaitMs", kInt, 30000, kOptionsDialog, &Settings::browserWaitMs},
    {"PreciseRec", kBool, 0, kMenuToggle, &Settings::preciseRec},
    {"HotkeyReleaseMs", kInt, 1000, kOptionsDialog, &Settings::hotkeyReleaseMs},
    {"WatchX", kInt, 0, kShutdown, &Settings::watchX},
    {"WatchY", kInt, 0, kShutdown, &Settings::watchY},
    {"WatchW", kInt, 0, kShutdown, &Settings::watchW},
    {"WatchH", kInt, 0, kShutdown, &Settings::watchH},
}};

// The shutdown writes its keys in its own order, not the table's.
constexpr std::string_view kShutdownBooleans[] = {"Mouse", "MouCl",   "Move", "RecAct",   "Time",
                                                  "Stamp", "Balloon", "Tray", "TreeIcon", "Loop",
                                                  "Hide",  "Trace",   "Top"};
constexpr std::string_view kPlacement[] = {"X", "Y", "H", "W"};
constexpr std::string_view kWatchPlacement[] = {"WatchX", "WatchY", "WatchW", "WatchH"};

void ReadKey(SettingsStore& store, Settings& settings, const SettingKey& key) {
  if (key.type == kString) {
    settings.*std::get<std::string Settings::*>(key.field) =
        store.ReadString(kSettingsSection, key.name);
    return;
  }
  const int value = store.ReadInt(kSettingsSection, key.name, key.defaultValue);
  if (key.type == kInt) settings.*std::get<int Settings::*>(key.field) = value;
  if (key.type == kBool) settings.*std::get<bool Settings::*>(key.field) = value != 0;
  if (key.type == kOnlyOne) settings.*std::get<bool Settings::*>(key.field) = value == 1;
}

}  // namespace

std::span<const SettingKey> SettingKeys() {
  return kKeys;
}

const SettingKey* FindSettingKey(std::string_view name) {
  const auto it = std::find_if(kKeys.begin(), kKeys.end(),
                               [&](const SettingKey& key) { return key.name == name; });
  return it == kKeys.end() ? nullptr : &*it;
}

Settings ReadSettings(SettingsStore& store) {
  Settings settings;
  for (const SettingKey& key : kKeys) {
    if (key.name == "LoopCnt" && !settings.loop) continue;
    ReadKey(store, settings, key);
  }
  return settings;
}

std::string SettingText(const Settings& settings, const SettingKey& key) {
  switch (key.type) {
    case kInt:
      return std::to_string(settings.*std::get<int Settings::*>(key.field));
    case kBool:
      return settings.*std::get<bool Settings::*>(key.field) ? "-1" : "0";
    case kOnlyOne:
      return settings.*std::get<bool Settings::*>(key.field) ? "1" : "0";
    case kString:
      return settings.*std::get<std::string Settings::*>(key.field);
  }
  return {};
}

void WriteSetting(SettingsStore& store, const Settings& settings, std::string_view name) {
  if (const SettingKey* key = FindSettingKey(name))
    store.Write(kSettingsSection, key->name, SettingText(settings, *key));
}

void WriteOptionsSettings(SettingsStore& store, const Settings& settings) {
  for (const SettingKey& key : kKeys)
    if (key.writer == kOptionsDialog)
      store.Write(kSettingsSection, key.name, SettingText(settings, key));
}

void WriteShutdownSettings(SettingsStore& store, const Settings& settings) {
  for (const std::string_view name : kShutdownBooleans) WriteSetting(store, settings, name);
  WriteSetting(store, settings, "Split");
  if (settings.loop) WriteSetting(store, settings, "LoopCnt");
  WriteSetting(store, settings, "WinState");
  if (settings.winState == 0)
    for (const std::string_view name : kPlacement) WriteSetting(store, settings, name);
  WriteSetting(store, settings, "rate");
  // A watch window never opened leaves the file as it was.
  if (settings.watchW > 0)
    for (const std::string_view name : kWatchPlacement) WriteSetting(store, settings, name);
}

void DeleteObsoleteSettings(SettingsStore& store) {
  for (const std::string_view name : kObsoleteSettingKeys) store.Delete(kSettingsSection, name);
}

}  // namespace kx
