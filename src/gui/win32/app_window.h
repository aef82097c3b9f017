#pragma once
// The main window as far as it stands yet: a window titled with the
// application title whose editor holds the macro text. It shows the player
// what it plays and hands hotkeys to it.
#include <functional>
#include <string>

#include "player/player_view.h"
#include "sys/win32/unique_handle.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

inline constexpr wchar_t kMainWindowClass[] = L"KestrelixMainWindow";
inline constexpr char kAppTitle[] = "Kestrelix";

class AppWindow final : public PlayerView {
 public:
  explicit AppWindow(HINSTANCE instance);
  ~AppWindow() override;
  AppWindow(const AppWindow&) = delete;
  AppWindow& operator=(const AppWindow&) = delete;

  HWND hwnd() const { return window_.get(); }
  bool Created() const { return static_cast<bool>(window_); }
  // Replaces the editor's text; `fileName` is shown in the idle caption.
  void SetMacro(std::string_view text, std::string_view fileName);
  // Called for WM_HOTKEY and for a request to close the window.
  void OnHotkey(std::function<void(int)> handler) { onHotkey_ = std::move(handler); }
  void OnClose(std::function<void()> handler) { onClose_ = std::move(handler); }

  // PlayerView
  std::string Text() override;
  int LoopCount() override { return loopCount_; }
  // The number in the loop-count box.
  void SetLoopCount(int count) { loopCount_ = count; }
  void SetPlaying(bool playing) override;
  void HighlightLine(int index) override;
  void ClearHighlight() override;
  void SelectLine(int index) override;
  void VariablesChanged() override {}
  std::string IdleCaption() override;
  WindowHandle MainWindow() override;

 private:
  static LRESULT CALLBACK Proc(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp) noexcept;
  LRESULT Handle(UINT msg, WPARAM wp, LPARAM lp);
  void Layout();
  void ApplyFont();

  unique_hwnd window_;
  HWND editor_ = nullptr;  // a child: destroyed with the window
  unique_hfont font_;
  std::string fileName_;
  int loopCount_ = 1;
  std::function<void(int)> onHotkey_;
  std::function<void()> onClose_;
};

}  // namespace kx::win32
