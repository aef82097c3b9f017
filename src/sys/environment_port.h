#pragma once
// The process environment, the command line and the random generator.
#include <optional>
#include <string>
#include <string_view>

namespace kx {

class EnvironmentPort {
 public:
  virtual ~EnvironmentPort() = default;
  virtual std::string Variable(std::string_view name) = 0;
  // "NAME=value" of the n-th variable, counted from 1; empty past the end.
  virtual std::string VariableAt(int index) = 0;
  // The arguments of the program's command line, as one text.
  virtual std::string CommandLine() = 0;
};

class RandomPort {
 public:
  virtual ~RandomPort() = default;
  // Reseeds the generator from the clock.
  virtual void Randomize() = 0;
  // The next number in [0, 1).
  virtual double Next() = 0;
};

}  // namespace kx
