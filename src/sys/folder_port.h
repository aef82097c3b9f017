#pragma once
// Folders: listing their entries and deleting files, for the macro tree.
#include <string>
#include <string_view>
#include <vector>

namespace kx {

struct FolderEntry {
  std::string name;
  bool folder = false;
};

class FolderPort {
 public:
  virtual ~FolderPort() = default;
  // The entries of a folder, without "." and ".."; empty when it cannot be
  // read.
  virtual std::vector<FolderEntry> List(std::string_view folder) = 0;
  virtual bool DeleteFile(std::string_view path) = 0;
  virtual bool IsFolder(std::string_view path) = 0;
};

}  // namespace kx
