#include "sim/trace.h"

namespace kx::sim {

namespace {

Json EventObject(const TraceEvent& e, bool timed) {
  Json out = Json::object();
  if (timed) out["t"] = e.t;
  out["ev"] = e.ev;
  for (const auto& [name, value] : e.fields.items()) out[name] = value;
  return out;
}

}  // namespace

std::string TraceEvent::ToJson() const {
  return DumpJson(EventObject(*this, true));
}

std::string TraceEvent::ToUntimedJson() const {
  return DumpJson(EventObject(*this, false));
}

void Trace::Add(std::int64_t t, std::string_view ev, Json fields) {
  events_.push_back({t, std::string(ev), std::move(fields)});
}

std::vector<TraceEvent> Trace::OfKind(std::string_view ev) const {
  std::vector<TraceEvent> out;
  for (const auto& e : events_)
    if (e.ev == ev) out.push_back(e);
  return out;
}

std::string Trace::ToJsonLines() const {
  std::string out;
  for (const auto& e : events_) out += e.ToJson() + "\n";
  return out;
}

std::string DumpJson(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string JsonString(std::string_view text) {
  return DumpJson(Json(std::string(text)));
}

}  // namespace kx::sim
