#include <gtest/gtest.h>
#include <limits>
#include <vector>
#include <zel/image.h>

namespace {

using Zel::Color;
using Zel::FColor;
using Floats = std::vector<float>;

float const kInfinity = std::numeric_limits<float>::infinity();

Floats channels(FColor const& color) { return {color.r, color.g, color.b, color.a}; }

TEST(ColorTest, LiesInMemoryAsBlueGreenRedAlpha) {
    Color const color(1, 2, 3, 4);
    auto const* bytes = reinterpret_cast<unsigned char const*>(&color);
    static_assert(sizeof(Color) == 4);
    EXPECT_EQ(std::vector<unsigned char>(bytes, bytes + 4), (std::vector<unsigned char>{3, 2, 1, 4}));
    EXPECT_EQ(Color(), Color(0, 0, 0, 255));
}

TEST(ColorTest, SumsAndDifferencesStopAtTheEndsOnAllChannels) {
    Color color(200, 100, 0, 250);
    EXPECT_EQ(color += Color(100, 100, 1, 10), Color(255, 200, 1, 255));
    EXPECT_EQ(color -= Color(1, 201, 2, 255), Color(254, 0, 0, 0));
}

TEST(ColorTest, ProductsAreTruncatedAndWrapAndLeaveAlpha) {
    for (auto const& [factor, expected] : {std::pair(2.0F, Color(144, 6, 254, 77)),
                                           {0.5F, {100, 1, 127, 77}},
                                           {-1.0F, {56, 253, 1, 77}},
                                           {1e30F, {0, 0, 0, 77}},
                                           {kInfinity, {0, 0, 0, 77}},
                                           {kInfinity - kInfinity, {0, 0, 0, 77}}})
        EXPECT_EQ(Color(200, 3, 255, 77) *= factor, expected) << factor;
}

TEST(FColorTest, OnlyDivisionLeavesAlpha) {
    FColor const one(1, 1, 1, 1);
    FColor const other(0.5F, 0.25F, 0.125F, 0.5F);
    FColor color(1, 2, 3, 4);
    color.set(5, 6, 7);
    for (auto const& [result, expected] : {std::pair(one / 2, Floats{0.5F, 0.5F, 0.5F, 1}),
                                           {one * 0.5F, {0.5F, 0.5F, 0.5F, 0.5F}},
                                           {one + other, {1.5F, 1.25F, 1.125F, 1.5F}},
                                           {one - other, {0.5F, 0.75F, 0.875F, 0.5F}},
                                           {other * other, {0.25F, 0.0625F, 0.015625F, 0.25F}},
                                           {FColor(), {0, 0, 0, 1}},
                                           {color, {5, 6, 7, 4}}})
        EXPECT_EQ(channels(result), expected);
    EXPECT_EQ((FColor(5, 0, 0, 1) / 3).r, 5 * (1 / 3.0F)) << "the reciprocal is rounded first";
    color.set(8, 9, 10, 11);
    EXPECT_EQ(channels(color), (Floats{8, 9, 10, 11}));
}

TEST(FColorTest, BlendsAllFourChannels) {
    FColor const black(0, 0, 0, 0);
    FColor out;
    FColor::interpolate(out, black, 0.25F, FColor(4, 8, 12, 1));
    EXPECT_EQ(channels(out), (Floats{1, 2, 3, 0.25F}));
    FColor::bilinear(out, black, FColor(1, 1, 1, 1), FColor(2, 2, 2, 2), FColor(4, 4, 4, 4), 0.25F, 0.5F);
    EXPECT_EQ(channels(out), (Floats(4, 0.125F * 1 + 0.375F * 2 + 0.125F * 4)));
    EXPECT_FLOAT_EQ(FColor(1, 0, 0, 9).intensity(), 0.3F);
    EXPECT_FLOAT_EQ(FColor(0, 1, 0, 9).intensity(), 0.59F);
    EXPECT_FLOAT_EQ(FColor(0, 0, 1, 9).intensity(), 0.11F);
}

TEST(FColorTest, TurnsHuesBackAndShowsImpossibleOnesInMagenta) {
    Floats const magenta{1, 0, 1};
    struct {
        Floats hsv, rgb;
        bool isBack; // whether the hue is that of the colour
    } const cases[] = {{{0, 0, 0}, {0, 0, 0}, true},        {{0, 0, 0.5F}, {0.5F, 0.5F, 0.5F}, true},
                       {{0, 1, 1}, {1, 0, 0}, true},        {{240, 1, 1}, {0, 0, 1}, true},
                       {{150, 1, 2}, {0, 2, 1}, true},      {{330, 1, 1}, {1, 0, 0.5F}, true},
                       {{270, 1, 1}, {0.5F, 0, 1}, true},   {{90, 0.5F, 1}, {0.75F, 1, 0.5F}, true},
                       {{210, 1, 1}, {0, 0.5F, 1}, true},   {{360, 1, 1}, {1, 0, 0}, false},
                       {{-30, 1, 1}, {1, -0.5F, 0}, false}, {{400, 0, 0.2F}, {0.2F, 0.2F, 0.2F}, false},
                       {{-60, 1, 0.2F}, magenta, false},    {{400, 1, 0.2F}, magenta, false},
                       {{kInfinity, 1, 1}, magenta, false}, {{-1e30F, 1, 1}, magenta, false}};
    for (auto const& [hsv, rgb, isBack] : cases) {
        Floats result(3);
        FColor::hsv2rgb(hsv[0], hsv[1], hsv[2], result.data(), &result[1], &result[2]);
        EXPECT_EQ(result, rgb) << "hue " << hsv[0];
        FColor::rgb2hsv(rgb[0], rgb[1], rgb[2], result.data(), &result[1], &result[2]);
        EXPECT_EQ(result == hsv, isBack) << "hue " << hsv[0] << " came back as " << result[0];
    }
}

} // namespace
