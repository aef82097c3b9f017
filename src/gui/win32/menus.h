#pragma once
// Win32 menus built from the menu table.
#include <string_view>

#include "sys/win32/unique_handle.h"

namespace kx::win32 {

// The menu bar: every top-level popup of the table that is not a context
// menu. Play-speed items are radio items.
HMENU BuildMenuBar();
// The context popup whose table argument is `which`.
unique_hmenu BuildContextMenu(std::string_view which);
// The main window's accelerators: the shortcuts of the table's items, each
// sending its item's command.
unique_haccel BuildAccelerators();

}  // namespace kx::win32
