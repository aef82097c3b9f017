#include "settings/settings_lists.h"

namespace kx {

namespace {

std::vector<std::string_view> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> pieces;
  std::size_t start = 0;
  while (true) {
    const std::size_t at = text.find(separator, start);
    if (at == std::string_view::npos) {
      pieces.push_back(text.substr(start));
      return pieces;
    }
    pieces.push_back(text.substr(start, at - start));
    start = at + separator.size();
  }
}

// A leading decimal number, as the original's Val read it; 0 when none.
int LeadingNumber(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && text[i] == ' ') ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
  long value = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9' && value < 100000000; ++i)
    value = value * 10 + (text[i] - '0');
  return static_cast<int>(negative ? -value : value);
}

}  // namespace

std::vector<ScriptHotkey> ParseHotkeyList(std::string_view value) {
  std::vector<ScriptHotkey> hotkeys;
  if (value.empty()) return hotkeys;
  const std::vector<std::string_view> entries = Split(value, "||");
  for (std::size_t n = 0; n < entries.size(); ++n) {
    if (entries[n].empty()) continue;
    const std::vector<std::string_view> fields = Split(entries[n], "|");
    auto field = [&](std::size_t i) { return i < fields.size() ? fields[i] : std::string_view(); };
    ScriptHotkey hotkey;
    hotkey.id = kFirstScriptHotkeyId + static_cast<int>(n);
    hotkey.virtualKey = LeadingNumber(field(0));
    hotkey.modifiers = LeadingNumber(field(1));
    hotkey.display = field(2);
    hotkey.path = field(3);
    hotkeys.push_back(std::move(hotkey));
  }
  return hotkeys;
}

std::string FormatHotkeyList(const std::vector<ScriptHotkey>& hotkeys) {
  std::string value;
  for (const ScriptHotkey& hotkey : hotkeys) {
    if (!value.empty()) value += "||";
    value += std::to_string(hotkey.virtualKey) + "|" + std::to_string(hotkey.modifiers) + "|" +
             hotkey.display + "|" + hotkey.path;
  }
  return value;
}

std::vector<ScheduledRun> ParseAutoList(std::string_view value) {
  std::vector<ScheduledRun> runs;
  if (value.empty()) return runs;
  for (const std::string_view record : Split(value, "|")) {
    if (record.empty()) continue;
    ScheduledRun run;
    const std::size_t first = record.find(',');
    run.kind = record.substr(0, first);
    if (first != std::string_view::npos) {
      const std::size_t second = record.find(',', first + 1);
      run.time = record.substr(first + 1, second == std::string_view::npos ? std::string_view::npos
                                                                           : second - first - 1);
      if (second != std::string_view::npos) run.path = record.substr(second + 1);
    }
    runs.push_back(std::move(run));
  }
  return runs;
}

std::string FormatAutoList(const std::vector<ScheduledRun>& runs) {
  std::string value;
  for (const ScheduledRun& run : runs) {
    if (!value.empty()) value += "|";
    value += run.kind + "," + run.time + "," + run.path;
  }
  return value;
}

}  // namespace kx
