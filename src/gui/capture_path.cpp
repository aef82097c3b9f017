#include "gui/capture_path.h"

#include <optional>

namespace kx::gui {

namespace {

// A bound on the sibling search, so that a window list that changes under
// the walk cannot keep it going.
constexpr int kMaxSiblings = 100000;

// The position of `window` among the windows of its class under `parent`
// (0: the top-level windows), counted from 1; nothing when the search does
// not meet it.
std::optional<int> PositionAmongSiblings(WindowPort& windows, WindowHandle parent,
                                         WindowHandle window, const std::string& className) {
  WindowHandle found = 0;
  for (int n = 1; n <= kMaxSiblings; ++n) {
    found = windows.FindChild(parent, found, className, std::nullopt);
    if (found == 0) return std::nullopt;
    if (found == window) return n;
  }
  return std::nullopt;
}

// The parent `window` is a child of; 0 for a top-level window, owned or not.
WindowHandle ParentOf(WindowPort& windows, WindowHandle window, const std::string& className) {
  const WindowHandle parent = windows.Parent(window);
  if (parent == 0) return 0;
  return PositionAmongSiblings(windows, parent, window, className) ? parent : 0;
}

}  // namespace

WindowHandle TopLevelOf(WindowPort& windows, WindowHandle window) {
  for (int depth = 0; window != 0 && depth < kMaxSiblings; ++depth) {
    const WindowHandle parent = ParentOf(windows, window, windows.ClassName(window));
    if (parent == 0) return window;
    window = parent;
  }
  return window;
}

std::string BuildWindowPath(WindowPort& windows, WindowHandle window) {
  std::string path;
  for (int depth = 0; window != 0 && depth < kMaxSiblings; ++depth) {
    const std::string className = windows.ClassName(window);
    if (className.empty()) return "";
    const WindowHandle parent = ParentOf(windows, window, className);
    std::string element;
    bool last = parent == 0;
    if (className == kDialogClass) {
      element = className + "+" + windows.Title(window);
      last = true;
    } else if (const std::string title = windows.Title(window);
               className == kBasicFormClass && !title.empty()) {
      element = className + "+" + title;
    } else {
      const auto n = PositionAmongSiblings(windows, parent, window, className);
      if (!n) return "";
      element = className + "*" + std::to_string(*n);
    }
    path = path.empty() ? element : element + "," + path;
    if (last) break;
    window = parent;
  }
  return path;
}

}  // namespace kx::gui
