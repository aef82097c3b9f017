// Kestrelix.exe: the Windows program's entry point.
#include "gui/win32/kestrelix_app.h"
#include "sys/win32/windows_api.h"

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int show) {
  try {
    return kx::win32::RunKestrelix(instance, show);
  } catch (...) {
    return 1;
  }
}
