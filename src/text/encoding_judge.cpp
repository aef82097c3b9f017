#include "text/encoding_judge.h"

#include <algorithm>
#include <array>

namespace kx {

namespace {

// Only this many bytes at the start of a file are looked at.
constexpr int kWindowBytes = 1000;

// points x 100 / (2 x last + 2), rounded half to even as the original's
// integer conversion did.
std::int16_t Score(long points, int last) {
  const long denominator = 2L * last + 2;
  if (denominator <= 0) return 0;
  const long numerator = points * 100;
  long quotient = numerator / denominator;
  const long twiceRest = 2 * (numerator % denominator);
  if (twiceRest > denominator || (twiceRest == denominator && quotient % 2 != 0)) ++quotient;
  return static_cast<std::int16_t>(std::min<long>(quotient, 32767));
}

bool In(std::uint8_t b, int low, int high) {
  return b >= low && b <= high;
}

// True when the bytes are well-formed UTF-8 from first to last (no overlong
// forms, surrogates or code points past U+10FFFF) and hold at least one
// character outside ASCII.
bool IsMultiByteUtf8(const Bytes& bytes) {
  bool multiByte = false;
  for (std::size_t i = 0; i < bytes.size();) {
    const std::uint8_t lead = bytes[i];
    if (lead < 0x80) {
      ++i;
      continue;
    }
    // The lead byte decides the length and the range of the second byte.
    int length = 0;
    int low = 0x80;
    int high = 0xBF;
    if (In(lead, 0xC2, 0xDF)) {
      length = 2;
    } else if (In(lead, 0xE0, 0xEF)) {
      length = 3;
      if (lead == 0xE0) low = 0xA0;
      if (lead == 0xED) high = 0x9F;
    } else if (In(lead, 0xF0, 0xF4)) {
      length = 4;
      if (lead == 0xF0) low = 0x90;
      if (lead == 0xF4) high = 0x8F;
    } else {
      return false;
    }
    if (i + static_cast<std::size_t>(length) > bytes.size() || !In(bytes[i + 1], low, high))
      return false;
    for (int k = 2; k < length; ++k)
      if (!In(bytes[i + static_cast<std::size_t>(k)], 0x80, 0xBF)) return false;
    multiByte = true;
    i += static_cast<std::size_t>(length);
  }
  return multiByte;
}

// The byte at index i when the array has one, so that checks past the end
// are simply not made.
bool ByteAt(const Bytes& bytes, long i, std::uint8_t& out) {
  if (i < 0 || i >= static_cast<long>(bytes.size())) return false;
  out = bytes[static_cast<std::size_t>(i)];
  return true;
}

bool IsControl(std::uint8_t b) {
  return b < 0x20 || b == 0x7F;
}

// True when the count bytes after i are all UTF-8 continuation bytes.
bool Continues(const Bytes& bytes, int i, int count) {
  for (int k = 1; k <= count; ++k) {
    std::uint8_t c = 0;
    if (!ByteAt(bytes, i + k, c) || !In(c, 0x80, 0xBF)) return false;
  }
  return true;
}

}  // namespace

std::int16_t ScoreJis(const Bytes& bytes, int last, bool earlyAnswer) {
  // The designations in the order of the modes 1 to 6 they select.
  static constexpr std::array<std::array<std::uint8_t, 2>, 6> kEscapes = {
      {{'(', 'B'}, {'(', 'J'}, {'(', 'I'}, {'$', '@'}, {'$', 'B'}, {'$', 'D'}}};
  long points = 0;
  int mode = 0;
  for (int i = 0; i <= last; ++i) {
    const std::uint8_t b = bytes[static_cast<std::size_t>(i)];
    std::uint8_t b1 = 0, b2 = 0;
    if (b == 0x1B && ByteAt(bytes, i + 1, b1) && ByteAt(bytes, i + 2, b2)) {
      const auto found = std::find(kEscapes.begin(), kEscapes.end(), std::array{b1, b2});
      if (found != kEscapes.end()) {
        if (earlyAnswer) return kCertainScore;
        mode = static_cast<int>(found - kEscapes.begin()) + 1;
        points += 6;
        i += 2;
        continue;
      }
    }
    if (mode == 3) {
      if (In(b, 0x21, 0x5F)) points += 1;
    } else if (mode >= 4) {
      std::uint8_t previous = 0;
      if (ByteAt(bytes, i - 1, previous) && In(previous, 0x21, 0x7E) && In(b, 0x21, 0x7E)) {
        points += 4;
        i += 1;
      }
    } else if (IsControl(b) || In(b, 0x20, 0x7E)) {
      points += 1;
    }
  }
  return Score(points, last);
}

std::int16_t ScoreUnicode(const Bytes& bytes, int last, bool earlyAnswer) {
  long points = 0;
  for (int i = 0; i <= last; i += 2) {
    const std::uint8_t low = bytes[static_cast<std::size_t>(i)];
    std::uint8_t high = 0;
    if (!ByteAt(bytes, i + 1, high)) continue;
    if (earlyAnswer && low == 0xFF && high == 0xFE) return kCertainScore;
    if (In(high, 0x00, 0x33) || In(high, 0x4E, 0x9F) || In(high, 0xD8, 0xDF) ||
        In(high, 0xF8, 0xFF)) {
      points += 4;
    } else {
      return 0;
    }
  }
  return static_cast<std::int16_t>(Score(points, last) / 2);
}

std::int16_t ScoreUtf8(const Bytes& bytes, int last, bool earlyAnswer) {
  long points = 0;
  for (int i = 0; i <= last; ++i) {
    const std::uint8_t b = bytes[static_cast<std::size_t>(i)];
    std::uint8_t b1 = 0, b2 = 0;
    if (earlyAnswer && b == 0xEF && ByteAt(bytes, i + 1, b1) && b1 == 0xBB &&
        ByteAt(bytes, i + 2, b2) && b2 == 0xBF) {
      return kCertainScore;
    }
    if ((b & 0xFC) == 0xFC && Continues(bytes, i, 5)) {
      points += 12;
      i += 5;
    } else if ((b & 0xF8) == 0xF8 && Continues(bytes, i, 4)) {
      points += 10;
      i += 4;
    } else if ((b & 0xF0) == 0xF0 && Continues(bytes, i, 3)) {
      points += 8;
      i += 3;
    } else if ((b & 0xE0) == 0xE0 && Continues(bytes, i, 2)) {
      points += 6;
      i += 2;
    } else if (b < 0x80) {
      points += 1;
    } else if (In(b, 0x80, 0xBF)) {
      // A stray continuation byte counts nothing.
    } else if ((b & 0xE0) == 0xC0 && Continues(bytes, i, 1)) {
      points += 4;
      i += 1;
    }
  }
  return Score(points, last);
}

std::int16_t ScoreUtf7(const Bytes& bytes, int last, bool /*earlyAnswer*/) {
  static constexpr std::string_view kAlphabet =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  long points = 0;
  bool inRun = false;
  int k = 0;
  int leftover = 0;
  int mask = 0;
  std::size_t lastPosition = 0;
  for (int i = 0; i <= last; ++i) {
    const std::uint8_t b = bytes[static_cast<std::size_t>(i)];
    if (!inRun) {
      if (b == '+') {
        inRun = true;
        k = 1;
      } else if (b < 0x80) {
        points += 1;  // a "-" outside a run counts the same as any other byte
      }
      continue;
    }
    const std::size_t position = kAlphabet.find(static_cast<char>(b));
    if (position != std::string_view::npos) {
      const int bits = 6 * k;
      leftover = bits % 8;
      mask = (1 << leftover) - 1;
      lastPosition = position;
      ++k;
    } else if (b == '-') {
      if (k == 1) {
        points += 4;
      } else if (k >= 4 && leftover < 6 && (static_cast<int>(lastPosition) & mask) == 0) {
        points += 2L * k + 2;
      }
      inRun = false;
      k = 0;
    } else {
      inRun = false;
      k = 0;
    }
  }
  return Score(points, last);
}

std::int16_t ScoreSjis(const Bytes& bytes, int last, bool /*earlyAnswer*/) {
  long points = 0;
  for (int i = 0; i <= last; ++i) {
    const std::uint8_t b = bytes[static_cast<std::size_t>(i)];
    std::uint8_t trail = 0;
    if ((In(b, 0x81, 0x9F) || In(b, 0xE0, 0xEF)) && ByteAt(bytes, i + 1, trail) &&
        (In(trail, 0x40, 0x7E) || In(trail, 0x80, 0xFC))) {
      points += 4;
      i += 1;
    } else if (In(b, 0xA1, 0xDF) || In(b, 0x20, 0x7E)) {
      points += 1;
    } else if (b == 0x00) {
      // NULs at odd offsets are the high bytes of UTF-16 text.
      if (i % 2 == 0) points += 1;
    } else if (IsControl(b)) {
      points += 1;
    }
  }
  return Score(points, last);
}

std::int16_t ScoreEuc(const Bytes& bytes, int last, bool /*earlyAnswer*/) {
  long points = 0;
  for (int i = 0; i <= last; ++i) {
    const std::uint8_t b = bytes[static_cast<std::size_t>(i)];
    std::uint8_t b1 = 0, b2 = 0;
    const bool has1 = ByteAt(bytes, i + 1, b1);
    if (b == 0x8E && has1 && In(b1, 0xA1, 0xDF)) {
      points += 4;
      i += 1;
    } else if (b == 0x8F && has1 && In(b1, 0xA1, 0xFE) && ByteAt(bytes, i + 2, b2) &&
               In(b2, 0xA1, 0xFE)) {
      points += 6;
      i += 2;
    } else if (In(b, 0xA1, 0xFE) && has1 && In(b1, 0xA1, 0xFE)) {
      points += 4;
      i += 1;
    } else if (b < 0x80) {
      points += 1;
    }
  }
  return Score(points, last);
}

std::string_view JudgeCode(const Bytes& bytes) {
  using Scorer = std::int16_t (*)(const Bytes&, int, bool);
  struct Candidate {
    std::string_view name;
    Scorer score;
  };
  // The order in which the scorers are asked for a certain answer.
  static constexpr std::array<Candidate, 6> kAskOrder = {{{kEncodingJis, ScoreJis},
                                                          {kEncodingUnicode, ScoreUnicode},
                                                          {kEncodingUtf8, ScoreUtf8},
                                                          {kEncodingUtf7, ScoreUtf7},
                                                          {kEncodingSjis, ScoreSjis},
                                                          {kEncodingEuc, ScoreEuc}}};
  // The order in which equal scores are decided: the earlier name wins.
  static constexpr std::array<std::string_view, 6> kTieOrder = {
      kEncodingSjis, kEncodingUnicode, kEncodingJis, kEncodingUtf7, kEncodingUtf8, kEncodingEuc};

  // A leading byte-order mark decides before any scorer is asked: the JIS
  // scorer answers first and would take a marked UTF-8 file that holds an
  // "ESC ( B" sequence, and every macro is saved with that mark.
  if (bytes.size() >= 3 && bytes[0] == 0xEF && bytes[1] == 0xBB && bytes[2] == 0xBF)
    return kEncodingUtf8;
  if (bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE) return kEncodingUnicode;
  // Editors save UTF-8 without a mark by default, and the scorers read a
  // mostly-ASCII file with a few such characters as Shift_JIS. Text in the
  // other encodings is hardly ever well-formed UTF-8 for long.
  if (IsMultiByteUtf8(bytes)) return kEncodingUtf8;

  const int last =
      static_cast<int>(std::min<std::size_t>(bytes.size(), kWindowBytes)) - 1;  // may be -1
  std::array<std::int16_t, 6> scores{};
  for (std::size_t c = 0; c < kAskOrder.size(); ++c) {
    scores[c] = kAskOrder[c].score(bytes, last, true);
    if (scores[c] == kCertainScore) return kAskOrder[c].name;
  }
  const std::int16_t best = *std::max_element(scores.begin(), scores.end());
  for (const std::string_view name : kTieOrder) {
    for (std::size_t c = 0; c < kAskOrder.size(); ++c)
      if (kAskOrder[c].name == name && scores[c] == best) return name;
  }
  return kEncodingSjis;
}

}  // namespace kx
