// The pictures of the image benchmarks: 1024 x 1024 pixels, in every format.
#pragma once

#include "scratch.h"

#include <zel/image.h>

namespace bench {

constexpr int kSide = 1024;

/// Smooth clouds with fine grain, as in a photograph.
Zel::Image const& photograph();

/// The same clouds in sixteen flat colours, as palettes and run-length encoding are used for.
Zel::Image const& poster();

/// The photograph as a JPEG file of that quality, encoded by libjpeg-turbo from four bytes a pixel.
std::string encodedJpeg(int quality);

enum class PictureFormat { Tga, TgaRunLength, Bmp, Pcx, Jpeg };

/// Writes the picture, once, and returns its full path on the host: the poster for the run-length encoded
/// formats, the photograph for the others.
std::string pictureFile(PictureFormat format);

} // namespace bench
