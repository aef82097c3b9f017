#pragma once
// The settings store of the Windows build: the wide-character private-profile
// functions on setting.ini.
#include <string>

#include "settings/settings_store.h"

namespace kx {

class ProfileSettingsStore : public SettingsStore {
 public:
  // path is UTF-8 and should be a full path: the profile functions look for
  // a bare name in the Windows folder.
  explicit ProfileSettingsStore(std::string path);

  int ReadInt(std::string_view section, std::string_view key, int defaultValue) override;
  std::string ReadString(std::string_view section, std::string_view key) override;
  void Write(std::string_view section, std::string_view key, std::string_view value) override;
  void Delete(std::string_view section, std::string_view key) override;

 private:
  // Creates a missing file as UTF-16LE with a byte-order mark, so that the
  // profile functions write it in Unicode and Japanese text survives on any
  // system code page.
  void CreateUnicodeFile();

  std::wstring path_;
};

}  // namespace kx
