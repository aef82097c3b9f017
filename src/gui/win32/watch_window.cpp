#include "gui/win32/watch_window.h"

#include <algorithm>

#include "gui/win32/dpi.h"
#include "sys/win32/wide.h"

namespace kx::win32 {

namespace {

constexpr wchar_t kTitle[] = L"変数ウォッチ";
constexpr int kListId = 100;

// Layout in device-independent units.
constexpr int kDefaultWidthDips = 300;
constexpr int kDefaultHeightDips = 320;
constexpr int kNameShare = 40;  // per cent of the list's width for the names
constexpr int kOwnerGapDips = 4;

constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN;
constexpr DWORD kExStyle = WS_EX_TOOLWINDOW;

}  // namespace

bool WatchWindow::Create() {
  WindowClassArgs cls{kWatchWindowClass, nullptr, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1), 0};
  WindowArgs args;
  args.exStyle = kExStyle;
  args.title = kTitle;
  args.style = kStyle;
  args.x = args.y = args.width = args.height = 0;
  args.parent = owner_;
  if (!WindowBase::Create(cls, args)) return false;
  if (!list_.Create({hwnd(), kListId, L""}, L"名前", L"値")) return false;
  ApplyFonts();
  return true;
}

void WatchWindow::ApplyFonts() {
  font_.reset(CreateMessageFont(DpiOf(hwnd())));
  ::SendMessageW(list_.hwnd(), WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), TRUE);
}

void WatchWindow::Layout() {
  RECT client{};
  ::GetClientRect(hwnd(), &client);
  ::MoveWindow(list_.hwnd(), 0, 0, client.right, client.bottom, TRUE);
  RECT inner{};
  ::GetClientRect(list_.hwnd(), &inner);
  const int name = inner.right * kNameShare / 100;
  list_.SetColumnWidths(name, std::max(0, static_cast<int>(inner.right) - name));
}

void WatchWindow::Place(const gui::PlacementTwips& placement) {
  UINT dpi = DpiOf(owner_ ? owner_ : hwnd());
  RECT r{};
  if (placement.width > 0 && placement.height > 0) {
    // Twips are converted at the DPI of the monitor the window goes to: it
    // is put there first, and its DPI read again.
    ::SetWindowPos(hwnd(), nullptr, TwipsToPixels(placement.x, dpi),
                   TwipsToPixels(placement.y, dpi), 1, 1, SWP_NOZORDER | SWP_NOACTIVATE);
    dpi = DpiOf(hwnd());
    r = {TwipsToPixels(placement.x, dpi), TwipsToPixels(placement.y, dpi),
         TwipsToPixels(placement.x + placement.width, dpi),
         TwipsToPixels(placement.y + placement.height, dpi)};
  } else {
    RECT owner{};
    ::GetWindowRect(owner_, &owner);
    const int x = owner.right + Scale(kOwnerGapDips, dpi);
    r = {x, owner.top, x + Scale(kDefaultWidthDips, dpi),
         owner.top + Scale(kDefaultHeightDips, dpi)};
  }
  // Kept on a monitor's working area, so that a stored place on a monitor
  // that has gone still shows the window.
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  ::GetMonitorInfoW(::MonitorFromRect(&r, MONITOR_DEFAULTTONEAREST), &monitor);
  const RECT& work = monitor.rcWork;
  const int width =
      std::min(static_cast<int>(r.right - r.left), static_cast<int>(work.right - work.left));
  const int height =
      std::min(static_cast<int>(r.bottom - r.top), static_cast<int>(work.bottom - work.top));
  const int x = std::clamp(static_cast<int>(r.left), static_cast<int>(work.left),
                           static_cast<int>(work.right) - width);
  const int y = std::clamp(static_cast<int>(r.top), static_cast<int>(work.top),
                           static_cast<int>(work.bottom) - height);
  ::SetWindowPos(hwnd(), nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
  Layout();
}

void WatchWindow::Open(const gui::PlacementTwips& placement) {
  if (!hwnd()) {
    if (!Create()) return;
    Place(placement);
  } else if (!::IsWindowVisible(hwnd())) {
    Place(placement);
  }
  ::ShowWindow(hwnd(), SW_SHOW);
  ::SetForegroundWindow(hwnd());
}

bool WatchWindow::IsOpen() {
  return hwnd() && ::IsWindowVisible(hwnd());
}

void WatchWindow::SetRows(const std::vector<WatchRow>& rows) {
  std::vector<std::pair<std::wstring, std::wstring>> wide;
  wide.reserve(rows.size());
  for (const WatchRow& row : rows) wide.emplace_back(Widen(row.name), Widen(row.value));
  list_.SetRows(wide);
}

gui::PlacementTwips WatchWindow::Placement() {
  RECT r{};
  ::GetWindowRect(hwnd(), &r);
  const UINT dpi = DpiOf(hwnd());
  return {PixelsToTwips(r.left, dpi), PixelsToTwips(r.top, dpi),
          PixelsToTwips(r.right - r.left, dpi), PixelsToTwips(r.bottom - r.top, dpi)};
}

LRESULT WatchWindow::HandleMessage(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_CLOSE:
      // Hidden, not destroyed: its list is filled again when it reopens.
      if (onClose) onClose();
      ::ShowWindow(hwnd(), SW_HIDE);
      return 0;
    case WM_DPICHANGED:
      MoveToSuggestedRect(hwnd(), lp);
      ApplyFonts();
      Layout();
      return 0;
    case WM_SIZE:
      Layout();
      return 0;
    default:
      return Default(msg, wp, lp);
  }
}

}  // namespace kx::win32
