// Commands that find, wait for and read windows and controls.
#include "common_controls.h"
#include "robot_commands.h"
#include "robot_output.h"
#include "robot_remote.h"
#include "sys/win32/wide.h"

namespace kx::robot {

namespace {

constexpr DWORD kPollMs = 50;

// Polls until done() holds or the time limit passes; true when it held.
template <typename Done>
bool WaitUntil(double seconds, Done done) {
  const ULONGLONG limit = ::GetTickCount64() + static_cast<ULONGLONG>(seconds * 1000.0);
  for (;;) {
    if (done()) return true;
    if (::GetTickCount64() >= limit) return false;
    ::Sleep(kPollMs);
  }
}

int NotFound(const char* what) {
  WriteErr(std::string("kx_robot: ") + what + "\n");
  return kNotFound;
}

std::optional<HWND> TopTarget(const Options& o) {
  Query top = o.query;
  top.ctlClass.clear();
  top.ctlId.reset();
  top.ctlText.reset();
  top.ctlTextRe.reset();
  top.ctlNth = 0;
  return Resolve(top);
}

// The text a command compares or prints: a status bar part, or WM_GETTEXT.
std::optional<std::wstring> TargetText(const Options& o, HWND h) {
  if (!o.part) return TextOf(h);
  const auto parts = ReadStatusParts(h);
  if (!parts || *o.part < 0 || static_cast<size_t>(*o.part) >= parts->size()) return std::nullopt;
  return (*parts)[static_cast<size_t>(*o.part)];
}

std::optional<std::wstring> StringItem(HWND h, UINT lengthMsg, UINT textMsg, int i) {
  const auto length = Send(h, lengthMsg, static_cast<WPARAM>(i));
  if (!length || *length < 0) return std::nullopt;
  std::wstring text(static_cast<size_t>(*length) + 1, L'\0');
  const auto got = Send(h, textMsg, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text.data()));
  if (!got || *got < 0) return std::nullopt;
  text.resize(static_cast<size_t>(*got));
  return text;
}

int PrintTree(HWND h) {
  const auto items = ReadTree(h);
  if (!items) return NotFound("cannot read the tree view");
  for (const TreeItem& t : *items)
    Record("item")
        .Number("depth", t.depth)
        .Text("path", t.path)
        .Text("text", t.text)
        .Number("selected", t.selected)
        .Number("expanded", t.expanded)
        .Number("children", t.hasChildren)
        .Print();
  return kOk;
}

int PrintListView(HWND h) {
  const auto columns = ReadListColumns(h);
  for (size_t i = 0; i < columns.size(); ++i)
    Record("column").Number("index", static_cast<long long>(i)).Text("text", columns[i]).Print();
  const auto rows = ReadListRows(h);
  if (!rows) return NotFound("cannot read the list view");
  for (const ListRow& r : *rows) {
    Record rec("row");
    rec.Number("index", r.index).Number("selected", r.selected).Number("focused", r.focused);
    for (size_t c = 0; c < r.cells.size(); ++c) rec.Text("c" + std::to_string(c), r.cells[c]);
    rec.Print();
  }
  return kOk;
}

int PrintTabs(HWND h) {
  const auto tabs = ReadTabs(h);
  if (!tabs) return NotFound("cannot read the tab control");
  const LRESULT current = Send(h, TCM_GETCURSEL).value_or(-1);
  for (size_t i = 0; i < tabs->size(); ++i)
    Record("item")
        .Number("index", static_cast<long long>(i))
        .Text("text", (*tabs)[i])
        .Number("selected", current == static_cast<LRESULT>(i))
        .Print();
  return kOk;
}

// List boxes and combo boxes: the same questions under different names.
struct StringList {
  const wchar_t* cls;
  UINT count, length, text, current;
};
constexpr StringList kStringLists[] = {
    {L"ListBox", LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT, LB_GETCURSEL},
    {L"ComboLBox", LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT, LB_GETCURSEL},
    {L"ComboBox", CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT, CB_GETCURSEL},
};

int PrintStrings(HWND h, const StringList& kind) {
  const auto count = Send(h, kind.count);
  if (!count || *count < 0) return NotFound("cannot read the list");
  const bool multi = kind.count == LB_GETCOUNT &&
                     (::GetWindowLongPtrW(h, GWL_STYLE) & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL));
  const LRESULT current = Send(h, kind.current).value_or(-1);
  for (int i = 0; i < *count; ++i) {
    const auto text = StringItem(h, kind.length, kind.text, i);
    const bool selected =
        multi ? Send(h, LB_GETSEL, static_cast<WPARAM>(i)).value_or(0) > 0 : current == i;
    Record("item")
        .Number("index", i)
        .Text("text", text.value_or(L""))
        .Number("selected", selected)
        .Print();
  }
  return kOk;
}

}  // namespace

