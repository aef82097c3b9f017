#include "eval/value.h"

#include <array>

namespace kx {

bool Value::IsNumeric() const {
  const ValueType t = Type();
  return t != ValueType::kEmpty && t != ValueType::kString;
}

std::string_view TypeName(ValueType type) {
  static constexpr std::array<std::string_view, 8> kNames = {
      "Empty", "Boolean", "Integer", "Long", "Single", "Double", "Date", "String"};
  return kNames[static_cast<size_t>(type)];
}

}  // namespace kx
