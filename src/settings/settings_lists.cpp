#include "settings/settings_lists.h"

namespace kx {

namespace {

constexpr std::size_t kHotkeyFields = 4;  // key, modifiers, display text, path

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

// Read field by field rather than split at "||": an entry whose last field
// is empty ends in "|", which with the separator makes "|||", and any field
// may be empty. An entry is four fields; the separator leaves one empty
// field between entries, and an empty entry two.
std::vector<ScriptHotkey> ParseHotkeyList(std::string_view value) {
  std::vector<ScriptHotkey> hotkeys;
  if (value.empty()) return hotkeys;
  const std::vector<std::string_view> fields = Split(value, "|");
  const auto field = [&](std::size_t i) {
    return i < fields.size() ? fields[i] : std::string_view();
  };
  int n = 0;
  for (std::size_t i = 0; i < fields.size(); ++n) {
    if (fields[i].empty() && (i + 1 >= fields.size() || fields[i + 1].empty())) {
      i += 2;
      continue;
    }
    ScriptHotkey hotkey;
    hotkey.id = kFirstScriptHotkeyId + n;
    hotkey.virtualKey = LeadingNumber(field(i));
    hotkey.modifiers = LeadingNumber(field(i + 1));
    hotkey.display = field(i + 2);
    hotkey.path = field(i + 3);
    hotkeys.push_back(std::move(hotkey));
    i += kHotkeyFields + 1;
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
