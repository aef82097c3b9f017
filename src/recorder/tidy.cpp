// Only lines of the recorder's own forms are tidied: waits, pointer lines and
// the key words a "key" line can type. Every other line is kept as written
// and ends a stretch; stretches are tidied one by one, so nothing moves across
// a comment, a command or a block line.
#include "recorder/tidy.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "input/key_codes.h"
#include "input/key_names.h"
#include "player/macro_line.h"
#include "player/play_speed.h"
#include "player/wait.h"
#include "util/basic_text.h"

namespace kx {

namespace {

// Keys typed at most this far apart are one piece of typing. After a longer
// gap the user was most likely waiting for the program, so the keys that
// follow stay after that wait.
constexpr std::int64_t kTypingGapMs = 1000;
// A "key" line is written with printable ASCII characters only.
constexpr char kFirstTyped = ' ';
constexpr char kLastTyped = '~';
// The forms whose variables could make a goto or a switch of a line.
constexpr std::string_view kFlowWords[] = {"goto", "<switch", "</switch>"};

enum class Kind { kOther, kWait, kPointer, kShiftDown, kShiftUp, kKeyWord };

struct LineInfo {
  Kind kind = Kind::kOther;
  std::int64_t waitMs = 0;  // kWait: its length at normal speed
  KeyCode code = 0;         // kKeyWord: the key it presses and releases
};

// The character a "key" line types as each key, without and with Shift.
class TypedChars {
 public:
  explicit TypedChars(InputPort& layout) {
    for (char ch = kFirstTyped; ch <= kLastTyped; ++ch) {
      // "#" may begin a variable's name and be replaced before it is typed.
      if (ch == '#') continue;
      const CharKey key = KeyCodeFromChar(static_cast<char32_t>(ch), layout);
      if (key.code < 1 || key.code > kVkLast) continue;
      char& slot = (key.shift ? shifted_ : plain_)[static_cast<std::size_t>(key.code)];
      if (slot == 0) slot = ch;
    }
  }
  // 0 when no character types the key that way.
  char Plain(KeyCode code) const { return plain_[static_cast<std::size_t>(code)]; }
  char Shifted(KeyCode code) const { return shifted_[static_cast<std::size_t>(code)]; }

