#include "eval/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>

namespace kx {
namespace {

// The significant digits of |x| (trailing zeros removed) and the decimal
// exponent of the first one.
struct Digits {
  // A double has at most 17 significant digits; the buffer also holds the
  // scientific text they are read from.
  char digit[32] = {};
  int count = 0;
  int exponent = 0;

  std::string_view View() const { return {digit, static_cast<size_t>(count)}; }
};

// Reads "d.ddde±xx" as written by std::to_chars into digits and exponent.
void ReadScientific(const char* first, const char* last, Digits& d) {
  d.count = 0;
  const char* p = first;
  for (; p != last && *p != 'e'; ++p)
    if (*p != '.') d.digit[d.count++] = *p;
  int exponent = 0;
  if (p != last) std::from_chars(p + (p[1] == '+' ? 2 : 1), last, exponent);
  d.exponent = exponent;
  while (d.count > 1 && d.digit[d.count - 1] == '0') --d.count;
}

// |x| rounded to the given number of significant digits, as "%.*e" rounds:
// the shortest text that reads back as x is that rounding whenever it has no
// more digits than asked for (a double's precision is finer than the step
// of 15 decimal digits, subnormal numbers aside); others are rounded exactly.
Digits Decompose(double x, int significant) {
  Digits d;
  char buf[64];
  const double magnitude = std::fabs(x);
  std::to_chars_result r{};
  if (magnitude >= std::numeric_limits<double>::min()) {
    r = std::to_chars(buf, buf + sizeof buf, magnitude, std::chars_format::scientific);
    ReadScientific(buf, r.ptr, d);
    if (d.count <= significant) return d;
  }
  r = std::to_chars(buf, buf + sizeof buf, magnitude, std::chars_format::scientific,
                    significant - 1);
  ReadScientific(buf, r.ptr, d);
  return d;
}

std::string PlainFromDigits(const Digits& d, bool leadingZero) {
  std::string out;
  const int n = d.count;
  if (d.exponent >= 0) {
    out.reserve(static_cast<size_t>(std::max(n, d.exponent + 1) + 1));
    for (int i = 0; i <= d.exponent; ++i) out.push_back(i < n ? d.digit[i] : '0');
    if (n > d.exponent + 1) {
      out.push_back('.');
      out.append(d.View().substr(static_cast<size_t>(d.exponent + 1)));
    }
  } else {
    if (leadingZero) out.push_back('0');
    out.push_back('.');
    out.append(static_cast<size_t>(-d.exponent - 1), '0');
    out.append(d.View());
  }
  return out;
}

std::string Body(double x, int significant, bool leadingZero) {
  const Digits d = Decompose(x, significant);
  if (d.exponent < -4 || d.exponent >= significant) {
    std::string out(1, d.digit[0]);
    if (d.count > 1) {
      out.push_back('.');
      out.append(d.View().substr(1));
    }
    char exp[16];
    std::snprintf(exp, sizeof exp, "E%c%02d", d.exponent < 0 ? '-' : '+', std::abs(d.exponent));
    return out + exp;
  }
  return PlainFromDigits(d, leadingZero);
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace

std::string FormatGeneral(double x, int significantDigits) {
  if (x == 0 || !std::isfinite(x)) return "0";
  std::string body = Body(x, significantDigits, true);
  if (x < 0) body.insert(body.begin(), '-');
  return body;
}

std::string FormatWithSignPosition(double x, int significantDigits) {
  if (x == 0 || !std::isfinite(x)) return " 0";
  return (x < 0 ? "-" : " ") + Body(x, significantDigits, false);
}

std::string FormatPlainDecimals(double x, int significantDigits) {
  constexpr int kDecimals = 57;
  if (x == 0 || !std::isfinite(x)) return "0.";
  Digits d = Decompose(x, significantDigits);
  // Digit i stands for 10^(exponent - i); keep those down to 10^-57 and
  // round at the first one dropped.
  const int keep = d.exponent + kDecimals + 1;
  if (keep < d.count) {
    const bool up = keep >= 0 && d.digit[keep] >= '5';
    d.count = std::max(keep, 0);
    if (up) {
      int i = keep - 1;
      for (; i >= 0 && d.digit[i] == '9'; --i) d.digit[i] = '0';
      if (i >= 0) {
        ++d.digit[i];
      } else {
        std::memmove(d.digit + 1, d.digit, static_cast<size_t>(d.count));
        d.digit[0] = '1';
        ++d.count;
        ++d.exponent;
      }
    }
    while (d.count > 0 && d.digit[d.count - 1] == '0') --d.count;
  }
  const std::string sign = x < 0 ? "-" : "";
  if (d.count == 0) return sign + "0.";
  std::string plain = PlainFromDigits(d, true);
  if (plain.find('.') == std::string::npos) plain += ".";
  return sign + plain;
}

ParsedNumber ParseRadix(std::string_view digits, int radix) {
  const size_t small = radix == 16 ? 4 : 6;
  const size_t large = radix == 16 ? 8 : 11;
  if (digits.empty()) return {};
  std::uint64_t v = 0;
  for (char c : digits) {
    int d = -1;
    if (IsDigit(c)) d = c - '0';
    if (radix == 16 && c >= 'a' && c <= 'f') d = c - 'a' + 10;
    if (radix == 16 && c >= 'A' && c <= 'F') d = c - 'A' + 10;
    if (d < 0 || d >= radix) return {};
    v = v * static_cast<unsigned>(radix) + static_cast<unsigned>(d);
    if (v > 0xFFFFFFFFull) return {ParseStatus::kOverflow, 0};
  }
  if (digits.size() > large) return {ParseStatus::kOverflow, 0};
  if (digits.size() <= small && v <= 0xFFFF)
    return {ParseStatus::kOk,
            static_cast<double>(static_cast<std::int16_t>(static_cast<std::uint16_t>(v)))};
  return {ParseStatus::kOk,
          static_cast<double>(static_cast<std::int32_t>(static_cast<std::uint32_t>(v)))};
}

ParsedNumber ParseNumber(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  if (text.size() >= 2 && text[0] == '&') {
    const char r = static_cast<char>(text[1] | 0x20);
    if (r == 'h') return ParseRadix(text.substr(2), 16);
    if (r == 'o') return ParseRadix(text.substr(2), 8);
    return {};
  }
  std::string clean;
  size_t i = 0;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) clean.push_back(text[i++]);
  bool any = false;
  for (; i < text.size() && (IsDigit(text[i]) || text[i] == ','); ++i)
    if (text[i] != ',') clean.push_back(text[i]), any = true;
  if (i < text.size() && text[i] == '.') {
    clean.push_back(text[i++]);
    for (; i < text.size() && IsDigit(text[i]); ++i) clean.push_back(text[i]), any = true;
  }
  if (!any) return {};
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E' || text[i] == 'd' || text[i] == 'D')) {
    clean.push_back('e');
    ++i;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) clean.push_back(text[i++]);
    bool expDigits = false;
    for (; i < text.size() && IsDigit(text[i]); ++i) clean.push_back(text[i]), expDigits = true;
    if (!expDigits) return {};
  }
  if (i != text.size()) return {};
  const char* first = clean.data() + (clean[0] == '+' ? 1 : 0);
  double v = 0;
  const auto r = std::from_chars(first, clean.data() + clean.size(), v);
  if (r.ec == std::errc::result_out_of_range) {
    // Too small to represent is zero; too large is an overflow.
    const bool tiny = clean.find("e-") != std::string::npos;
    return tiny ? ParsedNumber{ParseStatus::kOk, 0} : ParsedNumber{ParseStatus::kOverflow, 0};
  }
  if (r.ec != std::errc() || !std::isfinite(v)) return {ParseStatus::kOverflow, 0};
  return {ParseStatus::kOk, v};
}

