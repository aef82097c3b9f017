// kx_robot.exe: looks at and drives the windows of other programs for the
// end-to-end tests. Output is UTF-8, one tab-separated record per line.
#include <cwchar>
#include <string>
#include <string_view>

#include "robot_commands.h"
#include "robot_output.h"
#include "sys/win32/wide.h"

namespace kx::robot {
namespace {

constexpr char kUsageText[] =
    R"(Usage: kx_robot COMMAND [OPTIONS] [ARGS]

Commands (TARGET = window options, plus control options for a control):
  windows        list top-level windows matching the window options
  controls       list the controls inside the window, recursively
                 (only those matching the control options, when given)
  find           print the record of the target; 1 when there is none
  wait           wait for the target to exist, then print its record
  wait-gone      wait until the target no longer exists
  wait-text      wait for the target's text: --equals S or --contains S
                 (with --part N: a status bar part); prints the text
  get-text       print the target's text (WM_GETTEXT; --part N for a
                 status bar part), raw, then a line feed
  set-text TEXT  set the target's text (WM_SETTEXT)
  status         the parts of a status bar: part index= text=
  items          tree view, list view, tab control, list box or combo box items
  tooltips       the tools of the tooltips owned by the target's window
  select ITEM    select a tree item by path (A/B/C), a list view row by its
                 first column, a tab, list box or combo box item by text
  set-value N    up-down (UDM_SETPOS32), trackbar (TBM_SETPOS), telling the
                 parent as a drag would (WM_HSCROLL/WM_VSCROLL); else text
  click          post BM_CLICK (--send: send it and wait)
  lclick         post a left click at the centre of the target (--at X,Y)
  rclick         post a right click likewise
  focus          bring the window to the front and focus the control
  close          post WM_CLOSE
  command ID [CODE]      post WM_COMMAND MAKEWPARAM(ID, CODE)
  post MSG [WPARAM [LPARAM]]  post a message (number or WM_ name)
  send MSG [WPARAM [LPARAM]]  send it; prints the result
  menu           the window's menu, where it can be read
  dpi            the DPI the target sees
  keys-down      every key and mouse button down now (GetAsyncKeyState):
                 key vk=N; no target
  hotkey-plays N MIN MAX  N times: post the play hotkey (WM_HOTKEY 258) to
                 the target, wait for its play to start, wait MIN to MAX ms
                 at random, post it again and wait for the play to end

Window options:
  --hwnd H            the window or control itself (0x hex or decimal)
  --class C           window class (any case)
  --title T           exact title
  --title-re RE       title matches the regular expression (anywhere)
  --pid N             Windows process id
  --exe NAME          image file name, e.g. notepad.exe
  --all               include hidden top-level windows
Control options:
  --ctl-class C  --ctl-id N  --ctl-text T  --ctl-text-re RE
  --ctl-nth N         the Nth matching control, from 0
Other options:
  --timeout SEC       for the wait commands (default 10)
  --equals S  --contains S  --part N  --at X,Y  --send
  --                  the rest are arguments, even when they start with --

Output: UTF-8, one record per line: a kind (window, control, item, column,
row, part, tooltip, menu, dpi), then tab-separated key=value fields; texts
in records show backslash, tab, LF and CR as \\, \t, \n, \r.
Exit status: 0 done, 1 not found / timed out / refused, 2 usage error.
)";

// A day: longer waits are mistakes, and would overflow the tick arithmetic.
constexpr double kMaxTimeoutSeconds = 86400;

struct Entry {
  std::wstring_view name;
  Command run;
  size_t minArgs = 0;  // positional arguments after the options
  size_t maxArgs = 0;
};
constexpr Entry kCommands[] = {
    {L"windows", ListWindows},
    {L"controls", ListControls},
    {L"find", Find},
    {L"wait", Wait},
    {L"wait-gone", WaitGone},
    {L"wait-text", WaitText},
    {L"get-text", GetText},
    {L"set-text", SetText, 1, 1},
    {L"status", Status},
    {L"items", Items},
    {L"tooltips", Tooltips},
    {L"select", Select, 1, 1},
    {L"set-value", SetValue, 1, 1},
    {L"click", Click},
    {L"lclick", LeftClick},
    {L"rclick", RightClick},
    {L"focus", Focus},
    {L"close", Close},
    {L"command", PostCommand, 1, 2},
    {L"post", Post, 1, 3},
    {L"send", SendCommand, 1, 3},
    {L"menu", Menu},
    {L"dpi", Dpi},
    {L"keys-down", KeysDown},
    {L"hotkey-plays", HotkeyPlays, 3, 3},
};

