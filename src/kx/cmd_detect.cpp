#include <cstdio>

#include "kx/commands.h"
#include "sys/local_files.h"
#include "text/encoding_judge.h"

namespace kx::cli {

// Prints the encoding name the editor would read FILE with.
int Detect(const std::vector<std::string>& args) {
  if (args.size() != 1) {
    std::fputs("usage: kx detect FILE\n", stderr);
    return 2;
  }
  LocalFiles files;
  const auto bytes = files.ReadAll(args[0]);
  if (!bytes) {
    std::fprintf(stderr, "kx detect: cannot read %s\n", args[0].c_str());
    return 1;
  }
  const std::string_view name = JudgeCode(*bytes);
  std::printf("%.*s\n", static_cast<int>(name.size()), name.data());
  return 0;
}

}  // namespace kx::cli
