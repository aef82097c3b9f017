#pragma once
// Files: existence, whole-file reads and atomic writes.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kx {

using Bytes = std::vector<std::uint8_t>;

class FilePort {
 public:
  virtual ~FilePort() = default;
  // True when the path names an existing file (not a folder).
  virtual bool IsFile(std::string_view path) = 0;
  virtual std::optional<Bytes> ReadAll(std::string_view path) = 0;
  // Writes a temporary file beside the target and replaces the target with it
  // in one step; on any failure the old file is left as it was.
  virtual bool WriteAtomic(std::string_view path, const Bytes& bytes) = 0;
  // The folder of the program, without a trailing separator.
  virtual std::string AppFolder() = 0;
  virtual char Separator() = 0;
};

// Joins a folder and a name with the port's separator, adding one only when
// the folder does not already end in it.
std::string JoinPath(FilePort& files, std::string_view folder, std::string_view name);

}  // namespace kx
