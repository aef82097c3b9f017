#include "sys/win32/win32_environment.h"

#include <string>

#include "sys/win32/wide.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

std::string Win32Environment::Variable(std::string_view name) {
  const std::wstring wname = Widen(name);
  const DWORD n = ::GetEnvironmentVariableW(wname.c_str(), nullptr, 0);
  if (n == 0) return {};
  std::wstring value(n, L'\0');
  const DWORD got = ::GetEnvironmentVariableW(wname.c_str(), value.data(), n);
  value.resize(got < n ? got : 0);
  return Narrow(value);
}

std::string Win32Environment::VariableAt(int index) {
  if (index < 1) return {};
  wchar_t* block = ::GetEnvironmentStringsW();
  if (!block) return {};
  std::string result;
  int i = 0;
  for (const wchar_t* p = block; *p; p += std::wcslen(p) + 1) {
    // Entries for the current folders of drives ("=C:=C:\") are hidden.
    if (*p == L'=') continue;
    if (++i == index) {
      result = Narrow(p);
      break;
    }
  }
  ::FreeEnvironmentStringsW(block);
  return result;
}

std::wstring ArgumentsOf(std::wstring_view line) {
  size_t i = 0;
  if (!line.empty() && line[0] == L'"') {
    const size_t close = line.find(L'"', 1);
    i = close == std::wstring_view::npos ? line.size() : close + 1;
  } else {
    while (i < line.size() && line[i] != L' ' && line[i] != L'\t') ++i;
  }
  while (i < line.size() && (line[i] == L' ' || line[i] == L'\t')) ++i;
  return std::wstring(line.substr(i));
}

std::string Win32Environment::CommandLine() {
  return Narrow(ArgumentsOf(::GetCommandLineW()));
}

void Win32Random::Randomize() {
  SYSTEMTIME t{};
  ::GetLocalTime(&t);
  const auto seconds = static_cast<std::uint32_t>(t.wHour * 3600 + t.wMinute * 60 + t.wSecond);
  seed_ = ((seconds * 1000u + t.wMilliseconds) << 8) & 0xFFFFFFu;
}

double Win32Random::Next() {
  seed_ = (seed_ * 0x43FD43FDu + 0xC39EC3u) & 0xFFFFFFu;
  return static_cast<double>(seed_) / 16777216.0;
}

}  // namespace kx::win32
