// The Win32 ports, run under Wine in the Windows build.
#ifdef _WIN32
#include <gtest/gtest.h>

#include <string>

#include "input/win32/win32_input.h"
#include "sim/sim_system.h"
#include "sys/win32/unique_handle.h"
#include "sys/win32/wide.h"
#include "sys/win32/win32_clipboard.h"
#include "sys/win32/win32_clock.h"
#include "sys/win32/win32_environment.h"
#include "sys/win32/win32_power.h"
#include "sys/win32/win32_registry.h"
#include "sys/win32/win32_windows.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {
namespace {

TEST(Win32Text, WidenAndNarrowRoundTripJapanese) {
  const std::string text = "再生が終了しました\r\nabc";
  const std::wstring wide = Widen(text);
  EXPECT_EQ(wide, L"再生が終了しました\r\nabc");
  EXPECT_EQ(Narrow(wide), text);
  EXPECT_EQ(Narrow(L""), "");
}

TEST(Win32Input, KeyRecordsAreExtendedWithLayoutScanCodes) {
  const INPUT down = MakeKeyInput({65, false});
  EXPECT_EQ(down.type, static_cast<DWORD>(INPUT_KEYBOARD));
  EXPECT_EQ(down.ki.wVk, 65);
  EXPECT_EQ(down.ki.wScan, ::MapVirtualKeyA(65, 0));
  EXPECT_NE(down.ki.wScan, 0);
  EXPECT_EQ(down.ki.dwFlags, static_cast<DWORD>(KEYEVENTF_EXTENDEDKEY));
  EXPECT_EQ(down.ki.time, 0u);
  EXPECT_EQ(down.ki.dwExtraInfo, 0u);
  const INPUT up = MakeKeyInput({17, true});
  EXPECT_EQ(up.ki.dwFlags, static_cast<DWORD>(KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP));
}

TEST(Win32Input, MouseRecordsCarryTheFlagsAsGiven) {
  const INPUT in = MakeMouseInput({0, 0, kMouseLeftDown | kMouseMove});
  EXPECT_EQ(in.type, static_cast<DWORD>(INPUT_MOUSE));
  EXPECT_EQ(in.mi.dwFlags, static_cast<DWORD>(MOUSEEVENTF_LEFTDOWN | MOUSEEVENTF_MOVE));
  EXPECT_EQ(in.mi.dx, 0);
  EXPECT_EQ(in.mi.mouseData, 0u);
}

TEST(Win32Input, LayoutLookupGoesThroughTheJapaneseAnsiCodePage) {
  EXPECT_EQ(AnsiByte(U'a'), 'a');
  // Half-width katakana is one byte in code page 932, hiragana two.
  EXPECT_EQ(AnsiByte(U'\uFF71'), static_cast<char>(0xB1));
  EXPECT_EQ(AnsiByte(U'あ'), std::nullopt);
  EXPECT_EQ(AnsiByte(U'\U0001F600'), std::nullopt);
  Win32Input input;
  EXPECT_EQ(input.VkKeyScan(U'あ'), -1);
  EXPECT_EQ(input.VkKeyScan(U'a') & 0xFF, 'A');
  EXPECT_EQ(input.VkKeyScan(U'A'), 0x100 | 'A');
  EXPECT_TRUE(input.IsCharUpper(U'A'));
  EXPECT_FALSE(input.IsCharUpper(U'a'));
  EXPECT_FALSE(input.IsCharUpper(U'あ'));
}

TEST(Win32Environment, ArgumentsFollowTheProgramName) {
  EXPECT_EQ(ArgumentsOf(L"\"C:\\Program Files\\K\\Kestrelix.exe\" \"C:\\a b\\x.ksx\""),
            L"\"C:\\a b\\x.ksx\"");
  EXPECT_EQ(ArgumentsOf(L"Kestrelix.exe  /m /h"), L"/m /h");
  EXPECT_EQ(ArgumentsOf(L"Kestrelix.exe"), L"");
}

TEST(Win32Environment, VariablesReadBackInUtf8) {
  ASSERT_TRUE(::SetEnvironmentVariableW(L"KX_TEST_VAR", L"値"));
  Win32Environment env;
  EXPECT_EQ(env.Variable("KX_TEST_VAR"), "値");
  EXPECT_EQ(env.Variable("KX_SURELY_UNSET_VARIABLE"), "");
  bool found = false;
  for (int i = 1; !found; ++i) {
    const std::string entry = env.VariableAt(i);
    if (entry.empty()) break;
    found = entry == "KX_TEST_VAR=値";
  }
  EXPECT_TRUE(found);
  EXPECT_EQ(env.VariableAt(0), "");
}

TEST(Win32Random, FollowsTheSameSequenceAsTheSimulatedGenerator) {
  Win32Random real;
  sim::SimSystem sim;
  for (int i = 0; i < 5; ++i) {
    const double r = real.Next();
    EXPECT_EQ(r, sim.Next());
    EXPECT_GE(r, 0.0);
    EXPECT_LT(r, 1.0);
  }
}

TEST(Win32Clipboard, RoundTripsUnicodeText) {
  Win32Clipboard clipboard;
  ASSERT_TRUE(clipboard.SetText("クリップ\r\nboard"));
  EXPECT_EQ(clipboard.GetText(), "クリップ\r\nboard");
  ASSERT_TRUE(clipboard.SetText(""));
  EXPECT_EQ(clipboard.GetText(), "");
}

TEST(Win32Registry, WritesTheRegistryEditorsLastKey) {
  Win32Registry registry;
  ASSERT_TRUE(registry.SetRegeditLastKey("コンピュータ\\HKEY_CURRENT_USER\\Software"));
  wchar_t value[256];
  DWORD size = sizeof value;
  ASSERT_EQ(::RegGetValueW(HKEY_CURRENT_USER,
                           L"Software\\Microsoft\\Windows\\CurrentVersion\\Applets\\Regedit",
                           L"LastKey", RRF_RT_REG_SZ, nullptr, value, &size),
            ERROR_SUCCESS);
  EXPECT_EQ(Narrow(value), "コンピュータ\\HKEY_CURRENT_USER\\Software");
}

TEST(Win32Registry, ClassKeysOfTheCurrentUserAreWrittenAndDeletedOneByOne) {
  Win32Registry registry;
  ASSERT_TRUE(registry.SetClassKey("kx_test_auto_file\\Shell\\open\\command", "C:\\k.exe \"%1\""));
  ASSERT_TRUE(registry.SetClassKey("kx_test_auto_file", "テスト マクロファイル"));
  wchar_t value[256];
  DWORD size = sizeof value;
  ASSERT_EQ(::RegGetValueW(HKEY_CURRENT_USER, L"Software\\Classes\\kx_test_auto_file", nullptr,
                           RRF_RT_REG_SZ, nullptr, value, &size),
            ERROR_SUCCESS);
  EXPECT_EQ(Narrow(value), "テスト マクロファイル");
  size = sizeof value;
  ASSERT_EQ(::RegGetValueW(HKEY_CURRENT_USER,
                           L"Software\\Classes\\kx_test_auto_file\\Shell\\open\\command", nullptr,
                           RRF_RT_REG_SZ, nullptr, value, &size),
            ERROR_SUCCESS);
  EXPECT_EQ(Narrow(value), "C:\\k.exe \"%1\"");
  // A key with sub-keys stays; deepest first, every key goes.
  EXPECT_FALSE(registry.DeleteClassKey("kx_test_auto_file"));
  for (const char* key :
       {"kx_test_auto_file\\Shell\\open\\command", "kx_test_auto_file\\Shell\\open",
        "kx_test_auto_file\\Shell", "kx_test_auto_file"})
    EXPECT_TRUE(registry.DeleteClassKey(key)) << key;
  EXPECT_FALSE(registry.DeleteClassKey("kx_test_auto_file"));
  registry.NotifyAssociationChanged();
}

TEST(Win32Cleanup, DeletesPlainFilesOnlyAndSkipsFilesInUse) {
  wchar_t temp[MAX_PATH + 1];
  ASSERT_GT(::GetTempPathW(MAX_PATH + 1, temp), 0u);
  const std::wstring folder = std::wstring(temp) + L"kx_cleanup_test";
  ::CreateDirectoryW(folder.c_str(), nullptr);
  ::CreateDirectoryW((folder + L"\\sub").c_str(), nullptr);
  auto touch = [](const std::wstring& path) {
    unique_file f(
        ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    return static_cast<bool>(f);
  };
  ASSERT_TRUE(touch(folder + L"\\a.tmp"));
  ASSERT_TRUE(touch(folder + L"\\b.tmp"));
  ASSERT_TRUE(touch(folder + L"\\sub\\keep.tmp"));
  {
    unique_file busy(::CreateFileW((folder + L"\\busy.tmp").c_str(), GENERIC_WRITE, 0, nullptr,
                                   CREATE_ALWAYS, 0, nullptr));
    ASSERT_TRUE(busy);
    EXPECT_EQ(DeleteFilesIn(folder), 2);
    EXPECT_NE(::GetFileAttributesW((folder + L"\\busy.tmp").c_str()), INVALID_FILE_ATTRIBUTES);
  }
  EXPECT_EQ(::GetFileAttributesW((folder + L"\\a.tmp").c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_NE(::GetFileAttributesW((folder + L"\\sub\\keep.tmp").c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(DeleteFilesIn(folder), 1);
  ::DeleteFileW((folder + L"\\sub\\keep.tmp").c_str());
  ::RemoveDirectoryW((folder + L"\\sub").c_str());
  ::RemoveDirectoryW(folder.c_str());
}

// A plain top-level window.
struct CountingWindow {
  CountingWindow() {
    WNDCLASSW wc{};
    wc.lpfnWndProc = ::DefWindowProcW;
    wc.hInstance = ::GetModuleHandleW(nullptr);
    wc.lpszClassName = L"KxCountingWindow";
    ::RegisterClassW(&wc);
    window.reset(::CreateWindowExW(0, L"KxCountingWindow", L"計数ウィンドウ", WS_OVERLAPPEDWINDOW,
                                   10, 20, 300, 200, nullptr, nullptr, wc.hInstance, nullptr));
  }
  unique_hwnd window;
};

TEST(Win32Clock, WaitEndsAtOnceForAQueuedMessageAndPumpTakesIt) {
  Win32Clock clock;
  MSG msg;
  while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
  }
  ASSERT_TRUE(::PostThreadMessageW(::GetCurrentThreadId(), WM_APP, 0, 0));
  // An hour-long wait that must return because a message is waiting.
  clock.WaitForMessageOrTimeout(3'600'000.0);
  clock.PumpMessages();
  EXPECT_FALSE(::PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE));
  // The pump leaves a quit request for the main loop.
  ::PostQuitMessage(7);
  clock.PumpMessages();
  ASSERT_TRUE(::PeekMessageW(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(msg.wParam, 7u);
}

TEST(Win32Clock, CounterAdvancesAcrossASleep) {
  Win32Clock clock;
  ASSERT_TRUE(clock.HasPerformanceCounter());
  const auto before = clock.PerformanceCounter();
  clock.Sleep(2);
  const auto after = clock.PerformanceCounter();
  EXPECT_GE(after - before, clock.PerformanceFrequency() * 2 / 1000);
  const LocalTime now = clock.Now();
  EXPECT_GE(now.year, 2020);
  EXPECT_GE(now.month, 1);
}

TEST(Win32Clock, ShortSleepsAndWaitsLastAtLeastTheirLengthBeforeAndAfterTheProbe) {
  Win32Clock clock;
  clock.PumpMessages();  // no message may end the waits early
  const auto ms = [&](std::int64_t ticks) {
    return static_cast<double>(ticks) * 1000.0 / static_cast<double>(clock.PerformanceFrequency());
  };
  // The first rounds run before the fine sleeps are known, the later after.
  for (int round = 0; round < 40; ++round) {
    const double length = 0.3 + 0.04 * round;
    auto start = clock.PerformanceCounter();
    clock.Sleep(length);
    EXPECT_GE(ms(clock.PerformanceCounter() - start), length) << "sleep, round " << round;
    start = clock.PerformanceCounter();
    clock.WaitForMessageOrTimeout(length);
    EXPECT_GE(ms(clock.PerformanceCounter() - start), length) << "wait, round " << round;
  }
}

TEST(Win32Windows, FindsWindowsByClassAndTitleAndMapsClientPoints) {
  CountingWindow w;
  // Top-level windows need a display: the tests run on a virtual one.
  ASSERT_TRUE(w.window) << "no display";
  Win32Windows windows;
  const WindowHandle h = FromHwnd(w.window.get());
  EXPECT_EQ(windows.Find("KxCountingWindow", "計数ウィンドウ"), h);
  EXPECT_EQ(windows.Find(std::nullopt, "計数ウィンドウ"), h);
  EXPECT_EQ(windows.Find("KxCountingWindow", std::nullopt), h);
  EXPECT_EQ(windows.Find("KxCountingWindow", "other"), 0u);
  EXPECT_EQ(windows.Title(h), "計数ウィンドウ");
  EXPECT_EQ(windows.ClassName(h), "KxCountingWindow");
  EXPECT_TRUE(windows.IsWindow(h));
  EXPECT_FALSE(windows.IsWindow(0));
  windows.Move(h, 50, 60, 320, 240, true);
  const auto rect = windows.GetRect(h);
  ASSERT_TRUE(rect);
  EXPECT_EQ(rect->left, 50);
  EXPECT_EQ(rect->bottom - rect->top, 240);
  const Point origin = windows.ClientToScreen(h, {0, 0});
  EXPECT_GE(origin.x, 50);
  EXPECT_GT(origin.y, 60);
  EXPECT_EQ(windows.ScreenToClient(h, origin), (Point{0, 0}));
}

}  // namespace
}  // namespace kx::win32
#endif
