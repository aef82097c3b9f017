#include "sys/file_port.h"
#include "sys/power_port.h"

namespace kx {

std::string_view PowerActionWord(PowerAction action) {
  switch (action) {
    case PowerAction::kLogoff: return "logoff";
    case PowerAction::kShutdown: return "shutdown";
    case PowerAction::kReboot: return "reboot";
    case PowerAction::kStandby: return "standby";
    case PowerAction::kHibernate: return "hibernate";
    case PowerAction::kMonitorOn: return "monitoron";
    case PowerAction::kMonitorOff: return "monitoroff";
  }
  return "";
}

std::string_view CleanupWord(Cleanup what) {
  switch (what) {
    case Cleanup::kCookie: return "cookie";
    case Cleanup::kCache: return "cache";
    case Cleanup::kRecent: return "recent";
    case Cleanup::kRecycle: return "recycle";
    case Cleanup::kTemp: return "temp";
    case Cleanup::kHistory: return "history";
  }
  return "";
}

std::string JoinPath(FilePort& files, std::string_view folder, std::string_view name) {
  std::string path(folder);
  const char sep = files.Separator();
  if (!path.empty() && path.back() != sep) path += sep;
  path += name;
  return path;
}

}  // namespace kx
