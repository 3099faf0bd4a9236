// Colours as floating-point numbers: arithmetic, blending, and hue, saturation and value (A. R. Smith, "Color
// Gamut Transform Pairs", 1978).

#include <algorithm>
#include <zel/color.h>

namespace Zel {

FColor::FColor(float red, float green, float blue, float alpha) : r(red), g(green), b(blue), a(alpha) {}

void FColor::set(float red, float green, float blue, float alpha) {
    set(red, green, blue);
    a = alpha;
}

void FColor::set(float red, float green, float blue) {
    r = red;
    g = green;
    b = blue;
}

FColor& FColor::operator+=(FColor const& other) {
    r += other.r;
    g += other.g;
    b += other.b;
    a += other.a;
    return *this;
}

FColor& FColor::operator-=(FColor const& other) {
    r -= other.r;
    g -= other.g;
    b -= other.b;
    a -= other.a;
    return *this;
}

FColor& FColor::operator*=(FColor const& other) {
    r *= other.r;
    g *= other.g;
    b *= other.b;
    a *= other.a;
    return *this;
}

FColor& FColor::operator*=(float factor) {
    r *= factor;
    g *= factor;
    b *= factor;
    a *= factor;
    return *this;
}

FColor& FColor::operator/=(float divisor) {
    float const factor = 1.0F / divisor;
    r *= factor;
    g *= factor;
    b *= factor;
    return *this;
}

FColor FColor::operator+(FColor const& other) const { return FColor(*this) += other; }
FColor FColor::operator-(FColor const& other) const { return FColor(*this) -= other; }
FColor FColor::operator*(FColor const& other) const { return FColor(*this) *= other; }
FColor FColor::operator*(float factor) const { return FColor(*this) *= factor; }
FColor FColor::operator/(float divisor) const { return FColor(*this) /= divisor; }

float FColor::intensity() const { return 0.30F * r + 0.59F * g + 0.11F * b; }

void FColor::interpolate(FColor& out, FColor const& a, float t, FColor const& b) {
    out = b;
    out -= a;
    out *= t;
    out += a;
}

void FColor::bilinear(FColor& out, FColor const& c00, FColor const& c10, FColor const& c01, FColor const& c11,
                      float fx, float fy) {
    out = c00 * ((1.0F - fx) * (1.0F - fy)) + c10 * (fx * (1.0F - fy)) + c01 * ((1.0F - fx) * fy) +
          c11 * (fx * fy);
}

void FColor::rgb2hsv(float r, float g, float b, float* h, float* s, float* v) {
    float const max = std::max({r, g, b});
    float const delta = max - std::min({r, g, b});
    *h = 0.0F;
    *s = max == 0.0F ? 0.0F : delta / max;
    *v = max;
    if (*s == 0.0F)
        return;

    float const rc = (max - r) / delta;
    float const gc = (max - g) / delta;
    float const bc = (max - b) / delta;
    float sector = 0.0F;
    if (r == max)
        sector = bc - gc;
    else if (g == max)
        sector = 2.0F + rc - bc;
    else if (b == max)
        sector = 4.0F + gc - rc;
    *h = sector * 60.0F;
    if (*h < 0.0F)
        *h = static_cast<float>(static_cast<double>(*h) + 360.0);
}

void FColor::hsv2rgb(float h, float s, float v, float* r, float* g, float* b) {
    auto const give = [r, g, b](float red, float green, float blue) {
        *r = red;
        *g = green;
        *b = blue;
    };
    if (s == 0.0F)
        return give(v, v, v);

    float const position = (h == 360.0F ? 0.0F : h) / 60.0F;
    if (!(position > -1.0F && position < 6.0F))
        return give(1.0F, 0.0F, 1.0F);

    int const sector = static_cast<int>(position); // toward zero: a hue in (-60, 0) counts as sector 0
    float const f = position - static_cast<float>(sector);
    float const p = (1.0F - s) * v;
    float const q = (1.0F - f * s) * v;
    float const t = (1.0F - (1.0F - f) * s) * v;
    switch (sector) {
    case 0:
        return give(v, t, p);
    case 1:
        return give(q, v, p);
    case 2:
        return give(p, v, t);
    case 3:
        return give(p, q, v);
    case 4:
        return give(t, p, v);
    default:
        return give(v, p, q);
    }
}

} // namespace Zel
