#pragma once
// The macro editor (usrTextW): a Unicode multi-line edit box framed by a
// gutter of line numbers and a ruler of columns, in one of three display
// modes or hidden. The running line of a play is shown by selecting it.
#include <functional>
#include <optional>
#include <set>
#include <string>

#include "gui/main_view.h"
#include "gui/win32/window_base.h"
#include "sys/win32/unique_handle.h"

namespace kx::win32 {

class TextEditor final : public WindowBase {
 public:
  bool Create(HWND parent, int id);
  HWND hText() const { return edit_; }

  std::string Text() const;
  void SetText(std::string_view text);
  void InsertAtCaret(std::string_view text);
  // The whole text replaced as one change that can be undone.
  void ReplaceAll(std::string_view text);
  // At the end of the text, with the caret after it, scrolled into view.
  void AppendText(std::string_view text);
  std::optional<gui::LineRange> SelectedLines() const;
  void SetReadOnly(bool on);
  void SetFont(int points);
  void SetMode(gui::EditorMode mode);
  gui::EditorMode Mode() const { return mode_; }
  // sJumpLine: scrolls to a line and selects it; -1 removes the selection.
  void sJumpLine(int index);
  void SelectLine(int index);
  // The DPI changed: fonts and margins follow.
  void DpiChanged();
  // Breakpoints are drawn as red dots in the gutter.
  void SetBreakpoints(const std::set<int>& lines);
  // A click in the gutter beside a line (index from 0).
  std::function<void(int)> onGutterClick;
  // The line where the selection starts (the caret's line without one).
  int CaretLine() const;

  int GetLineCount() const;
  int GetLineIndex(int line) const;
  int GetTextBoxLineFromPos(int pos) const;
  int GetCaretPosition() const;

 protected:
  LRESULT HandleMessage(UINT msg, WPARAM wp, LPARAM lp) override;

 private:
  static LRESULT CALLBACK EditSubclass(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR) noexcept;
  void Layout();
  void Paint(HDC dc);
  void PaintGutter(HDC dc, const RECT& area);
  void PaintRuler(HDC dc, const RECT& area);
  void PaintBreakpoint(HDC dc, const RECT& cell);
  void OnGutterClick(int y);
  // sRulerChange / sRulerMove: the gutter and ruler follow the edit box.
  void sRulerChange();
  int GutterWidth() const;
  int RulerHeight() const;

  HWND edit_ = nullptr;
  unique_hfont font_;
  int points_ = 9;
  int charWidth_ = 8;
  int lineHeight_ = 16;
  gui::EditorMode mode_ = gui::EditorMode::kNumbersAndRuler;
  std::set<int> breakpoints_;
};

}  // namespace kx::win32
