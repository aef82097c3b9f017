// No key or mouse button stays down behind a play that was cut short: the
// input layer keeps a ledger of what a macro holds and lets go of it when
// the play is stopped, paused or fails, and when the program ends.
#include <gtest/gtest.h>

#include <set>

#include "gui_fixture.h"
#include "input/key_ledger.h"

namespace kx::test {
namespace {

// What the trace left held down: key codes, and "l", "r", "m" for buttons.
std::set<std::string> HeldAfter(const sim::Trace& trace) {
  std::set<std::string> held;
  for (const auto& e : trace.Events()) {
    if (e.ev == "keys") {
      for (const auto& k : e.fields["keys"]) {
        if (!k[0].is_number()) continue;
        const std::string vk = std::to_string(k[0].get<int>());
        if (k[1] == "down")
          held.insert(vk);
        else
          held.erase(vk);
      }
    } else if (e.ev == "mouse") {
      for (const auto& b : e.fields["buttons"]) {
        const std::string word = b.get<std::string>();
        const std::string button = word.substr(0, 1);
        if (word.substr(1) == "down")
          held.insert(button);
        else
          held.erase(button);
      }
    }
  }
  return held;
}

constexpr char kDrag[] =
    "LCtrl Down\r\nLShift Down\r\nLMouse Down (10,10)\r\n60000\r\n"
    "LMouse Up (10,10)\r\nLShift Up\r\nLCtrl Up";

class HeldKeysTest : public GuiFixture, public ::testing::Test {
 protected:
  void Start(const std::string& ini = "") {
    if (!ini.empty()) WriteIni(ini);
    controller.StartUp();
  }
  void PlayStoppedAt(std::int64_t ms, int hotkey = kHotkeyPlay) {
    DuringPlay(sim.NowMs() + ms, [this, hotkey] { controller.OnHotkey(hotkey); });
    controller.OnHotkey(kHotkeyPlay);
  }
};

TEST_F(HeldKeysTest, AStoppedOrPausedDragLeavesNothingDown) {
  Start();
  view.SetEditorText(kDrag);
  PlayStoppedAt(300);
  EXPECT_LT(sim.NowMs(), 1000);
  EXPECT_TRUE(HeldAfter(sim.trace()).empty());
  // The keys are let go of the last pressed first, then the button.
  const auto keys = sim.trace().OfKind("keys");
  EXPECT_EQ(keys.back().fields["keys"].size(), 2u);
  EXPECT_EQ(sim.trace().Events().back().ev, "mouse");

  sim.trace().Clear();
  PlayStoppedAt(300, kHotkeyPause);
  EXPECT_EQ(controller.player().LastEnd(), PlayEnd::kPaused);
  EXPECT_TRUE(HeldAfter(sim.trace()).empty());
}

TEST_F(HeldKeysTest, WithReleaseHeldOffOnlyUpLetsGoAndOnlyOfTheModifiers) {
  Start("ReleaseHeld=0\r\nUp=1\r\n");
  view.SetEditorText(kDrag);
  PlayStoppedAt(300);
  EXPECT_EQ(HeldAfter(sim.trace()), (std::set<std::string>{"l"}));

  GuiFixture plain;
  plain.WriteIni("ReleaseHeld=0\r\n");
  plain.controller.StartUp();
  plain.view.SetEditorText(kDrag);
  plain.DuringPlay(300, [&] { plain.controller.OnHotkey(kHotkeyPlay); });
  plain.controller.OnHotkey(kHotkeyPlay);
  EXPECT_EQ(HeldAfter(plain.sim.trace()).size(), 3u);
}

TEST_F(HeldKeysTest, ACompletedPlayKeepsWhatTheMacroHoldsUntilTheProgramEnds) {
  Start();
  view.SetEditorText("LCtrl Down\r\nRMouse Down (1,1)");
  controller.OnHotkey(kHotkeyPlay);
  EXPECT_EQ(controller.player().LastEnd(), PlayEnd::kCompleted);
  EXPECT_EQ(HeldAfter(sim.trace()).size(), 2u);
  controller.RequestClose();
  EXPECT_TRUE(HeldAfter(sim.trace()).empty());
}

TEST_F(HeldKeysTest, AFailedPassLetsGo) {
  Start();
  view.SetEditorText("LAlt Down\r\nMMouse Down (1,1)\r\ngoto x\r\nLAlt Up");
  controller.OnHotkey(kHotkeyPlay);
  EXPECT_TRUE(HeldAfter(sim.trace()).empty());
}

TEST(KeyLedger, TracksWhatTheSystemTookOnly) {
  KeyLedger ledger;
  const KeyRecord keys[] = {{65, false}, {65, false}, {0, false, u'あ'}, {66, false}, {65, true}};
  ledger.Note(keys);
  ASSERT_EQ(ledger.KeyReleases().size(), 1u);
  EXPECT_EQ(ledger.KeyReleases()[0], (KeyRecord{66, true}));
  // A record may carry a button's down and up together: a click holds nothing.
  const MouseRecord clicks[] = {
      {0, 0, kMouseLeftDown | kMouseLeftUp}, {0, 0, kMouseRightDown}, {0, 0, kMouseMiddleDown}};
  ledger.Note(clicks);
  EXPECT_EQ(ledger.ButtonReleases(), (std::vector<std::uint32_t>{kMouseRightUp, kMouseMiddleUp}));
  ledger.Clear();
  EXPECT_TRUE(ledger.Empty());

  // Events the system refused are not held.
  sim::SimSystem sim;
  InputQueue queue(sim);
  sim.BlockInput(true);
  queue.QueueKey(67, false);
  queue.FlushKeys();
  EXPECT_TRUE(queue.Held().Empty());
}

}  // namespace
}  // namespace kx::test
