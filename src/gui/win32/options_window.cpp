#include "gui/win32/options_window.h"

#include <algorithm>
#include <array>

#include "gui/app_info.h"
#include "gui/hotkey_entry.h"
#include "gui/schedule.h"
#include "gui/win32/dpi.h"
#include "gui/win32/file_dialogs.h"
#include "settings/settings_lists.h"
#include "sys/win32/wide.h"

namespace kx::win32 {

namespace {

constexpr wchar_t kOptionsClass[] = L"KestrelixOptions";
constexpr wchar_t kPageClass[] = L"KestrelixOptionsPage";
// The tab strip, and the pages inside it, in DIPs of the client area.
constexpr RECT kTabRect{8, 8, 592, 512};
constexpr RECT kPageRect{12, 34, 588, 508};

// A page only holds controls: what they report goes on to the dialog.
LRESULT CALLBACK PageProc(HWND page, UINT msg, WPARAM wp, LPARAM lp) noexcept {
  if (msg == WM_COMMAND || msg == WM_NOTIFY) return ::SendMessageW(::GetParent(page), msg, wp, lp);
  return ::DefWindowProcW(page, msg, wp, lp);
}

HWND CreatePage(HWND dialog, UINT dpi) {
  const HINSTANCE instance = ::GetModuleHandleW(nullptr);
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof wc;
  if (!::GetClassInfoExW(instance, kPageClass, &wc)) {
    wc.lpfnWndProc = &PageProc;
    wc.hInstance = instance;
    wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = ::GetSysColorBrush(COLOR_BTNFACE);
    wc.lpszClassName = kPageClass;
    if (!::RegisterClassExW(&wc)) return nullptr;
  }
  return ::CreateWindowExW(
      WS_EX_CONTROLPARENT, kPageClass, L"", WS_CHILD | WS_CLIPSIBLINGS, Scale(kPageRect.left, dpi),
      Scale(kPageRect.top, dpi), Scale(kPageRect.right - kPageRect.left, dpi),
      Scale(kPageRect.bottom - kPageRect.top, dpi), dialog, nullptr, instance, nullptr);
}

// The option buttons of each group, in the order of their values.
constexpr std::array<int, 4> kScheduleKindIds{kOptAutoStopped, kOptAutoAfterStart, kOptAutoInterval,
                                              kOptAutoDaily};
constexpr std::array<int, 4> kNotifyIds{kOptNotifyNone, kOptNotifySound, kOptNotifyDialog,
                                        kOptNotifyFlash};
constexpr std::array<int, 3> kModeIds{kOptModeRuler, kOptModeNumbers, kOptModePlain};

struct Column {
  std::string_view title;
  int width;  // DIPs
};
constexpr Column kHotkeyColumns[] = {{"ホットキー", 180}, {"マクロファイル", 330}};
constexpr Column kScheduleColumns[] = {
    {"実行タイミング", 110}, {"時間指定", 90}, {"マクロファイル", 310}};

constexpr int kSecondsPerHour = 3600;
constexpr int kSecondsPerMinute = 60;

void AddColumns(HWND list, std::span<const Column> columns, UINT dpi) {
  for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
    std::wstring title = Widen(columns[static_cast<std::size_t>(i)].title);
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.pszText = title.data();
    column.cx = Scale(columns[static_cast<std::size_t>(i)].width, dpi);
    ::SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(i),
                   reinterpret_cast<LPARAM>(&column));
  }
}

void AddRow(HWND list, std::span<const std::string> cells) {
  const int row = static_cast<int>(::SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
  for (int i = 0; i < static_cast<int>(cells.size()); ++i) {
    std::wstring text = Widen(cells[static_cast<std::size_t>(i)]);
    LVITEMW item{};
    item.mask = LVIF_TEXT;
    item.iItem = row;
    item.iSubItem = i;
    item.pszText = text.data();
    ::SendMessageW(list, i == 0 ? LVM_INSERTITEMW : LVM_SETITEMTEXTW, static_cast<WPARAM>(row),
                   reinterpret_cast<LPARAM>(&item));
  }
}

}  // namespace

