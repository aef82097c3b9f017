#include "input/input_queue.h"

#include <algorithm>

namespace kx {

void InputQueue::QueueKey(int code, bool up) {
  keys_.push_back({static_cast<std::uint16_t>(code), up});
}

void InputQueue::QueueUnicode(char32_t ch) {
  constexpr char32_t kFirstSupplementary = 0x10000;
  char16_t units[2] = {static_cast<char16_t>(ch), 0};
  int count = 1;
  if (ch >= kFirstSupplementary) {
    units[0] = static_cast<char16_t>(0xD800 + ((ch - kFirstSupplementary) >> 10));
    units[1] = static_cast<char16_t>(0xDC00 + ((ch - kFirstSupplementary) & 0x3FF));
    count = 2;
  }
  for (int i = 0; i < count; ++i) keys_.push_back({0, false, units[i]});
  for (int i = 0; i < count; ++i) keys_.push_back({0, true, units[i]});
}

bool InputQueue::FlushKeys() {
  if (keys_.empty()) return false;
  const std::size_t taken = port_.SendKeys(keys_);
  held_.Note(std::span(keys_).first(std::min(taken, keys_.size())));
  if (taken < keys_.size()) blocked_ = true;
  keys_.clear();
  return taken > 0;
}

bool InputQueue::PressChord(int a, int b, int c) {
  const int codes[] = {a, b, c};
  int n = 0;
  while (n < 3 && codes[n] != 0) ++n;
  for (int i = 0; i < n; ++i) QueueKey(codes[i], false);
  for (int i = n - 1; i >= 0; --i) QueueKey(codes[i], true);
  return FlushKeys();
}

void InputQueue::QueueMouse(int dx, int dy, std::uint32_t buttonFlags, bool absolute) {
  // Button events are relative moves of (dx, dy) carrying the button flag.
  mouse_.push_back({dx, dy, buttonFlags | kMouseMove | (absolute ? kMouseAbsolute : 0u)});
}

bool InputQueue::FlushMouse() {
  if (mouse_.empty()) return false;
  const std::size_t taken = port_.SendMouse(mouse_);
  held_.Note(std::span(mouse_).first(std::min(taken, mouse_.size())));
  if (taken < mouse_.size()) blocked_ = true;
  mouse_.clear();
  return taken > 0;
}

void InputQueue::ReleaseHeld() {
  keys_.clear();
  mouse_.clear();
  for (const KeyRecord& up : held_.KeyReleases()) keys_.push_back(up);
  for (const std::uint32_t up : held_.ButtonReleases()) QueueMouse(0, 0, up);
  FlushKeys();
  FlushMouse();
  // What the system refused to release is not retried: it was not ours to
  // hold any more, or the input is blocked for good.
  held_.Clear();
}

}  // namespace kx
