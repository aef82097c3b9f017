#include "screen/screen_search.h"

#include <algorithm>
#include <climits>

#include "screen/image_scale.h"

namespace kx {

namespace {

bool Contains(const Rect& r, Point p) {
  return p.x >= r.left && p.x < r.right && p.y >= r.top && p.y < r.bottom;
}

bool Overlap(const Rect& a, const Rect& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

const Monitor* MonitorAt(const std::vector<Monitor>& monitors, Point p) {
  for (const Monitor& m : monitors)
    if (Contains(m.rect, p)) return &m;
  return nullptr;
}

}  // namespace

Rect VirtualScreen(const std::vector<Monitor>& monitors) {
  if (monitors.empty()) return {};
  Rect all{INT_MAX, INT_MAX, INT_MIN, INT_MIN};
  for (const Monitor& m : monitors) {
    all.left = std::min(all.left, m.rect.left);
    all.top = std::min(all.top, m.rect.top);
    all.right = std::max(all.right, m.rect.right);
    all.bottom = std::max(all.bottom, m.rect.bottom);
  }
  return all;
}

Rect SearchArea(const std::vector<Monitor>& monitors, const std::optional<Rect>& area) {
  const Rect all = VirtualScreen(monitors);
  if (!area) return all;
  const Rect held{std::max(area->left, all.left), std::max(area->top, all.top),
                  std::min(area->right, all.right), std::min(area->bottom, all.bottom)};
  const bool onMonitor = std::any_of(monitors.begin(), monitors.end(),
                                     [&](const Monitor& m) { return Overlap(m.rect, held); });
  return onMonitor ? held : Rect{};
}

ScreenImageSearch::ScreenImageSearch(PixelImage image, int imageDpi, int variation)
    : image_(std::move(image)),
      imageDpi_(imageDpi > 0 ? imageDpi : kBaseDpi),
      variation_(std::clamp(variation, 0, kMaxVariation)) {}

const ImageTemplate& ScreenImageSearch::TemplateFor(int monitorDpi) {
  auto found = templates_.find(monitorDpi);
  if (found == templates_.end()) {
    const double ratio = static_cast<double>(monitorDpi) / imageDpi_;
    found = templates_.emplace(monitorDpi, ImageTemplate(ScaleImage(image_, ratio))).first;
  }
  return found->second;
}

SearchResult ScreenImageSearch::Find(ScreenPort& screen, const std::optional<Rect>& area) {
  const std::vector<Monitor> monitors = screen.Monitors();
  const Rect searched = SearchArea(monitors, area);
  if (searched.right <= searched.left || searched.bottom <= searched.top)
    return {SearchOutcome::kOutside, {}};
  const int width = searched.right - searched.left;
  const int height = searched.bottom - searched.top;

  // One template per DPI of the monitors under the area; a match counts for
  // the DPI of the monitor under its centre.
  std::vector<int> dpis;
  for (const Monitor& m : monitors)
    if (Overlap(m.rect, searched) && std::find(dpis.begin(), dpis.end(), m.dpi) == dpis.end())
      dpis.push_back(m.dpi);
  bool anyFits = false;
  for (int dpi : dpis) {
    const ImageTemplate& t = TemplateFor(dpi);
    anyFits = anyFits || (t.Width() <= width && t.Height() <= height);
  }
  if (!anyFits) return {SearchOutcome::kTooLarge, {}};

  const auto view = screen.Capture(searched);
  if (!view) return {SearchOutcome::kNotFound, {}};
  // Top-most, then left-most, over the templates of every DPI.
  std::optional<Point> bestCorner;
  Point bestCentre;
  for (int dpi : dpis) {
    const ImageTemplate& t = TemplateFor(dpi);
    auto centreOf = [&](Point p) {
      return Point{searched.left + p.x + t.Width() / 2, searched.top + p.y + t.Height() / 2};
    };
    const auto at = FindTemplate(*view, t, variation_, [&](Point p) {
      if (dpis.size() == 1) return true;
      const Monitor* m = MonitorAt(monitors, centreOf(p));
      return m && m->dpi == dpi;
    });
    if (!at) continue;
    if (!bestCorner || at->y < bestCorner->y || (at->y == bestCorner->y && at->x < bestCorner->x)) {
      bestCorner = *at;
      bestCentre = centreOf(*at);
    }
  }
  if (!bestCorner) return {SearchOutcome::kNotFound, {}};
  return {SearchOutcome::kFound, bestCentre};
}

SearchResult FindPixel(ScreenPort& screen, Point at, Pixel colour, int variation) {
  if (!MonitorAt(screen.Monitors(), at)) return {SearchOutcome::kOutside, {}};
  const auto view = screen.Capture(Rect{at.x, at.y, at.x + 1, at.y + 1});
  if (!view || view->width < 1 || view->height < 1) return {SearchOutcome::kNotFound, {}};
  if (!ColourNear(view->At(0, 0), colour, std::clamp(variation, 0, kMaxVariation)))
    return {SearchOutcome::kNotFound, {}};
  return {SearchOutcome::kFound, at};
}

}  // namespace kx
