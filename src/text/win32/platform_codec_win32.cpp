// The Windows build converts with the system's code pages. Wine 8 knows 932,
// 20932 (EUC-JP) and 65000 (UTF-7) but not 51932 or the ISO-2022-JP pages
// 50220 to 50222, so EUC-JP goes through 20932 and ISO-2022-JP is handled
// as a byte transform of EUC-JP in portable code.
#include <windows.h>

#include <climits>

#include "text/platform_codec.h"
#include "text/utf.h"

namespace kx {

namespace {

UINT CodePage(PlatformCharset charset) {
  switch (charset) {
    case PlatformCharset::kShiftJis:
      return 932;
    case PlatformCharset::kEucJp:
      return 20932;
    case PlatformCharset::kUtf7:
      return 65000;
  }
  return 932;
}

// The converters take int lengths, so a huge input is converted in pieces
// that end on a boundary the code page cannot split.
constexpr std::size_t kPieceBytes = 1 << 24;

std::wstring DecodePiece(UINT codePage, const char* data, int length) {
  if (length == 0) return {};
  const int needed = MultiByteToWideChar(codePage, 0, data, length, nullptr, 0);
  if (needed <= 0) return std::wstring(static_cast<std::size_t>(length), L'\xFFFD');
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(codePage, 0, data, length, wide.data(), needed);
  return wide;
}

// Pieces end after a line feed, which is never part of a character in any of
// these code pages; text without line feeds is cut at the size limit.
std::size_t PieceEnd(const Bytes& bytes, std::size_t start) {
  std::size_t end = std::min(bytes.size(), start + kPieceBytes);
  while (end < bytes.size() && end > start && bytes[end - 1] != '\n') --end;
  return end == start ? std::min(bytes.size(), start + kPieceBytes) : end;
}

}  // namespace

std::string PlatformDecode(PlatformCharset charset, const Bytes& bytes) {
  const UINT codePage = CodePage(charset);
  std::string out;
  for (std::size_t start = 0; start < bytes.size();) {
    const std::size_t end = PieceEnd(bytes, start);
    const std::wstring wide =
        DecodePiece(codePage, reinterpret_cast<const char*>(bytes.data() + start),
                    static_cast<int>(end - start));
    out += Utf16ToUtf8(
        std::u16string_view(reinterpret_cast<const char16_t*>(wide.data()), wide.size()));
    start = end;
  }
  return out;
}

Bytes PlatformEncode(PlatformCharset charset, std::string_view utf8) {
  const std::u16string text = Utf8ToUtf16(utf8);
  if (text.empty() || text.size() > INT_MAX / 4) return {};
  const UINT codePage = CodePage(charset);
  const auto* wide = reinterpret_cast<const wchar_t*>(text.data());
  const int length = static_cast<int>(text.size());
  // No best fit: a character the code page lacks becomes "?", not a look-alike.
  const DWORD flags = charset == PlatformCharset::kUtf7 ? 0 : WC_NO_BEST_FIT_CHARS;
  const int needed =
      WideCharToMultiByte(codePage, flags, wide, length, nullptr, 0, nullptr, nullptr);
  if (needed <= 0) return {};
  Bytes out(static_cast<std::size_t>(needed));
  WideCharToMultiByte(codePage, flags, wide, length, reinterpret_cast<char*>(out.data()), needed,
                      nullptr, nullptr);
  return out;
}

}  // namespace kx
