// Tidying recordings: fewer lines that press the same keys and buttons in the
// same order, every click at the same place, in the same play time.
#include "recorder/tidy.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "player/play_fixture.h"
#include "recorder/recorder.h"
#include "sim/sim_system.h"
#include "util/basic_text.h"

namespace kx::test {
namespace {

std::string Join(const std::vector<std::string>& lines) {
  std::string text;
  for (std::size_t i = 0; i < lines.size(); ++i) text += (i ? "\r\n" : "") + lines[i];
  return text;
}

std::size_t LineCount(const std::string& text) {
  return basic::Split(text, "\r\n").size();
}

struct TidyCase {
  const char* what;
  std::vector<std::string> recorded;
  std::vector<std::string> tidied;
  TidyOptions options = {};
};

TEST(TidyTest, RecorderLinesAreGatheredAndEveryOtherLineStaysAsWritten) {
  const TidyCase cases[] = {
      {"a pointer path comes to rest where it ends; its time goes into one wait",
       {"LMouse Up (1,1)", "MousePos(2,2)", "20", "MousePos(3,3)", "MousePos(4,4)", "30",
        "LMouse Down (4,4)"},
       {"LMouse Up (1,1)", "MousePos(4,4)", "58", "LMouse Down (4,4)"}},
      {"with --keep-moves the path stays and only its waits are gathered",
       {"MousePos(1,1)", "20", "30", "MouClPos(2,2)", "LMouse Down (2,2)"},
       {"MousePos(1,1)", "50", "MouClPos(2,2)", "LMouse Down (2,2)"},
       {.keepMoves = true}},
      {"typed keys, Shift held around one of them, become a key line",
       {"LShift Down", "120", "H", "80", "RShift Up", "150", "E", "130", "L", "140", "L", "120",
        "O", "Enter"},
       {"key Hello", "748", "Enter"}},
      {"blanks at the ends of the typing stay lines of their own",
       {"Space", "50", "A", "50", "1", "50", "Space"},
       {"Space", "50", "key a1", "100", "Space"}},
      {"after a long gap the typing goes on in a line of its own",
       {"A", "1500", "B", "20", "C"},
       {"A", "1500", "key bc", "20"}},
      {"keys the layout does not type as a character stay; runs of waits become one",
       {"100", "200", "Enter", "05", "50", "OEM(.)", "LShift Down", "LCtrl Down"},
       {"300", "Enter", "55", "OEM(.)", "LShift Down", "LCtrl Down"}},
      {"comments, commands, variables and loop lines end a stretch and stay",
       {"'memo", "A", "B", "<r 2>", "MousePos(1,1)", "MousePos(2,2)", "</r>", "#a = 1", "key #a",
        "10", "\t20", "beep"},
       {"'memo", "key ab", "16", "<r 2>", "MousePos(2,2)", "16", "</r>", "#a = 1", "key #a", "10",
        "\t20", "beep"}},
      {"nothing before the last goto target changes",
       {"A", "B", "goto 4", "C", "D", "E"},
       {"A", "B", "goto 4", "key cde", "16"}},
      {"a goto to a variable's line leaves the macro as it is",
       {"#n = 4", "A", "B", "goto #n"},
       {"#n = 4", "A", "B", "goto #n"}},
      {"the lines of a switch stay",
       {"<switch 1>", "<case 1>", "A", "B", "</switch>", "C", "D", "beep"},
       {"<switch 1>", "<case 1>", "A", "B", "</switch>", "key cd", "16", "beep"}},
      {"--min-wait leaves out the shorter waits",
       {"Enter", "20", "Enter", "300", "Enter"},
       {"Enter", "Enter", "300", "Enter"},
       {.minWaitMs = 100}},
  };
  sim::SimSystem sim;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const TidyResult result = TidyMacro(Join(c.recorded), sim, sim, c.options);
    EXPECT_EQ(result.text, Join(c.tidied));
    EXPECT_EQ(result.droppedWaits, c.options.minWaitMs > 0 ? 1 : 0);
  }
}

// A user at the recorder: the real Recorder on the simulated system, with
// waits and pointer moves on. The pointer's path reaches the mouse hook every
// few milliseconds; keys and buttons are sampled every 50 ms, and held long
// enough to be seen.
class Session {
 public:
  Session(unsigned seed, bool clientCoordinates) : random_(seed) {
    RecorderOptions options;
    options.time = true;
    options.move = true;
    options.mouCl = clientCoordinates;
    recorder_.Start(options, 0);
  }

  std::string Record(int actions) {
    for (int i = 0; i < actions; ++i) {
      const int what = Between(0, 9);
      if (what < 5) {
        MoveTo({Between(0, 1000), Between(0, 700)});
        Press(Between(0, 4) == 0 ? kRightButton : kLeftButton);
      } else if (what < 8) {
        MoveTo({Between(0, 1000), Between(0, 700)});
        Type(kPhrases[static_cast<std::size_t>(Between(0, std::size(kPhrases) - 1))]);
      } else if (what < 9) {
        text_ += recorder_.OnWheel(Between(0, 1) ? 120 : -240);
        Pass(Between(100, 400));
      } else {
        Pass(Between(1200, 4000));  // waiting for the program
      }
    }
    Pass(kTickMs);
    return text_;
  }

