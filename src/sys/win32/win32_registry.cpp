#include "sys/win32/win32_registry.h"

#include <string>

#include "sys/win32/unique_handle.h"
#include "sys/win32/wide.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

bool Win32Registry::SetRegeditLastKey(std::string_view path) {
  HKEY opened = nullptr;
  if (::RegCreateKeyExW(HKEY_CURRENT_USER,
                        L"Software\\Microsoft\\Windows\\CurrentVersion\\Applets\\Regedit", 0,
                        nullptr, 0, KEY_SET_VALUE, nullptr, &opened, nullptr) != ERROR_SUCCESS)
    return false;
  const unique_hkey key(opened);
  const std::wstring value = Widen(path);
  const LONG r = ::RegSetValueExW(key.get(), L"LastKey", 0, REG_SZ,
                                  reinterpret_cast<const BYTE*>(value.c_str()),
                                  static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  return r == ERROR_SUCCESS;
}

}  // namespace kx::win32
