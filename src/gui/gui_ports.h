#pragma once
// What the main window's logic reaches besides the player's ports: global
// hotkeys, the other running instance, folders and the settings file.
#include "recorder/hook_port.h"
#include "settings/settings_store.h"
#include "sys/folder_port.h"
#include "sys/system.h"

namespace kx::gui {

class HotkeyPort {
 public:
  virtual ~HotkeyPort() = default;
  // False when the system refused (another program holds the chord).
  virtual bool Register(int id, int modifiers, int key) = 0;
  virtual void Unregister(int id) = 0;
};

class InstancePort {
 public:
  virtual ~InstancePort() = default;
  virtual bool OtherInstanceRunning() = 0;
  // Shows the other instance's main window in its normal state when it is
  // hidden or minimised, and brings it to the front.
  virtual void RaiseOtherInstance() = 0;
};

struct GuiPorts {
  System system;
  SettingsStore& settings;
  FolderPort& folders;
  HotkeyPort& hotkeys;
  InstancePort& instance;
  RecorderHookPort& recorderHooks;
};

}  // namespace kx::gui
