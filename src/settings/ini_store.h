#pragma once
// A settings store that reads and writes the INI file itself, with the
// semantics of the Windows private-profile functions: for the builds and
// systems that have none. It reads UTF-16LE with a byte-order mark, UTF-8
// and the ANSI code page, writes a file back in the encoding it had, and
// creates a new one as UTF-16LE with a byte-order mark.
#include <string>

#include "settings/settings_store.h"

namespace kx {

class IniStore : public SettingsStore {
 public:
  IniStore(FilePort& files, std::string path) : files_(files), path_(std::move(path)) {}

  int ReadInt(std::string_view section, std::string_view key, int defaultValue) override;
  std::string ReadString(std::string_view section, std::string_view key) override;
  void Write(std::string_view section, std::string_view key, std::string_view value) override;
  void Delete(std::string_view section, std::string_view key) override;

 private:
  FilePort& files_;
  std::string path_;
};

// Reads a profile integer the way Windows does: leading blanks, a sign, then
// decimal digits or digits after 0x, 0o or 0b, up to the first other
// character; 0 when no digit follows.
int ParseProfileInt(std::string_view text);

}  // namespace kx
