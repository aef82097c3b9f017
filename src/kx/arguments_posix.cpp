#include "kx/arguments.h"

namespace kx::cli {

// The arguments arrive as the bytes the shell passed, UTF-8 under a UTF-8
// locale.
std::vector<std::string> Utf8Arguments(int argc, char** argv) {
  return std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc);
}

}  // namespace kx::cli
