#include <cstdio>

#include "kx/commands.h"
#include "sys/local_files.h"
#include "text/macro_text.h"

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#endif

namespace kx::cli {

// Prints the text the editor would show for FILE, as UTF-8 with its CR LF
// line ends, byte for byte.
int Decode(const std::vector<std::string>& args) {
  if (args.size() != 1) {
    std::fputs("usage: kx decode FILE\n", stderr);
    return 2;
  }
  LocalFiles files;
  const auto text = ReadMacroFile(files, args[0]);
  if (!text) {
    std::fprintf(stderr, "kx decode: cannot read %s\n", args[0].c_str());
    return 1;
  }
#ifdef _WIN32
  _setmode(_fileno(stdout), _O_BINARY);
#endif
  std::fwrite(text->data(), 1, text->size(), stdout);
  return std::fflush(stdout) == 0 ? 0 : 1;
}

}  // namespace kx::cli
