#pragma once
// Where the command-line tools put a macro's program folder: the folder
// above a "Macro" folder, else the macro's own folder.
#include <string>

namespace kx::cli {

std::string MacroFolderOf(const std::string& file);
std::string DefaultAppFolder(const std::string& file);

}  // namespace kx::cli
