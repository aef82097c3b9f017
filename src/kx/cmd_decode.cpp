#include <cstdio>

#include "kx/commands.h"

namespace kx::cli {

int Decode(const std::vector<std::string>&) {
  std::fputs("kx decode: not available yet\n", stderr);
  return 2;
}

}  // namespace kx::cli
