#include "sys/win32/win32_shell.h"

#include <shellapi.h>

#include <string>

#include "sys/win32/unique_handle.h"
#include "sys/win32/wide.h"

namespace kx::win32 {

bool Win32Shell::Open(std::string_view file, std::string_view workingFolder) {
  const std::wstring wfile = Widen(file);
  const std::wstring wfolder = Widen(workingFolder);
  SHELLEXECUTEINFOW info{};
  info.cbSize = sizeof info;
  info.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_FLAG_NO_UI | SEE_MASK_DOENVSUBST;
  info.lpVerb = nullptr;
  info.lpFile = wfile.c_str();
  info.lpParameters = nullptr;
  info.lpDirectory = wfolder.empty() ? nullptr : wfolder.c_str();
  info.nShow = SW_SHOWNORMAL;
  const BOOL ok = ::ShellExecuteExW(&info);
  unique_kernel_handle process(info.hProcess);
  const auto code = reinterpret_cast<INT_PTR>(info.hInstApp);
  if (!ok || code < 32) return false;
  if (process) ::WaitForInputIdle(process.get(), INFINITE);
  return true;
}

}  // namespace kx::win32
