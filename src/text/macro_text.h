#pragma once
// Turning a macro file's bytes into the editor's text, whatever the encoding.
#include <optional>
#include <string>
#include <string_view>

#include "sys/file_port.h"

namespace kx {

// Detects the encoding of the bytes and converts them to UTF-8 text, without
// a byte-order mark. Line ends are left as they are.
std::string DecodeMacroBytes(const Bytes& bytes);

// Reads a whole macro file; nothing when it cannot be read.
std::optional<std::string> ReadMacroFile(FilePort& files, std::string_view path);

}  // namespace kx
