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

}  // namespace

bool Like(std::string_view text, std::string_view pattern) {
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
