#pragma once
// The binary operators: their codes, written forms and precedence classes.
// The class is the code without its low 4 bits; a lower class binds tighter.
#include <array>
#include <cstdint>
#include <string_view>

#include "eval/value.h"

namespace kx {

enum OperatorCode : std::int32_t {
  kOpPower = 0x7F20,
  kOpMultiply = 0x7F40,
  kOpDivide = 0x7F41,
  kOpIntegerDivide = 0x7F50,
  kOpModulo = 0x7F60,
  kOpAdd = 0x7F70,
  kOpSubtract = 0x7F71,
  kOpEqual = 0x7F90,
  kOpNotEqual = 0x7F91,
  kOpLess = 0x7F92,
  kOpLessOrEqual = 0x7F93,
  kOpGreater = 0x7F94,
  kOpGreaterOrEqual = 0x7F95,
  kOpAnd = 0x7FB0,
  kOpOr = 0x7FC0,
  kOpXor = 0x7FD0,
};

constexpr std::int32_t OperatorClass(std::int32_t code) {
  return code / 16;
}

struct OperatorInfo {
  std::int32_t code;
  std::string_view text;
  // The operation on two values. Addition here is numeric only: the fold
  // concatenates first when either side is a string.
  Value (*apply)(const Value& a, const Value& b);
};

extern const std::array<OperatorInfo, 16> kOperators;

// Nothing for an unknown code.
const OperatorInfo* FindOperator(std::int32_t code);

// The word operators as the scanner tests them: a "Like" pattern on the
// latest characters (newest first), the operator, and how many letters of
// the operand the word took. Tested in this order.
struct WordOperator {
  std::string_view lookbackPattern;
  std::int32_t code;
  int letters;
};
inline constexpr std::array<WordOperator, 4> kWordOperators = {{
    {"DNA[),0-9, ]", kOpAnd, 3},
    {"RO[),0-9, ]?", kOpOr, 2},
    {"ROX[),0-9, ]", kOpXor, 3},
    {"DOM[),0-9, ]", kOpModulo, 3},
}};

}  // namespace kx