int Usage(std::string_view why) {
  WriteErr("kx_robot: " + std::string(why) + " (kx_robot --help)\n");
  return kUsage;
}

std::wregex Regex(const std::wstring& text) {
  return std::wregex(text, std::regex::ECMAScript);
}

// Reads one option and its value; false on an unknown option or bad value.
bool TakeOption(const std::wstring& name, const wchar_t* value, Options& o, bool& usedValue) {
  usedValue = false;
  if (name == L"--all") return o.query.hidden = true;
  if (name == L"--send") return o.send = true;
  if (!value) return false;
  usedValue = true;
  const std::wstring v = value;
  Query& q = o.query;
  auto number = [&](auto& into) {
    const auto n = ParseNumber(v);
    if (n) into = static_cast<std::remove_reference_t<decltype(into)>>(*n);
    return n.has_value();
  };
  if (name == L"--hwnd") {
    const auto n = ParseNumber(v);
    q.hwnd = n ? reinterpret_cast<HWND>(static_cast<UINT_PTR>(*n)) : nullptr;
    return q.hwnd != nullptr;
  }
  if (name == L"--class") return q.cls = v, true;
  if (name == L"--title") return q.title = v, true;
  if (name == L"--title-re") return q.titleRe = Regex(v), true;
  if (name == L"--pid") return number(q.pid);
  if (name == L"--exe") return q.exe = v, true;
  if (name == L"--ctl-class") return q.ctlClass = v, true;
  if (name == L"--ctl-id") {
    int id = 0;
    return number(id) && (q.ctlId = id, true);
  }
  if (name == L"--ctl-text") return q.ctlText = v, true;
  if (name == L"--ctl-text-re") return q.ctlTextRe = Regex(v), true;
  if (name == L"--ctl-nth") return number(q.ctlNth) && q.ctlNth >= 0;
  if (name == L"--timeout") {
    wchar_t* end = nullptr;
    o.timeoutSeconds = std::wcstod(value, &end);
    return end && !*end && o.timeoutSeconds >= 0 && o.timeoutSeconds <= kMaxTimeoutSeconds;
  }
  if (name == L"--equals") return o.equals = v, true;
  if (name == L"--contains") return o.contains = v, true;
  if (name == L"--part") {
    int part = 0;
    return number(part) && (o.part = part, true);
  }
  if (name == L"--at") {
    const size_t comma = v.find(L',');
    if (comma == std::wstring::npos) return false;
    const auto x = ParseNumber(v.substr(0, comma));
    const auto y = ParseNumber(v.substr(comma + 1));
    if (!x || !y) return false;
    o.at = POINT{static_cast<LONG>(*x), static_cast<LONG>(*y)};
    return true;
  }
  return false;
}

int Run(int argc, wchar_t** argv) {
  if (argc < 2) return Usage("no command");
  const std::wstring command = argv[1];
  if (command == L"--help" || command == L"-h" || command == L"help") {
    WriteOut(kUsageText);
    return kOk;
  }
  const Entry* entry = nullptr;
  for (const Entry& e : kCommands)
    if (e.name == command) entry = &e;
  if (!entry) return Usage("unknown command " + win32::Narrow(command));
  Options o;
  for (int i = 2; i < argc; ++i) {
    const std::wstring arg = argv[i];
    // "--" ends the options, so that a text may start with a dash.
    if (arg == L"--") {
      for (++i; i < argc; ++i) o.args.push_back(argv[i]);
      break;
    }
    if (arg.size() > 2 && arg.starts_with(L"--")) {
      bool usedValue = false;
      if (!TakeOption(arg, i + 1 < argc ? argv[i + 1] : nullptr, o, usedValue))
        return Usage("bad option " + win32::Narrow(arg));
      if (usedValue) ++i;
    } else {
      o.args.push_back(arg);
    }
  }
  if (o.args.size() < entry->minArgs || o.args.size() > entry->maxArgs)
    return Usage("wrong number of arguments for " + win32::Narrow(command));
  const int status = entry->run(o);
  if (status == kUsage) Usage("bad arguments for " + win32::Narrow(command));
  return status;
}

}  // namespace
}  // namespace kx::robot

int wmain(int argc, wchar_t** argv) {
  try {
    return kx::robot::Run(argc, argv);
  } catch (const std::regex_error&) {
    kx::robot::WriteErr("kx_robot: bad regular expression\n");
    return kx::robot::kUsage;
  } catch (const std::exception& e) {
    kx::robot::WriteErr(std::string("kx_robot: ") + e.what() + "\n");
    return kx::robot::kNotFound;
  }
}
