#pragma once
// The one seam between the core's UTF-8 text and the system's UTF-16 text.
#include <string>
#include <string_view>

namespace kx::win32 {

std::wstring Widen(std::string_view utf8);
std::string Narrow(std::wstring_view utf16);

}  // namespace kx::win32
