#pragma once
// The page document a window shows, whichever browser shows it.
#include <memory>
#include <string_view>

#include "sys/document_port.h"
#include "sys/window_port.h"

namespace kx {

// The top-level window class of Chromium browsers (Chrome, Edge).
inline constexpr std::string_view kChromiumFrameClass = "Chrome_WidgetWin_1";
// The window path of a Chromium page: page commands reach it over the
// DevTools port, not through windows.
inline constexpr std::string_view kChromePathKeyword = "chrome";

// A window inside a Chromium browser gives the page on the browser's
// DevTools port; any other window its Internet Explorer engine document.
// None when the window shows no document.
std::unique_ptr<PageDocument> DocumentOfWindow(WindowPort& windows, DocumentPort& documents,
                                               WindowHandle window, int devToolsPort);

}  // namespace kx
