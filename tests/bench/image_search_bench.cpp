// Time per search of the image search the screen waits run, on a desktop-
// like 1920x1080 screen with a 48x48 template: found exactly, found within a
// variation of 32 (the screen shows it slightly off), and absent. With
// KX_IMAGE_BENCH_DIR set, the pictures are also written there as PNG, so
// that tests/bench/image_search.sh can time OpenCV on the very same images.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>

#include "screen/image_file.h"
#include "screen/image_match.h"

namespace {

using kx::Pixel;
using kx::PixelImage;

constexpr int kScreenW = 1920;
constexpr int kScreenH = 1080;
constexpr int kSize = 48;

struct Random {
  std::uint32_t state;
  std::uint32_t Next() {
    state = state * 1664525u + 1013904223u;
    return state >> 8;
  }
  int Below(int n) { return static_cast<int>(Next() % static_cast<std::uint32_t>(n)); }
};

void Fill(PixelImage& image, int left, int top, int width, int height, Pixel colour) {
  for (int y = std::max(0, top); y < std::min(image.height, top + height); ++y)
    for (int x = std::max(0, left); x < std::min(image.width, left + width); ++x)
      image.At(x, y) = colour;
}

// An icon: a rounded shape of a few colours with a dark outline and a glint.
PixelImage Icon(std::uint32_t seed) {
  Random r{seed};
  PixelImage icon(kSize, kSize, 0xFFF0F0F0u);
  const Pixel body = 0xFF000000u | r.Next();
  const Pixel accent = 0xFF000000u | r.Next();
  for (int y = 4; y < kSize - 4; ++y)
    for (int x = 4; x < kSize - 4; ++x) {
      const int dx = x - kSize / 2;
      const int dy = y - kSize / 2;
      const int d = dx * dx + dy * dy;
      if (d < 19 * 19) icon.At(x, y) = d > 17 * 17 ? 0xFF202020u : (dy < 0 ? body : accent);
    }
  Fill(icon, 14, 14, 6, 4, 0xFFFFFFFFu);
  return icon;
}

// A desktop: a gradient background, windows with title bars and lines of
// "text", and a row of icons along the left, the searched one among them.
struct Scene {
  PixelImage screen{kScreenW, kScreenH};
  PixelImage icon = Icon(7);
  PixelImage absent = Icon(8);

  Scene() {
    Random r{1};
    for (int y = 0; y < kScreenH; ++y)
      for (int x = 0; x < kScreenW; ++x)
        screen.At(x, y) =
            0xFF000000u | static_cast<Pixel>(30 + y / 9) << 8 | static_cast<Pixel>(90 + x / 16);
    for (int w = 0; w < 6; ++w) {
      const int left = 120 + r.Below(1200);
      const int top = 40 + r.Below(500);
      const int width = 400 + r.Below(400);
      const int height = 300 + r.Below(300);
      Fill(screen, left, top, width, height, 0xFFFFFFFFu);
      Fill(screen, left, top, width, 30, 0xFF2B579Au);
      for (int line = top + 45; line < top + height - 20; line += 18)
        for (int x = left + 10; x < left + width - 20; x += 7)
          if (r.Below(5))
            Fill(screen, x, line, 1 + r.Below(5), 10, 0xFF000000u | r.Below(60) * 0x010101u);
    }
    for (int i = 0; i < 12; ++i) Paste(Icon(100 + i), 20, 20 + i * 80);
    Paste(icon, 1500, 900);
    // The same icon drawn slightly off, as another renderer would.
    PixelImage off = icon;
    for (Pixel& p : off.pixels) p = (p & 0xFFE0E0E0u) + 0x00101010u;
    Paste(off, 1200, 700);
  }
  void Paste(const PixelImage& picture, int left, int top) {
    for (int y = 0; y < picture.height; ++y)
      for (int x = 0; x < picture.width; ++x) screen.At(left + x, top + y) = picture.At(x, y);
  }
};

const Scene& TheScene() {
  static const Scene scene = [] {
    Scene s;
    if (const char* dir = std::getenv("KX_IMAGE_BENCH_DIR")) {
      auto write = [&](const std::string& name, const PixelImage& image) {
        const kx::Bytes png = kx::EncodePng(image, 96);
        std::ofstream(std::string(dir) + "/" + name, std::ios::binary)
            .write(reinterpret_cast<const char*>(png.data()),
                   static_cast<std::streamsize>(png.size()));
      };
      write("screen.png", s.screen);
      write("icon.png", s.icon);
      PixelImage off = s.icon;
      for (Pixel& p : off.pixels) p = (p & 0xFFE0E0E0u) + 0x00101010u;
      write("icon_off.png", off);
      write("absent.png", s.absent);
    }
    return s;
  }();
  return scene;
}

void FindImage(benchmark::State& state, bool present, int variation) {
  const Scene& scene = TheScene();
  const kx::ImageTemplate image(present ? scene.icon : scene.absent);
  const kx::PixelView view = scene.screen.View();
  std::optional<kx::Point> found;
  for (auto _ : state) {
    found = kx::FindTemplate(view, image, variation);
    benchmark::DoNotOptimize(found);
  }
  // A benchmark that does not find what it should measures the wrong thing.
  if (found.has_value() != present) state.SkipWithError("wrong result");
}

BENCHMARK_CAPTURE(FindImage, exact_found, true, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindImage, variation32_found, true, 32)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindImage, exact_absent, false, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(FindImage, variation32_absent, false, 32)->Unit(benchmark::kMillisecond);

}  // namespace
