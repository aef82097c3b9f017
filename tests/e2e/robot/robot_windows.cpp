#include "robot_windows.h"

#include <cstdio>

#include "robot_output.h"
#include "sys/win32/unique_handle.h"

namespace kx::robot {

namespace {

using UniqueHandle = win32::unique_handle<HANDLE, win32::KernelHandleDeleter>;

bool SameNoCase(const std::wstring& a, const std::wstring& b) {
  return a.size() == b.size() &&
         ::CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(),
                                static_cast<int>(b.size()), TRUE) == CSTR_EQUAL;
}

BOOL CALLBACK CollectTop(HWND h, LPARAM param) {
  reinterpret_cast<std::vector<HWND>*>(param)->push_back(h);
  return TRUE;
}

void Walk(HWND parent, int depth, std::vector<Control>& out) {
  for (HWND c = ::GetWindow(parent, GW_CHILD); c; c = ::GetWindow(c, GW_HWNDNEXT)) {
    out.push_back({c, depth});
    Walk(c, depth + 1, out);
  }
}

RECT ClientRelative(RECT r, HWND top) {
  ::MapWindowPoints(nullptr, top, reinterpret_cast<POINT*>(&r), 2);
  return r;
}

}  // namespace

std::optional<LRESULT> Send(HWND h, UINT msg, WPARAM w, LPARAM l) {
  DWORD_PTR result = 0;
  if (!::SendMessageTimeoutW(h, msg, w, l, SMTO_ABORTIFHUNG | SMTO_BLOCK, kMessageTimeoutMs,
                             &result))
    return std::nullopt;
  return static_cast<LRESULT>(result);
}

std::wstring ClassOf(HWND h) {
  wchar_t buf[256] = {};
  const int n = ::GetClassNameW(h, buf, 256);
  return std::wstring(buf, n > 0 ? static_cast<size_t>(n) : 0);
}

bool ClassIs(HWND h, const wchar_t* cls) {
  return SameNoCase(ClassOf(h), cls);
}

std::optional<std::wstring> TextOf(HWND h) {
  const auto length = Send(h, WM_GETTEXTLENGTH);
  if (!length) return std::nullopt;
  std::wstring text(static_cast<size_t>(*length) + 1, L'\0');
  const auto got = Send(h, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  if (!got) return std::nullopt;
  text.resize(static_cast<size_t>(*got));
  return text;
}

std::wstring TitleOf(HWND h) {
  wchar_t buf[1024] = {};
  const int n = ::InternalGetWindowText(h, buf, 1024);
  return std::wstring(buf, n > 0 ? static_cast<size_t>(n) : 0);
}

std::wstring ExeOf(DWORD pid) {
  UniqueHandle process(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, pid));
  if (!process) return L"";
  wchar_t buf[MAX_PATH] = {};
  DWORD size = MAX_PATH;
  if (!::QueryFullProcessImageNameW(process.get(), 0, buf, &size)) return L"";
  std::wstring path(buf, size);
  const size_t slash = path.find_last_of(L"\\/");
  return slash == std::wstring::npos ? path : path.substr(slash + 1);
}

HWND TopOf(HWND h) {
  HWND root = ::GetAncestor(h, GA_ROOT);
  return root ? root : h;
}

bool IsControl(HWND h) {
  return TopOf(h) != h;
}

bool TopMatches(HWND h, const Query& q) {
  if (!::IsWindow(h)) return false;
  if (!q.hidden && !::IsWindowVisible(h)) return false;
  if (!q.cls.empty() && !SameNoCase(ClassOf(h), q.cls)) return false;
  if (q.title || q.titleRe) {
    const std::wstring title = TitleOf(h);
    if (q.title && title != *q.title) return false;
    if (q.titleRe && !std::regex_search(title, *q.titleRe)) return false;
  }
  if (q.pid || !q.exe.empty()) {
    DWORD pid = 0;
    ::GetWindowThreadProcessId(h, &pid);
    if (q.pid && pid != q.pid) return false;
    if (!q.exe.empty() && !SameNoCase(ExeOf(pid), q.exe)) return false;
  }
  return true;
}

