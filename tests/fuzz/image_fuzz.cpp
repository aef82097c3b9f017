// Feeds arbitrary bytes to the image reader as a waitimage line's file or a
// "kx findimage" argument would: it must refuse or decode, never crash, and
// a decoded image must survive being written and read again.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "screen/image_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> bytes(data, size);
  (void)kx::PngDpi(bytes);
  const auto image = kx::DecodeImage(bytes);
  if (!image) return 0;
  if (image->image.width <= 0 || image->image.height <= 0) std::abort();
  // Writing is only tried for small images: it is the reading being tested.
  if (image->image.pixels.size() > 4096) return 0;
  const kx::Bytes png = kx::EncodePng(image->image, image->dpi);
  const auto again = kx::DecodeImage(png);
  if (!again || again->image.pixels != image->image.pixels || again->dpi != image->dpi)
    std::abort();
  return 0;
}
