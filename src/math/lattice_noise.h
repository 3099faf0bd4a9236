// Gradient noise at a point of one, two or three coordinates.
//
// In three dimensions there are two forms, which give the same bits: `scalar` reads like the rule, in plain
// C++; `vectorized` computes four numbers at a time, where the compiler has vectors.
//
// The order of every sum and product is part of the values: nothing here is reordered or fused (see
// cmake/compiler_options.cmake).
#pragma once

#include "core/compiler.h"
#include "math/noise_tables.h"

#include <cstring>

namespace Zel::lattice {

constexpr float kLatticeOffset = 4096.0F;

/// `t`, or 0 where an int cannot hold it. That is the same place of the pattern: floats from 2^31 on are
/// multiples of 256. NaN counts as 0. The bound is exact: no smaller float than 2^31 has a square that rounds
/// to 2^62.
template <class Value>
Value withinInt(Value const& t) {
    return t * t < 0x1p62F ? t : Value{};
}

template <class Value>
Value fade(Value const& distance) {
    return distance * distance * (3.0F - 2.0F * distance);
}

template <class Value>
Value lerp(float s, Value const& a, Value const& b) {
    return a + s * (b - a);
}

/// A coordinate between two neighbours on the lattice: the cell of the lower one, and the distance from each.
struct Place {
    explicit Place(float coordinate) {
        float const t = withinInt(coordinate + kLatticeOffset);
        int const whole = static_cast<int>(t);
        cell = static_cast<unsigned>(whole) % kCells;
        distance[0] = t - static_cast<float>(whole);
        distance[1] = distance[0] - 1.0F;
    }

    std::size_t cell;
    float distance[2]; ///< from the lower, and from the upper
};

inline float noiseAt(float coordinate) {
    Place const x(coordinate);
    return lerp(fade(x.distance[0]), x.distance[0] * kTables.gradient1[kTables.permutation[x.cell]],
                x.distance[1] * kTables.gradient1[kTables.permutation[x.cell + 1]]);
}

inline float noiseAt(Vector2 const& v) {
    Place const x(v.x);
    Place const y(v.y);
    auto const corner = [&](std::size_t upperX, std::size_t upperY) {
        std::uint32_t const* const row = kTables.permutation + kTables.permutation[x.cell + upperX];
        Vector2 const& gradient = kTables.gradient2[row[y.cell + upperY]];
        return x.distance[upperX] * gradient.x + y.distance[upperY] * gradient.y;
    };
    auto const edge = [&](std::size_t upperY) {
        return lerp(fade(x.distance[0]), corner(0, upperY), corner(1, upperY));
    };
    return lerp(fade(y.distance[0]), edge(0), edge(1));
}

namespace scalar {

/// The eight corners around the point, blended along x, then y, then z. The value of a corner is the dot
/// product of its gradient and the distance of the point from it.
inline float noiseAt(Vector3 const& v) {
    Place const x(v.x);
    Place const y(v.y);
    Place const z(v.z);
    auto const corner = [&](std::size_t upperX, std::size_t upperY, std::size_t upperZ) {
        std::uint32_t const* const row = kTables.permutation + kTables.permutation[x.cell + upperX];
        // Meant: the last step permutes nothing.
        std::size_t const index = row[y.cell + upperY] + z.cell + upperZ;
        return x.distance[upperX] * kTables.gradient3X[index] +
               y.distance[upperY] * kTables.gradient3Y[index] +
               z.distance[upperZ] * kTables.gradient3Z[index];
    };
    auto const edge = [&](std::size_t upperY, std::size_t upperZ) {
        return lerp(fade(x.distance[0]), corner(0, upperY, upperZ), corner(1, upperY, upperZ));
    };
    auto const side = [&](std::size_t upperZ) {
        return lerp(fade(y.distance[0]), edge(0, upperZ), edge(1, upperZ));
    };
    return lerp(fade(z.distance[0]), side(0), side(1));
}

} // namespace scalar

#if ZEL_GNU_FORMS
namespace vectorized {

using compiler::converted;
using compiler::shuffled;
using Two = compiler::Vector<float, 2>;
using Four = compiler::Vector<float, 4>;
using FourInts = compiler::Vector<std::int32_t, 4>;

/// The entries i and i + 1, j and j + 1.
inline Four pairs(float const* table, std::size_t i, std::size_t j) {
    Two low;
    Two high;
    std::memcpy(&low, table + i, sizeof low);
    std::memcpy(&high, table + j, sizeof high);
    return shuffled<0, 1, 2, 3>(low, high);
}

inline float noiseAt(Vector3 const& v) {
    Four const t = withinInt(Four{v.x, v.y, v.z, v.z} + kLatticeOffset);
    auto const whole = converted<FourInts>(t);
    FourInts const cell = whole & (kCells - 1);
    Four const distance0 = t - converted<Four>(whole);
    Four const distance1 = distance0 - 1.0F;
    Four const fades = fade(distance0);

    // The corners of one x: those of the lower and of the upper y, each with the lower and the upper z.
    Four const distanceY = shuffled<1, 1, 5, 5>(distance0, distance1);
    Four const distanceZ = shuffled<2, 6, 2, 6>(distance0, distance1);
    std::size_t const cellX = static_cast<std::uint32_t>(cell[0]);
    std::size_t const cellY = static_cast<std::uint32_t>(cell[1]);
    std::size_t const cellZ = static_cast<std::uint32_t>(cell[2]);
    auto const corners = [&](std::size_t cellOfX, float distanceX) -> Four {
        std::uint32_t const* const row = kTables.permutation + kTables.permutation[cellOfX] + cellY;
        std::size_t const i = row[0] + cellZ;
        std::size_t const j = row[1] + cellZ;
        return distanceX * pairs(kTables.gradient3X, i, j) + distanceY * pairs(kTables.gradient3Y, i, j) +
               distanceZ * pairs(kTables.gradient3Z, i, j);
    };

    Four const alongX = lerp(fades[0], corners(cellX, distance0[0]), corners(cellX + 1, distance1[0]));
    Two const lowerY = shuffled<0, 1>(alongX, alongX);
    Two const upperY = shuffled<2, 3>(alongX, alongX);
    Two const alongY = lerp(fades[1], lowerY, upperY);
    return lerp(fades[2], alongY[0], alongY[1]);
}

} // namespace vectorized
using vectorized::noiseAt;
#else
using scalar::noiseAt;
#endif

} // namespace Zel::lattice