void OptionsWindow::Run(HWND owner) {
  owner_ = owner;
  const UINT dpi = DpiOf(owner);
  const DWORD style = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
  const DWORD exStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;
  RECT frame{0, 0, Scale(kOptionsWidth, dpi), Scale(kOptionsHeight, dpi)};
  ::AdjustWindowRectEx(&frame, style, FALSE, exStyle);
  const int width = frame.right - frame.left;
  const int height = frame.bottom - frame.top;
  // Centred on the main window, inside the work area of its monitor.
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  ::GetMonitorInfoW(::MonitorFromWindow(owner, MONITOR_DEFAULTTONEAREST), &monitor);
  RECT ownerRect = monitor.rcWork;
  if (::IsWindowVisible(owner) && !::IsIconic(owner)) ::GetWindowRect(owner, &ownerRect);
  const RECT& work = monitor.rcWork;
  const int x = std::max<int>(
      work.left, std::min<int>((ownerRect.left + ownerRect.right - width) / 2, work.right - width));
  const int y = std::max<int>(
      work.top,
      std::min<int>((ownerRect.top + ownerRect.bottom - height) / 2, work.bottom - height));
  const std::wstring title = Widen(gui::kOptionsTitle);
  if (!Create({kOptionsClass, nullptr, ::GetSysColorBrush(COLOR_BTNFACE), 0},
              {exStyle, title.c_str(), style, x, y, width, height, owner, nullptr}))
    return;
  CreateControls(dpi);
  ShowValues();
  ShowPage(0);
  ::EnableWindow(owner, FALSE);
  ::ShowWindow(hwnd(), SW_SHOW);
  ::SetFocus(Item(kOptShowHide));

  // The dialog's own loop; a play started by a hotkey meanwhile pumps the
  // same queue.
  MSG msg{};
  bool quit = false;
  while (!done_) {
    if (::GetMessageW(&msg, nullptr, 0, 0) <= 0) {
      quit = true;
      break;
    }
    if (!::IsDialogMessageW(hwnd(), &msg)) {
      ::TranslateMessage(&msg);
      ::DispatchMessageW(&msg);
    }
  }
  ::EnableWindow(owner, TRUE);
  ::SetForegroundWindow(owner);
  ::DestroyWindow(hwnd());
  if (quit) ::PostQuitMessage(static_cast<int>(msg.wParam));
}

HWND OptionsWindow::CreateControl(const OptionsControl& c, UINT dpi) {
  using K = OptionsControlKind;
  // Page controls are placed relative to their page.
  const bool onPage = c.page != kAllPages;
  const HWND parent = onPage ? pages_[static_cast<std::size_t>(c.page)] : hwnd();
  const int x = Scale(c.x - (onPage ? kPageRect.left : 0), dpi);
  const int y = Scale(c.y - (onPage ? kPageRect.top : 0), dpi);
  const int w = Scale(c.width, dpi), h = Scale(c.height, dpi);
  if (c.kind == K::kHotkeyBox || c.kind == K::kKeyBox) {
    auto box = std::make_unique<HotkeyBox>(c.kind == K::kKeyBox ? gui::HotkeyEntryMode::kSingleKey
                                                                : gui::HotkeyEntryMode::kHotkey);
    if (!box->Create({parent, c.id, L""})) return nullptr;
    ::SetWindowLongPtrW(box->hwnd(), GWL_STYLE,
                        ::GetWindowLongPtrW(box->hwnd(), GWL_STYLE) | WS_GROUP);
    ::MoveWindow(box->hwnd(), x, y, w, h, FALSE);
    const HWND made = box->hwnd();
    hotkeyBoxes_[c.id] = std::move(box);
    return made;
  }
  const wchar_t* cls = WC_BUTTONW;
  DWORD style = WS_CHILD | WS_VISIBLE | WS_GROUP;
  DWORD exStyle = 0;
  switch (c.kind) {
    case K::kGroup:
      style |= BS_GROUPBOX;
      break;
    case K::kLabel:
      cls = WC_STATICW;
      style |= SS_LEFT | SS_NOPREFIX;
      break;
    case K::kEdit:
    case K::kNumberEdit:
      cls = WC_EDITW;
      style |= WS_TABSTOP | ES_AUTOHSCROLL | (c.kind == K::kNumberEdit ? ES_NUMBER : 0);
      exStyle = WS_EX_CLIENTEDGE;
      break;
    case K::kButton:
      style |= WS_TABSTOP | (c.id == kOptOk ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON);
      break;
    case K::kRadioFirst:
      style |= WS_TABSTOP | BS_AUTORADIOBUTTON;
      break;
    case K::kRadio:
      style = WS_CHILD | WS_VISIBLE | BS_AUTORADIOBUTTON;  // the group goes on
      break;
    case K::kCheck:
      style |= WS_TABSTOP | BS_AUTOCHECKBOX;
      break;
    case K::kList:
      cls = WC_LISTVIEWW;
      style |= WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS;
      exStyle = WS_EX_CLIENTEDGE;
      break;
    case K::kTimePicker:
      cls = DATETIMEPICK_CLASSW;
      style |= WS_TABSTOP | DTS_TIMEFORMAT;
      break;
    case K::kCombo:
      cls = WC_COMBOBOXW;
      style |= WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST;
      break;
    case K::kHotkeyBox:
    case K::kKeyBox:
      break;
  }
  const std::wstring text = Widen(c.text);
  return ::CreateWindowExW(exStyle, cls, text.c_str(), style, x, y, w, h, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(c.id)),
                           ::GetModuleHandleW(nullptr), nullptr);
}

