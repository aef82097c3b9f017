#include "sim/sim_system.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>

namespace kx::sim {

namespace {

std::string Lower(std::string_view s) {
  std::string out(s);
  for (auto& c : out)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return out;
}

bool SameText(std::string_view a, std::string_view b) {
  return Lower(a) == Lower(b);
}

// Paths are UTF-8 on this side; std::filesystem would read a narrow string in
// the ANSI code page on Windows.
std::filesystem::path Utf8Path(std::string_view s) {
  return std::filesystem::path(std::u8string(s.begin(), s.end()));
}
std::string Utf8Of(const std::filesystem::path& p) {
  const std::u8string u = p.u8string();
  return std::string(u.begin(), u.end());
}

std::vector<std::string> ButtonWords(std::uint32_t flags) {
  static constexpr std::pair<std::uint32_t, const char*> kWords[] = {
      {kMouseLeftDown, "ldown"}, {kMouseLeftUp, "lup"},       {kMouseRightDown, "rdown"},
      {kMouseRightUp, "rup"},    {kMouseMiddleDown, "mdown"}, {kMouseMiddleUp, "mup"},
  };
  std::vector<std::string> out;
  for (const auto& [flag, word] : kWords)
    if (flags & flag) out.push_back(word);
  return out;
}

// Coordinates far out of range stay at the edge of what an int holds instead
// of overflowing.
int Saturated(std::int64_t value) {
  return static_cast<int>(std::clamp<std::int64_t>(value, std::numeric_limits<int>::min(),
                                                   std::numeric_limits<int>::max()));
}

}  // namespace

SimSystem::SimSystem() {
  for (const char* p : {"notepad", "notepad.exe", "calc", "calc.exe", "regedit", "explorer", "cmd"})
    programs_.insert(p);
}

System SimSystem::Ports() {
  return System{*this, *this, *this, *this, *this, *this, *this,
                *this, *this, *this, *this, *this, *this, browsers_, *this};
}

// --- screen ---

std::vector<Monitor> SimSystem::Monitors() {
  if (monitors_.empty()) return {Monitor{Rect{0, 0, 1920, 1080}, kBaseDpi}};
  return monitors_;
}

std::optional<PixelView> SimSystem::Capture(const Rect& area) {
  ++captures_;
  constexpr Pixel kBlack = 0xFF000000u;
  captured_ =
      PixelImage(std::max(0, area.right - area.left), std::max(0, area.bottom - area.top), kBlack);
  for (const ShownImage& s : shown_) {
    if (clockUs_ < s.fromUs) continue;
    const int left = std::max(area.left, s.at.x);
    const int top = std::max(area.top, s.at.y);
    const int right = std::min(area.right, s.at.x + s.image.width);
    const int bottom = std::min(area.bottom, s.at.y + s.image.height);
    for (int y = top; y < bottom; ++y)
      for (int x = left; x < right; ++x)
        if (const Pixel p = s.image.At(x - s.at.x, y - s.at.y); !IsTransparent(p))
          captured_.At(x - area.left, y - area.top) = p | kBlack;
  }
  return captured_.View();
}

void SimSystem::Record(std::string_view ev, Json fields) {
  trace_.Add(NowMs(), ev, std::move(fields));
}

// --- input ---

std::size_t SimSystem::SendKeys(std::span<const KeyRecord> keys) {
  if (keys.empty() || inputBlocked_) return 0;
  Json list = Json::array();
  for (const auto& k : keys) {
    if (k.unicode != 0) {
      char name[8];
      std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(k.unicode));
      list.push_back({name, k.up ? "up" : "down"});
      continue;
    }
    list.push_back({k.vk, k.up ? "up" : "down"});
    // Toggle keys change state on their press, as on a real keyboard.
    if (!k.up && (k.vk == 20 || k.vk == 144 || k.vk == 145)) toggles_[k.vk] = !toggles_[k.vk];
  }
  Record("keys", {{"keys", std::move(list)}});
  return keys.size();
}

std::size_t SimSystem::SendMouse(std::span<const MouseRecord> records) {
  if (records.empty() || inputBlocked_) return 0;
  Json list = Json::array();
  for (const auto& r : records)
    for (const auto& word : ButtonWords(r.flags)) list.push_back(word);
  Record("mouse", {{"buttons", std::move(list)}});
  return records.size();
}

