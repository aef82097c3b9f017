#pragma once
// The conversions between values: to numbers, integers, Booleans, dates and
// text, with the runtime's errors (type mismatch, overflow).
#include <cstdint>
#include <string>
#include <string_view>

#include "eval/value.h"

namespace kx {

// Rounds half to even (2.5 to 2, 3.5 to 4), as CINT, CLNG and ROUND do.
double RoundHalfEven(double x);
// An infinite or undefined result is an overflow.
double CheckFinite(double x);

// CDBL: Empty is 0, Booleans -1 and 0, dates their serial, strings must read
// as numbers.
double ToDouble(const Value& v);
// ToDouble of a text, without making a Value of it first.
double TextToDouble(std::string_view text);
float ToSingle(const Value& v);
std::int16_t ToInteger(const Value& v);
std::int32_t ToLong(const Value& v);
// CBOOL: numbers are true when not zero; strings "True"/"False" or numbers.
bool ToBoolean(const Value& v);
// CDATE: dates as they are, strings in the short form or as numbers.
double ToDateSerial(const Value& v);
Value MakeDate(double serial);

// CSTR: "True"/"False", 15 significant digits for doubles, 7 for singles,
// the Japanese short form for dates, "" for Empty.
std::string ToText(const Value& v);
// STR$: numbers with a leading sign position.
std::string ToSignedText(const Value& v);

// The text of a variable read back as a value: a number when it reads as
// one, the text otherwise.
Value FromStoredText(const std::string& text);

// Integer operands of \, MOD, AND, OR, XOR and NOT: Booleans, Empty and
// 16-bit integers stay 16-bit, everything else is rounded to 32 bits.
bool IsSixteenBit(const Value& v);

}  // namespace kx
