#include "player/breakpoints.h"

#include <algorithm>

#include "util/basic_text.h"

namespace kx {

bool Breakpoints::Toggle(int index, std::string_view text) {
  // With no breakpoint the text is not followed; it is taken up again here.
  if (lines_.empty()) seen_ = basic::Split(text, "\r\n");
  if (index < 0 || index >= static_cast<int>(seen_.size())) return false;
  if (lines_.erase(index) > 0) return false;
  lines_.insert(index);
  return true;
}

void Breakpoints::Clear() {
  lines_.clear();
  seen_.clear();
}

void Breakpoints::TextChanged(std::string_view text) {
  if (lines_.empty()) {
    seen_.clear();
    return;
  }
  std::vector<std::string> now = basic::Split(text, "\r\n");
  const std::size_t shorter = std::min(seen_.size(), now.size());
  std::size_t before = 0;
  while (before < shorter && seen_[before] == now[before]) ++before;
  std::size_t after = 0;
  while (after < shorter - before && seen_[seen_.size() - 1 - after] == now[now.size() - 1 - after])
    ++after;
  // Old lines [before, oldEnd) became new lines [before, newEnd).
  const int first = static_cast<int>(before);
  const int oldEnd = static_cast<int>(seen_.size() - after);
  const int newEnd = static_cast<int>(now.size() - after);
  std::set<int> moved;
  for (const int line : lines_) {
    if (line < first)
      moved.insert(line);
    else if (line >= oldEnd)
      moved.insert(line + newEnd - oldEnd);
    else if (line < newEnd)
      moved.insert(line);  // an edited line keeps its breakpoint
  }
  lines_ = std::move(moved);
  seen_ = std::move(now);
  if (lines_.empty()) seen_.clear();
}

}  // namespace kx
