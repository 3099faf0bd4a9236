// Resampling through the library, with the density of samples that the ratio of the sizes asks for.

#include "picture/resample.h"

#include <algorithm>
#include <cmath>

namespace zel {
namespace {

/// How much larger the sides of an image are to become.
struct Ratios {
    Ratios(Zel::Image const& image, int width, int height)
        : x(static_cast<float>(width) / static_cast<float>(image.getWidth())),
          y(static_cast<float>(height) / static_cast<float>(image.getHeight())) {}

    float larger() const { return std::max(x, y); }
    float smaller() const { return std::min(x, y); }

    float x, y;
};

/// Samples for each source pixel, both ways. The grid of samples is cut at whole numbers, so a pixel of the
/// result must be two of its steps wide, or rounding could leave it without any. Reduced to half or less it
/// is so with one sample for each source pixel.
float density(Ratios const& ratios) {
    return ratios.larger() <= 0.5F ? 1.0F : 2.0F * std::ceil(ratios.larger());
}

Zel::Image scaled(Zel::Image const& image, int width, int height) {
    Zel::Image result(width, height);
    result.copyWithScale(&image, density(Ratios(image, width, height)));
    return result;
}

} // namespace

Zel::Image resampled(Zel::Image const& image, int width, int height) {
    constexpr int kStep = 4;
    Ratios const ratios(image, width, height);
    if (ratios.larger() <= std::max(1.0F, kStep * ratios.smaller()))
        return scaled(image, width, height);

    // One density serves both sides: the one that grows less would take as many samples as the other, and
    // nearly all for nothing. So it shrinks first, if it does, and the other grows in steps.
    bool const shrinks = ratios.smaller() < 1.0F;
    int const narrow = shrinks ? width : image.getWidth();
    int const low = shrinks ? height : image.getHeight();
    int const grown = shrinks ? 1 : kStep;
    Zel::Image const step = ratios.x > ratios.y ? scaled(image, grown * image.getWidth(), low)
                                                : scaled(image, narrow, grown * image.getHeight());
    return resampled(step, width, height);
}

} // namespace zel