void OptionsWindow::CreateControls(UINT dpi) {
  font_.reset(CreateMessageFont(dpi));
  const HWND tab = ::CreateWindowExW(
      0, WC_TABCONTROLW, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP,
      Scale(kTabRect.left, dpi), Scale(kTabRect.top, dpi),
      Scale(kTabRect.right - kTabRect.left, dpi), Scale(kTabRect.bottom - kTabRect.top, dpi),
      hwnd(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(kOptTab)), ::GetModuleHandleW(nullptr),
      nullptr);
  ::SendMessageW(tab, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
  for (int i = 0; i < kOptionsPageCount; ++i) {
    std::wstring name = Widen(kOptionsPageNames[i]);
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = name.data();
    ::SendMessageW(tab, TCM_INSERTITEMW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
  }
  for (HWND& page : pages_) page = CreatePage(hwnd(), dpi);
  // The tab strip lies under the pages it holds.
  ::SetWindowPos(tab, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  tooltips_.Create(hwnd());
  for (const OptionsControl& c : OptionsControls()) {
    const HWND control = CreateControl(c, dpi);
    if (!control) continue;
    ::SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
    if (!c.tip.empty()) tooltips_.Add(control, Widen(c.tip));
    if (c.id != kOptStatic) controls_[c.id] = control;
  }

  constexpr LPARAM kListStyle = LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES;
  for (const int id : {kOptHotkeyList, kOptAutoList})
    ::SendMessageW(Item(id), LVM_SETEXTENDEDLISTVIEWSTYLE, kListStyle, kListStyle);
  AddColumns(Item(kOptHotkeyList), kHotkeyColumns, dpi);
  AddColumns(Item(kOptAutoList), kScheduleColumns, dpi);
  ::SendMessageW(Item(kOptAutoTime), DTM_SETFORMATW, 0, reinterpret_cast<LPARAM>(L"H:mm:ss"));
  for (const int size : gui::kEditorFontSizes)
    ::SendMessageW(Item(kOptFontSize), CB_ADDSTRING, 0,
                   reinterpret_cast<LPARAM>(std::to_wstring(size).c_str()));
}

void OptionsWindow::ShowPage(int page) {
  for (std::size_t i = 0; i < pages_.size(); ++i)
    ::ShowWindow(pages_[i], static_cast<int>(i) == page ? SW_SHOW : SW_HIDE);
}

// --- values and controls -------------------------------------------------------

void OptionsWindow::ShowValues() {
  const gui::OptionsValues& v = dialog_.values;
  hotkeyBoxes_.at(kOptShowHide)->Set(v.showHide.key, v.showHide.modifiers);
  hotkeyBoxes_.at(kOptRecord)->Set(v.record.key, v.record.modifiers);
  hotkeyBoxes_.at(kOptPlay)->Set(v.play.key, v.play.modifiers);
  hotkeyBoxes_.at(kOptPause)->Set(v.pause.key, v.pause.modifiers);
  hotkeyBoxes_.at(kOptRecKeyClick)->Set(v.recKeyClick, 0);
  hotkeyBoxes_.at(kOptRecKeyMouse)->Set(v.recKeyMouse, 0);
  FillHotkeyList();
  FillScheduleList();
  for (int i = 0; i < static_cast<int>(kNotifyIds.size()); ++i)
    Check(kNotifyIds[static_cast<std::size_t>(i)], v.endNotifer == i);
  Check(kOptUp, v.up);
  SetText(kOptHits, v.hits);
  Check(kOptEditorShown, v.editorShown);
  for (int i = 0; i < static_cast<int>(kModeIds.size()); ++i)
    Check(kModeIds[static_cast<std::size_t>(i)], v.editorShown && v.displayMode == i);
  int fontRow = -1;
  for (int i = 0; i < static_cast<int>(std::size(gui::kEditorFontSizes)); ++i)
    if (gui::kEditorFontSizes[i] == v.fontSize) fontRow = i;
  ::SendMessageW(Item(kOptFontSize), CB_SETCURSEL, static_cast<WPARAM>(fontRow), 0);
  SetText(kOptDefMacro, v.defMacro);
  SetText(kOptBrowser, v.browser);
  SetText(kOptDevToolsPort, v.devToolsPort);
  SYSTEMTIME midnight{2000, 1, 6, 1, 0, 0, 0, 0};
  ::SendMessageW(Item(kOptAutoTime), DTM_SETSYSTEMTIME, GDT_VALID,
                 reinterpret_cast<LPARAM>(&midnight));
  ShowAssociation();
}

void OptionsWindow::ReadValues() {
  gui::OptionsValues& v = dialog_.values;
  const auto choice = [&](int id) {
    const gui::HotkeyEntry& e = hotkeyBoxes_.at(id)->entry();
    return gui::HotkeyChoice{e.KeyCode(), e.Modifiers()};
  };
  v.showHide = choice(kOptShowHide);
  v.record = choice(kOptRecord);
  v.play = choice(kOptPlay);
  v.pause = choice(kOptPause);
  v.recKeyClick = hotkeyBoxes_.at(kOptRecKeyClick)->entry().KeyCode();
  v.recKeyMouse = hotkeyBoxes_.at(kOptRecKeyMouse)->entry().KeyCode();
  if (const auto notify = ChosenOf(kNotifyIds)) v.endNotifer = *notify;
  v.up = Checked(kOptUp);
  v.hits = Text(kOptHits);
  v.editorShown = Checked(kOptEditorShown);
  v.displayMode = ChosenOf(kModeIds).value_or(0);
  const auto fontRow = ::SendMessageW(Item(kOptFontSize), CB_GETCURSEL, 0, 0);
  if (fontRow >= 0 && fontRow < static_cast<LRESULT>(std::size(gui::kEditorFontSizes)))
    v.fontSize = gui::kEditorFontSizes[fontRow];
  v.defMacro = Text(kOptDefMacro);
  v.browser = Text(kOptBrowser);
  v.devToolsPort = Text(kOptDevToolsPort);
}

void OptionsWindow::FillHotkeyList() {
  const HWND list = Item(kOptHotkeyList);
  ::SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
  for (const gui::HotkeyRow& row : dialog_.values.hotkeys) {
    const std::string cells[] = {row.display, row.path};
    AddRow(list, cells);
  }
}

void OptionsWindow::FillScheduleList() {
  const HWND list = Item(kOptAutoList);
  ::SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
  for (const ScheduledRun& run : dialog_.values.schedule) {
    const std::string cells[] = {run.kind, run.time, run.path};
    AddRow(list, cells);
  }
}

void OptionsWindow::ShowAssociation() {
  ::EnableWindow(Item(kOptAssociate), dialog_.AssociateEnabled() ? TRUE : FALSE);
  ::EnableWindow(Item(kOptRemoveAssociation), dialog_.RemoveEnabled() ? TRUE : FALSE);
}

// --- events ----------------------------------------------------------------------

LRESULT OptionsWindow::HandleMessage(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_COMMAND:
      OnCommand(LOWORD(wp), HIWORD(wp));
      return 0;
    case WM_NOTIFY: {
      const auto& header = *reinterpret_cast<const NMHDR*>(lp);
      if (header.idFrom == kOptTab && header.code == TCN_SELCHANGE)
        ShowPage(static_cast<int>(::SendMessageW(header.hwndFrom, TCM_GETCURSEL, 0, 0)));
      if (header.code == LVN_ITEMCHANGED) {
        const auto& change = *reinterpret_cast<const NMLISTVIEW*>(lp);
        if ((change.uNewState & LVIS_SELECTED) != 0 && (change.uOldState & LVIS_SELECTED) == 0)
          OnListSelection(static_cast<int>(header.idFrom));
      }
      return 0;
    }
    case WM_CLOSE:
      done_ = true;  // as キャンセル
      return 0;
    default:
      return Default(msg, wp, lp);
  }
}

void OptionsWindow::OnCommand(int id, int code) {
  if (code != BN_CLICKED) return;
  const auto hotkey = [&] { return hotkeyBoxes_.at(kOptHotkeyBox)->entry(); };
  switch (id) {
    case IDOK:
    case kOptOk:
      Confirm(true);
      return;
    case IDCANCEL:
    case kOptCancel:
      done_ = true;
      return;
    case kOptApply:
      Confirm(false);
      return;
    case kOptHotkeyAdd:
    case kOptHotkeyChange: {
      const gui::HotkeyEntry e = hotkey();
      const gui::HotkeyChoice chord{e.KeyCode(), e.Modifiers()};
      Refused(id == kOptHotkeyAdd ? dialog_.AddHotkey(chord, e.Text(), Text(kOptHotkeyFile))
                                  : dialog_.ChangeHotkey(SelectedRow(kOptHotkeyList), chord,
                                                         e.Text(), Text(kOptHotkeyFile)));
      FillHotkeyList();
      return;
    }
    case kOptHotkeyDelete:
      dialog_.DeleteHotkey(SelectedRow(kOptHotkeyList));
      FillHotkeyList();
      return;
    case kOptAutoAdd:
      dialog_.AddSchedule(ChosenOf(kScheduleKindIds), PickerTime(), Text(kOptAutoFile));
      FillScheduleList();
      return;
    case kOptAutoChange:
      dialog_.ChangeSchedule(SelectedRow(kOptAutoList), ChosenOf(kScheduleKindIds), PickerTime(),
                             Text(kOptAutoFile));
      FillScheduleList();
      return;
    case kOptAutoDelete:
      dialog_.DeleteSchedule(SelectedRow(kOptAutoList));
      FillScheduleList();
      return;
    case kOptAutoClear: {
      SYSTEMTIME midnight{2000, 1, 6, 1, 0, 0, 0, 0};
      ::SendMessageW(Item(kOptAutoTime), DTM_SETSYSTEMTIME, GDT_VALID,
                     reinterpret_cast<LPARAM>(&midnight));
      return;
    }
    case kOptHotkeyBrowse:
      Browse(gui::BrowseTarget::kHotkeyMacro, kOptHotkeyFile);
      return;
    case kOptAutoBrowse:
      Browse(gui::BrowseTarget::kScheduleMacro, kOptAutoFile);
      return;
    case kOptDefMacroBrowse:
      Browse(gui::BrowseTarget::kStartUpMacro, kOptDefMacro);
      return;
    case kOptBrowserBrowse:
      Browse(gui::BrowseTarget::kBrowser, kOptBrowser);
      return;
    case kOptAssociate:
      dialog_.Associate();
      ShowAssociation();
      ::SetFocus(Item(kOptRemoveAssociation));
      return;
    case kOptRemoveAssociation:
      dialog_.RemoveAssociation();
      ShowAssociation();
      ::SetFocus(Item(kOptAssociate));
      return;
    default:
      return;
  }
}

// A chosen row shows its values in the boxes below the list, ready to edit.
void OptionsWindow::OnListSelection(int id) {
  if (id == kOptHotkeyList) {
    const int row = SelectedRow(id);
    if (row < 0 || row >= static_cast<int>(dialog_.values.hotkeys.size())) return;
    const gui::HotkeyRow& r = dialog_.values.hotkeys[static_cast<std::size_t>(row)];
    const auto parsed = ParseHotkeyList(r.tag);
    if (!parsed.empty())
      hotkeyBoxes_.at(kOptHotkeyBox)->Set(parsed[0].virtualKey, parsed[0].modifiers);
    SetText(kOptHotkeyFile, r.path);
  } else if (id == kOptAutoList) {
    const int row = SelectedRow(id);
    if (row < 0 || row >= static_cast<int>(dialog_.values.schedule.size())) return;
    const ScheduledRun& run = dialog_.values.schedule[static_cast<std::size_t>(row)];
    for (std::size_t i = 0; i < kScheduleKindIds.size(); ++i)
      Check(kScheduleKindIds[i], gui::kScheduleKinds[i] == run.kind);
    if (const auto seconds = gui::ParseScheduleTime(run.time)) {
      SYSTEMTIME t{2000,
                   1,
                   6,
                   1,
                   static_cast<WORD>(*seconds / kSecondsPerHour),
                   static_cast<WORD>(*seconds / kSecondsPerMinute % kSecondsPerMinute),
                   static_cast<WORD>(*seconds % kSecondsPerMinute),
                   0};
      ::SendMessageW(Item(kOptAutoTime), DTM_SETSYSTEMTIME, GDT_VALID,
                     reinterpret_cast<LPARAM>(&t));
    }
    SetText(kOptAutoFile, run.path);
  }
}

void OptionsWindow::Confirm(bool close) {
  ReadValues();
  dialog_.Confirm();
  if (close) done_ = true;
}

void OptionsWindow::Browse(gui::BrowseTarget target, int editId) {
  if (const auto path = AskOpenFile(hwnd(), dialog_.BrowseRequest(target))) SetText(editId, *path);
}

void OptionsWindow::Refused(gui::ListEdit result) {
  const char* message = result == gui::ListEdit::kDuplicate ? gui::kDuplicateHotkeyMessage
                        : result == gui::ListEdit::kNoMacro ? gui::kNoMacroFileMessage
                                                            : nullptr;
  if (!message) return;
  ::MessageBoxW(hwnd(), Widen(message).c_str(), Widen(gui::kAppTitle).c_str(),
                MB_OK | MB_ICONEXCLAMATION);
}

// --- helpers ---------------------------------------------------------------------

bool OptionsWindow::Checked(int id) const {
  return ::SendMessageW(Item(id), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void OptionsWindow::Check(int id, bool on) {
  ::SendMessageW(Item(id), BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED, 0);
}

std::string OptionsWindow::Text(int id) const {
  const HWND control = Item(id);
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(control)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(
      ::GetWindowTextW(control, text.data(), static_cast<int>(text.size()))));
  return Narrow(text);
}

void OptionsWindow::SetText(int id, std::string_view text) {
  ::SetWindowTextW(Item(id), Widen(text).c_str());
}

int OptionsWindow::SelectedRow(int listId) const {
  return static_cast<int>(
      ::SendMessageW(Item(listId), LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
}

std::optional<int> OptionsWindow::ChosenOf(std::span<const int> ids) const {
  for (std::size_t i = 0; i < ids.size(); ++i)
    if (Checked(ids[i])) return static_cast<int>(i);
  return std::nullopt;
}

std::string OptionsWindow::PickerTime() const {
  SYSTEMTIME t{};
  if (::SendMessageW(Item(kOptAutoTime), DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&t)) !=
      GDT_VALID)
    return gui::FormatScheduleTime(0);
  return gui::FormatScheduleTime(t.wHour * kSecondsPerHour + t.wMinute * kSecondsPerMinute +
                                 t.wSecond);
}

}  // namespace kx::win32
