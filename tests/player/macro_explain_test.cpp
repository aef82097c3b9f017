#include "player/macro_explain.h"

#include <gtest/gtest.h>

#include "sim/sim_system.h"

namespace kx {
namespace {

std::vector<std::string> Explain(const std::string& text) {
  sim::SimSystem sim;
  sim.AddFile("/files/readme.txt", "x");
  std::vector<std::string> out;
  for (const auto& line : ExplainMacro(text, sim, sim)) out.push_back(FormatExplained(line));
  return out;
}

TEST(MacroExplain, EachLineGetsItsFormArgumentAndWhatItPresses) {
  const std::string text =
      "loop 3\r\n"
      "250\r\n"
      "5\r\n"
      "key Ab\r\n"
      "keys ctrl+c\r\n"
      "LShift Down\r\n"
      "notepad\r\n"
      "/\r\n"
      "printscreen\r\n"
      "beep x\r\n"
      "  \r\n"
      "#a = 1 + 2\r\n"
      "<switch #a>\r\n"
      "<case 3>\r\n"
      "</switch>\r\n"
      "w Notepad,Title,500\r\n"
      "msgbox Hello World\r\n"
      "/files/readme.txt\r\n"
      "1e16\r\n"
      "-50\r\n"
      "key 漢";
  EXPECT_EQ(Explain(text),
            (std::vector<std::string>{
                "1: loop-count \"loop 3\" -> 3 cycles",
                "2: wait \"250\" -> 250 ms",
                "3: key-line \"5\" -> opens it with the shell if it can, else key 53",
                "4: key \"Ab\" -> keys 16+65 66",
                "5: keys \"ctrl+c\" -> keys 17+67",
                "6: key-line \"lshift down\" -> opens it with the shell if it can, "
                "else key 16 down",
                "7: key-line \"notepad\" -> opens it with the shell if it can, else "
                "key 78",
                "8: key-line \"/\" -> key 111",
                "9: key-line \"printscreen\" -> opens it with the shell if it can, "
                "else key 44, then 100 ms",
                "10: key-line \"beep x\" -> opens it with the shell if it can, else "
                "key 66",
                "11: empty",
                "12: assignment \"#a = 1 + 2\"",
                "13: switch-value \"#a\"",
                "14: case \"3\"",
                "15: end-switch",
                "16: window \"notepad,title,500\"",
                "17: msgbox \"Hello World\"",
                "18: file \"/files/readme.txt\"",
                "19: wait \"1e16\" -> 2147483647 ms",
                "20: wait \"-50\" -> 0 ms",
                "21: key \"漢\" -> keys -",
            }));
}

TEST(MacroExplain, ModifierPseudoCodesNameTheKeyAndTheDirection) {
  EXPECT_EQ(Explain("x\r\nctrl up\r\nalt down\r\nwin up"),
            (std::vector<std::string>{
                "1: key-line \"x\" -> opens it with the shell if it can, else key 88",
                "2: key-line \"ctrl up\" -> opens it with the shell if it can, else key 17 up",
                "3: key-line \"alt down\" -> opens it with the shell if it can, else key 18 down",
                "4: key-line \"win up\" -> opens it with the shell if it can, else key 91 up",
            }));
}

}  // namespace
}  // namespace kx
