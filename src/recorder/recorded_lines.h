#pragma once
// What both recorders share: the keys never recorded, and the text of the
// lines they write, so that sampled and hook-driven recordings read alike.
#include <cstdint>
#include <string>
#include <string_view>

#include "sys/geometry.h"

namespace kx {

inline constexpr char kLineEnd[] = "\r\n";

bool IsMouseButton(int vk);
// The generic modifiers (their left and right keys are recorded instead)
// and the input-method keys.
bool IsNeverRecorded(int vk);
// LCtrl, RCtrl, LShift, RShift, LAlt, RAlt: written down and up.
bool IsTrackedModifier(int vk);
// "LCtrl Up" and the like; empty for any other key.
std::string_view ModifierUpLine(int vk);

// "LMouse Down (x,y)", or "LMouCl Down (x,y)" for client coordinates.
std::string ButtonLine(int vk, bool down, bool client, Point at);
// "MousePos(x,y)", or "MouClPos(x,y)" for client coordinates.
std::string MoveLine(bool client, Point at);
std::string WheelLine(int delta);

// A line with the wait before it when `Time` asks for one: a wait line of
// the elapsed milliseconds comes first when there were more than 9.
std::string TimedLine(std::string_view line, bool time, std::int64_t elapsedMs);

}  // namespace kx
