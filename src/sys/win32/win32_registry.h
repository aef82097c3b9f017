#pragma once
// The registry editor's last-opened key, for the current user.
#include "sys/registry_port.h"

namespace kx::win32 {

class Win32Registry final : public RegistryPort {
 public:
  bool SetRegeditLastKey(std::string_view path) override;
};

}  // namespace kx::win32
