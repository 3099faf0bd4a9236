#include <cmath>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <map>
#include <utility>
#include <vector>
#include <zel/zel.h>

namespace {

using Vector2 = Zel::Vector2Template<float>;
using Vector3 = Zel::Vector3Template<float>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();

std::uint32_t bits(float value) {
    std::uint32_t result;
    std::memcpy(&result, &value, sizeof result);
    return result;
}

/// The rules of the noise, one number after the other, for points of one to three coordinates.
class Model {
public:
    Model() {
        for (int i = 0; i < 256; ++i) {
            m_permutation.push_back(i);
            for (std::size_t dimensions = 1; dimensions <= 3; ++dimensions)
                m_gradients[dimensions].push_back(drawGradient(dimensions));
        }
        for (std::size_t i = 255; i > 0; --i)
            std::swap(m_permutation[i], m_permutation[static_cast<std::size_t>(draw() % 256)]);
    }

    float noise(std::vector<float> const& point) const {
        std::vector<Place> places;
        for (float const coordinate : point) {
            float const t = coordinate + 4096.0F;
            float const whole = std::trunc(t);
            places.push_back({static_cast<int>(whole) & 255, t - whole});
        }
        return blend(places, point.size());
    }

    float turbulence(std::vector<float> const& point, float freq, bool isSigned) const {
        float sum = 0;
        for (float f = freq; f >= 1; f /= 2) {
            std::vector<float> scaled;
            for (float const coordinate : point)
                scaled.push_back(coordinate * f);
            float const value = noise(scaled);
            sum += (isSigned ? value : std::fabs(value)) / f;
        }
        return sum;
    }

private:
    /// For a coordinate, a neighbour on the lattice, and how far it is.
    struct Place {
        int index;
        float distance;
    };

    int draw() {
        m_state = m_state * 214013 + 2531011;
        return static_cast<int>(m_state >> 16 & 0x7FFF);
    }

    std::vector<float> drawGradient(std::size_t dimensions) {
        std::vector<float> gradient;
        float square = 0;
        for (std::size_t i = 0; i < dimensions; ++i) {
            gradient.push_back(static_cast<float>(draw() % 512 - 256) / 256);
            square += gradient.back() * gradient.back();
        }
        for (float& component : gradient)
            component /= dimensions > 1 ? std::sqrt(square) : 1;
        return gradient;
    }

    int permuted(int index) const { return m_permutation[static_cast<std::size_t>(index % 256)]; }

    /// The gradient of a corner, times how far the point is from there.
    float product(std::vector<Place> const& corner) const {
        std::size_t const dimensions = corner.size();
        int index = permuted(corner[0].index);
        if (dimensions > 1)
            index = permuted(index + corner[1].index);
        if (dimensions > 2) // Meant: the last step permutes nothing
            index = (index + corner[2].index) % 256;
        auto const& gradient = m_gradients.at(dimensions)[static_cast<std::size_t>(index)];
        float sum = 0;
        for (std::size_t i = 0; i < dimensions; ++i)
            sum += corner[i].distance * gradient[i];
        return sum;
    }

    /// Blends along the first so many coordinates, x before y before z, from the lower neighbours up.
    float blend(std::vector<Place> const& corner, std::size_t coordinates) const {
        if (coordinates == 0)
            return product(corner);
        std::size_t const last = coordinates - 1;
        float const r = corner[last].distance;
        std::vector<Place> upper = corner;
        upper[last] = {(corner[last].index + 1) & 255, r - 1.0F};
        float const below = blend(corner, last);
        return below + r * r * (3 - 2 * r) * (blend(upper, last) - below);
    }

