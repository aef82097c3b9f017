// kx run --dry: plays a macro once on the simulated system and prints every
// effect as JSON Lines.
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <limits>
#include <optional>
#include <set>
#include <string>

#include "kx/commands.h"
#include "kx/macro_paths.h"
#include "player/line_gate.h"
#include "kx/screen_image.h"
#include "player/player.h"
#include "sim/play_limits.h"
#include "sim/sim_system.h"
#include "sim/sim_view.h"
#include "text/macro_text.h"
#include "util/basic_text.h"

namespace kx::cli {

namespace {

constexpr const char* kRunUsage =
    "usage: kx run --dry [options] FILE\n"
    "  --speed F         wait factor (1, 0.5, 0.25, 2, 4, 8)\n"
    "  --loops N         the loop-count box (default 1)\n"
    "  --stop-at MS      press the play hotkey at MS virtual ms (stops the play)\n"
    "  --pause-at MS     press the pause/resume hotkey at MS virtual ms\n"
    "  --notify N        end notification: 0 none, 1 beep, 2 dialog, 3 flash\n"
    "  --up              release the modifier keys at the end\n"
    "  --keep-held       a stopped play leaves held keys down (ReleaseHeld=0)\n"
    "  --balloon         show comment lines as balloons\n"
    "  --window C,T      a window of class C and title T exists (repeatable)\n"
    "  --clipboard TEXT  text on the clipboard at the start\n"
    "  --refuse-input    the system takes no key or button event\n"
    "  --unicode-keys    type untypeable characters as Unicode (UnicodeKeys=1)\n"
    "  --app-dir DIR     the program folder (its Macro folder is searched by mf)\n"
    "  --break N[,N...]  before each of these lines (from 1) trace the variables\n"
    "                    as a debugger's breakpoint would show them, and go on\n"
    "  --screen FILE[@X,Y]  a monitor showing the PNG or BMP image, its top-left corner\n"
    "                    at X,Y of the virtual screen (repeatable, one per monitor)\n"
    "  --max-ms MS       end the play past this virtual time (default 86400000)\n"
    "  --max-lines N     end the play past this many lines (default 1000000)\n"
    "  --max-events N    end the play past this many effects (default 1000000)\n";

// A number from the command line as an integer of type T, held inside its
// range (NaN counts as 0).
template <typename T>
T Clamped(double n) {
  if (!(n == n)) return 0;
  const double low = static_cast<double>(std::numeric_limits<T>::min());
  const double high = static_cast<double>(std::numeric_limits<T>::max()) / 2;
  return static_cast<T>(std::clamp(n, low, high));
}

// Breakpoints of a dry run: where the debugger would pause, the trace gets
// what its watch would show, and the play goes on.
class BreakTracer final : public LineGate {
 public:
  BreakTracer(sim::SimSystem& sim, const Player& player) : sim_(sim), player_(player) {}
  std::set<int>& lines() { return lines_; }

  bool MayPauseBefore(int index) const override { return lines_.count(index) > 0; }
  bool PauseBefore(int index) override {
    sim::Json vars = sim::Json::object();
    for (const auto& v : player_.Variables().Entries()) vars[v.name] = v.value;
    sim_.trace().Add(sim_.NowMs(), "break",
                     {{"line", index + 1},
                      {"vars", std::move(vars)},
                      {"current", player_.Value().ToText()},
                      {"cycles_left", player_.CyclesLeft()}});
    return false;
  }

