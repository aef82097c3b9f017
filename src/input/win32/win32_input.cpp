#include "input/win32/win32_input.h"

#include <optional>

namespace kx::win32 {

namespace {
constexpr UINT kJapaneseAnsiCodePage = 932;
}

INPUT MakeKeyInput(const KeyRecord& key) {
  INPUT in{};
  in.type = INPUT_KEYBOARD;
  if (key.unicode != 0) {
    // A character no key of the layout types: the system hands it to the
    // focused window as VK_PACKET.
    in.ki.wScan = static_cast<WORD>(key.unicode);
    in.ki.dwFlags = KEYEVENTF_UNICODE | (key.up ? KEYEVENTF_KEYUP : 0u);
    return in;
  }
  in.ki.wVk = key.vk;
  in.ki.wScan = static_cast<WORD>(::MapVirtualKeyA(key.vk, 0));
  // Every key goes out as an extended key, letters and digits too: played
  // macros depend on it (the numeric-pad keys among others).
  in.ki.dwFlags = KEYEVENTF_EXTENDEDKEY | (key.up ? KEYEVENTF_KEYUP : 0u);
  return in;
}

INPUT MakeMouseInput(const MouseRecord& record) {
  INPUT in{};
  in.type = INPUT_MOUSE;
  in.mi.dx = record.dx;
  in.mi.dy = record.dy;
  in.mi.dwFlags = record.flags;
  return in;
}

std::optional<char> AnsiByte(char32_t ch) {
  wchar_t utf16[2];
  int units = 1;
  if (ch >= 0x110000 || (ch >= 0xD800 && ch <= 0xDFFF)) return std::nullopt;
  if (ch >= 0x10000) {
    utf16[0] = static_cast<wchar_t>(0xD800 + ((ch - 0x10000) >> 10));
    utf16[1] = static_cast<wchar_t>(0xDC00 + ((ch - 0x10000) & 0x3FF));
    units = 2;
  } else {
    utf16[0] = static_cast<wchar_t>(ch);
  }
  char bytes[4] = {};
  BOOL usedDefault = FALSE;
  const int n = ::WideCharToMultiByte(kJapaneseAnsiCodePage, WC_NO_BEST_FIT_CHARS, utf16, units,
                                      bytes, sizeof bytes, nullptr, &usedDefault);
  if (n != 1 || usedDefault) return std::nullopt;
  return bytes[0];
}

std::size_t Win32Input::Send(std::vector<INPUT>& inputs) {
  if (inputs.empty()) return 0;
  return ::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

std::size_t Win32Input::SendKeys(std::span<const KeyRecord> keys) {
  std::vector<INPUT> inputs;
  inputs.reserve(keys.size());
  for (const auto& k : keys) inputs.push_back(MakeKeyInput(k));
  return Send(inputs);
}

std::size_t Win32Input::SendMouse(std::span<const MouseRecord> records) {
  std::vector<INPUT> inputs;
  inputs.reserve(records.size());
  for (const auto& r : records) inputs.push_back(MakeMouseInput(r));
  return Send(inputs);
}

void Win32Input::Wheel(int delta) {
  ::mouse_event(MOUSEEVENTF_WHEEL, 0, 0, static_cast<DWORD>(delta), 0);
}

void Win32Input::SetCursorPos(Point screen) {
  ::SetCursorPos(screen.x, screen.y);
}

Point Win32Input::GetCursorPos() {
  POINT p{};
  ::GetCursorPos(&p);
  return {p.x, p.y};
}

std::int16_t Win32Input::GetKeyState(int vk) {
  return ::GetKeyState(vk);
}

bool Win32Input::IsKeyDown(int vk) {
  return ::GetAsyncKeyState(vk) < 0;
}

std::uint32_t Win32Input::LastInputTick() {
  LASTINPUTINFO info{sizeof info, 0};
  ::GetLastInputInfo(&info);
  return info.dwTime;
}

std::int16_t Win32Input::VkKeyScan(char32_t ch) {
  const auto b = AnsiByte(ch);
  if (!b) return -1;
  return ::VkKeyScanExA(*b, ::GetKeyboardLayout(0));
}

bool Win32Input::IsCharUpper(char32_t ch) {
  const auto b = AnsiByte(ch);
  return b && ::IsCharUpperA(*b);
}

}  // namespace kx::win32
