#include "settings/win32/settings_store_win32.h"

#include <windows.h>

#include "sys/win32/unique_handle.h"
#include "text/utf.h"

namespace kx {

namespace {

std::wstring Wide(std::string_view utf8) {
  const std::u16string text = Utf8ToUtf16(utf8);
  return std::wstring(text.begin(), text.end());
}

std::string Narrow(std::wstring_view wide) {
  return Utf16ToUtf8(
      std::u16string_view(reinterpret_cast<const char16_t*>(wide.data()), wide.size()));
}

}  // namespace

ProfileSettingsStore::ProfileSettingsStore(std::string path) : path_(Wide(path)) {}

int ProfileSettingsStore::ReadInt(std::string_view section, std::string_view key,
                                  int defaultValue) {
  return static_cast<int>(
      GetPrivateProfileIntW(Wide(section).c_str(), Wide(key).c_str(), defaultValue, path_.c_str()));
}

std::string ProfileSettingsStore::ReadString(std::string_view section, std::string_view key) {
  std::wstring buffer(kSettingsStringBuffer, L'\0');
  GetPrivateProfileStringW(Wide(section).c_str(), Wide(key).c_str(), L"", buffer.data(),
                           static_cast<DWORD>(buffer.size()), path_.c_str());
  return Narrow(std::wstring_view(buffer.c_str()));
}

void ProfileSettingsStore::Write(std::string_view section, std::string_view key,
                                 std::string_view value) {
  CreateUnicodeFile();
  WritePrivateProfileStringW(Wide(section).c_str(), Wide(key).c_str(), Wide(value).c_str(),
                             path_.c_str());
}

void ProfileSettingsStore::Delete(std::string_view section, std::string_view key) {
  WritePrivateProfileStringW(Wide(section).c_str(), Wide(key).c_str(), nullptr, path_.c_str());
}

void ProfileSettingsStore::CreateUnicodeFile() {
  win32::unique_file file(CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return;  // it exists already, or cannot be made
  static constexpr BYTE kMark[] = {0xFF, 0xFE};
  DWORD written = 0;
  WriteFile(file.get(), kMark, sizeof kMark, &written, nullptr);
}

}  // namespace kx
