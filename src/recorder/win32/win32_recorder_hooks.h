#pragma once
// The recorder's low-level mouse and keyboard hooks on Windows.
#include "recorder/hook_port.h"
#include "sys/win32/unique_handle.h"

namespace kx::win32 {

struct HookDeleter {
  static HHOOK Null() { return nullptr; }
  void operator()(HHOOK h) const { ::UnhookWindowsHookEx(h); }
};
using UniqueHook = unique_handle<HHOOK, HookDeleter>;

// Low-level hooks carry no context, so one object at a time holds them; the
// thread that installs them must pump messages for them to be called.
class Win32RecorderHooks final : public RecorderHookPort {
 public:
  Win32RecorderHooks() = default;
  ~Win32RecorderHooks() override { Remove(); }
  Win32RecorderHooks(const Win32RecorderHooks&) = delete;
  Win32RecorderHooks& operator=(const Win32RecorderHooks&) = delete;

  bool Install(RecorderHookSink& sink) override;
  void Remove() override;

 private:
  static LRESULT CALLBACK MouseProc(int code, WPARAM wp, LPARAM lp) noexcept;
  static LRESULT CALLBACK KeyboardProc(int code, WPARAM wp, LPARAM lp) noexcept;

  UniqueHook mouse_;
  UniqueHook keyboard_;
};

}  // namespace kx::win32
