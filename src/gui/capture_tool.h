#pragma once
// The capture tool: a small window that shows what lies under the pointer
// and, on Alt + left click, writes a window or page command line for that
// window at the editor's caret. This is its logic; the window only shows
// what it is given (CaptureView).
//
// It is driven by ticks of the capture timer. Every tick samples the pointer
// and the physical key state, so Alt + click, Esc and Enter work wherever
// the input goes: the target window has the focus while the user points at
// it, never the tool.
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "gui/capture_view.h"
#include "sys/system.h"

namespace kx::gui {

// The kind of line the tool writes; the numbers are the tool's own
// selector values (5 is not used). The last two look at the screen itself,
// not at the window under the pointer.
enum class CaptureKind {
  kWindow = 0,
  kGetText = 1,
  kSetText = 2,
  kAddText = 3,
  kButtonClick = 4,
  kBackgroundClick = 6,
  kPageInput = 7,
  kPixelColour = 8,  // ピクセル色: the waitpixel line of the pixel under the pointer
  kImage = 9,        // 画像: a PNG of the square around the pointer and its waitimage line
};

// The kind a command-menu argument opens the tool for ("w", "gt", "st",
// "ad", "bc", "cc", "pw", "waitpixel", "waitimage"); nothing for another
// argument.
std::optional<CaptureKind> CaptureKindFor(std::string_view argument);

// The "IP" pairs of the page shown in a window, "name=value / ..."; nothing
// when the window has no page or the page has no fields.
using PageFieldsReader = std::function<std::optional<std::string>(WindowHandle)>;

// The sampling interval of the tool's timer: short enough that a click held
// for a tenth of a second is seen on at least one tick (the key state is
// polled, not hooked), long enough to cost nothing while the tool sits open.
inline constexpr int kCaptureIntervalMs = 50;

struct CaptureTargets {
  InputPort& input;
  WindowPort& windows;
  DialogPort& dialogs;
  CaptureView& view;
  // Puts a line at the editor's caret.
  std::function<void(std::string_view)> insert;
  // The screen kinds read the screen and save their PNG in the Macro folder;
  // without these they write nothing.
  ScreenPort* screen = nullptr;
  FilePort* files = nullptr;
};

class CaptureTool {
 public:
  explicit CaptureTool(CaptureTargets targets) : t_(std::move(targets)) {}

  void SetPageFieldsReader(PageFieldsReader reader) { pageFields_ = std::move(reader); }
  // The main window, which is never a target either.
  void SetMainWindow(WindowHandle window) { mainWindow_ = window; }

  // Opens the tool for a kind, running; an open tool switches to the kind.
  void Open(CaptureKind kind);
  void Close();
  bool IsOpen() const { return open_; }
  bool IsRunning() const { return running_; }
  CaptureKind kind() const { return kind_; }

  // One sample. With `writeAllowed` false (a macro is playing the editor's
  // text) the display follows the pointer and Esc/Enter work, but clicks
  // write nothing.
  void Tick(bool writeAllowed = true);

 private:
  struct Target {
    WindowHandle window = 0;
    WindowHandle topLevel = 0;
    Point point;
    std::string path;  // empty when the window cannot be placed
  };
  std::optional<Target> TargetUnderPointer();
  void Show(const Target& target);
  // The lines for the target, each ending with a line break; empty to write
  // nothing.
  std::string LinesFor(const Target& target);
  bool Edge(int vk, bool& wasDown);
  void SetRunning(bool running);

  CaptureTargets t_;
  PageFieldsReader pageFields_;
  WindowHandle mainWindow_ = 0;
  CaptureKind kind_ = CaptureKind::kWindow;
  bool open_ = false;
  bool running_ = false;
  bool inTick_ = false;
  // Key state seen at the previous tick, for the press edges.
  bool clickWasDown_ = false;
  bool escWasDown_ = false;
  bool enterWasDown_ = false;
  std::optional<CaptureFields> shown_;
};

}  // namespace kx::gui
