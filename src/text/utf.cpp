#include "text/utf.h"

namespace kx {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void AppendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

void AppendUtf16(std::u16string& out, char32_t c) {
  if (c < 0x10000) {
    out += static_cast<char16_t>(c);
  } else {
    c -= 0x10000;
    out += static_cast<char16_t>(0xD800 + (c >> 10));
    out += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
  }
}

// Decodes one code point at i and advances i; invalid input yields U+FFFD
// and consumes one byte.
char32_t NextCodePoint(std::string_view s, std::size_t& i) {
  const auto b = static_cast<unsigned char>(s[i]);
  int length = 0;
  char32_t c = 0;
  char32_t minimum = 0;
  if (b < 0x80) {
    ++i;
    return b;
  } else if ((b & 0xE0) == 0xC0) {
    length = 2, c = b & 0x1F, minimum = 0x80;
  } else if ((b & 0xF0) == 0xE0) {
    length = 3, c = b & 0x0F, minimum = 0x800;
  } else if ((b & 0xF8) == 0xF0) {
    length = 4, c = b & 0x07, minimum = 0x10000;
  } else {
    ++i;
    return kReplacement;
  }
  if (i + static_cast<std::size_t>(length) > s.size()) {
    ++i;
    return kReplacement;
  }
  for (int k = 1; k < length; ++k) {
    const auto t = static_cast<unsigned char>(s[i + static_cast<std::size_t>(k)]);
    if ((t & 0xC0) != 0x80) {
      ++i;
      return kReplacement;
    }
    c = (c << 6) | (t & 0x3F);
  }
  if (c < minimum || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
    ++i;
    return kReplacement;
  }
  i += static_cast<std::size_t>(length);
  return c;
}

}  // namespace

std::u16string Utf8ToUtf16(std::string_view utf8) {
  std::u16string out;
  out.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) AppendUtf16(out, NextCodePoint(utf8, i));
  return out;
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
  std::string out;
  out.reserve(utf16.size() * 3);
  for (std::size_t i = 0; i < utf16.size(); ++i) {
    char32_t c = utf16[i];
    if (c >= 0xD800 && c <= 0xDBFF && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 &&
        utf16[i + 1] <= 0xDFFF) {
      c = 0x10000 + ((c - 0xD800) << 10) + (utf16[i + 1] - 0xDC00);
      ++i;
    } else if (c >= 0xD800 && c <= 0xDFFF) {
      c = kReplacement;
    }
    AppendUtf8(out, c);
  }
  return out;
}

std::u16string Utf16LeBytesToText(const Bytes& bytes, std::size_t offset) {
  std::u16string out;
  if (offset >= bytes.size()) return out;
  out.reserve((bytes.size() - offset) / 2);
  for (std::size_t i = offset; i + 1 < bytes.size(); i += 2)
    out += static_cast<char16_t>(bytes[i] | (bytes[i + 1] << 8));
  return out;
}

Bytes Utf16ToLeBytes(std::u16string_view text) {
  Bytes out;
  out.reserve(text.size() * 2);
  for (const char16_t c : text) {
    out.push_back(static_cast<std::uint8_t>(c & 0xFF));
    out.push_back(static_cast<std::uint8_t>(c >> 8));
  }
  return out;
}

std::string SanitizeUtf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  for (std::size_t i = 0; i < bytes.size();) AppendUtf8(out, NextCodePoint(bytes, i));
  return out;
}

}  // namespace kx
