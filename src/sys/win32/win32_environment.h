#pragma once
// The process environment and command line, and the BASIC random generator.
#include <cstdint>

#include "sys/environment_port.h"

namespace kx::win32 {

class Win32Environment final : public EnvironmentPort {
 public:
  std::string Variable(std::string_view name) override;
  std::string VariableAt(int index) override;
  // The arguments after the program's own name.
  std::string CommandLine() override;
};

// Skips the program name at the start of a Windows command line, as the
// system's own parsing does (quoted or up to the first blank), and the blanks
// after it.
std::wstring ArgumentsOf(std::wstring_view commandLine);

// The classic BASIC generator: a 24-bit linear congruential sequence,
// reseeded from the time of day.
class Win32Random final : public RandomPort {
 public:
  void Randomize() override;
  double Next() override;

 private:
  std::uint32_t seed_ = 0x50000;
};

}  // namespace kx::win32