 private:
  sim::SimSystem& sim_;
  const Player& player_;
  std::set<int> lines_;
};

// "3,7,12": line numbers from 1, each at least 1.
bool ParseBreakLines(const std::string& list, std::set<int>& lines) {
  for (const std::string& item : basic::Split(list, ",")) {
    const auto n = basic::ToLong(basic::Trim(item));
    if (!n || *n < 1) return false;
    lines.insert(*n - 1);
  }
  return true;
}

int RunUsage() {
  std::fputs(kRunUsage, stderr);
  return 2;
}

}  // namespace

int Run(const std::vector<std::string>& args) {
  bool dry = false;
  std::optional<std::string> file;
  sim::SimSystem sim;
  sim::SimView view(sim);
  Player player(sim.Ports(), view);
  std::optional<std::string> appFolder;
  sim::PlayLimits limits;
  BreakTracer breaks(sim, player);

  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    auto value = [&]() -> std::optional<std::string> {
      if (i + 1 >= args.size()) return std::nullopt;
      return args[++i];
    };
    auto number = [&]() -> std::optional<double> {
      auto v = value();
      return v ? basic::ToDouble(*v) : std::nullopt;
    };
    if (a == "--dry") {
      dry = true;
    } else if (a == "--up") {
      player.Options().releaseModifiers = true;
    } else if (a == "--keep-held") {
      player.Options().releaseHeld = false;
    } else if (a == "--balloon") {
      player.Options().balloon = true;
    } else if (a == "--unicode-keys") {
      player.Options().unicodeKeys = true;
    } else if (a == "--refuse-input") {
      sim.BlockInput(true);
    } else if (a == "--speed" || a == "--loops" || a == "--stop-at" || a == "--pause-at" ||
               a == "--notify" || a == "--max-ms" || a == "--max-lines" || a == "--max-events") {
      const auto n = number();
      if (!n) return RunUsage();
      if (a == "--speed") player.Options().speedFactor = *n;
      if (a == "--loops") view.SetLoopCount(Clamped<int>(*n));
      if (a == "--stop-at") sim.ScheduleHotkey(Clamped<std::int32_t>(*n), kHotkeyPlay);
      if (a == "--pause-at") sim.ScheduleHotkey(Clamped<std::int32_t>(*n), kHotkeyPause);
      if (a == "--notify") player.Options().endNotifier = Clamped<int>(*n);
      if (a == "--max-ms") limits.maxMs = *n;
      if (a == "--max-lines") limits.maxLines = Clamped<std::int64_t>(*n);
      if (a == "--max-events")
        limits.maxEvents = static_cast<std::size_t>(Clamped<std::int64_t>(std::max(*n, 0.0)));
    } else if (a == "--window") {
      const auto v = value();
      if (!v) return RunUsage();
      const auto comma = v->find(',');
      sim::SimWindow w;
      w.className = v->substr(0, comma);
      if (comma != std::string::npos) w.title = v->substr(comma + 1);
      sim.AddWindow(w);
    } else if (a == "--clipboard") {
      const auto v = value();
      if (!v) return RunUsage();
      sim.SetClipboard(*v);
    } else if (a == "--break") {
      const auto v = value();
      if (!v || !ParseBreakLines(*v, breaks.lines())) return RunUsage();
    } else if (a == "--screen") {
      const auto v = value();
      if (!v) return RunUsage();
      const PlacedImage placed = ParsePlacedImage(*v);
      auto image = ReadImageFile(placed.file);
      if (!image) {
        std::fprintf(stderr, "kx run: cannot read %s as a PNG or BMP image\n", placed.file.c_str());
        return 1;
      }
      const Point at = placed.at;
      sim.AddMonitor(
          {Rect{at.x, at.y, at.x + image->image.width, at.y + image->image.height}, image->dpi});
      sim.ShowImage(std::move(image->image), at);
    } else if (a == "--app-dir") {
      appFolder = value();
      if (!appFolder) return RunUsage();
    } else if (!a.starts_with("--") && !file) {
      file = a;
    } else {
      return RunUsage();
    }
  }
  if (!dry || !file) return RunUsage();

  sim.UseRealFiles(true);
  sim.SetAppFolder(appFolder ? *appFolder : DefaultAppFolder(*file));
  const auto text = ReadMacroFile(sim, *file);
  if (!text) {
    std::fprintf(stderr, "kx run: cannot read %s\n", file->c_str());
    return 1;
  }
  view.SetText(*text);

  const sim::PlayLimiter limiter(sim, view, player, limits);
  sim.SetHotkeySink([&](int id) { player.HandleHotkey(id); });
  if (!breaks.lines().empty()) player.SetLineGate(&breaks);
  sim.ResetClock();
  player.PlayOrStop();

  const char* reason = limiter.Reached()                         ? "limit"
                       : player.LastEnd() == PlayEnd::kCompleted ? "completed"
                       : player.LastEnd() == PlayEnd::kStopped   ? "stopped"
                                                                 : "paused";
  sim.trace().Add(sim.NowMs(), "end",
                  {{"reason", reason},
                   {"current_line", player.CurrentLine()},
                   {"cycles_left", player.CyclesLeft()}});
  std::cout << sim.trace().ToJsonLines();
  return 0;
}

}  // namespace kx::cli
