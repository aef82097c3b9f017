#pragma once
// PNG and BMP images for the screen waits: read into pixels with the DPI they
// were captured at, and captures written back as PNG with theirs.
#include <cstdint>
#include <optional>
#include <span>

#include "sys/file_port.h"
#include "sys/pixels.h"

namespace kx {

struct DecodedImage {
  PixelImage image;
  int dpi = 96;
};

// The largest image read, in pixels: four screens of 7680x4320 and more, while
// a file that claims more cannot make the program allocate gigabytes.
inline constexpr std::int64_t kMaxImagePixels = std::int64_t{1} << 27;

// A PNG (any bit depth, palette and alpha included) or BMP; none for anything
// else, a damaged file, an image of zero size or one beyond kMaxImagePixels.
// The DPI comes from a PNG's pHYs chunk when it is given per metre, else 96.
std::optional<DecodedImage> DecodeImage(std::span<const std::uint8_t> bytes);

// The horizontal DPI a PNG's pHYs chunk states; none when the bytes are no
// PNG, carry no pHYs chunk or give it without a unit.
std::optional<int> PngDpi(std::span<const std::uint8_t> bytes);

// A PNG of the image, its alpha kept, with a pHYs chunk stating the DPI.
Bytes EncodePng(const PixelImage& image, int dpi);

}  // namespace kx
