#include "sys/win32/win32_dialogs.h"

#include "sys/win32/wide.h"
#include "sys/win32/win32_windows.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

MessageResult Win32Dialogs::MessageBox(WindowHandle owner, std::string_view text,
                                       std::string_view title, MessageStyle style) {
  UINT flags = MB_OK;
  if (style == MessageStyle::kOkCancel) flags = MB_OKCANCEL;
  if (style == MessageStyle::kOkCancelQuestion) flags = MB_OKCANCEL | MB_ICONQUESTION;
  if (style == MessageStyle::kYesNoQuestion) flags = MB_YESNO | MB_ICONQUESTION;
  const int r = ::MessageBoxW(ToHwnd(owner), Widen(text).c_str(), Widen(title).c_str(), flags);
  switch (r) {
    case IDOK:
      return MessageResult::kOk;
    case IDYES:
      return MessageResult::kYes;
    case IDNO:
      return MessageResult::kNo;
    default:
      return MessageResult::kCancel;
  }
}

std::optional<std::string> Win32Dialogs::InputBox(std::string_view prompt, std::string_view title,
                                                  std::string_view initial) {
  return ShowInputBox(prompt, title, initial);
}

}  // namespace kx::win32
