#pragma once
// The registry editor's last-opened key and the file classes, for the
// current user.
#include "sys/registry_port.h"

namespace kx::win32 {

class Win32Registry final : public RegistryPort {
 public:
  bool SetRegeditLastKey(std::string_view path) override;
  bool SetClassKey(std::string_view subKey, std::string_view defaultValue) override;
  bool DeleteClassKey(std::string_view subKey) override;
  void NotifyAssociationChanged() override;
};

}  // namespace kx::win32
