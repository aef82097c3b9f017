#pragma once
// The common file dialogs and the folder browser, from a portable request.
#include <optional>
#include <string>

#include "gui/main_view.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

std::optional<std::string> AskOpenFile(HWND owner, const gui::FileDialogRequest& request);
std::optional<std::string> AskSaveFile(HWND owner, const gui::FileDialogRequest& request);
std::optional<std::string> AskFolderPath(HWND owner, std::string_view title);

}  // namespace kx::win32
