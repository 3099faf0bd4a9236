// Averages under polygons, and resampling.

#include "image/colors.h"
#include "support/pictures.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <limits>

namespace {

using namespace test;
using Zel::Color;
using Zel::Image;

float const kNan = std::numeric_limits<float>::quiet_NaN();

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
    for (Case const& c : {
             Case{1, rectangle(0, 0.25F), 0},          // between columns 0 and 1
             Case{1, rectangle(0.25F, 0.5F), 100},     // between 1 and 2
             Case{1, rectangle(0.75F, 1), 100},        // between 3 and, wrapped, 0
             Case{1, rectangle(100.25F, 100.5F), 100}, // and 400 columns away
             Case{1, rectangle(0, 1), 100},
             Case{1, rectangle(1.5F, 1.75F), 200},   // the image repeats
             Case{1, rectangle(-0.75F, -0.5F), 100}, // at -2.5, which is 1.5
             Case{1, rectangle(-0.55F, -0.3F), 200}, // from -2.2 to -1.2, cut to -2 and -1
             Case{0.25F, rectangle(0, 1), 0},        // no scanline in a quarter of one
             Case{2, rectangle(0.25F, 0.5F), 50},    // at 1 and 1.5
             Case{1, {{0, 0}, {1, 0}}, 0},           // no area
             Case{1, {{0, 0}, {1, 1}, {0.5F, 0.5F}}, 0},
             Case{kNan, rectangle(0, 1), 0},
             Case{1, rectangle(kNan, 1), 0},
             Case{0, rectangle(0, 1), 0},
         }) {
        int const count = static_cast<int>(c.polygon.size());
        EXPECT_EQ(image.areaSample(c.scale, c.polygon.data(), count), grey(c.expected)) << c.scale;
        std::vector<Point> const reversed(c.polygon.rbegin(), c.polygon.rend());
        EXPECT_EQ(image.areaSample(c.scale, reversed.data(), count), grey(c.expected)) << "other winding";
    }
}

/// Where a side of a triangle crosses the lower border of a row.
double crossing(Zel::Vector2Template<double> const& upper, Zel::Vector2Template<double> const& lower,
                int row) {
    return upper.x + (lower.x - upper.x) * (row + 1 - upper.y) / (lower.y - upper.y);
}

// Which pixels of a triangle are covered, and where they sample, as the rule says it.
TEST(AreaSampleTest, CoversATriangleFromTruncatedEdgeToTruncatedEdge) {
    using Corner = Zel::Vector2Template<double>;
    Image image(8, 8);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            image(x, y) = grey(20 * x + 10 * y);
    auto const at = [&](int x, int y) {
        return int{image((x % 8 + 8) % 8, (y % 8 + 8) % 8).r};
    };
    // On a grid of 8 x 8, from the top downwards.
    std::array<Corner, 3> const cases[] = {
        {{{1, 0}, {7, 0}, {1, 6.7}}},                    // flat above,
        {{{7, 0.6}, {1, 0.6}, {1, 7.3}}},                //
        {{{1, 0.6}, {1, 7.3}, {7, 7.3}}},                // flat below
        {{{1, -0.6}, {1, 6.1}, {7, 6.1}}},               //
        {{{4, 0.25}, {0.75, 4.25}, {6, 8.25}}},          // the left edge ends first,
        {{{4, 0.25}, {7.25, 4.25}, {2, 8.25}}},          // the right one
        {{{0, -7.75}, {-3.25, -3.75}, {2, 0.25}}},       // both again, across the origin:
        {{{-4.5, -7.75}, {-1.25, -3.75}, {-6.5, 0.25}}}, // columns and rows are cut off towards 0
        {{{-9.5, -12.5}, {-14.5, -10.5}, {-3.5, -4.5}}}, // and more than an image away
    };
    for (auto const& [top, middle, bottom] : cases) {
        bool const isMiddleLeft =
            (middle.x - top.x) * (bottom.y - top.y) < (bottom.x - top.x) * (middle.y - top.y);
        double sum = 0;
        int count = 0;
        for (int row = static_cast<int>(top.y); row < static_cast<int>(bottom.y); ++row) {
            bool const isUpper = row < static_cast<int>(middle.y);
            double const side = isUpper ? crossing(top, middle, row) : crossing(middle, bottom, row);
            double const longSide = crossing(top, bottom, row);
            int const end = static_cast<int>(isMiddleLeft ? longSide : side);
            for (int column = static_cast<int>(isMiddleLeft ? side : longSide); column < end;
                 ++column, ++count)
                sum +=
                    (at(column, row) + at(column + 1, row) + at(column, row + 1) + at(column + 1, row + 1)) /
                    4.0;
        }
        auto const point = [](Corner const& corner) {
            return Zel::Vector2Template<float>(static_cast<float>(corner.x / 8),
                                               static_cast<float>(corner.y / 8));
        };
        Zel::Vector2Template<float> const triangle[] = {point(middle), point(top), point(bottom)};
        EXPECT_EQ(int{image.areaSample(1, triangle, 3).r}, static_cast<int>(sum / count))
            << top.x << ' ' << top.y;
    }
}

TEST(AreaSampleTest, ResamplingKeepsFlatColoursAndMakesThemOpaque) {
    Image source(7, 5);
    std::fill_n(source.getData(), 35, Color(64, 128, 32, 0));
    Image target(4, 3);
    target.copyWithScale(&source, 1);
    EXPECT_EQ(pixelsOf(target), Colors(12, Color(64, 128, 32, 255)));
}

TEST(AreaSampleTest, ResamplingAveragesWhatLiesUnderEachPixel) {
    Image const source = imageOf(4, {grey(0), grey(40), grey(80), grey(120), //
                                     grey(0), grey(40), grey(80), grey(120)});
    struct {
        int width;
        float scale;
        std::vector<int> expected;
    } const cases[] = {
        {2, 1, {40, 80}},                          // at 0.5 and 1.5, and at 2.5 and, wrapped, 3.5
        {2, 2, {30, 90}},                          // at 0, 0.5, 1 and 1.5, and so on
        {8, 2, {0, 20, 40, 60, 80, 100, 120, 60}}, // each pixel one of these
        {1, 1, {60}},
    };
    for (auto const& [width, scale, expected] : cases) {
        Image target(width, 1);
        target.copyWithScale(&source, scale);
        for (int x = 0; x < width; ++x)
            EXPECT_EQ(int{target(x, 0).g}, expected[static_cast<std::size_t>(x)])
                << width << ' ' << scale << ' ' << x;
    }
}

} // namespace
