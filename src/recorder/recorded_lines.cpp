#include "recorder/recorded_lines.h"

#include <algorithm>
#include <iterator>

#include "input/key_codes.h"

namespace kx {

namespace {

// Waits this short are dropped: the timer's own jitter.
constexpr std::int64_t kLongestDroppedWaitMs = 9;

constexpr int kNeverRecorded[] = {16, 17, 18, 240, 242, 245, 246, 251};

struct ModifierKey {
  int vk;
  std::string_view upLine;
};
constexpr ModifierKey kModifiers[] = {
    {162, "LCtrl Up"},  {163, "RCtrl Up"},       {160, "LShift Up"},
    {161, "RShift Up"}, {kVkLeftAlt, "LAlt Up"}, {kVkRightAlt, "RAlt Up"},
};

std::string Coordinates(Point p) {
  return "(" + std::to_string(p.x) + "," + std::to_string(p.y) + ")";
}

}  // namespace

bool IsMouseButton(int vk) {
  return vk == kVkLeftButton || vk == kVkRightButton || vk == kVkMiddleButton;
}

bool IsNeverRecorded(int vk) {
  return std::ranges::find(kNeverRecorded, vk) != std::end(kNeverRecorded);
}

bool IsTrackedModifier(int vk) {
  return !ModifierUpLine(vk).empty();
}

std::string_view ModifierUpLine(int vk) {
  const auto it = std::ranges::find(kModifiers, vk, &ModifierKey::vk);
  return it == std::end(kModifiers) ? std::string_view() : it->upLine;
}

std::string ButtonLine(int vk, bool down, bool client, Point at) {
  const char letter = vk == kVkLeftButton ? 'L' : vk == kVkRightButton ? 'R' : 'M';
  return std::string(1, letter) + (client ? "MouCl" : "Mouse") + (down ? " Down " : " Up ") +
         Coordinates(at);
}

std::string MoveLine(bool client, Point at) {
  return (client ? "MouClPos" : "MousePos") + Coordinates(at);
}

std::string WheelLine(int delta) {
  return "Wheel " + std::to_string(delta);
}

std::string TimedLine(std::string_view line, bool time, std::int64_t elapsedMs) {
  std::string out;
  if (time && elapsedMs > kLongestDroppedWaitMs) out += std::to_string(elapsedMs) + kLineEnd;
  out += line;
  out += kLineEnd;
  return out;
}

}  // namespace kx