void SimSystem::Wheel(int delta) {
  Record("wheel", {{"delta", delta}});
}

void SimSystem::SetCursorPos(Point screen) {
  cursor_ = screen;
  Record("cursor", {{"x", screen.x}, {"y", screen.y}});
}

std::int16_t SimSystem::GetKeyState(int vk) {
  auto it = toggles_.find(vk);
  return it != toggles_.end() && it->second ? 1 : 0;
}

bool SimSystem::IsKeyDown(int vk) {
  auto it = physicalDown_.find(vk);
  return it != physicalDown_.end() && it->second;
}

// --- windows ---

WindowHandle SimSystem::AddWindow(SimWindow window) {
  if (window.handle == 0) window.handle = nextHandle_ += 0x10;
  windows_.push_back(window);
  return window.handle;
}

SimWindow* SimSystem::WindowByHandle(WindowHandle handle) {
  for (auto& w : windows_)
    if (w.handle == handle) return &w;
  return nullptr;
}

WindowHandle SimSystem::Find(std::optional<std::string_view> className,
                             std::optional<std::string_view> title) {
  for (const auto& w : windows_) {
    if (w.parent != 0) continue;
    if (className && !SameText(*className, w.className)) continue;
    if (title && !SameText(*title, w.title)) continue;
    return w.handle;
  }
  return 0;
}

bool SimSystem::IsWindow(WindowHandle window) {
  return WindowByHandle(window) != nullptr;
}

bool SimSystem::IsMinimized(WindowHandle window) {
  auto* w = WindowByHandle(window);
  return w && w->minimized;
}

void SimSystem::Restore(WindowHandle window) {
  if (auto* w = WindowByHandle(window)) w->minimized = false;
}

void SimSystem::SetForeground(WindowHandle window) {
  foreground_ = window;
  Record("activate", {{"hwnd", window}});
}

std::optional<Rect> SimSystem::GetRect(WindowHandle window) {
  if (auto* w = WindowByHandle(window)) return w->rect;
  return std::nullopt;
}

void SimSystem::Move(WindowHandle window, int x, int y, int width, int height, bool) {
  if (auto* w = WindowByHandle(window))
    w->rect = {x, y, Saturated(std::int64_t{x} + width), Saturated(std::int64_t{y} + height)};
  Record("move", {{"hwnd", window}, {"x", x}, {"y", y}, {"w", width}, {"h", height}});
}

Point SimSystem::ClientToScreen(WindowHandle window, Point client) {
  auto* w = WindowByHandle(window);
  if (!w) return client;
  return {Saturated(std::int64_t{w->rect.left} + w->clientOrigin.x + client.x),
          Saturated(std::int64_t{w->rect.top} + w->clientOrigin.y + client.y)};
}

Point SimSystem::ScreenToClient(WindowHandle window, Point screen) {
  auto* w = WindowByHandle(window);
  if (!w) return screen;
  return {Saturated(std::int64_t{screen.x} - w->rect.left - w->clientOrigin.x),
          Saturated(std::int64_t{screen.y} - w->rect.top - w->clientOrigin.y)};
}

std::string SimSystem::ClassName(WindowHandle window) {
  auto* w = WindowByHandle(window);
  return w ? w->className : "";
}

std::string SimSystem::Title(WindowHandle window) {
  auto* w = WindowByHandle(window);
  return w ? w->title : "";
}

WindowHandle SimSystem::FindChild(WindowHandle parent, WindowHandle after,
                                  std::optional<std::string_view> className,
                                  std::optional<std::string_view> title) {
  bool past = after == 0;
  for (const auto& w : windows_) {
    if (w.parent != parent) continue;
    if (!past) {
      past = w.handle == after;
      continue;
    }
    if (className && !SameText(*className, w.className)) continue;
    if (title && !SameText(*title, w.title)) continue;
    return w.handle;
  }
  return 0;
}

WindowHandle SimSystem::Parent(WindowHandle window) {
  auto* w = WindowByHandle(window);
  return w ? w->parent : 0;
}

WindowHandle SimSystem::FromPoint(Point screen) {
  // Windows earlier in the list are above later ones; a child lies above its
  // parent, so the walk descends while a child holds the point.
  auto holds = [&](const SimWindow& w) {
    return !w.minimized && screen.x >= w.rect.left && screen.x < w.rect.right &&
           screen.y >= w.rect.top && screen.y < w.rect.bottom;
  };
  WindowHandle found = 0;
  for (bool descended = true; descended;) {
    descended = false;
    for (const auto& w : windows_) {
      if (w.parent == found && holds(w)) {
        found = w.handle;
        descended = true;
        break;
      }
    }
  }
  return found;
}

