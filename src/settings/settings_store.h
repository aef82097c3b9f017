#pragma once
// Where the settings are kept: the four private-profile operations, each a
// separate access to the file, so that an edit made with a text editor while
// the program runs is seen by the next read.
#include <string>
#include <string_view>

#include "sys/file_port.h"

namespace kx {

inline constexpr std::string_view kSettingsSection = "Macro";
inline constexpr std::string_view kSettingsFileName = "setting.ini";

// The read buffer of a string value holds this many characters, the last of
// which is the terminating NUL.
inline constexpr std::size_t kSettingsStringBuffer = 32767;

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;
  // The stored integer; the default when the key is missing or empty; 0 for
  // a value that does not start with a number.
  virtual int ReadInt(std::string_view section, std::string_view key, int defaultValue) = 0;
  // The stored text cut at the first NUL; empty when the key is missing.
  virtual std::string ReadString(std::string_view section, std::string_view key) = 0;
  // Failures are silent: the settings are simply not kept.
  virtual void Write(std::string_view section, std::string_view key, std::string_view value) = 0;
  virtual void Delete(std::string_view section, std::string_view key) = 0;
};

// The settings file beside the program.
std::string SettingsPath(FilePort& files);

}  // namespace kx
