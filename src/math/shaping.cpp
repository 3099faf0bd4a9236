// The shaping curves. Powers and logarithms are computed in double precision: hosts differ in the last bit of
// a double, and rounding to single precision hides it.

#include <zel/noise.h>

#include <cmath>

namespace Zel {
namespace {

/// The exponent e for which 0.5 to the power of e is `value`.
double exponentFor(double value) { return std::log(value) / std::log(0.5); }

} // namespace

float bias(float a, float b) {
    return static_cast<float>(std::pow(static_cast<double>(a), exponentFor(static_cast<double>(b))));
}

float gain(float a, float b) {
    if (a < 0.001F)
        return 0.0F;
    if (a > 0.999F)
        return 1.0F;
    double const exponent = exponentFor(1.0 - static_cast<double>(b));
    auto const x = static_cast<double>(a);
    double const value =
        x < 0.5 ? std::pow(2.0 * x, exponent) * 0.5 : 1.0 - std::pow(2.0 * (1.0 - x), exponent) * 0.5;
    return static_cast<float>(value);
}

} // namespace Zel
