// The tables that gradient noise is made of.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <zel/vector.h>

namespace Zel::lattice {

using Vector2 = Vector2Template<float>;
using Vector3 = Vector3Template<float>;

constexpr int kCells = 256; ///< after so many along a coordinate, the lattice repeats

/// The random numbers that define the noise. The C library's would differ between hosts, and drawing them
/// would disturb the caller's sequence.
class Random {
public:
    constexpr int draw() {
        m_state = m_state * 214013U + 2531011U;
        return static_cast<int>(m_state >> 16 & 0x7FFF);
    }

    /// A number from -1 to 1, without 1 itself, in steps of 1 / 256.
    constexpr float component() { return static_cast<float>(draw() % (kCells + kCells) - kCells) / kCells; }

private:
    std::uint32_t m_state = 0x0BADBEEF;
};

/// The square root of a number around 1, rounded to the nearest float. std::sqrt is not constexpr.
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
    // With this seed no vector has length 0.
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

inline constexpr Tables kTables; // computed by the compiler, so no first call has to

} // namespace Zel::lattice
