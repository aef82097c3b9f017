#pragma once
// Converting between bytes and text with a named character set, and saving a
// text in one: the services the macro files are read and written with.
#include <string>
#include <string_view>

#include "sys/file_port.h"

namespace kx {

// The character-set names the macro files use.
inline constexpr std::string_view kCharsetIso2022Jp = "ISO-2022-JP";
inline constexpr std::string_view kCharsetEucJp = "EUC-JP";
inline constexpr std::string_view kCharsetUtf7 = "UTF-7";
inline constexpr std::string_view kCharsetUtf8 = "UTF-8";
inline constexpr std::string_view kCharsetUtf16Le = "UTF-16LE";
inline constexpr std::string_view kCharsetShiftJis = "Shift_JIS";

// Decodes bytes to UTF-8 text; an unknown name gives an empty text. A UTF-8
// byte-order mark is dropped, as the stream object the program used did.
std::string DecodeBytes(std::string_view charset, const Bytes& bytes);

// The system's Japanese ANSI code page (932).
std::string DecodeAnsi(const Bytes& bytes);

// Encodes UTF-8 text; "UTF-8" puts the byte-order mark EF BB BF first. An
// unknown name gives no bytes.
Bytes EncodeText(std::string_view charset, std::string_view text);

// Writes the text to the path in the charset, atomically; false when it
// could not be written, in which case the old file is left as it was.
bool SaveText(FilePort& files, std::string_view charset, std::string_view text,
              std::string_view path);

}  // namespace kx
