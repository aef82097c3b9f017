#include "gui/win32/main_window.h"

#include <shellapi.h>

#include <algorithm>

#include "gui/app_info.h"
#include "gui/command_table.h"
#include "gui/win32/dpi.h"
#include "gui/win32/file_dialogs.h"
#include "gui/win32/menus.h"
#include "gui/win32/options_window.h"
#include "gui/win32/resource_ids.h"
#include "gui/win32/win32_gui_ports.h"
#include "sys/win32/wide.h"

namespace kx::win32 {

namespace {

using gui::Button;

// Control ids; menu ids come from the menu table and stay below these.
constexpr int kEditorId = 1001;
constexpr int kTreeId = 1002;
constexpr int kStatusId = 1003;
constexpr int kLoopId = 1004;
constexpr int kSpinId = 1005;
constexpr int kFirstButtonId = 1010;

// The tray icon: its id, its callback message and the size the shell is
// given (the version-2 structure).
constexpr UINT kTrayId = 0;
constexpr UINT kTrayMessage = WM_USER + 1;
constexpr UINT kTrayFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;

// Layout in device-independent units.
constexpr int kButtonHeightDips = 26;
constexpr int kLoopBoxHeightDips = 24;
constexpr int kGapDips = 3;
constexpr int kSplitterDips = 5;

struct ButtonSpec {
  const wchar_t* caption;
  const wchar_t* tip;
};
constexpr std::array<ButtonSpec, gui::kButtonCount> kButtons = {{
    {L"記録", L"操作記録の開始/終了"},
    {L"再生", L"操作記録を再生"},
    {L"クリア", L"操作記録をクリア"},
    {L"保存", L"マクロの保存。右クリックで上書き保存"},
    {L"読込", L"マクロの読み込み"},
}};
constexpr wchar_t kLoopTip[] = L"ループ再生する回数(0～9999)";

}  // namespace

bool MainWindow::Create() {
  icon_ = ::LoadIconW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kAppIconId));
  WindowClassArgs cls{kMainWindowClass, icon_, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1), 0};
  WindowArgs args;
  args.exStyle = WS_EX_APPWINDOW | WS_EX_ACCEPTFILES;
  const std::wstring title = Widen(gui::kAppTitle);
  args.title = title.c_str();
  args.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
  args.menuOrId = BuildMenuBar();
  if (!WindowBase::Create(cls, args)) return false;
  CreateControls();
  capture_.SetOwner(hwnd());
  capture_.onClose = [this] {
    if (controller_) controller_->OnCaptureClosed();
  };
  watch_.SetOwner(hwnd());
  watch_.onClose = [this] {
    if (controller_) controller_->OnWatchClosed();
  };
  editor_.onGutterClick = [this](int line) {
    if (controller_) controller_->OnGutterClick(line);
  };
  accelerators_ = BuildAccelerators();
  return true;
}

bool MainWindow::TranslateShortcut(MSG& msg) {
  if (!accelerators_ || !msg.hwnd) return false;
  // Only the main window's: the watch, the dialogs and the capture tool
  // keep their keys.
  if (msg.hwnd != hwnd() && !::IsChild(hwnd(), msg.hwnd)) return false;
  return ::TranslateAcceleratorW(hwnd(), accelerators_.get(), &msg) != 0;
}

void MainWindow::CreateControls() {
  for (int i = 0; i < gui::kButtonCount; ++i)
    buttons_[static_cast<std::size_t>(i)].Create(
        {hwnd(), kFirstButtonId + i, kButtons[static_cast<std::size_t>(i)].caption});
  buttons_[static_cast<std::size_t>(Button::kSave)].onRightClick = [this] {
    if (controller_) controller_->OnSaveRightClick();
  };
  loopBox_.Create({hwnd(), kLoopId, L"1"}, kSpinId);
  tree_.Create({hwnd(), kTreeId, L""});
  editor_.Create(hwnd(), kEditorId);
  status_.Create({hwnd(), kStatusId, L""});
  tooltips_.Create(hwnd());
  for (int i = 0; i < gui::kButtonCount; ++i)
    tooltips_.Add(buttons_[static_cast<std::size_t>(i)].hwnd(),
                  kButtons[static_cast<std::size_t>(i)].tip);
  tooltips_.Add(loopBox_.edit(), kLoopTip);
  ApplyFonts();
  Layout();
}

