#pragma once
// Characters as the Japanese ANSI code page (Shift_JIS) numbers them, and the
// width conversions between half-width and full-width forms. UTF-8 outside,
// code points inside.
#include <cstdint>
#include <string>
#include <string_view>

namespace kx {

std::u32string DecodeUtf8(std::string_view text);
std::string EncodeUtf8(std::u32string_view text);

// The code page 932 number of a character: ASCII and half-width katakana in
// one byte, everything else of the code page in two. A character outside the
// code page gives "?" (63), the code page's stand-in.
std::uint16_t AnsiCode(char32_t ch);
// The reverse; a code without a character here gives U+30FB, the code
// page's own stand-in.
char32_t CharFromAnsi(std::uint16_t code);

// AKCNV$: ASCII, the blank and half-width katakana (with their voiced marks)
// to full-width. KACNV$: the reverse.
std::string ToFullWidth(std::string_view text);
std::string ToHalfWidth(std::string_view text);

}  // namespace kx
