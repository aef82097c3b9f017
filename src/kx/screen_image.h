#pragma once
// Screen pictures given on kx's command line: "FILE" or "FILE@X,Y".
#include <optional>
#include <string>
#include <string_view>

#include "screen/image_file.h"
#include "sys/geometry.h"

namespace kx::cli {

struct PlacedImage {
  std::string file;
  Point at;  // where its top-left corner sits on the virtual screen
};

// "FILE@X,Y" with whole numbers X and Y; without a valid "@X,Y" the whole
// text is the file, placed at 0,0.
PlacedImage ParsePlacedImage(std::string_view text);

// The image of a file on the disk; none when it cannot be read or decoded.
std::optional<DecodedImage> ReadImageFile(const std::string& path);

}  // namespace kx::cli
