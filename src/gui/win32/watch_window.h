#pragma once
// The variable watch on Win32: a resizable window owned by the main window,
// titled "変数ウォッチ", whose list view shows names and values. It shows
// what the debugger's logic gives it and reports only its closing.
#include <functional>

#include "gui/main_view.h"
#include "gui/win32/controls.h"
#include "gui/win32/window_base.h"
#include "sys/win32/unique_handle.h"

namespace kx::win32 {

inline constexpr wchar_t kWatchWindowClass[] = L"KestrelixWatchWindow";

class WatchWindow final : public WindowBase, public gui::WatchView {
 public:
  void SetOwner(HWND owner) { owner_ = owner; }
  // The user is closing the window; it hides once this has returned.
  std::function<void()> onClose;

  // --- gui::WatchView ---
  void Open(const gui::PlacementTwips& placement) override;
  bool IsOpen() override;
  void SetRows(const std::vector<WatchRow>& rows) override;
  gui::PlacementTwips Placement() override;

 protected:
  LRESULT HandleMessage(UINT msg, WPARAM wp, LPARAM lp) override;

 private:
  bool Create();
  void ApplyFonts();
  void Layout();
  // At the stored place, or beside the owner when there is none.
  void Place(const gui::PlacementTwips& placement);

  HWND owner_ = nullptr;
  NameValueList list_;
  unique_hfont font_;
};

}  // namespace kx::win32
