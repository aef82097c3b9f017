#include "gui/win32/kestrelix_app.h"

#include <commctrl.h>

#include "gui/main_controller.h"
#include "gui/win32/main_window.h"
#include "gui/win32/win32_gui_ports.h"
#include "recorder/win32/win32_recorder_hooks.h"
#include "settings/win32/settings_store_win32.h"
#include "sys/local_files.h"
#include "sys/win32/win32_system.h"
#include "sys/win32/win32_windows.h"
#include "util/scope_exit.h"

namespace kx::win32 {

namespace {

// The controller of the running window, for the crash handler: whatever ends
// the program, no key a macro pressed stays down.
gui::MainController* g_controller = nullptr;

LONG WINAPI ReleaseHeldOnCrash(EXCEPTION_POINTERS*) {
  if (g_controller) g_controller->ReleaseHeldKeys();
  return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

int RunKestrelix(HINSTANCE, int) {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES | ICC_BAR_CLASSES |
                                                     ICC_TREEVIEW_CLASSES | ICC_UPDOWN_CLASS |
                                                     ICC_LISTVIEW_CLASSES | ICC_TAB_CLASSES |
                                                     ICC_DATE_CLASSES};
  ::InitCommonControlsEx(&controls);

  LocalFiles files;
  Win32System system(files);
  MainWindow window;
  if (!window.Create()) return 1;
  ProfileSettingsStore store(SettingsPath(files));
  Win32Folders folders;
  Win32Hotkeys hotkeys;
  hotkeys.SetWindow(window.hwnd());
  Win32Instance instance;
  instance.SetWindow(window.hwnd());
  system.notify().SetMainWindow(window.hwnd());

  Win32RecorderHooks recorderHooks;

  gui::MainController controller({system.Ports(), store, folders, hotkeys, instance, recorderHooks},
                                 window);
  controller.SetMainWindowHandle(FromHwnd(window.hwnd()));
  // The player's messages (blocked input) go where the program's own go.
  system.notify().SetStatusSink(
      [&controller](std::string_view text) { controller.ShowStatus(text); });
  window.SetController(&controller);
  // The main window's shortcuts work in the message loop and in a play's
  // pumps alike.
  system.clock().SetMessageFilter([&window](MSG& m) { return window.TranslateShortcut(m); });
  const scope_exit noFilter([&system] { system.clock().SetMessageFilter(nullptr); });
  if (controller.StartUp() != gui::StartResult::kRunning) return 0;

  g_controller = &controller;
  ::SetUnhandledExceptionFilter(ReleaseHeldOnCrash);
  const scope_exit forget([] { g_controller = nullptr; });
  MSG msg;
  try {
    while (::GetMessageW(&msg, nullptr, 0, 0) > 0) {
      if (window.TranslateShortcut(msg)) continue;
      ::TranslateMessage(&msg);
      ::DispatchMessageW(&msg);
    }
  } catch (...) {
    controller.ReleaseHeldKeys();
    throw;
  }
  return static_cast<int>(msg.wParam);
}

}  // namespace kx::win32
