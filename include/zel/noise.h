// Functions for procedural content: gradient noise, turbulence, and the shaping curves bias and gain.
//
// The noise is Ken Perlin's lattice noise ("An Image Synthesizer", SIGGRAPH 1985), with gradients from a
// fixed seed: the same values in every program and on every platform, to the bit. Any thread may call these
// functions at any time; none of them throws.
#pragma once

#include <zel/api.h>
#include <zel/vector.h>

namespace Zel {

/// Signed noise, from about -1 to 1: smooth, and exactly 0 where every coordinate is an integer. The pattern
/// repeats every 256 units.
///
/// 4096 is added to each coordinate, in single precision, so steps around 0 are 1 / 2048 wide. Meant: the sum
/// is truncated toward zero, so below -4096 the noise jumps between cells. A coordinate that is not finite
/// counts as an integer.
ZEL_API float snoise(float x);
ZEL_API float snoise(Vector2Template<float> const& v);
ZEL_API float snoise(Vector3Template<float> const& v);

/// snoise * 0.5 + 0.5: from about 0 to 1, and 0.5 where every coordinate is an integer.
ZEL_API float noise(float x);
ZEL_API float noise(Vector2Template<float> const& v);
ZEL_API float noise(Vector3Template<float> const& v);

/// The sum of abs(snoise(x * f)) / f for f = freq, freq / 2, freq / 4 and so on, while f is at least 1:
/// turbulence(x, 4) adds three terms, of f = 4, 2 and 1. 0 when freq is below 1 or not finite.
ZEL_API float turbulence(float x, float freq);
ZEL_API float turbulence(Vector3Template<float> const& v, float freq);

/// The same sum of snoise(x * f) / f, each term with its sign.
ZEL_API float sturbulence(float x, float freq);
ZEL_API float sturbulence(Vector3Template<float> const& v, float freq);

/// a to the power of ln(b) / ln(0.5): a curve from 0 to 1 that is b at a = 0.5. Both arguments are from 0
/// to 1; b = 0 and b = 1 give what the logarithm makes of them. bias(a, 0.5) is a.
ZEL_API float bias(float a, float b);

/// A curve from 0 to 1 in the shape of an S, 0.5 at a = 0.5: flat at its ends for b above 0.5, flat in its
/// middle for b below it. Both arguments are from 0 to 1. gain(a, 0.5) is a. Meant: 0 for a below 0.001 and 1
/// for a above 0.999, whatever b is.
ZEL_API float gain(float a, float b);

} // namespace Zel
