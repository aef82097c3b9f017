#include "gui/capture_tool.h"

#include <array>
#include <utility>

#include "gui/app_info.h"
#include "gui/capture_path.h"
#include "gui/screen_capture.h"
#include "input/key_codes.h"
#include "page/window_document.h"
#include "util/scope_exit.h"

namespace kx::gui {

namespace {

constexpr std::string_view kLineBreak = "\r\n";
// The question of kind 1: the window's path (Yes) or the screen point (No).
constexpr std::string_view kPathOrPointQuestion = "クラス→Yes\r\n位置→No";
// The wait written before a page-input line, so the page can settle first.
constexpr std::string_view kPageWaitLine = "1000";

struct KindEntry {
  std::string_view argument;
  CaptureKind kind;
};
constexpr auto kKinds = std::to_array<KindEntry>({
    {"w", CaptureKind::kWindow},
    {"gt", CaptureKind::kGetText},
    {"st", CaptureKind::kSetText},
    {"ad", CaptureKind::kAddText},
    {"bc", CaptureKind::kButtonClick},
    {"cc", CaptureKind::kBackgroundClick},
    {"pw", CaptureKind::kPageInput},
    {"waitpixel", CaptureKind::kPixelColour},
    {"waitimage", CaptureKind::kImage},
});

// A script line holds no line break: a multi-line text is cut at its first.
std::string FirstLine(const std::string& text) {
  return text.substr(0, text.find_first_of("\r\n"));
}

}  // namespace

std::optional<CaptureKind> CaptureKindFor(std::string_view argument) {
  for (const KindEntry& e : kKinds)
    if (e.argument == argument) return e.kind;
  return std::nullopt;
}

void CaptureTool::Open(CaptureKind kind) {
  kind_ = kind;
  t_.view.ShowImageSize(kind == CaptureKind::kImage);
  // Choosing an item again means capturing for it now: a stopped tool runs.
  if (open_) {
    if (!running_) SetRunning(true);
    return;
  }
  open_ = true;
  shown_.reset();
  // Keys already down when the tool opens (the Enter that chose the menu
  // item) are not presses the tool should act on.
  clickWasDown_ = t_.input.IsKeyDown(kVkLeftButton) && t_.input.IsKeyDown(kVkMenu);
  escWasDown_ = t_.input.IsKeyDown(kVkEscape);
  enterWasDown_ = t_.input.IsKeyDown(kVkReturn);
  t_.view.Open();
  SetRunning(true);
}

void CaptureTool::Close() {
  if (!open_) return;
  open_ = false;
  running_ = false;
  t_.view.Close();
}

void CaptureTool::SetRunning(bool running) {
  running_ = running;
  t_.view.SetLabel(running ? kCaptureRunningLabel : kCaptureStoppedLabel);
}

bool CaptureTool::Edge(int vk, bool& wasDown) {
  const bool down = t_.input.IsKeyDown(vk);
  return std::exchange(wasDown, down) != down && down;
}

void CaptureTool::Tick(bool writeAllowed) {
  // The question of kind 1 is modal and ticks arrive while it waits; they
  // are dropped rather than nested.
  if (!open_ || inTick_) return;
  inTick_ = true;
  const scope_exit done([this] { inTick_ = false; });

  const bool escape = Edge(kVkEscape, escWasDown_);
  const bool enter = Edge(kVkReturn, enterWasDown_);
  const bool clickDown = t_.input.IsKeyDown(kVkLeftButton) && t_.input.IsKeyDown(kVkMenu);
  // One line per press: only the tick on which Alt and the button become
  // both down writes, however long they are held.
  const bool click = !std::exchange(clickWasDown_, clickDown) && clickDown;
  if (running_ && escape) SetRunning(false);
  if (!running_ && enter) SetRunning(true);
  if (!running_) return;

  const auto target = TargetUnderPointer();
  if (!target) return;
  Show(*target);
  if (!click || !writeAllowed) return;
  if (const std::string lines = LinesFor(*target); !lines.empty()) t_.insert(lines);
}

std::optional<CaptureTool::Target> CaptureTool::TargetUnderPointer() {
  Target target;
  target.point = t_.input.GetCursorPos();
  target.window = t_.windows.FromPoint(target.point);
  if (target.window == 0) return std::nullopt;
  target.topLevel = TopLevelOf(t_.windows, target.window);
  // Pointing at the tool (to read it) or at the editor keeps the last target.
  if (target.topLevel == t_.view.Handle() || (mainWindow_ != 0 && target.topLevel == mainWindow_))
    return std::nullopt;
  target.path = BuildWindowPath(t_.windows, target.window);
  return target;
}

void CaptureTool::Show(const Target& target) {
  CaptureFields fields{t_.windows.Title(target.topLevel), target.path,
                       t_.windows.Title(target.window), t_.windows.ClassName(target.window),
                       std::to_string(target.window)};
  if (shown_ == fields) return;
  t_.view.SetFields(fields);
  shown_ = std::move(fields);
}

std::string CaptureTool::LinesFor(const Target& target) {
  const std::string& path = target.path;
  const auto line = [](std::string text) { return text + std::string(kLineBreak); };
  // A window the path cannot name (one without a class) gives no line of any
  // kind.
  if (path.empty()) return "";
  switch (kind_) {
    case CaptureKind::kWindow:
      return line("W " + t_.windows.ClassName(target.topLevel) + "," +
                  t_.windows.Title(target.topLevel));
    case CaptureKind::kButtonClick:
      return line("BC " + std::to_string(target.window));
    case CaptureKind::kPixelColour: {
      const std::string text = t_.screen ? WaitPixelLineAt(*t_.screen, target.point) : "";
      return text.empty() ? "" : line(text);
    }
    case CaptureKind::kImage: {
      const std::string text =
          t_.screen && t_.files
              ? WaitImageLineAt(*t_.screen, *t_.files, target.point, t_.view.ImageSize())
              : "";
      return text.empty() ? "" : line(text);
    }
    default:
      break;
  }
  switch (kind_) {
    case CaptureKind::kGetText: {
      const MessageResult answer = t_.dialogs.MessageBox(t_.view.Handle(), kPathOrPointQuestion,
                                                         kAppTitle, MessageStyle::kYesNoQuestion);
      if (answer == MessageResult::kYes) return line("GT " + path);
      if (answer == MessageResult::kNo)
        return line("GT(" + std::to_string(target.point.x) + "," + std::to_string(target.point.y) +
                    ")");
      return "";
    }
    case CaptureKind::kSetText:
      return line("ST " + FirstLine(t_.windows.Text(target.window)) + ",," + path);
    case CaptureKind::kAddText:
      return line("AD ,," + path);
    case CaptureKind::kBackgroundClick: {
      const Point client = t_.windows.ScreenToClient(target.window, target.point);
      return line("CC " + std::to_string(client.x) + "," + std::to_string(client.y) + "," + path);
    }
    case CaptureKind::kPageInput: {
      const auto pairs = pageFields_ ? pageFields_(target.window) : std::nullopt;
      if (!pairs) return "";
      // A Chromium page is reached by its tab, not by the browser's windows,
      // whose classes and numbers change from one start to the next.
      const bool chromium = t_.windows.ClassName(target.topLevel) == kChromiumFrameClass;
      return line(std::string(kPageWaitLine)) +
             line("IP " + *pairs + ",0," + (chromium ? std::string(kChromePathKeyword) : path));
    }
    default:
      return "";
  }
}

}  // namespace kx::gui
