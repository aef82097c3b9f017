#include "gui/win32/app_window.h"

#include <algorithm>

#include "sys/win32/wide.h"
#include "sys/win32/win32_windows.h"

#ifndef WM_DPICHANGED
#define WM_DPICHANGED 0x02E0
#endif

namespace kx::win32 {

namespace {

constexpr int kEditorId = 1001;

void RegisterClassOnce(HINSTANCE instance, WNDPROC proc) {
  WNDCLASSEXW wc{};
  if (::GetClassInfoExW(instance, kMainWindowClass, &wc)) return;
  wc.cbSize = sizeof wc;
  wc.lpfnWndProc = proc;
  wc.hInstance = instance;
  wc.hIcon = ::LoadIconW(instance, MAKEINTRESOURCEW(1));
  wc.hIconSm = wc.hIcon;
  wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  wc.lpszClassName = kMainWindowClass;
  ::RegisterClassExW(&wc);
}

}  // namespace

AppWindow::AppWindow(HINSTANCE instance) {
  RegisterClassOnce(instance, &AppWindow::Proc);
  // The window is created hidden: start-up decides whether it is ever shown.
  window_.reset(::CreateWindowExW(WS_EX_APPWINDOW, kMainWindowClass, Widen(kAppTitle).c_str(),
                                  WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, 640, 480,
                                  nullptr, nullptr, instance, this));
  if (!window_) return;
  editor_ = ::CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"",
                              WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                                  ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NOHIDESEL | ES_WANTRETURN,
                              0, 0, 0, 0, window_.get(),
                              reinterpret_cast<HMENU>(static_cast<INT_PTR>(kEditorId)), instance,
                              nullptr);
  ApplyFont();
  Layout();
}

AppWindow::~AppWindow() {
  if (window_) ::SetWindowLongPtrW(window_.get(), GWLP_USERDATA, 0);
}

void AppWindow::ApplyFont() {
  HDC screen = ::GetDC(nullptr);
  const int dpi = std::max(96, ::GetDeviceCaps(screen, LOGPIXELSY));
  ::ReleaseDC(nullptr, screen);
  font_.reset(::CreateFontW(-::MulDiv(10, dpi, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE,
                            SHIFTJIS_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                            DEFAULT_QUALITY, FIXED_PITCH | FF_MODERN, L"MS Gothic"));
  if (editor_ && font_)
    ::SendMessageW(editor_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), TRUE);
}

void AppWindow::Layout() {
  RECT r{};
  ::GetClientRect(window_.get(), &r);
  if (editor_) ::MoveWindow(editor_, 0, 0, r.right, r.bottom, TRUE);
}

LRESULT CALLBACK AppWindow::Proc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept {
  if (msg == WM_NCCREATE) {
    auto* create = reinterpret_cast<CREATESTRUCTW*>(lp);
    ::SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
  }
  auto* self = reinterpret_cast<AppWindow*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (!self || !self->window_) return ::DefWindowProcW(hwnd, msg, wp, lp);
  // Nothing may escape into the system's dispatcher: a failure in a handler
  // is dropped here and the message gets its default treatment.
  try {
    return self->Handle(msg, wp, lp);
  } catch (...) {
    return ::DefWindowProcW(hwnd, msg, wp, lp);
  }
}

LRESULT AppWindow::Handle(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_SIZE:
      Layout();
      return 0;
    case WM_HOTKEY:
      if (onHotkey_) onHotkey_(static_cast<int>(wp));
      return 0;
    case WM_DPICHANGED: {
      const auto* suggested = reinterpret_cast<const RECT*>(lp);
      ::SetWindowPos(window_.get(), nullptr, suggested->left, suggested->top,
                     suggested->right - suggested->left, suggested->bottom - suggested->top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
      ApplyFont();
      return 0;
    }
    case WM_CLOSE:
      if (onClose_) onClose_();
      return 0;
    default:
      break;
  }
  return ::DefWindowProcW(window_.get(), msg, wp, lp);
}

void AppWindow::SetMacro(std::string_view text, std::string_view fileName) {
  fileName_ = std::string(fileName);
  if (editor_) ::SetWindowTextW(editor_, Widen(text).c_str());
  ::SetWindowTextW(window_.get(), Widen(IdleCaption()).c_str());
}

std::string AppWindow::Text() {
  if (!editor_) return {};
  const int len = ::GetWindowTextLengthW(editor_);
  std::wstring text(static_cast<size_t>(len) + 1, L'\0');
  const int got = ::GetWindowTextW(editor_, text.data(), len + 1);
  text.resize(static_cast<size_t>(std::max(got, 0)));
  return Narrow(text);
}

void AppWindow::SetPlaying(bool playing) {
  if (editor_) ::SendMessageW(editor_, EM_SETREADONLY, playing ? TRUE : FALSE, 0);
}

void AppWindow::HighlightLine(int index) {
  SelectLine(index);
}

void AppWindow::ClearHighlight() {
  if (editor_) ::SendMessageW(editor_, EM_SETSEL, 0, 0);
}

void AppWindow::SelectLine(int index) {
  if (!editor_) return;
  const auto start = ::SendMessageW(editor_, EM_LINEINDEX, static_cast<WPARAM>(index), 0);
  if (start < 0) return;
  auto end = ::SendMessageW(editor_, EM_LINEINDEX, static_cast<WPARAM>(index + 1), 0);
  if (end < 0) end = ::GetWindowTextLengthW(editor_);
  ::SendMessageW(editor_, EM_SETSEL, static_cast<WPARAM>(start), end);
}

std::string AppWindow::IdleCaption() {
  return fileName_.empty() ? std::string(kAppTitle) : std::string(kAppTitle) + " - " + fileName_;
}

WindowHandle AppWindow::MainWindow() {
  return FromHwnd(window_.get());
}

}  // namespace kx::win32
