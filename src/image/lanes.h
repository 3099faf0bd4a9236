// Blends of whole pixels, in two forms that give the same bits. `scalar` reads like the rule, in plain C++.
// `vectorized` works on the four channels side by side, where the compiler has vectors.
#pragma once

#include "core/compiler.h"

#include <bit>
#include <cstdint>
#include <zel/image.h>

namespace Zel {
namespace scalar {

/// The blend of four pixels, truncated after each step: fx leads from c00 to c10, fy from c00 to c01, both
/// from 0 to 1.
inline Color bilinear(Color const& c00, Color const& c10, Color const& c01, Color const& c11, float fx,
                      float fy) {
    auto const blend = [&](std::uint8_t Color::*channel) {
        int const upper = blendChannel(c00.*channel, c10.*channel, fx);
        int const lower = blendChannel(c01.*channel, c11.*channel, fx);
        return static_cast<std::uint8_t>(blendChannel(upper, lower, fy));
    };
    return {blend(&Color::r), blend(&Color::g), blend(&Color::b), blend(&Color::a)};
}

/// The average of blends of four pixels, which are not truncated before. Opaque, and black without any.
class BilinearAverage {
public:
    void add(Color const& c00, Color const& c10, Color const& c01, Color const& c11, float fx, float fy) {
        FColor blend;
        FColor::bilinear(blend, floats(c00), floats(c10), floats(c01), floats(c11), fx, fy);
        m_sum += blend;
        ++m_count;
    }

    Color value() const {
        FColor const average = m_count > 0 ? m_sum * (1.0F / static_cast<float>(m_count)) : FColor();
        auto const channelOf = [](float channel) {
            return static_cast<std::uint8_t>(static_cast<int>(channel));
        };
        return {channelOf(average.r), channelOf(average.g), channelOf(average.b), 255};
    }

private:
    static FColor floats(Color const& color) {
        auto const channel = [](std::uint8_t value) {
            return static_cast<float>(value);
        };
        return {channel(color.r), channel(color.g), channel(color.b), channel(color.a)};
    }

    FColor m_sum;
    std::int64_t m_count = 0;
};

} // namespace scalar

#if ZEL_GNU_FORMS
namespace vectorized {

using compiler::sameBits;
using compiler::shuffled;
using FloatLanes = compiler::Vector<float, 4>;
using IntLanes = compiler::Vector<std::int32_t, 4>;

static_assert(std::endian::native == std::endian::little && sizeof(Color) == 4);

/// Blue, green, red and alpha.
inline IntLanes lanesOf(Color const& color) {
    using Bytes = compiler::Vector<std::uint8_t, 16>;
    using HalfWords = compiler::Vector<std::uint16_t, 8>;
    compiler::Vector<std::uint32_t, 4> const words = {std::bit_cast<std::uint32_t>(color), 0, 0, 0};
    auto const interleaved =
        shuffled<0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23>(sameBits<Bytes>(words), Bytes{});
    return sameBits<IntLanes>(
        shuffled<0, 8, 1, 9, 2, 10, 3, 11>(sameBits<HalfWords>(interleaved), HalfWords{}));
}

/// The colour of four channels from 0 to 255.
inline Color colorOf(IntLanes lanes) {
    auto pairs = sameBits<compiler::Vector<std::uint64_t, 2>>(lanes);
    pairs |= pairs >> 24; // the second of each pair comes to stand behind the first
    return std::bit_cast<Color>(static_cast<std::uint32_t>((pairs[0] & 0xFFFFU) | pairs[1] << 16));
}

inline FloatLanes converted(IntLanes lanes) { return compiler::converted<FloatLanes>(lanes); }

/// Truncated toward zero; each value must be one that 32 bits hold.
inline IntLanes truncated(FloatLanes lanes) { return compiler::converted<IntLanes>(lanes); }

inline Color bilinear(Color const& c00, Color const& c10, Color const& c01, Color const& c11, float fx,
                      float fy) {
    auto const blend = [](IntLanes a, IntLanes b, float t) { // blendChannel on all four channels
        return truncated(converted(b - a) * t + converted(a));
    };
    IntLanes const upper = blend(lanesOf(c00), lanesOf(c10), fx);
    IntLanes const lower = blend(lanesOf(c01), lanesOf(c11), fx);
    return colorOf(blend(upper, lower, fy));
}

class BilinearAverage {
public:
    void add(Color const& c00, Color const& c10, Color const& c01, Color const& c11, float fx, float fy) {
        float const left = 1.0F - fx;
        float const above = 1.0F - fy;
        m_sum += floats(c00) * (left * above) + floats(c10) * (fx * above) + floats(c01) * (left * fy) +
                 floats(c11) * (fx * fy);
        ++m_count;
    }

    Color value() const {
        float const factor = m_count > 0 ? 1.0F / static_cast<float>(m_count) : 0.0F;
        Color color = colorOf(truncated(m_sum * factor) & 0xFF);
        color.a = 255;
        return color;
    }

private:
    static FloatLanes floats(Color const& color) { return converted(lanesOf(color)); }

    FloatLanes m_sum{};
    std::int64_t m_count = 0;
};

} // namespace vectorized
namespace lanes = vectorized;
#else
namespace lanes = scalar;
#endif

} // namespace Zel
