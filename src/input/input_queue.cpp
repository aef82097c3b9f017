#include "input/input_queue.h"

namespace kx {

void InputQueue::QueueKey(int code, bool up) {
  keys_.push_back({static_cast<std::uint16_t>(code), up});
}

bool InputQueue::FlushKeys() {
  const bool sent = !keys_.empty() && port_.SendKeys(keys_);
  keys_.clear();
  return sent;
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
  const bool sent = !mouse_.empty() && port_.SendMouse(mouse_);
  mouse_.clear();
  return sent;
}

}  // namespace kx
