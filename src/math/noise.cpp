// Gradient noise and its sums.
//
// The order of every sum and product is part of the values: nothing here is reordered or fused (see
// src/CMakeLists.txt).

#include <zel/noise.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

namespace Zel {
namespace {

using Vector2 = Vector2Template<float>;
using Vector3 = Vector3Template<float>;

constexpr int kCells = 256;

/// The generator that the values are defined by. It is not the C library's: hosts differ in theirs, and the
/// caller's sequence is not ours to disturb.
class Random {
public:
    constexpr int draw() {
        m_state = m_state * 214013U + 2531011U;
        return static_cast<int>(m_state >> 16 & 0x7FFF);
    }

    /// From -1 up to, but not including, 1 in steps of 1 / 256.
    constexpr float component() { return static_cast<float>(draw() % (kCells + kCells) - kCells) / kCells; }

private:
    std::uint32_t m_state = 0x0BADBEEF;
};

/// The square root of a number around 1 to the nearest float: the standard function is not for constants.
constexpr float squareRoot(float value) {
    auto const square = static_cast<double>(value);
    double root = 1.0;
    for (int step = 0; step < 20; ++step)
        root = (root + square / root) / 2.0;
    return static_cast<float>(root);
}

/// The permutation and the gradients. The second half repeats the first, so that neither a permuted index
/// plus a cell nor the neighbour of any entry needs wrapping.
struct Tables {
    static constexpr std::size_t kEntries = kCells + kCells + 2;

    std::uint32_t permutation[kEntries]{};
    float gradient1[kEntries]{};
    Vector2 gradient2[kEntries]{};
    float gradient3X[kEntries]{}; // apart, so that neighbours in z are neighbours in memory
    float gradient3Y[kEntries]{};
    float gradient3Z[kEntries]{};

    constexpr Tables() {
        Random random;
        for (std::size_t i = 0; i < kCells; ++i)
            draw(i, random);
        for (std::size_t i = kCells - 1; i > 0; --i)
            std::swap(permutation[i], permutation[random.draw() % kCells]);
        for (std::size_t i = kCells; i < kEntries; ++i)
            repeat(i, i - kCells);
    }

private:
    // No vector that this seed gives is of length 0.
    constexpr void draw(std::size_t i, Random& random) {
        permutation[i] = static_cast<std::uint32_t>(i);
        gradient1[i] = random.component();
        float const x2 = random.component();
        float const y2 = random.component();
        float const length2 = squareRoot(x2 * x2 + y2 * y2);
        gradient2[i] = {x2 / length2, y2 / length2};
        float const x3 = random.component();
        float const y3 = random.component();
        float const z3 = random.component();
        float const length3 = squareRoot(x3 * x3 + y3 * y3 + z3 * z3);
        gradient3X[i] = x3 / length3;
        gradient3Y[i] = y3 / length3;
        gradient3Z[i] = z3 / length3;
    }

    constexpr void repeat(std::size_t i, std::size_t original) {
        permutation[i] = permutation[original];
        gradient1[i] = gradient1[original];
        gradient2[i] = gradient2[original];
        gradient3X[i] = gradient3X[original];
        gradient3Y[i] = gradient3Y[original];
        gradient3Z[i] = gradient3Z[original];
    }
};

constexpr Tables kTables; // made by the compiler: no first call has to build them

constexpr float kLatticeOffset = 4096.0F;

/// A lattice coordinate that an int can hold, at the same place of the pattern: from 2^31 on, where all
/// floats are multiples of 256, that is 0, and so it is where there is no number. The bound is exact: no
/// smaller float than 2^31 has a square that rounds to 2^62.
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

/// Where a coordinate lies between two neighbours on the lattice: the cell of the lower, and the distances.
struct Place {
    explicit Place(float coordinate) {
        float const t = withinInt(coordinate + kLatticeOffset);
        int const whole = static_cast<int>(t);
        cell = static_cast<unsigned>(whole) % kCells;
        distance0 = t - static_cast<float>(whole);
        distance1 = distance0 - 1.0F;
    }

    std::size_t cell;
    float distance0;
    float distance1;
};

float noiseAt(float coordinate) {
    Place const x(coordinate);
    return lerp(fade(x.distance0), x.distance0 * kTables.gradient1[kTables.permutation[x.cell]],
                x.distance1 * kTables.gradient1[kTables.permutation[x.cell + 1]]);
}

float noiseAt(Vector2 const& v) {
    Place const x(v.x);
    Place const y(v.y);
    std::uint32_t const* const row0 = kTables.permutation + kTables.permutation[x.cell] + y.cell;
    std::uint32_t const* const row1 = kTables.permutation + kTables.permutation[x.cell + 1] + y.cell;

    auto const corner = [](std::uint32_t index, float distanceX, float distanceY) {
        Vector2 const& gradient = kTables.gradient2[index];
        return distanceX * gradient.x + distanceY * gradient.y;
    };
    float const fadeX = fade(x.distance0);
    float const edge0 =
        lerp(fadeX, corner(row0[0], x.distance0, y.distance0), corner(row1[0], x.distance1, y.distance0));
    float const edge1 =
        lerp(fadeX, corner(row0[1], x.distance0, y.distance1), corner(row1[1], x.distance1, y.distance1));
    return lerp(fade(y.distance0), edge0, edge1);
}

// Three dimensions are computed four numbers at a time, in vectors of the compiler's own: they give the
// values of the plain operations on every processor.
using Two = float __attribute__((vector_size(8)));
using Four = float __attribute__((vector_size(16)));
using FourInts = std::int32_t __attribute__((vector_size(16)));

/// The entries i and i + 1, j and j + 1.
Four pairs(float const* table, std::size_t i, std::size_t j) {
    Two low;
    Two high;
    std::memcpy(&low, table + i, sizeof low);
    std::memcpy(&high, table + j, sizeof high);
    return __builtin_shufflevector(low, high, 0, 1, 2, 3);
}

float noiseAt(Vector3 const& v) {
    Four const t = withinInt(Four{v.x, v.y, v.z, v.z} + kLatticeOffset);
    FourInts const whole = __builtin_convertvector(t, FourInts);
    FourInts const cell = whole & (kCells - 1);
    Four const distance0 = t - __builtin_convertvector(whole, Four);
    Four const distance1 = distance0 - 1.0F;
    Four const fades = fade(distance0);

    // The corners of one x: those of the lower and of the upper y, each with the lower and the upper z.
    Four const distanceY = __builtin_shufflevector(distance0, distance1, 1, 1, 5, 5);
    Four const distanceZ = __builtin_shufflevector(distance0, distance1, 2, 6, 2, 6);
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
    Two const lowerY = __builtin_shufflevector(alongX, alongX, 0, 1);
    Two const upperY = __builtin_shufflevector(alongX, alongX, 2, 3);
    Two const alongY = lerp(fades[1], lowerY, upperY);
    return lerp(fades[2], alongY[0], alongY[1]);
}

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
