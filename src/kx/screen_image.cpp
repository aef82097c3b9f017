#include "kx/screen_image.h"

#include "sys/local_files.h"
#include "util/basic_text.h"

namespace kx::cli {

PlacedImage ParsePlacedImage(std::string_view text) {
  const auto at = text.rfind('@');
  if (at != std::string_view::npos) {
    const auto parts = basic::Split(text.substr(at + 1), ",");
    if (parts.size() == 2 && basic::IsNumeric(parts[0]) && basic::IsNumeric(parts[1])) {
      const auto x = basic::ToLong(parts[0]);
      const auto y = basic::ToLong(parts[1]);
      if (x && y) return {std::string(text.substr(0, at)), Point{*x, *y}};
    }
  }
  return {std::string(text), Point{}};
}

std::optional<DecodedImage> ReadImageFile(const std::string& path) {
  LocalFiles files;
  const auto bytes = files.ReadAll(path);
  if (!bytes) return std::nullopt;
  return DecodeImage(*bytes);
}

}  // namespace kx::cli
