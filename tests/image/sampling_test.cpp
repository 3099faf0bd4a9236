// Point and bilinear samples, averages under polygons, and resampling.

#include "support/pictures.h"

#include "image/lanes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <utility>

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
        float const x = coordinate(random), y = coordinate(random);
        int const column = static_cast<int>(std::floor(x)), row = static_cast<int>(std::floor(y));
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
    Zel::lanes::BilinearAverage vectorAverage;
    EXPECT_EQ(vectorAverage.value(), average.value()) << "of no samples";
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
        ASSERT_EQ(Zel::lanes::bilinear(c00, c10, c01, c11, fx, fy),
                  Zel::scalar::bilinear(c00, c10, c01, c11, fx, fy))
            << i;
        average.add(c00, c10, c01, c11, fx, fy);
        vectorAverage.add(c00, c10, c01, c11, fx, fy);
        ASSERT_EQ(vectorAverage.value(), average.value()) << i;
    }
}

TEST(AreaSampleTest, AveragesWhatThePolygonCovers) {
    using Point = Zel::Vector2Template<float>;
    // Left half 0, right half 200, as four columns; samples lie half-way between columns.
    Image const image = imageOf(4, {grey(0), grey(0), grey(200), grey(200)});
    auto const rectangle = [](float left, float right) {
        return std::vector<Point>{{left, 0}, {right, 0}, {right, 1}, {left, 1}};
    };
    struct Case {
        float scale;
        std::vector<Point> polygon;
        int expected;
    };
    for (auto const& [scale, polygon, expected] :
         {// Between columns 1 and 2, 400 columns away from there, and at 1 and 1.5.
          Case{1, rectangle(0.25F, 0.5F), 100}, Case{1, rectangle(100.25F, 100.5F), 100},
          Case{2, rectangle(0.25F, 0.5F), 50},
          // No scanline in a quarter of one, and no area.
          Case{0.25F, rectangle(0, 1), 0}, Case{0, rectangle(0, 1), 0}, Case{1, {{0, 0}, {1, 0}}, 0},
          Case{1, {{0, 0}, {1, 1}, {0.5F, 0.5F}}, 0},
          // No numbers.
          Case{kNan, rectangle(0, 1), 0}, Case{1, rectangle(kNan, 1), 0}})
        EXPECT_EQ(image.areaSample(scale, polygon.data(), static_cast<int>(polygon.size())), grey(expected))
            << scale << ", expected " << expected;
}

// Which pixels of a triangle are covered, and where they sample, as the rule says it.
TEST(AreaSampleTest, CoversATriangleFromTruncatedEdgeToTruncatedEdge) {
    using Corner = Zel::Vector2Template<double>;
    Image image(8, 8);
    for (int i = 0; i < 64; ++i)
        image[i] = grey(20 * (i % 8) + 10 * (i / 8));
    auto const at = [&](int x, int y) {
        return int{image((x % 8 + 8) % 8, (y % 8 + 8) % 8).r};
    };
    // On a grid of 8 x 8, from the top downwards.
    using Triangle = std::array<Corner, 3>;
    for (Triangle const& triangle :
         {// Flat above, and flat below.
          Triangle{{{1, 0}, {7, 0}, {1, 6.7}}}, Triangle{{{7, 0.6}, {1, 0.6}, {1, 7.3}}},
          Triangle{{{1, 0.6}, {1, 7.3}, {7, 7.3}}}, Triangle{{{1, -0.6}, {1, 6.1}, {7, 6.1}}},
          // The left edge ends first, and the right one.
          Triangle{{{4, 0.25}, {0.75, 4.25}, {6, 8.25}}}, Triangle{{{4, 0.25}, {7.25, 4.25}, {2, 8.25}}},
          // Both again across the origin, as columns and rows are cut off towards 0, and far from the image.
          Triangle{{{0, -7.75}, {-3.25, -3.75}, {2, 0.25}}},
          Triangle{{{-4.5, -7.75}, {-1.25, -3.75}, {-6.5, 0.25}}},
          Triangle{{{-9.5, -12.5}, {-14.5, -10.5}, {-3.5, -4.5}}}}) {
        Corner const &top = triangle[0], &middle = triangle[1], &bottom = triangle[2];
        // Where a side crosses the lower border of a row.
        auto const crossing = [](Corner const& upper, Corner const& lower, int row) {
            return upper.x + (lower.x - upper.x) * (row + 1 - upper.y) / (lower.y - upper.y);
        };
        double sum = 0;
        int count = 0;
        for (int row = static_cast<int>(top.y); row < static_cast<int>(bottom.y); ++row) {
            bool const isUpper = row < static_cast<int>(middle.y);
            double left = isUpper ? crossing(top, middle, row) : crossing(middle, bottom, row);
            double right = crossing(top, bottom, row);
            if ((middle.x - top.x) * (bottom.y - top.y) > (bottom.x - top.x) * (middle.y - top.y))
                std::swap(left, right); // the middle corner is on the right
            for (int x = static_cast<int>(left); x < static_cast<int>(right); ++x, ++count)
                sum += (at(x, row) + at(x + 1, row) + at(x, row + 1) + at(x + 1, row + 1)) / 4.0;
        }
        std::vector<Zel::Vector2Template<float>> corners;
        for (Corner const& corner : {middle, top, bottom})
            corners.emplace_back(static_cast<float>(corner.x / 8), static_cast<float>(corner.y / 8));
        EXPECT_EQ(image.areaSample(1, corners.data(), 3), grey(static_cast<int>(sum / count)))
            << top.x << ' ' << top.y;
    }
}

