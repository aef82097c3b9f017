#include "gui/win32/controls.h"

#include <algorithm>

#include "gui/player_settings.h"
#include "gui/win32/resource_ids.h"
#include "sys/win32/wide.h"

namespace kx::win32 {

namespace {

HWND CreateChild(const wchar_t* cls, const ControlArgs& args, DWORD style, DWORD exStyle = 0) {
  return ::CreateWindowExW(exStyle, cls, args.text.c_str(), WS_CHILD | WS_VISIBLE | style, 0, 0, 0,
                           0, args.parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(args.id)),
                           ::GetModuleHandleW(nullptr), nullptr);
}

constexpr UINT_PTR kButtonSubclassId = 1;
constexpr int kTreeImageFolder = 0;
constexpr int kTreeImageFile = 1;

// The program's own small icons: asking the shell for its file icons costs
// a good part of the start-up.
HICON SmallIcon(int id, int size) {
  return static_cast<HICON>(::LoadImageW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id),
                                         IMAGE_ICON, size, size, LR_DEFAULTCOLOR));
}

}  // namespace

// --- PushButton ---

bool PushButton::Create(const ControlArgs& args) {
  hwnd_ = CreateChild(WC_BUTTONW, args, WS_TABSTOP | BS_PUSHBUTTON);
  if (hwnd_)
    ::SetWindowSubclass(hwnd_, &PushButton::Subclass, kButtonSubclassId,
                        reinterpret_cast<DWORD_PTR>(this));
  return hwnd_ != nullptr;
}

LRESULT CALLBACK PushButton::Subclass(HWND hwnd, UINT msg, WPARAM wp, LPARAM lp, UINT_PTR,
                                      DWORD_PTR data) noexcept {
  auto* self = reinterpret_cast<PushButton*>(data);
  if (msg == WM_RBUTTONUP && self->onRightClick && ::IsWindowEnabled(hwnd)) {
    try {
      self->onRightClick();
    } catch (...) {
    }
    return 0;
  }
  if (msg == WM_NCDESTROY) ::RemoveWindowSubclass(hwnd, &PushButton::Subclass, kButtonSubclassId);
  return ::DefSubclassProc(hwnd, msg, wp, lp);
}

// --- Tooltips ---

bool Tooltips::Create(HWND parent) {
  parent_ = parent;
  hwnd_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP, 0, 0,
                            0, 0, parent, nullptr, ::GetModuleHandleW(nullptr), nullptr);
  return hwnd_ != nullptr;
}

void Tooltips::Add(HWND tool, const std::wstring& text) {
  std::wstring copy = text;  // the control keeps its own copy
  TTTOOLINFOW info{};
  info.cbSize = sizeof info;
  info.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  info.hwnd = parent_;
  info.uId = reinterpret_cast<UINT_PTR>(tool);
  info.lpszText = copy.data();
  ::SendMessageW(hwnd_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&info));
}

// --- StatusBar ---

bool StatusBar::Create(const ControlArgs& args) {
  hwnd_ = CreateChild(STATUSCLASSNAMEW, args, SBARS_SIZEGRIP);
  if (!hwnd_) return false;
  int whole = -1;  // one panel across the bar
  ::SendMessageW(hwnd_, SB_SETPARTS, 1, reinterpret_cast<LPARAM>(&whole));
  return true;
}

