#pragma once
// Power state changes and the cleanup commands, for the current user.
#include <string>

#include "sys/power_port.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

class Win32Power final : public PowerPort {
 public:
  void Power(PowerAction action) override;
  void Clean(Cleanup what) override;
  RecycleBinContents QueryRecycleBin() override;
  void EmptyRecycleBinUnasked() override;
};

// Deletes the files directly inside the folder; links, junctions, folders and
// files in use are left alone. Returns the number of files deleted.
int DeleteFilesIn(const std::wstring& folder);

}  // namespace kx::win32
