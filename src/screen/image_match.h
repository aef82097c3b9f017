#pragma once
// Finding an image inside a larger one, exactly or with a per-channel
// variation: the search every screen wait and "kx findimage" run.
#include <functional>
#include <optional>
#include <vector>

#include "sys/geometry.h"
#include "sys/pixels.h"

namespace kx {

// The most a channel may differ: 255 lets every colour match.
inline constexpr int kMaxVariation = 255;

// True when each of red, green and blue differs by at most `variation`.
inline bool ColourNear(Pixel a, Pixel b, int variation) {
  const auto near = [variation](int x, int y) { return x - y <= variation && y - x <= variation; };
  return near(RedOf(a), RedOf(b)) && near(GreenOf(a), GreenOf(b)) && near(BlueOf(a), BlueOf(b));
}

// An image made ready for searching: the runs of pixels that count (fully
// transparent ones match anything) and a few anchor pixels of rare colours,
// tested first at every place so that most places are ruled out by one
// comparison.
class ImageTemplate {
 public:
  explicit ImageTemplate(PixelImage image);

  int Width() const { return image_.width; }
  int Height() const { return image_.height; }
  const PixelImage& Image() const { return image_; }

  // True when the template matches with its top-left corner at (x, y) of the
  // view; the whole template must lie inside it.
  bool MatchesAt(const PixelView& view, int x, int y, int variation) const;

  struct Run {
    int y;
    int x;
    int length;
  };
  struct Anchor {
    int x;
    int y;
    Pixel colour;
  };

 private:
  friend std::optional<Point> FindTemplate(const PixelView&, const ImageTemplate&, int,
                                           const std::function<bool(Point)>&);
  PixelImage image_;
  std::vector<Run> runs_;        // opaque pixels, row by row
  std::vector<Anchor> anchors_;  // empty when every pixel is transparent
};

// The top-left corner of the first place, top-most then left-most, where the
// template matches inside the view and `accept` (when given) agrees; none
// when there is no such place or the template is larger than the view.
std::optional<Point> FindTemplate(const PixelView& view, const ImageTemplate& image, int variation,
                                  const std::function<bool(Point)>& accept = {});

}  // namespace kx
