#pragma once
// Synthetic keyboard and mouse input, and what the input code asks of the
// keyboard layout.
#include <cstddef>
#include <cstdint>
#include <span>

#include "sys/geometry.h"

namespace kx {

// One keyboard record of a batch. The system side fills the scan code and
// marks every key extended.
struct KeyRecord {
  std::uint16_t vk = 0;
  bool up = false;
  // A UTF-16 code unit sent as a Unicode key event instead of a virtual key
  // (vk is then 0); 0 for an ordinary key.
  char16_t unicode = 0;
  friend bool operator==(const KeyRecord&, const KeyRecord&) = default;
};

// Mouse button flags of a mouse record.
enum MouseFlag : std::uint32_t {
  kMouseMove = 0x1,
  kMouseLeftDown = 0x2,
  kMouseLeftUp = 0x4,
  kMouseRightDown = 0x8,
  kMouseRightUp = 0x10,
  kMouseMiddleDown = 0x20,
  kMouseMiddleUp = 0x40,
  kMouseAbsolute = 0x8000,
};

struct MouseRecord {
  int dx = 0;
  int dy = 0;
  std::uint32_t flags = 0;
};

class InputPort {
 public:
  virtual ~InputPort() = default;
  // One SendInput call each; the number of events the system took. Fewer
  // than were sent means the input was blocked: a window of higher integrity
  // has the focus, or the secure desktop is shown.
  virtual std::size_t SendKeys(std::span<const KeyRecord> keys) = 0;
  virtual std::size_t SendMouse(std::span<const MouseRecord> records) = 0;
  // One wheel event (mouse_event with MOUSEEVENTF_WHEEL).
  virtual void Wheel(int delta) = 0;
  virtual void SetCursorPos(Point screen) = 0;
  virtual Point GetCursorPos() = 0;
  // GetKeyState: bit 0 is the toggle state, the sign bit "down".
  virtual std::int16_t GetKeyState(int vk) = 0;
  // GetAsyncKeyState's sign bit: the key or mouse button is physically down
  // now, whatever thread's input state. The recorder and rapid fire sample it.
  virtual bool IsKeyDown(int vk) = 0;
  // GetLastInputInfo: the millisecond tick of the last keyboard or mouse
  // input of the session. While it stands still no key or button changed.
  virtual std::uint32_t LastInputTick() = 0;
  // VkKeyScanExA on the default layout for the character's ANSI code: the
  // virtual key in the low byte, the shift state in the high byte; -1 when no
  // key produces it or the character is outside the ANSI code page.
  virtual std::int16_t VkKeyScan(char32_t ch) = 0;
  // IsCharUpperA on the character's ANSI code.
  virtual bool IsCharUpper(char32_t ch) = 0;
};

}  // namespace kx
