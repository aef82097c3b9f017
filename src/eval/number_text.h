#pragma once
// Numbers to text and text to numbers, the way the classic BASIC runtime
// writes and reads them on a Japanese system (decimal point ".", thousands
// separator ",").
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kx {

// General form with the given number of significant digits: plain decimals
// for exponents from -4 to digits-1, otherwise "1.5E+20" / "1E-05".
std::string FormatGeneral(double x, int significantDigits);
inline std::string FormatDouble(double x) {
  return FormatGeneral(x, 15);
}
inline std::string FormatSingle(float x) {
  return FormatGeneral(static_cast<double>(x), 7);
}

// The pattern "0." followed by 57 optional digits: plain decimals rounded to
// 57 places from the value's significant digits, the point always written.
std::string FormatPlainDecimals(double x, int significantDigits);

// The text of a number as STR$ writes it: a blank for the sign of a positive
// number and no zero before the point (" .5", "-.5").
std::string FormatWithSignPosition(double x, int significantDigits);

enum class ParseStatus { kOk, kNotNumeric, kOverflow };
struct ParsedNumber {
  ParseStatus status = ParseStatus::kNotNumeric;
  double value = 0;
};

// The strict text-to-number conversion: blanks around, a sign, digits with
// "," separators, a decimal part, an exponent with E or D, or an "&H"/"&O"
// literal. Anything else (a type suffix too) is not a number.
ParsedNumber ParseNumber(std::string_view text);

// "&H"/"&O" digits: up to 4 hex (6 octal) digits are a 16-bit pattern, up to
// 8 hex (11 octal) a 32-bit one, so &HFFFF is -1; more digits overflow.
ParsedNumber ParseRadix(std::string_view digits, int radix);

// VAL: the leading number of the text, blanks, tabs and line feeds skipped
// anywhere; no number gives 0, a number too large for a double infinity.
double LeadingNumber(std::string_view text);

// Digits of the 32-bit (or 16-bit) two's-complement pattern in base 16 or 8.
std::string RadixText(std::uint32_t pattern, int radix);

}  // namespace kx
