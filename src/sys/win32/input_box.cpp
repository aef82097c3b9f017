// The input box, built from plain child windows so that it needs no dialog
// resource: a prompt, an edit field, OK and Cancel.
#include <optional>
#include <string>

#include "sys/win32/unique_handle.h"
#include "sys/win32/wide.h"
#include "sys/win32/win32_dialogs.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

namespace {

constexpr wchar_t kClassName[] = L"KestrelixInputBox";
constexpr int kEditId = 100;

struct InputBoxState {
  HWND edit = nullptr;
  bool done = false;
  std::optional<std::wstring> answer;
};

LRESULT CALLBACK InputBoxProc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept {
  auto* state = reinterpret_cast<InputBoxState*>(::GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  try {
    switch (msg) {
      case WM_COMMAND:
        if (!state) break;
        if (LOWORD(wp) == IDOK) {
          const int len = ::GetWindowTextLengthW(state->edit);
          std::wstring text(static_cast<size_t>(len) + 1, L'\0');
          ::GetWindowTextW(state->edit, text.data(), len + 1);
          text.resize(static_cast<size_t>(len));
          state->answer = std::move(text);
          state->done = true;
          return 0;
        }
        if (LOWORD(wp) == IDCANCEL) {
          state->done = true;
          return 0;
        }
        break;
      case WM_CLOSE:
        if (state) state->done = true;
        return 0;
      default:
        break;
    }
  } catch (...) {
    if (state) state->done = true;
  }
  return ::DefWindowProcW(hwnd, msg, wp, lp);
}

void RegisterOnce(HINSTANCE instance) {
  WNDCLASSEXW wc{};
  if (::GetClassInfoExW(instance, kClassName, &wc)) return;
  wc.cbSize = sizeof wc;
  wc.lpfnWndProc = InputBoxProc;
  wc.hInstance = instance;
  wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  wc.lpszClassName = kClassName;
  ::RegisterClassExW(&wc);
}

}  // namespace

std::optional<std::string> ShowInputBox(std::string_view prompt, std::string_view title,
                                        std::string_view initial) {
  HINSTANCE instance = ::GetModuleHandleW(nullptr);
  RegisterOnce(instance);
  HWND owner = ::GetActiveWindow();
  const int w = 400, h = 170;
  const int x = (::GetSystemMetrics(SM_CXSCREEN) - w) / 2;
  const int y = (::GetSystemMetrics(SM_CYSCREEN) - h) / 2;
  unique_hwnd box(::CreateWindowExW(WS_EX_DLGMODALFRAME, kClassName, Widen(title).c_str(),
                                    WS_POPUP | WS_CAPTION | WS_SYSMENU, x, y, w, h, owner, nullptr,
                                    instance, nullptr));
  if (!box) return std::nullopt;
  InputBoxState state;
  ::SetWindowLongPtrW(box.get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&state));
  auto font = static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
  auto child = [&](const wchar_t* cls, const std::wstring& text, DWORD style, int cx, int cy,
                   int cw, int ch, int id) {
    HWND c =
        ::CreateWindowExW(cls == std::wstring_view(L"EDIT") ? WS_EX_CLIENTEDGE : 0, cls,
                          text.c_str(), WS_CHILD | WS_VISIBLE | style, cx, cy, cw, ch, box.get(),
                          reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, nullptr);
    ::SendMessageW(c, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    return c;
  };
  child(L"STATIC", Widen(prompt), 0, 10, 10, 280, 60, -1);
  child(L"BUTTON", L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, 300, 10, 80, 26, IDOK);
  child(L"BUTTON", L"キャンセル", WS_TABSTOP, 300, 42, 80, 26, IDCANCEL);
  state.edit =
      child(L"EDIT", Widen(initial), WS_TABSTOP | ES_AUTOHSCROLL, 10, 95, 370, 24, kEditId);

  // Modal: the owner is disabled while the box is up and re-enabled before the
  // box goes, so that activation returns to it.
  const bool ownerWasEnabled = owner && ::IsWindowEnabled(owner);
  if (ownerWasEnabled) ::EnableWindow(owner, FALSE);
  ::ShowWindow(box.get(), SW_SHOWNORMAL);
  ::SetForegroundWindow(box.get());
  ::SetFocus(state.edit);
  ::SendMessageW(state.edit, EM_SETSEL, 0, -1);
  MSG msg;
  while (!state.done) {
    const BOOL got = ::GetMessageW(&msg, nullptr, 0, 0);
    if (got <= 0) {
      if (got == 0) ::PostQuitMessage(static_cast<int>(msg.wParam));
      break;
    }
    if (!::IsDialogMessageW(box.get(), &msg)) {
      ::TranslateMessage(&msg);
      ::DispatchMessageW(&msg);
    }
  }
  if (ownerWasEnabled) ::EnableWindow(owner, TRUE);
  ::SetWindowLongPtrW(box.get(), GWLP_USERDATA, 0);
  box.reset();
  if (!state.answer) return std::nullopt;
  return Narrow(*state.answer);
}

}  // namespace kx::win32
