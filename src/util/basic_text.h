#pragma once
// Text helpers that behave as the classic BASIC runtime does (Trim, LCase,
// Mid, IsNumeric, Val, CLng), on UTF-8 text counted in characters.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kx::basic {

// Blanks (U+0020) only, as Trim does; tabs stay.
std::string_view Trim(std::string_view s);
std::string_view TrimLeft(std::string_view s);
// ASCII and full-width Latin letters; other characters unchanged.
std::string LCase(std::string_view s);
std::string UCase(std::string_view s);

// Number of characters (UTF-8 sequences) in s.
std::size_t Length(std::string_view s);
// Mid(s, start) with start counted from 1; empty when past the end.
std::string_view Mid(std::string_view s, std::size_t start);
// The first n characters.
std::string_view Left(std::string_view s, std::size_t n);
// s without its last character; nothing when s is empty (the runtime's
// Left(s, Len(s) - 1) fails there).
std::optional<std::string_view> DropLast(std::string_view s);
// The first character of s as a code point (U+FFFD for a bad sequence), 0
// when empty.
char32_t FirstChar(std::string_view s);
// Splits on every occurrence of the separator; an empty text gives one empty
// piece.
std::vector<std::string> Split(std::string_view s, std::string_view separator);
std::string ReplaceAll(std::string_view s, std::string_view from, std::string_view to);

// IsNumeric for plain decimal text: optional blanks, an optional sign, digits
// with an optional fraction, an optional exponent ("1.5", "-50", "1e3").
bool IsNumeric(std::string_view s);
// The numeric value of IsNumeric text; nothing otherwise.
std::optional<double> ToDouble(std::string_view s);
// Val: the number at the start of the text, blanks anywhere ignored, 0 when
// there is none.
double Val(std::string_view s);
// Rounds to the nearest integer, halves to the even neighbour.
double RoundHalfEven(double x);
// CLng: rounds half to even; nothing on overflow or non-numeric text.
std::optional<std::int32_t> ToLong(double x);
std::optional<std::int32_t> ToLong(std::string_view s);

}  // namespace kx::basic
