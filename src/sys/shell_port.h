#pragma once
// Opening documents, programs and addresses with the shell.
#include <string_view>

namespace kx {

class ShellPort {
 public:
  virtual ~ShellPort() = default;
  // The shell's execute operation with the default verb, shown normally,
  // without error dialogs and with environment variables expanded. When a
  // process is started, waits until it is idle for input. False when the
  // shell reports failure (a result code below 32).
  virtual bool Open(std::string_view file, std::string_view workingFolder) = 0;
};

}  // namespace kx
