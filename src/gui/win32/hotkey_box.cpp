#include "gui/win32/hotkey_box.h"

#include "sys/win32/wide.h"

namespace kx::win32 {

namespace {

constexpr UINT_PTR kHotkeyBoxSubclassId = 1;

bool Down(int virtualKey) {
  return (::GetKeyState(virtualKey) & 0x8000) != 0;
}

}  // namespace

bool HotkeyBox::Create(const ControlArgs& args) {
  hwnd_ = ::CreateWindowExW(WS_EX_CLIENTEDGE, WC_EDITW, L"",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL, 0, 0, 0, 0,
                            args.parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(args.id)),
                            ::GetModuleHandleW(nullptr), nullptr);
  if (!hwnd_) return false;
  ::SetWindowSubclass(hwnd_, &HotkeyBox::Subclass, kHotkeyBoxSubclassId,
                      reinterpret_cast<DWORD_PTR>(this));
  ShowText();
  return true;
}

void HotkeyBox::Set(int virtualKey, int hotkeyFlags) {
  entry_.Set(virtualKey, hotkeyFlags);
  ShowText();
}

void HotkeyBox::ShowText() {
  if (hwnd_) ::SetWindowTextW(hwnd_, Widen(entry_.Text()).c_str());
}

void HotkeyBox::OnKeyDown(WPARAM virtualKey) {
  int bits = 0;
  if (Down(VK_SHIFT)) bits |= gui::kKeyEventShift;
  if (Down(VK_CONTROL)) bits |= gui::kKeyEventCtrl;
  if (Down(VK_MENU)) bits |= gui::kKeyEventAlt;
  const bool win = Down(VK_LWIN) || Down(VK_RWIN);
  entry_.OnKeyDown(static_cast<int>(virtualKey), bits, win);
  ShowText();
  // The caret stays at the end, where typing would have left it.
  const auto length = static_cast<WPARAM>(::GetWindowTextLengthW(hwnd_));
  ::SendMessageW(hwnd_, EM_SETSEL, length, static_cast<LPARAM>(length));
}

LRESULT CALLBACK HotkeyBox::Subclass(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR,
                                     DWORD_PTR data) noexcept {
  auto* self = reinterpret_cast<HotkeyBox*>(data);
  switch (msg) {
    case WM_GETDLGCODE:
      // Tab, Enter, Esc and the arrows are keys to capture, not navigation.
      return DLGC_WANTALLKEYS | DLGC_WANTCHARS | DLGC_WANTARROWS | DLGC_WANTTAB;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      try {
        self->OnKeyDown(wp);
      } catch (...) {
      }
      return 0;
    // Nothing typed, pasted or cut reaches the text, and a released Alt or
    // F10 does not open the window menu.
    case WM_KEYUP:
    case WM_SYSKEYUP:
    case WM_CHAR:
    case WM_SYSCHAR:
    case WM_DEADCHAR:
    case WM_SYSDEADCHAR:
    case WM_IME_CHAR:
    case WM_PASTE:
    case WM_CUT:
    case WM_CLEAR:
    case WM_UNDO:
    case WM_CONTEXTMENU:
      return 0;
    case WM_NCDESTROY:
      ::RemoveWindowSubclass(hwnd, &HotkeyBox::Subclass, kHotkeyBoxSubclassId);
      break;
    default:
      break;
  }
  return ::DefSubclassProc(hwnd, msg, wp, lp);
}

}  // namespace kx::win32
