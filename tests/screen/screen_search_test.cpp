#include "screen/screen_search.h"

#include <gtest/gtest.h>

#include "screen/pictures.h"
#include "sim/sim_system.h"

namespace kx::test {
namespace {

// A primary monitor and one to its left and above it, as a user's desk may
// have them; the left one at 150% unless told otherwise.
struct Desk {
  sim::SimSystem sim;
  explicit Desk(int leftDpi = 144) {
    sim.AddMonitor({Rect{0, 0, 1920, 1080}, kBaseDpi});
    sim.AddMonitor({Rect{-1280, -300, 0, 724}, leftDpi});
    sim.ShowImage(Blocks(160, 12, 2), {-1280, -300});
    sim.ShowImage(Noise(1920, 1080, 3), {0, 0});
  }
  SearchResult Find(const PixelImage& image, int dpi, std::optional<Rect> area = std::nullopt) {
    return ScreenImageSearch(image, dpi, 0).Find(sim, area);
  }
};

std::string Text(const SearchResult& r) {
  switch (r.outcome) {
    case SearchOutcome::kFound:
      return "found at " + std::to_string(r.centre.x) + "," + std::to_string(r.centre.y);
    case SearchOutcome::kNotFound:
      return "not found";
    case SearchOutcome::kOutside:
      return "outside";
    case SearchOutcome::kTooLarge:
      return "too large";
  }
  return "";
}

TEST(ScreenSearch, FindsImagesOnEveryMonitorAtTheMonitorsScale) {
  const PixelImage picture = Blocks(10, 2, 21);  // 20x20 at 96 DPI
  struct Case {
    const char* name;
    int leftDpi;
    Point shownAt;
    int shownCell;  // the picture's cell size on the screen
    int imageDpi;
    std::optional<Rect> area;
    SearchResult expected;
  };
  const Case cases[] = {
      {"primary, same DPI", 144, {300, 200}, 2, 96, {}, {SearchOutcome::kFound, {310, 210}}},
      {"left monitor at 150%", 144, {-700, -250}, 3, 96, {}, {SearchOutcome::kFound, {-685, -235}}},
      {"left monitor at 200%", 192, {-700, 500}, 4, 96, {}, {SearchOutcome::kFound, {-680, 520}}},
      {"captured at 200%, shown at 100%",
       144,
       {1000, 900},
       2,
       192,
       {},
       {SearchOutcome::kFound, {1010, 910}}},
      {"unscaled on a 150% monitor is not it",
       144,
       {-700, -250},
       2,
       96,
       {},
       {SearchOutcome::kNotFound, {}}},
      {"inside the rectangle",
       144,
       {300, 200},
       2,
       96,
       Rect{250, 150, 400, 300},
       {SearchOutcome::kFound, {310, 210}}},
      {"outside the rectangle",
       144,
       {300, 200},
       2,
       96,
       Rect{0, 0, 250, 150},
       {SearchOutcome::kNotFound, {}}},
      {"rectangle partly off the screen is held to it",
       144,
       {1890, 1050},
       2,
       96,
       Rect{1800, 1000, 5000, 5000},
       {SearchOutcome::kFound, {1900, 1060}}},
      {"rectangle on no monitor",
       144,
       {300, 200},
       2,
       96,
       Rect{3000, 0, 3100, 100},
       {SearchOutcome::kOutside, {}}},
      {"rectangle smaller than the image",
       144,
       {300, 200},
       2,
       96,
       Rect{300, 200, 310, 210},
       {SearchOutcome::kTooLarge, {}}},
  };
  for (const Case& c : cases) {
    Desk desk(c.leftDpi);
    desk.sim.ShowImage(Blocks(10, c.shownCell, 21), c.shownAt);
    const PixelImage searched = c.imageDpi == 96 ? picture : Blocks(10, 4, 21);
    EXPECT_EQ(Text(desk.Find(searched, c.imageDpi, c.area)), Text(c.expected)) << c.name;
  }
}

TEST(ScreenSearch, APixelIsFoundAtNegativeCoordinatesAndNowhereOffTheMonitors) {
  Desk desk;
  const Pixel colour = desk.sim.Capture({-5, -5, -4, -4})->At(0, 0);
  EXPECT_EQ(FindPixel(desk.sim, {-5, -5}, colour, 0).outcome, SearchOutcome::kFound);
  EXPECT_EQ(FindPixel(desk.sim, {-5, -5}, colour ^ 0x10, 0).outcome, SearchOutcome::kNotFound);
  EXPECT_EQ(FindPixel(desk.sim, {-5, -5}, colour ^ 0x10, 16).outcome, SearchOutcome::kFound);
  // Below the left monitor and left of the primary: on no monitor.
  EXPECT_EQ(FindPixel(desk.sim, {-5, 900}, colour, 255).outcome, SearchOutcome::kOutside);
}

}  // namespace
}  // namespace kx::test
