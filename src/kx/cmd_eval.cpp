#include <cstdio>

#include "kx/commands.h"

namespace kx::cli {

int Eval(const std::vector<std::string>&) {
  std::fputs("kx eval: not available yet\n", stderr);
  return 2;
}

}  // namespace kx::cli
