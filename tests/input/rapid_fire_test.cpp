// Rapid fire's state machine, fed by scripted sampling and repeat ticks on
// the simulated system: what starts and stops each mode, what it sends, and
// what the window is told.
#include "input/rapid_fire.h"

#include <gtest/gtest.h>

#include <optional>

#include "sim/sim_system.h"

namespace kx::test {
namespace {

constexpr int kA = 65;
constexpr int kB = 66;
constexpr int kAlt = 18;
constexpr int kF1 = 112;
constexpr int kF2 = 113;
constexpr int kF3 = 114;

class RapidFireTest : public ::testing::Test, public RapidFireHost {
 protected:
  void StartRepeatTimer(int intervalMs) override { timer = intervalMs; }
  void StopRepeatTimer() override { timer.reset(); }
  void ShowRapidStatus(std::string_view text) override { status = std::string(text); }

  void Hold(std::initializer_list<int> keys, bool down = true) {
    for (int vk : keys) sim.SetKeyDown(vk, down);
  }
  // The key and button events sent since the last call, as "65 down" and "ldown".
  std::vector<std::string> Sent() {
    std::vector<std::string> out;
    for (const auto& e : sim.trace().Events()) {
      if (e.ev == "keys")
        for (const auto& k : e.fields["keys"])
          out.push_back(std::to_string(k[0].get<int>()) + " " + k[1].get<std::string>());
      if (e.ev == "mouse")
        for (const auto& b : e.fields["buttons"]) out.push_back(b.get<std::string>());
    }
    sim.trace().Clear();
    return out;
  }