void MainWindow::ApplyFonts() {
  uiFont_.reset(CreateMessageFont(DpiOf(hwnd())));
  const auto set = [&](HWND w) {
    if (w) ::SendMessageW(w, WM_SETFONT, reinterpret_cast<WPARAM>(uiFont_.get()), TRUE);
  };
  for (const PushButton& b : buttons_) set(b.hwnd());
  set(loopBox_.edit());
  set(tree_.hwnd());
  set(status_.hwnd());
}

void MainWindow::Layout() {
  if (!status_.hwnd()) return;
  const UINT dpi = DpiOf(hwnd());
  status_.Layout();
  RECT client{};
  ::GetClientRect(hwnd(), &client);
  const int height = std::max(0, static_cast<int>(client.bottom) - status_.Height());
  const int width = client.right;
  const int split = std::min(TwipsToPixels(splitTwips_, dpi), std::max(0, width));
  const int buttonHeight = Scale(kButtonHeightDips, dpi);
  const int gap = Scale(kGapDips, dpi);
  int y = 0;
  for (const PushButton& b : buttons_) {
    ::MoveWindow(b.hwnd(), 0, y, split, buttonHeight, TRUE);
    y += buttonHeight;
  }
  y += gap;
  const int loopHeight = Scale(kLoopBoxHeightDips, dpi);
  ::MoveWindow(loopBox_.edit(), 0, y, split, loopHeight, TRUE);
  // The up-down control takes its place at the box's right edge again.
  ::SendMessageW(loopBox_.spin(), UDM_SETBUDDY, reinterpret_cast<WPARAM>(loopBox_.edit()), 0);
  y += loopHeight + gap;
  ::MoveWindow(tree_.hwnd(), 0, y, split, std::max(0, height - y), TRUE);
  const int editorLeft = split + Scale(kSplitterDips, dpi);
  ::MoveWindow(editor_.hwnd(), editorLeft, 0, std::max(0, width - editorLeft), height, TRUE);
  ::InvalidateRect(hwnd(), nullptr, FALSE);
}

// The splitter goes with the editor: with the editor hidden there is nothing
// to drag, and no sizing cursor shows.
RECT MainWindow::SplitterRect() const {
  if (editor_.Mode() == gui::EditorMode::kHidden) return RECT{};
  const UINT dpi = DpiOf(hwnd());
  const int split = TwipsToPixels(splitTwips_, dpi);
  RECT client{};
  ::GetClientRect(hwnd(), &client);
  return RECT{split, 0, split + Scale(kSplitterDips, dpi), client.bottom - status_.Height()};
}

void MainWindow::SetEditorMode(gui::EditorMode mode) {
  editor_.SetMode(mode);
  Layout();
}

void MainWindow::SetCaption(std::string_view text) {
  ::SetWindowTextW(hwnd(), Widen(text).c_str());
}

void MainWindow::SetStatus(std::string_view text) {
  status_.SetText(Widen(text));
}

void MainWindow::SetButtonCaption(gui::Button button, std::string_view text) {
  buttons_[static_cast<std::size_t>(button)].SetText(Widen(text));
}

void MainWindow::EnableButton(gui::Button button, bool enabled) {
  buttons_[static_cast<std::size_t>(button)].Enable(enabled);
}

void MainWindow::EnableTree(bool enabled) {
  ::EnableWindow(tree_.hwnd(), enabled ? TRUE : FALSE);
}

void MainWindow::SetTree(const std::vector<gui::TreeNode>& nodes, bool icons) {
  tree_.Set(nodes, icons);
}

