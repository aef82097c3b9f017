#pragma once
// Power state of the machine and the cleanup commands.
#include <string_view>

namespace kx {

enum class PowerAction { kLogoff, kShutdown, kReboot, kStandby, kHibernate, kMonitorOn, kMonitorOff };
enum class Cleanup { kCookie, kCache, kRecent, kRecycle, kTemp, kHistory };

class PowerPort {
 public:
  virtual ~PowerPort() = default;
  virtual void Power(PowerAction action) = 0;
  virtual void Clean(Cleanup what) = 0;
};

// The script words, which are also the names the trace shows.
std::string_view PowerActionWord(PowerAction action);
std::string_view CleanupWord(Cleanup what);

}  // namespace kx
