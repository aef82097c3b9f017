#include <cstdio>

#include "kx/commands.h"

namespace kx::cli {

int Detect(const std::vector<std::string>&) {
  std::fputs("kx detect: not available yet\n", stderr);
  return 2;
}

}  // namespace kx::cli
