#include "gui/win32/menus.h"

#include <vector>

#include "gui/command_table.h"
#include "sys/win32/wide.h"

namespace kx::win32 {

namespace {

using gui::MenuKind;

// Appends the entries from `index` until the popup that holds them ends;
// returns the index after its end.
std::size_t Fill(HMENU menu, std::size_t index) {
  const auto entries = gui::MenuEntries();
  while (index < entries.size()) {
    const gui::MenuEntry& e = entries[index];
    const UINT id = static_cast<UINT>(gui::MenuIdOf(index));
    switch (e.kind) {
      case MenuKind::kPopupEnd:
        return index + 1;
      case MenuKind::kSeparator:
        ::AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        ++index;
        break;
      case MenuKind::kItem: {
        MENUITEMINFOW info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_ID | MIIM_STRING | MIIM_FTYPE;
        info.fType = e.command == gui::Command::kSpeed ? MFT_RADIOCHECK : MFT_STRING;
        info.wID = id;
        // The shortcut is shown right-aligned after a tab.
        std::wstring caption = Widen(e.caption);
        if (const std::string keys = gui::ShortcutText(e.shortcut); !keys.empty())
          caption += L"\t" + Widen(keys);
        info.dwTypeData = caption.data();
        ::InsertMenuItemW(menu, ::GetMenuItemCount(menu), TRUE, &info);
        ++index;
        break;
      }
      case MenuKind::kPopup: {
        HMENU sub = ::CreatePopupMenu();
        const std::size_t next = Fill(sub, index + 1);
        ::AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), Widen(e.caption).c_str());
        index = next;
        break;
      }
    }
  }
  return index;
}

}  // namespace

HMENU BuildMenuBar() {
  HMENU bar = ::CreateMenu();
  const auto entries = gui::MenuEntries();
  std::size_t index = 0;
  while (index < entries.size()) {
    const gui::MenuEntry& e = entries[index];
    HMENU sub = ::CreatePopupMenu();
    const std::size_t next = Fill(sub, index + 1);
    if (e.argument.empty())
      ::AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), Widen(e.caption).c_str());
    else
      ::DestroyMenu(sub);
    index = next;
  }
  return bar;
}

unique_haccel BuildAccelerators() {
  std::vector<ACCEL> table;
  const auto entries = gui::MenuEntries();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const gui::Shortcut& shortcut = entries[i].shortcut;
    if (entries[i].kind != MenuKind::kItem || shortcut.virtualKey == 0) continue;
    const BYTE flags = static_cast<BYTE>(FVIRTKEY | (shortcut.ctrl ? FCONTROL : 0));
    table.push_back(
        {flags, static_cast<WORD>(shortcut.virtualKey), static_cast<WORD>(gui::MenuIdOf(i))});
  }
  return unique_haccel(::CreateAcceleratorTableW(table.data(), static_cast<int>(table.size())));
}

unique_hmenu BuildContextMenu(std::string_view which) {
  const auto entries = gui::MenuEntries();
  std::size_t index = 0;
  while (index < entries.size()) {
    const gui::MenuEntry& e = entries[index];
    unique_hmenu sub(::CreatePopupMenu());
    const std::size_t next = Fill(sub.get(), index + 1);
    if (e.argument == which) return sub;
    index = next;
  }
  return {};
}

}  // namespace kx::win32
