#pragma once
// Synthetic input through SendInput and mouse_event, and the keyboard layout
// questions of the character-typing routine.
#include <optional>
#include <vector>

#include "input/input_port.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

// The keyboard record as it is sent: every key marked extended, the scan code
// from the layout.
INPUT MakeKeyInput(const KeyRecord& key);
INPUT MakeMouseInput(const MouseRecord& record);
// The character in the Japanese ANSI code page (932), when it is one byte.
std::optional<char> AnsiByte(char32_t ch);

class Win32Input final : public InputPort {
 public:
  std::size_t SendKeys(std::span<const KeyRecord> keys) override;
  std::size_t SendMouse(std::span<const MouseRecord> records) override;
  void Wheel(int delta) override;
  void SetCursorPos(Point screen) override;
  Point GetCursorPos() override;
  std::int16_t GetKeyState(int vk) override;
  bool IsKeyDown(int vk) override;
  std::uint32_t LastInputTick() override;
  std::int16_t VkKeyScan(char32_t ch) override;
  bool IsCharUpper(char32_t ch) override;

 private:
  std::size_t Send(std::vector<INPUT>& inputs);
};

}  // namespace kx::win32
