// kx findimage: where a template image is on a screenshot, found as the
// screen waits find it (variation, transparency, the DPI of both).
#include <cstdio>
#include <optional>

#include "kx/commands.h"
#include "kx/screen_image.h"
#include "screen/screen_search.h"
#include "sim/sim_system.h"
#include "util/basic_text.h"

namespace kx::cli {

namespace {

constexpr const char* kUsage =
    "usage: kx findimage SCREEN TEMPLATE [--variation N] [--screen-dpi N]\n"
    "  prints x,y (the centre of the top-most, then left-most match) and exits 0;\n"
    "  exits 1 when there is no match, 2 when an image cannot be read\n";
constexpr int kMinDpi = 24;
constexpr int kMaxDpi = 960;

int Usage() {
  std::fputs(kUsage, stderr);
  return 2;
}

}  // namespace

int FindImage(const std::vector<std::string>& args) {
  std::vector<std::string> files;
  int variation = 0;
  std::optional<int> screenDpi;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (a == "--variation" || a == "--screen-dpi") {
      if (i + 1 >= args.size()) return Usage();
      const auto n = basic::ToLong(basic::Trim(args[++i]));
      if (!n) return Usage();
      if (a == "--variation") {
        if (*n < 0 || *n > kMaxVariation) return Usage();
        variation = *n;
      } else {
        if (*n < kMinDpi || *n > kMaxDpi) return Usage();
        screenDpi = *n;
      }
    } else if (a.starts_with("--")) {
      return Usage();
    } else {
      files.push_back(a);
    }
  }
  if (files.size() != 2) return Usage();
  const auto screen = ReadImageFile(files[0]);
  const auto image = ReadImageFile(files[1]);
  for (size_t i = 0; i < 2; ++i) {
    if (!(i == 0 ? screen : image)) {
      std::fprintf(stderr, "kx findimage: cannot read %s as a PNG or BMP image\n",
                   files[i].c_str());
      return 2;
    }
  }
  // The screenshot is one monitor of the simulated screen, at its own DPI.
  sim::SimSystem sim;
  sim.AddMonitor(
      {Rect{0, 0, screen->image.width, screen->image.height}, screenDpi.value_or(screen->dpi)});
  sim.ShowImage(screen->image, {0, 0});
  ScreenImageSearch search(image->image, image->dpi, variation);
  const SearchResult result = search.Find(sim, std::nullopt);
  if (result.outcome != SearchOutcome::kFound) return 1;
  std::printf("%d,%d\n", result.centre.x, result.centre.y);
  return 0;
}

}  // namespace kx::cli
