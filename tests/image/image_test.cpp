#include "support/library_test.h"
#include "support/pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <utility>

namespace {

using test::imageOf;
using test::pixelsOf;
using Zel::Color;
using Zel::Image;
using Colors = std::vector<Color>;

Color const kBlack;
Color const kKey(255, 0, 255, 9);

float const kInfinity = std::numeric_limits<float>::infinity();
float const kNan = std::numeric_limits<float>::quiet_NaN();

Color grey(int value) {
    auto const v = static_cast<std::uint8_t>(value);
    return {v, v, v, v};
}

struct GreySample {
    float x, y;
    int expected;
};

TEST(ImageTest, IsOpaqueBlackUntilCleared) {
    Image image(2, 2);
    EXPECT_EQ(pixelsOf(image), Colors(4, kBlack));
    image.resize(3, 2);
    EXPECT_EQ(Colors(image.getData(), image.getData() + 4 * 3 * 2), Colors(4 * 3 * 2, kBlack));
    image.clear();
    EXPECT_EQ(pixelsOf(image), Colors(6, Color(0, 0, 0, 0)));
    EXPECT_EQ(image.getData()[6], kBlack) << "clear leaves the room behind the image";
}

TEST(ImageTest, CopiesOwnTheirPixels) {
    Image source = imageOf(2, {grey(1), grey(2)});
    Image copy(source);
    Image assigned(5, 5);
    assigned = source;
    Image const& self = assigned;
    assigned = self;
    source[0] = kBlack;
    for (Image const& image : {copy, assigned}) {
        EXPECT_EQ(image.getWidth(), 2);
        EXPECT_EQ(pixelsOf(image), (Colors{grey(1), grey(2)}));
    }
}

TEST(ImageTest, KeepsSizesThatHoldNoPixels) {
    for (auto const& [width, height] : {std::pair(0, 0), {0, 5}, {7, -1}, {-3, -4}}) {
        Image image(4, 4);
        image.resize(width, height);
        Image assigned(2, 2);
        assigned = image;
        for (Image const& empty : {image, Image(width, height), Image(image), assigned}) {
            EXPECT_EQ(empty.getWidth(), width);
            EXPECT_EQ(empty.getHeight(), height);
            EXPECT_EQ(empty.getData(), nullptr);
            EXPECT_EQ(empty.samplePoint(0, 0), kBlack);
            EXPECT_EQ(empty.sampleBilinear(0, 0), kBlack);
        }
        image.clear();
        image.dilate(kKey);
        image.copyWithScale(&assigned, 1);
    }
}

TEST(ImageTest, RefusesSizesThatCannotBeCounted) {
    Image image = imageOf(1, {grey(1)});
    std::string const message = "Image \"\" has illegal dimensions 65536x32768";
    EXPECT_EQ(test::errorOf<Zel::ImageException_IllegalDimensions>([&] { image.resize(65536, 32768); }),
              message);
    EXPECT_EQ(test::errorOf<Zel::ImageException_IllegalDimensions>([] { Image(65536, 32768); }), message);
    EXPECT_EQ(pixelsOf(image), Colors{grey(1)});
}

TEST(ImageTest, CopiesRectanglesRowByRow) {
    Image const source = imageOf(3, {grey(1), grey(2), grey(3), grey(4), grey(5), grey(6)});
    Image target(2, 3);
    target.copy(0, 1, &source, 1, 0, 2, 2);
    EXPECT_EQ(pixelsOf(target), (Colors{kBlack, kBlack, grey(2), grey(3), grey(5), grey(6)}));
    target.copy(0, 0, &source, 0, 0, 2, 0);
    target.copy(0, 0, &source, 0, 0, 0, 2);
    EXPECT_EQ(target(1, 0), kBlack);
    target.copy(0, 0, &target, 0, 1, 2, 2);
    EXPECT_EQ(pixelsOf(target), (Colors{grey(2), grey(3), grey(5), grey(6), grey(5), grey(6)}));
}

TEST(ImageTest, PointSamplesTakeTheNearestPixel) {
    Image image(4, 4);
    for (int i = 0; i < 16; ++i)
        image[i] = grey(i);
    for (auto const& [x, y, expected] :
         {GreySample{-3, 1e6F, 12}, GreySample{1.49F, 0, 1}, GreySample{1.5F, 0, 2}, GreySample{0, 2.5F, 12},
          GreySample{kInfinity, -kInfinity, 3}, GreySample{kNan, 1, 4}, GreySample{-0.9F, 0, 0},
          GreySample{0.49999997F, 0, 0}})
        EXPECT_EQ(image.samplePoint(x, y), grey(expected)) << x << ' ' << y;
}

TEST(ImageTest, BilinearSamplesTruncateAfterEachBlend) {
    Image const image =
        imageOf(4, {grey(0), grey(255), grey(10), grey(20), grey(5), grey(2), grey(0), grey(9)});
    for (auto const& [x, y, expected] :
         {GreySample{0.5F, 0, 127}, GreySample{3.5F, 0, 20}, GreySample{0.5F, 0.5F, 65},
          GreySample{-1, -1, 0}, GreySample{0, 1.75F, 5}, GreySample{0.25F, 1, 4},
          GreySample{kInfinity, 0, 20}, GreySample{-kInfinity, kInfinity, 5}, GreySample{2.5F, 0.25F, 12}})
        EXPECT_EQ(image.sampleBilinear(x, y), grey(expected)) << x << ' ' << y;
}

/// The colour whose channels `of` tells, each from its place in a colour.
template <class Of>
Color byChannel(Of of) {
    return {of(&Color::r), of(&Color::g), of(&Color::b), of(&Color::a)};
}

/// Pixels without any order, a third of them of the key colour.
Image randomImage(int width, int height) {
    std::minstd_rand random;
    Image image(width, height);
    for (int i = 0; i < width * height; ++i) {
        auto const bits = static_cast<std::uint32_t>(random());
        auto const byte = [bits](int shift) {
            return static_cast<std::uint8_t>(bits >> shift);
        };
        image[i] = bits % 3 == 0 ? Color(255, 0, 255, byte(8)) : Color(byte(4), byte(9), byte(14), byte(19));
    }
    return image;
}

TEST(ImageTest, EveryBilinearSampleIsThreeBlends) {
    Image const image = randomImage(37, 23);
    auto const at = [&](int x, int y) {
        return image(std::clamp(x, 0, 36), std::clamp(y, 0, 22));
    };
    std::minstd_rand random;
    std::uniform_real_distribution<float> coordinate(-3.0F, 40.0F);
    for (int i = 0; i < 20000; ++i) {
        float const x = coordinate(random);
        float const y = coordinate(random);
        float const left = std::floor(x);
        float const top = std::floor(y);
        int const column = static_cast<int>(left);
        int const row = static_cast<int>(top);
        auto const expected = [&](std::uint8_t Color::*channel) {
            int const upper =
                Zel::blendChannel(at(column, row).*channel, at(column + 1, row).*channel, x - left);
            int const lower =
                Zel::blendChannel(at(column, row + 1).*channel, at(column + 1, row + 1).*channel, x - left);
            return static_cast<std::uint8_t>(Zel::blendChannel(upper, lower, y - top));
        };
        ASSERT_EQ(image.sampleBilinear(x, y), byChannel(expected)) << x << ' ' << y;
    }
}

TEST(ImageTest, DilationOfAnyImageIsTheAverageOfNeighbours) {
    Image const before = randomImage(100, 40);
    Image after(before);
    after.dilate(kKey);
    auto const isKey = [](Color const& color) {
        return color.r == 255 && color.g == 0 && color.b == 255;
    };
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 100; ++x) {
            std::vector<Color> neighbours;
            for (auto const& [i, j] : {std::pair(x - 1, y), {x, y - 1}, {x + 1, y}, {x, y + 1}})
                if (i >= 0 && j >= 0 && i < 100 && j < 40 && !isKey(before(i, j)))
                    neighbours.push_back(before(i, j));
            auto const average = [&](std::uint8_t Color::*channel) {
                int sum = 0;
                for (Color const& color : neighbours)
                    sum += color.*channel;
                return static_cast<std::uint8_t>(sum / static_cast<int>(neighbours.size()));
            };
            Color expected = before(x, y);
            if (isKey(expected))
                expected = neighbours.empty() ? kKey : byChannel(average);
            ASSERT_EQ(after(x, y), expected) << x << ' ' << y;
        }
    }
}

TEST(AreaSampleTest, AveragesWhatThePolygonCovers) {
    using Point = Zel::Vector2Template<float>;
    // Left half 0, right half 200, as four columns; samples lie half-way between columns.
    Image const image = imageOf(4, {grey(0), grey(0), grey(200), grey(200)});
    auto const rectangle = [](float left, float right) {
        return std::vector<Point>{{left, 0}, {right, 0}, {right, 1}, {left, 1}};
    };
    auto const opaque = [](int value) {
        Color color = grey(value);
        color.a = 255;
        return color;
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
        EXPECT_EQ(image.areaSample(c.scale, c.polygon.data(), count), opaque(c.expected)) << c.scale;
        std::vector<Point> const reversed(c.polygon.rbegin(), c.polygon.rend());
        EXPECT_EQ(image.areaSample(c.scale, reversed.data(), count), opaque(c.expected)) << "other winding";
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
