#include "math/lattice_noise.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vector>
#include <zel/zel.h>

namespace {

using Vector2 = Zel::Vector2Template<float>;
using Vector3 = Zel::Vector3Template<float>;

constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// Points through both signs, and beyond the lattice's lower end.
std::vector<Vector3> scatteredPoints() {
    std::vector<Vector3> points;
    for (int i = -1000; i < 1000; ++i) {
        float const step = static_cast<float>(i) * 6;
        points.emplace_back(step * 0.71F, step * 0.37F, step * -1.93F);
    }
    return points;
}

// The numbers are the CRC-32 of the values' bytes, taken from a model of the rules that shares no code with
// the library: one recursive blend for any number of coordinates, over tables that are drawn at run time.
TEST(NoiseTest, ValuesAreTheSameToTheBitEverywhere) {
    std::vector<float> one, two, three;
    for (Vector3 const& v : scatteredPoints()) {
        one.push_back(Zel::snoise(v.x) + 0.0F); // zeros lose their sign
        two.push_back(Zel::snoise(Vector2(v.x, v.y)) + 0.0F);
        three.push_back(Zel::snoise(v) + 0.0F);
        ASSERT_EQ(Zel::lattice::noiseAt(v), Zel::lattice::scalar::noiseAt(v)) << v.x;
    }
    auto const checksum = [](std::vector<float> const& values) {
        return Zel::crc32(values.data(), values.size() * sizeof(float));
    };
    EXPECT_EQ(checksum(one), 0xD5FE00F0U);
    EXPECT_EQ(checksum(two), 0xEBF74478U);
    EXPECT_EQ(checksum(three), 0xA0B0C17FU);
}

TEST(NoiseTest, UnsignedNoiseAndTurbulenceAreMadeOfSignedNoise) {
    for (Vector3 const& v : scatteredPoints()) {
        ASSERT_EQ(Zel::noise(v.x), Zel::snoise(v.x) * 0.5F + 0.5F) << v.x;
        ASSERT_EQ(Zel::noise(Vector2(v.x, v.y)), Zel::snoise(Vector2(v.x, v.y)) * 0.5F + 0.5F) << v.x;
        ASSERT_EQ(Zel::noise(v), Zel::snoise(v) * 0.5F + 0.5F) << v.x;
        for (float const freq : {1.0F, 1.9F, 100.0F}) {
            float line = 0, space = 0, unsignedLine = 0, unsignedSpace = 0;
            for (float f = freq; f >= 1; f /= 2) {
                float const onLine = Zel::snoise(v.x * f),
                            inSpace = Zel::snoise(Vector3(v.x * f, v.y * f, v.z * f));
                line += onLine / f, unsignedLine += std::fabs(onLine) / f;
                space += inSpace / f, unsignedSpace += std::fabs(inSpace) / f;
            }
            ASSERT_EQ(Zel::sturbulence(v.x, freq), line) << v.x;
            ASSERT_EQ(Zel::sturbulence(v, freq), space) << v.x;
            ASSERT_EQ(Zel::turbulence(v.x, freq), unsignedLine) << v.x;
            ASSERT_EQ(Zel::turbulence(v, freq), unsignedSpace) << v.x;
        }
    }
}

TEST(NoiseTest, IsExactlyZeroAtIntegers) {
    for (float x : {-5000.0F, -4096.0F, -4095.0F, -1.0F, 0.0F, 1.0F, 255.0F, 256.0F, 1e6F, 3e9F, -1e30F,
                    kInfinity, -kInfinity, NAN})
        for (float y : {-17.0F, 0.0F, 511.0F, 2e9F}) {
            EXPECT_EQ(Zel::snoise(x), 0.0F) << x;
            EXPECT_EQ(Zel::snoise(Vector2(x, y)), 0.0F) << x << ", " << y;
            EXPECT_EQ(Zel::snoise(Vector3(y, x, y)), 0.0F) << x << ", " << y;
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

TEST(ShapingTest, BiasAndGainBendTheLineFromZeroToOne) {
    for (float a : {0.0F, 0.001F, 0.2F, 0.5F, 0.7F, 0.999F, 1.0F}) {
        EXPECT_EQ(Zel::bias(a, 0.5F), a);
        EXPECT_EQ(Zel::gain(a, 0.5F), a);
    }
    EXPECT_EQ(Zel::gain(0.0005F, 0.5F), 0.0F);
    EXPECT_EQ(Zel::gain(0.9995F, 0.5F), 1.0F);
    // To the bit.
    EXPECT_EQ(Zel::bias(0.3F, 0.7F), 0x0.89C73Ap0F);
    EXPECT_EQ(Zel::bias(0.9F, 0.2F), 0x0.C871D1p0F);
    EXPECT_EQ(Zel::gain(0.3F, 0.7F), 0x0.34B4EE8p0F);
    EXPECT_EQ(Zel::gain(0.8F, 0.7F), 0x0.E5F038p0F);
    EXPECT_EQ(Zel::gain(0.25F, 0.1F), 0x0.733333p0F);
}

} // namespace
