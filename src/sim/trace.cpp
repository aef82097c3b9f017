#include "sim/trace.h"

#include <cstdio>

namespace kx::sim {

std::string TraceEvent::ToJson() const {
  std::string out = "{\"t\":" + std::to_string(t) + ",\"ev\":" + JsonString(ev);
  if (!fields.empty()) out += "," + fields;
  out += "}";
  return out;
}

void Trace::Add(std::int64_t t, std::string_view ev, std::string fields) {
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

namespace {

// Length of the valid UTF-8 sequence starting at s[i], or 0.
size_t Utf8SequenceLength(std::string_view s, size_t i) {
  const auto b = static_cast<unsigned char>(s[i]);
  size_t n = b < 0x80 ? 1 : (b >> 5) == 0x6 ? 2 : (b >> 4) == 0xE ? 3 : (b >> 3) == 0x1E ? 4 : 0;
  if (n == 0 || i + n > s.size()) return 0;
  for (size_t k = 1; k < n; ++k)
    if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) return 0;
  return n;
}

}  // namespace

std::string JsonString(std::string_view text) {
  std::string out = "\"";
  for (size_t i = 0; i < text.size();) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += static_cast<char>(c);
      ++i;
    } else if (c < 0x20) {
      char buf[8];
      std::snprintf(buf, sizeof buf, "\\u%04x", c);
      out += buf;
      ++i;
    } else if (c < 0x80) {
      out += static_cast<char>(c);
      ++i;
    } else if (size_t n = Utf8SequenceLength(text, i)) {
      out.append(text.substr(i, n));
      i += n;
    } else {
      out += "\xEF\xBF\xBD";
      ++i;
    }
  }
  return out + "\"";
}

}  // namespace kx::sim
