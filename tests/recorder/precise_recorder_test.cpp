// The hook-driven recorder: hook events in, the lines they give out.
#include "recorder/precise_recorder.h"

#include <gtest/gtest.h>

#include <string>

#include "sim/sim_system.h"

namespace kx {
namespace {

constexpr int kA = 65, kB = 66, k1 = 49, kF9 = 120, kF11 = 122;
constexpr int kLButton = 1, kRButton = 2, kLShift = 160, kLCtrl = 162;
constexpr WindowHandle kOwnWindow = 77;

class PreciseRecorderTest : public ::testing::Test {
 protected:
  PreciseRecorderTest() {
    target = sim.AddWindow({0, "Target", "t", {100, 50, 500, 450}, {8, 31}});
    sim.AddWindow({kOwnWindow, "Kestrelix", "Kestrelix"});
    sim.SetForegroundWindow(target);
  }
  void Begin(RecorderOptions options = {}) {
    options.hotkeys = {{0, kF11}, {6, k1}};  // F11 records, Ctrl+Shift+1 plays a macro
    recorder.Start(options, kOwnWindow);
  }
  // Events `ms` apart on the hook's clock, as the keyboard reports them.
  void Down(int vk, int ms = 0) { Key(vk, kMsgKeyDown, ms); }
  void Up(int vk, int ms = 0) { Key(vk, kMsgKeyUp, ms); }
  // The hook's event, and the key state the system shows once it has passed.
  void Key(int vk, int message, int ms) {
    time += ms;
    recorder.OnKey({vk, message, false, time});
    sim.SetKeyDown(vk, message == kMsgKeyDown);
  }
  void Click(int vk, bool down, Point at, int ms = 0) {
    time += ms;
    recorder.OnButton({vk, down, at, time});
    sim.SetKeyDown(vk, down);
  }

