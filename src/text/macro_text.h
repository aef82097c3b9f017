#pragma once
// Reading a macro file into the editor's text, whatever its encoding, and
// writing the editor's text back as UTF-8 with a byte-order mark.
#include <optional>
#include <string>
#include <string_view>

#include "sys/file_port.h"

namespace kx {

// Detects the encoding of the bytes and converts them to UTF-8 text without
// a byte-order mark, with every line ended by CR LF (files written by other
// editors with LF or CR alone read as the same lines).
std::string DecodeMacroBytes(const Bytes& bytes);

// Reads a whole macro file; nothing when it cannot be read.
std::optional<std::string> ReadMacroFile(FilePort& files, std::string_view path);

// The editor's reader: the decoded text of the file, or an empty text when
// the file cannot be read.
std::string sReadText(FilePort& files, std::string_view path);

// The editor's writer: every save is UTF-8 with a byte-order mark, written
// atomically. False when the file could not be written; it is then unchanged.
bool sWriteText(FilePort& files, std::string_view path, std::string_view text);

// Turns LF and CR line ends into CR LF; CR LF pairs stay as they are.
std::string NormalizeLineEnds(std::string_view text);

}  // namespace kx
