#pragma once
// The options dialog's controls as a table: kind, id, page, place in
// device-independent units, caption and tool tip. The window creates them
// from it and scales the places by its DPI.
#include <span>
#include <string_view>

namespace kx::win32 {

enum class OptionsControlKind {
  kGroup,
  kLabel,
  kEdit,
  kNumberEdit,
  kButton,
  kRadioFirst,  // the first option button of a group
  kRadio,
  kCheck,
  kHotkeyBox,
  kKeyBox,  // a single-key box (the recorder keys)
  kList,
  kTimePicker,
  kCombo,
};

// Control ids; the pages' contents follow the tab control.
enum OptionsId : int {
  kOptTab = 100,
  kOptOk,
  kOptCancel,
  kOptApply,
  // ホットキー
  kOptShowHide,
  kOptRecord,
  kOptPlay,
  kOptPause,
  kOptRecKeyClick,
  kOptRecKeyMouse,
  kOptHotkeyList,
  kOptHotkeyBox,
  kOptHotkeyFile,
  kOptHotkeyBrowse,
  kOptHotkeyAdd,
  kOptHotkeyChange,
  kOptHotkeyDelete,
  // マクロ起動設定
  kOptAutoList,
  kOptAutoAfterStart,
  kOptAutoInterval,
  kOptAutoDaily,
  kOptAutoStopped,
  kOptAutoTime,
  kOptAutoClear,
  kOptAutoFile,
  kOptAutoBrowse,
  kOptAutoAdd,
  kOptAutoChange,
  kOptAutoDelete,
  // その他
  kOptNotifyNone,
  kOptNotifySound,
  kOptNotifyDialog,
  kOptNotifyFlash,
  kOptUp,
  kOptHits,
  kOptEditorShown,
  kOptModeRuler,
  kOptModeNumbers,
  kOptModePlain,
  kOptFontSize,
  kOptDefMacro,
  kOptDefMacroBrowse,
  kOptAssociate,
  kOptRemoveAssociation,
  kOptBrowser,
  kOptBrowserBrowse,
  kOptDevToolsPort,
  kOptStatic = 0xFFFF,  // labels and frames
};

inline constexpr int kOptionsPageCount = 3;
inline constexpr std::string_view kOptionsPageNames[kOptionsPageCount] = {
    "ホットキー", "マクロ起動設定", "その他"};
inline constexpr int kAllPages = -1;  // on every page (the bottom row)

struct OptionsControl {
  OptionsControlKind kind;
  int id;
  int page;
  int x, y, width, height;  // DIPs, in the dialog's client area
  std::string_view text;
  std::string_view tip;
};

// The dialog's client size in DIPs.
inline constexpr int kOptionsWidth = 600;
inline constexpr int kOptionsHeight = 560;

std::span<const OptionsControl> OptionsControls();

}  // namespace kx::win32
