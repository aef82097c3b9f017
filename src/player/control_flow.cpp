// Partial loops, goto, pause and the random value.
#include <limits>

#include "player/line_runner.h"
#include "util/basic_text.h"

namespace kx {

void LineRunner::PartialLoop(std::string_view key, std::string_view argument) {
  auto& loops = p_.loops_;
  if (key == "</r>") {
    if (loops.empty()) return;
    if (loops.back().remaining > 0) {
      --loops.back().remaining;
      p_.currentLine_ = loops.back().openLine;
    } else {
      loops.pop_back();
    }
    return;
  }
  // The count is the text up to the closing ">".
  const auto inner = basic::DropLast(argument);
  if (!inner) throw ScriptFailure{};
  const std::string_view times = basic::Trim(*inner);
  if (times.empty()) {
    // "<r>" repeats until the play is stopped.
    loops.push_back({std::numeric_limits<std::int32_t>::max(), p_.currentLine_});
    return;
  }
  const auto n = basic::ToDouble(times);
  if (!n) return;  // a non-numeric count does nothing
  if (*n > 0) {
    const auto count = basic::ToLong(*n);
    if (!count) throw ScriptFailure{};
    loops.push_back({*count - 1, p_.currentLine_});
    return;
  }
  // A count of 0 or less skips to the first "</r>" line, whatever loop it
  // closes; only blanks are trimmed here, so a tab-indented "</r>" is passed.
  const auto last = static_cast<std::int32_t>(lines_.size()) - 1;
  while (p_.currentLine_ < last) {
    ++p_.currentLine_;
    if (basic::LCase(basic::Trim(lines_[static_cast<size_t>(p_.currentLine_)])) == "</r>") return;
  }
}

void LineRunner::Goto(std::string_view argument) {
  const auto n = basic::ToLong(argument);
  if (!n) throw ScriptFailure{};
  // The loop's own step brings the index to line n, counted from 1. No bounds
  // are checked here: a bad target fails when the next line is read.
  const std::int64_t target = static_cast<std::int64_t>(*n) - 2;
  if (target < std::numeric_limits<std::int32_t>::min()) throw ScriptFailure{};
  p_.currentLine_ = static_cast<std::int32_t>(target);
}

void LineRunner::Pause() {
  p_.HandleHotkey(kHotkeyPause);
}

void LineRunner::Rand(std::string_view argument) {
  const auto n = basic::ToDouble(argument);
  if (!n) return;
  sys_.random.Randomize();
  const auto scaled = basic::ToLong(sys_.random.Next() * *n);
  const auto divisor = basic::ToLong(*n);
  if (!scaled || !divisor || *divisor == 0) throw ScriptFailure{};  // n = 0 divides by zero
  p_.currentValue_ = CurrentValue::Long(*scaled % *divisor + 1);
}

}  // namespace kx
