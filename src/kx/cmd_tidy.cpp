// kx tidy: a recorded macro with fewer lines that plays the same.
#include <cstdio>
#include <optional>
#include <string>

#include "kx/commands.h"
#include "recorder/tidy.h"
#include "sim/sim_system.h"
#include "text/macro_text.h"
#include "util/basic_text.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace kx::cli {

namespace {

constexpr int kExitDone = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUnreadable = 2;

int TidyUsage() {
  std::fputs("usage: kx tidy FILE [--keep-moves] [--min-wait MS]\n", stderr);
  return kExitUnreadable;
}

}  // namespace

// Prints the tidied macro as UTF-8 with its CR LF line ends, so that the
// output saved as a file is the macro itself. What the tidying gave up goes
// to standard error.
int Tidy(const std::vector<std::string>& args) {
  std::optional<std::string> file;
  TidyOptions options;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--keep-moves") {
      options.keepMoves = true;
    } else if (args[i] == "--min-wait" && i + 1 < args.size()) {
      const auto ms = basic::ToLong(args[++i]);
      if (!ms || *ms < 0) return TidyUsage();
      options.minWaitMs = *ms;
    } else if (!args[i].starts_with("--") && !file) {
      file = args[i];
    } else {
      return TidyUsage();
    }
  }
  if (!file) return TidyUsage();

  // The files are the real ones, as the dry run sees them; the keyboard
  // layout is the Japanese one the player types with.
  sim::SimSystem sim;
  sim.UseRealFiles(true);
  const auto text = ReadMacroFile(sim, *file);
  if (!text) {
    std::fprintf(stderr, "kx tidy: cannot read %s\n", file->c_str());
    return kExitUnreadable;
  }
  const TidyResult result = TidyMacro(*text, sim, sim, options);
  if (result.droppedWaits > 0)
    std::fprintf(stderr, "kx tidy: left out %d wait(s) shorter than %lld ms; the play is shorter\n",
                 result.droppedWaits, options.minWaitMs);
#ifdef _WIN32
  _setmode(_fileno(stdout), _O_BINARY);
#endif
  std::fwrite(result.text.data(), 1, result.text.size(), stdout);
  return std::fflush(stdout) == 0 ? kExitDone : kExitFailed;
}

}  // namespace kx::cli
