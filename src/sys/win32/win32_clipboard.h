#pragma once
// The clipboard in its Unicode text format.
#include "sys/clipboard_port.h"

namespace kx::win32 {

class Win32Clipboard final : public ClipboardPort {
 public:
  std::optional<std::string> GetText() override;
  bool SetText(std::string_view text) override;
};

}  // namespace kx::win32
