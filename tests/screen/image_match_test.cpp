#include "screen/image_match.h"

#include <gtest/gtest.h>

#include <functional>

#include "screen/image_scale.h"
#include "screen/pictures.h"

namespace kx::test {
namespace {

constexpr int kScreenW = 320;
constexpr int kScreenH = 200;

PixelImage Template() {
  return Noise(24, 16, 7);
}

// Each channel moved by `by`, as a slightly different rendering would.
PixelImage Shifted(PixelImage image, int by) {
  for (Pixel& p : image.pixels)
    p = kAlphaMask | (static_cast<Pixel>(RedOf(p) > 127 ? RedOf(p) - by : RedOf(p) + by) << 16) |
        (static_cast<Pixel>(GreenOf(p) > 127 ? GreenOf(p) - by : GreenOf(p) + by) << 8) |
        static_cast<Pixel>(BlueOf(p) > 127 ? BlueOf(p) - by : BlueOf(p) + by);
  return image;
}

// The template with a transparent frame two pixels wide.
PixelImage Framed() {
  PixelImage t = Template();
  for (int y = 0; y < t.height; ++y)
    for (int x = 0; x < t.width; ++x)
      if (x < 2 || y < 2 || x >= t.width - 2 || y >= t.height - 2) t.At(x, y) = 0;
  return t;
}

struct Case {
  const char* name;
  std::function<void(PixelImage& screen)> draw;
  PixelImage searched;
  int variation;
  std::optional<Point> expected;
};

TEST(ImageMatch, FindsTheTopMostThenLeftMostPlaceWithinTheVariation) {
  const PixelImage t = Template();
  const Case cases[] = {
      {"exact", [&](PixelImage& s) { Paste(s, t, 37, 21); }, t, 0, Point{37, 21}},
      {"absent", [](PixelImage&) {}, t, 0, std::nullopt},
      {"top-most wins",
       [&](PixelImage& s) {
         Paste(s, t, 5, 90);
         Paste(s, t, 200, 30);
       },
       t, 0, Point{200, 30}},
      {"left-most on the same row",
       [&](PixelImage& s) {
         Paste(s, t, 150, 40);
         Paste(s, t, 60, 40);
       },
       t, 0, Point{60, 40}},
      {"top-left corner", [&](PixelImage& s) { Paste(s, t, 0, 0); }, t, 0, Point{0, 0}},
      {"bottom-right corner",
       [&](PixelImage& s) { Paste(s, t, kScreenW - t.width, kScreenH - t.height); }, t, 0,
       Point{kScreenW - t.width, kScreenH - t.height}},
      {"cut by the right edge", [&](PixelImage& s) { Paste(s, t, kScreenW - 12, 10); }, t, 0,
       std::nullopt},
      {"shifted by 20 is not exact", [&](PixelImage& s) { Paste(s, Shifted(t, 20), 80, 50); }, t, 0,
       std::nullopt},
      {"shifted by 20 within 20", [&](PixelImage& s) { Paste(s, Shifted(t, 20), 80, 50); }, t, 20,
       Point{80, 50}},
      {"shifted by 20 not within 19", [&](PixelImage& s) { Paste(s, Shifted(t, 20), 80, 50); }, t,
       19, std::nullopt},
      {"transparent frame matches any background",
       [&](PixelImage& s) { Paste(s, Framed(), 120, 70); }, Framed(), 0, Point{120, 70}},
      {"larger than the screen", [](PixelImage&) {}, Noise(kScreenW + 1, 10, 3), 0, std::nullopt},
      {"fully transparent matches at once", [](PixelImage&) {}, PixelImage(8, 8, 0), 0,
       Point{0, 0}},
  };
  for (const Case& c : cases) {
    PixelImage screen = Noise(kScreenW, kScreenH, 99);
    c.draw(screen);
    EXPECT_EQ(FindTemplate(screen.View(), ImageTemplate(c.searched), c.variation), c.expected)
        << c.name;
  }
}

TEST(ImageMatch, AScaledTemplateMatchesThePictureAsTheDisplayShowsIt) {
  // The same picture drawn with cells of 2, 3 and 4 pixels: 1.5 and 2 times
  // the first, on a screen of other blocks.
  struct Scale {
    double ratio;
    int cell;
  };
  for (const Scale s : {Scale{1.5, 3}, Scale{2.0, 4}}) {
    PixelImage screen = Blocks(kScreenW / 2, 2, 5);
    Paste(screen, Blocks(12, s.cell, 11), 101, 33);
    const ImageTemplate scaled(ScaleImage(Blocks(12, 2, 11), s.ratio));
    EXPECT_EQ(scaled.Width(), 12 * s.cell);
    EXPECT_EQ(FindTemplate(screen.View(), scaled, 0), (Point{101, 33})) << s.ratio;
  }
  // Shrunk to half, as an image captured at 192 DPI shows at 96.
  PixelImage screen = Noise(kScreenW, kScreenH, 4);
  Paste(screen, Blocks(12, 2, 11), 64, 8);
  EXPECT_EQ(FindTemplate(screen.View(), ImageTemplate(ScaleImage(Blocks(12, 4, 11), 0.5)), 0),
            (Point{64, 8}));
}

TEST(ImageMatch, AcceptTurnsDownPlacesAndTheSearchGoesOn) {
  const PixelImage t = Template();
  PixelImage screen = Noise(kScreenW, kScreenH, 99);
  Paste(screen, t, 10, 10);
  Paste(screen, t, 200, 120);
  EXPECT_EQ(FindTemplate(screen.View(), ImageTemplate(t), 0, [](Point p) { return p.x > 100; }),
            (Point{200, 120}));
}

}  // namespace
}  // namespace kx::test
