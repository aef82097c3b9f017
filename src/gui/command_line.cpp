#include "gui/command_line.h"

#include <algorithm>

namespace kx {

namespace {

std::vector<std::string> SplitAt(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  size_t start = 0;
  for (;;) {
    const size_t at = text.find(separator, start);
    if (at == std::string_view::npos) break;
    pieces.emplace_back(text.substr(start, at - start));
    start = at + separator.size();
  }
  pieces.emplace_back(text.substr(start));
  return pieces;
}

std::string Lower(std::string_view s) {
  std::string out(s);
  std::transform(out.begin(), out.end(), out.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return out;
}

}  // namespace

std::vector<std::string> SplitCommandLine(std::string_view line) {
  if (line.empty()) return {};
  if (line.front() != '"') return SplitAt(line, " ");
  // The quoted form keeps blanks inside each path: only quote-blank(-blank)-
  // quote separates.
  const std::string_view inner = line.size() >= 2 ? line.substr(1, line.size() - 2) : "";
  auto pieces = SplitAt(inner, "\"  \"");
  if (pieces.size() == 1) pieces = SplitAt(inner, "\" \"");
  return pieces;
}

std::optional<std::string> FirstExistingFile(const std::vector<std::string>& tokens,
                                             FilePort& files) {
  for (const auto& t : tokens)
    if (!t.empty() && files.IsFile(t)) return t;
  return std::nullopt;
}

StartSwitches ParseSwitches(const std::vector<std::string>& tokens) {
  StartSwitches s;
  for (const auto& t : tokens) {
    const std::string word = Lower(t);
    if (word == "/m") s.minimized = true;
    if (word == "/h") s.hidden = true;
    if (word == "/rec") s.record = true;
  }
  return s;
}

}  // namespace kx
