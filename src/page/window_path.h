#pragma once
// Window paths: the comma-separated address of a window that page commands
// carry after their values. The first element names a top-level window (a
// browser keyword, "class+title", "class*n" or a bare class), each later
// element a child of the window before it.
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sys/window_port.h"

namespace kx {

// The fixed path of the Internet Explorer document window that waitweb waits
// for.
inline constexpr std::string_view kInternetExplorerPath =
    "IEFrame,Frame Tab,TabWindowClass,Shell DocObject View,Internet Explorer_Server";

// The windows a walk found: the top-level window its first element named and
// the last window of the walk. Both are 0 when any step found nothing.
struct WindowPathMatch {
  WindowHandle topLevel = 0;
  WindowHandle window = 0;
};

WindowPathMatch WalkWindowPath(WindowPort& windows, std::span<const std::string> elements);

// The last window of the path; 0 when the path is empty or a step fails.
WindowHandle FindDocumentWindow(WindowPort& windows, std::span<const std::string> elements);
WindowHandle FindDocumentWindow(WindowPort& windows, std::string_view path);

}  // namespace kx
