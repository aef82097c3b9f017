// clang-format off
#include "sys/win32/windows_api.h"
#include <shellapi.h>
// clang-format on

#include "kx/arguments.h"
#include "sys/win32/unique_handle.h"
#include "sys/win32/wide.h"

namespace kx::cli {

// main()'s argv is in the ANSI code page, which cannot hold every character
// of an expression or a path: the wide command line is read instead.
std::vector<std::string> Utf8Arguments(int, char**) {
  std::vector<std::string> out;
  int count = 0;
  LPWSTR* wide = ::CommandLineToArgvW(::GetCommandLineW(), &count);
  if (!wide) return out;
  const win32::unique_hlocal owner(wide);
  for (int i = 1; i < count; ++i) out.push_back(win32::Narrow(wide[i]));
  return out;
}

}  // namespace kx::cli
