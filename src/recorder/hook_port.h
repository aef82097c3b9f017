#pragma once
// The recorder's low-level keyboard and mouse hooks: installed while a
// recording runs, they hand every event of hook code 0 to a sink.
#include "sys/geometry.h"

namespace kx {

// Window messages a low-level hook reports.
inline constexpr int kMsgKeyDown = 256;
inline constexpr int kMsgKeyUp = 257;
inline constexpr int kMsgSysKeyDown = 260;
inline constexpr int kMsgSysKeyUp = 261;
inline constexpr int kMsgMouseMove = 512;
inline constexpr int kMsgMouseWheel = 522;

class RecorderHookSink {
 public:
  virtual ~RecorderHookSink() = default;
  virtual void OnHookMouseMove(Point screen) = 0;
  // The signed wheel amount, a multiple of 120 per notch.
  virtual void OnHookWheel(int delta) = 0;
  // `altDown`: the event's flag that Alt is held.
  virtual void OnHookKey(int vk, int message, bool altDown) = 0;
};

class RecorderHookPort {
 public:
  virtual ~RecorderHookPort() = default;
  // The mouse hook first, then the keyboard hook. Installing while installed
  // keeps the hooks and changes the sink.
  virtual void Install(RecorderHookSink& sink) = 0;
  // The mouse hook first, then the keyboard hook; nothing when none is held.
  virtual void Remove() = 0;
};

}  // namespace kx
