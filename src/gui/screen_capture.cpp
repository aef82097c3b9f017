#include "gui/screen_capture.h"

#include <algorithm>

#include "screen/image_file.h"
#include "screen/screen_lines.h"

namespace kx::gui {

namespace {

// The variation and time-out written into new lines: an exact match, and
// the time-out a line without one would have.
constexpr std::string_view kLineTail = ",0,10000";
constexpr std::string_view kImageStem = "画像";
constexpr std::string_view kImageExtension = ".png";
constexpr int kMaxImageNumber = 9999;

const Monitor* MonitorAt(const std::vector<Monitor>& monitors, Point p) {
  for (const Monitor& m : monitors)
    if (p.x >= m.rect.left && p.x < m.rect.right && p.y >= m.rect.top && p.y < m.rect.bottom)
      return &m;
  return nullptr;
}

}  // namespace

std::string WaitPixelLineAt(ScreenPort& screen, Point point) {
  if (!MonitorAt(screen.Monitors(), point)) return "";
  const auto view = screen.Capture({point.x, point.y, point.x + 1, point.y + 1});
  if (!view || view->width < 1 || view->height < 1) return "";
  return "WaitPixel " + std::to_string(point.x) + "," + std::to_string(point.y) + "," +
         ColourText(view->At(0, 0)) + std::string(kLineTail);
}

std::string WaitImageLineAt(ScreenPort& screen, FilePort& files, Point point, int size) {
  const std::vector<Monitor> monitors = screen.Monitors();
  const Monitor* monitor = MonitorAt(monitors, point);
  if (!monitor) return "";
  const Rect& m = monitor->rect;
  const int side =
      std::min({std::max(1, size * monitor->dpi / kBaseDpi), m.right - m.left, m.bottom - m.top});
  const int left = std::clamp(point.x - side / 2, m.left, m.right - side);
  const int top = std::clamp(point.y - side / 2, m.top, m.bottom - side);
  const auto view = screen.Capture({left, top, left + side, top + side});
  if (!view || view->width != side || view->height != side) return "";
  PixelImage image(side, side);
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x) image.At(x, y) = view->At(x, y) | kAlphaMask;

  const std::string folder = JoinPath(files, files.AppFolder(), "Macro");
  for (int n = 1; n <= kMaxImageNumber; ++n) {
    const std::string name =
        std::string(kImageStem) + std::to_string(n) + std::string(kImageExtension);
    const std::string path = JoinPath(files, folder, name);
    if (files.IsFile(path)) continue;
    if (!files.WriteAtomic(path, EncodePng(image, monitor->dpi))) return "";
    return "WaitImage " + name + std::string(kLineTail);
  }
  return "";
}

}  // namespace kx::gui
