#include <cmath>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
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

/// The checksum of a function's values along a line through both signs, and beyond the lattice's lower end.
template <class Function>
unsigned long checksum(Function function) {
    std::vector<float> values;
    for (int i = -6000; i < 6000; ++i) {
        float const step = static_cast<float>(i);
        values.push_back(function(Vector3(step * 0.71F, step * 0.37F, step * -1.93F)));
    }
    return Zel::crc32(values.data(), values.size() * sizeof(float));
}

TEST(NoiseTest, ValuesAreTheSameToTheBitEverywhere) {
    EXPECT_EQ(Zel::snoise(0.5F), -0.0224609375F);
    EXPECT_EQ(bits(Zel::snoise(-100.3F)), 0xBDEE1318U);
    EXPECT_EQ(bits(Zel::snoise(Vector2(1.25F, -7.75F))), 0xBE97D5B1U);
    EXPECT_EQ(bits(Zel::snoise(Vector3(0.1F, 0.2F, 0.3F))), 0x3D5974B3U);
    EXPECT_EQ(bits(Zel::snoise(Vector3(255.5F, -0.5F, 1000.7F))), 0xBD40FE30U);

    EXPECT_EQ(checksum([](Vector3 const& v) { return Zel::snoise(v.x); }), 0xE01EAEBFU);
    EXPECT_EQ(checksum([](Vector3 const& v) { return Zel::snoise(Vector2(v.x, v.y)); }), 0x22AC0554U);
    EXPECT_EQ(checksum([](Vector3 const& v) { return Zel::snoise(v); }), 0x97F4E356U);
    EXPECT_EQ(checksum([](Vector3 const& v) { return Zel::turbulence(v.x, 100.0F); }), 0x926D4F40U);
    EXPECT_EQ(checksum([](Vector3 const& v) { return Zel::turbulence(v, 100.0F); }), 0xD4DA4D36U);
    EXPECT_EQ(checksum([](Vector3 const& v) { return Zel::sturbulence(v.x, 100.0F); }), 0x7B4657C3U);
    EXPECT_EQ(checksum([](Vector3 const& v) { return Zel::sturbulence(v, 100.0F); }), 0x36F2A143U);
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

TEST(NoiseTest, UnsignedNoiseIsScaledSignedNoise) {
    EXPECT_EQ(Zel::noise(0.3F), Zel::snoise(0.3F) * 0.5F + 0.5F);
    EXPECT_EQ(Zel::noise(Vector2(0.3F, 1.6F)), Zel::snoise(Vector2(0.3F, 1.6F)) * 0.5F + 0.5F);
    EXPECT_EQ(Zel::noise(Vector3(0.3F, 1.6F, 2.7F)), Zel::snoise(Vector3(0.3F, 1.6F, 2.7F)) * 0.5F + 0.5F);
}

TEST(NoiseTest, TurbulenceSumsTheOctavesDownToFrequencyOne) {
    Vector3 const v(0.3F, 1.6F, 2.7F);
    for (float freq : {0.999F, 0.5F, 0.0F, -8.0F, kInfinity, -kInfinity, NAN}) {
        EXPECT_EQ(Zel::turbulence(0.3F, freq), 0.0F) << freq;
        EXPECT_EQ(Zel::sturbulence(v, freq), 0.0F) << freq;
    }
    EXPECT_EQ(Zel::turbulence(0.3F, 1.0F), std::fabs(Zel::snoise(0.3F)));
    EXPECT_EQ(Zel::sturbulence(v, 1.9F), Zel::snoise(Vector3(v.x * 1.9F, v.y * 1.9F, v.z * 1.9F)) / 1.9F);
    EXPECT_EQ(Zel::turbulence(0.3F, 4.0F), std::fabs(Zel::snoise(0.3F * 4.0F)) / 4.0F +
                                               std::fabs(Zel::snoise(0.3F * 2.0F)) / 2.0F +
                                               std::fabs(Zel::snoise(0.3F)));
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
