#include "eval/like.h"

#include <cstddef>

namespace kx {
namespace {

// Matches one character against the pattern element at p; sets next to the
// element after it. False when the element is "*" or does not match.
bool MatchOne(char c, std::string_view pattern, size_t p, size_t& next) {
  const char e = pattern[p];
  if (e == '?') {
    next = p + 1;
    return true;
  }
  if (e == '#') {
    next = p + 1;
    return c >= '0' && c <= '9';
  }
  if (e != '[') {
    next = p + 1;
    return c == e;
  }
  size_t i = p + 1;
  const bool negate = i < pattern.size() && pattern[i] == '!';
  if (negate) ++i;
  bool found = false;
  for (; i < pattern.size() && pattern[i] != ']'; ++i) {
    const auto lo = static_cast<unsigned char>(pattern[i]);
    auto hi = lo;
    if (i + 2 < pattern.size() && pattern[i + 1] == '-' && pattern[i + 2] != ']') {
      hi = static_cast<unsigned char>(pattern[i + 2]);
      i += 2;
    }
    const auto u = static_cast<unsigned char>(c);
    if (u >= lo && u <= hi) found = true;
  }
  next = i + 1;
  return found != negate;
}

// The length of the single element at the start of the pattern ("[...]" or
// one character), or 0 when it is "*" or an unclosed bracket.
size_t ElementLength(std::string_view pattern) {
  if (pattern.empty() || pattern[0] == '*') return 0;
  if (pattern[0] != '[') return 1;
  const size_t close = pattern.find(']', pattern[1] == '!' ? 2 : 1);
  return close == std::string_view::npos ? 0 : close + 1;
}

bool IsLiteral(std::string_view part) {
  for (char c : part)
    if (c == '*' || c == '?' || c == '#' || c == '[') return false;
  return true;
}

}  // namespace

bool Like(std::string_view text, std::string_view pattern) {
  // "a*b" with plain characters around one "*": a prefix and a suffix.
  if (const size_t star = pattern.find('*'); star != std::string_view::npos) {
    const std::string_view head = pattern.substr(0, star);
    const std::string_view tail = pattern.substr(star + 1);
    if (IsLiteral(head) && IsLiteral(tail))
      return text.size() >= head.size() + tail.size() && text.starts_with(head) &&
             text.ends_with(tail);
  }
  // "*x*" asks whether any character matches x; the evaluator tests its
  // operands this way all the time.
  if (pattern.size() >= 3 && pattern.front() == '*' && pattern.back() == '*' &&
      ElementLength(pattern.substr(1)) == pattern.size() - 2) {
    const std::string_view element = pattern.substr(1, pattern.size() - 2);
    size_t next = 0;
    for (char c : text)
      if (MatchOne(c, element, 0, next)) return true;
    return false;
  }
  // Greedy with a single backtrack point at the latest "*": every element
  // other than "*" consumes exactly one character, so this is exact.
  size_t t = 0;
  size_t p = 0;
  size_t starP = std::string_view::npos;
  size_t starT = 0;
  while (t < text.size()) {
    size_t next = 0;
    if (p < pattern.size() && pattern[p] == '*') {
      starP = ++p;
      starT = t;
    } else if (p < pattern.size() && MatchOne(text[t], pattern, p, next)) {
      p = next;
      ++t;
    } else if (starP != std::string_view::npos) {
      p = starP;
      t = ++starT;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

}  // namespace kx
