// Point and bilinear samples of an image whose border repeats outside.

#include "image/lanes.h"
#include "image/whole_number.h"

#include <cmath>
#include <zel/image.h>

namespace Zel {
namespace {

/// A position along one side: the whole number below it, and the fraction above that. NaN counts as 0. A
/// whole number that 32 bits cannot hold becomes the nearest that they can. An infinite position has no
/// fraction.
struct Position {
    explicit Position(float position) {
        constexpr float kSurelyFits = 1.0e9F;
        if (position > -kSurelyFits && position < kSurelyFits) { // the same, without the C library
            auto const toZero = static_cast<std::int32_t>(position);
            whole = static_cast<float>(toZero) > position ? toZero - 1 : toZero;
            fraction = position - static_cast<float>(whole);
        } else {
            float const lower = std::floor(position);
            whole = truncated(lower);
            fraction = std::isfinite(position) ? position - lower : 0.0F;
        }
    }

    std::int64_t whole;
    float fraction;
};

int clamped(std::int64_t value, int size) {
    return value < 0 ? 0 : value >= size ? size - 1 : static_cast<int>(value);
}

/// The pixel nearest to a position along one side. NaN counts as 0. In double precision the sum is exact.
int nearest(float position, int size) {
    constexpr float kSurelyFits = 0x1p62F;
    if (!(std::abs(position) < kSurelyFits))
        return position > 0.0F ? size - 1 : 0;
    double const sum = static_cast<double>(position) + 0.5;
    return clamped(static_cast<std::int64_t>(sum), size);
}

} // namespace

Color Image::samplePoint(float x, float y) const {
    if (m_data == nullptr)
        return {};
    return (*this)(nearest(x, m_width), nearest(y, m_height));
}

Color Image::sampleBilinear(float x, float y) const {
    if (m_data == nullptr)
        return {};
    Position const column(x);
    Position const row(y);
    int const x0 = clamped(column.whole, m_width);
    int const x1 = clamped(column.whole + 1, m_width);
    int const y0 = clamped(row.whole, m_height);
    int const y1 = clamped(row.whole + 1, m_height);
    return lanes::bilinear((*this)(x0, y0), (*this)(x1, y0), (*this)(x0, y1), (*this)(x1, y1),
                           column.fraction, row.fraction);
}

} // namespace Zel
