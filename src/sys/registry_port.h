#pragma once
// The registry, as far as the program writes it.
#include <string_view>

namespace kx {

class RegistryPort {
 public:
  virtual ~RegistryPort() = default;
  // Sets "LastKey" of the registry editor's applet key for the current user, so
  // that the editor opens there. False when the key cannot be written.
  virtual bool SetRegeditLastKey(std::string_view path) = 0;
};

}  // namespace kx
