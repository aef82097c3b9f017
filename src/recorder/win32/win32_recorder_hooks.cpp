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

}  // namespace

void Win32RecorderHooks::Install(RecorderHookSink& sink) {
  g_sink = &sink;
  HINSTANCE module = ::GetModuleHandleW(nullptr);
  if (!mouse_) mouse_.reset(::SetWindowsHookExW(WH_MOUSE_LL, &MouseProc, module, 0));
  if (!keyboard_) keyboard_.reset(::SetWindowsHookExW(WH_KEYBOARD_LL, &KeyboardProc, module, 0));
}

void Win32RecorderHooks::Remove() {
  mouse_.reset();
  keyboard_.reset();
  g_sink = nullptr;
}

LRESULT CALLBACK Win32RecorderHooks::MouseProc(int code, WPARAM wp, LPARAM lp) noexcept {
  if (code == HC_ACTION) {
    const auto* event = reinterpret_cast<const MSLLHOOKSTRUCT*>(lp);
    if (wp == WM_MOUSEMOVE)
      Deliver([&](RecorderHookSink& s) { s.OnHookMouseMove({event->pt.x, event->pt.y}); });
    else if (wp == WM_MOUSEWHEEL)
      Deliver([&](RecorderHookSink& s) {
        s.OnHookWheel(static_cast<short>(HIWORD(event->mouseData)));
      });
  }
  return ::CallNextHookEx(nullptr, code, wp, lp);
}

LRESULT CALLBACK Win32RecorderHooks::KeyboardProc(int code, WPARAM wp, LPARAM lp) noexcept {
  if (code == HC_ACTION) {
    const auto* event = reinterpret_cast<const KBDLLHOOKSTRUCT*>(lp);
    Deliver([&](RecorderHookSink& s) {
      s.OnHookKey(static_cast<int>(event->vkCode), static_cast<int>(wp),
                  (event->flags & LLKHF_ALTDOWN) != 0);
    });
  }
  return ::CallNextHookEx(nullptr, code, wp, lp);
}

}  // namespace kx::win32
