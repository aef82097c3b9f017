// Power, cleanup, message box and registry-editor commands.
#include <array>

#include "player/line_runner.h"
#include "util/basic_text.h"

namespace kx {

namespace {

struct PowerWord {
  std::string_view word;
  PowerAction action;
};

constexpr std::array kPowerWords = {
    PowerWord{"logoff", PowerAction::kLogoff},
    PowerWord{"shutdown", PowerAction::kShutdown},
    PowerWord{"reboot", PowerAction::kReboot},
    PowerWord{"standby", PowerAction::kStandby},
    PowerWord{"hibernate", PowerAction::kHibernate},
    PowerWord{"monitoron", PowerAction::kMonitorOn},
    PowerWord{"monitoroff", PowerAction::kMonitorOff},
};

struct CleanupWord {
  std::string_view word;
  Cleanup what;
};

constexpr std::array kCleanupWords = {
    CleanupWord{"cookie", Cleanup::kCookie}, CleanupWord{"cache", Cleanup::kCache},
    CleanupWord{"recent", Cleanup::kRecent}, CleanupWord{"recycle", Cleanup::kRecycle},
    CleanupWord{"temp", Cleanup::kTemp},     CleanupWord{"history", Cleanup::kHistory},
};

// The registry editor's name for the root of its tree.
constexpr std::string_view kRegeditRoot = "コンピュータ\\";

}  // namespace

void LineRunner::Power(std::string_view key) {
  for (const auto& p : kPowerWords)
    if (p.word == key) sys_.power.Power(p.action);
}

void LineRunner::Delete(std::string_view word) {
  for (const auto& c : kCleanupWords)
    if (c.word == word) sys_.power.Clean(c.what);
}

void LineRunner::MessageBox(std::string_view text) {
  const WindowHandle previous = sys_.windows.Foreground();
  sys_.dialogs.MessageBox(previous, text, p_.options_.appTitle);
  sys_.windows.SetForeground(previous);
}

void LineRunner::RegistryJump(std::string_view key) {
  std::string path(key);
  if (!path.starts_with(kRegeditRoot)) path = std::string(kRegeditRoot) + path;
  // The editor is started whether or not its last key could be written.
  sys_.registry.SetRegeditLastKey(path);
  sys_.shell.Open("regedit", "");
}

}  // namespace kx
