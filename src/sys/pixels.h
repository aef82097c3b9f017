#pragma once
// Pixels as the screen waits see them: 32 bits each, 0xAARRGGBB, rows top to
// bottom. A screen capture's alpha means nothing; a template's alpha of 0
// marks a pixel that matches anything.
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kx {

using Pixel = std::uint32_t;

inline constexpr Pixel kAlphaMask = 0xFF000000u;
inline constexpr Pixel kColourMask = 0x00FFFFFFu;

inline constexpr int RedOf(Pixel p) {
  return static_cast<int>((p >> 16) & 0xFF);
}
inline constexpr int GreenOf(Pixel p) {
  return static_cast<int>((p >> 8) & 0xFF);
}
inline constexpr int BlueOf(Pixel p) {
  return static_cast<int>(p & 0xFF);
}
inline constexpr bool IsTransparent(Pixel p) {
  return (p & kAlphaMask) == 0;
}

// Pixels owned by someone else: a capture, or an image's own storage.
struct PixelView {
  const Pixel* pixels = nullptr;
  int width = 0;
  int height = 0;
  std::ptrdiff_t stride = 0;  // pixels from one row to the next

  const Pixel* Row(int y) const { return pixels + static_cast<std::ptrdiff_t>(y) * stride; }
  Pixel At(int x, int y) const { return Row(y)[x]; }
};

struct PixelImage {
  int width = 0;
  int height = 0;
  std::vector<Pixel> pixels;

  PixelImage() = default;
  PixelImage(int w, int h, Pixel fill = 0)
      : width(w),
        height(h),
        pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), fill) {}
  Pixel& At(int x, int y) {
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
  }
  Pixel At(int x, int y) const {
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
  }
  PixelView View() const { return {pixels.data(), width, height, width}; }
};

}  // namespace kx
