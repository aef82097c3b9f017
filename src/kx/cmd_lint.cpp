// kx explain and kx lint: what each line of a macro will do, and the traps
// it falls into, told without playing it.
#include <cstdio>
#include <iostream>
#include <optional>

#include "kx/commands.h"
#include "kx/macro_paths.h"
#include "player/macro_explain.h"
#include "player/macro_lint.h"
#include "sim/sim_system.h"
#include "text/macro_text.h"

namespace kx::cli {

namespace {

constexpr int kExitClean = 0;
constexpr int kExitWarnings = 1;
constexpr int kExitUnreadable = 2;

// The files are the real ones, looked up without regard to case as on
// Windows; the keyboard layout is the Japanese one the player types with.
struct MacroSource {
  sim::SimSystem sim;
  std::optional<std::string> text;
  explicit MacroSource(const std::string& file) {
    sim.UseRealFiles(true);
    text = ReadMacroFile(sim, file);
  }
};

}  // namespace

int Explain(const std::vector<std::string>& args) {
  if (args.size() != 1) {
    std::fputs("usage: kx explain FILE\n", stderr);
    return kExitUnreadable;
  }
  MacroSource source(args[0]);
  if (!source.text) {
    std::fprintf(stderr, "kx explain: cannot read %s\n", args[0].c_str());
    return kExitUnreadable;
  }
  for (const auto& line : ExplainMacro(*source.text, source.sim, source.sim))
    std::cout << FormatExplained(line) << "\n";
  return kExitClean;
}

int Lint(const std::vector<std::string>& args) {
  std::optional<std::string> appFolder;
  std::optional<std::string> file;
  bool unicodeKeys = false;
  for (size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--app-dir" && i + 1 < args.size()) {
      appFolder = args[++i];
    } else if (args[i] == "--unicode-keys") {
      unicodeKeys = true;
    } else if (!args[i].starts_with("--") && !file) {
      file = args[i];
    } else {
      file.reset();
      break;
    }
  }
  if (!file) {
    std::fputs("usage: kx lint [--app-dir DIR] [--unicode-keys] FILE\n", stderr);
    return kExitUnreadable;
  }
  MacroSource source(*file);
  if (!source.text) {
    std::fprintf(stderr, "kx lint: cannot read %s\n", file->c_str());
    return kExitUnreadable;
  }
  FilePort& files = source.sim;
  const LintContext context{
      MacroFolderOf(*file),
      JoinPath(files, appFolder ? *appFolder : DefaultAppFolder(*file), "Macro"), files, source.sim,
      unicodeKeys};
  const auto warnings = LintMacro(*source.text, context);
  for (const auto& w : warnings)
    std::cout << *file << ":" << w.line << ": warning: " << w.text << "\n";
  return warnings.empty() ? kExitClean : kExitWarnings;
}

}  // namespace kx::cli
