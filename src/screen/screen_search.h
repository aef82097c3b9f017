#pragma once
// Looking for an image or a pixel colour on the screen, on every monitor,
// with the image scaled to each monitor's DPI.
#include <map>
#include <optional>

#include "screen/image_match.h"
#include "sys/screen_port.h"

namespace kx {

enum class SearchOutcome {
  kFound,
  kNotFound,
  kOutside,   // the point or rectangle lies on no monitor
  kTooLarge,  // at every monitor's scale the image is larger than the area searched
};

struct SearchResult {
  SearchOutcome outcome = SearchOutcome::kNotFound;
  Point centre;  // of the match, in virtual-screen pixels, when found
};

// The virtual screen: the smallest rectangle holding every monitor.
Rect VirtualScreen(const std::vector<Monitor>& monitors);

// The rectangle searched: the given one held inside the virtual screen, or
// the whole of it. Empty (right <= left) when nothing of it is on a monitor.
Rect SearchArea(const std::vector<Monitor>& monitors, const std::optional<Rect>& area);

// One image searched for again and again, as a wait does: the template for
// each monitor DPI is scaled once, on first use.
class ScreenImageSearch {
 public:
  ScreenImageSearch(PixelImage image, int imageDpi, int variation);
  SearchResult Find(ScreenPort& screen, const std::optional<Rect>& area);

 private:
  const ImageTemplate& TemplateFor(int monitorDpi);

  PixelImage image_;
  int imageDpi_;
  int variation_;
  std::map<int, ImageTemplate> templates_;
};

// Whether the pixel at the point has the colour within the variation.
SearchResult FindPixel(ScreenPort& screen, Point at, Pixel colour, int variation);

}  // namespace kx
