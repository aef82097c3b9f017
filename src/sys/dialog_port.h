#pragma once
// Modal dialogs: message boxes and the input box.
#include <optional>
#include <string>
#include <string_view>

#include "sys/geometry.h"

namespace kx {

enum class MessageStyle { kOk, kOkCancel, kOkCancelQuestion, kYesNoQuestion };
enum class MessageResult { kOk, kCancel, kYes, kNo };

class DialogPort {
 public:
  virtual ~DialogPort() = default;
  virtual MessageResult MessageBox(WindowHandle owner, std::string_view text,
                                   std::string_view title,
                                   MessageStyle style = MessageStyle::kOk) = 0;
  // Nothing when the user cancels.
  virtual std::optional<std::string> InputBox(std::string_view prompt, std::string_view title,
                                              std::string_view initial) = 0;
};

}  // namespace kx
