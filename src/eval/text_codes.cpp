#include "eval/text_codes.h"

#include <array>

#include "text/charset.h"

namespace kx {
namespace {

// Full-width forms of the half-width katakana U+FF61 to U+FF9F, in order.
constexpr std::array<char32_t, 63> kFullKana = {
    0x3002, 0x300C, 0x300D, 0x3001, 0x30FB, 0x30F2, 0x30A1, 0x30A3, 0x30A5, 0x30A7, 0x30A9,
    0x30E3, 0x30E5, 0x30E7, 0x30C3, 0x30FC, 0x30A2, 0x30A4, 0x30A6, 0x30A8, 0x30AA, 0x30AB,
    0x30AD, 0x30AF, 0x30B1, 0x30B3, 0x30B5, 0x30B7, 0x30B9, 0x30BB, 0x30BD, 0x30BF, 0x30C1,
    0x30C4, 0x30C6, 0x30C8, 0x30CA, 0x30CB, 0x30CC, 0x30CD, 0x30CE, 0x30CF, 0x30D2, 0x30D5,
    0x30D8, 0x30DB, 0x30DE, 0x30DF, 0x30E0, 0x30E1, 0x30E2, 0x30E4, 0x30E6, 0x30E8, 0x30E9,
    0x30EA, 0x30EB, 0x30EC, 0x30ED, 0x30EF, 0x30F3, 0x309B, 0x309C};
constexpr char32_t kHalfVoiced = 0xFF9E;
constexpr char32_t kHalfSemiVoiced = 0xFF9F;

bool TakesSemiVoicedMark(char32_t full) {
  return full >= 0x30CF && full <= 0x30DB && (full - 0x30CF) % 3 == 0;
}
bool TakesVoicedMark(char32_t full) {
  return (full >= 0x30AB && full <= 0x30C8 && full != 0x30C3) || TakesSemiVoicedMark(full) ||
         full == 0x30A6;
}

char32_t Voiced(char32_t full) {
  return full == 0x30A6 ? 0x30F4 : full + 1;
}

}  // namespace

std::u32string DecodeUtf8(std::string_view text) {
  std::u32string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    const auto b = static_cast<unsigned char>(text[i]);
    int extra = b < 0x80 ? 0 : (b >> 5) == 6 ? 1 : (b >> 4) == 14 ? 2 : (b >> 3) == 30 ? 3 : -1;
    char32_t cp = extra == 0   ? b
                  : extra == 1 ? (b & 0x1Fu)
                  : extra == 2 ? (b & 0x0Fu)
                               : (b & 0x07u);
    bool ok = extra >= 0 && i + static_cast<size_t>(extra) < text.size();
    for (int k = 1; ok && k <= extra; ++k) {
      const auto c = static_cast<unsigned char>(text[i + static_cast<size_t>(k)]);
      if ((c & 0xC0) != 0x80) ok = false;
      cp = (cp << 6) | (c & 0x3Fu);
    }
    if (!ok) {
      out.push_back(0xFFFD);
      ++i;
      continue;
    }
    out.push_back(cp);
    i += static_cast<size_t>(extra) + 1;
  }
  return out;
}

std::string EncodeUtf8(std::u32string_view text) {
  std::string out;
  out.reserve(text.size());
  for (char32_t c : text) {
    if (c > 0x10FFFF) c = 0xFFFD;
    if (c < 0x80) {
      out.push_back(static_cast<char>(c));
    } else if (c < 0x800) {
      out.push_back(static_cast<char>(0xC0 | (c >> 6)));
      out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else if (c < 0x10000) {
      out.push_back(static_cast<char>(0xE0 | (c >> 12)));
      out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    } else {
      out.push_back(static_cast<char>(0xF0 | (c >> 18)));
      out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
      out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
    }
  }
  return out;
}

// Both directions go through the platform's code page 932 converter, so every
// character of the code page (kanji included) has its code.
std::uint16_t AnsiCode(char32_t ch) {
  if (ch < 0x80) return static_cast<std::uint16_t>(ch);
  const Bytes bytes = EncodeText(kCharsetShiftJis, EncodeUtf8(std::u32string(1, ch)));
  if (bytes.size() == 1) return bytes[0];
  // Two bytes are a character only when the first is a lead byte; a character
  // beyond the code page may come back as two stand-ins ("??").
  if (bytes.size() == 2 && bytes[0] >= 0x81)
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
  return '?';
}

char32_t CharFromAnsi(std::uint16_t code) {
  if (code < 0x80) return code;
  const Bytes bytes = code <= 0xFF ? Bytes{static_cast<std::uint8_t>(code)}
                                   : Bytes{static_cast<std::uint8_t>(code >> 8),
                                           static_cast<std::uint8_t>(code & 0xFF)};
  const std::u32string text = DecodeUtf8(DecodeBytes(kCharsetShiftJis, bytes));
  // A code without a character (a lone lead byte, an unassigned cell) gives the
  // code page's own stand-in.
  if (text.size() == 1 && text[0] != 0xFFFD && text[0] != '?' && text[0] != 0) return text[0];
  return 0x30FB;
}

std::string ToFullWidth(std::string_view text) {
  const std::u32string in = DecodeUtf8(text);
  std::u32string out;
  for (size_t i = 0; i < in.size(); ++i) {
    const char32_t c = in[i];
    if (c == ' ') {
      out.push_back(0x3000);
    } else if (c >= 0x21 && c <= 0x7E) {
      out.push_back(c - 0x21 + 0xFF01);
    } else if (c >= 0xFF61 && c <= 0xFF9F) {
      char32_t full = kFullKana[c - 0xFF61];
      const char32_t next = i + 1 < in.size() ? in[i + 1] : 0;
      if (next == kHalfVoiced && TakesVoicedMark(full)) {
        full = Voiced(full);
        ++i;
      } else if (next == kHalfSemiVoiced && TakesSemiVoicedMark(full)) {
        full += 2;
        ++i;
      }
      out.push_back(full);
    } else {
      out.push_back(c);
    }
  }
  return EncodeUtf8(out);
}

std::string ToHalfWidth(std::string_view text) {
  std::u32string out;
  for (char32_t c : DecodeUtf8(text)) {
    if (c == 0x3000) {
      out.push_back(' ');
      continue;
    }
    if (c >= 0xFF01 && c <= 0xFF5E) {
      out.push_back(c - 0xFF01 + 0x21);
      continue;
    }
    bool done = false;
    for (size_t k = 0; k < kFullKana.size() && !done; ++k) {
      const char32_t full = kFullKana[k];
      const auto half = static_cast<char32_t>(0xFF61 + k);
      if (c == full) {
        out.push_back(half);
      } else if (TakesVoicedMark(full) && c == Voiced(full)) {
        out += {half, kHalfVoiced};
      } else if (TakesSemiVoicedMark(full) && c == full + 2) {
        out += {half, kHalfSemiVoiced};
      } else {
        continue;
      }
      done = true;
    }
    if (!done) out.push_back(c);
  }
  return EncodeUtf8(out);
}

}  // namespace kx
