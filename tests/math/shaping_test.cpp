#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <zel/noise.h>

namespace {

std::uint32_t bits(float value) {
    std::uint32_t result;
    std::memcpy(&result, &value, sizeof result);
    return result;
}

TEST(ShapingTest, BiasAndGainBendTheLineFromZeroToOne) {
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
