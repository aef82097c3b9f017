#pragma once
// The window path of a window (the comma-separated chain of "class*n" and
// "class+title" elements from the top-level window down), as the capture tool
// writes it for the page commands to find the window again.
#include <string>

#include "sys/window_port.h"

namespace kx::gui {

// Dialogs name themselves by title and end the walk; forms of the classic
// Basic runtime name themselves by title when they have one.
inline constexpr std::string_view kDialogClass = "#32770";
inline constexpr std::string_view kBasicFormClass = "ThunderRT6FormDC";

// The path of `window`, built from the window upward. Empty when there is
// no window or a step cannot be placed among its siblings (the desktop, a
// window that went away while the walk ran).
std::string BuildWindowPath(WindowPort& windows, WindowHandle window);

// The top-level window of `window`: the walk climbs through parents while
// the window is one of its parent's children, so that a dialog owned by
// another window (GetParent gives the owner) is its own top-level window.
WindowHandle TopLevelOf(WindowPort& windows, WindowHandle window);

}  // namespace kx::gui
