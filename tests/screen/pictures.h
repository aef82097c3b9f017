#pragma once
// Pictures for the screen tests: deterministic noise, pictures drawn as
// blocks of one colour at any size, and pasting one picture into another.
#include <cstdint>

#include "sys/pixels.h"

namespace kx::test {

// Pixels of pseudo-random opaque colours; the same seed gives the same picture.
inline PixelImage Noise(int width, int height, std::uint32_t seed) {
  PixelImage out(width, height);
  for (Pixel& p : out.pixels) {
    seed = seed * 1664525u + 1013904223u;
    p = kAlphaMask | (seed >> 8);
  }
  return out;
}

// A picture of blocks x blocks cells of pseudo-random colours, each cell
// `cell` pixels wide: the same seed drawn with another cell size is the
// same picture at another scale, as a display would show it.
inline PixelImage Blocks(int blocks, int cell, std::uint32_t seed) {
  const PixelImage colours = Noise(blocks, blocks, seed);
  PixelImage out(blocks * cell, blocks * cell);
  for (int y = 0; y < out.height; ++y)
    for (int x = 0; x < out.width; ++x) out.At(x, y) = colours.At(x / cell, y / cell);
  return out;
}

// Pastes the picture with its top-left corner at (left, top); what falls
// outside `onto` is cut off, transparent pixels leave what is below.
inline void Paste(PixelImage& onto, const PixelImage& picture, int left, int top) {
  for (int y = 0; y < picture.height; ++y)
    for (int x = 0; x < picture.width; ++x) {
      const int u = left + x;
      const int v = top + y;
      if (u < 0 || v < 0 || u >= onto.width || v >= onto.height) continue;
      if (!IsTransparent(picture.At(x, y))) onto.At(u, v) = picture.At(x, y);
    }
}

}  // namespace kx::test
