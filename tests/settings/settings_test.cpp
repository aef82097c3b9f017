#include "settings/settings.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace kx {
namespace {

// A store that keeps the values in memory and remembers the order of writes.
class FakeStore : public SettingsStore {
 public:
  std::map<std::string, std::string, std::less<>> values;
  std::vector<std::string> written;
  std::vector<std::string> deleted;

  int ReadInt(std::string_view section, std::string_view key, int defaultValue) override {
    EXPECT_EQ(section, "Macro");
    const auto it = values.find(key);
    if (it == values.end() || it->second.empty()) return defaultValue;
    return std::atoi(it->second.c_str());
  }
  std::string ReadString(std::string_view section, std::string_view key) override {
    EXPECT_EQ(section, "Macro");
    const auto it = values.find(key);
    return it == values.end() ? std::string() : it->second;
  }
  void Write(std::string_view section, std::string_view key, std::string_view value) override {
    EXPECT_EQ(section, "Macro");
    values[std::string(key)] = value;
    written.emplace_back(key);
  }
  void Delete(std::string_view section, std::string_view key) override {
    EXPECT_EQ(section, "Macro");
    values.erase(std::string(key));
    deleted.emplace_back(key);
  }
};

struct DefaultCase {
  std::string_view key;
  std::string_view text;
};

class EverySettingKey : public ::testing::TestWithParam<DefaultCase> {};

TEST_P(EverySettingKey, HasItsDefaultWhenTheFileIsEmpty) {
  FakeStore store;
  const Settings settings = ReadSettings(store);
  const SettingKey* key = FindSettingKey(GetParam().key);
  ASSERT_NE(key, nullptr) << GetParam().key;
  EXPECT_EQ(SettingText(settings, *key), GetParam().text) << GetParam().key;
}

INSTANTIATE_TEST_SUITE_P(
    Defaults, EverySettingKey,
    ::testing::Values(
        DefaultCase{"HotkeyPlayMod", "0"}, DefaultCase{"HotkeyPlay", "19"},
        DefaultCase{"Time", "0"}, DefaultCase{"FontSize", "9"}, DefaultCase{"TextMode", "0"},
        DefaultCase{"Hide", "0"}, DefaultCase{"HotkeyVMod", "1"}, DefaultCase{"HotkeyV", "122"},
        DefaultCase{"HotkeyRecMod", "0"}, DefaultCase{"HotkeyRec", "122"},
        DefaultCase{"HotkeyStopMod", "0"}, DefaultCase{"HotkeyStop", "0"},
        DefaultCase{"Mouse", "-1"}, DefaultCase{"Move", "-1"}, DefaultCase{"MouCl", "0"},
        DefaultCase{"RecAct", "0"}, DefaultCase{"Stamp", "0"}, DefaultCase{"Balloon", "0"},
        DefaultCase{"Tray", "0"}, DefaultCase{"TreeIcon", "-1"}, DefaultCase{"Loop", "0"},
        DefaultCase{"LoopCnt", "1"}, DefaultCase{"Trace", "0"}, DefaultCase{"Top", "0"},
        DefaultCase{"RecKeyMouse", "0"}, DefaultCase{"RecKeyClick", "0"},
        DefaultCase{"DefMacro", ""}, DefaultCase{"Split", "1335"}, DefaultCase{"Hotkey", ""},
        DefaultCase{"rate", "0"}, DefaultCase{"Bundle2", "0"}, DefaultCase{"Linkage", "9"},
        DefaultCase{"EndNotifer", "0"}, DefaultCase{"Up", "0"}, DefaultCase{"Hits", "100"},
        DefaultCase{"Auto", ""}, DefaultCase{"WinState", "0"}, DefaultCase{"X", "0"},
        DefaultCase{"Y", "0"}, DefaultCase{"W", "5200"}, DefaultCase{"H", "6000"},
        DefaultCase{"UnicodeKeys", "0"}, DefaultCase{"ReleaseHeld", "-1"},
        DefaultCase{"DevToolsPort", "9222"}, DefaultCase{"Browser", ""},
        DefaultCase{"BrowserWaitMs", "30000"}, DefaultCase{"PreciseRec", "0"},
        DefaultCase{"HotkeyReleaseMs", "1000"}, DefaultCase{"WatchX", "0"},
        DefaultCase{"WatchY", "0"}, DefaultCase{"WatchW", "0"}, DefaultCase{"WatchH", "0"}));

TEST(SettingKeys, ListEveryKeyOnceInTheOrderStartUpReadsThem) {
  const auto keys = SettingKeys();
  ASSERT_EQ(keys.size(), 52u);
  EXPECT_EQ(keys.front().name, "HotkeyPlayMod");
  EXPECT_EQ(keys[21].name, "LoopCnt");
  EXPECT_EQ(keys.back().name, "WatchH");
  for (std::size_t i = 0; i < keys.size(); ++i)
    for (std::size_t j = i + 1; j < keys.size(); ++j) EXPECT_NE(keys[i].name, keys[j].name);
}

TEST(SettingKeys, KeepTheMisspelledEndNotifer) {
  EXPECT_NE(FindSettingKey("EndNotifer"), nullptr);
  EXPECT_EQ(FindSettingKey("EndNotifier"), nullptr);
}

struct BooleanCase {
  std::string_view key;
  std::string_view stored;
  bool on;
};

class BooleanSettings : public ::testing::TestWithParam<BooleanCase> {};

TEST_P(BooleanSettings, ReadAnyNonZeroAsOnExceptUpWhereOnlyOneCounts) {
  FakeStore store;
  store.values[std::string(GetParam().key)] = GetParam().stored;
  const Settings settings = ReadSettings(store);
  const bool on = GetParam().key == "Up" ? settings.up : settings.stamp;
  EXPECT_EQ(on, GetParam().on) << GetParam().key << "=" << GetParam().stored;
}

INSTANTIATE_TEST_SUITE_P(
    Rules, BooleanSettings,
    ::testing::Values(BooleanCase{"Stamp", "-1", true}, BooleanCase{"Stamp", "0", false},
                      BooleanCase{"Stamp", "1", true}, BooleanCase{"Stamp", "5", true},
                      BooleanCase{"Up", "1", true}, BooleanCase{"Up", "-1", false},
                      BooleanCase{"Up", "2", false}, BooleanCase{"Up", "0", false}));

TEST(ReadSettings, ReadsLoopCntOnlyWhenLoopIsOn) {
  FakeStore store;
  store.values["LoopCnt"] = "7";
  EXPECT_EQ(ReadSettings(store).loopCnt, 1);
  store.values["Loop"] = "-1";
  EXPECT_EQ(ReadSettings(store).loopCnt, 7);
}

TEST(ReadSettings, ReadsStringsAndIntegers) {
  FakeStore store;
  store.values["DefMacro"] = "C:\\Kestrelix\\Macro\\朝.ksx";
  store.values["Auto"] = "毎日,08:30:00,C:\\a.ksx";
  store.values["Hits"] = "250";
  store.values["Linkage"] = "8";
  const Settings settings = ReadSettings(store);
  EXPECT_EQ(settings.defMacro, "C:\\Kestrelix\\Macro\\朝.ksx");
  EXPECT_EQ(settings.autoRuns, "毎日,08:30:00,C:\\a.ksx");
  EXPECT_EQ(settings.hits, 250);
  EXPECT_EQ(settings.linkage, 8);
}

TEST(WriteSetting, WritesBooleansAsMinusOneAndUpAsOne) {
  FakeStore store;
  Settings settings;
  settings.stamp = true;
  settings.up = true;
  settings.tray = false;
  WriteSetting(store, settings, "Stamp");
  WriteSetting(store, settings, "Up");
  WriteSetting(store, settings, "Tray");
  EXPECT_EQ(store.values["Stamp"], "-1");
  EXPECT_EQ(store.values["Up"], "1");
  EXPECT_EQ(store.values["Tray"], "0");
}

TEST(WriteShutdownSettings, WritesInTheShutdownOrderAndSkipsWhatItMust) {
  FakeStore store;
  Settings settings;
  settings.winState = 2;
  WriteShutdownSettings(store, settings);
  const std::vector<std::string> expected = {
      "Mouse",    "MouCl", "Move", "RecAct", "Time", "Stamp", "Balloon",  "Tray",
      "TreeIcon", "Loop",  "Hide", "Trace",  "Top",  "Split", "WinState", "rate"};
  EXPECT_EQ(store.written, expected);
  // The watch window's placement once it has one.
  settings.watchW = 4000;
  store.written.clear();
  WriteShutdownSettings(store, settings);
  const std::vector<std::string> tail(store.written.end() - 4, store.written.end());
  EXPECT_EQ(tail, (std::vector<std::string>{"WatchX", "WatchY", "WatchW", "WatchH"}));
}

TEST(WriteShutdownSettings, WritesLoopCntAndThePlacementOfANormalWindow) {
  FakeStore store;
  Settings settings;
  settings.loop = true;
  settings.loopCnt = 12;
  settings.x = 300;
  WriteShutdownSettings(store, settings);
  const std::vector<std::string> tail(store.written.end() - 8, store.written.end());
  const std::vector<std::string> expected = {"Split", "LoopCnt", "WinState", "X",
                                             "Y",     "H",       "W",        "rate"};
  EXPECT_EQ(tail, expected);
  EXPECT_EQ(store.values["LoopCnt"], "12");
  EXPECT_EQ(store.values["X"], "300");
}

TEST(WriteOptionsSettings, WritesTheDialogsKeysOnly) {
  FakeStore store;
  WriteOptionsSettings(store, Settings{});
  // The options dialog has no control for UnicodeKeys, ReleaseHeld,
  // BrowserWaitMs or HotkeyReleaseMs; it writes back the values that were read.
  EXPECT_EQ(store.written.size(), 25u);
  EXPECT_EQ(store.written.back(), "HotkeyReleaseMs");
  EXPECT_EQ(store.written.front(), "HotkeyPlayMod");
  EXPECT_EQ(store.values.count("Mouse"), 0u);
  EXPECT_EQ(store.values["EndNotifer"], "0");
}

TEST(DeleteObsoleteSettings, RemovesBundleAndBundle1ButNotBundle2) {
  FakeStore store;
  store.values = {{"Bundle", "1"}, {"Bundle1", "1"}, {"Bundle2", "1"}};
  DeleteObsoleteSettings(store);
  EXPECT_EQ(store.values.count("Bundle"), 0u);
  EXPECT_EQ(store.values.count("Bundle1"), 0u);
  EXPECT_EQ(store.values["Bundle2"], "1");
}

}  // namespace
}  // namespace kx
