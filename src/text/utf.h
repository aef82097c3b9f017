#pragma once
// Conversions between UTF-8, UTF-16 and code points, done here rather than by
// the platform because they need no tables.
#include <string>
#include <string_view>

#include "sys/file_port.h"

namespace kx {

// Invalid or truncated sequences become U+FFFD, one per offending byte.
std::u16string Utf8ToUtf16(std::string_view utf8);
// Unpaired surrogates become U+FFFD.
std::string Utf16ToUtf8(std::u16string_view utf16);

// UTF-16 little-endian bytes; an odd last byte is dropped.
std::u16string Utf16LeBytesToText(const Bytes& bytes, std::size_t offset = 0);
Bytes Utf16ToLeBytes(std::u16string_view text);

// Replaces invalid UTF-8 with U+FFFD so that the result is safe to show.
std::string SanitizeUtf8(std::string_view bytes);

}  // namespace kx
