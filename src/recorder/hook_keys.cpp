#include "recorder/hook_keys.h"

#include <algorithm>

#include "recorder/hook_port.h"

namespace kx {

namespace {

// The keys behind each modifier flag: the generic key and its left and
// right keys (the hook reports the latter, injected input may send either).
struct ModifierKeys {
  int flag;
  int keys[3];
};
constexpr ModifierKeys kModifierKeys[] = {
    {1, {18, 164, 165}},  // Alt
    {2, {17, 162, 163}},  // Ctrl
    {4, {16, 160, 161}},  // Shift
    {8, {91, 92, 91}},    // Win
};

bool InRange(int vk) {
  return vk > 0 && vk < 256;
}

}  // namespace

bool HookKeyState::Take(int vk, int message) {
  if (!InRange(vk)) return false;
  const auto index = static_cast<std::size_t>(vk);
  if (message == kMsgKeyDown || message == kMsgSysKeyDown) {
    const bool press = !down_[index];
    down_[index] = true;
    return press;
  }
  if (message == kMsgKeyUp || message == kMsgSysKeyUp) down_[index] = false;
  return false;
}

bool HookKeyState::Down(int vk) const {
  return InRange(vk) && down_[static_cast<std::size_t>(vk)];
}

void HookKeyState::Release(int vk) {
  if (InRange(vk)) down_[static_cast<std::size_t>(vk)] = false;
}

std::vector<int> HookKeyState::Held() const {
  std::vector<int> held;
  if (down_.none()) return held;
  for (int vk = 1; vk < static_cast<int>(down_.size()); ++vk)
    if (Down(vk)) held.push_back(vk);
  return held;
}

int HookKeyState::Modifiers() const {
  int flags = 0;
  for (const ModifierKeys& m : kModifierKeys)
    if (std::ranges::any_of(m.keys, [&](int vk) { return Down(vk); })) flags |= m.flag;
  return flags;
}

bool IsHotkeyPress(std::span<const HotkeyCombo> hotkeys, int modifiers, int vk) {
  return std::ranges::any_of(hotkeys, [&](const HotkeyCombo& h) {
    return h.vk != 0 && h.vk == vk && h.modifiers == modifiers;
  });
}

}  // namespace kx
