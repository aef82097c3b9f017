#pragma once
// The breakpoints of the editor's text: line indexes (from 0) that stay on
// their line while the text is edited. The text is compared with the one
// seen last; lines inserted or deleted above a breakpoint move it with its
// line, and a breakpoint on a deleted line goes.
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace kx {

class Breakpoints {
 public:
  // Sets or removes the breakpoint on line `index` of `text` (the editor's
  // text as it is now); true when it is set. A line past the text's end is
  // refused.
  bool Toggle(int index, std::string_view text);
  void Clear();
  bool Has(int index) const { return lines_.count(index) > 0; }
  bool Empty() const { return lines_.empty(); }
  const std::set<int>& Lines() const { return lines_; }

  // The editor's text changed. Only the changed run of lines is taken as
  // replaced: the lines before it and the lines after it are the old ones,
  // the latter moved by the difference in length.
  void TextChanged(std::string_view text);

 private:
  std::set<int> lines_;
  // The text's lines at the last change, kept while there are breakpoints.
  std::vector<std::string> seen_;
};

}  // namespace kx
