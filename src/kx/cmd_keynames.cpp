#include <cstdio>
#include <string>

#include "input/key_name_list.h"
#include "kx/commands.h"
#include "kx_version.h"
#include "sys/local_files.h"
#include "text/macro_text.h"

namespace kx::cli {

// Writes the key-name list to FILE, UTF-8 with a byte-order mark and CR LF
// line ends, the way the program's own text files are saved.
int KeyNames(const std::vector<std::string>& args) {
  if (args.size() != 1) {
    std::fputs("usage: kx keynames FILE\n", stderr);
    return 2;
  }
  LocalFiles files;
  if (!sWriteText(files, args[0], KeyNameListText(KX_VERSION_STRING))) {
    std::fprintf(stderr, "kx keynames: cannot write %s\n", args[0].c_str());
    return 1;
  }
  return 0;
}

}  // namespace kx::cli
