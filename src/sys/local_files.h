#pragma once
// The real file system behind the file port: paths are UTF-8 strings, and a
// write goes to a temporary file beside the target that then replaces it in
// one step, so that a failed save leaves the old file as it was.
#include <string>
#include <string_view>

#include "sys/file_port.h"

namespace kx {

class LocalFiles : public FilePort {
 public:
  // Files larger than this are not read (a defined outcome instead of an
  // allocation the machine cannot satisfy).
  static constexpr std::uint64_t kMaxReadBytes = std::uint64_t{1} << 30;

  bool IsFile(std::string_view path) override;
  std::optional<Bytes> ReadAll(std::string_view path) override;
  bool WriteAtomic(std::string_view path, const Bytes& bytes) override;
  std::string AppFolder() override;
  char Separator() override;

  // The name of the temporary file a save of path writes first.
  static std::string TemporaryPathFor(std::string_view path);

 protected:
  // The steps of an atomic write, apart so that a test can make one fail.
  // Writes and flushes the whole temporary file.
  virtual bool WriteTemporary(const std::string& temporary, const Bytes& bytes);
  // Replaces (or creates) the target with the temporary file in one step.
  virtual bool ReplaceTarget(const std::string& temporary, const std::string& target);
  // Removes a temporary file left by a failed write.
  virtual void RemoveTemporary(const std::string& temporary);
};

}  // namespace kx
