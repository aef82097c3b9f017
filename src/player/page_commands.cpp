// Window-text commands (st, ad, gt, ts, bc, cc, kk) and page commands (pw,
// ip, waitweb): the first two fields carry the values, the rest is the
// window path.
#include <optional>

#include "input/key_names.h"
#include "page/page_fields.h"
#include "page/window_document.h"
#include "page/window_path.h"
#include "player/line_runner.h"
#include "util/basic_text.h"

namespace kx {

namespace {

constexpr std::size_t kPathStart = 2;
constexpr double kWaitWebMs = 1500;
constexpr int kLargestVirtualKey = 255;
constexpr int kVirtualKeyMask = 0xFF;

std::span<const std::string> PathOf(const std::vector<std::string>& fields) {
  if (fields.size() <= kPathStart) return {};
  return std::span<const std::string>(fields).subspan(kPathStart);
}

std::string_view FieldAt(const std::vector<std::string>& fields, std::size_t i) {
  return i < fields.size() ? std::string_view(fields[i]) : std::string_view();
}

std::optional<WindowHandle> HandleFrom(std::string_view text) {
  const std::string_view t = basic::Trim(text);
  if (!basic::IsNumeric(t)) return std::nullopt;
  return WindowHandleFromNumber(basic::ToDouble(t).value_or(0));
}

// "(x,y)" with whole numbers; none for anything else.
std::optional<Point> PointFrom(std::string_view text) {
  const std::string_view t = basic::Trim(text);
  if (!t.starts_with('(') || !t.ends_with(')')) return std::nullopt;
  const auto parts = basic::Split(t.substr(1, t.size() - 2), ",");
  if (parts.size() != 2) return std::nullopt;
  const auto x = basic::ToLong(basic::Trim(parts[0]));
  const auto y = basic::ToLong(basic::Trim(parts[1]));
  if (!x || !y) return std::nullopt;
  return Point{*x, *y};
}

}  // namespace

void LineRunner::PageCommand(std::string_view key, std::string_view argument) {
  if (key == "waitweb") return WaitWeb();
  const std::string_view word = key.substr(0, 2);
  const std::vector<std::string> fields = basic::Split(argument, ",");
  if (word == "st" || word == "ad") return WriteWindowText(fields, word == "ad");
  if (word == "gt") return ReadWindowText(argument);
  if (word == "ts") return SetTextByHandle(argument);
  if (word == "bc") return ClickButton(argument);
  if (word == "cc") return SendClick(fields);
  if (word == "kk") return PostKey(fields);
  if (word == "pw" || word == "ip") {
    const auto document = PageDocumentOf(PathOf(fields));
    if (!document) return;
    if (word == "pw") return AutoLogin(*document, FieldAt(fields, 0), FieldAt(fields, 1));
    if (!WaitPageComplete(*document, sys_.clock, p_.playing_)) return;
    FillPageFields(*document, FieldAt(fields, 0), FieldAt(fields, 1));
  }
}

void LineRunner::WriteWindowText(const std::vector<std::string>& fields, bool append) {
  auto& windows = sys_.windows;
  const WindowHandle window = FindDocumentWindow(windows, PathOf(fields));
  if (!window) return;
  const std::string_view value = FieldAt(fields, 0);
  windows.SetText(window, append ? windows.Text(window) + std::string(value) : value);
}

void LineRunner::ReadWindowText(std::string_view argument) {
  auto& windows = sys_.windows;
  WindowHandle window = 0;
  if (const auto point = PointFrom(argument)) {
    window = windows.FromPoint(*point);
  } else if (const auto handle = HandleFrom(argument)) {
    window = *handle;
  } else {
    window = FindDocumentWindow(windows, basic::Split(argument, ","));
  }
  // The point form also reads the desktop, which has no window of its own
  // in every system: its text is empty.
  if (!window && !PointFrom(argument)) return;
  p_.currentValue_ = CurrentValue::Text(window ? windows.Text(window) : std::string());
}

void LineRunner::SetTextByHandle(std::string_view argument) {
  const auto comma = argument.find(',');
  const auto window = HandleFrom(argument.substr(0, comma));
  if (!window || !sys_.windows.IsWindow(*window)) return;
  const std::string_view text =
      comma == std::string_view::npos ? std::string_view() : argument.substr(comma + 1);
  sys_.windows.SetText(*window, text);
}

void LineRunner::ClickButton(std::string_view argument) {
  const auto window = HandleFrom(argument);
  if (!window || !sys_.windows.IsWindow(*window)) return;
  sys_.windows.ClickButton(*window);
}

void LineRunner::SendClick(const std::vector<std::string>& fields) {
  const auto x = basic::ToLong(basic::Trim(FieldAt(fields, 0)));
  const auto y = basic::ToLong(basic::Trim(FieldAt(fields, 1)));
  if (!x || !y) return;
  const WindowHandle window = FindDocumentWindow(sys_.windows, PathOf(fields));
  if (!window) return;
  sys_.windows.SendClick(window, Point{*x, *y});
}

void LineRunner::PostKey(const std::vector<std::string>& fields) {
  const std::string word = basic::LCase(basic::Trim(FieldAt(fields, 0)));
  int vk = 0;
  if (basic::IsNumeric(word)) {
    vk = basic::ToLong(word).value_or(0);
  } else if (!word.empty()) {
    // Layout lookups may carry a shift state above the key's own code.
    const KeyCode code = KeyCodeFromWord(word, sys_.input);
    if (code > 0) vk = code & kVirtualKeyMask;
  }
  if (vk < 1 || vk > kLargestVirtualKey) return;
  const WindowHandle window = FindDocumentWindow(sys_.windows, PathOf(fields));
  if (!window) return;
  sys_.windows.PostKeyDown(window, vk);
}

void LineRunner::WaitWeb() {
  PumpingWait(kWaitWebMs * p_.options_.speedFactor);
  if (!p_.playing_) return;
  // Without an Internet Explorer window, the page waited for is the one of
  // a Chromium browser on the DevTools port, where today's browsers answer.
  const WindowHandle window = FindDocumentWindow(sys_.windows, kInternetExplorerPath);
  const auto document = window
                            ? sys_.documents.FromWindow(window)
                            : sys_.documents.FromDevTools(p_.options_.devToolsPort, p_.browserTab_);
  if (document) WaitPageComplete(*document, sys_.clock, p_.playing_);
}

std::unique_ptr<PageDocument> LineRunner::PageDocumentOf(std::span<const std::string> path) {
  if (path.empty()) return nullptr;
  const int port = p_.options_.devToolsPort;
  // A Chromium page is the tab this play's last browser line opened, or
  // without one the tab the browser was last used in.
  if (basic::LCase(basic::Trim(path.front())) == kChromePathKeyword)
    return sys_.documents.FromDevTools(port, p_.browserTab_);
  const WindowPathMatch match = WalkWindowPath(sys_.windows, path);
  if (!match.window) return nullptr;
  if (sys_.windows.ClassName(match.topLevel) == kChromiumFrameClass)
    return sys_.documents.FromDevTools(port, p_.browserTab_);
  return sys_.documents.FromWindow(match.window);
}

}  // namespace kx