 private:
  static constexpr int kTickMs = 50;
  static constexpr int kLeftButton = 1, kRightButton = 2, kLShift = 160;
  static constexpr const char* kPhrases[] = {"Hello, World! 123", "report 2026", "Yes?", "a b  c",
                                             "Tokyo"};

  int Between(int low, int high) { return std::uniform_int_distribution(low, high)(random_); }

  // Time passes; the sampling timer ticks on its own beat.
  void Pass(int ms) {
    while (ms > 0) {
      const int step = std::min(ms, untilTick_);
      sim_.Sleep(step);
      ms -= step;
      untilTick_ -= step;
      if (untilTick_ == 0) {
        text_ += recorder_.Tick();
        untilTick_ = kTickMs;
      }
    }
  }
  void Hold(int vk, bool down) {
    sim_.SetKeyDown(vk, down);
    Pass(Between(60, 120));
  }
  void Press(int vk) {
    Hold(vk, true);
    Hold(vk, false);
  }
  void MoveTo(Point to) {
    const int steps = Between(3, 30);
    for (int i = 1; i <= steps; ++i) {
      const Point p{at_.x + (to.x - at_.x) * i / steps, at_.y + (to.y - at_.y) * i / steps};
      sim_.SetCursorPos(p);
      text_ += recorder_.OnMouseMove(p);
      Pass(Between(2, 20));
    }
    at_ = to;
  }
  // Each character on the Japanese layout: Shift is held around the key of
  // a capital or a symbol over a digit.
  void Type(std::string_view phrase) {
    for (char ch : phrase) {
      const std::int16_t code = sim_.VkKeyScan(static_cast<char32_t>(ch));
      const bool shift = (code & 0x100) != 0;
      if (shift) Hold(kLShift, true);
      Press(code & 0xFF);
      if (shift) Hold(kLShift, false);
      Pass(Between(20, 200));
    }
  }

  std::mt19937 random_;
  sim::SimSystem sim_;
  Recorder recorder_{sim_, sim_, sim_};
  std::string text_;
  int untilTick_ = kTickMs;
  Point at_{500, 350};
};

// What a play sent: every key event, every button and wheel event with the
// pointer's place at that moment, and how long the play took.
struct Played {
  std::vector<std::string> events;
  std::int64_t ms = 0;
};

Played Play(const std::string& text) {
  PlayFixture fixture;
  fixture.Play(text);
  Played played;
  std::string at = "(0,0)";
  for (const auto& e : fixture.sim.trace().Events()) {
    if (e.ev == "cursor") at = "(" + e.fields["x"].dump() + "," + e.fields["y"].dump() + ")";
    if (e.ev == "keys")
      for (const auto& key : e.fields["keys"]) played.events.push_back(key.dump());
    if (e.ev == "mouse")
      for (const auto& button : e.fields["buttons"]) played.events.push_back(button.dump() + at);
    if (e.ev == "wheel") played.events.push_back(e.fields["delta"].dump() + at);
  }
  played.ms = fixture.sim.NowMs();
  return played;
}

// The recording as it stands, and inside the lines a user adds by hand: a
// comment, a loop around part of it, a goto over a line.
std::vector<std::string> Macros(const std::string& recorded) {
  const std::vector<std::string> lines = basic::Split(recorded, "\r\n");
  const auto third = static_cast<std::ptrdiff_t>(lines.size() / 3);
  std::vector<std::string> edited = {"goto 3", "beep", "'recorded"};
  edited.insert(edited.end(), lines.begin(), lines.begin() + third);
  edited.push_back("<r 2>");
  edited.insert(edited.end(), lines.begin() + third, lines.begin() + 2 * third);
  edited.push_back("</r>");
  edited.insert(edited.end(), lines.begin() + 2 * third, lines.end());
  return {recorded, Join(edited)};
}

TEST(TidyContractTest, RecordedSessionsPlayTheSameEventsInTheSameTimeInFewerLines) {
  constexpr int kActions = 40;
  sim::SimSystem layout;
  for (unsigned seed = 1; seed <= 4; ++seed) {
    for (bool client : {false, true}) {
      for (const std::string& macro : Macros(Session(seed, client).Record(kActions))) {
        const Played before = Play(macro);
        for (bool keepMoves : {false, true}) {
          SCOPED_TRACE("seed " + std::to_string(seed) + (client ? " client" : " screen") +
                       (keepMoves ? " keeping moves" : ""));
          const std::string tidied = TidyMacro(macro, layout, layout, {keepMoves}).text;
          const Played after = Play(tidied);
          EXPECT_EQ(after.events, before.events);
          EXPECT_LT(std::llabs(after.ms - before.ms) * 100, before.ms);
          // Moves are most of a recording: without them it is far shorter.
          EXPECT_LT(LineCount(tidied) * (keepMoves ? 1 : 3), LineCount(macro));
        }
      }
    }
  }
}

}  // namespace
}  // namespace kx::test
