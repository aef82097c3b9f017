#pragma once
// The evaluator's dynamically typed value, shaped after the classic BASIC
// variant: empty, Boolean, 16- and 32-bit integer, single, double, date and
// string. Dates are serial days since 1899-12-30, the fraction being the time.
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace kx {

enum class ValueType { kEmpty, kBoolean, kInteger, kLong, kSingle, kDouble, kDate, kString };

struct DateSerial {
  double days = 0;
  bool operator==(const DateSerial&) const = default;
};

class Value {
 public:
  Value() = default;
  static Value Boolean(bool b) { return Value(Storage(std::in_place_index<1>, b)); }
  static Value Integer(std::int16_t v) { return Value(Storage(std::in_place_index<2>, v)); }
  static Value Long(std::int32_t v) { return Value(Storage(std::in_place_index<3>, v)); }
  static Value Single(float v) { return Value(Storage(std::in_place_index<4>, v)); }
  static Value Double(double v) { return Value(Storage(std::in_place_index<5>, v)); }
  static Value Date(double serial) {
    return Value(Storage(std::in_place_index<6>, DateSerial{serial}));
  }
  static Value String(std::string s) {
    return Value(Storage(std::in_place_index<7>, std::move(s)));
  }

  ValueType Type() const { return static_cast<ValueType>(data_.index()); }
  bool Is(ValueType t) const { return Type() == t; }
  bool IsEmpty() const { return Is(ValueType::kEmpty); }
  bool IsString() const { return Is(ValueType::kString); }
  // Integer, Long, Single, Double, Date and Boolean take part in arithmetic
  // as numbers; Empty counts as zero and strings are converted on demand.
  bool IsNumeric() const;

  bool AsBoolean() const { return std::get<1>(data_); }
  std::int16_t AsInteger() const { return std::get<2>(data_); }
  std::int32_t AsLong() const { return std::get<3>(data_); }
  float AsSingle() const { return std::get<4>(data_); }
  double AsDouble() const { return std::get<5>(data_); }
  double AsDate() const { return std::get<6>(data_).days; }
  const std::string& AsString() const { return std::get<7>(data_); }

  bool operator==(const Value&) const = default;

 private:
  using Storage = std::variant<std::monostate, bool, std::int16_t, std::int32_t, float, double,
                               DateSerial, std::string>;
  explicit Value(Storage s) : data_(std::move(s)) {}
  Storage data_;
};

// "Empty", "Boolean", "Integer", "Long", "Single", "Double", "Date", "String".
std::string_view TypeName(ValueType type);

}  // namespace kx
