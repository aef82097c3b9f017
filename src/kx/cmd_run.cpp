// kx run --dry: plays a macro once on the simulated system and prints every
// effect as JSON Lines.
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>

#include "kx/commands.h"
#include "player/player.h"
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
    "  --balloon         show comment lines as balloons\n"
    "  --window C,T      a window of class C and title T exists (repeatable)\n"
    "  --clipboard TEXT  text on the clipboard at the start\n"
    "  --app-dir DIR     the program folder (its Macro folder is searched by mf)\n"
    "  --max-ms MS       end the play past this virtual time (default 86400000)\n"
    "  --max-lines N     end the play past this many lines (default 1000000)\n";

int RunUsage() {
  std::fputs(kRunUsage, stderr);
  return 2;
}

std::string DefaultAppFolder(const std::string& file) {
  auto folder = std::filesystem::absolute(std::u8string(file.begin(), file.end())).parent_path();
  if (folder.filename() == "Macro" || folder.filename() == "macro") folder = folder.parent_path();
  const std::u8string utf8 = folder.u8string();
  return std::string(utf8.begin(), utf8.end());
}

}  // namespace

int Run(const std::vector<std::string>& args) {
  bool dry = false;
  std::optional<std::string> file;
  sim::SimSystem sim;
  sim::SimView view(sim);
  Player player(sim.Ports(), view);
  std::optional<std::string> appFolder;
  double maxMs = 86'400'000;
  std::int64_t maxLines = 1'000'000;

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
    } else if (a == "--balloon") {
      player.Options().balloon = true;
    } else if (a == "--speed" || a == "--loops" || a == "--stop-at" || a == "--pause-at" ||
               a == "--notify" || a == "--max-ms" || a == "--max-lines") {
      const auto n = number();
      if (!n) return RunUsage();
      if (a == "--speed") player.Options().speedFactor = *n;
      if (a == "--loops") view.SetLoopCount(static_cast<int>(*n));
      if (a == "--stop-at") sim.ScheduleHotkey(static_cast<std::int64_t>(*n), kHotkeyPlay);
      if (a == "--pause-at") sim.ScheduleHotkey(static_cast<std::int64_t>(*n), kHotkeyPause);
      if (a == "--notify") player.Options().endNotifier = static_cast<int>(*n);
      if (a == "--max-ms") maxMs = *n;
      if (a == "--max-lines") maxLines = static_cast<std::int64_t>(*n);
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

  // A macro may loop for ever ("goto 1" as its last line): the dry run ends
  // it past a bound of virtual time or of lines run.
  bool limited = false;
  view.SetLineHook([&](std::int64_t linesRun) {
    if (linesRun > maxLines || static_cast<double>(sim.NowMs()) > maxMs) {
      limited = true;
      player.Abort();
    }
  });
  sim.SetHotkeySink([&](int id) { player.HandleHotkey(id); });
  sim.ResetClock();
  player.PlayOrStop();

  const char* reason = limited                                   ? "limit"
                       : player.LastEnd() == PlayEnd::kCompleted ? "completed"
                       : player.LastEnd() == PlayEnd::kStopped   ? "stopped"
                                                                 : "paused";
  sim.trace().Add(sim.NowMs(), "end",
                  std::string("\"reason\":\"") + reason +
                      "\",\"current_line\":" + std::to_string(player.CurrentLine()) +
                      ",\"cycles_left\":" + std::to_string(player.CyclesLeft()));
  std::cout << sim.trace().ToJsonLines();
  return 0;
}

}  // namespace kx::cli
