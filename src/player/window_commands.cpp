// Window activation and placement, running other macro files, and opening
// documents, programs and addresses with the shell.
#include <optional>

#include "player/line_runner.h"
#include "text/macro_text.h"
#include "util/basic_text.h"

namespace kx {

namespace {

constexpr int kMinimisedPolls = 501;
constexpr int kMaxMacroFileNesting = 64;

std::optional<std::string_view> Field(const std::vector<std::string>& fields, size_t i) {
  if (i >= fields.size()) return std::nullopt;
  const std::string_view f = basic::Trim(fields[i]);
  if (f.empty()) return std::nullopt;
  return f;
}

}  // namespace

void LineRunner::ActivateWindow(std::string_view argument) {
  const auto fields = basic::Split(argument, ",");
  const auto first = Field(fields, 0);
  const auto title = Field(fields, 1);
  const auto timeout = Field(fields, 2) ? basic::ToDouble(*Field(fields, 2)) : std::nullopt;
  const double limitMs = timeout.value_or(0);
  auto& windows = sys_.windows;

  auto find = [&]() -> WindowHandle {
    if (first && basic::IsNumeric(*first)) {
      // A number is the window's handle itself.
      return WindowHandleFromNumber(basic::ToDouble(*first).value_or(0));
    }
    if (title) return windows.Find(first, title);
    if (!first) return 0;
    if (WindowHandle w = windows.Find(std::nullopt, first)) return w;
    return windows.Find(first, std::nullopt);
  };

  const std::uint32_t start = sys_.clock.TickCount();
  WindowHandle window = 0;
  for (;;) {
    window = find();
    if (window && windows.IsWindow(window)) break;
    window = 0;
    if (static_cast<double>(sys_.clock.TickCount() - start) >= limitMs) break;
    PumpingWait(100);
    if (!p_.playing_) break;
  }

  if (window) {
    if (windows.IsMinimized(window)) windows.Restore(window);
    windows.SetForeground(window);
    sys_.clock.PumpMessages();
    sys_.clock.Sleep(1);
    windows.WaitForInputIdle(window);
    for (int i = 0; i < kMinimisedPolls && windows.IsMinimized(window); ++i) sys_.clock.Sleep(1);
  }
  p_.currentValue_ = CurrentValue::Boolean(window != 0);
  PumpingWait(100);
}

void LineRunner::MoveWindow(std::string_view argument) {
  const auto fields = basic::Split(argument, ",");
  auto& windows = sys_.windows;
  WindowHandle window = 0;
  size_t firstNumber = 0;
  if (fields.size() >= 5) {
    const std::string_view name = basic::Trim(fields[0]);
    if (basic::IsNumeric(name)) {
      window = WindowHandleFromNumber(basic::ToDouble(name).value_or(0));
    } else {
      window = windows.Find(std::nullopt, name);
      if (!window) window = windows.Find(name, std::nullopt);
    }
    firstNumber = 1;
  } else {
    window = windows.Foreground();
  }
  const auto rect = windows.GetRect(window);
  if (!rect) return;
  // Defaults are the rectangle's left, top, right and bottom: a missing width
  // becomes the right edge's coordinate, a quirk users' scripts rely on.
  int values[4] = {rect->left, rect->top, rect->right, rect->bottom};
  for (size_t i = 0; i < 4; ++i) {
    if (firstNumber + i >= fields.size()) break;
    if (auto v = basic::ToLong(basic::Trim(fields[firstNumber + i]))) values[i] = *v;
  }
  windows.Move(window, values[0], values[1], values[2], values[3], true);
}

void LineRunner::RunMacroFile(std::string_view argument) {
  std::string name(argument);
  if (!sys_.files.IsFile(name))
    name = JoinPath(sys_.files, JoinPath(sys_.files, sys_.files.AppFolder(), "Macro"), name);
  if (!sys_.files.IsFile(name)) return;
  const auto text = ReadMacroFile(sys_.files, name);
  if (!text) return;
  // A file that runs itself would recurse without end; past a sane depth the
  // line fails like any other run-time error.
  if (p_.nesting_ >= kMaxMacroFileNesting) throw ScriptFailure{};
  const std::int32_t saved = p_.currentLine_;
  ++p_.nesting_;
  p_.currentLine_ = 0;
  p_.sPlayAll(*text);
  --p_.nesting_;
  p_.currentLine_ = saved;
}

bool LineRunner::OpenWithShell(std::string_view target) {
  // A file's own folder is the working folder; an address has none.
  std::string_view folder;
  const bool address =
      target.find("://") != std::string_view::npos || basic::LCase(target.substr(0, 4)) == "http";
  if (const auto slash = target.find_last_of("\\/"); !address && slash != std::string_view::npos)
    folder = target.substr(0, slash);
  return sys_.shell.Open(target, folder);
}

}  // namespace kx