double LeadingNumber(std::string_view text) {
  std::string s;
  for (char c : text)
    if (c != ' ' && c != '\t' && c != '\n' && c != '\r') s.push_back(c);
  if (s.size() >= 2 && s[0] == '&') {
    const int radix = (s[1] | 0x20) == 'h' ? 16 : (s[1] | 0x20) == 'o' ? 8 : 0;
    if (radix == 0) return 0;
    size_t n = 2;
    while (n < s.size() &&
           ParseRadix(std::string_view(s).substr(n, 1), radix).status == ParseStatus::kOk)
      ++n;
    const ParsedNumber p = ParseRadix(std::string_view(s).substr(2, n - 2), radix);
    return p.status == ParseStatus::kOk ? p.value : 0;
  }
  // The longest prefix that reads as a number.
  size_t i = 0;
  if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
  while (i < s.size() && IsDigit(s[i])) ++i;
  if (i < s.size() && s[i] == '.') {
    ++i;
    while (i < s.size() && IsDigit(s[i])) ++i;
  }
  size_t end = i;
  if (i < s.size() && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
    size_t j = i + 1;
    if (j < s.size() && (s[j] == '+' || s[j] == '-')) ++j;
    if (j < s.size() && IsDigit(s[j])) {
      while (j < s.size() && IsDigit(s[j])) ++j;
      end = j;
    }
  }
  const ParsedNumber p = ParseNumber(std::string_view(s).substr(0, end));
  if (p.status == ParseStatus::kOverflow) return HUGE_VAL;
  return p.status == ParseStatus::kOk ? p.value : 0;
}

std::string RadixText(std::uint32_t pattern, int radix) {
  if (pattern == 0) return "0";
  std::string out;
  const unsigned base = static_cast<unsigned>(radix);
  for (; pattern != 0; pattern /= base) out.insert(out.begin(), "0123456789ABCDEF"[pattern % base]);
  return out;
}

}  // namespace kx
