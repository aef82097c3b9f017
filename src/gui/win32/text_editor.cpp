#include "gui/win32/text_editor.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>

#include "gui/win32/dpi.h"
#include "sys/win32/wide.h"

namespace kx::win32 {

namespace {

constexpr wchar_t kClassName[] = L"KestrelixTextEditor";
constexpr UINT_PTR kEditSubclassId = 1;
constexpr int kEditId = 1;
constexpr int kGutterPaddingDips = 6;
constexpr int kRulerMajorColumns = 10;
constexpr int kRulerMinorColumns = 5;
constexpr int kMinGutterDigits = 4;
constexpr COLORREF kFrameColour = RGB(0xF0, 0xF0, 0xF0);
constexpr COLORREF kNumberColour = RGB(0x80, 0x80, 0x80);
constexpr COLORREF kCaretColumnColour = RGB(0x33, 0x66, 0xCC);
constexpr COLORREF kBreakpointColour = RGB(0xE5, 0x14, 0x00);
// The breakpoint's column at the gutter's left: a dot of this diameter.
constexpr int kBreakpointDips = 10;
constexpr int kBreakpointMarginDips = 3;

int Digits(int n) {
  int digits = 1;
  while (n >= 10) {
    n /= 10;
    ++digits;
  }
  return digits;
}

}  // namespace

bool TextEditor::Create(HWND parent, int id) {
  WindowClassArgs cls{kClassName, nullptr, nullptr, CS_HREDRAW | CS_VREDRAW};
  WindowArgs args;
  args.style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN;
  args.x = args.y = args.width = args.height = 0;
  args.parent = parent;
  args.menuOrId = reinterpret_cast<HMENU>(static_cast<INT_PTR>(id));
  if (!WindowBase::Create(cls, args)) return false;
  edit_ =
      ::CreateWindowExW(0, WC_EDITW, L"",
                        WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE |
                            ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_NOHIDESEL | ES_WANTRETURN,
                        0, 0, 0, 0, hwnd(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(kEditId)),
                        ::GetModuleHandleW(nullptr), nullptr);
  if (!edit_) return false;
  // A recorded macro easily passes the edit box's default limit.
  ::SendMessageW(edit_, EM_SETLIMITTEXT, 0x7FFFFFFE, 0);
  ::SetWindowSubclass(edit_, &TextEditor::EditSubclass, kEditSubclassId,
                      reinterpret_cast<DWORD_PTR>(this));
  SetFont(points_);
  return true;
}

std::string TextEditor::Text() const {
  const int length = ::GetWindowTextLengthW(edit_);
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  const int got = ::GetWindowTextW(edit_, text.data(), length + 1);
  text.resize(static_cast<std::size_t>(std::max(got, 0)));
  return Narrow(text);
}

void TextEditor::SetText(std::string_view text) {
  ::SetWindowTextW(edit_, Widen(text).c_str());
  sRulerChange();
}

void TextEditor::InsertAtCaret(std::string_view text) {
  ::SendMessageW(edit_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(Widen(text).c_str()));
  sRulerChange();
}

void TextEditor::ReplaceAll(std::string_view text) {
  // A replaced selection can be undone; text set as the window's text cannot.
  ::SendMessageW(edit_, EM_SETSEL, 0, -1);
  ::SendMessageW(edit_, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(Widen(text).c_str()));
  sRulerChange();
}

void TextEditor::AppendText(std::string_view text) {
  const int end = ::GetWindowTextLengthW(edit_);
  ::SendMessageW(edit_, EM_SETSEL, static_cast<WPARAM>(end), end);
  // Not undoable: the recorder adds many small pieces.
  ::SendMessageW(edit_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(Widen(text).c_str()));
  ::SendMessageW(edit_, EM_SCROLLCARET, 0, 0);
  sRulerChange();
}

std::optional<gui::LineRange> TextEditor::SelectedLines() const {
  DWORD start = 0;
  DWORD end = 0;
  ::SendMessageW(edit_, EM_GETSEL, reinterpret_cast<WPARAM>(&start),
                 reinterpret_cast<LPARAM>(&end));
  if (start == end) return std::nullopt;
  const int first = GetTextBoxLineFromPos(static_cast<int>(start));
  int last = GetTextBoxLineFromPos(static_cast<int>(end));
  // A selection that ends at the start of a line does not take that line.
  if (last > first && GetLineIndex(last) == static_cast<int>(end)) --last;
  return gui::LineRange{first, last};
}

void TextEditor::SetReadOnly(bool on) {
  ::SendMessageW(edit_, EM_SETREADONLY, on ? TRUE : FALSE, 0);
}

void TextEditor::SetFont(int points) {
  points_ = points;
  const UINT dpi = DpiOf(hwnd());
  font_.reset(::CreateFontW(-::MulDiv(points, static_cast<int>(dpi), 72), 0, 0, 0, FW_NORMAL, FALSE,
                            FALSE, FALSE, SHIFTJIS_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                            DEFAULT_QUALITY, FIXED_PITCH | FF_MODERN, L"MS Gothic"));
  ::SendMessageW(edit_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), TRUE);
  HDC dc = ::GetDC(hwnd());
  const HGDIOBJ old = ::SelectObject(dc, font_.get());
  TEXTMETRICW metrics{};
  ::GetTextMetricsW(dc, &metrics);
  ::SelectObject(dc, old);
  ::ReleaseDC(hwnd(), dc);
  charWidth_ = std::max(1, static_cast<int>(metrics.tmAveCharWidth));
  lineHeight_ = std::max(1, static_cast<int>(metrics.tmHeight));
  Layout();
}

