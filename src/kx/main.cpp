// kx: the command-line tool. Dry-run playback on the simulated system, the
// expression evaluator, the encoding tools, and a browser page through its
// DevTools port, one sub-command each.
#include <cstdio>
#include <string>
#include <vector>

#include "kx/arguments.h"
#include "kx/commands.h"
#include "kx_version.h"

namespace {

struct SubCommand {
  const char* name;
  int (*run)(const std::vector<std::string>& args);
  const char* usage;
};

constexpr SubCommand kSubCommands[] = {
    {"run", kx::cli::Run,
     "run --dry [--speed F] [--loops N] [--stop-at MS] [--screen FILE[@X,Y]]... FILE"},
    {"eval", kx::cli::Eval,
     "eval [--var NAME=VALUE]... [--now \"YYYY/MM/DD HH:MM:SS\"] [--clipboard TEXT] EXPR"},
    {"detect", kx::cli::Detect, "detect FILE"},
    {"decode", kx::cli::Decode, "decode FILE"},
    {"save", kx::cli::Save, "save FILE   (UTF-8 text on standard input)"},
    {"explain", kx::cli::Explain, "explain FILE"},
    {"lint", kx::cli::Lint, "lint [--app-dir DIR] [--unicode-keys] FILE"},
    {"tidy", kx::cli::Tidy, "tidy FILE [--keep-moves] [--min-wait MS]"},
    {"findimage", kx::cli::FindImage,
     "findimage SCREEN TEMPLATE [--variation N] [--screen-dpi N]   (prints x,y of the match)"},
    {"keynames", kx::cli::KeyNames, "keynames FILE   (the key-name list shipped with the program)"},
    {"page", kx::cli::Page,
     "page --port N LINE | --dump | --ready | --eval EXPR | --set INDEX VALUE |\n"
     "       --check INDEX 0|1 | --submit FORM | --submit-of INDEX   (a browser's DevTools port)"},
};

int Usage() {
  std::fputs("usage:\n  kx --version\n", stderr);
  for (const auto& c : kSubCommands) std::fprintf(stderr, "  kx %s\n", c.usage);
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> args = kx::cli::Utf8Arguments(argc, argv);
  if (args.empty()) return Usage();
  const std::string name = args.front();
  args.erase(args.begin());
  if (name == "--version" && args.empty()) {
    std::puts("Kestrelix " KX_VERSION_STRING);
    return 0;
  }
  for (const auto& c : kSubCommands)
    if (name == c.name) return c.run(args);
  return Usage();
}
