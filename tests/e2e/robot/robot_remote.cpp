#include "robot_remote.h"

#include <algorithm>

#include "robot_windows.h"

namespace kx::robot {

namespace {

constexpr size_t kTextChars = 4096;
constexpr size_t kTextBytes = kTextChars * sizeof(wchar_t);
constexpr wchar_t kPathSeparator = L'/';

HANDLE OpenOwner(HWND owner) {
  DWORD pid = 0;
  ::GetWindowThreadProcessId(owner, &pid);
  return ::OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, pid);
}

// A request structure followed by its text buffer, both in the target.
template <typename Struct>
struct RemoteRequest {
  RemoteBuffer buffer;
  explicit RemoteRequest(HWND owner) : buffer(owner, sizeof(Struct) + kTextBytes) {}
  LPARAM Text() const { return buffer.At(sizeof(Struct)); }
  // Sends msg with the structure; on success reads it back into s.
  std::optional<LRESULT> Exchange(HWND h, UINT msg, WPARAM w, Struct& s) const {
    if (!buffer || !buffer.Write(&s, sizeof s)) return std::nullopt;
    const auto result = Send(h, msg, w, buffer.At());
    if (!result || !buffer.Read(&s, sizeof s)) return std::nullopt;
    return result;
  }
};

HTREEITEM NextItem(HWND tree, UINT how, HTREEITEM from) {
  const auto r = Send(tree, TVM_GETNEXTITEM, how, reinterpret_cast<LPARAM>(from));
  return r ? reinterpret_cast<HTREEITEM>(*r) : nullptr;
}

std::optional<TVITEMW> GetTreeItem(const RemoteRequest<TVITEMW>& req, HWND tree, HTREEITEM item,
                                   std::wstring& text) {
  TVITEMW tv{};
  tv.mask = TVIF_TEXT | TVIF_STATE | TVIF_CHILDREN | TVIF_HANDLE;
  tv.hItem = item;
  tv.stateMask = TVIS_SELECTED | TVIS_EXPANDED;
  tv.pszText = reinterpret_cast<LPWSTR>(req.Text());
  tv.cchTextMax = static_cast<int>(kTextChars);
  const auto ok = req.Exchange(tree, TVM_GETITEMW, 0, tv);
  if (!ok || !*ok) return std::nullopt;
  // A control may answer with a pointer to its own copy of the text.
  text = tv.pszText == LPSTR_TEXTCALLBACKW
             ? L""
             : req.buffer.ReadString(reinterpret_cast<LPARAM>(tv.pszText), kTextChars);
  return tv;
}

void WalkTree(const RemoteRequest<TVITEMW>& req, HWND tree, HTREEITEM item, int depth,
              const std::wstring& prefix, std::vector<TreeItem>& out) {
  for (; item; item = NextItem(tree, TVGN_NEXT, item)) {
    std::wstring text;
    const auto tv = GetTreeItem(req, tree, item, text);
    if (!tv) return;
    std::wstring path = prefix.empty() ? text : prefix + kPathSeparator + text;
    out.push_back({item, depth, text, path, (tv->state & TVIS_SELECTED) != 0,
                   (tv->state & TVIS_EXPANDED) != 0, tv->cChildren != 0});
    WalkTree(req, tree, NextItem(tree, TVGN_CHILD, item), depth + 1, path, out);
  }
}

std::wstring ListCell(const RemoteRequest<LVITEMW>& req, HWND list, int row, int column) {
  LVITEMW lv{};
  lv.iSubItem = column;
  lv.pszText = reinterpret_cast<LPWSTR>(req.Text());
  lv.cchTextMax = static_cast<int>(kTextChars);
  const auto length = req.Exchange(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), lv);
  if (!length) return L"";
  return req.buffer.ReadString(req.Text(), kTextChars);
}

}  // namespace