std::optional<HWND> RequireTarget(const Options& o) {
  const auto h = Resolve(o.query);
  if (!h) NotFound("no such window or control");
  return h;
}

std::optional<std::wstring> ItemText(HWND h, int index) {
  for (const StringList& kind : kStringLists)
    if (ClassIs(h, kind.cls)) return StringItem(h, kind.length, kind.text, index);
  return std::nullopt;
}

int ListWindows(const Options& o) {
  for (HWND h : TopWindows(o.query)) PrintWindow(h);
  return kOk;
}

int ListControls(const Options& o) {
  const auto top = TopTarget(o);
  if (!top) return NotFound("no such window");
  const HWND root = TopOf(*top);
  for (const Control& c : Descendants(*top))
    if (ControlMatches(c.hwnd, o.query)) PrintControl(c.hwnd, root, c.depth);
  return kOk;
}

int Find(const Options& o) {
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  PrintAny(*h);
  return kOk;
}

int Wait(const Options& o) {
  std::optional<HWND> h;
  if (!WaitUntil(o.timeoutSeconds, [&] { return (h = Resolve(o.query)).has_value(); }))
    return NotFound("timed out waiting for the window or control");
  PrintAny(*h);
  return kOk;
}

int WaitGone(const Options& o) {
  if (!WaitUntil(o.timeoutSeconds, [&] { return !Resolve(o.query); }))
    return NotFound("timed out: the window or control is still there");
  return kOk;
}

int WaitText(const Options& o) {
  if (!o.equals && !o.contains) return kUsage;
  std::wstring last;
  const bool ok = WaitUntil(o.timeoutSeconds, [&] {
    const auto h = Resolve(o.query);
    if (!h) return false;
    const auto text = TargetText(o, *h);
    if (!text) return false;
    last = *text;
    if (o.equals && last != *o.equals) return false;
    return !o.contains || last.find(*o.contains) != std::wstring::npos;
  });
  if (!ok) return NotFound(("timed out; the text is [" + Escaped(last) + "]").c_str());
  WriteOut(win32::Narrow(last) + "\n");
  return kOk;
}

int GetText(const Options& o) {
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  const auto text = TargetText(o, *h);
  if (!text) return NotFound("the target did not give its text");
  WriteOut(win32::Narrow(*text) + "\n");
  return kOk;
}

int Status(const Options& o) {
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  const auto parts = ReadStatusParts(*h);
  if (!parts) return NotFound("cannot read the status bar");
  for (size_t i = 0; i < parts->size(); ++i)
    Record("part").Number("index", static_cast<long long>(i)).Text("text", (*parts)[i]).Print();
  return kOk;
}

int Items(const Options& o) {
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  if (ClassIs(*h, WC_TREEVIEWW)) return PrintTree(*h);
  if (ClassIs(*h, WC_LISTVIEWW)) return PrintListView(*h);
  if (ClassIs(*h, WC_TABCONTROLW)) return PrintTabs(*h);
  for (const StringList& kind : kStringLists)
    if (ClassIs(*h, kind.cls)) return PrintStrings(*h, kind);
  WriteErr(
      "kx_robot: items reads SysTreeView32, SysListView32, SysTabControl32, ListBox and "
      "ComboBox\n");
  return kUsage;
}

int Tooltips(const Options& o) {
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  for (const Tip& t : ReadTooltips(TopOf(*h)))
    Record("tooltip")
        .Field("tip", HexHandle(t.tooltip))
        .Field("tool", HexHandle(t.tool))
        .Number("id", static_cast<long long>(t.id))
        .Text("text", t.text)
        .Print();
  return kOk;
}

int Dpi(const Options& o) {
  const auto h = RequireTarget(o);
  if (!h) return kNotFound;
  using DpiForWindow = UINT(WINAPI*)(HWND);
  const auto get = reinterpret_cast<DpiForWindow>(reinterpret_cast<void*>(
      ::GetProcAddress(::GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
  if (!get) return NotFound("this system has no GetDpiForWindow");
  Record("dpi").Handle(*h).Number("dpi", get(*h)).Print();
  return kOk;
}

}  // namespace kx::robot
