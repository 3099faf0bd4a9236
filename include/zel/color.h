// Colours: a pixel of four bytes, and a colour of four floats for arithmetic.
#pragma once

#include <cstdint>
#include <zel/api.h>

namespace Zel {

/// a + (b - a) * t, truncated toward zero.
inline int blendChannel(int a, int b, float t) {
    return static_cast<int>(static_cast<float>(b - a) * t + static_cast<float>(a));
}

/// `low` for a value below it, otherwise `high` for a value above it, otherwise `value`.
inline int clampToRange(int value, int low, int high) {
    return value < low ? low : value > high ? high : value;
}

/// A pixel: four channels in memory order blue, green, red, alpha. Opaque black by default.
struct Color {
    std::uint8_t b = 0;
    std::uint8_t g = 0;
    std::uint8_t r = 0;
    std::uint8_t a = 255; ///< 255 is opaque

    constexpr Color() = default;
    constexpr Color(std::uint8_t red, std::uint8_t green, std::uint8_t blue, std::uint8_t alpha)
        : b(blue), g(green), r(red), a(alpha) {}

    /// Adds each channel, alpha included. A sum above 255 becomes 255.
    Color& operator+=(Color const& other) {
        b = added(b, other.b);
        g = added(g, other.g);
        r = added(r, other.r);
        a = added(a, other.a);
        return *this;
    }

    /// Subtracts each channel, alpha included. A difference below 0 becomes 0.
    Color& operator-=(Color const& other) {
        b = subtracted(b, other.b);
        g = subtracted(g, other.g);
        r = subtracted(r, other.r);
        a = subtracted(a, other.a);
        return *this;
    }

    /// Multiplies red, green and blue, and truncates them toward zero. Meant: alpha stays, and a product that
    /// does not fit wraps modulo 256: 200 * 2 becomes 144.
    Color& operator*=(float factor) {
        b = multiplied(b, factor);
        g = multiplied(g, factor);
        r = multiplied(r, factor);
        return *this;
    }

    friend constexpr bool operator==(Color const& x, Color const& y) {
        return x.b == y.b && x.g == y.g && x.r == y.r && x.a == y.a;
    }
    friend constexpr bool operator!=(Color const& x, Color const& y) { return !(x == y); }

private:
    static std::uint8_t added(std::uint8_t x, std::uint8_t y) {
        return static_cast<std::uint8_t>(clampToRange(x + y, 0, 255));
    }
    static std::uint8_t subtracted(std::uint8_t x, std::uint8_t y) {
        return static_cast<std::uint8_t>(clampToRange(x - y, 0, 255));
    }
    static std::uint8_t multiplied(std::uint8_t channel, float factor) {
        float const product = static_cast<float>(channel) * factor;
        // A float beyond 32 bits is a multiple of 256, which wraps to 0. NaN counts as 0, too.
        bool const fits = product > -2147483648.0F && product < 2147483648.0F;
        return fits ? static_cast<std::uint8_t>(static_cast<std::int32_t>(product)) : std::uint8_t{0};
    }
};

/// A colour for arithmetic. Channels are normally from 0 to 1, but no range is enforced.
class ZEL_API FColor {
public:
    float r = 0.0F;
    float g = 0.0F;
    float b = 0.0F;
    float a = 1.0F;

    /// Opaque black.
    FColor() = default;
    FColor(float red, float green, float blue, float alpha);

    void set(float red, float green, float blue, float alpha);
    /// Alpha stays.
    void set(float red, float green, float blue);

    FColor& operator+=(FColor const& other);
    FColor& operator-=(FColor const& other);
    FColor& operator*=(FColor const& other);
    FColor& operator*=(float factor);
    /// Meant: only /= and / leave alpha as it is. That serves averages of colours.
    /// (1, 1, 1, 1) / 2 is (0.5, 0.5, 0.5, 1).
    FColor& operator/=(float divisor);

    FColor operator+(FColor const& other) const;
    FColor operator-(FColor const& other) const;
    FColor operator*(FColor const& other) const;
    FColor operator*(float factor) const;
    /// Alpha stays, as with /=.
    FColor operator/(float divisor) const;

    /// The weighted brightness 0.30 r + 0.59 g + 0.11 b.
    float intensity() const;

    /// out = a + (b - a) * t on all four channels: a for t = 0, b for t = 1. `out` may be the object b, but
    /// not a, as `out` is written first.
    static void interpolate(FColor& out, FColor const& a, float t, FColor const& b);

    /// Blends four corners on all four channels: fx from 0 to 1 leads from c00 to c10, fy from c00 to c01.
    static void bilinear(FColor& out, FColor const& c00, FColor const& c10, FColor const& c01,
                         FColor const& c11, float fx, float fy);

    /// Hue in degrees from 0 to 360, saturation from 0 to 1, and value, the largest of r, g and b. Grey and
    /// black have hue 0 and saturation 0.
    static void rgb2hsv(float r, float g, float b, float* h, float* s, float* v);

    /// The inverse of rgb2hsv. A saturation of 0 gives grey, whatever the hue. Meant: otherwise a hue of -60
    /// or less, or above 360, gives magenta (1, 0, 1).
    static void hsv2rgb(float h, float s, float v, float* r, float* g, float* b);
};

} // namespace Zel
