#pragma once
// The program's arguments as UTF-8, whatever the system hands main().
#include <string>
#include <vector>

namespace kx::cli {

// The arguments after the program name.
std::vector<std::string> Utf8Arguments(int argc, char** argv);

}  // namespace kx::cli
