#include "sys/win32/win32_registry.h"

#include <string>

#include "sys/win32/unique_handle.h"
#include "sys/win32/wide.h"
#include "sys/win32/windows_api.h"
// The shell's header needs the Windows headers before it.
#include <shlobj.h>

namespace kx::win32 {

namespace {

constexpr wchar_t kUserClasses[] = L"Software\\Classes\\";

std::wstring ClassKeyPath(std::string_view subKey) {
  return kUserClasses + Widen(subKey);
}

}  // namespace

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

bool Win32Registry::SetClassKey(std::string_view subKey, std::string_view defaultValue) {
  HKEY opened = nullptr;
  if (::RegCreateKeyExW(HKEY_CURRENT_USER, ClassKeyPath(subKey).c_str(), 0, nullptr, 0,
                        KEY_ALL_ACCESS, nullptr, &opened, nullptr) != ERROR_SUCCESS)
    return false;
  const unique_hkey key(opened);
  const std::wstring value = Widen(defaultValue);
  const LONG r =
      ::RegSetValueExW(key.get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                       static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  return r == ERROR_SUCCESS;
}

bool Win32Registry::DeleteClassKey(std::string_view subKey) {
  return ::RegDeleteKeyW(HKEY_CURRENT_USER, ClassKeyPath(subKey).c_str()) == ERROR_SUCCESS;
}

void Win32Registry::NotifyAssociationChanged() {
  ::SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
}

}  // namespace kx::win32
