// Functions for procedural content: gradient noise, turbulence, and the shaping curves bias and gain.
//
// The noise is Ken Perlin's lattice noise ("An Image Synthesizer", SIGGRAPH 1985) with gradients of a fixed
// seed: the same values in every program, to the bit, on every platform. Any thread may call at any time.
#pragma once

#include <zel/api.h>
#include <zel/vector.h>

namespace Zel {

/// Signed noise, from about -1 to 1: smooth, and exactly 0 where every coordinate is an integer. The pattern
/// repeats every 256 units.
/// Coordinates are rounded to what a float of 4096 more can hold: 1 / 2048 around 0. Meant: below -4096 they
/// are cut off towards zero instead of downwards, and the noise jumps between cells. Where a coordinate is
/// not finite, the result is that for an integer.
ZEL_API float snoise(float x);
ZEL_API float snoise(Vector2Template<float> const& v);
ZEL_API float snoise(Vector3Template<float> const& v);

/// The same as snoise, from about 0 to 1, and 0.5 at integers.
ZEL_API float noise(float x);
ZEL_API float noise(Vector2Template<float> const& v);
ZEL_API float noise(Vector3Template<float> const& v);

/// A sum of ever finer noise without its sign: abs(snoise(x * f)) / f for f = freq, freq / 2, freq / 4 and so
/// on, down to 1. 0 where freq is below 1 or not finite.
ZEL_API float turbulence(float x, float freq);
ZEL_API float turbulence(Vector3Template<float> const& v, float freq);

/// The same sum with the sign of each term.
ZEL_API float sturbulence(float x, float freq);
ZEL_API float sturbulence(Vector3Template<float> const& v, float freq);

/// Bends the line from 0 to 1 so that 0.5 becomes b: a to the power of ln(b) / ln(0.5). Both arguments lie
/// between 0 and 1; b = 0.5 returns a.
ZEL_API float bias(float a, float b);

/// Bends the line from 0 to 1 into an S through its middle: flat ends for b above 0.5, a flat middle for b
/// below it; b = 0.5 returns a. Meant: 0 for a below 0.001 and 1 above 0.999, whatever b.
ZEL_API float gain(float a, float b);

} // namespace Zel
