#pragma once
// The real system: every port implemented on Win32, bundled for the player.
#include "input/win32/win32_input.h"
#include "sys/system.h"
#include "sys/win32/win32_browser.h"
#include "sys/win32/win32_clipboard.h"
#include "sys/win32/win32_clock.h"
#include "sys/win32/win32_dialogs.h"
#include "sys/win32/win32_documents.h"
#include "sys/win32/win32_environment.h"
#include "sys/win32/win32_notify.h"
#include "sys/win32/win32_power.h"
#include "sys/win32/win32_registry.h"
#include "sys/win32/win32_screen.h"
#include "sys/win32/win32_shell.h"
#include "sys/win32/win32_windows.h"

namespace kx::win32 {

class Win32System {
 public:
  // Files come from outside: the program's file port is shared with the
  // settings and the macro reader.
  explicit Win32System(FilePort& files) : files_(files) {}
  Win32System(const Win32System&) = delete;
  Win32System& operator=(const Win32System&) = delete;

  System Ports() {
    return System{input_, windows_,  shell_, clipboard_,   dialogs_, clock_,     notify_,
                  power_, registry_, files_, environment_, random_,  documents_, browser_,
                  screen_};
  }
  Win32Notify& notify() { return notify_; }
  Win32Clock& clock() { return clock_; }

 private:
  Win32Input input_;
  Win32Windows windows_;
  Win32Shell shell_;
  Win32Clipboard clipboard_;
  Win32Dialogs dialogs_;
  Win32Clock clock_;
  Win32Notify notify_;
  Win32Power power_;
  Win32Registry registry_;
  FilePort& files_;
  Win32Environment environment_;
  Win32Random random_;
  Win32Documents documents_;
  Win32Browser browser_;
  Win32Screen screen_;
};

}  // namespace kx::win32