void TextEditor::DpiChanged() {
  SetFont(points_);
}

void TextEditor::SetMode(gui::EditorMode mode) {
  mode_ = mode;
  ::ShowWindow(hwnd(), mode == gui::EditorMode::kHidden ? SW_HIDE : SW_SHOW);
  Layout();
}

void TextEditor::sJumpLine(int index) {
  if (index < 0) {
    DWORD start = 0;
    ::SendMessageW(edit_, EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
    ::SendMessageW(edit_, EM_SETSEL, start, start);
    return;
  }
  SelectLine(index);
  ::SendMessageW(edit_, EM_SCROLLCARET, 0, 0);
  sRulerChange();
}

void TextEditor::SelectLine(int index) {
  const int start = GetLineIndex(index);
  if (start < 0) return;
  int end = GetLineIndex(index + 1);
  if (end < 0) end = ::GetWindowTextLengthW(edit_);
  ::SendMessageW(edit_, EM_SETSEL, static_cast<WPARAM>(start), end);
}

int TextEditor::GetLineCount() const {
  return static_cast<int>(::SendMessageW(edit_, EM_GETLINECOUNT, 0, 0));
}

int TextEditor::GetLineIndex(int line) const {
  if (line < 0 || line >= GetLineCount()) return -1;
  return static_cast<int>(::SendMessageW(edit_, EM_LINEINDEX, static_cast<WPARAM>(line), 0));
}

int TextEditor::GetTextBoxLineFromPos(int pos) const {
  return static_cast<int>(::SendMessageW(edit_, EM_LINEFROMCHAR, static_cast<WPARAM>(pos), 0));
}

int TextEditor::GetCaretPosition() const {
  DWORD end = 0;
  ::SendMessageW(edit_, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
  return static_cast<int>(end);
}

int TextEditor::GutterWidth() const {
  if (mode_ != gui::EditorMode::kNumbersAndRuler && mode_ != gui::EditorMode::kNumbers) return 0;
  const int digits = std::max(kMinGutterDigits, Digits(GetLineCount()));
  return digits * charWidth_ +
         Scale(kGutterPaddingDips + kBreakpointDips + 2 * kBreakpointMarginDips, DpiOf(hwnd()));
}

void TextEditor::SetBreakpoints(const std::set<int>& lines) {
  breakpoints_ = lines;
  RECT r{};
  ::GetClientRect(hwnd(), &r);
  RECT gutter{0, 0, GutterWidth(), r.bottom};
  ::InvalidateRect(hwnd(), &gutter, FALSE);
}

int TextEditor::CaretLine() const {
  DWORD start = 0;
  ::SendMessageW(edit_, EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
  return GetTextBoxLineFromPos(static_cast<int>(start));
}

void TextEditor::PaintBreakpoint(HDC dc, const RECT& cell) {
  const UINT dpi = DpiOf(hwnd());
  const int size = std::min(Scale(kBreakpointDips, dpi), static_cast<int>(cell.bottom - cell.top));
  const int left = cell.left + Scale(kBreakpointMarginDips, dpi);
  const int top = cell.top + (cell.bottom - cell.top - size) / 2;
  HBRUSH brush = ::CreateSolidBrush(kBreakpointColour);
  HPEN pen = ::CreatePen(PS_SOLID, 1, kBreakpointColour);
  const HGDIOBJ oldBrush = ::SelectObject(dc, brush);
  const HGDIOBJ oldPen = ::SelectObject(dc, pen);
  ::Ellipse(dc, left, top, left + size, top + size);
  ::SelectObject(dc, oldPen);
  ::SelectObject(dc, oldBrush);
  ::DeleteObject(pen);
  ::DeleteObject(brush);
}

void TextEditor::OnGutterClick(int y) {
  if (!onGutterClick || y < RulerHeight()) return;
  const int first = static_cast<int>(::SendMessageW(edit_, EM_GETFIRSTVISIBLELINE, 0, 0));
  const int line = first + (y - RulerHeight()) / lineHeight_;
  if (line < GetLineCount()) onGutterClick(line);
}

int TextEditor::RulerHeight() const {
  return mode_ == gui::EditorMode::kNumbersAndRuler ? lineHeight_ + Scale(4, DpiOf(hwnd())) : 0;
}

void TextEditor::Layout() {
  if (!edit_) return;
  RECT r{};
  ::GetClientRect(hwnd(), &r);
  const int left = GutterWidth();
  const int top = RulerHeight();
  ::MoveWindow(edit_, left, top, std::max(0, static_cast<int>(r.right) - left),
               std::max(0, static_cast<int>(r.bottom) - top), TRUE);
  ::InvalidateRect(hwnd(), nullptr, TRUE);
}

void TextEditor::sRulerChange() {
  // The gutter may need another digit, and both strips follow the scroll.
  RECT r{};
  ::GetClientRect(hwnd(), &r);
  RECT editRect{};
  ::GetWindowRect(edit_, &editRect);
  ::MapWindowPoints(nullptr, hwnd(), reinterpret_cast<POINT*>(&editRect), 2);
  if (editRect.left != GutterWidth() || editRect.top != RulerHeight()) {
    Layout();
    return;
  }
  RECT gutter{0, 0, editRect.left, r.bottom};
  RECT ruler{0, 0, r.right, editRect.top};
  ::InvalidateRect(hwnd(), &gutter, FALSE);
  ::InvalidateRect(hwnd(), &ruler, FALSE);
}

void TextEditor::Paint(HDC dc) {
  RECT r{};
  ::GetClientRect(hwnd(), &r);
  const int gutter = GutterWidth();
  const int ruler = RulerHeight();
  const HGDIOBJ old = ::SelectObject(dc, font_.get());
  ::SetBkMode(dc, TRANSPARENT);
  if (gutter > 0) PaintGutter(dc, RECT{0, ruler, gutter, r.bottom});
  if (ruler > 0) PaintRuler(dc, RECT{0, 0, r.right, ruler});
  ::SelectObject(dc, old);
}

void TextEditor::PaintGutter(HDC dc, const RECT& area) {
  HBRUSH frame = ::CreateSolidBrush(kFrameColour);
  ::FillRect(dc, &area, frame);
  ::DeleteObject(frame);
  ::SetTextColor(dc, kNumberColour);
  const int first = static_cast<int>(::SendMessageW(edit_, EM_GETFIRSTVISIBLELINE, 0, 0));
  const int count = GetLineCount();
  RECT editRect{};
  ::GetClientRect(edit_, &editRect);
  const int visible = editRect.bottom / lineHeight_ + 1;
  const int padding = Scale(kGutterPaddingDips, DpiOf(hwnd())) / 2;
  for (int line = first; line < std::min(count, first + visible + 1); ++line) {
    const LRESULT pos =
        ::SendMessageW(edit_, EM_POSFROMCHAR, static_cast<WPARAM>(GetLineIndex(line)), 0);
    int y = static_cast<short>(HIWORD(pos));
    if (pos == -1) y = (line - first) * lineHeight_;  // the empty last line
    const std::wstring number = std::to_wstring(line + 1);
    RECT cell{area.left, area.top + y, area.right - padding, area.top + y + lineHeight_};
    if (cell.top >= area.bottom) break;
    if (breakpoints_.count(line) > 0) PaintBreakpoint(dc, cell);
    ::DrawTextW(dc, number.c_str(), -1, &cell, DT_RIGHT | DT_SINGLELINE | DT_NOPREFIX);
  }
}

void TextEditor::PaintRuler(HDC dc, const RECT& area) {
  HBRUSH frame = ::CreateSolidBrush(kFrameColour);
  ::FillRect(dc, &area, frame);
  ::DeleteObject(frame);
  const int gutter = GutterWidth();
  // The first visible line's first character tells how far the box has
  // scrolled sideways.
  const int firstLine = static_cast<int>(::SendMessageW(edit_, EM_GETFIRSTVISIBLELINE, 0, 0));
  const LRESULT pos = ::SendMessageW(edit_, EM_POSFROMCHAR,
                                     static_cast<WPARAM>(std::max(0, GetLineIndex(firstLine))), 0);
  const int origin = gutter + (pos == -1 ? 0 : static_cast<short>(LOWORD(pos)));
  RECT editClient{};
  ::GetClientRect(edit_, &editClient);
  const int columns = editClient.right / charWidth_ + kRulerMajorColumns;
  const int firstColumn = std::max(0, (gutter - origin) / charWidth_);
  ::SetTextColor(dc, kNumberColour);
  HPEN pen = ::CreatePen(PS_SOLID, 1, kNumberColour);
  const HGDIOBJ oldPen = ::SelectObject(dc, pen);
  for (int col = firstColumn; col <= firstColumn + columns; ++col) {
    const int x = origin + col * charWidth_;
    if (x < gutter) continue;
    const bool major = col % kRulerMajorColumns == 0;
    const int tick = major ? (area.bottom - area.top) / 2
                           : (col % kRulerMinorColumns == 0 ? (area.bottom - area.top) / 3
                                                            : (area.bottom - area.top) / 6);
    ::MoveToEx(dc, x, area.bottom - tick, nullptr);
    ::LineTo(dc, x, area.bottom);
    if (major && col > 0) {
      const std::wstring label = std::to_wstring(col);
      ::TextOutW(dc, x + 2, area.top, label.c_str(), static_cast<int>(label.size()));
    }
  }
  // sRulerMove: the caret's column is marked on the ruler.
  const int caret = GetCaretPosition();
  const int caretLine = GetTextBoxLineFromPos(caret);
  const int column = caret - std::max(0, GetLineIndex(caretLine));
  const int caretX = origin + column * charWidth_;
  if (caretX >= gutter) {
    HBRUSH mark = ::CreateSolidBrush(kCaretColumnColour);
    RECT m{caretX, area.bottom - Scale(3, DpiOf(hwnd())), caretX + charWidth_, area.bottom};
    ::FillRect(dc, &m, mark);
    ::DeleteObject(mark);
  }
  ::SelectObject(dc, oldPen);
  ::DeleteObject(pen);
}

LRESULT TextEditor::HandleMessage(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_SIZE:
      Layout();
      return 0;
    case WM_PAINT: {
      PAINTSTRUCT ps;
      HDC dc = ::BeginPaint(hwnd(), &ps);
      Paint(dc);
      ::EndPaint(hwnd(), &ps);
      return 0;
    }
    case WM_COMMAND:
      if (HIWORD(wp) == EN_CHANGE || HIWORD(wp) == EN_VSCROLL || HIWORD(wp) == EN_HSCROLL)
        sRulerChange();
      // The main window hears the edit box's notifications too.
      return ::SendMessageW(::GetParent(hwnd()), msg, wp, lp);
    case WM_SETFOCUS:
      ::SetFocus(edit_);
      return 0;
    case WM_LBUTTONDOWN:
      // Only the gutter and the ruler are this window's own surface.
      if (GET_X_LPARAM(lp) < GutterWidth()) OnGutterClick(GET_Y_LPARAM(lp));
      return 0;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
      return ::SendMessageW(::GetParent(hwnd()), msg, wp, lp);
    default:
      return Default(msg, wp, lp);
  }
}

LRESULT CALLBACK TextEditor::EditSubclass(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR,
                                          DWORD_PTR data) noexcept {
  if (msg == WM_NCDESTROY) ::RemoveWindowSubclass(hwnd, &TextEditor::EditSubclass, kEditSubclassId);
  const LRESULT result = ::DefSubclassProc(hwnd, msg, wp, lp);
  switch (msg) {
    case WM_SETTEXT:  // a multi-line box sends no EN_CHANGE for it
    case WM_KEYDOWN:
    case WM_CHAR:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_MOUSEWHEEL:
    case WM_VSCROLL:
    case WM_HSCROLL:
    case EM_SETSEL:
    case EM_SCROLLCARET:
    case EM_REPLACESEL:
      reinterpret_cast<TextEditor*>(data)->sRulerChange();
      break;
    case WM_MOUSEMOVE:
      if (wp & MK_LBUTTON) reinterpret_cast<TextEditor*>(data)->sRulerChange();
      break;
    default:
      break;
  }
  return result;
}

}  // namespace kx::win32
