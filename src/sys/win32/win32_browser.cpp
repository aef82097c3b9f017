#include "sys/win32/win32_browser.h"

#include <shellapi.h>

#include <string>

#include "sys/win32/wide.h"

namespace kx::win32 {

namespace {

constexpr std::wstring_view kAppPaths =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\";
constexpr INT_PTR kFirstSuccessCode = 32;

// The default value of an App Paths key; empty when the key or value is
// missing.
std::wstring AppPathValue(HKEY root, const std::wstring& subKey) {
  DWORD bytes = 0;
  constexpr DWORD kFlags = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ;
  if (::RegGetValueW(root, subKey.c_str(), nullptr, kFlags, nullptr, nullptr, &bytes) !=
          ERROR_SUCCESS ||
      bytes < sizeof(wchar_t))
    return {};
  std::wstring value(bytes / sizeof(wchar_t), L'\0');
  if (::RegGetValueW(root, subKey.c_str(), nullptr, kFlags, nullptr, value.data(), &bytes) !=
      ERROR_SUCCESS)
    return {};
  value.resize(value.find(L'\0') == std::wstring::npos ? value.size() : value.find(L'\0'));
  // Installers sometimes quote the path.
  if (value.size() >= 2 && value.front() == L'"' && value.back() == L'"')
    value = value.substr(1, value.size() - 2);
  return value;
}

}  // namespace

bool Win32Browser::Launch(std::string_view program, std::string_view arguments) {
  const std::wstring file = Widen(program);
  const std::wstring parameters = Widen(arguments);
  SHELLEXECUTEINFOW info{};
  info.cbSize = sizeof info;
  // Not waiting for the browser to become idle: the caller polls its port
  // and keeps pumping messages meanwhile.
  info.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
  info.lpFile = file.c_str();
  info.lpParameters = parameters.c_str();
  info.nShow = SW_SHOWNORMAL;
  const BOOL ok = ::ShellExecuteExW(&info);
  return ok && reinterpret_cast<INT_PTR>(info.hInstApp) >= kFirstSuccessCode;
}

std::string Win32Browser::InstalledProgram(std::string_view exeName) {
  const std::wstring subKey = std::wstring(kAppPaths) + Widen(exeName);
  for (HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE})
    if (const std::wstring path = AppPathValue(root, subKey); !path.empty()) return Narrow(path);
  return {};
}

}  // namespace kx::win32