// Messages to a window that does not exist go nowhere, as on the system.
void SimSystem::SetText(WindowHandle window, std::string_view text) {
  auto* w = WindowByHandle(window);
  if (!w) return;
  w->title = std::string(text);
  Record("settext", {{"hwnd", window}, {"text", text}});
}

void SimSystem::ClickButton(WindowHandle window) {
  if (!WindowByHandle(window)) return;
  Record("button_click", {{"hwnd", window}});
}

void SimSystem::SendClick(WindowHandle window, Point client) {
  if (!WindowByHandle(window)) return;
  Record("sent_click", {{"hwnd", window}, {"x", client.x}, {"y", client.y}});
}

void SimSystem::PostKeyDown(WindowHandle window, int vk) {
  if (!WindowByHandle(window)) return;
  Record("posted_key", {{"hwnd", window}, {"vk", vk}});
}

// --- documents ---

SimPage& SimSystem::AddPage(WindowHandle window, SimPage page) {
  return pages_[window] = std::move(page);
}

SimPage& SimSystem::AddDevToolsPage(int port, SimPage page) {
  return browsers_.AddTab(port, "", std::move(page));
}

std::unique_ptr<PageDocument> SimSystem::FromWindow(WindowHandle window) {
  const Json source = {{"hwnd", window}};
  documentRequests_.push_back(DumpJson(source));
  auto it = pages_.find(window);
  if (it == pages_.end() || !WindowByHandle(window)) return nullptr;
  return MakeSimDocument(it->second, source, [this](std::string_view ev, Json fields) {
    Record(ev, std::move(fields));
  });
}

std::unique_ptr<PageDocument> SimSystem::FromDevTools(int port, std::string_view tab) {
  Json source = {{"port", port}};
  if (!tab.empty()) source["tab"] = tab;
  documentRequests_.push_back(DumpJson(source));
  SimTab* shown = browsers_.Tab(port, tab);
  if (!shown) return nullptr;
  return MakeSimDocument(shown->page, source, [this](std::string_view ev, Json fields) {
    Record(ev, std::move(fields));
  });
}

// --- shell, clipboard, dialogs ---

bool SimSystem::Open(std::string_view file, std::string_view workingFolder) {
  const std::string lower = Lower(file);
  const bool ok = lower.starts_with("http") || lower.starts_with("www.") || IsFile(file) ||
                  programs_.count(lower) > 0;
  Json fields = {{"target", file}};
  if (!workingFolder.empty()) fields["folder"] = workingFolder;
  fields["ok"] = ok;
  Record("open", std::move(fields));
  return ok;
}

bool SimSystem::SetText(std::string_view text) {
  if (failingClipboardWrites_ > 0) {
    --failingClipboardWrites_;
    return false;
  }
  clipboard_ = std::string(text);
  Record("clipboard", {{"text", text}});
  return true;
}

MessageResult SimSystem::MessageBox(WindowHandle, std::string_view text, std::string_view title,
                                    MessageStyle) {
  Record("msgbox", {{"title", title}, {"text", text}});
  if (messageAnswers_.empty()) return MessageResult::kOk;
  const MessageResult answer = messageAnswers_.front();
  messageAnswers_.pop_front();
  return answer;
}

std::optional<std::string> SimSystem::InputBox(std::string_view prompt, std::string_view title,
                                               std::string_view) {
  Record("inputbox", {{"title", title}, {"prompt", prompt}});
  if (inputAnswers_.empty()) return std::nullopt;
  auto answer = inputAnswers_.front();
  inputAnswers_.pop_front();
  return answer;
}

// --- clock ---

std::optional<std::int64_t> SimSystem::NextHotkeyUs() const {
  std::optional<std::int64_t> next;
  for (const auto& h : hotkeys_)
    if (!next || h.atUs < *next) next = h.atUs;
  return next;
}

