#include "gui/options_model.h"

#include <algorithm>
#include <charconv>

#include "gui/file_association.h"

namespace kx::gui {

namespace {

constexpr std::string_view kWriteOrder[] = {
    "DefMacro",     "Hits",          "FontSize",     "Up",          "HotkeyV",
    "HotkeyVMod",   "HotkeyRec",     "HotkeyRecMod", "HotkeyPlay",  "HotkeyPlayMod",
    "HotkeyStop",   "HotkeyStopMod", "RecKeyMouse",  "RecKeyClick", "EndNotifer",
    "TextMode",     "Hotkey",        "Auto",         "Linkage",     "Browser",
    "DevToolsPort",
};

constexpr int kDisplayModes = 3;  // 行数+ルーラー, 行数, なし

std::string HotkeyEntryText(const HotkeyChoice& hotkey, std::string_view display,
                            std::string_view path) {
  return std::to_string(hotkey.key) + "|" + std::to_string(hotkey.modifiers) + "|" +
         std::string(display) + "|" + std::string(path);
}

// Another row than `except` shows this display text.
bool ShownByAnotherRow(const std::vector<HotkeyRow>& rows, std::string_view display, int except) {
  for (int i = 0; i < static_cast<int>(rows.size()); ++i)
    if (i != except && rows[static_cast<std::size_t>(i)].display == display) return true;
  return false;
}

bool Blank(std::string_view text) {
  return text.find_first_not_of(' ') == std::string_view::npos;
}

template <typename Row>
bool ValidRow(const std::vector<Row>& rows, int row) {
  return row >= 0 && row < static_cast<int>(rows.size());
}

std::string_view TrimBlanks(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// A port TCP allows; none for anything else.
std::optional<int> PortNumber(std::string_view text) {
  text = TrimBlanks(text);
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (value < kPortMin || value > kPortMax) return std::nullopt;
  return value;
}

std::optional<int> HitsNumber(std::string_view text) {
  text = TrimBlanks(text);
  long value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return static_cast<int>(std::clamp<long>(value, kHitsMin, kHitsMax));
}

}  // namespace

OptionsValues OptionsFromSettings(const Settings& settings) {
  OptionsValues v;
  v.showHide = {settings.hotkeyV, settings.hotkeyVMod};
  v.record = {settings.hotkeyRec, settings.hotkeyRecMod};
  v.play = {settings.hotkeyPlay, settings.hotkeyPlayMod};
  v.pause = {settings.hotkeyStop, settings.hotkeyStopMod};
  v.recKeyMouse = settings.recKeyMouse;
  v.recKeyClick = settings.recKeyClick;
  for (const ScriptHotkey& h : ParseHotkeyList(settings.hotkey))
    v.hotkeys.push_back(
        {h.display, h.path, HotkeyEntryText({h.virtualKey, h.modifiers}, h.display, h.path)});
  v.schedule = ParseAutoList(settings.autoRuns);
  v.endNotifer = settings.endNotifer;
  v.up = settings.up;
  v.hits = std::to_string(settings.hits);
  v.fontSize = settings.fontSize;
  v.editorShown = settings.textMode != kTextModeHidden;
  v.displayMode =
      settings.textMode >= 0 && settings.textMode < kDisplayModes ? settings.textMode : 0;
  v.defMacro = settings.defMacro;
  v.linkage = settings.linkage == kLinkageAssociated ? kLinkageAssociated : kLinkageRemoved;
  v.browser = settings.browser;
  v.devToolsPort = std::to_string(settings.devToolsPort);
  return v;
}

void ApplyOptions(const OptionsValues& v, Settings& settings) {
  settings.defMacro = v.defMacro;
  if (const auto hits = HitsNumber(v.hits)) settings.hits = *hits;
  settings.fontSize = v.fontSize;
  settings.up = v.up;
  settings.hotkeyV = v.showHide.key;
  settings.hotkeyVMod = v.showHide.modifiers;
  settings.hotkeyRec = v.record.key;
  settings.hotkeyRecMod = v.record.modifiers;
  settings.hotkeyPlay = v.play.key;
  settings.hotkeyPlayMod = v.play.modifiers;
  settings.hotkeyStop = v.pause.key;
  settings.hotkeyStopMod = v.pause.modifiers;
  settings.recKeyMouse = v.recKeyMouse;
  settings.recKeyClick = v.recKeyClick;
  settings.endNotifer = v.endNotifer;
  settings.textMode = v.editorShown ? v.displayMode : kTextModeHidden;
  std::string hotkey;
  for (const HotkeyRow& row : v.hotkeys) hotkey += (hotkey.empty() ? "" : "||") + row.tag;
  settings.hotkey = hotkey;
  settings.autoRuns = FormatAutoList(v.schedule);
  settings.linkage = v.linkage;
  // Quotes a path was copied with would make it name no file.
  std::string_view browser = TrimBlanks(v.browser);
  if (browser.size() >= 2 && browser.front() == '"' && browser.back() == '"')
    browser = browser.substr(1, browser.size() - 2);
  settings.browser = std::string(browser);
  if (const auto port = PortNumber(v.devToolsPort)) settings.devToolsPort = *port;
}

std::span<const std::string_view> OptionsWriteOrder() {
  return kWriteOrder;
}

void WriteOptions(SettingsStore& store, const Settings& settings) {
  for (const std::string_view name : kWriteOrder) WriteSetting(store, settings, name);
}

EditorMode EditorModeFromTextMode(int textMode) {
  switch (textMode) {
    case 1:
      return EditorMode::kNumbers;
    case 2:
      return EditorMode::kPlain;
    case kTextModeHidden:
      return EditorMode::kHidden;
    default:
      return EditorMode::kNumbersAndRuler;  // 0, and any value outside 0-3
  }
}

OptionsDialog::OptionsDialog(const Settings& settings, RegistryPort& registry,
                             std::string browseFolder, std::string programPath,
                             std::function<void(const OptionsValues&)> confirm)
    : values(OptionsFromSettings(settings)),
      registry_(registry),
      browseFolder_(std::move(browseFolder)),
      programPath_(std::move(programPath)),
      confirm_(std::move(confirm)) {}

ListEdit OptionsDialog::AddHotkey(const HotkeyChoice& hotkey, std::string_view display,
                                  std::string_view path) {
  if (hotkey.key == 0) return ListEdit::kNothing;
  if (Blank(path)) return ListEdit::kNoMacro;
  if (ShownByAnotherRow(values.hotkeys, display, -1)) return ListEdit::kDuplicate;
  values.hotkeys.push_back(
      {std::string(display), std::string(path), HotkeyEntryText(hotkey, display, path)});
  return ListEdit::kDone;
}

ListEdit OptionsDialog::ChangeHotkey(int row, const HotkeyChoice& hotkey, std::string_view display,
                                     std::string_view path) {
  if (!ValidRow(values.hotkeys, row) || hotkey.key == 0) return ListEdit::kNothing;
  if (Blank(path)) return ListEdit::kNoMacro;
  if (ShownByAnotherRow(values.hotkeys, display, row)) return ListEdit::kDuplicate;
  values.hotkeys[static_cast<std::size_t>(row)] = {std::string(display), std::string(path),
                                                   HotkeyEntryText(hotkey, display, path)};
  return ListEdit::kDone;
}

ListEdit OptionsDialog::DeleteHotkey(int row) {
  if (!ValidRow(values.hotkeys, row)) return ListEdit::kNothing;
  values.hotkeys.erase(values.hotkeys.begin() + row);
  return ListEdit::kDone;
}

std::optional<ScheduledRun> OptionsDialog::ScheduleRow(std::optional<int> kind,
                                                       std::string_view time,
                                                       std::string_view path) const {
  if (!kind || *kind < 0 || *kind >= static_cast<int>(std::size(kScheduleKinds)))
    return std::nullopt;
  return ScheduledRun{std::string(kScheduleKinds[*kind]), std::string(time), std::string(path)};
}

ListEdit OptionsDialog::AddSchedule(std::optional<int> kind, std::string_view time,
                                    std::string_view path) {
  const auto run = ScheduleRow(kind, time, path);
  if (!run) return ListEdit::kNothing;
  values.schedule.push_back(*run);
  return ListEdit::kDone;
}

ListEdit OptionsDialog::ChangeSchedule(int row, std::optional<int> kind, std::string_view time,
                                       std::string_view path) {
  const auto run = ScheduleRow(kind, time, path);
  if (!run || !ValidRow(values.schedule, row)) return ListEdit::kNothing;
  values.schedule[static_cast<std::size_t>(row)] = *run;
  return ListEdit::kDone;
}

ListEdit OptionsDialog::DeleteSchedule(int row) {
  if (!ValidRow(values.schedule, row)) return ListEdit::kNothing;
  values.schedule.erase(values.schedule.begin() + row);
  return ListEdit::kDone;
}

void OptionsDialog::Associate() {
  // Without the ".ksx" key nothing changed, and the buttons stay as they
  // are (the failure itself is not reported).
  if (AssociateMacroFiles(registry_, programPath_)) values.linkage = kLinkageAssociated;
}

void OptionsDialog::RemoveAssociation() {
  RemoveMacroFileAssociation(registry_);
  values.linkage = kLinkageRemoved;
}

bool OptionsDialog::AssociateEnabled() const {
  return values.linkage != kLinkageAssociated;
}

bool OptionsDialog::RemoveEnabled() const {
  return values.linkage == kLinkageAssociated;
}

FileDialogRequest OptionsDialog::BrowseRequest(BrowseTarget target) const {
  if (target == BrowseTarget::kBrowser)
    return {
        "自動操作に使うブラウザを選択",
        {{"プログラム(*.exe;*.cmd;*.bat)", "*.exe;*.cmd;*.bat"}, {"すべてのファイル(*.*)", "*.*"}},
        "",
        ""};
  return {target == BrowseTarget::kStartUpMacro ? "起動時に読み込むマクロファイルを選択"
                                                : "マクロファイルを選択",
          {{"すべてのファイル(*.*)", "*.*"}},
          "",
          browseFolder_};
}

}  // namespace kx::gui
