#pragma once
// Opening files, programs and addresses through ShellExecuteExW.
#include "sys/shell_port.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

class Win32Shell final : public ShellPort {
 public:
  bool Open(std::string_view file, std::string_view workingFolder) override;
};

}  // namespace kx::win32
