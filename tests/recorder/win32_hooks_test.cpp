// The recorder's low-level hooks, run under Wine in the Windows build.
#ifdef _WIN32
#include <gtest/gtest.h>

#include <vector>

#include "recorder/win32/win32_recorder_hooks.h"

namespace kx::win32 {
namespace {

constexpr ULONGLONG kWaitMs = 3000;
constexpr ULONGLONG kQuietMs = 300;  // long enough for an event that should not come
constexpr int kNotch = 120;
constexpr WORD kF13 = VK_F13;  // a key no window here acts on

struct Sink final : RecorderHookSink {
  void OnHookMouseMove(Point, std::uint32_t) override { ++moves; }
  void OnHookWheel(int delta, std::uint32_t) override { wheels.push_back(delta); }
  void OnHookKey(const HookKey& key) override {
    if (key.vk == kF13) keys.push_back(key.message);
  }
  void OnHookButton(const HookButton&) override {}
  int moves = 0;
  std::vector<int> wheels;
  std::vector<int> keys;
};

void Inject(int wheel) {
  INPUT in[3]{};
  in[0].type = INPUT_MOUSE;
  in[0].mi.dwFlags = MOUSEEVENTF_WHEEL;
  in[0].mi.mouseData = static_cast<DWORD>(wheel);
  in[1].type = in[2].type = INPUT_KEYBOARD;
  in[1].ki.wVk = in[2].ki.wVk = kF13;
  in[2].ki.dwFlags = KEYEVENTF_KEYUP;
  ::SendInput(3, in, sizeof(INPUT));
}

// Low-level hooks are called while the installing thread pumps messages.
template <typename Done>
void PumpUntil(Done done, ULONGLONG limitMs = kWaitMs) {
  const ULONGLONG start = ::GetTickCount64();
  MSG msg;
  while (!done() && ::GetTickCount64() - start < limitMs) {
    while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&msg);
    ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
}

TEST(Win32RecorderHooks, DeliverWheelAndKeysWhileInstalledOnly) {
  Sink sink;
  {
    Win32RecorderHooks hooks;
    EXPECT_TRUE(hooks.Install(sink));
    Inject(-kNotch);
    PumpUntil([&] { return !sink.wheels.empty() && sink.keys.size() >= 2; });
    EXPECT_EQ(sink.wheels, std::vector<int>{-kNotch});
    EXPECT_EQ(sink.keys, (std::vector<int>{kMsgKeyDown, kMsgKeyUp}));
    hooks.Remove();
    Inject(kNotch);
    PumpUntil([] { return false; }, kQuietMs);
    EXPECT_EQ(sink.wheels.size(), 1u);
    // Installed again, then released by the destructor.
    hooks.Install(sink);
  }
  Inject(kNotch);
  PumpUntil([] { return false; }, kQuietMs);
  EXPECT_EQ(sink.wheels.size(), 1u);
}

}  // namespace
}  // namespace kx::win32
#endif