    std::uint32_t m_state = 0x0BADBEEF;
    std::vector<int> m_permutation;
    std::map<std::size_t, std::vector<std::vector<float>>> m_gradients; // by their coordinates
};

TEST(NoiseTest, IsWhatTheRulesGiveToTheBit) {
    Model const model;
    for (int i = -1000; i < 1000; ++i) { // through both signs, and beyond the lattice's lower end
        float const step = static_cast<float>(i) * 6;
        Vector3 const v(step * 0.71F, step * 0.37F, step * -1.93F);
        ASSERT_EQ(Zel::snoise(v.x), model.noise({v.x})) << i;
        ASSERT_EQ(Zel::snoise(Vector2(v.x, v.y)), model.noise({v.x, v.y})) << i;
        ASSERT_EQ(Zel::snoise(v), model.noise({v.x, v.y, v.z})) << i;
        ASSERT_EQ(Zel::noise(v.x), model.noise({v.x}) * 0.5F + 0.5F) << i;
        ASSERT_EQ(Zel::noise(Vector2(v.x, v.y)), model.noise({v.x, v.y}) * 0.5F + 0.5F) << i;
        ASSERT_EQ(Zel::noise(v), model.noise({v.x, v.y, v.z}) * 0.5F + 0.5F) << i;
        for (float const freq : {1.0F, 1.9F, 100.0F}) {
            ASSERT_EQ(Zel::turbulence(v.x, freq), model.turbulence({v.x}, freq, false)) << i;
            ASSERT_EQ(Zel::sturbulence(v.x, freq), model.turbulence({v.x}, freq, true)) << i;
            ASSERT_EQ(Zel::turbulence(v, freq), model.turbulence({v.x, v.y, v.z}, freq, false)) << i;
            ASSERT_EQ(Zel::sturbulence(v, freq), model.turbulence({v.x, v.y, v.z}, freq, true)) << i;
        }
    }
}

TEST(NoiseTest, ValuesAreTheSameToTheBitEverywhere) {
    EXPECT_EQ(Zel::snoise(0.5F), -0.0224609375F);
    EXPECT_EQ(bits(Zel::snoise(-100.3F)), 0xBDEE1318U);
    EXPECT_EQ(bits(Zel::snoise(Vector2(1.25F, -7.75F))), 0xBE97D5B1U);
    EXPECT_EQ(bits(Zel::snoise(Vector3(0.1F, 0.2F, 0.3F))), 0x3D5974B3U);
    EXPECT_EQ(bits(Zel::snoise(Vector3(255.5F, -0.5F, 1000.7F))), 0xBD40FE30U);
}

TEST(NoiseTest, IsExactlyZeroAtIntegers) {
    for (float x : {-5000.0F, -4096.0F, -4095.0F, -1.0F, 0.0F, 1.0F, 255.0F, 256.0F, 1e6F, 3e9F, -1e30F,
                    kInfinity, -kInfinity, NAN})
        for (float y : {-17.0F, 0.0F, 511.0F, 2e9F}) {
            EXPECT_EQ(Zel::snoise(x), 0.0F) << x;
            EXPECT_EQ(Zel::snoise(Vector2(x, y)), 0.0F) << x << ", " << y;
            EXPECT_EQ(Zel::snoise(Vector3(y, x, y)), 0.0F) << x << ", " << y;
            EXPECT_EQ(Zel::noise(x), 0.5F) << x;
            EXPECT_EQ(Zel::noise(Vector2(y, x)), 0.5F) << x << ", " << y;
            EXPECT_EQ(Zel::noise(Vector3(x, y, x)), 0.5F) << x << ", " << y;
        }
}

TEST(NoiseTest, RepeatsEvery256UnitsHoweverFarTheOtherCoordinatesAre) {
    EXPECT_EQ(Zel::snoise(-4000.25F), Zel::snoise(95.75F));
    EXPECT_EQ(Zel::snoise(Vector2(-4096.0F, 0.5F)), Zel::snoise(Vector2(3e9F, 256.5F)));
    for (float far : {256.0F, 2147483648.0F, -3e9F, 1e30F, NAN})
        EXPECT_EQ(Zel::snoise(Vector3(far, 0.5F, 1.5F)), Zel::snoise(Vector3(0.0F, 0.5F, 1.5F))) << far;
    EXPECT_EQ(Zel::snoise(Vector3(2e9F, 0.5F, 1.5F)), Zel::snoise(Vector3(0.0F, 0.5F, 1.5F)));
    EXPECT_EQ(Zel::snoise(Vector3(2147483520.0F - 8192.0F, 0.5F, 1.5F)),
              Zel::snoise(Vector3(128.0F, 0.5F, 1.5F)))
        << "just what an int can hold";
}

TEST(NoiseTest, TurbulenceIsNothingBelowFrequencyOneAndAlwaysFinite) {
    Vector3 const v(0.3F, 1.6F, 2.7F);
    for (float freq : {0.999F, 0.5F, 0.0F, -8.0F, kInfinity, -kInfinity, NAN}) {
        EXPECT_EQ(Zel::turbulence(0.3F, freq), 0.0F) << freq;
        EXPECT_EQ(Zel::sturbulence(v, freq), 0.0F) << freq;
    }
    EXPECT_TRUE(std::isfinite(Zel::turbulence(v, std::numeric_limits<float>::max())));
}

TEST(NoiseTest, BiasAndGainBendTheLineFromZeroToOne) {
    for (float a : {0.0F, 0.001F, 0.2F, 0.5F, 0.7F, 0.999F, 1.0F}) {
        EXPECT_EQ(Zel::bias(a, 0.5F), a);
        EXPECT_EQ(Zel::gain(a, 0.5F), a);
    }
    EXPECT_EQ(Zel::gain(0.0005F, 0.5F), 0.0F);
    EXPECT_EQ(Zel::gain(0.9995F, 0.5F), 1.0F);
    EXPECT_EQ(bits(Zel::bias(0.3F, 0.7F)), 0x3F09C73AU);
    EXPECT_EQ(bits(Zel::bias(0.9F, 0.2F)), 0x3F4871D1U);
    EXPECT_EQ(bits(Zel::gain(0.3F, 0.7F)), 0x3E52D3BAU);
    EXPECT_EQ(bits(Zel::gain(0.8F, 0.7F)), 0x3F65F038U);
    EXPECT_EQ(bits(Zel::gain(0.25F, 0.1F)), 0x3EE66666U);
}

} // namespace