  sim::SimSystem sim;
  std::optional<int> timer;
  std::string status;
  RapidFire rapid{sim, sim, *this};
};

TEST_F(RapidFireTest, KeyModeRepeatsAPressedKeyUntilItIsPressedAgain) {
  rapid.SetMode(RapidMode::kKeyStartStop, 100);
  rapid.OnSampleTick(100);
  EXPECT_FALSE(timer);  // nothing held: nothing starts

  Hold({kA});
  const auto before = sim.NowMs();
  rapid.OnSampleTick(100);
  EXPECT_EQ(sim.NowMs() - before, RapidFire::kChooseDelayMs);
  EXPECT_EQ(rapid.Code(), kA);
  EXPECT_EQ(status, "A");
  EXPECT_EQ(timer, 100);
  // A press of about 120 ms has ended when the choosing pause is over.
  Hold({kA}, false);
  rapid.OnSampleTick(100);
  EXPECT_EQ(sim.NowMs() - before, RapidFire::kChooseDelayMs);

  rapid.OnRepeatTick(100);
  rapid.OnRepeatTick(100);
  EXPECT_EQ(Sent(), (std::vector<std::string>{"65 down", "65 up", "65 down", "65 up"}));

  // Another key takes over without restarting the timer.
  Hold({kB});
  rapid.OnSampleTick(40);
  Hold({kB}, false);
  EXPECT_EQ(status, "B");
  EXPECT_EQ(timer, 100);
  rapid.OnRepeatTick(100);
  EXPECT_EQ(Sent(), (std::vector<std::string>{"66 down", "66 up"}));

  // Pressing the repeated key again stops, after the debounce pause.
  Hold({kB});
  const auto stopAt = sim.NowMs();
  rapid.OnRepeatTick(100);
  EXPECT_EQ(sim.NowMs() - stopAt, RapidFire::kStopDelayMs);
  EXPECT_FALSE(timer);
  EXPECT_EQ(status, "");
  EXPECT_EQ(rapid.Code(), 0);
  EXPECT_TRUE(Sent().empty());
  Hold({kB}, false);

  // The next start reads the interval anew.
  Hold({kA});
  rapid.OnSampleTick(250);
  EXPECT_EQ(timer, 250);
}

TEST_F(RapidFireTest, APressSeenOnlyBySamplingStillStopsTheKeyRepeat) {
  rapid.SetMode(RapidMode::kKeyStartStop, 100);
  Hold({kA});
  rapid.OnSampleTick(100);
  Hold({kA}, false);
  rapid.OnRepeatTick(100);
  // Pressed and released between two repeats: the sampling tick saw it.
  Hold({kA});
  rapid.OnSampleTick(100);
  Hold({kA}, false);
  EXPECT_TRUE(timer);
  rapid.OnRepeatTick(100);
  EXPECT_FALSE(timer);
  EXPECT_EQ(status, "");
  // The next repeat starts afresh.
  Hold({kA});
  rapid.OnSampleTick(100);
  Hold({kA}, false);
  rapid.OnRepeatTick(100);
  EXPECT_TRUE(timer);
}

TEST_F(RapidFireTest, KeyModeIgnoresGenericModifiersAndRecordKeysAndTakesSidedOnesOnTheirPress) {
  rapid.SetMode(RapidMode::kKeyStartStop, 100);
  Hold({16, 17, 18, kF2});
  rapid.OnSampleTick(100, {kF2, 0});
  EXPECT_FALSE(timer);
  Hold({16, 17, 18, kF2}, false);

  Hold({162});  // LCtrl
  rapid.OnSampleTick(100);
  EXPECT_EQ(rapid.Code(), 162);
  EXPECT_EQ(status, "LCtrl Down");
  rapid.OnRepeatTick(100);  // held: the user's press stops it
  EXPECT_FALSE(timer);
  rapid.OnSampleTick(100);  // still held, but no new press
  EXPECT_FALSE(timer);
  // Of two keys down in one tick the higher code is taken.
  Hold({162}, false);
  Hold({kA, kB});
  rapid.OnSampleTick(100);
  EXPECT_EQ(rapid.Code(), kB);
}

TEST_F(RapidFireTest, MouseStartStopTogglesOnAltAndStopsOnAModifier) {
  rapid.SetMode(RapidMode::kMouseStartStop, 100);
  Hold({kF1});
  rapid.OnSampleTick(100);  // F1 without Alt: nothing
  EXPECT_FALSE(timer);

  Hold({kAlt});
  const auto before = sim.NowMs();
  rapid.OnSampleTick(100);
  EXPECT_EQ(sim.NowMs() - before, RapidFire::kStopDelayMs);
  EXPECT_EQ(rapid.Code(), kMouseLeftDown);
  EXPECT_EQ(status, "左クリック");
  EXPECT_EQ(timer, 100);
  Hold({kAlt, kF1}, false);
  rapid.OnRepeatTick(100);
  EXPECT_EQ(Sent(), (std::vector<std::string>{"ldown", "lup"}));

  // The same chord again switches it off and empties the status.
  Hold({kAlt, kF3, kF2});
  rapid.OnSampleTick(100);
  EXPECT_FALSE(timer);
  EXPECT_EQ(status, "");
  // And on again: F3 is tested before F2.
  rapid.OnSampleTick(70);
  EXPECT_EQ(rapid.Code(), kMouseRightDown);
  EXPECT_EQ(status, "右クリック");
  EXPECT_EQ(timer, 70);
  Hold({kAlt, kF3}, false);
  rapid.OnRepeatTick(70);
  EXPECT_EQ(Sent(), (std::vector<std::string>{"rdown", "rup"}));

  // Shift stops the clicking.
  Hold({16});
  rapid.OnRepeatTick(70);
  EXPECT_FALSE(timer);
  EXPECT_EQ(status, "");
  EXPECT_TRUE(Sent().empty());
}

TEST_F(RapidFireTest, PushModeClicksOnlyWhileTheChordIsHeld) {
  rapid.SetMode(RapidMode::kMousePush, 100);
  EXPECT_EQ(timer, 100);  // its timer runs from the start
  rapid.OnRepeatTick(100);
  EXPECT_TRUE(Sent().empty());

  Hold({kAlt, kF2, kF3});  // F2 is tested before F3 here
  rapid.OnRepeatTick(100);
  EXPECT_EQ(status, "中クリック");
  rapid.OnRepeatTick(100);
  EXPECT_EQ(Sent(), (std::vector<std::string>{"mdown", "mup", "mdown", "mup"}));

  // The status keeps the first name while the chord changes.
  Hold({kF1});
  rapid.OnRepeatTick(100);
  EXPECT_EQ(status, "中クリック");
  EXPECT_EQ(Sent(), (std::vector<std::string>{"ldown", "lup"}));

  Hold({kAlt, kF1, kF2, kF3}, false);
  rapid.OnRepeatTick(100);
  EXPECT_EQ(status, "");
  EXPECT_TRUE(Sent().empty());
  EXPECT_EQ(timer, 100);  // still watching

  // The interval follows Hits at every tick.
  rapid.OnRepeatTick(30);
  EXPECT_EQ(timer, 30);
}

TEST_F(RapidFireTest, StopAndModeChangesEndTheRepeatingAndStaleTicksDoNothing) {
  rapid.SetMode(RapidMode::kMousePush, 100);
  Hold({kAlt, kF1});
  rapid.OnRepeatTick(100);
  rapid.Stop();
  EXPECT_FALSE(timer);
  EXPECT_EQ(status, "");
  EXPECT_EQ(rapid.Mode(), RapidMode::kMousePush);
  Sent();
  rapid.OnRepeatTick(100);  // queued before the stop
  EXPECT_TRUE(Sent().empty());

  rapid.SetMode(RapidMode::kKeyStartStop, 100);
  EXPECT_FALSE(timer);
  rapid.SetMode(RapidMode::kOff, 100);
  rapid.OnSampleTick(100);
  rapid.OnRepeatTick(100);
  EXPECT_TRUE(Sent().empty());
}

}  // namespace
}  // namespace kx::test
