#include <cstdio>
#include <string>

#include "kx/commands.h"
#include "sys/local_files.h"
#include "text/macro_text.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace kx::cli {

// Reads UTF-8 text from standard input and saves it to FILE the way the
// program saves a macro: UTF-8 with a byte-order mark, atomically.
int Save(const std::vector<std::string>& args) {
  if (args.size() != 1) {
    std::fputs("usage: kx save FILE   (UTF-8 text on standard input)\n", stderr);
    return 2;
  }
#ifdef _WIN32
  _setmode(_fileno(stdin), _O_BINARY);
#endif
  std::string text;
  char buffer[65536];
  std::size_t got = 0;
  while ((got = std::fread(buffer, 1, sizeof buffer, stdin)) > 0) text.append(buffer, got);
  if (std::ferror(stdin)) {
    std::fputs("kx save: cannot read standard input\n", stderr);
    return 1;
  }
  LocalFiles files;
  if (!sWriteText(files, args[0], text)) {
    std::fprintf(stderr, "kx save: cannot write %s\n", args[0].c_str());
    return 1;
  }
  return 0;
}

}  // namespace kx::cli