 private:
  std::array<char, kVkLast + 1> plain_{};
  std::array<char, kVkLast + 1> shifted_{};
};

bool IsInteger(std::string_view s) {
  constexpr std::size_t kMaxDigits = 9;
  if (s.starts_with('-')) s.remove_prefix(1);
  if (s.empty() || s.size() > kMaxDigits) return false;
  return std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

// "mousepos(x,y)" and "mouclpos(x,y)" as the recorder writes them: the pointer
// goes to a place of its own, wherever it was before.
bool IsRecordedPointer(std::string_view key) {
  constexpr std::size_t kWordLength = 9;  // "mousepos("
  if (!key.starts_with("mousepos(") && !key.starts_with("mouclpos(")) return false;
  if (!key.ends_with(')')) return false;
  const std::string_view inner = key.substr(kWordLength, key.size() - kWordLength - 1);
  const auto comma = inner.find(',');
  return comma != std::string_view::npos && IsInteger(inner.substr(0, comma)) &&
         IsInteger(inner.substr(comma + 1));
}

// True when the line, once its variables are replaced, may be a goto or open
// or close a switch: the macro's jumps and skipped lines are then not known.
bool MayBecomeFlow(std::string_view raw) {
  if (IsAssignment(raw)) return false;
  const auto hash = raw.find('#');
  if (hash == std::string_view::npos) return false;
  const std::string head = basic::LCase(raw.substr(0, hash));
  for (std::string_view word : kFlowWords)
    if (word.starts_with(head)) return true;
  return head.starts_with("goto");
}

// The index of the first line that may change: none before the last line a
// goto jumps to, so that every target keeps its number. Nothing when a jump
// cannot be known or lands outside the macro.
std::optional<std::size_t> FirstChangeable(const std::vector<std::string>& lines, FilePort& files) {
  std::size_t first = 0;
  for (const std::string& line : lines) {
    const std::string_view raw = RawLine(line);
    if (MayBecomeFlow(raw)) return std::nullopt;
    if (raw.find('#') != std::string_view::npos) continue;
    const std::string key = KeyOf(raw);
    if (ClassifyBlock(key) != BlockForm::kNone) continue;
    const ClassifiedLine command = ClassifyLine(raw, key, files);
    if (command.form != LineForm::kGoto) continue;
    const auto target = basic::ToLong(command.argument);
    if (!target || *target < 1 || static_cast<std::size_t>(*target) > lines.size())
      return std::nullopt;
    first = std::max(first, static_cast<std::size_t>(*target) - 1);
  }
  return first;
}

LineInfo Analyse(std::string_view line, InputPort& layout, FilePort& files,
                 const TypedChars& typed) {
  // Tabs: the player strips them from the line it runs but not from the next
  // line it looks at for the line pause. Variables: known only while playing.
  if (line.find('\t') != std::string_view::npos || line.find('#') != std::string_view::npos)
    return {};
  const std::string key = KeyOf(line);
  if (IsWaitKey(key)) return {Kind::kWait, WaitLengthMs(*basic::ToDouble(key))};
  if (ClassifyBlock(key) != BlockForm::kNone) return {};
  const LineForm form = Classify(key, files);
  if (form == LineForm::kPointer && IsRecordedPointer(key)) return {Kind::kPointer};
  if (form != LineForm::kKeyLine || !IsKeyWord(key)) return {};
  const KeyCode code = KeyCodeFromWord(key, layout);
  if (code == kShiftDown) return {Kind::kShiftDown};
  if (code == kShiftUp) return {Kind::kShiftUp};
  // Print Screen is pressed as another key and waits.
  constexpr KeyCode kPrintScreenWord = 42;
  if (code < 1 || code > kVkLast || code == kPrintScreenWord) return {};
  if (typed.Plain(code) == 0 && typed.Shifted(code) == 0) return {};
  return {Kind::kKeyWord, 0, code};
}

std::string WaitLine(std::int64_t ms) {
  // A wait line has at least two characters: "5" would press the key 5.
  return (ms < 10 ? "0" : "") + std::to_string(ms);
}

// One stretch of tidied lines, [first, end). Each line starts at a time on
// the play's timeline: a wait takes its length, and two lines of which
// neither is a wait have a line pause between them. The tidied stretch is a
// list of steps, each a line that starts when the first of the lines it
// stands for started; waits between the steps keep every step at its time
// and the line after the stretch at its own.
class Stretch {
 public:
  Stretch(const std::vector<std::string>& lines, const std::vector<LineInfo>& info,
          std::size_t first, std::size_t end, const TypedChars& typed, FilePort& files,
          const TidyOptions& options)
      : lines_(lines),
        info_(info),
        first_(first),
        end_(end),
        typed_(typed),
        files_(files),
        options_(options) {
    std::int64_t t = 0;
    for (std::size_t i = first_; i < end_; ++i) {
      at_.push_back(t);
      t += info_[i].waitMs;
      if (i + 1 < end_ && !IsWait(i) && !IsWait(i + 1)) t += kLinePauseMs;
    }
    endAt_ = t + (IsWait(end_ - 1) ? 0 : PauseAfter());
    for (std::size_t i = first_; i < end_;) {
      if (IsWait(i))
        ++i;
      else if (info_[i].kind == Kind::kPointer)
        i = PointerPath(i);
      else
        i = Typing(i);
    }
  }

  void Emit(std::vector<std::string>& out, int& dropped) {
    auto wait = [&](std::int64_t ms) {
      if (ms < options_.minWaitMs) {
        ++dropped;
        return;
      }
      out.push_back(WaitLine(ms));
    };
    if (steps_.empty()) {
      wait(endAt_);
      return;
    }
    // The stretch begins as it did, with a wait or not, so that the pause
    // between it and the line before stays as it was.
    if (IsWait(first_))
      wait(steps_.front().at);
    else
      steps_.front().at = 0;
    for (std::size_t s = 0; s < steps_.size(); ++s) {
      out.push_back(steps_[s].text);
      const bool last = s + 1 == steps_.size();
      const std::int64_t gap = (last ? endAt_ : steps_[s + 1].at) - steps_[s].at;
      if (gap != (last ? PauseAfter() : kLinePauseMs)) wait(gap);
    }
  }

 private:
  struct Step {
    std::string text;
    std::int64_t at;
  };
  // One typed character: the lines from `first` to `last`.
  struct Unit {
    std::size_t first;
    std::size_t last;
    char ch;
  };

  bool IsWait(std::size_t i) const { return info_[i].kind == Kind::kWait; }
  std::int64_t At(std::size_t i) const { return at_[i - first_]; }
  // The line pause between the stretch's last line, when it is no wait, and
  // the line after the stretch as written.
  std::int64_t PauseAfter() const {
    return end_ < lines_.size() && !IsWaitKey(KeyOf(lines_[end_])) ? kLinePauseMs : 0;
  }
  std::size_t NextAction(std::size_t i) const {
    for (++i; i < end_ && IsWait(i);) ++i;
    return i;
  }
  bool Close(std::size_t a, std::size_t b) const { return At(b) - At(a) <= kTypingGapMs; }
  void Keep(std::size_t i) { steps_.push_back({lines_[i], At(i)}); }
  void Keep(const Unit& unit) {
    for (std::size_t i = unit.first; i <= unit.last; ++i)
      if (!IsWait(i)) Keep(i);
  }

  // Nothing happens on a pointer's way, so only where it comes to rest
  // matters; it moves there when it came to rest.
  std::size_t PointerPath(std::size_t i) {
    if (options_.keepMoves) {
      Keep(i);
      return i + 1;
    }
    std::size_t last = i;
    for (std::size_t j = NextAction(i); j < end_ && info_[j].kind == Kind::kPointer;
         j = NextAction(j))
      last = j;
    Keep(last);
    return last + 1;
  }

  // A key the layout types as a character, or Shift held around a key that
  // types a character with Shift: the same events as that character of a
  // "key" line.
  std::optional<Unit> UnitAt(std::size_t i) const {
    if (info_[i].kind == Kind::kKeyWord) {
      if (const char ch = typed_.Plain(info_[i].code)) return Unit{i, i, ch};
      return std::nullopt;
    }
    if (info_[i].kind != Kind::kShiftDown) return std::nullopt;
    const std::size_t key = NextAction(i);
    if (key >= end_ || info_[key].kind != Kind::kKeyWord || !Close(i, key)) return std::nullopt;
    const std::size_t up = NextAction(key);
    if (up >= end_ || info_[up].kind != Kind::kShiftUp || !Close(key, up)) return std::nullopt;
    if (const char ch = typed_.Shifted(info_[key].code)) return Unit{i, up, ch};
    return std::nullopt;
  }

  // Characters typed one after another become one "key" line, typed when the
  // first of them was.
  std::size_t Typing(std::size_t i) {
    std::vector<Unit> units;
    for (auto unit = UnitAt(i); unit;) {
      units.push_back(*unit);
      const std::size_t next = NextAction(unit->last);
      if (next >= end_ || !Close(unit->last, next)) break;
      unit = UnitAt(next);
    }
    if (units.empty()) {
      Keep(i);
      return i + 1;
    }
    // A "key" line's text is trimmed: blanks at its ends stay lines of their
    // own.
    std::size_t from = 0;
    std::size_t to = units.size();
    while (from < to && units[from].ch == ' ') ++from;
    while (to > from && units[to - 1].ch == ' ') --to;
    for (std::size_t u = 0; u < from; ++u) Keep(units[u]);
    if (from < to) {
      std::string line = "key ";
      for (std::size_t u = from; u < to; ++u) line += units[u].ch;
      const bool fewer = units[to - 1].last > units[from].first;
      if (fewer && Classify(KeyOf(line), files_) == LineForm::kKey) {
        steps_.push_back({line, At(units[from].first)});
      } else {
        for (std::size_t u = from; u < to; ++u) Keep(units[u]);
      }
    }
    for (std::size_t u = to; u < units.size(); ++u) Keep(units[u]);
    return units.back().last + 1;
  }

  const std::vector<std::string>& lines_;
  const std::vector<LineInfo>& info_;
  const std::size_t first_;
  const std::size_t end_;
  const TypedChars& typed_;
  FilePort& files_;
  const TidyOptions& options_;
  std::vector<std::int64_t> at_;
  std::int64_t endAt_ = 0;
  std::vector<Step> steps_;
};

}  // namespace

TidyResult TidyMacro(std::string_view text, InputPort& layout, FilePort& files,
                     const TidyOptions& options) {
  const std::vector<std::string> lines = basic::Split(text, "\r\n");
  const auto first = FirstChangeable(lines, files);
  if (!first) return {std::string(text), 0};
  const TypedChars typed(layout);
  std::vector<LineInfo> info(lines.size());
  int switchDepth = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const BlockForm block = ClassifyBlock(KeyOf(RawLine(lines[i])));
    if (block == BlockForm::kSwitch || block == BlockForm::kSwitchValue) ++switchDepth;
    if (block == BlockForm::kEndSwitch) --switchDepth;
    // The lines of a switch may be skipped, and a skipped wait takes no time:
    // tidied, such lines would not keep their time.
    if (i >= *first && switchDepth < 1 && block == BlockForm::kNone)
      info[i] = Analyse(lines[i], layout, files, typed);
  }

  TidyResult result;
  std::vector<std::string> out;
  for (std::size_t i = 0; i < lines.size();) {
    if (info[i].kind == Kind::kOther) {
      out.push_back(lines[i++]);
      continue;
    }
    std::size_t end = i;
    while (end < lines.size() && info[end].kind != Kind::kOther) ++end;
    Stretch(lines, info, i, end, typed, files, options).Emit(out, result.droppedWaits);
    i = end;
  }
  for (std::size_t i = 0; i < out.size(); ++i) result.text += (i ? "\r\n" : "") + out[i];
  return result;
}

}  // namespace kx
