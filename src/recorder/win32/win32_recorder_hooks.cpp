#include "recorder/win32/win32_recorder_hooks.h"

namespace kx::win32 {

namespace {

// Where the hook procedures deliver; set while the hooks are installed.
RecorderHookSink* g_sink = nullptr;

// Runs a sink call; nothing thrown may cross into the system's hook chain.
template <typename F>
void Deliver(F&& call) noexcept {
  if (!g_sink) return;
  try {
    call(*g_sink);
  } catch (...) {
    // The event is lost; the recording goes on.
  }
}

// The button messages of the mouse hook: which button, and whether down.
struct ButtonMessage {
  WPARAM message;
  int vk;
  bool down;
};
constexpr ButtonMessage kButtonMessages[] = {
    {WM_LBUTTONDOWN, VK_LBUTTON, true}, {WM_LBUTTONUP, VK_LBUTTON, false},
    {WM_RBUTTONDOWN, VK_RBUTTON, true}, {WM_RBUTTONUP, VK_RBUTTON, false},
    {WM_MBUTTONDOWN, VK_MBUTTON, true}, {WM_MBUTTONUP, VK_MBUTTON, false},
};

// Whether the event came from the right one of two keys: the extended flag
// (right Ctrl and Alt), or the right Shift key's scan code.
bool RightSide(const KBDLLHOOKSTRUCT& event) {
  constexpr DWORD kRightShiftScan = 0x36;
  return event.vkCode == VK_SHIFT ? event.scanCode == kRightShiftScan
                                  : (event.flags & LLKHF_EXTENDED) != 0;
}

}  // namespace

bool Win32RecorderHooks::Install(RecorderHookSink& sink) {
  g_sink = &sink;
  HINSTANCE module = ::GetModuleHandleW(nullptr);
  if (!mouse_) mouse_.reset(::SetWindowsHookExW(WH_MOUSE_LL, &MouseProc, module, 0));
  if (!keyboard_) keyboard_.reset(::SetWindowsHookExW(WH_KEYBOARD_LL, &KeyboardProc, module, 0));
  return mouse_ && keyboard_;
}

void Win32RecorderHooks::Remove() {
  mouse_.reset();
  keyboard_.reset();
  g_sink = nullptr;
}

LRESULT CALLBACK Win32RecorderHooks::MouseProc(int code, WPARAM wp, LPARAM lp) noexcept {
  if (code == HC_ACTION) {
    const auto* event = reinterpret_cast<const MSLLHOOKSTRUCT*>(lp);
    const Point at{event->pt.x, event->pt.y};
    if (wp == WM_MOUSEMOVE)
      Deliver([&](RecorderHookSink& s) { s.OnHookMouseMove(at, event->time); });
    else if (wp == WM_MOUSEWHEEL)
      Deliver([&](RecorderHookSink& s) {
        s.OnHookWheel(static_cast<short>(HIWORD(event->mouseData)), event->time);
      });
    for (const ButtonMessage& b : kButtonMessages)
      if (wp == b.message)
        Deliver([&](RecorderHookSink& s) { s.OnHookButton({b.vk, b.down, at, event->time}); });
  }
  return ::CallNextHookEx(nullptr, code, wp, lp);
}

LRESULT CALLBACK Win32RecorderHooks::KeyboardProc(int code, WPARAM wp, LPARAM lp) noexcept {
  if (code == HC_ACTION) {
    const auto* event = reinterpret_cast<const KBDLLHOOKSTRUCT*>(lp);
    Deliver([&](RecorderHookSink& s) {
      s.OnHookKey({static_cast<int>(event->vkCode), static_cast<int>(wp),
                   (event->flags & LLKHF_ALTDOWN) != 0, event->time, RightSide(*event)});
    });
  }
  return ::CallNextHookEx(nullptr, code, wp, lp);
}

}  // namespace kx::win32