void SimSystem::PumpMessages() {
  if (pumpHook_) pumpHook_();
  // Deliver due hotkeys in time order; a handler may pump again, so take each
  // one off the list before calling it.
  for (;;) {
    auto due = std::min_element(hotkeys_.begin(), hotkeys_.end(),
                                [](const auto& a, const auto& b) { return a.atUs < b.atUs; });
    if (due == hotkeys_.end() || due->atUs > clockUs_) return;
    const int id = due->id;
    hotkeys_.erase(due);
    if (hotkeySink_) hotkeySink_(id);
  }
}

void SimSystem::Sleep(double milliseconds) {
  if (milliseconds > 0) clockUs_ += std::llround(milliseconds * 1000);
}

void SimSystem::WaitForMessageOrTimeout(double milliseconds) {
  // The wait ends just past its deadline (a real clock never lands exactly on
  // it), or when a hotkey message arrives first.
  // The longest wait the player makes is bounded; the cap here only keeps the
  // conversion to microseconds defined for any caller.
  constexpr double kLongestUs = 1e15;
  const double us = std::min(std::ceil(std::max(0.0, milliseconds) * 1000), kLongestUs);
  std::int64_t target = clockUs_ + static_cast<std::int64_t>(us) + 1;
  if (auto next = NextHotkeyUs(); next && *next < target) target = std::max(*next, clockUs_);
  if (wakeAtUs_ > clockUs_ && wakeAtUs_ < target) target = wakeAtUs_;
  clockUs_ = target;
}

LocalTime SimSystem::Now() {
  // Days since 1970-01-01 and back (proleptic Gregorian), so that the start
  // time plus the virtual clock rolls over days, months and years.
  auto daysFromCivil = [](int y, int m, int d) {
    y -= m <= 2;
    const int era = (y >= 0 ? y : y - 399) / 400;
    const int yoe = y - era * 400;
    const int doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const int doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return static_cast<std::int64_t>(era) * 146097 + doe - 719468;
  };
  const std::int64_t startMs =
      ((daysFromCivil(startTime_.year, startTime_.month, startTime_.day) * 24 + startTime_.hour) *
           60 +
       startTime_.minute) *
          60000 +
      startTime_.second * 1000 + startTime_.millisecond;
  const std::int64_t ms = startMs + clockUs_ / 1000;
  std::int64_t z = ms / 86400000 + 719468;
  const std::int64_t msOfDay = ms % 86400000;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const std::int64_t doe = z - era * 146097;
  const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const std::int64_t mp = (5 * doy + 2) / 153;
  const int day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  const int month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  const int year = static_cast<int>(yoe + era * 400 + (month <= 2));
  return {year,
          month,
          day,
          static_cast<int>(msOfDay / 3600000),
          static_cast<int>(msOfDay / 60000 % 60),
          static_cast<int>(msOfDay / 1000 % 60),
          static_cast<int>(msOfDay % 1000)};
}

// --- notifications, power, registry ---

void SimSystem::Beep() {
  Record("beep");
}
void SimSystem::FlashWindow(int) {
  Record("flash");
}
void SimSystem::Balloon(std::string_view, std::string_view text) {
  Record("balloon", {{"text", text}});
}
void SimSystem::SetCaption(std::string_view text) {
  Record("caption", {{"text", text}});
}
void SimSystem::SetStatusText(std::string_view text) {
  status_ = std::string(text);
  Record("status", {{"text", text}});
}
void SimSystem::Power(PowerAction action) {
  Record("power", {{"action", PowerActionWord(action)}});
}
void SimSystem::Clean(kx::Cleanup what) {
  Record("cleanup", {{"what", CleanupWord(what)}});
}
void SimSystem::EmptyRecycleBinUnasked() {
  Record("cleanup", {{"what", "recycle"}, {"unasked", true}});
  recycleBin = {};
}
bool SimSystem::SetRegeditLastKey(std::string_view path) {
  regeditKey_ = std::string(path);
  Record("regedit", {{"key", path}});
  return true;
}

