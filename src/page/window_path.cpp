#include "page/window_path.h"

#include <array>
#include <optional>

#include "util/basic_text.h"

namespace kx {

namespace {

// Browser keywords of the first element: the child chain below the browser's
// frame that leads to its document window, or the frame's own class.
struct BrowserKeyword {
  std::string_view keyword;        // lower case
  std::string_view topLevelClass;  // "" : any top-level window holding the chain
  std::array<std::string_view, 5> chain;
};

constexpr BrowserKeyword kBrowserKeywords[] = {
    {"sleipnir",
     "",
     {"MDIClient", "AfxFrameOrView42", "Shell Embedding", "Shell DocObject View",
      "Internet Explorer_Server"}},
    {"sleipnir2",
     "",
     {"MDIClient", "IEBrowserFrame", "Shell Embedding", "Shell DocObject View",
      "Internet Explorer_Server"}},
    {"firefox", "MozillaWindowClass", {}},
};

// One element split into its class, its title (after the first "+") and its
// count (after the last "*" of the class part; 1 when there is none).
struct PathElement {
  std::string className;
  std::optional<std::string> title;
  std::optional<long> count;  // none: the count is not a number
};

PathElement ParseElement(std::string_view element) {
  PathElement out;
  std::string_view classPart = element;
  if (const auto plus = element.find('+'); plus != std::string_view::npos) {
    classPart = element.substr(0, plus);
    out.title = std::string(element.substr(plus + 1));
  }
  out.count = 1;
  if (const auto star = classPart.rfind('*'); star != std::string_view::npos) {
    const std::string_view n = basic::Trim(classPart.substr(star + 1));
    classPart = classPart.substr(0, star);
    const auto value = basic::IsNumeric(n) ? basic::ToDouble(n) : std::nullopt;
    if (value && *value >= 1 && *value <= 1e6)
      out.count = static_cast<long>(*value);
    else
      out.count = std::nullopt;
  }
  out.className = std::string(classPart);
  return out;
}

// The n-th window of a class among the children of `parent` (0: among the
// top-level windows), found by repeating the search for the next one.
WindowHandle NthOfClass(WindowPort& windows, WindowHandle parent, const PathElement& e) {
  if (!e.count || e.className.empty()) return 0;
  WindowHandle found = 0;
  for (long i = 0; i < *e.count; ++i) {
    found = windows.FindChild(parent, found, e.className, std::nullopt);
    if (!found) return 0;
  }
  return found;
}

WindowHandle FindTopLevel(WindowPort& windows, const PathElement& e) {
  if (e.title && !e.className.empty())
    if (WindowHandle w = windows.FindChild(0, 0, e.className, *e.title)) return w;
  // No title, or no window of that class has it: the n-th of the class.
  return NthOfClass(windows, 0, e);
}

WindowHandle FindChildStep(WindowPort& windows, WindowHandle parent, const PathElement& e) {
  if (e.className.empty()) return 0;
  if (e.title) return windows.FindChild(parent, 0, e.className, *e.title);
  return NthOfClass(windows, parent, e);
}

// Follows a keyword's chain of first children of each class below `top`.
WindowHandle FollowChain(WindowPort& windows, WindowHandle top, const BrowserKeyword& keyword) {
  WindowHandle w = top;
  for (std::string_view cls : keyword.chain) {
    if (cls.empty()) break;
    w = windows.FindChild(w, 0, cls, std::nullopt);
    if (!w) return 0;
  }
  return w;
}

// A keyword names the first top-level window (of its class, when it has one)
// under which its chain leads to a document window.
WindowPathMatch FindByKeyword(WindowPort& windows, const BrowserKeyword& keyword) {
  std::optional<std::string_view> cls;
  if (!keyword.topLevelClass.empty()) cls = keyword.topLevelClass;
  for (WindowHandle top = windows.FindChild(0, 0, cls, std::nullopt); top;
       top = windows.FindChild(0, top, cls, std::nullopt)) {
    if (WindowHandle w = FollowChain(windows, top, keyword)) return {top, w};
  }
  return {};
}

const BrowserKeyword* KeywordOf(std::string_view element) {
  const std::string lower = basic::LCase(basic::Trim(element));
  for (const auto& k : kBrowserKeywords)
    if (lower == k.keyword) return &k;
  return nullptr;
}

}  // namespace

WindowPathMatch WalkWindowPath(WindowPort& windows, std::span<const std::string> elements) {
  if (elements.empty()) return {};
  WindowPathMatch match;
  if (const BrowserKeyword* keyword = KeywordOf(elements.front()))
    match = FindByKeyword(windows, *keyword);
  else
    match.topLevel = match.window = FindTopLevel(windows, ParseElement(elements.front()));
  if (!match.window) return {};
  for (const std::string& element : elements.subspan(1)) {
    match.window = FindChildStep(windows, match.window, ParseElement(element));
    if (!match.window) return {};
  }
  return match;
}

WindowHandle FindDocumentWindow(WindowPort& windows, std::span<const std::string> elements) {
  return WalkWindowPath(windows, elements).window;
}

WindowHandle FindDocumentWindow(WindowPort& windows, std::string_view path) {
  const std::vector<std::string> elements = basic::Split(path, ",");
  return FindDocumentWindow(windows, elements);
}

}  // namespace kx
