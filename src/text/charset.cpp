#include "text/charset.h"

#include <algorithm>
#include <iterator>

#include "text/jis_transform.h"
#include "text/platform_codec.h"
#include "text/utf.h"

namespace kx {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::string_view AsChars(const Bytes& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

Bytes ToBytes(std::string_view text) {
  return Bytes(text.begin(), text.end());
}

}  // namespace

std::string DecodeBytes(std::string_view charset, const Bytes& bytes) {
  if (charset == kCharsetUtf8) {
    std::string_view text = AsChars(bytes);
    if (text.starts_with(kUtf8Mark)) text.remove_prefix(kUtf8Mark.size());
    return SanitizeUtf8(text);
  }
  if (charset == kCharsetUtf16Le) return Utf16ToUtf8(Utf16LeBytesToText(bytes));
  if (charset == kCharsetEucJp) return PlatformDecode(PlatformCharset::kEucJp, bytes);
  if (charset == kCharsetIso2022Jp)
    return PlatformDecode(PlatformCharset::kEucJp, Iso2022JpToEucJp(bytes));
  if (charset == kCharsetUtf7) return PlatformDecode(PlatformCharset::kUtf7, bytes);
  if (charset == kCharsetShiftJis) return DecodeAnsi(bytes);
  return {};
}

std::string DecodeAnsi(const Bytes& bytes) {
  return PlatformDecode(PlatformCharset::kShiftJis, bytes);
}

Bytes EncodeText(std::string_view charset, std::string_view text) {
  if (charset == kCharsetUtf8) {
    Bytes out = ToBytes(kUtf8Mark);
    const std::string clean = SanitizeUtf8(text);
    out.insert(out.end(), clean.begin(), clean.end());
    return out;
  }
  if (charset == kCharsetUtf16Le) return Utf16ToLeBytes(Utf8ToUtf16(text));
  if (charset == kCharsetEucJp) return PlatformEncode(PlatformCharset::kEucJp, text);
  if (charset == kCharsetIso2022Jp)
    return EucJpToIso2022Jp(PlatformEncode(PlatformCharset::kEucJp, text));
  if (charset == kCharsetUtf7) return PlatformEncode(PlatformCharset::kUtf7, text);
  if (charset == kCharsetShiftJis) return PlatformEncode(PlatformCharset::kShiftJis, text);
  return {};
}

bool SaveText(FilePort& files, std::string_view charset, std::string_view text,
              std::string_view path) {
  // An unknown charset must not turn into an empty file over the old one.
  constexpr std::string_view kKnown[] = {kCharsetIso2022Jp, kCharsetEucJp,   kCharsetUtf7,
                                         kCharsetUtf8,      kCharsetUtf16Le, kCharsetShiftJis};
  if (path.empty() || std::find(std::begin(kKnown), std::end(kKnown), charset) == std::end(kKnown))
    return false;
  return files.WriteAtomic(path, EncodeText(charset, text));
}

}  // namespace kx