bool SimSystem::SetClassKey(std::string_view subKey, std::string_view defaultValue) {
  const std::string key(subKey);
  const bool refused = refusedClassKeys_.count(key) > 0;
  Record("class-key-set", {{"key", subKey}, {"value", defaultValue}, {"ok", !refused}});
  if (refused) return false;
  // Creating a key creates the keys above it, with no value of their own.
  for (std::size_t at = key.find('\\'); at != std::string::npos; at = key.find('\\', at + 1))
    classKeys_.try_emplace(key.substr(0, at));
  classKeys_[key] = std::string(defaultValue);
  return true;
}
bool SimSystem::DeleteClassKey(std::string_view subKey) {
  const std::string key(subKey);
  const auto it = classKeys_.find(key);
  const std::string below = key + "\\";
  const auto next = classKeys_.lower_bound(below);
  const bool hasSubKeys = next != classKeys_.end() && next->first.rfind(below, 0) == 0;
  const bool ok = it != classKeys_.end() && !hasSubKeys;
  Record("class-key-delete", {{"key", subKey}, {"ok", ok}});
  if (ok) classKeys_.erase(it);
  return ok;
}
void SimSystem::NotifyAssociationChanged() {
  Record("association-changed");
}

// --- files ---

void SimSystem::AddFile(std::string path, std::string contents) {
  files_[Lower(path)] = std::move(contents);
}

std::optional<std::string> SimSystem::RealFilePath(std::string_view path) const {
  namespace fs = std::filesystem;
  if (!realFiles_ || path.empty()) return std::nullopt;
  std::error_code ec;
  const fs::path p = Utf8Path(path);
  if (fs::is_regular_file(p, ec)) return Utf8Of(p);
  // Windows names compare without case: look for the last part in its folder.
  const fs::path folder = p.has_parent_path() ? p.parent_path() : fs::path(".");
  const FolderIndex& index = IndexOf(folder);
  if (auto it = index.find(Lower(Utf8Of(p.filename()))); it != index.end()) return it->second;
  return std::nullopt;
}

const SimSystem::FolderIndex& SimSystem::IndexOf(const std::filesystem::path& folder) const {
  namespace fs = std::filesystem;
  // A macro looks files up line after line: each folder is listed once, and
  // the disk, which the simulation never writes, is taken to stay as it was.
  const std::string key = Utf8Of(folder);
  if (auto it = folderIndex_.find(key); it != folderIndex_.end()) return it->second;
  FolderIndex& index = folderIndex_[key];
  std::error_code ec;
  if (!fs::is_directory(folder, ec)) return index;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec))
    if (it->is_regular_file(ec))
      index.emplace(Lower(Utf8Of(it->path().filename())), Utf8Of(it->path()));
  return index;
}

bool SimSystem::IsFile(std::string_view path) {
  return files_.count(Lower(path)) > 0 || RealFilePath(path).has_value();
}

std::optional<Bytes> SimSystem::ReadAll(std::string_view path) {
  if (auto it = files_.find(Lower(path)); it != files_.end())
    return Bytes(it->second.begin(), it->second.end());
  auto real = RealFilePath(path);
  if (!real) return std::nullopt;
  std::ifstream in(Utf8Path(*real), std::ios::binary);
  if (!in) return std::nullopt;
  return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

bool SimSystem::WriteAtomic(std::string_view path, const Bytes& bytes) {
  if (failingFileWrites_ > 0) {
    --failingFileWrites_;
    return false;
  }
  files_[Lower(path)] = std::string(bytes.begin(), bytes.end());
  return true;
}

// --- environment and random numbers ---

void SimSystem::SetEnvironment(std::string name, std::string value) {
  for (auto& [n, v] : environment_)
    if (SameText(n, name)) {
      v = std::move(value);
      return;
    }
  environment_.emplace_back(std::move(name), std::move(value));
}

std::string SimSystem::Variable(std::string_view name) {
  for (const auto& [n, v] : environment_)
    if (SameText(n, name)) return v;
  return "";
}

std::string SimSystem::VariableAt(int index) {
  if (index < 1 || index > static_cast<int>(environment_.size())) return "";
  const auto& [n, v] = environment_[static_cast<size_t>(index - 1)];
  return n + "=" + v;
}

// The classic BASIC generator: a 24-bit linear congruential sequence, reseeded
// from the (virtual) time of day, so a dry run is repeatable.
void SimSystem::Randomize() {
  const LocalTime t = Now();
  const auto seconds = static_cast<std::uint32_t>(t.hour * 3600 + t.minute * 60 + t.second);
  rndSeed_ = ((seconds * 1000u + static_cast<std::uint32_t>(t.millisecond)) << 8) & 0xFFFFFFu;
}

double SimSystem::Next() {
  rndSeed_ = (rndSeed_ * 0x43FD43FDu + 0xC39EC3u) & 0xFFFFFFu;
  return static_cast<double>(rndSeed_) / 16777216.0;
}

}  // namespace kx::sim
