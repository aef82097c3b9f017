#include <cstdio>

#include "kx/commands.h"

namespace kx::cli {

int Run(const std::vector<std::string>&) { return 2; }

}  // namespace kx::cli
