#pragma once
// The simulated system's record of effects: one event per effect, in order,
// stamped with the virtual clock, printable as JSON Lines.
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace kx::sim {

// JSON objects keep their members in the order they were added, so that a
// trace line reads "t", "ev", then the event's own fields.
using Json = nlohmann::ordered_json;

struct TraceEvent {
  std::int64_t t = 0;  // virtual milliseconds
  std::string ev;
  Json fields = Json::object();  // the rest of the event, e.g. {"delta":120}
  // {"t":...,"ev":...,<fields>} on one line.
  std::string ToJson() const;
  // The event without its time: {"ev":...,<fields>}.
  std::string ToUntimedJson() const;
};

class Trace {
 public:
  void Add(std::int64_t t, std::string_view ev, Json fields = Json::object());
  const std::vector<TraceEvent>& Events() const { return events_; }
  std::vector<TraceEvent> OfKind(std::string_view ev) const;
  void Clear() { events_.clear(); }
  std::string ToJsonLines() const;

 private:
  std::vector<TraceEvent> events_;
};

// Compact JSON text, UTF-8 kept as it is; invalid UTF-8 bytes become U+FFFD.
std::string DumpJson(const Json& value);
// A JSON string literal, quotes included.
std::string JsonString(std::string_view text);

}  // namespace kx::sim