  sim::SimSystem sim;
  PreciseRecorder recorder{sim, sim, sim};
  WindowHandle target = 0;
  std::uint32_t time = 0;
};

TEST_F(PreciseRecorderTest, EveryPressIsALineInTheOrderTheyCame) {
  Begin();
  // Two keys overlapping within a few milliseconds, the same key twice, a
  // held key repeating, a Shift character: sampling would lose some.
  Down(kA), Down(kB, 3), Up(kA, 2), Up(kB, 2);
  Down(kA, 5), Up(kA, 4), Down(kA, 5), Down(kA, 30), Down(kA, 30), Up(kA, 5);
  Down(kLShift, 5), Down(k1, 5), Up(k1, 5), Up(kLShift, 5);
  Down(kLCtrl, 5), Down(kLCtrl, 30), Up(kLCtrl, 5);
  EXPECT_EQ(recorder.Drain(),
            "A\r\nB\r\nA\r\nA\r\nLShift Down\r\n1\r\nLShift Up\r\nLCtrl Down\r\nLCtrl Up\r\n");
  EXPECT_EQ(recorder.Drain(), "");
}

TEST_F(PreciseRecorderTest, ExcludedKeysRecordKeysAndHotkeysAreNotWrittenGenericModifiersAre) {
  RecorderOptions options;
  options.recKeyMouse = kF9;
  Begin(options);
  for (int vk : {240, 242, 245, 246, 251, kF9, kF11, 255}) Down(vk), Up(vk);
  // Ctrl+Shift+1 is a hotkey, Ctrl+F11 is not.
  Down(kLCtrl), Down(kLShift), Down(k1), Up(k1), Up(kLShift), Down(kF11), Up(kF11), Up(kLCtrl);
  // Input sent as the generic keys is named by its side.
  recorder.OnKey({17, kMsgKeyDown, false, time, true});
  recorder.OnKey({17, kMsgKeyUp, false, time, true});
  Down(16), Up(16);
  EXPECT_EQ(recorder.Drain(),
            "LCtrl Down\r\nLShift Down\r\nLShift Up\r\nF11\r\nLCtrl Up\r\nRCtrl Down\r\n"
            "RCtrl Up\r\nLShift Down\r\nLShift Up\r\n");
}

TEST_F(PreciseRecorderTest, ButtonsAtTheirOwnEventsPositionInOrderWithMovesAndKeys) {
  RecorderOptions options;
  options.move = false;
  Begin(options);
  // A 5 ms click, a drag, a key between: each line where its event was.
  sim.SetCursorPos({999, 999});
  Click(kLButton, true, {300, 200}), Click(kLButton, false, {300, 200}, 5);
  Click(kRButton, true, {310, 210}, 20), Down(kA, 1), Click(kRButton, false, {400, 260}, 30);
  recorder.OnWheel(-120, time);
  EXPECT_EQ(recorder.Drain(),
            "LMouse Down (300,200)\r\nLMouse Up (300,200)\r\nRMouse Down (310,210)\r\nA\r\n"
            "RMouse Up (400,260)\r\nWheel -120\r\n");

  options.move = true;
  options.mouCl = true;
  Begin(options);
  Click(kLButton, true, {300, 200});
  recorder.OnMouseMove({301, 200}, time);
  recorder.OnMouseMove({301, 200}, time);
  Click(kLButton, false, {302, 201});
  // 300 - 100 - 8, 200 - 50 - 31
  EXPECT_EQ(recorder.Drain(),
            "LMouCl Down (192,119)\r\nMouClPos(193,119)\r\nLMouCl Up (194,120)\r\n");
}

TEST_F(PreciseRecorderTest, ClicksOnTheOwnWindowAndButtonsWithMouseOffAreNotWritten) {
  RecorderOptions options;
  options.mouse = false;
  options.recKeyClick = kF9;
  Begin(options);
  Click(kLButton, true, {1, 1}), Click(kLButton, false, {1, 1});
  // Holding the click key records buttons, in the order of the events.
  Down(kF9), Click(kLButton, true, {2, 2}), Up(kF9), Click(kLButton, false, {3, 3});
  EXPECT_EQ(recorder.Drain(), "LMouse Down (2,2)\r\nLMouse Up (3,3)\r\n");

  Begin();
  Click(kLButton, true, {4, 4});
  // The click brought the program's window in front before the lines were
  // made: neither its down nor its up is written.
  sim.SetForegroundWindow(kOwnWindow);
  Click(kLButton, false, {4, 4});
  Click(kRButton, true, {5, 5}), Click(kRButton, false, {5, 5});
  EXPECT_EQ(recorder.Drain(), "RMouse Down (5,5)\r\nRMouse Up (5,5)\r\n");
}

TEST_F(PreciseRecorderTest, ReleasesTheHookMissedAreWrittenOnceTheSystemShowsThem) {
  Begin();
  Down(kLShift), Down(kA), Click(kLButton, true, {7, 8});
  EXPECT_EQ(recorder.Drain(), "LShift Down\r\nA\r\nLMouse Down (7,8)\r\n");
  // Held still: nothing to write.
  EXPECT_EQ(recorder.Drain(), "");
  // Let go while the hook did not answer: no event came.
  for (int vk : {kLShift, kA, kLButton}) sim.SetKeyDown(vk, false);
  sim.SetCursorPos({9, 9});
  EXPECT_EQ(recorder.Drain(), "LShift Up\r\nLMouse Up (9,9)\r\n");
  // A's next press is a press, not a repeat of a key still held.
  Down(kA);
  EXPECT_EQ(recorder.Drain(), "A\r\n");
}

TEST_F(PreciseRecorderTest, WaitsAreTheTimesBetweenTheEvents) {
  RecorderOptions options;
  options.time = true;
  options.move = false;
  sim.Sleep(100);
  time = sim.TickCount();
  Begin(options);
  // From the start; then 12 ms; 9 ms or less is dropped and counts from
  // there; the up of a plain key writes nothing and so waits nothing.
  Down(kA, 40), Up(kA, 3), Down(kB, 12), Up(kB, 2), Down(kA, 5), Up(kA, 50);
  Click(kLButton, true, {1, 1}, 700), Click(kLButton, false, {1, 1}, 5);
  EXPECT_EQ(recorder.Drain(),
            "40\r\nA\r\n15\r\nB\r\nA\r\n750\r\nLMouse Down (1,1)\r\nLMouse Up (1,1)\r\n");
}

TEST_F(PreciseRecorderTest, EventsNotToBeRecordedStillKeepTheKeysRight) {
  Begin();
  // Rapid fire held A and the left button: nothing written, and the user's
  // next press of A is a press, not a repeat.
  recorder.OnKey({kA, kMsgKeyDown, false, 0}, false);
  recorder.OnButton({kLButton, true, {1, 1}, 0}, false);
  recorder.OnKey({kA, kMsgKeyUp, false, 0}, false);
  recorder.OnButton({kLButton, false, {1, 1}, 0}, false);
  Down(kA);
  // A held modifier is let go in balance.
  Down(kLShift);
  recorder.OnKey({kLShift, kMsgKeyUp, false, time}, false);
  EXPECT_EQ(recorder.Drain(), "A\r\nLShift Down\r\nLShift Up\r\n");
}

}  // namespace
}  // namespace kx