void StatusBar::SetText(const std::wstring& text) {
  ::SendMessageW(hwnd_, SB_SETTEXTW, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

int StatusBar::Height() const {
  RECT r{};
  ::GetWindowRect(hwnd_, &r);
  return r.bottom - r.top;
}

// --- LoopCountBox ---

bool LoopCountBox::Create(const ControlArgs& args, int spinId) {
  edit_ = CreateChild(WC_EDITW, args, WS_TABSTOP | ES_NUMBER | ES_RIGHT | ES_AUTOHSCROLL,
                      WS_EX_CLIENTEDGE);
  if (!edit_) return false;
  ::SendMessageW(edit_, EM_SETLIMITTEXT, 4, 0);
  spin_ = CreateChild(UPDOWN_CLASSW, {args.parent, spinId, L""},
                      UDS_SETBUDDYINT | UDS_ALIGNRIGHT | UDS_ARROWKEYS | UDS_NOTHOUSANDS);
  if (!spin_) return false;
  ::SendMessageW(spin_, UDM_SETBUDDY, reinterpret_cast<WPARAM>(edit_), 0);
  ::SendMessageW(spin_, UDM_SETRANGE32, kMin, kMax);
  return true;
}

int LoopCountBox::Value() const {
  // The box takes digits only when typed; a paste can still bring anything.
  wchar_t text[16]{};
  ::GetWindowTextW(edit_, text, static_cast<int>(std::size(text)));
  return LoopCountFromText(Narrow(text));
}

void LoopCountBox::SetValue(int value) {
  ::SetWindowTextW(edit_, std::to_wstring(std::clamp(value, 0, kMax)).c_str());
}

void LoopCountBox::Lock(bool locked) {
  ::SendMessageW(edit_, EM_SETREADONLY, locked ? TRUE : FALSE, 0);
  ::EnableWindow(spin_, locked ? FALSE : TRUE);
}

// --- TextLine ---

bool TextLine::Create(const ControlArgs& args, Kind kind) {
  hwnd_ = kind == Kind::kLabel
              ? CreateChild(WC_STATICW, args, SS_LEFT | SS_NOPREFIX | SS_CENTERIMAGE)
              : CreateChild(WC_EDITW, args, ES_READONLY | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE);
  return hwnd_ != nullptr;
}

// --- NameValueList ---

bool NameValueList::Create(const ControlArgs& args, const std::wstring& nameHeader,
                           const std::wstring& valueHeader) {
  hwnd_ =
      CreateChild(WC_LISTVIEWW, args,
                  WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
                  WS_EX_CLIENTEDGE);
  if (!hwnd_) return false;
  ListView_SetExtendedListViewStyle(
      hwnd_, LVS_EX_FULLROWSELECT | LVS_EX_GRIDLINES | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
  const std::wstring* headers[] = {&nameHeader, &valueHeader};
  for (int i = 0; i < 2; ++i) {
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
    column.pszText = const_cast<wchar_t*>(headers[i]->c_str());
    column.cx = 100;
    column.iSubItem = i;
    ListView_InsertColumn(hwnd_, i, &column);
  }
  return true;
}

void NameValueList::SetColumnWidths(int name, int value) {
  ListView_SetColumnWidth(hwnd_, 0, name);
  ListView_SetColumnWidth(hwnd_, 1, value);
}

void NameValueList::SetCell(int row, int column, const std::wstring& text) {
  ListView_SetItemText(hwnd_, row, column, const_cast<wchar_t*>(text.c_str()));
}

void NameValueList::SetRows(const std::vector<std::pair<std::wstring, std::wstring>>& rows) {
  const int count = static_cast<int>(rows.size());
  int shown = static_cast<int>(shown_.size());
  // Rows past the new end go first, so that the others keep their places.
  while (shown > count) ListView_DeleteItem(hwnd_, --shown);
  for (int i = 0; i < count; ++i) {
    const auto& [name, value] = rows[static_cast<std::size_t>(i)];
    if (i >= shown) {
      LVITEMW item{};
      item.mask = LVIF_TEXT;
      item.iItem = i;
      item.pszText = const_cast<wchar_t*>(name.c_str());
      ListView_InsertItem(hwnd_, &item);
      SetCell(i, 1, value);
      continue;
    }
    const auto& old = shown_[static_cast<std::size_t>(i)];
    if (old.first != name) SetCell(i, 0, name);
    if (old.second != value) SetCell(i, 1, value);
  }
  shown_ = rows;
}

// --- MacroTreeView ---

bool MacroTreeView::Create(const ControlArgs& args) {
  hwnd_ =
      CreateChild(WC_TREEVIEWW, args,
                  WS_TABSTOP | TVS_HASLINES | TVS_LINESATROOT | TVS_HASBUTTONS | TVS_SHOWSELALWAYS,
                  WS_EX_CLIENTEDGE);
  return hwnd_ != nullptr;
}

MacroTreeView::~MacroTreeView() {
  if (images_) ::ImageList_Destroy(images_);
}

void MacroTreeView::Set(const std::vector<gui::TreeNode>& nodes, bool icons) {
  ::SendMessageW(hwnd_, WM_SETREDRAW, FALSE, 0);
  TreeView_DeleteAllItems(hwnd_);
  items_.clear();
  if (icons && !images_) {
    const int size = ::GetSystemMetrics(SM_CXSMICON);
    images_ = ::ImageList_Create(size, size, ILC_COLOR32 | ILC_MASK, 2, 0);
    for (const int id : {kFolderIconId, kMacroIconId}) {
      const HICON icon = SmallIcon(id, size);
      ::ImageList_AddIcon(images_, icon ? icon : ::LoadIconW(nullptr, IDI_APPLICATION));
      if (icon) ::DestroyIcon(icon);
    }
  }
  TreeView_SetImageList(hwnd_, icons ? images_ : nullptr, TVSIL_NORMAL);
  for (const gui::TreeNode& node : nodes) Add(TVI_ROOT, node, icons);
  ::SendMessageW(hwnd_, WM_SETREDRAW, TRUE, 0);
  ::InvalidateRect(hwnd_, nullptr, TRUE);
}

void MacroTreeView::Add(HTREEITEM parent, const gui::TreeNode& node, bool icons) {
  const std::wstring name = Widen(node.name);
  TVINSERTSTRUCTW insert{};
  insert.hParent = parent;
  insert.hInsertAfter = TVI_LAST;
  insert.item.mask = TVIF_TEXT | TVIF_PARAM | (icons ? TVIF_IMAGE | TVIF_SELECTEDIMAGE : 0);
  insert.item.pszText = const_cast<wchar_t*>(name.c_str());
  insert.item.lParam = static_cast<LPARAM>(items_.size());
  insert.item.iImage = insert.item.iSelectedImage = node.folder ? kTreeImageFolder : kTreeImageFile;
  items_.emplace_back(node.path, node.folder);
  const HTREEITEM item = TreeView_InsertItem(hwnd_, &insert);
  for (const gui::TreeNode& child : node.children) Add(item, child, icons);
}

std::optional<std::string> MacroTreeView::SelectedPath() const {
  const HTREEITEM item = TreeView_GetSelection(hwnd_);
  if (!item) return std::nullopt;
  TVITEMW tv{};
  tv.mask = TVIF_PARAM;
  tv.hItem = item;
  if (!TreeView_GetItem(hwnd_, &tv) || tv.lParam < 0 ||
      static_cast<std::size_t>(tv.lParam) >= items_.size())
    return std::nullopt;
  return items_[static_cast<std::size_t>(tv.lParam)].first;
}

bool MacroTreeView::SelectedIsFolder() const {
  const auto path = SelectedPath();
  if (!path) return true;
  for (const auto& [p, folder] : items_)
    if (p == *path) return folder;
  return true;
}

bool MacroTreeView::SelectAt(POINT screen) {
  TVHITTESTINFO hit{};
  hit.pt = screen;
  ::ScreenToClient(hwnd_, &hit.pt);
  const HTREEITEM item = TreeView_HitTest(hwnd_, &hit);
  if (!item) return false;
  TreeView_SelectItem(hwnd_, item);
  return true;
}

}  // namespace kx::win32
