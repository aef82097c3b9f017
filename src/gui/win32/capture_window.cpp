#include "gui/win32/capture_window.h"

#include <algorithm>

#include "gui/screen_capture.h"
#include "gui/win32/dpi.h"
#include "sys/win32/wide.h"
#include "sys/win32/win32_windows.h"

namespace kx::win32 {

namespace {

constexpr wchar_t kTitle[] = L"ウィンドウ情報の取得";

// Control ids.
constexpr int kLabelId = 100;
constexpr int kFirstNameId = 110;
constexpr int kFirstValueId = 120;
constexpr int kSizeNameId = 130;
constexpr int kSizeListId = 131;
constexpr wchar_t kSizeName[] = L"画像の大きさ";
// The drop-down list opens this many rows tall.
constexpr int kSizeListRows = 8;

// The fields' labels, top to bottom.
constexpr std::array<const wchar_t*, CaptureWindow::kFieldCount> kFieldNames = {
    L"親ウィンドウ", L"子ウィンドウ", L"キャプション", L"クラス名", L"ハンドル"};

// Layout in device-independent units.
constexpr int kMarginDips = 8;
constexpr int kClientWidthDips = 380;
constexpr int kNameWidthDips = 84;
constexpr int kRowHeightDips = 22;
constexpr int kRowGapDips = 4;
constexpr int kLabelGapDips = 6;
// How far from the monitor's working area the window keeps.
constexpr int kScreenMarginDips = 16;

constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD kExStyle = WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE;

int ClientHeightDips() {
  constexpr int rows = static_cast<int>(CaptureWindow::kFieldCount);
  // The fields, then the row of the image's size.
  return kMarginDips + kRowHeightDips + kLabelGapDips + (rows + 1) * kRowHeightDips +
         rows * kRowGapDips + kMarginDips;
}

}  // namespace

bool CaptureWindow::Create() {
  WindowClassArgs cls{kCaptureWindowClass, nullptr, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1), 0};
  WindowArgs args;
  args.exStyle = kExStyle;
  args.title = kTitle;
  args.style = kStyle;
  args.x = args.y = args.width = args.height = 0;
  args.parent = owner_;
  if (!WindowBase::Create(cls, args)) return false;
  using enum TextLine::Kind;
  label_.Create({hwnd(), kLabelId, L""}, kLabel);
  for (std::size_t i = 0; i < kFieldCount; ++i) {
    names_[i].Create({hwnd(), kFirstNameId + static_cast<int>(i), kFieldNames[i]}, kLabel);
    values_[i].Create({hwnd(), kFirstValueId + static_cast<int>(i), L""}, kReadOnlyBox);
  }
  sizeName_.Create({hwnd(), kSizeNameId, kSizeName}, kLabel);
  sizeList_ = ::CreateWindowExW(0, WC_COMBOBOXW, L"", WS_CHILD | WS_TABSTOP | CBS_DROPDOWNLIST, 0,
                                0, 0, 0, hwnd(), reinterpret_cast<HMENU>(kSizeListId),
                                ::GetModuleHandleW(nullptr), nullptr);
  for (const int size : gui::kCaptureImageSizes) {
    const std::wstring text = std::to_wstring(size) + L" x " + std::to_wstring(size);
    const auto index =
        ::SendMessageW(sizeList_, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
    ::SendMessageW(sizeList_, CB_SETITEMDATA, static_cast<WPARAM>(index), size);
    if (size == gui::kDefaultCaptureImageSize)
      ::SendMessageW(sizeList_, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  }
  ApplyFonts();
  Place();
  return true;
}

void CaptureWindow::ApplyFonts() {
  font_.reset(CreateMessageFont(DpiOf(hwnd())));
  const auto set = [&](HWND w) {
    ::SendMessageW(w, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), TRUE);
  };
  set(label_.hwnd());
  for (std::size_t i = 0; i < kFieldCount; ++i) {
    set(names_[i].hwnd());
    set(values_[i].hwnd());
  }
  set(sizeName_.hwnd());
  set(sizeList_);
}

void CaptureWindow::Place() {
  const UINT dpi = DpiOf(hwnd());
  RECT frame{0, 0, Scale(kClientWidthDips, dpi), Scale(ClientHeightDips(), dpi)};
  ::AdjustWindowRectEx(&frame, kStyle, FALSE, kExStyle);
  const int width = frame.right - frame.left;
  const int height = frame.bottom - frame.top;
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  ::GetMonitorInfoW(::MonitorFromWindow(owner_ ? owner_ : hwnd(), MONITOR_DEFAULTTOPRIMARY),
                    &monitor);
  // Out of the way of what the user points at: the lower right corner.
  const int margin = Scale(kScreenMarginDips, dpi);
  const int x = monitor.rcWork.right - width - margin;
  const int y = monitor.rcWork.bottom - height - margin;
  ::SetWindowPos(hwnd(), HWND_TOPMOST, x, y, width, height, SWP_NOACTIVATE);
  Layout();
}

void CaptureWindow::Layout() {
  const UINT dpi = DpiOf(hwnd());
  RECT client{};
  ::GetClientRect(hwnd(), &client);
  const int margin = Scale(kMarginDips, dpi);
  const int row = Scale(kRowHeightDips, dpi);
  const int inner = std::max(0, static_cast<int>(client.right) - 2 * margin);
  const int nameWidth = Scale(kNameWidthDips, dpi);
  int y = margin;
  ::MoveWindow(label_.hwnd(), margin, y, inner, row, TRUE);
  y += row + Scale(kLabelGapDips, dpi);
  for (std::size_t i = 0; i < kFieldCount; ++i) {
    ::MoveWindow(names_[i].hwnd(), margin, y, nameWidth, row, TRUE);
    ::MoveWindow(values_[i].hwnd(), margin + nameWidth, y, std::max(0, inner - nameWidth), row,
                 TRUE);
    y += row + Scale(kRowGapDips, dpi);
  }
  ::MoveWindow(sizeName_.hwnd(), margin, y, nameWidth, row, TRUE);
  // A drop-down list's height is that of its open list.
  ::MoveWindow(sizeList_, margin + nameWidth, y, Scale(kNameWidthDips, dpi), row * kSizeListRows,
               TRUE);
}

void CaptureWindow::Open() {
  if (!hwnd() && !Create()) return;
  // Shown without taking the focus from the editor, where the lines go.
  ::ShowWindow(hwnd(), SW_SHOWNOACTIVATE);
}

void CaptureWindow::Close() {
  if (hwnd()) ::ShowWindow(hwnd(), SW_HIDE);
}

void CaptureWindow::SetLabel(std::string_view text) {
  label_.SetText(Widen(text));
}

void CaptureWindow::SetFields(const gui::CaptureFields& fields) {
  const std::array<const std::string*, kFieldCount> texts = {
      &fields.topCaption, &fields.child, &fields.caption, &fields.className, &fields.handle};
  for (std::size_t i = 0; i < kFieldCount; ++i) values_[i].SetText(Widen(*texts[i]));
}

WindowHandle CaptureWindow::Handle() {
  return FromHwnd(hwnd());
}

void CaptureWindow::ShowImageSize(bool shown) {
  if (!hwnd() && !Create()) return;
  ::ShowWindow(sizeName_.hwnd(), shown ? SW_SHOWNA : SW_HIDE);
  ::ShowWindow(sizeList_, shown ? SW_SHOWNA : SW_HIDE);
}

int CaptureWindow::ImageSize() {
  const auto index = sizeList_ ? ::SendMessageW(sizeList_, CB_GETCURSEL, 0, 0) : CB_ERR;
  if (index == CB_ERR) return gui::kDefaultCaptureImageSize;
  return static_cast<int>(::SendMessageW(sizeList_, CB_GETITEMDATA, static_cast<WPARAM>(index), 0));
}

LRESULT CaptureWindow::HandleMessage(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_CLOSE:
      // The logic decides; it hides the window through Close().
      if (onClose) onClose();
      return 0;
    case WM_DPICHANGED: {
      MoveToSuggestedRect(hwnd(), lp);
      ApplyFonts();
      Layout();
      return 0;
    }
    case WM_SIZE:
      Layout();
      return 0;
    default:
      return Default(msg, wp, lp);
  }
}

}  // namespace kx::win32
