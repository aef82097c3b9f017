#pragma once
// The simulated system: every port implemented in memory, every effect
// recorded in a trace, and a virtual clock that sleeps advance (nothing
// really waits). Unit tests and "kx run --dry" play through it.
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "sim/sim_browser.h"
#include "sim/sim_document.h"
#include "sim/trace.h"
#include "sys/system.h"

namespace kx::sim {

struct SimWindow {
  WindowHandle handle = 0;
  std::string className;
  std::string title;
  Rect rect{0, 0, 640, 480};
  Point clientOrigin{8, 31};  // client area's top-left, relative to rect
  bool minimized = false;
  WindowHandle parent = 0;  // 0: a top-level window; rect is in screen pixels either way
};

class SimSystem final : public InputPort,
                        public WindowPort,
                        public ShellPort,
                        public ClipboardPort,
                        public DialogPort,
                        public ClockPort,
                        public NotifyPort,
                        public PowerPort,
                        public RegistryPort,
                        public FilePort,
                        public EnvironmentPort,
                        public RandomPort,
                        public DocumentPort,
                        public ScreenPort {
 public:
  SimSystem();
  System Ports();

  // --- set-up of the simulated world ---
  Trace& trace() { return trace_; }
  const Trace& trace() const { return trace_; }
  std::int64_t NowUs() const { return clockUs_; }
  std::int64_t NowMs() const { return clockUs_ / 1000; }
  void ResetClock() { clockUs_ = 0; }
  void SetPerformanceCounter(bool present) { hasCounter_ = present; }
  WindowHandle AddWindow(SimWindow window);
  SimWindow* WindowByHandle(WindowHandle handle);
  void SetForegroundWindow(WindowHandle handle) { foreground_ = handle; }
  // Files live in memory; with real files on, a path not found in memory is
  // looked up on the disk (read-only), the last part of the path compared
  // without regard to case as on Windows.
  void AddFile(std::string path, std::string contents);
  void UseRealFiles(bool on) {
    realFiles_ = on;
    folderIndex_.clear();
  }
  // The next n file writes fail and leave the old file, as on a full disk.
  void FailFileWrites(int n) { failingFileWrites_ = n; }
  void SetAppFolder(std::string folder) { appFolder_ = std::move(folder); }
  // Names the shell can open besides files and web addresses.
  void AddProgram(std::string name) { programs_.insert(std::move(name)); }
  void SetClipboard(std::optional<std::string> text) { clipboard_ = std::move(text); }
  std::optional<std::string> Clipboard() const { return clipboard_; }
  // The next n clipboard writes fail, as when another program holds it.
  void FailClipboardWrites(int n) { failingClipboardWrites_ = n; }
  void SetToggle(int vk, bool on) { toggles_[vk] = on; }
  // The physical state IsKeyDown reports, as a user's hands would set it.
  void SetKeyDown(int vk, bool down) {
    physicalDown_[vk] = down;
    ++lastInputTick_;  // moves on with every change, as the real one does
  }
  // While on, the system takes no key or button event, as when a window of
  // higher integrity has the focus; nothing reaches the trace.
  void BlockInput(bool on) { inputBlocked_ = on; }
  void QueueInputBoxAnswer(std::optional<std::string> answer) {
    inputAnswers_.push_back(std::move(answer));
  }
  // Answers of the next message boxes; OK when none is queued.
  void QueueMessageBoxAnswer(MessageResult answer) { messageAnswers_.push_back(answer); }
  void SetEnvironment(std::string name, std::string value);
  void SetCommandLine(std::string text) { commandLine_ = std::move(text); }
  void SetStartTime(LocalTime t) { startTime_ = t; }
  // A hotkey press delivered by the message pump once the clock reaches it.
  void ScheduleHotkey(std::int64_t atMs, int id) { hotkeys_.push_back({atMs * 1000, id}); }
  void SetHotkeySink(std::function<void(int)> sink) { hotkeySink_ = std::move(sink); }
  // Called at every pump of the message queue; waits wake at wakeAtUs so
  // that the hook sees that moment.
  void SetPumpHook(std::function<void()> hook, std::int64_t wakeAtUs) {
    pumpHook_ = std::move(hook);
    wakeAtUs_ = wakeAtUs;
  }
  // The page an Internet Explorer engine window shows, and the page of a
  // browser answering DevTools on a port. The references stay valid for the
  // system's life.
  SimPage& AddPage(WindowHandle window, SimPage page = {});
  // A new tab of the browser on the port, now its most recently active one.
  SimPage& AddDevToolsPage(int port, SimPage page = {});
  // The browsers on loopback ports, for set-ups beyond one page.
  SimBrowsers& browsers() { return browsers_; }
  // Document requests in the order they came: {"hwnd":n} or {"port":n}.
  const std::vector<std::string>& DocumentRequests() const { return documentRequests_; }
  std::string LastStatus() const { return status_; }
  std::string LastRegeditKey() const { return regeditKey_; }
  // The current user's file classes: each key and its default value.
  const std::map<std::string, std::string>& ClassKeys() const { return classKeys_; }
  // Monitors of the virtual screen; with none added the screen is one
  // 1920x1080 monitor at 96 DPI.
  void AddMonitor(Monitor monitor) { monitors_.push_back(monitor); }
  // An image shown with its top-left corner at the point from the virtual
  // time on, above those shown before; the rest of every monitor is black.
  void ShowImage(PixelImage image, Point at, std::int64_t fromMs = 0) {
    shown_.push_back({std::move(image), at, fromMs * 1000});
  }
  // How many times the screen was read.
  int Captures() const { return captures_; }
  // Keys whose writes fail, as without the rights to them.
  void RefuseClassKey(std::string subKey) { refusedClassKeys_.insert(std::move(subKey)); }

  // --- InputPort ---
  std::size_t SendKeys(std::span<const KeyRecord> keys) override;
  std::size_t SendMouse(std::span<const MouseRecord> records) override;
  void Wheel(int delta) override;
  void SetCursorPos(Point screen) override;
  Point GetCursorPos() override { return cursor_; }
  std::int16_t GetKeyState(int vk) override;
  bool IsKeyDown(int vk) override;
  std::uint32_t LastInputTick() override { return lastInputTick_; }
  std::int16_t VkKeyScan(char32_t ch) override;
  bool IsCharUpper(char32_t ch) override;

  // --- WindowPort ---
  WindowHandle Find(std::optional<std::string_view> className,
                    std::optional<std::string_view> title) override;
  bool IsWindow(WindowHandle window) override;
  WindowHandle Foreground() override { return foreground_; }
  bool IsMinimized(WindowHandle window) override;
  void Restore(WindowHandle window) override;
  void SetForeground(WindowHandle window) override;
  void WaitForInputIdle(WindowHandle) override {}
  std::optional<Rect> GetRect(WindowHandle window) override;
  void Move(WindowHandle window, int x, int y, int width, int height, bool repaint) override;
  Point ClientToScreen(WindowHandle window, Point client) override;
  Point ScreenToClient(WindowHandle window, Point screen) override;
  kx::Size ScreenSize() override { return {1920, 1080}; }
  std::string ClassName(WindowHandle window) override;
  std::string Title(WindowHandle window) override;
  WindowHandle FindChild(WindowHandle parent, WindowHandle after,
                         std::optional<std::string_view> className,
                         std::optional<std::string_view> title) override;
  WindowHandle Parent(WindowHandle window) override;
  WindowHandle FromPoint(Point screen) override;
  std::string Text(WindowHandle window) override { return Title(window); }
  void SetText(WindowHandle window, std::string_view text) override;
  void ClickButton(WindowHandle window) override;
  void SendClick(WindowHandle window, Point client) override;
  void PostKeyDown(WindowHandle window, int vk) override;

  // --- DocumentPort ---
  std::unique_ptr<PageDocument> FromWindow(WindowHandle window) override;
  std::unique_ptr<PageDocument> FromDevTools(int port, std::string_view tab) override;

  // --- ScreenPort ---
  std::vector<Monitor> Monitors() override;
  std::optional<PixelView> Capture(const Rect& area) override;

  // --- ShellPort ---
  bool Open(std::string_view file, std::string_view workingFolder) override;

  // --- ClipboardPort ---
  std::optional<std::string> GetText() override { return clipboard_; }
  bool SetText(std::string_view text) override;

  // --- DialogPort ---
  MessageResult MessageBox(WindowHandle owner, std::string_view text, std::string_view title,
                           MessageStyle style) override;
  std::optional<std::string> InputBox(std::string_view prompt, std::string_view title,
                                      std::string_view initial) override;

  // --- ClockPort ---
  bool HasPerformanceCounter() override { return hasCounter_; }
  std::int64_t PerformanceCounter() override { return clockUs_; }
  std::int64_t PerformanceFrequency() override { return 1'000'000; }
  std::uint32_t TickCount() override { return static_cast<std::uint32_t>(clockUs_ / 1000); }
  void PumpMessages() override;
  void Sleep(double milliseconds) override;
  void WaitForMessageOrTimeout(double milliseconds) override;
  LocalTime Now() override;

  // --- NotifyPort ---
  void Beep() override;
  void FlashWindow(int count) override;
  void Balloon(std::string_view title, std::string_view text) override;
  void SetCaption(std::string_view text) override;
  void SetStatusText(std::string_view text) override;

  // --- PowerPort ---
  void Power(PowerAction action) override;
  void Clean(kx::Cleanup what) override;
  RecycleBinContents QueryRecycleBin() override { return recycleBin; }
  void EmptyRecycleBinUnasked() override;
  // What QueryRecycleBin answers; emptying it leaves it empty.
  RecycleBinContents recycleBin;

  // --- RegistryPort ---
  bool SetRegeditLastKey(std::string_view path) override;
  bool SetClassKey(std::string_view subKey, std::string_view defaultValue) override;
  bool DeleteClassKey(std::string_view subKey) override;
  void NotifyAssociationChanged() override;

  // --- FilePort ---
  bool IsFile(std::string_view path) override;
  std::optional<Bytes> ReadAll(std::string_view path) override;
  bool WriteAtomic(std::string_view path, const Bytes& bytes) override;
  std::string AppFolder() override { return appFolder_; }
  char Separator() override { return '/'; }

  // --- EnvironmentPort ---
  std::string Variable(std::string_view name) override;
  std::string VariableAt(int index) override;
  std::string CommandLine() override { return commandLine_; }

  // --- RandomPort ---
  void Randomize() override;
  double Next() override;

 private:
  struct ShownImage {
    PixelImage image;
    Point at;
    std::int64_t fromUs;
  };
  struct PendingHotkey {
    std::int64_t atUs;
    int id;
  };
  void Record(std::string_view ev, Json fields = Json::object());
  // Lower-cased names of a folder's files and their paths on the disk.
  using FolderIndex = std::unordered_map<std::string, std::string>;
  std::optional<std::string> RealFilePath(std::string_view path) const;
  const FolderIndex& IndexOf(const std::filesystem::path& folder) const;
  std::optional<std::int64_t> NextHotkeyUs() const;

  Trace trace_;
  std::int64_t clockUs_ = 0;
  bool hasCounter_ = true;
  std::vector<SimWindow> windows_;
  WindowHandle nextHandle_ = 0x10010;
  WindowHandle foreground_ = 0;
  std::map<std::string, std::string> files_;
  bool realFiles_ = false;
  int failingFileWrites_ = 0;
  mutable std::map<std::string, FolderIndex> folderIndex_;
  std::string appFolder_ = "/kestrelix";
  std::set<std::string> programs_;
  std::optional<std::string> clipboard_;
  int failingClipboardWrites_ = 0;
  std::map<int, bool> toggles_;
  std::map<int, bool> physicalDown_;
  std::uint32_t lastInputTick_ = 0;
  bool inputBlocked_ = false;
  Point cursor_{0, 0};
  std::deque<std::optional<std::string>> inputAnswers_;
  std::deque<MessageResult> messageAnswers_;
  std::vector<std::pair<std::string, std::string>> environment_;
  std::string commandLine_;
  LocalTime startTime_{2024, 3, 5, 9, 5, 3, 0};
  std::vector<PendingHotkey> hotkeys_;
  std::function<void(int)> hotkeySink_;
  std::function<void()> pumpHook_;
  std::int64_t wakeAtUs_ = -1;
  std::string status_;
  std::string regeditKey_;
  std::map<std::string, std::string> classKeys_;
  std::set<std::string> refusedClassKeys_;
  std::map<WindowHandle, SimPage> pages_;
  SimBrowsers browsers_{
      *this, [this](std::string_view ev, Json fields) { Record(ev, std::move(fields)); }};
  std::vector<std::string> documentRequests_;
  std::uint32_t rndSeed_ = 0x50000;
  std::vector<Monitor> monitors_;
  std::vector<ShownImage> shown_;
  PixelImage captured_;
  int captures_ = 0;
};

}  // namespace kx::sim
