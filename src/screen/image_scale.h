#pragma once
// An image as it shows at another display scale.
#include "sys/pixels.h"

namespace kx {

// The image at `ratio` times its size (the monitor's DPI over the image's).
// A pixel whose part of the original holds one colour takes that colour; a
// pixel on the border of two colours, whose look depends on how the system
// scaled, becomes transparent and matches anything, unless so few certain
// pixels would be left that almost anything would match: then it keeps the
// colour of the original pixel under its centre.
PixelImage ScaleImage(const PixelImage& image, double ratio);

}  // namespace kx
