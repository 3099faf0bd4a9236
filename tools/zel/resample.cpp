// Resampling through the library, with the density of samples that the ratio of the sizes asks for.

#include "resample.h"

#include <algorithm>
#include <cmath>

namespace zel {
namespace {

/// Samples for each source pixel, both ways. The grid of samples is cut at whole numbers, so a pixel of the
/// result must be two of its steps wide, or rounding could leave it without any. Reduced to half or less it
/// is so with one sample for each source pixel.
float density(Zel::Image const& image, int width, int height) {
    float const ratio = std::max(static_cast<float>(width) / static_cast<float>(image.getWidth()),
                                 static_cast<float>(height) / static_cast<float>(image.getHeight()));
    return ratio <= 0.5F ? 1.0F : 2.0F * std::ceil(ratio);
}

} // namespace

Zel::Image resampled(Zel::Image const& image, int width, int height) {
    Zel::Image result(width, height);
    result.copyWithScale(&image, density(image, width, height));
    return result;
}

} // namespace zel
