#pragma once
// Power state of the machine and the cleanup commands.
#include <cstdint>
#include <string_view>

namespace kx {

enum class PowerAction {
  kLogoff,
  kShutdown,
  kReboot,
  kStandby,
  kHibernate,
  kMonitorOn,
  kMonitorOff
};
enum class Cleanup { kCookie, kCache, kRecent, kRecycle, kTemp, kHistory };

// What the recycle bins of all drives hold.
struct RecycleBinContents {
  std::int64_t items = 0;
  std::int64_t bytes = 0;
};

class PowerPort {
 public:
  virtual ~PowerPort() = default;
  virtual void Power(PowerAction action) = 0;
  // The script's cleanups; "recycle" lets the system ask for confirmation.
  virtual void Clean(Cleanup what) = 0;
  virtual RecycleBinContents QueryRecycleBin() = 0;
  // Empties the recycle bins without the system's confirmation, for a caller
  // that has asked the user itself.
  virtual void EmptyRecycleBinUnasked() = 0;
};

// The script words, which are also the names the trace shows.
std::string_view PowerActionWord(PowerAction action);
std::string_view CleanupWord(Cleanup what);

}  // namespace kx
