#include "gui/player_settings.h"

#include <gtest/gtest.h>

#include "player/play_speed.h"
#include "settings/ini_store.h"
#include "sim/sim_system.h"

namespace kx {
namespace {

Settings FromIni(const std::string& body) {
  sim::SimSystem files;
  files.AddFile("/app/setting.ini", "[Macro]\r\n" + body);
  IniStore store(files, "/app/setting.ini");
  return ReadSettings(store);
}

TEST(PlayerSettings, AFreshStartPlaysAtNormalSpeedWithoutNotification) {
  const Settings s = FromIni("");
  const PlayerOptions o = PlayerOptionsFromSettings(s);
  EXPECT_EQ(o.endNotifier, 0);
  EXPECT_FALSE(o.releaseModifiers);
  EXPECT_EQ(o.speedFactor, 1);
  EXPECT_FALSE(o.trace);
  EXPECT_FALSE(o.balloon);
  EXPECT_FALSE(o.unicodeKeys);
  EXPECT_EQ(LoopCountFromSettings(s), 1);
  EXPECT_TRUE(PlayHotkeyFromSettings(s).Registered());
  EXPECT_EQ(PlayHotkeyFromSettings(s).key, 19);
}

TEST(PlayerSettings, StoredPreferencesReachThePlayer) {
  const Settings s = FromIni(
      "EndNotifer=3\r\nUp=1\r\nrate=5\r\nTrace=-1\r\nBalloon=-1\r\n"
      "Loop=-1\r\nLoopCnt=12\r\nHotkeyPlayMod=2\r\nHotkeyPlay=80\r\n");
  const PlayerOptions o = PlayerOptionsFromSettings(s);
  EXPECT_EQ(o.endNotifier, 3);
  EXPECT_TRUE(o.releaseModifiers);
  EXPECT_EQ(o.speedFactor, 8);
  EXPECT_TRUE(o.trace);
  EXPECT_TRUE(o.balloon);
  EXPECT_EQ(LoopCountFromSettings(s), 12);
  EXPECT_EQ(PlayHotkeyFromSettings(s).modifiers, 2);
  EXPECT_EQ(PlayHotkeyFromSettings(s).key, 80);
}

TEST(PlayerSettings, OddValuesFallBackSafely) {
  const Settings s = FromIni("Up=-1\r\nrate=9\r\nLoop=0\r\nLoopCnt=50\r\nHotkeyPlay=0\r\n");
  EXPECT_FALSE(PlayerOptionsFromSettings(s).releaseModifiers);  // only 1 counts for Up
  EXPECT_EQ(PlayerOptionsFromSettings(s).speedFactor, 1);
  EXPECT_EQ(LoopCountFromSettings(s), 1);
  EXPECT_FALSE(PlayHotkeyFromSettings(s).Registered());
}

TEST(PlayerSettings, TheLoopCountBoxReadsAPastedNonNumberAsOne) {
  const std::pair<std::string_view, int> cases[] = {
      {"3", 3}, {"0", 0}, {"9999", 9999}, {"abc", 1}, {"", 1}, {"1x", 1}, {"12345", 9999},
  };
  for (const auto& [text, count] : cases) EXPECT_EQ(LoopCountFromText(text), count) << text;
}

TEST(PlaySpeeds, MenuOrderGivesTheFactors) {
  const double expected[] = {1, 0.5, 0.25, 2, 4, 8};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(SpeedFactorFromRate(i), expected[i]);
  EXPECT_EQ(SpeedFactorFromRate(-1), 1);
}

TEST(PlayerSettings, UnicodeKeysIsOnForAnyNonZeroValue) {
  EXPECT_TRUE(PlayerOptionsFromSettings(FromIni("UnicodeKeys=1\r\n")).unicodeKeys);
  EXPECT_TRUE(PlayerOptionsFromSettings(FromIni("UnicodeKeys=-1\r\n")).unicodeKeys);
  EXPECT_FALSE(PlayerOptionsFromSettings(FromIni("UnicodeKeys=0\r\n")).unicodeKeys);
}

TEST(PlayerSettings, DevToolsPortIsPassedAndAPortOutsideTcpsRangeKeepsTheDefault) {
  EXPECT_EQ(PlayerOptionsFromSettings(FromIni("")).devToolsPort, 9222);
  EXPECT_EQ(PlayerOptionsFromSettings(FromIni("DevToolsPort=9333\r\n")).devToolsPort, 9333);
  EXPECT_EQ(PlayerOptionsFromSettings(FromIni("DevToolsPort=0\r\n")).devToolsPort, 9222);
  EXPECT_EQ(PlayerOptionsFromSettings(FromIni("DevToolsPort=70000\r\n")).devToolsPort, 9222);
}

TEST(PlayerSettings, BrowserIsPassedAndAWaitOfNothingKeepsTheDefault) {
  const PlayerOptions set = PlayerOptionsFromSettings(
      FromIni("Browser=C:\\Tools\\browser.cmd\r\nBrowserWaitMs=5000\r\n"));
  EXPECT_EQ(set.browser, "C:\\Tools\\browser.cmd");
  EXPECT_EQ(set.browserWaitMs, 5000);
  EXPECT_EQ(PlayerOptionsFromSettings(FromIni("")).browserWaitMs, 30000);
  EXPECT_EQ(PlayerOptionsFromSettings(FromIni("BrowserWaitMs=0\r\n")).browserWaitMs, 30000);
  EXPECT_EQ(PlayerOptionsFromSettings(FromIni("BrowserWaitMs=x\r\n")).browserWaitMs, 30000);
}

}  // namespace
}  // namespace kx
