#include "sim/sim_system.h"

#include <gtest/gtest.h>

namespace kx::sim {
namespace {

TEST(SimSystem, WaitEndsJustPastItsDeadlineOrAtTheNextHotkey) {
  SimSystem sim;
  sim.WaitForMessageOrTimeout(80);
  EXPECT_EQ(sim.NowMs(), 80);
  EXPECT_GT(sim.NowUs(), 80'000);

  int delivered = 0;
  sim.SetHotkeySink([&](int id) { delivered = id; });
  sim.ScheduleHotkey(100, 258);
  sim.WaitForMessageOrTimeout(60'000);
  EXPECT_EQ(sim.NowMs(), 100);
  sim.PumpMessages();
  EXPECT_EQ(delivered, 258);
}

TEST(SimSystem, JapaneseLayoutAnswersLikeVkKeyScan) {
  SimSystem sim;
  EXPECT_EQ(sim.VkKeyScan('@'), 192);
  EXPECT_EQ(sim.VkKeyScan(':'), 186);
  EXPECT_EQ(sim.VkKeyScan('='), 0x100 | 189);
  EXPECT_EQ(sim.VkKeyScan('_'), 0x100 | 226);
  EXPECT_EQ(sim.VkKeyScan('a'), 65);
  EXPECT_EQ(sim.VkKeyScan('7'), 55);
  EXPECT_EQ(sim.VkKeyScan(U'あ'), -1);
  EXPECT_TRUE(sim.IsCharUpper('Q'));
  EXPECT_FALSE(sim.IsCharUpper('q'));
}

TEST(SimSystem, ToggleKeysFlipOnTheirPress) {
  SimSystem sim;
  EXPECT_EQ(sim.GetKeyState(20), 0);
  KeyRecord press[] = {{20, false}, {20, true}};
  sim.SendKeys(press);
  EXPECT_EQ(sim.GetKeyState(20), 1);
  EXPECT_EQ(sim.trace().Events().back().ToJson(),
            R"({"t":0,"ev":"keys","keys":[[20,"down"],[20,"up"]]})");
}

TEST(SimSystem, NowAddsTheVirtualClockToTheStartTime) {
  SimSystem sim;
  sim.SetStartTime({2024, 12, 31, 23, 59, 59, 500});
  sim.Sleep(600);
  const LocalTime t = sim.Now();
  EXPECT_EQ(t.year, 2025);
  EXPECT_EQ(t.month, 1);
  EXPECT_EQ(t.day, 1);
  EXPECT_EQ(t.second, 0);
  EXPECT_EQ(t.millisecond, 100);
}

TEST(Trace, EscapesTextAsJson) {
  EXPECT_EQ(JsonString("a\"b\\c\n\x01"), R"("a\"b\\c\n\u0001")");
  EXPECT_EQ(JsonString("日本"), "\"日本\"");
  EXPECT_EQ(JsonString("\xff"), "\"\xEF\xBF\xBD\"");
}

}  // namespace
}  // namespace kx::sim
