#pragma once
// The automation browser on Windows: the DevTools side comes from the
// portable client; starting the browser and finding it in App Paths here.
#include "page/devtools/devtools_browser.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

class Win32Browser final : public devtools::DevToolsBrowser {
 public:
  bool Launch(std::string_view program, std::string_view arguments) override;
  std::string InstalledProgram(std::string_view exeName) override;
};

}  // namespace kx::win32