void MainWindow::CheckMenuItem(int id, bool checked) {
  ::CheckMenuItem(::GetMenu(hwnd()), static_cast<UINT>(id),
                  MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
}

void MainWindow::EnableMenuItem(int id, bool enabled) {
  ::EnableMenuItem(::GetMenu(hwnd()), static_cast<UINT>(id),
                   MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
}

void MainWindow::SetSplitTwips(int twips) {
  splitTwips_ = twips;
  Layout();
}

void MainWindow::Show(gui::ShowMode mode) {
  switch (mode) {
    case gui::ShowMode::kHidden:
      ::ShowWindow(hwnd(), SW_HIDE);
      return;
    case gui::ShowMode::kMinimized:
      ::ShowWindow(hwnd(), SW_SHOWMINIMIZED);
      break;
    case gui::ShowMode::kNormal:
      ::ShowWindow(hwnd(),
                   storedState_ == gui::WindowState::kMaximized ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
      break;
    case gui::ShowMode::kRestored:
      ::ShowWindow(hwnd(), SW_RESTORE);
      break;
    case gui::ShowMode::kShown:
      ::ShowWindow(hwnd(), SW_SHOW);
      break;
  }
  ::UpdateWindow(hwnd());
}

bool MainWindow::Visible() {
  return ::IsWindowVisible(hwnd()) && !::IsIconic(hwnd());
}

void MainWindow::FocusEditor() {
  ::SetFocus(editor_.hText());
}

void MainWindow::BringToFront() {
  ::SetForegroundWindow(hwnd());
}

gui::WindowState MainWindow::State() {
  if (::IsIconic(hwnd())) return gui::WindowState::kMinimized;
  if (::IsZoomed(hwnd())) return gui::WindowState::kMaximized;
  return gui::WindowState::kNormal;
}

gui::PlacementTwips MainWindow::Placement() {
  RECT r{};
  ::GetWindowRect(hwnd(), &r);
  if (placedTwips_ && ::EqualRect(&r, &placedPixels_)) return *placedTwips_;
  const UINT dpi = DpiOf(hwnd());
  return {PixelsToTwips(r.left, dpi), PixelsToTwips(r.top, dpi),
          PixelsToTwips(r.right - r.left, dpi), PixelsToTwips(r.bottom - r.top, dpi)};
}

void MainWindow::SetPlacement(const gui::PlacementTwips& p, gui::WindowState state) {
  storedState_ = state;
  const UINT dpi = DpiOf(hwnd());
  ::SetWindowPos(hwnd(), nullptr, TwipsToPixels(p.x, dpi), TwipsToPixels(p.y, dpi),
                 TwipsToPixels(p.width, dpi), TwipsToPixels(p.height, dpi),
                 SWP_NOZORDER | SWP_NOACTIVATE);
  placedTwips_ = p;
  ::GetWindowRect(hwnd(), &placedPixels_);
}

void MainWindow::SetTopMost(bool topMost) {
  ::SetWindowPos(hwnd(), topMost ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void MainWindow::UpdateTrayIcon(DWORD action, bool playing) {
  NOTIFYICONDATAW data{};
  data.cbSize = NOTIFYICONDATAW_V2_SIZE;
  data.hWnd = hwnd();
  data.uID = kTrayId;
  data.uFlags = kTrayFlags;
  data.uCallbackMessage = kTrayMessage;
  data.hIcon = icon_;
  const std::wstring tip = Widen(gui::kAppTitle) + (playing ? L" - 再生中" : L"");
  std::copy_n(tip.c_str(), std::min(tip.size(), std::size(data.szTip) - 1), data.szTip);
  ::Shell_NotifyIconW(action, &data);
}

void MainWindow::SetTrayIcon(bool shown) {
  if (shown == tray_) return;
  tray_ = shown;
  UpdateTrayIcon(shown ? NIM_ADD : NIM_DELETE, false);
  // With a tray icon the window keeps no task-bar button of its own: it is
  // owned by a hidden window and loses the application-window style.
  if (shown && !trayOwner_)
    trayOwner_.reset(::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr,
                                       ::GetModuleHandleW(nullptr), nullptr));
  LONG_PTR ex = ::GetWindowLongPtrW(hwnd(), GWL_EXSTYLE);
  ex = shown ? (ex & ~static_cast<LONG_PTR>(WS_EX_APPWINDOW)) : (ex | WS_EX_APPWINDOW);
  ::SetWindowLongPtrW(hwnd(), GWL_EXSTYLE, ex);
  ::SetWindowLongPtrW(hwnd(), GWLP_HWNDPARENT,
                      reinterpret_cast<LONG_PTR>(shown ? trayOwner_.get() : nullptr));
  // The task bar looks at a window's styles when it is shown.
  if (::IsWindowVisible(hwnd())) {
    ::ShowWindow(hwnd(), SW_HIDE);
    ::ShowWindow(hwnd(), SW_SHOWNA);
  }
}

void MainWindow::SetPlayingIcon(bool playing) {
  if (tray_) UpdateTrayIcon(NIM_MODIFY, playing);
}

void MainWindow::Close() {
  ::DestroyWindow(hwnd());
}

std::optional<std::string> MainWindow::AskOpenPath(const gui::FileDialogRequest& request) {
  return AskOpenFile(hwnd(), request);
}

std::optional<std::string> MainWindow::AskSavePath(const gui::FileDialogRequest& request) {
  return AskSaveFile(hwnd(), request);
}

std::optional<std::string> MainWindow::AskFolder(std::string_view title) {
  return AskFolderPath(hwnd(), title);
}

void MainWindow::RunCommandLine(std::string_view commandLine) {
  std::wstring line = Widen(commandLine);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWNORMAL;
  PROCESS_INFORMATION process{};
  if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process)) {
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
  }
}

void MainWindow::StartTimer(gui::Timer timer, int intervalMs) {
  ::SetTimer(hwnd(), static_cast<UINT_PTR>(timer), static_cast<UINT>(intervalMs), nullptr);
}

void MainWindow::StopTimer(gui::Timer timer) {
  ::KillTimer(hwnd(), static_cast<UINT_PTR>(timer));
}

void MainWindow::ShowAbout() {
  const std::wstring text =
      Widen(std::string(gui::kAppTitle) + " バージョン " + gui::kVersion +
            "\r\nキーボードとマウスの操作を記録して再生するマクロツール\r\n" + gui::kHomePageUrl);
  const std::wstring title = L"バージョン情報";
  MSGBOXPARAMSW params{};
  params.cbSize = sizeof params;
  params.hwndOwner = hwnd();
  params.hInstance = ::GetModuleHandleW(nullptr);
  params.lpszText = text.c_str();
  params.lpszCaption = title.c_str();
  params.dwStyle = MB_OK | MB_USERICON;
  params.lpszIcon = MAKEINTRESOURCEW(kAppIconId);
  ::MessageBoxIndirectW(&params);
}

void MainWindow::ShowOptionsDialog(gui::OptionsDialog& dialog) {
  OptionsWindow window(dialog);
  window.Run(hwnd());
}

// --- messages ----------------------------------------------------------------

void MainWindow::OnCommand(WPARAM wp, LPARAM lp) {
  const int id = LOWORD(wp);
  if (lp == 0) {
    controller_->OnMenuCommand(id);
    return;
  }
  if (reinterpret_cast<HWND>(lp) == editor_.hText()) {
    if (HIWORD(wp) == EN_CHANGE) controller_->OnEditorChanged();
    return;
  }
  if (id >= kFirstButtonId && id < kFirstButtonId + gui::kButtonCount && HIWORD(wp) == BN_CLICKED)
    controller_->OnButton(static_cast<gui::Button>(id - kFirstButtonId));
}

void MainWindow::OnMenuSelect(WPARAM wp, LPARAM lp) {
  const UINT flags = HIWORD(wp);
  if (flags == 0xFFFF && lp == 0) {
    controller_->OnMenuClosed();
    return;
  }
  controller_->OnMenuSelect(LOWORD(wp), (flags & MF_POPUP) != 0);
}

LRESULT MainWindow::OnNotify(const NMHDR& header) {
  if (header.hwndFrom != tree_.hwnd()) return 0;
  if (header.code == NM_DBLCLK) {
    if (const auto path = tree_.SelectedPath(); path && !tree_.SelectedIsFolder())
      controller_->OnTreeOpen(*path);
    return 1;
  }
  if (header.code == NM_RCLICK) {
    ShowTreeMenu();
    return 1;
  }
  return 0;
}

void MainWindow::ShowTreeMenu() {
  POINT cursor{};
  ::GetCursorPos(&cursor);
  const bool onNode = tree_.SelectAt(cursor);
  const bool file = onNode && !tree_.SelectedIsFolder();
  const unique_hmenu menu = BuildContextMenu(file ? gui::kTreeFileMenu : gui::kTreeMenu);
  if (!menu) return;
  const UINT id = static_cast<UINT>(::TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON,
                                                     cursor.x, cursor.y, 0, hwnd(), nullptr));
  if (id != 0) controller_->OnMenuCommand(static_cast<int>(id));
}

void MainWindow::DragSplitter(int x) {
  const UINT dpi = DpiOf(hwnd());
  RECT client{};
  ::GetClientRect(hwnd(), &client);
  const int twips = dragStartTwips_ + PixelsToTwips(x - dragStartX_, dpi);
  SetSplitTwips(gui::ClampSplit(twips, PixelsToTwips(client.right, dpi)));
}

LRESULT MainWindow::HandleMessage(UINT msg, WPARAM wp, LPARAM lp) {
  if (!controller_) {
    if (msg == WM_SIZE) Layout();
    return Default(msg, wp, lp);
  }
  switch (msg) {
    case WM_SIZE:
      Layout();
      return 0;
    case WM_COMMAND:
      OnCommand(wp, lp);
      return 0;
    case WM_MENUSELECT:
      OnMenuSelect(wp, lp);
      return 0;
    case WM_EXITMENULOOP:
      controller_->OnMenuClosed();
      return 0;
    case WM_NOTIFY:
      return OnNotify(*reinterpret_cast<const NMHDR*>(lp));
    case WM_TIMER:
      controller_->OnTimer(static_cast<gui::Timer>(wp));
      return 0;
    case WM_HOTKEY:
      controller_->OnHotkey(static_cast<int>(wp));
      return 0;
    case kTrayMessage:
      if (lp == WM_LBUTTONDOWN) controller_->OnTrayClick();
      return 0;
    case WM_SETCURSOR: {
      POINT p{};
      ::GetCursorPos(&p);
      ::ScreenToClient(hwnd(), &p);
      const RECT splitter = SplitterRect();
      if (reinterpret_cast<HWND>(wp) == hwnd() && ::PtInRect(&splitter, p)) {
        ::SetCursor(::LoadCursorW(nullptr, IDC_SIZEWE));
        return TRUE;
      }
      return Default(msg, wp, lp);
    }
    case WM_LBUTTONDOWN: {
      const POINT p{static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))};
      const RECT splitter = SplitterRect();
      if (::PtInRect(&splitter, p)) {
        draggingSplitter_ = true;
        dragStartX_ = p.x;
        dragStartTwips_ = splitTwips_;
        ::SetCapture(hwnd());
      }
      return 0;
    }
    case WM_MOUSEMOVE:
      if (draggingSplitter_) DragSplitter(static_cast<short>(LOWORD(lp)));
      return 0;
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
      if (draggingSplitter_) {
        draggingSplitter_ = false;
        if (msg == WM_LBUTTONUP) ::ReleaseCapture();
      }
      return 0;
    case WM_DROPFILES: {
      const HDROP drop = reinterpret_cast<HDROP>(wp);
      std::wstring path(MAX_PATH * 8, L'\0');
      const UINT length = ::DragQueryFileW(drop, 0, path.data(), static_cast<UINT>(path.size()));
      ::DragFinish(drop);
      path.resize(length);
      if (length > 0) controller_->OnFileDropped(Narrow(path));
      return 0;
    }
    case WM_DPICHANGED: {
      MoveToSuggestedRect(hwnd(), lp);
      ApplyFonts();
      editor_.DpiChanged();
      Layout();
      return 0;
    }
    case WM_CLOSE:
      controller_->RequestClose();
      return 0;
    // Log-off and shut-down never wait for the user: the session may end,
    // and when it does, the close's writes happen before this returns.
    case WM_QUERYENDSESSION:
      return TRUE;
    case WM_ENDSESSION:
      if (wp) controller_->OnSessionEnd();
      return 0;
    case WM_DESTROY:
      ::PostQuitMessage(0);
      return 0;
    default:
      return Default(msg, wp, lp);
  }
}

}  // namespace kx::win32
