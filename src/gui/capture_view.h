#pragma once
// What the capture tool's logic needs from its window: the label, the
// display fields and its handle.
#include <string>
#include <string_view>

#include "sys/geometry.h"

namespace kx::gui {

// The label texts of the tool.
inline constexpr std::string_view kCaptureRunningLabel = "Alt+左クリックで取得します(Escで停止)";
inline constexpr std::string_view kCaptureStoppedLabel = "停止(Enterで再開)";

// What the display fields show, by their labels.
struct CaptureFields {
  std::string topCaption;  // 親ウィンドウ: the top-level window's caption
  std::string child;       // 子ウィンドウ: the path of the window under the pointer
  std::string caption;     // キャプション: that window's caption
  std::string className;   // クラス名
  std::string handle;      // ハンドル, in decimal
  friend bool operator==(const CaptureFields&, const CaptureFields&) = default;
};

class CaptureView {
 public:
  virtual ~CaptureView() = default;
  // Shows the tool window, creating it the first time.
  virtual void Open() = 0;
  // Hides the tool window; it may open again later.
  virtual void Close() = 0;
  virtual void SetLabel(std::string_view text) = 0;
  virtual void SetFields(const CaptureFields& fields) = 0;
  // The tool window's handle, which the tool never takes as its target.
  virtual WindowHandle Handle() = 0;
  // The choice of the image's size, shown only for the image kind.
  virtual void ShowImageSize(bool shown) = 0;
  // The size chosen, in pixels at 100% display scale.
  virtual int ImageSize() = 0;
};

}  // namespace kx::gui
