#pragma once
// The two input queues: keyboard and mouse-button records gathered and sent
// in one batch each, so that a chord or a double click reaches the system in
// one piece and cannot be interleaved with real input.
#include <cstdint>
#include <utility>
#include <vector>

#include "input/input_port.h"
#include "input/key_ledger.h"

namespace kx {

class InputQueue {
 public:
  explicit InputQueue(InputPort& port) : port_(port) {}

  void QueueKey(int code, bool up);
  // Down and up of a character as Unicode key events, one per UTF-16 unit.
  void QueueUnicode(char32_t ch);
  // Sends every queued key record in one batch and empties the queue, also
  // when nothing was sent. True when the system took the events.
  bool FlushKeys();
  // a down, b down, c down, c up, b up, a up, then one flush; a zero code
  // ends the chord.
  bool PressChord(int a, int b = 0, int c = 0);

  void QueueMouse(int dx, int dy, std::uint32_t buttonFlags, bool absolute = false);
  bool FlushMouse();

  // True when a flush since the last call sent more events than the system
  // took; the flag is cleared by asking.
  bool TakeBlocked() { return std::exchange(blocked_, false); }

  // Every key and mouse button this queue sent down and not yet up.
  const KeyLedger& Held() const { return held_; }
  // Lets go of all of them: one batch of key-ups, the last pressed first,
  // then one batch of button-ups; queued records not yet sent are dropped.
  void ReleaseHeld();

 private:
  InputPort& port_;
  std::vector<KeyRecord> keys_;
  std::vector<MouseRecord> mouse_;
  KeyLedger held_;
  bool blocked_ = false;
};

}  // namespace kx
