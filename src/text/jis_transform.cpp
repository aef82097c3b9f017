#include "text/jis_transform.h"

namespace kx {

namespace {

enum class JisMode { kAscii, kKana, kJisX0208, kJisX0212 };

constexpr std::uint8_t kEsc = 0x1B;
constexpr std::uint8_t kShiftOut = 0x0E;
constexpr std::uint8_t kShiftIn = 0x0F;

bool IsJisByte(std::uint8_t b) {
  return b >= 0x21 && b <= 0x7E;
}

// Reads the escape sequence at i, if it is one of the designations, and
// returns its length (0 when it is none).
std::size_t ReadEscape(const Bytes& jis, std::size_t i, JisMode& mode) {
  auto at = [&](std::size_t k) -> int { return i + k < jis.size() ? jis[i + k] : -1; };
  if (at(1) == '(' && (at(2) == 'B' || at(2) == 'J')) {
    mode = JisMode::kAscii;
    return 3;
  }
  if (at(1) == '(' && at(2) == 'I') {
    mode = JisMode::kKana;
    return 3;
  }
  if (at(1) == '$' && (at(2) == '@' || at(2) == 'B')) {
    mode = JisMode::kJisX0208;
    return 3;
  }
  if (at(1) == '$' && at(2) == '(' && at(3) == 'D') {
    mode = JisMode::kJisX0212;
    return 4;
  }
  return 0;
}

}  // namespace

Bytes Iso2022JpToEucJp(const Bytes& jis) {
  Bytes euc;
  euc.reserve(jis.size());
  JisMode mode = JisMode::kAscii;
  JisMode beforeShift = JisMode::kAscii;
  for (std::size_t i = 0; i < jis.size();) {
    const std::uint8_t b = jis[i];
    if (b == kEsc) {
      if (const std::size_t length = ReadEscape(jis, i, mode)) {
        i += length;
        continue;
      }
    }
    if (b == kShiftOut) {
      beforeShift = mode;
      mode = JisMode::kKana;
      ++i;
      continue;
    }
    if (b == kShiftIn) {
      mode = beforeShift;
      ++i;
      continue;
    }
    const bool pair = i + 1 < jis.size() && IsJisByte(b) && IsJisByte(jis[i + 1]);
    if (mode == JisMode::kKana && b >= 0x21 && b <= 0x5F) {
      euc.push_back(0x8E);
      euc.push_back(static_cast<std::uint8_t>(b | 0x80));
      ++i;
    } else if (mode == JisMode::kJisX0208 && pair) {
      euc.push_back(static_cast<std::uint8_t>(b | 0x80));
      euc.push_back(static_cast<std::uint8_t>(jis[i + 1] | 0x80));
      i += 2;
    } else if (mode == JisMode::kJisX0212 && pair) {
      euc.push_back(0x8F);
      euc.push_back(static_cast<std::uint8_t>(b | 0x80));
      euc.push_back(static_cast<std::uint8_t>(jis[i + 1] | 0x80));
      i += 2;
    } else {
      euc.push_back(b);
      ++i;
    }
  }
  return euc;
}

Bytes EucJpToIso2022Jp(const Bytes& euc) {
  Bytes jis;
  jis.reserve(euc.size() + 16);
  JisMode mode = JisMode::kAscii;
  auto enter = [&](JisMode wanted) {
    if (mode == wanted) return;
    mode = wanted;
    jis.push_back(kEsc);
    switch (wanted) {
      case JisMode::kAscii:
        jis.insert(jis.end(), {'(', 'B'});
        break;
      case JisMode::kKana:
        jis.insert(jis.end(), {'(', 'I'});
        break;
      case JisMode::kJisX0208:
        jis.insert(jis.end(), {'$', 'B'});
        break;
      case JisMode::kJisX0212:
        jis.insert(jis.end(), {'$', '(', 'D'});
        break;
    }
  };
  auto high = [&](std::size_t k) { return k < euc.size() && euc[k] >= 0xA1 && euc[k] <= 0xFE; };
  for (std::size_t i = 0; i < euc.size();) {
    const std::uint8_t b = euc[i];
    if (b == 0x8E && i + 1 < euc.size() && euc[i + 1] >= 0xA1 && euc[i + 1] <= 0xDF) {
      enter(JisMode::kKana);
      jis.push_back(static_cast<std::uint8_t>(euc[i + 1] & 0x7F));
      i += 2;
    } else if (b == 0x8F && high(i + 1) && high(i + 2)) {
      enter(JisMode::kJisX0212);
      jis.push_back(static_cast<std::uint8_t>(euc[i + 1] & 0x7F));
      jis.push_back(static_cast<std::uint8_t>(euc[i + 2] & 0x7F));
      i += 3;
    } else if (high(i) && high(i + 1)) {
      enter(JisMode::kJisX0208);
      jis.push_back(static_cast<std::uint8_t>(b & 0x7F));
      jis.push_back(static_cast<std::uint8_t>(euc[i + 1] & 0x7F));
      i += 2;
    } else {
      // Anything else, ASCII above all, is written in ASCII mode; a stray
      // 8-bit byte cannot be expressed and becomes "?".
      enter(JisMode::kAscii);
      jis.push_back(b < 0x80 ? b : static_cast<std::uint8_t>('?'));
      ++i;
    }
  }
  enter(JisMode::kAscii);
  return jis;
}

}  // namespace kx
