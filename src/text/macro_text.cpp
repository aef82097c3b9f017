#include "text/macro_text.h"

namespace kx {

// UTF-8 only for now; the encoding detector replaces this.
std::string DecodeMacroBytes(const Bytes& bytes) {
  std::string text(bytes.begin(), bytes.end());
  if (text.starts_with("\xEF\xBB\xBF")) text.erase(0, 3);
  return text;
}

std::optional<std::string> ReadMacroFile(FilePort& files, std::string_view path) {
  auto bytes = files.ReadAll(path);
  if (!bytes) return std::nullopt;
  return DecodeMacroBytes(*bytes);
}

}  // namespace kx
