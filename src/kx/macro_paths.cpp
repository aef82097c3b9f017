#include "kx/macro_paths.h"

#include <filesystem>

namespace kx::cli {

namespace {

std::filesystem::path AbsoluteFolder(const std::string& file) {
  return std::filesystem::absolute(std::u8string(file.begin(), file.end())).parent_path();
}

std::string Utf8Of(const std::filesystem::path& p) {
  const std::u8string utf8 = p.u8string();
  return std::string(utf8.begin(), utf8.end());
}

}  // namespace

std::string MacroFolderOf(const std::string& file) {
  return Utf8Of(AbsoluteFolder(file));
}

std::string DefaultAppFolder(const std::string& file) {
  auto folder = AbsoluteFolder(file);
  if (folder.filename() == "Macro" || folder.filename() == "macro") folder = folder.parent_path();
  return Utf8Of(folder);
}

}  // namespace kx::cli
