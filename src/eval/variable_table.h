#pragma once
// The script variables: names (with their leading "#") and values, both
// text, in the order of first assignment. The player writes it; the
// evaluator only reads it.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kx {

class VariableTable {
 public:
  struct Entry {
    std::string name;
    std::string value;
  };

  void Clear() { entries_.clear(); }
  // Case-sensitive, first match wins.
  const std::string* Find(std::string_view name) const {
    for (const auto& e : entries_)
      if (e.name == name) return &e.value;
    return nullptr;
  }
  // Replaces an existing value or appends a new variable; true when appended.
  bool Set(std::string_view name, std::string value) {
    for (auto& e : entries_)
      if (e.name == name) {
        e.value = std::move(value);
        return false;
      }
    entries_.push_back({std::string(name), std::move(value)});
    return true;
  }
  const std::vector<Entry>& Entries() const { return entries_; }

 private:
  std::vector<Entry> entries_;
};

}  // namespace kx
