// Commands that change a window or a control: texts, selections, clicks,
// focus and plain messages.
#include <algorithm>

#include "common_controls.h"
#include "robot_commands.h"
#include "robot_output.h"
#include "robot_remote.h"
#include "sys/win32/wide.h"

namespace kx::robot {

namespace {

struct NamedMessage {
  const wchar_t* name;
  UINT value;
};
constexpr NamedMessage kMessages[] = {
    {L"WM_NULL", WM_NULL},
    {L"WM_CLOSE", WM_CLOSE},
    {L"WM_COMMAND", WM_COMMAND},
    {L"WM_SYSCOMMAND", WM_SYSCOMMAND},
    {L"WM_KEYDOWN", WM_KEYDOWN},
    {L"WM_KEYUP", WM_KEYUP},
    {L"WM_CHAR", WM_CHAR},
    {L"WM_SETFOCUS", WM_SETFOCUS},
    {L"WM_LBUTTONDOWN", WM_LBUTTONDOWN},
    {L"WM_LBUTTONUP", WM_LBUTTONUP},
    {L"WM_RBUTTONDOWN", WM_RBUTTONDOWN},
    {L"WM_RBUTTONUP", WM_RBUTTONUP},
    {L"WM_MOUSEMOVE", WM_MOUSEMOVE},
    {L"WM_CONTEXTMENU", WM_CONTEXTMENU},
    {L"WM_TIMER", WM_TIMER},
    {L"WM_HOTKEY", WM_HOTKEY},
    {L"WM_GETTEXTLENGTH", WM_GETTEXTLENGTH},
    {L"BM_CLICK", BM_CLICK},
    {L"BM_GETCHECK", BM_GETCHECK},
    {L"BM_SETCHECK", BM_SETCHECK},
    {L"WM_CANCELMODE", WM_CANCELMODE},
    {L"WM_USER", WM_USER},
    {L"WM_APP", WM_APP},
};

int Refused(const char* what) {
  WriteErr(std::string("kx_robot: ") + what + "\n");
  return kNotFound;
}

LPARAM PointParam(POINT p) {
  return MAKELPARAM(static_cast<WORD>(p.x), static_cast<WORD>(p.y));
}

POINT ClickPoint(const Options& o, HWND h) {
  if (o.at) return *o.at;
  RECT r{};
  ::GetClientRect(h, &r);
  return {(r.right - r.left) / 2, (r.bottom - r.top) / 2};
}

// Mouse messages posted straight to the control: no real pointer moves, so
// this works whatever lies on top of the window.
int PostClick(const Options& o, UINT down, UINT up, WPARAM downKeys) {
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  const LPARAM at = PointParam(ClickPoint(o, *h));
  const bool ok = ::PostMessageW(*h, WM_MOUSEMOVE, 0, at) &&
                  ::PostMessageW(*h, down, downKeys, at) && ::PostMessageW(*h, up, 0, at);
  return ok ? kOk : Refused("the message was not posted");
}

// Tells the parent that the user changed the selection, as the control
// itself does only for changes made with the mouse or keyboard.
void NotifyParent(HWND h, WORD code) {
  const int id = ::GetDlgCtrlID(h);
  ::PostMessageW(::GetParent(h), WM_COMMAND, MAKEWPARAM(static_cast<WORD>(id), code),
                 reinterpret_cast<LPARAM>(h));
}

// Tells the parent that a scrolling control moved to pos and stopped, as it
// hears when the user drags it; the position messages do not tell it.
void NotifyScroll(HWND h, UINT msg, WORD code, long long pos) {
  const HWND parent = ::GetParent(h);
  const auto lp = reinterpret_cast<LPARAM>(h);
  Send(parent, msg, MAKEWPARAM(code, static_cast<WORD>(pos)), lp);
  Send(parent, msg, MAKEWPARAM(SB_ENDSCROLL, 0), lp);
}

int SelectString(HWND h, const std::wstring& want, UINT count, UINT setCurrent, WORD notify) {
  const auto n = Send(h, count);
  for (int i = 0; n && i < *n; ++i) {
    if (ItemText(h, i) != want) continue;
    const bool multi = count == LB_GETCOUNT &&
                       (::GetWindowLongPtrW(h, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL));
    const auto done =
        multi ? Send(h, LB_SETSEL, TRUE, i) : Send(h, setCurrent, static_cast<WPARAM>(i));
    if (!done || *done < 0) return Refused("the control refused the selection");
    NotifyParent(h, notify);
    return kOk;
  }
  return Refused("no item with that text");
}

}  // namespace

std::optional<long long> ParseNumber(const std::wstring& text) {
  if (text.empty()) return std::nullopt;
  try {
    size_t used = 0;
    const long long v = std::stoll(text, &used, 0);
    if (used != text.size()) return std::nullopt;
    return v;
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

std::optional<UINT> ParseMessage(const std::wstring& text) {
  for (const NamedMessage& m : kMessages)
    if (text == m.name) return m.value;
  const auto v = ParseNumber(text);
  if (!v || *v < 0 || *v > 0xFFFF) return std::nullopt;
  return static_cast<UINT>(*v);
}

int SetText(const Options& o) {
  if (o.args.size() != 1) return kUsage;
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  const auto ok = Send(*h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(o.args[0].c_str()));
  return ok && *ok ? kOk : Refused("the target refused the text");
}

int Select(const Options& o) {
  if (o.args.size() != 1) return kUsage;
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  const std::wstring& want = o.args[0];
  if (ClassIs(*h, WC_TREEVIEWW))
    return SelectTreePath(*h, want) ? kOk : Refused("no tree item at that path");
  if (ClassIs(*h, WC_LISTVIEWW)) {
    const auto rows = ReadListRows(*h);
    for (const ListRow& r : rows.value_or(std::vector<ListRow>{}))
      if (r.cells.front() == want)
        return SelectListRow(*h, r.index) ? kOk : Refused("the list view refused the selection");
    return Refused("no list view row with that text");
  }
  if (ClassIs(*h, WC_TABCONTROLW)) {
    const auto tabs = ReadTabs(*h).value_or(std::vector<std::wstring>{});
    const auto at = std::find(tabs.begin(), tabs.end(), want);
    if (at == tabs.end()) return Refused("no tab with that caption");
    // Moving the focus, unlike setting the selection, tells the parent, so
    // that a property sheet shows the tab's page.
    Send(*h, TCM_SETCURFOCUS, static_cast<WPARAM>(at - tabs.begin()));
    return kOk;
  }
  if (ClassIs(*h, L"ListBox"))
    return SelectString(*h, want, LB_GETCOUNT, LB_SETCURSEL, LBN_SELCHANGE);
  if (ClassIs(*h, L"ComboBox"))
    return SelectString(*h, want, CB_GETCOUNT, CB_SETCURSEL, CBN_SELCHANGE);
  WriteErr(
      "kx_robot: select works on SysTreeView32, SysListView32, SysTabControl32, ListBox and "
      "ComboBox\n");
  return kUsage;
}

int SetValue(const Options& o) {
  const auto value = ParseNumber(o.args[0]);
  if (!value) return kUsage;
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  const auto style = ::GetWindowLongPtrW(*h, GWL_STYLE);
  std::optional<LRESULT> done;
  if (ClassIs(*h, UPDOWN_CLASSW)) {
    done = Send(*h, UDM_SETPOS32, 0, static_cast<LPARAM>(*value));
    NotifyScroll(*h, (style & UDS_HORZ) ? WM_HSCROLL : WM_VSCROLL, SB_THUMBPOSITION, *value);
  } else if (ClassIs(*h, TRACKBAR_CLASSW)) {
    done = Send(*h, TBM_SETPOS, TRUE, static_cast<LPARAM>(*value));
    NotifyScroll(*h, (style & TBS_VERT) ? WM_VSCROLL : WM_HSCROLL, TB_THUMBPOSITION, *value);
  } else {
    done = Send(*h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(o.args[0].c_str()));
  }
  return done ? kOk : Refused("the target did not answer");
}

int Click(const Options& o) {
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  // Posted by default: a button that opens a modal dialog would not answer
  // a sent click until the dialog closes.
  // A click that closes the button's window loses the answer with it.
  if (o.send)
    return Send(*h, BM_CLICK) || !::IsWindow(*h) ? kOk : Refused("the button did not answer");
  return ::PostMessageW(*h, BM_CLICK, 0, 0) ? kOk : Refused("the message was not posted");
}

int LeftClick(const Options& o) {
  return PostClick(o, WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON);
}
int RightClick(const Options& o) {
  return PostClick(o, WM_RBUTTONDOWN, WM_RBUTTONUP, MK_RBUTTON);
}

int Focus(const Options& o) {
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  const HWND top = TopOf(*h);
  ::SetForegroundWindow(top);
  if (top != *h) {
    // SetFocus works only on windows of a thread whose input is shared.
    const DWORD self = ::GetCurrentThreadId();
    const DWORD owner = ::GetWindowThreadProcessId(*h, nullptr);
    ::AttachThreadInput(self, owner, TRUE);
    ::SetFocus(*h);
    ::AttachThreadInput(self, owner, FALSE);
  }
  return ::GetForegroundWindow() == top ? kOk : Refused("the window did not come to the front");
}

int Close(const Options& o) {
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  return ::PostMessageW(*h, WM_CLOSE, 0, 0) ? kOk : Refused("the message was not posted");
}

int PostCommand(const Options& o) {
  if (o.args.empty() || o.args.size() > 2) return kUsage;
  const auto id = ParseNumber(o.args[0]);
  const auto code = o.args.size() == 2 ? ParseNumber(o.args[1]) : 0;
  if (!id || !code) return kUsage;
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  const WPARAM w = MAKEWPARAM(static_cast<WORD>(*id), static_cast<WORD>(*code));
  return ::PostMessageW(*h, WM_COMMAND, w, 0) ? kOk : Refused("the message was not posted");
}

namespace {

struct RawMessage {
  UINT msg;
  WPARAM w;
  LPARAM l;
};

std::optional<RawMessage> ParseRaw(const Options& o) {
  if (o.args.empty() || o.args.size() > 3) return std::nullopt;
  const auto msg = ParseMessage(o.args[0]);
  const auto w = o.args.size() > 1 ? ParseNumber(o.args[1]) : 0;
  const auto l = o.args.size() > 2 ? ParseNumber(o.args[2]) : 0;
  if (!msg || !w || !l) return std::nullopt;
  return RawMessage{*msg, static_cast<WPARAM>(*w), static_cast<LPARAM>(*l)};
}

}  // namespace

int Post(const Options& o) {
  const auto m = ParseRaw(o);
  if (!m) return kUsage;
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  return ::PostMessageW(*h, m->msg, m->w, m->l) ? kOk : Refused("the message was not posted");
}

int SendCommand(const Options& o) {
  const auto m = ParseRaw(o);
  if (!m) return kUsage;
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  const auto result = Send(*h, m->msg, m->w, m->l);
  if (!result) return Refused("the target did not answer in time");
  WriteOut(std::to_string(*result) + "\n");
  return kOk;
}

namespace {

void PrintMenu(HMENU menu, int depth, const std::wstring& prefix) {
  const int count = ::GetMenuItemCount(menu);
  for (int i = 0; i < count; ++i) {
    wchar_t text[512] = {};
    MENUITEMINFOW info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STRING | MIIM_ID | MIIM_SUBMENU | MIIM_STATE | MIIM_FTYPE;
    info.dwTypeData = text;
    info.cch = 511;
    if (!::GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &info)) continue;
    const std::wstring path = prefix.empty() ? text : prefix + L"/" + text;
    Record("menu")
        .Number("depth", depth)
        .Number("id", info.wID)
        .Text("path", path)
        .Text("text", text)
        .Number("enabled", (info.fState & MFS_DISABLED) ? 0 : 1)
        .Number("checked", (info.fState & MFS_CHECKED) ? 1 : 0)
        .Number("separator", (info.fType & MFT_SEPARATOR) ? 1 : 0)
        .Print();
    if (info.hSubMenu) PrintMenu(info.hSubMenu, depth + 1, path);
  }
}

}  // namespace

int Menu(const Options& o) {
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  const HMENU menu = ::GetMenu(TopOf(*h));
  if (!menu || ::GetMenuItemCount(menu) < 0)
    return Refused("the menu cannot be read from this process");
  PrintMenu(menu, 0, L"");
  return kOk;
}

}  // namespace kx::robot
