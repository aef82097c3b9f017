#include "input/key_ledger.h"

#include <algorithm>

namespace kx {

namespace {

struct ButtonFlags {
  std::uint32_t down;
  std::uint32_t up;
};
constexpr ButtonFlags kButtons[] = {
    {kMouseLeftDown, kMouseLeftUp},
    {kMouseRightDown, kMouseRightUp},
    {kMouseMiddleDown, kMouseMiddleUp},
};

}  // namespace

void KeyLedger::Note(std::span<const KeyRecord> sent) {
  for (const KeyRecord& k : sent) {
    // Unicode events carry no key that could stay down.
    if (k.vk == 0 || k.unicode != 0) continue;
    const auto it = std::find(keys_.begin(), keys_.end(), k.vk);
    if (k.up) {
      if (it != keys_.end()) keys_.erase(it);
    } else if (it == keys_.end()) {
      keys_.push_back(k.vk);
    }
  }
}

void KeyLedger::Note(std::span<const MouseRecord> sent) {
  // A record may carry a down and an up together; the down comes first.
  for (const MouseRecord& r : sent)
    for (const ButtonFlags& b : kButtons) {
      if (r.flags & b.down) buttons_ |= b.down;
      if (r.flags & b.up) buttons_ &= ~b.down;
    }
}

std::vector<KeyRecord> KeyLedger::KeyReleases() const {
  std::vector<KeyRecord> ups;
  for (auto it = keys_.rbegin(); it != keys_.rend(); ++it) ups.push_back({*it, true});
  return ups;
}

std::vector<std::uint32_t> KeyLedger::ButtonReleases() const {
  std::vector<std::uint32_t> ups;
  for (const ButtonFlags& b : kButtons)
    if (buttons_ & b.down) ups.push_back(b.up);
  return ups;
}

void KeyLedger::Clear() {
  keys_.clear();
  buttons_ = 0;
}

}  // namespace kx
