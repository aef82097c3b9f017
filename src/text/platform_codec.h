#pragma once
// The conversions that need the tables of a platform converter: iconv in the
// Linux build, MultiByteToWideChar and WideCharToMultiByte in the Windows one.
#include <string>
#include <string_view>

#include "sys/file_port.h"

namespace kx {

enum class PlatformCharset {
  kShiftJis,  // code page 932, the Japanese ANSI code page
  kEucJp,
  kUtf7,
};

// Converts to UTF-8; bytes that cannot be converted become a replacement
// character, so the text is never cut short.
std::string PlatformDecode(PlatformCharset charset, const Bytes& bytes);

// Converts UTF-8 text; characters the charset lacks become "?".
Bytes PlatformEncode(PlatformCharset charset, std::string_view utf8);

}  // namespace kx
