#pragma once
// Every port the portable core reaches the system through, in one bundle that
// the player and the evaluator are handed. Each implementation (the Win32 one
// and the simulated one) provides all of them.
#include "input/input_port.h"
#include "sys/browser_port.h"
#include "sys/clipboard_port.h"
#include "sys/clock_port.h"
#include "sys/dialog_port.h"
#include "sys/document_port.h"
#include "sys/environment_port.h"
#include "sys/file_port.h"
#include "sys/notify_port.h"
#include "sys/power_port.h"
#include "sys/registry_port.h"
#include "sys/screen_port.h"
#include "sys/shell_port.h"
#include "sys/window_port.h"

namespace kx {

struct System {
  InputPort& input;
  WindowPort& windows;
  ShellPort& shell;
  ClipboardPort& clipboard;
  DialogPort& dialogs;
  ClockPort& clock;
  NotifyPort& notify;
  PowerPort& power;
  RegistryPort& registry;
  FilePort& files;
  EnvironmentPort& environment;
  RandomPort& random;
  DocumentPort& documents;
  BrowserPort& browser;
  ScreenPort& screen;
};

}  // namespace kx
