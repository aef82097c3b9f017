// Plays arbitrary bytes as a macro file on the simulated system, once, with
// small bounds: the file is decoded as the editor reads it, and it may call
// itself and a second file with "mf". Every play must end (by its last line,
// a failure or a bound), never crash, hang or grow without end.
#include <cstddef>
#include <cstdint>
#include <string>

#include "player/player.h"
#include "sim/play_limits.h"
#include "sim/sim_system.h"
#include "sim/sim_view.h"
#include "text/macro_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  kx::sim::SimSystem sim;
  sim.AddFile("/kestrelix/Macro/self.ksx", bytes);
  sim.AddFile("/kestrelix/Macro/sub.ksx", "beep\r\n#n = #n + 1\r\n<r 2>\r\nkey ab\r\n</r>");
  sim.AddWindow({0, "Notepad", "memo", {10, 20, 300, 400}, {8, 31}, false});
  sim.SetClipboard("clip");
  kx::sim::SimView view(sim);
  kx::Player player(sim.Ports(), view);
  player.Options().balloon = size % 2 == 0;
  player.Options().trace = true;
  const kx::sim::PlayLimits limits{20'000, 500, 500};
  const kx::sim::PlayLimiter limiter(sim, view, player, limits);
  sim.SetHotkeySink([&](int id) { player.HandleHotkey(id); });
  view.SetText(*kx::ReadMacroFile(sim, "/kestrelix/Macro/self.ksx"));
  player.PlayOrStop();
  // A macro that paused itself resumes once, as the pause hotkey would.
  if (player.LastEnd() == kx::PlayEnd::kPaused && !limiter.Reached()) player.sLoopPlay();
  (void)sim.trace().ToJsonLines();
  return 0;
}
