#include "screen/image_scale.h"

#include <algorithm>
#include <cmath>

namespace kx {

namespace {

// Below this share of certain pixels a scaled template would match nearly
// anywhere, so its border pixels keep a colour after all.
constexpr double kMinCertainShare = 0.25;
// Keeps a pixel boundary that falls exactly on a source boundary (1.5 x 2 =
// 3) from reaching into the next source pixel through rounding.
constexpr double kEdge = 1e-9;
constexpr double kSameRatio = 1e-6;

struct Span {
  int first;
  int last;
};

// The source pixels that destination pixel d covers at the ratio.
Span Footprint(int d, double ratio, int sourceSize) {
  const int first = static_cast<int>(std::floor(d / ratio + kEdge));
  const int last = static_cast<int>(std::ceil((d + 1) / ratio - kEdge)) - 1;
  return {std::clamp(first, 0, sourceSize - 1),
          std::clamp(std::max(first, last), 0, sourceSize - 1)};
}

}  // namespace

PixelImage ScaleImage(const PixelImage& image, double ratio) {
  if (std::abs(ratio - 1.0) < kSameRatio || image.width <= 0 || image.height <= 0) return image;
  const int width = std::max(1, static_cast<int>(std::lround(image.width * ratio)));
  const int height = std::max(1, static_cast<int>(std::lround(image.height * ratio)));
  PixelImage out(width, height);
  PixelImage centres(width, height);
  std::size_t opaque = 0;
  std::size_t certain = 0;
  for (int y = 0; y < height; ++y) {
    const Span sy = Footprint(y, ratio, image.height);
    const int cy = std::min(image.height - 1, static_cast<int>((y + 0.5) / ratio));
    for (int x = 0; x < width; ++x) {
      const Span sx = Footprint(x, ratio, image.width);
      const int cx = std::min(image.width - 1, static_cast<int>((x + 0.5) / ratio));
      const Pixel centre = image.At(cx, cy);
      centres.At(x, y) = centre;
      bool uniform = true;
      for (int v = sy.first; v <= sy.last && uniform; ++v)
        for (int u = sx.first; u <= sx.last && uniform; ++u) uniform = image.At(u, v) == centre;
      if (!IsTransparent(centre)) ++opaque;
      if (uniform) {
        out.At(x, y) = centre;
        if (!IsTransparent(centre)) ++certain;
      }
    }
  }
  if (static_cast<double>(certain) < kMinCertainShare * static_cast<double>(opaque)) return centres;
  return out;
}

}  // namespace kx
