#include "sys/local_files.h"

namespace kx {

std::string LocalFiles::TemporaryPathFor(std::string_view path) {
  return std::string(path) + ".kxsave.tmp";
}

bool LocalFiles::WriteAtomic(std::string_view path, const Bytes& bytes) {
  if (path.empty()) return false;
  const std::string target(path);
  const std::string temporary = TemporaryPathFor(path);
  if (WriteTemporary(temporary, bytes) && ReplaceTarget(temporary, target)) return true;
  RemoveTemporary(temporary);
  return false;
}

}  // namespace kx