RemoteBuffer::RemoteBuffer(HWND owner, size_t size) : process_(OpenOwner(owner)) {
  if (process_)
    address_ =
        ::VirtualAllocEx(process_.get(), nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
}

RemoteBuffer::~RemoteBuffer() {
  if (address_) ::VirtualFreeEx(process_.get(), address_, 0, MEM_RELEASE);
}

bool RemoteBuffer::Write(const void* data, size_t size, size_t offset) const {
  SIZE_T done = 0;
  return ::WriteProcessMemory(process_.get(), reinterpret_cast<void*>(At(offset)), data, size,
                              &done) &&
         done == size;
}

bool RemoteBuffer::Read(void* data, size_t size, size_t offset) const {
  SIZE_T done = 0;
  return ::ReadProcessMemory(process_.get(), reinterpret_cast<const void*>(At(offset)), data, size,
                             &done) &&
         done == size;
}

std::wstring RemoteBuffer::ReadString(LPARAM address, size_t max) const {
  std::wstring text(max, L'\0');
  SIZE_T done = 0;
  // The string may end near the end of a page: a partial read is still text.
  ::ReadProcessMemory(process_.get(), reinterpret_cast<const void*>(address), text.data(),
                      max * sizeof(wchar_t), &done);
  text.resize(done / sizeof(wchar_t));
  const size_t end = text.find(L'\0');
  if (end != std::wstring::npos) text.resize(end);
  return text;
}

std::optional<std::vector<TreeItem>> ReadTree(HWND tree) {
  RemoteRequest<TVITEMW> req(tree);
  if (!req.buffer) return std::nullopt;
  std::vector<TreeItem> out;
  WalkTree(req, tree, NextItem(tree, TVGN_ROOT, nullptr), 0, L"", out);
  return out;
}

bool SelectTreePath(HWND tree, const std::wstring& path) {
  RemoteRequest<TVITEMW> req(tree);
  if (!req.buffer) return false;
  HTREEITEM level = NextItem(tree, TVGN_ROOT, nullptr);
  HTREEITEM found = nullptr;
  size_t start = 0;
  while (start <= path.size()) {
    size_t end = path.find(kPathSeparator, start);
    if (end == std::wstring::npos) end = path.size();
    const std::wstring want = path.substr(start, end - start);
    found = nullptr;
    for (HTREEITEM item = level; item; item = NextItem(tree, TVGN_NEXT, item)) {
      std::wstring text;
      if (GetTreeItem(req, tree, item, text) && text == want) {
        found = item;
        break;
      }
    }
    if (!found) return false;
    if (end == path.size()) break;
    Send(tree, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(found));
    level = NextItem(tree, TVGN_CHILD, found);
    start = end + 1;
  }
  const auto done = Send(tree, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(found));
  if (done && *done) Send(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(found));
  return done && *done;
}

std::vector<std::wstring> ReadListColumns(HWND list) {
  std::vector<std::wstring> out;
  const auto header = Send(list, LVM_GETHEADER);
  if (!header || !*header) return out;
  const auto count = Send(reinterpret_cast<HWND>(*header), HDM_GETITEMCOUNT);
  if (!count || *count <= 0) return out;
  RemoteRequest<LVCOLUMNW> req(list);
  if (!req.buffer) return out;
  for (int i = 0; i < *count; ++i) {
    LVCOLUMNW col{};
    col.mask = LVCF_TEXT;
    col.pszText = reinterpret_cast<LPWSTR>(req.Text());
    col.cchTextMax = static_cast<int>(kTextChars);
    const auto ok = req.Exchange(list, LVM_GETCOLUMNW, static_cast<WPARAM>(i), col);
    out.push_back(ok && *ok ? req.buffer.ReadString(req.Text(), kTextChars) : L"");
  }
  return out;
}

std::optional<std::vector<ListRow>> ReadListRows(HWND list) {
  const auto count = Send(list, LVM_GETITEMCOUNT);
  if (!count) return std::nullopt;
  RemoteRequest<LVITEMW> req(list);
  if (!req.buffer) return std::nullopt;
  const size_t columns = std::max<size_t>(1, ReadListColumns(list).size());
  std::vector<ListRow> out;
  for (int i = 0; i < *count; ++i) {
    const auto state =
        Send(list, LVM_GETITEMSTATE, static_cast<WPARAM>(i), LVIS_SELECTED | LVIS_FOCUSED)
            .value_or(0);
    ListRow row{i, (state & LVIS_SELECTED) != 0, (state & LVIS_FOCUSED) != 0, {}};
    for (size_t c = 0; c < columns; ++c) row.cells.push_back(ListCell(req, list, i, int(c)));
    out.push_back(std::move(row));
  }
  return out;
}

bool SelectListRow(HWND list, int index) {
  RemoteRequest<LVITEMW> req(list);
  if (!req.buffer) return false;
  // Index -1 clears the selection of every row first.
  LVITEMW none{};
  none.stateMask = LVIS_SELECTED;
  req.Exchange(list, LVM_SETITEMSTATE, static_cast<WPARAM>(-1), none);
  LVITEMW lv{};
  lv.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  lv.state = LVIS_SELECTED | LVIS_FOCUSED;
  const auto ok = req.Exchange(list, LVM_SETITEMSTATE, static_cast<WPARAM>(index), lv);
  Send(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(index), FALSE);
  return ok && *ok;
}

std::optional<std::vector<std::wstring>> ReadStatusParts(HWND bar) {
  const auto simple = Send(bar, SB_ISSIMPLE);
  const auto parts = Send(bar, SB_GETPARTS);
  if (!simple || !parts) return std::nullopt;
  RemoteBuffer text(bar, kTextBytes);
  if (!text) return std::nullopt;
  const int count = *simple ? 1 : std::max<int>(1, static_cast<int>(*parts));
  std::vector<std::wstring> out;
  for (int i = 0; i < count; ++i) {
    const auto length = Send(bar, SB_GETTEXTLENGTHW, static_cast<WPARAM>(i));
    if (!length || LOWORD(*length) >= kTextChars) return std::nullopt;
    const wchar_t nothing = L'\0';
    text.Write(&nothing, sizeof nothing);
    if (!Send(bar, SB_GETTEXTW, static_cast<WPARAM>(i), text.At())) return std::nullopt;
    out.push_back(text.ReadString(text.At(), kTextChars));
  }
  return out;
}

std::optional<std::vector<std::wstring>> ReadTabs(HWND tabs) {
  const auto count = Send(tabs, TCM_GETITEMCOUNT);
  if (!count) return std::nullopt;
  RemoteRequest<TCITEMW> req(tabs);
  if (!req.buffer) return std::nullopt;
  std::vector<std::wstring> out;
  for (int i = 0; i < *count; ++i) {
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    item.pszText = reinterpret_cast<LPWSTR>(req.Text());
    item.cchTextMax = static_cast<int>(kTextChars);
    const auto ok = req.Exchange(tabs, TCM_GETITEMW, static_cast<WPARAM>(i), item);
    if (!ok || !*ok) return std::nullopt;
    out.push_back(req.buffer.ReadString(reinterpret_cast<LPARAM>(item.pszText), kTextChars));
  }
  return out;
}

std::vector<Tip> ReadTooltips(HWND top) {
  DWORD pid = 0;
  ::GetWindowThreadProcessId(top, &pid);
  Query q;
  q.cls = TOOLTIPS_CLASSW;
  q.pid = pid;
  q.hidden = true;
  std::vector<Tip> out;
  for (HWND tip : TopWindows(q)) {
    if (::GetWindow(tip, GW_OWNER) != top) continue;
    const auto count = Send(tip, TTM_GETTOOLCOUNT);
    if (!count) continue;
    RemoteRequest<TTTOOLINFOW> req(tip);
    if (!req.buffer) continue;
    for (int i = 0; i < *count; ++i) {
      TTTOOLINFOW info{};
      info.cbSize = sizeof info;
      info.lpszText = reinterpret_cast<LPWSTR>(req.Text());
      const auto ok = req.Exchange(tip, TTM_ENUMTOOLSW, static_cast<WPARAM>(i), info);
      if (!ok || !*ok) continue;
      std::wstring text;
      if (info.lpszText == LPSTR_TEXTCALLBACKW)
        text = L"(callback)";
      else if (IS_INTRESOURCE(info.lpszText))
        text = L"(resource " + std::to_wstring(reinterpret_cast<UINT_PTR>(info.lpszText)) + L")";
      else
        text = req.buffer.ReadString(reinterpret_cast<LPARAM>(info.lpszText), kTextChars);
      out.push_back({tip, info.hwnd, info.uId, std::move(text)});
    }
  }
  return out;
}

}  // namespace kx::robot
