#include "text/macro_text.h"

#include "text/charset.h"
#include "text/encoding_judge.h"
#include "text/utf.h"

namespace kx {

namespace {

// The converter for each answer of the detector; anything else is read
// through the ANSI code page.
std::string DecodeAs(std::string_view encoding, const Bytes& bytes) {
  if (encoding == kEncodingEuc) return DecodeBytes(kCharsetEucJp, bytes);
  if (encoding == kEncodingJis) return DecodeBytes(kCharsetIso2022Jp, bytes);
  if (encoding == kEncodingUtf8) return DecodeBytes(kCharsetUtf8, bytes);
  if (encoding == kEncodingUtf7) return DecodeBytes(kCharsetUtf7, bytes);
  if (encoding == kEncodingUnicode) {
    const bool marked = bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE;
    return Utf16ToUtf8(Utf16LeBytesToText(bytes, marked ? 2 : 0));
  }
  return DecodeAnsi(bytes);
}

}  // namespace

std::string NormalizeLineEnds(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 32);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\r') {
      out += "\r\n";
      if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
    } else if (c == '\n') {
      out += "\r\n";
    } else {
      out += c;
    }
  }
  return out;
}

std::string DecodeMacroBytes(const Bytes& bytes) {
  return NormalizeLineEnds(DecodeAs(JudgeCode(bytes), bytes));
}

std::optional<std::string> ReadMacroFile(FilePort& files, std::string_view path) {
  auto bytes = files.ReadAll(path);
  if (!bytes) return std::nullopt;
  return DecodeMacroBytes(*bytes);
}

std::string sReadText(FilePort& files, std::string_view path) {
  return ReadMacroFile(files, path).value_or(std::string());
}

bool sWriteText(FilePort& files, std::string_view path, std::string_view text) {
  return SaveText(files, kCharsetUtf8, text, path);
}

}  // namespace kx
