#pragma once
// The player's single current value: written by the value-producing commands
// (rand, getloop, getclip, w, <switch v>), read by <case v> and <debug>.
#include <cstdint>
#include <string>
#include <variant>

namespace kx {

class CurrentValue {
 public:
  CurrentValue() = default;
  static CurrentValue Boolean(bool b) { return CurrentValue(Data(b)); }
  static CurrentValue Long(std::int32_t n) { return CurrentValue(Data(n)); }
  static CurrentValue Text(std::string s) { return CurrentValue(Data(std::move(s))); }

  // As BASIC prints it: "True"/"False", plain decimals, the text itself.
  std::string ToText() const {
    if (auto* b = std::get_if<bool>(&data_)) return *b ? "True" : "False";
    if (auto* n = std::get_if<std::int32_t>(&data_)) return std::to_string(*n);
    if (auto* s = std::get_if<std::string>(&data_)) return *s;
    return "";
  }

 private:
  using Data = std::variant<std::monostate, bool, std::int32_t, std::string>;
  explicit CurrentValue(Data d) : data_(std::move(d)) {}
  Data data_;
};

}  // namespace kx
