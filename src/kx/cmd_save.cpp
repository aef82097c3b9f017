#include <cstdio>

#include "kx/commands.h"

namespace kx::cli {

int Save(const std::vector<std::string>&) {
  std::fputs("kx save: not available yet\n", stderr);
  return 2;
}

}  // namespace kx::cli
