#include "gui/win32/kestrelix_app.h"

#include <optional>
#include <string>

#include "gui/command_line.h"
#include "gui/player_settings.h"
#include "gui/win32/app_window.h"
#include "settings/win32/settings_store_win32.h"
#include "player/player.h"
#include "sys/local_files.h"
#include "sys/win32/unique_handle.h"
#include "sys/win32/wide.h"
#include "sys/win32/win32_system.h"
#include "text/macro_text.h"

namespace kx::win32 {

namespace {

constexpr wchar_t kInstanceMutex[] = L"Kestrelix.MainInstance";

std::string FileNameOf(const std::string& path) {
  const auto slash = path.find_last_of("\\/");
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

// Raises the first instance's window, found by class and title; this
// instance's own window has been renamed so that it cannot match.
void RaiseFirstInstance(HWND self) {
  ::SetWindowTextW(self, L"$");
  HWND first = ::FindWindowW(kMainWindowClass, Widen(kAppTitle).c_str());
  if (!first) return;
  if (!::IsWindowVisible(first) || ::IsIconic(first)) ::ShowWindow(first, SW_SHOWNORMAL);
  ::SetForegroundWindow(first);
}

// Shift, Ctrl and Alt go up when the program ends, so that none stays held.
void ReleaseModifiers(InputPort& input) {
  const KeyRecord keys[] = {{16, true}, {17, true}, {18, true}};
  input.SendKeys(keys);
}

}  // namespace

int RunKestrelix(HINSTANCE instance, int show) {
  LocalFiles files;
  Win32System system(files);
  AppWindow window(instance);
  if (!window.Created()) return 1;
  System ports = system.Ports();
  system.notify().SetMainWindow(window.hwnd());
  Player player(ports, window);
  window.OnHotkey([&player](int id) { player.HandleHotkey(id); });

  // The settings are only read here; a command-line run writes none back.
  ProfileSettingsStore store(SettingsPath(files));
  const Settings settings = ReadSettings(store);
  player.Options() = PlayerOptionsFromSettings(settings);
  window.SetLoopCount(LoopCountFromSettings(settings));

  // The Play hotkey is registered before the command line runs, so that it
  // can stop a macro started from there.
  std::optional<HotkeyRegistration> playHotkey;
  if (const HotkeyChord play = PlayHotkeyFromSettings(settings); play.Registered())
    playHotkey.emplace(window.hwnd(), kHotkeyPlay, static_cast<UINT>(play.modifiers),
                       static_cast<UINT>(play.key));

  // Command-line run: the first token that names an existing file is played
  // once, and the program ends without writing anything.
  const auto tokens = SplitCommandLine(ports.environment.CommandLine());
  if (const auto path = FirstExistingFile(tokens, files)) {
    window.SetMacro(ReadMacroFile(files, *path).value_or(""), FileNameOf(*path));
    player.PlayOrStop();
    return 0;
  }

  // A second instance hands over to the first and ends.
  unique_kernel_handle instanceMutex(::CreateMutexW(nullptr, FALSE, kInstanceMutex));
  if (::GetLastError() == ERROR_ALREADY_EXISTS) {
    RaiseFirstInstance(window.hwnd());
    return 0;
  }

  bool closing = false;
  window.OnClose([&] {
    if (closing) return;
    closing = true;
    ::ShowWindow(window.hwnd(), SW_HIDE);
    player.Abort();
    ReleaseModifiers(ports.input);
    ::PostQuitMessage(0);
  });
  const StartSwitches switches = ParseSwitches(tokens);
  if (!switches.hidden) ::ShowWindow(window.hwnd(), switches.minimized ? SW_SHOWMINIMIZED : show);
  ::UpdateWindow(window.hwnd());

  MSG msg;
  while (::GetMessageW(&msg, nullptr, 0, 0) > 0) {
    ::TranslateMessage(&msg);
    ::DispatchMessageW(&msg);
  }
  return static_cast<int>(msg.wParam);
}

}  // namespace kx::win32
