#pragma once
// Message boxes and the input box.
#include "sys/dialog_port.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

class Win32Dialogs final : public DialogPort {
 public:
  MessageResult MessageBox(WindowHandle owner, std::string_view text, std::string_view title,
                           MessageStyle style) override;
  std::optional<std::string> InputBox(std::string_view prompt, std::string_view title,
                                      std::string_view initial) override;
};

// The input box: a prompt, an edit field, OK and Cancel, modal to the active
// window. Nothing when cancelled.
std::optional<std::string> ShowInputBox(std::string_view prompt, std::string_view title,
                                        std::string_view initial);

}  // namespace kx::win32
