#include "recorder/recorder.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "sim/sim_hooks.h"
#include "sim/sim_system.h"

namespace kx {
namespace {

constexpr int kA = 65, kB = 66, kC = 67, kLButton = 1, kRButton = 2, kMButton = 4;
constexpr int kLShift = 160, kLCtrl = 162, kRAlt = 165;
constexpr WindowHandle kOwnWindow = 77;

// Ticks of the sampling timer over a script of key states: each step sets
// the keys that are down during it, lets 50 ms pass and ticks once.
class RecorderTest : public ::testing::Test {
 protected:
  void Begin(RecorderOptions options = {}) { recorder.Start(options, kOwnWindow); }
  std::string Tick(std::initializer_list<int> down) {
    for (int vk = 1; vk <= 255; ++vk) sim.SetKeyDown(vk, false);
    for (int vk : down) sim.SetKeyDown(vk, true);
    sim.Sleep(50);
    const std::string out = recorder.Tick();
    text += out;
    return out;
  }
  std::string Run(std::initializer_list<std::initializer_list<int>> steps) {
    for (auto step : steps) Tick(step);
    return text;
  }

  sim::SimSystem sim;
  Recorder recorder{sim, sim, sim};
  std::string text;
};

TEST_F(RecorderTest, KeysAreWrittenOnceAtTheirPressEdge) {
  Begin();
  // Pressing and releasing A: one line, no release line; a long hold
  // (auto-repeat included) changes nothing.
  EXPECT_EQ(Run({{kA}, {kA}, {kA}, {kA}, {}, {}}), "A\r\n");
  // A second press after an empty tick is a second line.
  EXPECT_EQ(Run({{kA}, {}}), "A\r\nA\r\n");
  // Keys the vocabulary does not name write nothing.
  EXPECT_EQ(Tick({255}), "");
}

TEST_F(RecorderTest, ADoublePressWithoutAnEmptyTickIsOneLine) {
  Begin();
  // Released and pressed again within one tick: the key was down at both
  // samples, so the second press is not seen.
  EXPECT_EQ(Run({{kA}, {kA}, {}}), "A\r\n");
}

TEST_F(RecorderTest, ACtrlChordGivesDownKeyAndUpInTheirOwnTicks) {
  Begin();
  EXPECT_EQ(Run({{kLCtrl}, {kLCtrl, kC}, {kLCtrl, kC}, {}}), "LCtrl Down\r\nC\r\nLCtrl Up\r\n");
}

TEST_F(RecorderTest, OnePressPerTickTheHighestCodeWins) {
  Begin();
  EXPECT_EQ(Tick({kA, kB}), "B\r\n");
  // A stays held but B's line is still the last one: nothing new.
  EXPECT_EQ(Tick({kA, kB}), "");
  EXPECT_EQ(Tick({kA}), "A\r\n");
}

TEST_F(RecorderTest, OverlappingHoldsAreReleasedOnePerTickInTrackedOrder) {
  Begin();
  Run({{kLShift}, {kLShift, kLCtrl}, {kLShift, kLCtrl, kRAlt}});
  EXPECT_EQ(text, "LShift Down\r\nLCtrl Down\r\nRAlt Down\r\n");
  text.clear();
  // All three let go at once: LCtrl comes before LShift before RAlt.
  EXPECT_EQ(Run({{}, {}, {}, {}}), "LCtrl Up\r\nLShift Up\r\nRAlt Up\r\n");
  // Overlapping the other way round: the first released is written first.
  text.clear();
  EXPECT_EQ(Run({{kLCtrl}, {kLCtrl, kLShift}, {kLShift}, {}}),
            "LCtrl Down\r\nLShift Down\r\nLCtrl Up\r\nLShift Up\r\n");
}

TEST_F(RecorderTest, PendingReleasesAreWrittenWithoutFurtherInput) {
  Begin();
  Run({{kLCtrl}, {kLCtrl, kLShift}, {}});
  // No input since the keys went up: the ticks still write the releases
  // still owed, one each.
  EXPECT_EQ(recorder.Tick(), "LShift Up\r\n");
  EXPECT_EQ(recorder.Tick(), "");
  EXPECT_EQ(text, "LCtrl Down\r\nLShift Down\r\nLCtrl Up\r\n");
  // A key held without new input is still seen, and a new press after it.
  Tick({kA});
  EXPECT_EQ(recorder.Tick(), "");
  EXPECT_EQ(Tick({kA, kB}), "B\r\n");
}

TEST_F(RecorderTest, APressTakesPrecedenceOverAPendingRelease) {
  Begin();
  // LCtrl is let go in the tick that presses A: the release waits for a
  // tick without a press line.
  EXPECT_EQ(Run({{kLCtrl}, {kA}, {}}), "LCtrl Down\r\nA\r\nLCtrl Up\r\n");
}

TEST_F(RecorderTest, ExcludedKeysAreNeverWritten) {
  RecorderOptions options;
  options.recKeyMouse = kB;
  options.recKeyClick = kC;
  Begin(options);
  EXPECT_EQ(Run({{16}, {17}, {18}, {240}, {242}, {245}, {246}, {251}, {kB}, {kC}, {}}), "");
}

TEST_F(RecorderTest, MouseButtonsInScreenOrClientCoordinates) {
  const WindowHandle target = sim.AddWindow({0, "Target", "t", {100, 50, 500, 450}, {8, 31}});
  sim.SetForegroundWindow(target);
  Begin();
  sim.SetCursorPos({300, 200});
  EXPECT_EQ(Tick({kLButton}), "LMouse Down (300,200)\r\n");
  sim.SetCursorPos({310, 210});
  EXPECT_EQ(Tick({}), "LMouse Up (310,210)\r\n");
  EXPECT_EQ(Run({{kRButton}, {}, {kMButton}, {}}),
            "LMouse Down (300,200)\r\nLMouse Up (310,210)\r\nRMouse Down (310,210)\r\n"
            "RMouse Up (310,210)\r\nMMouse Down (310,210)\r\nMMouse Up (310,210)\r\n");

  RecorderOptions client;
  client.mouCl = true;
  Begin(client);
  text.clear();
  // 310 - 100 - 8, 210 - 50 - 31
  EXPECT_EQ(Run({{kLButton}, {}}), "LMouCl Down (202,129)\r\nLMouCl Up (202,129)\r\n");
}

TEST_F(RecorderTest, ClicksOnTheProgramsOwnWindowAreNotRecorded) {
  sim.AddWindow({kOwnWindow, "Kestrelix", "Kestrelix"});
  sim.SetForegroundWindow(kOwnWindow);
  Begin();
  // Even a key held with the click is not written in that tick.
  EXPECT_EQ(Run({{kLButton, kA}, {kLButton}, {}}), "");
  // The right button is recorded there.
  EXPECT_EQ(Run({{kRButton}, {}}), "RMouse Down (0,0)\r\nRMouse Up (0,0)\r\n");
}

TEST_F(RecorderTest, TheClickKeyRecordsButtonsWhileMouseIsOff) {
  RecorderOptions options;
  options.mouse = false;
  options.recKeyClick = 120;  // F9
  Begin(options);
  EXPECT_EQ(Run({{kLButton}, {}}), "");
  recorder.OnKey(120, kMsgKeyDown, false);
  EXPECT_EQ(Run({{kLButton, 120}, {120}}), "LMouse Down (0,0)\r\nLMouse Up (0,0)\r\n");
  recorder.OnKey(120, kMsgKeyUp, false);
  EXPECT_EQ(Run({{kLButton}, {}}), "LMouse Down (0,0)\r\nLMouse Up (0,0)\r\n");
}

TEST_F(RecorderTest, WaitsOverNineMillisecondsAreWritten) {
  RecorderOptions options;
  options.time = true;
  Begin(options);
  sim.SetKeyDown(kA, true);
  sim.Sleep(10);
  EXPECT_EQ(recorder.Tick(), "10\r\nA\r\n");
  sim.SetKeyDown(kA, false);
  EXPECT_EQ(recorder.Tick(), "");
  sim.SetKeyDown(kB, true);
  sim.Sleep(9);
  EXPECT_EQ(recorder.Tick(), "B\r\n");
  sim.SetKeyDown(kB, false);
  sim.SetKeyDown(kC, true);
  sim.Sleep(5);
  EXPECT_EQ(recorder.Tick(), "C\r\n");
  // The wait counts from the last line written, hook lines included.
  sim.Sleep(30);
  EXPECT_EQ(recorder.OnWheel(120), "30\r\nWheel 120\r\n");
  sim.Sleep(1234);
  sim.SetKeyDown(kC, false);
  EXPECT_EQ(recorder.Tick(), "");
  sim.SetKeyDown(kA, true);
  EXPECT_EQ(recorder.Tick(), "1234\r\nA\r\n");
}

TEST_F(RecorderTest, WithoutTimeNoWaitIsWritten) {
  Begin();
  sim.Sleep(500);
  EXPECT_EQ(Tick({kA}), "A\r\n");
}

TEST_F(RecorderTest, ActiveWindowLines) {
  const WindowHandle target = sim.AddWindow({0, "Notepad", "無題 - メモ帳"});
  const WindowHandle desktop = sim.AddWindow({0, "Progman", "Program Manager"});
  const WindowHandle other = sim.AddWindow({0, "Target", "t"});
  sim.AddWindow({kOwnWindow, "Kestrelix", "Kestrelix"});
  sim.SetForegroundWindow(target);
  Begin();
  EXPECT_EQ(recorder.WindowTick(), "");  // RecAct off

  RecorderOptions options;
  options.recAct = true;
  Begin(options);
  EXPECT_EQ(recorder.WindowTick(), "W Notepad,無題 - メモ帳\r\n");
  EXPECT_EQ(recorder.WindowTick(), "");
  for (WindowHandle w : {kOwnWindow, desktop, WindowHandle{0}}) {
    sim.SetForegroundWindow(w);
    EXPECT_EQ(recorder.WindowTick(), "");
  }
  sim.SetForegroundWindow(other);
  EXPECT_EQ(recorder.WindowTick(), "W Target,t\r\n");

  options.stamp = true;
  Begin(options);
  sim.SetStartTime({2026, 3, 5, 9, 5, 3, 0});
  sim.ResetClock();
  EXPECT_EQ(recorder.WindowTick(), "'2026/03/05 9:05:03\r\nW Target,t\r\n");
}

TEST_F(RecorderTest, PointerMovesAndWheelFromTheHooks) {
  const WindowHandle target = sim.AddWindow({0, "Target", "t", {100, 50, 500, 450}, {8, 31}});
  sim.SetForegroundWindow(target);
  Begin();
  EXPECT_EQ(recorder.OnMouseMove({5, 6}), "MousePos(5,6)\r\n");
  EXPECT_EQ(recorder.OnMouseMove({5, 6}), "");
  EXPECT_EQ(recorder.OnWheel(-240), "Wheel -240\r\n");

  RecorderOptions options;
  options.move = false;
  options.mouCl = true;
  options.recKeyMouse = 164;  // LAlt: its held flag follows the event's Alt flag
  Begin(options);
  EXPECT_EQ(recorder.OnMouseMove({200, 100}), "");
  recorder.OnKey(164, kMsgSysKeyDown, true);
  EXPECT_EQ(recorder.OnMouseMove({200, 100}), "MouClPos(92,19)\r\n");
  recorder.OnKey(164, kMsgKeyUp, false);
  EXPECT_EQ(recorder.OnMouseMove({201, 100}), "");
  // A key that is no record key changes nothing.
  recorder.OnKey(kA, kMsgKeyDown, false);
  EXPECT_EQ(recorder.OnMouseMove({202, 100}), "");
}

TEST_F(RecorderTest, TheKeyboardHookCountsThePressesNoTickWrote) {
  RecorderOptions options;
  options.recKeyClick = kC;
  options.hotkeys = {{0, 122}};  // F11
  Begin(options);
  auto hook = [&](int vk, bool down) { recorder.CountHookKey(vk, down ? kMsgKeyDown : kMsgKeyUp); };
  // A and B typed within one tick: the tick writes B only.
  hook(kA, true), hook(kB, true), hook(kA, false), hook(kB, false);
  Tick({kA, kB});
  // A held and repeating, written once: no loss.
  hook(kA, true), hook(kA, true), hook(kA, true);
  Tick({kA}), Tick({kA}), hook(kA, false), Tick({});
  // Unnamed, excluded and record keys, and the record hotkey, were never
  // to be written; an event not to be counted still keeps the keys right.
  for (int vk : {255, 16, 240, kC, 122}) hook(vk, true), hook(vk, false);
  recorder.CountHookKey(kB, kMsgKeyDown, false);
  recorder.CountHookKey(kB, kMsgKeyUp, false);
  EXPECT_EQ(text, "B\r\nA\r\n");
  EXPECT_EQ(recorder.UnrecordedPresses(), 1);
  // LShift tapped between two ticks is lost too.
  hook(kLShift, true), hook(kLShift, false);
  EXPECT_EQ(recorder.UnrecordedPresses(), 2);
}

TEST(SimRecorderHooks, EventsReachTheSinkOnlyWhileInstalled) {
  struct Sink final : RecorderHookSink {
    void OnHookMouseMove(Point p, std::uint32_t) override {
      events.push_back("move " + std::to_string(p.x));
    }
    void OnHookWheel(int d, std::uint32_t) override {
      events.push_back("wheel " + std::to_string(d));
    }
    void OnHookKey(const HookKey& k) override { events.push_back("key " + std::to_string(k.vk)); }
    void OnHookButton(const HookButton& b) override {
      events.push_back("button " + std::to_string(b.vk) + (b.down ? " down" : " up"));
    }
    std::vector<std::string> events;
  } sink;
  sim::SimSystem sim;
  sim::SimRecorderHooks hooks(sim);
  hooks.MoveMouse({1, 1});
  hooks.Install(sink);
  hooks.MoveMouse({2, 2});
  hooks.TurnWheel(120);
  hooks.Key(65, kMsgKeyDown);
  hooks.Press(kLButton, true);
  hooks.Remove();
  hooks.TurnWheel(120);
  EXPECT_EQ(sink.events,
            (std::vector<std::string>{"move 2", "wheel 120", "key 65", "button 1 down"}));
}

}  // namespace
}  // namespace kx