TEST(AreaSampleTest, ResamplingAveragesWhatLiesUnderEachPixelAndMakesItOpaque) {
    Image source(4, 2);
    for (int i = 0; i < 8; ++i)
        source[i] = Color(static_cast<std::uint8_t>(i % 4 * 40), 64, 128, 0);
    struct Case {
        int width;
        float scale;
        std::vector<std::uint8_t> reds;
    };
    for (auto const& [width, scale, reds] :
         {// At 0.5 and 1.5, and at 2.5 and, wrapped, 3.5; then at 0, 0.5, 1 and 1.5, and so on.
          Case{2, 1, {40, 80}}, Case{2, 2, {30, 90}},
          // Each pixel of one sample, and one pixel of all.
          Case{8, 2, {0, 20, 40, 60, 80, 100, 120, 60}}, Case{1, 1, {60}}}) {
        Image target(width, 1);
        target.copyWithScale(&source, scale);
        Colors expected;
        for (std::uint8_t const red : reds)
            expected.emplace_back(red, 64, 128, 255);
        EXPECT_EQ(pixelsOf(target), expected) << "scale " << scale;
    }
}

// A pass remembers where the points of its grid lie: each pixel is the same as by itself.
TEST(AreaSampleTest, ResamplingGivesEachPixelTheAverageUnderIt) {
    using Point = Zel::Vector2Template<float>;
    std::minstd_rand random;
    struct Case {
        int sourceWidth, sourceHeight, width, height;
        float scale;
    };
    for (auto const& [sourceWidth, sourceHeight, width, height, scale] :
         {Case{37, 23, 10, 7, 1}, Case{37, 23, 9, 8, 0.3F}, Case{5, 3, 16, 11, 2.7F}, Case{1, 1, 3, 2, 40},
          Case{40000, 2, 3, 1, 2}, Case{4, 4, 2, 2, 0}, Case{4, 4, 2, 2, -1}, Case{4, 4, 2, 2, kInfinity},
          Case{4, 4, 2, 2, kNan}}) {
        Image source(sourceWidth, sourceHeight), target(width, height);
        std::generate_n(source.getData(), sourceWidth * sourceHeight, [&] { return randomColor(random); });
        target.copyWithScale(&source, scale);
        float const stepX = 1.0F / static_cast<float>(width), stepY = 1.0F / static_cast<float>(height);
        float top = 0;
        for (int y = 0; y < height; ++y, top += stepY) {
            float left = 0;
            for (int x = 0; x < width; ++x, left += stepX) {
                Point const corners[] = {
                    {left, top}, {left + stepX, top}, {left + stepX, top + stepY}, {left, top + stepY}};
                EXPECT_EQ(target(x, y), source.areaSample(scale, corners, 4))
                    << scale << ' ' << x << ' ' << y;
            }
        }
    }
}

} // namespace
