#pragma once
// What a batch of synthesized input left held: every key and mouse button
// pressed and not yet released, so that they can all be let go when a play
// is cut short and nothing stays down behind the user's back.
#include <cstdint>
#include <span>
#include <vector>

#include "input/input_port.h"

namespace kx {

class KeyLedger {
 public:
  // The records the system took, in the order it took them.
  void Note(std::span<const KeyRecord> sent);
  void Note(std::span<const MouseRecord> sent);

  // The key-up records of the held keys, the last pressed first.
  std::vector<KeyRecord> KeyReleases() const;
  // The button-up flags of the held mouse buttons, left, right, middle.
  std::vector<std::uint32_t> ButtonReleases() const;
  bool Empty() const { return keys_.empty() && buttons_ == 0; }
  void Clear();

 private:
  std::vector<std::uint16_t> keys_;  // held keys, in the order pressed
  std::uint32_t buttons_ = 0;        // down flags of the held buttons
};

}  // namespace kx
