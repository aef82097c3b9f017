/* The reference for tests/bench/wine_memory.sh: the least a Win32 program
   with one visible top-level window costs in memory. */
#include <windows.h>

static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message == WM_DESTROY) {
    PostQuitMessage(0);
    return 0;
  }
  return DefWindowProcW(window, message, w, l);
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE previous, LPSTR commandLine, int show) {
  WNDCLASSW wc = {0};
  MSG msg;
  (void)previous;
  (void)commandLine;
  wc.lpfnWndProc = Procedure;
  wc.hInstance = instance;
  wc.hCursor = LoadCursorW(NULL, (LPCWSTR)IDC_ARROW);
  wc.hbrBackground = (HBRUSH)(COLOR_WINDOW + 1);
  wc.lpszClassName = L"KxEmptyWindow";
  if (!RegisterClassW(&wc)) return 1;
  if (!CreateWindowExW(0, wc.lpszClassName, L"KxEmptyWindow", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                       CW_USEDEFAULT, CW_USEDEFAULT, 640, 480, NULL, NULL, instance, NULL))
    return 1;
  ShowWindow(GetActiveWindow(), show);
  while (GetMessageW(&msg, NULL, 0, 0) > 0) {
    TranslateMessage(&msg);
    DispatchMessageW(&msg);
  }
  return 0;
}