bool ControlMatches(HWND h, const Query& q) {
  if (!q.ctlClass.empty() && !SameNoCase(ClassOf(h), q.ctlClass)) return false;
  if (q.ctlId && ::GetDlgCtrlID(h) != *q.ctlId) return false;
  if (q.ctlText || q.ctlTextRe) {
    const auto text = TextOf(h);
    if (!text) return false;
    if (q.ctlText && *text != *q.ctlText) return false;
    if (q.ctlTextRe && !std::regex_search(*text, *q.ctlTextRe)) return false;
  }
  return true;
}

std::vector<HWND> TopWindows(const Query& q) {
  std::vector<HWND> all;
  ::EnumWindows(CollectTop, reinterpret_cast<LPARAM>(&all));
  std::vector<HWND> out;
  for (HWND h : all)
    if (TopMatches(h, q)) out.push_back(h);
  return out;
}

std::vector<Control> Descendants(HWND top) {
  std::vector<Control> out;
  Walk(top, 1, out);
  return out;
}

std::optional<HWND> Resolve(const Query& q) {
  std::vector<HWND> tops;
  if (q.hwnd) {
    if (!::IsWindow(q.hwnd)) return std::nullopt;
    if (!q.WantsControl()) return q.hwnd;
    tops.push_back(q.hwnd);
  } else {
    tops = TopWindows(q);
  }
  if (!q.WantsControl()) {
    if (tops.empty()) return std::nullopt;
    return tops.front();
  }
  int seen = 0;
  for (HWND top : tops)
    for (const Control& c : Descendants(top))
      if (ControlMatches(c.hwnd, q) && seen++ == q.ctlNth) return c.hwnd;
  return std::nullopt;
}

void PrintWindow(HWND h) {
  DWORD pid = 0;
  ::GetWindowThreadProcessId(h, &pid);
  RECT r{};
  ::GetWindowRect(h, &r);
  const char* state = ::IsIconic(h) ? "minimized" : ::IsZoomed(h) ? "maximized" : "normal";
  Record("window")
      .Handle(h)
      .Text("class", ClassOf(h))
      .Text("title", TitleOf(h))
      .Number("visible", ::IsWindowVisible(h) ? 1 : 0)
      .Field("state", state)
      .Rect("rect", r)
      .Number("pid", pid)
      .Text("exe", ExeOf(pid))
      .Field("owner", HexHandle(::GetWindow(h, GW_OWNER)))
      .Print();
}

void PrintControl(HWND h, HWND top, int depth) {
  RECT r{};
  ::GetWindowRect(h, &r);
  const auto style = static_cast<unsigned long>(::GetWindowLongPtrW(h, GWL_STYLE));
  std::string checked = "-";
  if (ClassIs(h, L"Button"))
    if (const auto state = Send(h, BM_GETCHECK)) checked = std::to_string(*state);
  char styleHex[16];
  std::snprintf(styleHex, sizeof styleHex, "0x%08lX", style);
  const auto text = TextOf(h);
  Record("control")
      .Handle(h)
      .Number("depth", depth)
      .Text("class", ClassOf(h))
      .Number("id", ::GetDlgCtrlID(h))
      .Text("text", text ? *text : TitleOf(h))
      .Number("visible", ::IsWindowVisible(h) ? 1 : 0)
      .Number("enabled", ::IsWindowEnabled(h) ? 1 : 0)
      .Field("checked", checked)
      .Field("style", styleHex)
      .Rect("rect", r)
      .Rect("client", ClientRelative(r, top))
      .Print();
}

void PrintAny(HWND h) {
  if (!IsControl(h)) return PrintWindow(h);
  const HWND top = TopOf(h);
  int depth = 0;
  for (HWND p = h; p && p != top; p = ::GetParent(p)) ++depth;
  PrintControl(h, top, depth);
}

}  // namespace kx::robot
