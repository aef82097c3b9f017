#pragma once
// An in-memory file port for the text tests, whose writes can be made to fail.
#include <map>
#include <string>

#include "sys/file_port.h"

namespace kx::testing {

class MemoryFiles : public FilePort {
 public:
  std::map<std::string, Bytes, std::less<>> files;
  bool failWrites = false;

  bool IsFile(std::string_view path) override { return files.find(path) != files.end(); }
  std::optional<Bytes> ReadAll(std::string_view path) override {
    const auto it = files.find(path);
    if (it == files.end()) return std::nullopt;
    return it->second;
  }
  bool WriteAtomic(std::string_view path, const Bytes& bytes) override {
    if (failWrites) return false;
    files[std::string(path)] = bytes;
    return true;
  }
  std::string AppFolder() override { return "C:\\Kestrelix"; }
  char Separator() override { return '\\'; }
};

}  // namespace kx::testing
