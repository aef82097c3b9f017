#include "kx/page_line.h"

#include <cstdio>

namespace kx::cli {

// The page command walks are not part of this tool yet; the debug options of
// `kx page` reach the same document directly.
int RunPageLine(const std::string& line, DocumentPort&, int) {
  std::fprintf(stderr, "kx page: page command lines are not available yet: %s\n", line.c_str());
  return 2;
}

}  // namespace kx::cli
