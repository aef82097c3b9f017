// The smallest Win32 window program, the yardstick of the start-up and memory
// benchmark: a class, a window, a message loop.
#include <windows.h>

namespace {

LRESULT CALLBACK Proc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) {
  if (msg == WM_DESTROY) {
    ::PostQuitMessage(0);
    return 0;
  }
  return ::DefWindowProcW(hwnd, msg, wp, lp);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
  WNDCLASSW wc{};
  wc.lpfnWndProc = Proc;
  wc.hInstance = instance;
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  wc.lpszClassName = L"KxEmptyWindow";
  ::RegisterClassW(&wc);
  HWND hwnd = ::CreateWindowW(L"KxEmptyWindow", L"Empty", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300,
                              nullptr, nullptr, instance, nullptr);
  ::ShowWindow(hwnd, show);
  ::UpdateWindow(hwnd);
  MSG msg;
  while (::GetMessageW(&msg, nullptr, 0, 0) > 0) {
    ::TranslateMessage(&msg);
    ::DispatchMessageW(&msg);
  }
  return 0;
}
