#include "util/basic_text.h"

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace kx::basic {

namespace {

bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// Byte offset of the character with the given index (from 0), or s.size().
std::size_t OffsetOfChar(std::string_view s, std::size_t index) {
  std::size_t i = 0;
  for (; i < s.size() && index > 0; --index) {
    ++i;
    while (i < s.size() && IsContinuation(s[i])) ++i;
  }
  return i;
}

// Shifts ASCII and full-width Latin letters between the given ranges.
std::string MapCase(std::string_view s, char asciiFrom, char fullFrom, int delta) {
  std::string out(s);
  for (std::size_t i = 0; i < out.size(); ++i) {
    const char c = out[i];
    if (c >= asciiFrom && c < asciiFrom + 26) {
      out[i] = static_cast<char>(c + delta);
    } else if (static_cast<unsigned char>(c) == 0xEF && i + 2 < out.size()) {
      // U+FF21..U+FF3A (Ａ-Ｚ) and U+FF41..U+FF5A (ａ-ｚ) in UTF-8.
      const auto b1 = static_cast<unsigned char>(out[i + 1]);
      const auto b2 = static_cast<unsigned char>(out[i + 2]);
      const int cp = 0xFF00 | ((b1 & 0x3F) << 6) | (b2 & 0x3F);
      const int first = 0xFF00 + static_cast<unsigned char>(fullFrom);
      if (cp >= first && cp < first + 26) {
        const int mapped = cp + delta;
        out[i + 1] = static_cast<char>(0x80 | ((mapped >> 6) & 0x3F));
        out[i + 2] = static_cast<char>(0x80 | (mapped & 0x3F));
      }
      i += 2;
    }
  }
  return out;
}

}  // namespace

std::string_view Trim(std::string_view s) {
  while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
  while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
  return s;
}

std::string_view TrimLeft(std::string_view s) {
  while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
  return s;
}

std::string LCase(std::string_view s) {
  return MapCase(s, 'A', 0x21, 32);
}
std::string UCase(std::string_view s) {
  return MapCase(s, 'a', 0x41, -32);
}

std::size_t Length(std::string_view s) {
  std::size_t n = 0;
  for (char c : s)
    if (!IsContinuation(c)) ++n;
  return n;
}

std::string_view Mid(std::string_view s, std::size_t start) {
  if (start < 1) start = 1;
  return s.substr(OffsetOfChar(s, start - 1));
}

std::string_view Left(std::string_view s, std::size_t n) {
  return s.substr(0, OffsetOfChar(s, n));
}

std::optional<std::string_view> DropLast(std::string_view s) {
  if (s.empty()) return std::nullopt;
  std::size_t end = s.size() - 1;
  while (end > 0 && IsContinuation(s[end])) --end;
  return s.substr(0, end);
}

char32_t FirstChar(std::string_view s) {
  if (s.empty()) return 0;
  const auto b = static_cast<unsigned char>(s[0]);
  if (b < 0x80) return b;
  const std::size_t n = (b >> 5) == 0x6 ? 2 : (b >> 4) == 0xE ? 3 : (b >> 3) == 0x1E ? 4 : 0;
  if (n == 0 || s.size() < n) return 0xFFFD;
  char32_t cp = b & (0x7F >> n);
  for (std::size_t k = 1; k < n; ++k) {
    if (!IsContinuation(s[k])) return 0xFFFD;
    cp = (cp << 6) | (static_cast<unsigned char>(s[k]) & 0x3F);
  }
  return cp;
}

std::vector<std::string> Split(std::string_view s, std::string_view separator) {
  std::vector<std::string> out;
  if (separator.empty()) return {std::string(s)};
  std::size_t start = 0;
  for (;;) {
    const std::size_t at = s.find(separator, start);
    if (at == std::string_view::npos) break;
    out.emplace_back(s.substr(start, at - start));
    start = at + separator.size();
  }
  out.emplace_back(s.substr(start));
  return out;
}

std::string ReplaceAll(std::string_view s, std::string_view from, std::string_view to) {
  if (from.empty()) return std::string(s);
  std::string out;
  std::size_t start = 0;
  for (;;) {
    const std::size_t at = s.find(from, start);
    if (at == std::string_view::npos) break;
    out.append(s.substr(start, at - start));
    out.append(to);
    start = at + from.size();
  }
  out.append(s.substr(start));
  return out;
}

std::optional<double> ToDouble(std::string_view s) {
  s = Trim(s);
  std::size_t i = 0;
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
  std::size_t digits = 0;
  while (i < s.size() && s[i] >= '0' && s[i] <= '9') ++i, ++digits;
  if (i < s.size() && s[i] == '.') {
    ++i;
    while (i < s.size() && s[i] >= '0' && s[i] <= '9') ++i, ++digits;
  }
  if (digits == 0) return std::nullopt;
  if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
    ++i;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    std::size_t expDigits = 0;
    while (i < s.size() && s[i] >= '0' && s[i] <= '9') ++i, ++expDigits;
    if (expDigits == 0) return std::nullopt;
  }
  if (i != s.size()) return std::nullopt;
  const double value = std::strtod(std::string(s).c_str(), nullptr);
  if (!std::isfinite(value)) return std::nullopt;
  return value;
}

bool IsNumeric(std::string_view s) {
  return ToDouble(s).has_value();
}

double Val(std::string_view s) {
  std::string compact;
  for (char c : s)
    if (c != ' ' && c != '\t' && c != '\n' && c != '\r') compact += c;
  // The longest prefix that reads as a number.
  std::size_t i = 0;
  if (i < compact.size() && (compact[i] == '+' || compact[i] == '-')) ++i;
  while (i < compact.size() && std::isdigit(static_cast<unsigned char>(compact[i]))) ++i;
  if (i < compact.size() && compact[i] == '.') {
    ++i;
    while (i < compact.size() && std::isdigit(static_cast<unsigned char>(compact[i]))) ++i;
  }
  std::size_t end = i;
  if (i < compact.size() &&
      (compact[i] == 'e' || compact[i] == 'E' || compact[i] == 'd' || compact[i] == 'D')) {
    std::size_t j = i + 1;
    if (j < compact.size() && (compact[j] == '+' || compact[j] == '-')) ++j;
    const std::size_t expStart = j;
    while (j < compact.size() && std::isdigit(static_cast<unsigned char>(compact[j]))) ++j;
    if (j > expStart) {
      compact[i] = 'e';
      end = j;
    }
  }
  const double value = std::strtod(compact.substr(0, end).c_str(), nullptr);
  return std::isfinite(value) ? value : 0.0;
}

double RoundHalfEven(double x) {
  return std::nearbyint(x);
}

std::optional<std::int32_t> ToLong(double x) {
  if (!std::isfinite(x)) return std::nullopt;
  const double r = RoundHalfEven(x);
  if (r < static_cast<double>(std::numeric_limits<std::int32_t>::min()) ||
      r > static_cast<double>(std::numeric_limits<std::int32_t>::max()))
    return std::nullopt;
  return static_cast<std::int32_t>(r);
}

std::optional<std::int32_t> ToLong(std::string_view s) {
  auto d = ToDouble(s);
  if (!d) return std::nullopt;
  return ToLong(*d);
}

}  // namespace kx::basic
