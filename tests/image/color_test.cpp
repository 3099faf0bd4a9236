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

struct Hue {
    Floats rgb, hsv;
};

TEST(ColorTest, LiesInMemoryAsBlueGreenRedAlpha) {
    Color const color(1, 2, 3, 4);
    auto const* bytes = reinterpret_cast<unsigned char const*>(&color);
    static_assert(sizeof(Color) == 4);
    EXPECT_EQ(std::vector<unsigned char>(bytes, bytes + 4), (std::vector<unsigned char>{3, 2, 1, 4}));
    EXPECT_EQ(Color(), Color(0, 0, 0, 255));
}

TEST(ColorTest, SumsAndDifferencesStopAtTheEndsOnAllChannels) {
    Color color(200, 100, 0, 250);
    color += Color(100, 100, 1, 10);
    EXPECT_EQ(color, Color(255, 200, 1, 255));
    color -= Color(1, 201, 2, 255);
    EXPECT_EQ(color, Color(254, 0, 0, 0));
}

TEST(ColorTest, ProductsAreTruncatedAndWrapAndLeaveAlpha) {
    struct Case {
        float factor;
        Color expected; // of (200, 3, 255)
    };
    for (Case const& c : {Case{2.0F, {144, 6, 254, 77}}, Case{0.5F, {100, 1, 127, 77}},
                          Case{-1.0F, {56, 253, 1, 77}}, Case{1e30F, {0, 0, 0, 77}},
                          Case{kInfinity, {0, 0, 0, 77}}, Case{kInfinity - kInfinity, {0, 0, 0, 77}}}) {
        Color color(200, 3, 255, 77);
        color *= c.factor;
        EXPECT_EQ(color, c.expected) << c.factor;
    }
}

TEST(FColorTest, OnlyDivisionLeavesAlpha) {
    FColor const one(1, 1, 1, 1);
    FColor const other(0.5F, 0.25F, 0.125F, 0.5F);
    EXPECT_EQ(channels(one / 2), (Floats{0.5F, 0.5F, 0.5F, 1}));
    EXPECT_EQ((FColor(5, 0, 0, 1) / 3).r, 5 * (1 / 3.0F)) << "the reciprocal is rounded first";
    EXPECT_EQ(channels(one * 0.5F), (Floats{0.5F, 0.5F, 0.5F, 0.5F}));
    EXPECT_EQ(channels(one + other), (Floats{1.5F, 1.25F, 1.125F, 1.5F}));
    EXPECT_EQ(channels(one - other), (Floats{0.5F, 0.75F, 0.875F, 0.5F}));
    EXPECT_EQ(channels(other * other), (Floats{0.25F, 0.0625F, 0.015625F, 0.25F}));
    EXPECT_EQ(channels(FColor()), (Floats{0, 0, 0, 1}));
    FColor color(1, 2, 3, 4);
    color.set(5, 6, 7);
    EXPECT_EQ(channels(color), (Floats{5, 6, 7, 4}));
    color.set(8, 9, 10, 11);
    EXPECT_EQ(channels(color), (Floats{8, 9, 10, 11}));
}

TEST(FColorTest, BlendsAllFourChannels) {
    FColor const black(0, 0, 0, 0);
    FColor const white(1, 1, 1, 1);
    FColor out;
    FColor::interpolate(out, black, 0.25F, FColor(4, 8, 12, 1));
    EXPECT_EQ(channels(out), (Floats{1, 2, 3, 0.25F}));
    FColor::bilinear(out, black, white, FColor(2, 2, 2, 2), FColor(4, 4, 4, 4), 0.25F, 0.5F);
    EXPECT_EQ(channels(out), (Floats(4, 0.125F * 1 + 0.375F * 2 + 0.125F * 4)));
    EXPECT_NEAR(FColor(1, 1, 1, 9).intensity(), 1.0F, 1e-6F);
    EXPECT_FLOAT_EQ(FColor(1, 0, 0, 0).intensity(), 0.3F);
    EXPECT_FLOAT_EQ(FColor(0, 1, 0, 0).intensity(), 0.59F);
    EXPECT_FLOAT_EQ(FColor(0, 0, 1, 0).intensity(), 0.11F);
}

TEST(FColorTest, TellsHueSaturationAndValue) {
    for (Hue const& c : {Hue{{0, 0, 0}, {0, 0, 0}}, Hue{{0.5F, 0.5F, 0.5F}, {0, 0, 0.5F}},
                         Hue{{1, 0, 0}, {0, 1, 1}}, Hue{{0, 0, 1}, {240, 1, 1}}, Hue{{0, 2, 1}, {150, 1, 2}},
                         Hue{{1, 0, 0.5F}, {330, 1, 1}}, Hue{{0.5F, 0, 1}, {270, 1, 1}}}) {
        Floats hsv(3);
        FColor::rgb2hsv(c.rgb[0], c.rgb[1], c.rgb[2], &hsv[0], &hsv[1], &hsv[2]);
        EXPECT_EQ(hsv, c.hsv);
    }
}

TEST(FColorTest, TurnsHuesBackAndShowsImpossibleOnesInMagenta) {
    Floats const magenta{1, 0, 1};
    for (Hue const& c :
         {Hue{{1, 0, 0}, {0, 1, 1}}, Hue{{1, 0, 0}, {360, 1, 1}}, Hue{{0.75F, 1, 0.5F}, {90, 0.5F, 1}},
          Hue{{0, 2, 1}, {150, 1, 2}}, Hue{{0, 0.5F, 1}, {210, 1, 1}}, Hue{{0.5F, 0, 1}, {270, 1, 1}},
          Hue{{1, 0, 0.5F}, {330, 1, 1}}, Hue{{1, -0.5F, 0}, {-30, 1, 1}}, Hue{magenta, {-60, 1, 0.2F}},
          Hue{magenta, {400, 1, 0.2F}}, Hue{magenta, {kInfinity, 1, 1}}, Hue{magenta, {-1e30F, 1, 1}},
          Hue{{0.2F, 0.2F, 0.2F}, {400, 0, 0.2F}}}) {
        Floats rgb(3);
        FColor::hsv2rgb(c.hsv[0], c.hsv[1], c.hsv[2], &rgb[0], &rgb[1], &rgb[2]);
        EXPECT_EQ(rgb, c.rgb) << c.hsv[0];
    }
}

} // namespace
