#pragma once
// The simulated system's record of effects: one event per effect, in order,
// stamped with the virtual clock, printable as JSON Lines.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kx::sim {

struct TraceEvent {
  std::int64_t t = 0;  // virtual milliseconds
  std::string ev;
  std::string fields;  // the rest of the JSON object, e.g. "\"delta\":120"
  std::string ToJson() const;
};

class Trace {
 public:
  void Add(std::int64_t t, std::string_view ev, std::string fields = {});
  const std::vector<TraceEvent>& Events() const { return events_; }
  std::vector<TraceEvent> OfKind(std::string_view ev) const;
  void Clear() { events_.clear(); }
  std::string ToJsonLines() const;

 private:
  std::vector<TraceEvent> events_;
};

// A JSON string literal, quotes included. Invalid UTF-8 bytes become U+FFFD.
std::string JsonString(std::string_view text);

}  // namespace kx::sim
