// Gradient noise and its sums.

#include <zel/noise.h>

#include "math/lattice_noise.h"

#include <cmath>
#include <limits>

namespace Zel {
namespace {

using lattice::noiseAt;
using lattice::Vector2;
using lattice::Vector3;

float scaled(float x, float factor) { return x * factor; }
Vector3 scaled(Vector3 const& v, float factor) { return {v.x * factor, v.y * factor, v.z * factor}; }

/// The sum of `term(noise)` over the octaves from `freq` down to 1, each divided by its frequency.
template <class Point, class Term>
float octaves(Point const& point, float freq, Term term) {
    if (freq > std::numeric_limits<float>::max())
        return 0.0F;
    float sum = 0.0F;
    float f = freq;
    while (f >= 1.0F) {
        sum += term(noiseAt(scaled(point, f))) / f;
        f *= 0.5F;
    }
    return sum;
}

float withoutSign(float value) { return std::fabs(value); }
float withSign(float value) { return value; }
float fromZeroToOne(float value) { return value * 0.5F + 0.5F; }

} // namespace

float snoise(float x) { return noiseAt(x); }
float snoise(Vector2 const& v) { return noiseAt(v); }
float snoise(Vector3 const& v) { return noiseAt(v); }

float noise(float x) { return fromZeroToOne(noiseAt(x)); }
float noise(Vector2 const& v) { return fromZeroToOne(noiseAt(v)); }
float noise(Vector3 const& v) { return fromZeroToOne(noiseAt(v)); }

float turbulence(float x, float freq) { return octaves(x, freq, withoutSign); }
float turbulence(Vector3 const& v, float freq) { return octaves(v, freq, withoutSign); }

float sturbulence(float x, float freq) { return octaves(x, freq, withSign); }
float sturbulence(Vector3 const& v, float freq) { return octaves(v, freq, withSign); }

} // namespace Zel
