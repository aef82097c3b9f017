#include "screen/image_file.h"

#include <array>
#include <cmath>
#include <cstring>
#include <string_view>

#include "sys/screen_port.h"

// stb's decoders and encoder, built here once. Only the two formats the
// waits take are compiled in, so a file of any other kind is refused early,
// and nothing touches the disk: files arrive through the file port.
#define STBI_ONLY_PNG
#define STBI_ONLY_BMP
#define STBI_NO_STDIO
#define STBI_NO_LINEAR
#define STBI_NO_HDR
#define STBI_NO_FAILURE_STRINGS
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#include <stb/stb_image.h>
#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image_write.h>

namespace kx {

namespace {

constexpr std::array<std::uint8_t, 8> kPngSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr double kMetresPerInch = 0.0254;
constexpr int kRgba = 4;
constexpr std::size_t kChunkHeader = 8;  // length and type
constexpr std::size_t kChunkCrc = 4;
constexpr std::size_t kPhysLength = 9;
constexpr std::uint8_t kUnitMetre = 1;
constexpr int kLowestDpi = 24;
constexpr int kHighestDpi = 960;

std::uint32_t BigEndian32(const std::uint8_t* p) {
  return (std::uint32_t{p[0]} << 24) | (std::uint32_t{p[1]} << 16) | (std::uint32_t{p[2]} << 8) |
         std::uint32_t{p[3]};
}

void PutBigEndian32(Bytes& out, std::uint32_t v) {
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<std::uint8_t>(v >> shift));
}

bool IsPng(std::span<const std::uint8_t> bytes) {
  return bytes.size() >= kPngSignature.size() &&
         std::memcmp(bytes.data(), kPngSignature.data(), kPngSignature.size()) == 0;
}

std::uint32_t Crc32(std::span<const std::uint8_t> bytes) {
  std::uint32_t crc = 0xFFFFFFFFu;
  for (const std::uint8_t b : bytes) {
    crc ^= b;
    for (int k = 0; k < 8; ++k) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
  }
  return ~crc;
}

}  // namespace

std::optional<int> PngDpi(std::span<const std::uint8_t> bytes) {
  if (!IsPng(bytes)) return std::nullopt;
  std::size_t at = kPngSignature.size();
  while (bytes.size() - at >= kChunkHeader + kChunkCrc) {
    const std::uint32_t length = BigEndian32(&bytes[at]);
    const std::string_view type(reinterpret_cast<const char*>(&bytes[at + 4]), 4);
    if (length > bytes.size() - at - kChunkHeader - kChunkCrc) return std::nullopt;
    // The density must come before the pixels; a later one is not looked at.
    if (type == "IDAT" || type == "IEND") return std::nullopt;
    if (type == "pHYs" && length == kPhysLength) {
      const std::uint8_t* data = &bytes[at + kChunkHeader];
      if (data[8] != kUnitMetre) return std::nullopt;
      const double dpi = std::round(BigEndian32(data) * kMetresPerInch);
      if (dpi < kLowestDpi || dpi > kHighestDpi) return std::nullopt;
      return static_cast<int>(dpi);
    }
    at += kChunkHeader + length + kChunkCrc;
  }
  return std::nullopt;
}

std::optional<DecodedImage> DecodeImage(std::span<const std::uint8_t> bytes) {
  if (bytes.empty() || bytes.size() > static_cast<std::size_t>(INT32_MAX)) return std::nullopt;
  const auto* data = bytes.data();
  const int length = static_cast<int>(bytes.size());
  int width = 0;
  int height = 0;
  int channels = 0;
  if (!stbi_info_from_memory(data, length, &width, &height, &channels)) return std::nullopt;
  if (width <= 0 || height <= 0 || static_cast<std::int64_t>(width) * height > kMaxImagePixels)
    return std::nullopt;
  stbi_uc* rgba = stbi_load_from_memory(data, length, &width, &height, &channels, kRgba);
  if (!rgba) return std::nullopt;
  DecodedImage out;
  out.image = PixelImage(width, height);
  const std::size_t count = out.image.pixels.size();
  for (std::size_t i = 0; i < count; ++i) {
    const stbi_uc* p = rgba + i * kRgba;
    out.image.pixels[i] = (Pixel{p[3]} << 24) | (Pixel{p[0]} << 16) | (Pixel{p[1]} << 8) | p[2];
  }
  stbi_image_free(rgba);
  out.dpi = PngDpi(bytes).value_or(kBaseDpi);
  return out;
}

Bytes EncodePng(const PixelImage& image, int dpi) {
  std::vector<std::uint8_t> rgba(image.pixels.size() * kRgba);
  for (std::size_t i = 0; i < image.pixels.size(); ++i) {
    const Pixel p = image.pixels[i];
    rgba[i * kRgba] = static_cast<std::uint8_t>(RedOf(p));
    rgba[i * kRgba + 1] = static_cast<std::uint8_t>(GreenOf(p));
    rgba[i * kRgba + 2] = static_cast<std::uint8_t>(BlueOf(p));
    rgba[i * kRgba + 3] = static_cast<std::uint8_t>(p >> 24);
  }
  Bytes png;
  stbi_write_png_to_func(
      [](void* context, void* data, int size) {
        auto* out = static_cast<Bytes*>(context);
        const auto* bytes = static_cast<const std::uint8_t*>(data);
        out->insert(out->end(), bytes, bytes + size);
      },
      &png, image.width, image.height, kRgba, rgba.data(), image.width * kRgba);
  if (png.size() < kPngSignature.size() + kChunkHeader) return png;
  // stb writes no density; the pHYs chunk goes right after the header chunk.
  const std::size_t afterHeader =
      kPngSignature.size() + kChunkHeader + BigEndian32(&png[kPngSignature.size()]) + kChunkCrc;
  Bytes phys;
  PutBigEndian32(phys, static_cast<std::uint32_t>(kPhysLength));
  for (const char c : std::string_view("pHYs")) phys.push_back(static_cast<std::uint8_t>(c));
  const auto perMetre = static_cast<std::uint32_t>(std::lround(dpi / kMetresPerInch));
  PutBigEndian32(phys, perMetre);
  PutBigEndian32(phys, perMetre);
  phys.push_back(kUnitMetre);
  PutBigEndian32(phys, Crc32(std::span<const std::uint8_t>(phys).subspan(4)));
  png.insert(png.begin() + static_cast<std::ptrdiff_t>(afterHeader), phys.begin(), phys.end());
  return png;
}

}  // namespace kx
