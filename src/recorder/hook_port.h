#pragma once
// The recorder's low-level keyboard and mouse hooks: installed while a
// recording runs, they hand every event of hook code 0 to a sink, in the
// order the system saw them, each with the system's time of the event.
#include <cstdint>

#include "sys/geometry.h"

namespace kx {

// Window messages a low-level hook reports.
inline constexpr int kMsgKeyDown = 256;
inline constexpr int kMsgKeyUp = 257;
inline constexpr int kMsgSysKeyDown = 260;
inline constexpr int kMsgSysKeyUp = 261;
inline constexpr int kMsgMouseMove = 512;
inline constexpr int kMsgMouseWheel = 522;

// One event of the keyboard hook.
struct HookKey {
  int vk = 0;
  int message = kMsgKeyDown;
  bool altDown = false;    // the event's flag that Alt is held
  std::uint32_t time = 0;  // the event's millisecond time (GetTickCount's clock)
  // The right one of two keys (right Ctrl, Alt, Shift): input sent as the
  // generic key (VK_SHIFT) comes so, the keyboard's own as left or right.
  bool rightSide = false;
};

// A mouse button going down or up, where the event put it.
struct HookButton {
  int vk = 0;  // 1 left, 2 right, 4 middle
  bool down = false;
  Point screen;
  std::uint32_t time = 0;
};

class RecorderHookSink {
 public:
  virtual ~RecorderHookSink() = default;
  virtual void OnHookMouseMove(Point screen, std::uint32_t time) = 0;
  // The signed wheel amount, a multiple of 120 per notch.
  virtual void OnHookWheel(int delta, std::uint32_t time) = 0;
  virtual void OnHookKey(const HookKey& key) = 0;
  virtual void OnHookButton(const HookButton& button) = 0;
};

class RecorderHookPort {
 public:
  virtual ~RecorderHookPort() = default;
  // The mouse hook first, then the keyboard hook. Installing while installed
  // keeps the hooks and changes the sink. True when both hooks are held; a
  // hook the system refused stays missing until the next try.
  virtual bool Install(RecorderHookSink& sink) = 0;
  // The mouse hook first, then the keyboard hook; nothing when none is held.
  virtual void Remove() = 0;
};

}  // namespace kx
