#include "screen/image_match.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <unordered_map>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace kx {

namespace {

// Enough anchors that a place passing them all is almost always the match;
// more would only cost time at the places that pass the first.
constexpr std::size_t kAnchorCount = 4;
// Places tested together by the first anchor: the comparisons of a block
// carry no branch, so the compiler can do them side by side.
constexpr int kBlock = 8;

struct Exact {
  bool operator()(Pixel screen, Pixel wanted) const {
    return ((screen ^ wanted) & kColourMask) == 0;
  }
};

struct Near {
  int variation;
  bool operator()(Pixel screen, Pixel wanted) const {
    return ColourNear(screen, wanted, variation);
  }
};

// The first anchor's test on a whole block of places at once: bit k of the
// result is set when pixel k is within the variation of the colour. On x86
// (both builds) four pixels go through SSE2 together: the per-byte distance
// is the larger of the two saturated differences, and a pixel matches when
// no colour byte of it exceeds the variation.
struct FirstAnchor {
  Pixel colour;
  int variation;

  unsigned Block(const Pixel* p) const {
#if defined(__SSE2__)
    const __m128i c = _mm_set1_epi32(static_cast<int>(colour));
    const __m128i v = _mm_set1_epi8(static_cast<char>(variation));
    const __m128i colourBytes = _mm_set1_epi32(static_cast<int>(kColourMask));
    unsigned hits = 0;
    for (int half = 0; half < kBlock / 4; ++half) {
      const __m128i s = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + half * 4));
      const __m128i distance = _mm_or_si128(_mm_subs_epu8(s, c), _mm_subs_epu8(c, s));
      const __m128i over = _mm_and_si128(_mm_subs_epu8(distance, v), colourBytes);
      const __m128i same = _mm_cmpeq_epi32(over, _mm_setzero_si128());
      hits |= static_cast<unsigned>(_mm_movemask_ps(_mm_castsi128_ps(same))) << (half * 4);
    }
    return hits;
#else
    unsigned hits = 0;
    for (int k = 0; k < kBlock; ++k) hits |= static_cast<unsigned>(One(p[k])) << k;
    return hits;
#endif
  }
  bool One(Pixel p) const {
    return ColourNear(p, colour, variation);
  }
};

}  // namespace

ImageTemplate::ImageTemplate(PixelImage image) : image_(std::move(image)) {
  std::unordered_map<Pixel, int> counts;
  for (int y = 0; y < image_.height; ++y) {
    for (int x = 0; x < image_.width;) {
      if (IsTransparent(image_.At(x, y))) {
        ++x;
        continue;
      }
      const int start = x;
      while (x < image_.width && !IsTransparent(image_.At(x, y))) {
        ++counts[image_.At(x, y) & kColourMask];
        ++x;
      }
      runs_.push_back({y, start, x - start});
    }
  }
  // Anchors: pixels of the template's rarest colours, nearest the centre
  // first, one per colour. A rare colour in the template is usually rare on
  // the screen as well, where a background colour would match everywhere.
  std::vector<Anchor> candidates;
  for (const Run& r : runs_)
    for (int x = r.x; x < r.x + r.length; ++x)
      candidates.push_back({x, r.y, image_.At(x, r.y) & kColourMask});
  const int cx = image_.width / 2;
  const int cy = image_.height / 2;
  std::sort(candidates.begin(), candidates.end(), [&](const Anchor& a, const Anchor& b) {
    const int ca = counts[a.colour];
    const int cb = counts[b.colour];
    if (ca != cb) return ca < cb;
    const int da = std::abs(a.x - cx) + std::abs(a.y - cy);
    const int db = std::abs(b.x - cx) + std::abs(b.y - cy);
    if (da != db) return da < db;
    return a.y != b.y ? a.y < b.y : a.x < b.x;
  });
  for (const Anchor& c : candidates) {
    if (anchors_.size() == kAnchorCount) break;
    const bool seen = std::any_of(anchors_.begin(), anchors_.end(),
                                  [&](const Anchor& a) { return a.colour == c.colour; });
    if (!seen) anchors_.push_back(c);
  }
}

namespace {

template <typename Compare>
bool RunsMatch(const PixelView& view, const PixelImage& image,
               const std::vector<ImageTemplate::Anchor>& anchors, const auto& runs, int x, int y,
               Compare same) {
  for (std::size_t i = 1; i < anchors.size(); ++i)
    if (!same(view.At(x + anchors[i].x, y + anchors[i].y), anchors[i].colour)) return false;
  for (const auto& r : runs) {
    const Pixel* screen = view.Row(y + r.y) + x + r.x;
    const Pixel* wanted = &image.pixels[static_cast<std::size_t>(r.y) * image.width + r.x];
    for (int i = 0; i < r.length; ++i)
      if (!same(screen[i], wanted[i])) return false;
  }
  return true;
}

}  // namespace

bool ImageTemplate::MatchesAt(const PixelView& view, int x, int y, int variation) const {
  if (x < 0 || y < 0 || x + Width() > view.width || y + Height() > view.height) return false;
  if (variation <= 0) return RunsMatch(view, image_, {}, runs_, x, y, Exact{});
  return RunsMatch(view, image_, {}, runs_, x, y, Near{variation});
}

namespace {

// Scans every place for the first anchor in blocks, then tests the places
// that pass it completely.
template <typename Full>
std::optional<Point> Scan(const PixelView& view, int lastX, int lastY, int anchorX, int anchorY,
                          const FirstAnchor& first, Full full) {
  for (int y = 0; y <= lastY; ++y) {
    const Pixel* row = view.Row(y + anchorY) + anchorX;
    int x = 0;
    for (; x + kBlock - 1 <= lastX; x += kBlock) {
      for (unsigned hits = first.Block(row + x); hits; hits &= hits - 1) {
        const int k = std::countr_zero(hits);
        if (full(x + k, y)) return Point{x + k, y};
      }
    }
    for (; x <= lastX; ++x)
      if (first.One(row[x]) && full(x, y)) return Point{x, y};
  }
  return std::nullopt;
}

}  // namespace

std::optional<Point> FindTemplate(const PixelView& view, const ImageTemplate& image, int variation,
                                  const std::function<bool(Point)>& accept) {
  const int lastX = view.width - image.Width();
  const int lastY = view.height - image.Height();
  if (image.Width() <= 0 || image.Height() <= 0 || lastX < 0 || lastY < 0) return std::nullopt;
  auto accepted = [&](int x, int y) { return !accept || accept(Point{x, y}); };
  // A template with nothing opaque matches everywhere.
  if (image.anchors_.empty()) {
    for (int y = 0; y <= lastY; ++y)
      for (int x = 0; x <= lastX; ++x)
        if (accepted(x, y)) return Point{x, y};
    return std::nullopt;
  }
  const auto& a = image.anchors_.front();
  variation = std::clamp(variation, 0, kMaxVariation);
  const FirstAnchor first{a.colour, variation};
  if (variation == 0) {
    return Scan(view, lastX, lastY, a.x, a.y, first, [&](int x, int y) {
      return RunsMatch(view, image.image_, image.anchors_, image.runs_, x, y, Exact{}) &&
             accepted(x, y);
    });
  }
  return Scan(view, lastX, lastY, a.x, a.y, first, [&](int x, int y) {
    return RunsMatch(view, image.image_, image.anchors_, image.runs_, x, y, Near{variation}) &&
           accepted(x, y);
  });
}

}  // namespace kx
