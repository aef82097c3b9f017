// Reads arbitrary bytes as setting.ini, raw and as UTF-16 text with its mark,
// through the INI store: every key, the Hotkey and Auto lists, then writes
// all keys back and reads them again. Bytes that are no text in the file's
// encoding may change once (they come back as "?"); from then on a write and
// a read must give back what was written.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "settings/ini_store.h"
#include "settings/settings.h"
#include "settings/settings_lists.h"
#include "sim/sim_system.h"

namespace {

void ReadWriteRead(const kx::Bytes& file) {
  kx::sim::SimSystem sim;
  sim.AddFile("/kestrelix/setting.ini", std::string(file.begin(), file.end()));
  kx::IniStore store(sim, "/kestrelix/setting.ini");
  const kx::Settings first = kx::ReadSettings(store);
  const auto hotkeys = kx::ParseHotkeyList(first.hotkey);
  const auto runs = kx::ParseAutoList(first.autoRuns);
  (void)kx::FormatHotkeyList(hotkeys);
  (void)kx::FormatAutoList(runs);

  for (const auto& key : kx::SettingKeys()) kx::WriteSetting(store, first, key.name);
  kx::DeleteObsoleteSettings(store);
  const kx::Settings second = kx::ReadSettings(store);
  for (const auto& key : kx::SettingKeys()) kx::WriteSetting(store, second, key.name);
  const kx::Settings third = kx::ReadSettings(store);
  for (const auto& key : kx::SettingKeys())
    if (kx::SettingText(second, key) != kx::SettingText(third, key)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const kx::Bytes raw(data, data + size);
  ReadWriteRead(raw);
  // The same bytes as UTF-16LE code units behind the byte-order mark.
  kx::Bytes wide = {0xFF, 0xFE};
  for (std::size_t i = 0; i < size; ++i) {
    wide.push_back(data[i]);
    wide.push_back(0);
  }
  ReadWriteRead(wide);
  return 0;
}
