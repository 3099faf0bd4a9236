// Point and bilinear samples of an image whose border repeats outside.

#include "image/whole_number.h"

#include <cmath>
#include <zel/image.h>

namespace Zel {

Color Image::samplePoint(float x, float y) const {
    if (m_data == nullptr)
        return {};
    int const column = clampToRange(truncated(x + 0.5F), 0, m_width - 1);
    int const row = clampToRange(truncated(y + 0.5F), 0, m_height - 1);
    return (*this)(column, row);
}

Color Image::sampleBilinear(float x, float y) const {
    if (m_data == nullptr)
        return {};
    float const left = std::floor(x);
    float const top = std::floor(y);
    float const fx = std::isfinite(x) ? x - left : 0.0F;
    float const fy = std::isfinite(y) ? y - top : 0.0F;

    std::int64_t const column = truncated(left);
    std::int64_t const row = truncated(top);
    auto const clamped = [](std::int64_t value, int size) {
        return value < 0 ? 0 : value >= size ? size - 1 : static_cast<int>(value);
    };
    int const x0 = clamped(column, m_width);
    int const x1 = clamped(column + 1, m_width);
    int const y0 = clamped(row, m_height);
    int const y1 = clamped(row + 1, m_height);
    Color const c00 = (*this)(x0, y0);
    Color const c10 = (*this)(x1, y0);
    Color const c01 = (*this)(x0, y1);
    Color const c11 = (*this)(x1, y1);

    auto const blend = [&](std::uint8_t Color::*channel) {
        int const upper = blendChannel(c00.*channel, c10.*channel, fx);
        int const lower = blendChannel(c01.*channel, c11.*channel, fx);
        return static_cast<std::uint8_t>(blendChannel(upper, lower, fy));
    };
    return {blend(&Color::r), blend(&Color::g), blend(&Color::b), blend(&Color::a)};
}

} // namespace Zel
