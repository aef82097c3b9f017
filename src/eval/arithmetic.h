#pragma once
// Arithmetic, comparison and logic on values with the variant rules of the
// classic BASIC runtime: the result takes the wider of the two number types
// (Integer, Long, Single, Double), widening further on overflow, and strings
// are read as numbers.
#include "eval/value.h"

namespace kx {

Value Add(const Value& a, const Value& b);
Value Subtract(const Value& a, const Value& b);
Value Multiply(const Value& a, const Value& b);
Value Divide(const Value& a, const Value& b);
// Both operands rounded to integers first.
Value IntegerDivide(const Value& a, const Value& b);
Value Modulo(const Value& a, const Value& b);
Value Power(const Value& a, const Value& b);
Value Negate(const Value& a);

// Logical on two Booleans, bitwise on integers otherwise.
Value And(const Value& a, const Value& b);
Value Or(const Value& a, const Value& b);
Value Xor(const Value& a, const Value& b);
Value Not(const Value& a);

// -1, 0 or 1. Numbers compare as numbers and strings by their bytes; a
// number is less than any string, and Empty is 0 or "" as the other side
// needs.
int Compare(const Value& a, const Value& b);

}  // namespace kx
