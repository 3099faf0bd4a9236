// Point and bilinear samples.

#include "support/pictures.h"

#include "image/lanes.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using namespace test;
using Zel::Color;
using Zel::Image;

float const kInfinity = std::numeric_limits<float>::infinity();
float const kNan = std::numeric_limits<float>::quiet_NaN();

struct GreySample {
    float x, y;
    int expected;
};

TEST(SamplingTest, PointSamplesTakeTheNearestPixel) {
    Image image(4, 4);
    for (int i = 0; i < 16; ++i)
        image[i] = grey(i);
    GreySample const samples[] = {
        {-3, 1e6F, 12}, {1.49F, 0, 1}, {1.5F, 0, 2},       {0, 2.5F, 12}, {kInfinity, -kInfinity, 3},
        {kNan, 1, 4},   {-0.9F, 0, 0}, {0.49999997F, 0, 0}};
    for (auto const& [x, y, expected] : samples)
        EXPECT_EQ(image.samplePoint(x, y), grey(expected)) << x << ' ' << y;
}

TEST(SamplingTest, BilinearSamplesTruncateAfterEachBlend) {
    Image const image =
        imageOf(4, {grey(0), grey(255), grey(10), grey(20), grey(5), grey(2), grey(0), grey(9)});
    GreySample const samples[] = {{0.5F, 0, 127},   {3.5F, 0, 20},      {0.5F, 0.5F, 65},
                                  {0.25F, 1, 4},    {kInfinity, 0, 20}, {-kInfinity, kInfinity, 5},
                                  {2.5F, 0.25F, 12}};
    for (auto const& [x, y, expected] : samples)
        EXPECT_EQ(image.sampleBilinear(x, y), grey(expected)) << x << ' ' << y;
}

TEST(SamplingTest, BilinearSamplesBlendThePixelsAround) {
    std::minstd_rand random;
    Image image(37, 23);
    std::generate_n(image.getData(), 37 * 23, [&] { return randomColor(random); });
    auto const at = [&](int x, int y) {
        return image(std::clamp(x, 0, 36), std::clamp(y, 0, 22));
    };
    std::uniform_real_distribution<float> coordinate(-3.0F, 40.0F);
    for (int i = 0; i < 20000; ++i) {
        float const x = coordinate(random);
        float const y = coordinate(random);
        int const column = static_cast<int>(std::floor(x));
        int const row = static_cast<int>(std::floor(y));
        ASSERT_EQ(image.sampleBilinear(x, y),
                  Zel::scalar::bilinear(at(column, row), at(column + 1, row), at(column, row + 1),
                                        at(column + 1, row + 1), x - std::floor(x), y - std::floor(y)))
            << x << ' ' << y;
    }
}

TEST(SamplingTest, VectorsBlendAsSingleChannelsDo) {
    std::minstd_rand random;
    std::uniform_real_distribution<float> anyFraction;
    float const ends[] = {0.0F, 0.5F, std::nextafter(1.0F, 0.0F), 1.0F};
    Zel::scalar::BilinearAverage average;
    Zel::vectorized::BilinearAverage vectorAverage;
    EXPECT_EQ(average.value(), kBlack);
    EXPECT_EQ(vectorAverage.value(), kBlack);
    for (int i = 0; i < 20000; ++i) {
        bool const isEnd = i < 16 * 16; // all ends of fractions and channels before any others
        float const fx = isEnd ? ends[i % 4] : anyFraction(random);
        float const fy = isEnd ? ends[i / 4 % 4] : anyFraction(random);
        Color corners[4];
        for (int corner = 0; corner < 4; ++corner) {
            auto const end = static_cast<std::uint8_t>((i >> (4 + corner) & 1) * 255);
            corners[corner] = isEnd ? Color(end, end, end, end) : randomColor(random);
        }
        auto const& [c00, c10, c01, c11] = corners;
        ASSERT_EQ(Zel::vectorized::bilinear(c00, c10, c01, c11, fx, fy),
                  Zel::scalar::bilinear(c00, c10, c01, c11, fx, fy))
            << i;
        average.add(c00, c10, c01, c11, fx, fy);
        vectorAverage.add(c00, c10, c01, c11, fx, fy);
        ASSERT_EQ(vectorAverage.value(), average.value()) << i;
    }
}

} // namespace
