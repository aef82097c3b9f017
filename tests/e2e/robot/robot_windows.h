#pragma once
// Finding windows and controls of other processes, and describing them.
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "sys/win32/windows_api.h"

namespace kx::robot {

// Which window, and optionally which control in it, a command acts on.
// Empty fields match anything. Classes compare without case, as Windows
// does; titles and texts compare exactly, or as a regular expression that
// may match any part.
struct Query {
  HWND hwnd = nullptr;  // given directly: a window or a control
  std::wstring cls;
  std::optional<std::wstring> title;
  std::optional<std::wregex> titleRe;
  DWORD pid = 0;
  std::wstring exe;     // image file name, e.g. notepad.exe
  bool hidden = false;  // top-level windows that are not shown count too

  std::wstring ctlClass;
  std::optional<int> ctlId;
  std::optional<std::wstring> ctlText;
  std::optional<std::wregex> ctlTextRe;
  int ctlNth = 0;

  bool WantsControl() const {
    return !ctlClass.empty() || ctlId || ctlText || ctlTextRe || ctlNth > 0;
  }
};

struct Control {
  HWND hwnd;
  int depth;  // 1 for a direct child of the top-level window
};

// Time limit for one message to another process, so that a hung target
// cannot hang the robot.
constexpr UINT kMessageTimeoutMs = 2000;

std::vector<HWND> TopWindows(const Query& q);
std::vector<Control> Descendants(HWND top);
bool TopMatches(HWND h, const Query& q);
bool ControlMatches(HWND h, const Query& q);
// The window or control the query names, if it exists now.
std::optional<HWND> Resolve(const Query& q);

std::wstring ClassOf(HWND h);
// The text a control reports through WM_GETTEXT (an edit's contents, a
// button's caption); nullopt when the target did not answer.
std::optional<std::wstring> TextOf(HWND h);
std::wstring TitleOf(HWND h);  // the caption the system keeps; never blocks
std::wstring ExeOf(DWORD pid);
bool ClassIs(HWND h, const wchar_t* cls);
HWND TopOf(HWND h);
bool IsControl(HWND h);

void PrintWindow(HWND h);
void PrintControl(HWND h, HWND top, int depth);
// A window or a control, whichever it is.
void PrintAny(HWND h);

// Sends a message with a time limit; nullopt when it timed out or failed.
std::optional<LRESULT> Send(HWND h, UINT msg, WPARAM w = 0, LPARAM l = 0);

}  // namespace kx::robot
