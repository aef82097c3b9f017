#pragma once
// The robot's commands. Each takes the parsed command line and returns the
// exit status: 0 done, 1 not found / timed out / refused by the target,
// 2 bad usage.
#include <optional>
#include <string>
#include <vector>

#include "robot_windows.h"

namespace kx::robot {

enum Status : int { kOk = 0, kNotFound = 1, kUsage = 2 };

struct Options {
  Query query;
  double timeoutSeconds = 10;
  std::optional<std::wstring> equals;
  std::optional<std::wstring> contains;
  std::optional<int> part;         // status bar part
  std::optional<POINT> at;         // click position in client coordinates
  bool send = false;               // click synchronously
  std::vector<std::wstring> args;  // positional arguments after the command
};

using Command = int (*)(const Options&);

// The window or control the options name; says so on stderr when none.
std::optional<HWND> RequireTarget(const Options& o);
// The text of item INDEX of a list box or combo box; nullopt for other controls.
std::optional<std::wstring> ItemText(HWND h, int index);
// A number in decimal or 0x hex, or a message name (WM_COMMAND, ...).
std::optional<long long> ParseNumber(const std::wstring& text);
std::optional<UINT> ParseMessage(const std::wstring& text);

int ListWindows(const Options& o);
int ListControls(const Options& o);
int Find(const Options& o);
int Wait(const Options& o);
int WaitGone(const Options& o);
int WaitText(const Options& o);
int GetText(const Options& o);
int SetText(const Options& o);
int Status(const Options& o);
int Items(const Options& o);
int Tooltips(const Options& o);
int Select(const Options& o);
int SetValue(const Options& o);
int Click(const Options& o);
int LeftClick(const Options& o);
int RightClick(const Options& o);
int Focus(const Options& o);
int Close(const Options& o);
int PostCommand(const Options& o);
int Post(const Options& o);
int SendCommand(const Options& o);
int Menu(const Options& o);
int Dpi(const Options& o);
int KeysDown(const Options& o);
int HotkeyPlays(const Options& o);

}  // namespace kx::robot
