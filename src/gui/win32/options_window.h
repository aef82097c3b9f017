#pragma once
// The options dialog "Kestrelix オプション" on Win32: a modal window with
// three pages on a tab strip. It shows the OptionsDialog's values, hands
// every button to it, and writes the controls back into the values before
// OK and 適用. Its layout is the table of options_layout.h scaled by the DPI
// of the main window.
#include <array>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "gui/options_model.h"
#include "gui/win32/controls.h"
#include "gui/win32/hotkey_box.h"
#include "gui/win32/options_layout.h"
#include "gui/win32/window_base.h"
#include "sys/win32/unique_handle.h"

namespace kx::win32 {

class OptionsWindow final : public WindowBase {
 public:
  explicit OptionsWindow(gui::OptionsDialog& dialog) : dialog_(dialog) {}
  // Shows the dialog over `owner` and returns when it is closed.
  void Run(HWND owner);

 protected:
  LRESULT HandleMessage(UINT msg, WPARAM wp, LPARAM lp) override;

 private:
  void CreateControls(UINT dpi);
  HWND CreateControl(const OptionsControl& c, UINT dpi);
  void ShowPage(int page);
  void ShowValues();
  void ReadValues();
  void FillHotkeyList();
  void FillScheduleList();
  void ShowAssociation();
  void OnCommand(int id, int code);
  void OnListSelection(int id);
  void Confirm(bool close);
  void Browse(gui::BrowseTarget target, int editId);
  void Refused(gui::ListEdit result);

  HWND Item(int id) const {
    const auto it = controls_.find(id);
    return it == controls_.end() ? nullptr : it->second;
  }
  bool Checked(int id) const;
  void Check(int id, bool on);
  std::string Text(int id) const;
  void SetText(int id, std::string_view text);
  int SelectedRow(int listId) const;
  // The chosen option button of a group given by its ids; nothing if none.
  std::optional<int> ChosenOf(std::span<const int> ids) const;
  std::string PickerTime() const;

  gui::OptionsDialog& dialog_;
  std::map<int, std::unique_ptr<HotkeyBox>> hotkeyBoxes_;
  std::array<HWND, kOptionsPageCount> pages_{};  // children: they go with the window
  std::map<int, HWND> controls_;                 // by id
  Tooltips tooltips_;
  unique_hfont font_;
  HWND owner_ = nullptr;
  bool done_ = false;
};

}  // namespace kx::win32
