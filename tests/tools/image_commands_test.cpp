// zel image: what it tells about pictures, and the pictures that it writes.

#include "support/pictures.h"
#include "support/program_test.h"

namespace {

using test::Bmp;
using test::pixelsOf;
using test::Tga;
using testing::HasSubstr;
using Zel::Color;

class ImageCommandsTest : public test::ProgramTest {
protected:
    /// Loads a file of the scratch directory; the program has moved the data directory.
    static Zel::Image load(std::string const& name) {
        Zel::File::sm_datadir = Zel::Path();
        return {name};
    }

    test::ImagingThread m_imaging;
};

TEST_F(ImageCommandsTest, InfoTellsFormatSizeAndAlpha) {
    writeFile("a.tga", Tga{2, 2, 1, 32} + "bgr\1bgr\xC8");
    writeFile("Dir/b.bmp", Bmp{1, 2} + "123456");
    writeFile("c.jpg", test::testData("colour.jpg"));
    writeFile("jpg", test::testData("colour.jpg"));
    writeFile(".bmp", Bmp{5, -3} + "");
    expectOut({"image", "info", "a.tga", "Dir/b.bmp", "c.jpg", "jpg", ".bmp"},
              "a.tga: TGA, 2 x 1, alpha 1 to 200\nDir/b.bmp: BMP, 1 x 2, opaque\n"
              "c.jpg: JPG, 16 x 16, opaque\njpg: JPG, 16 x 16, opaque\n.bmp: BMP, 5 x -3, no pixels\n");
    expectOut({"image", "info", "--json", "a.tga"}, HasSubstr("\"width\": 2"));
}

TEST_F(ImageCommandsTest, FaultyPicturesAreNamedAndTheOthersTold) {
    writeFile("bad.tga", Tga{2, 1, 1, 8} + "1");
    writeFile("bad.jpg", "nothing");
    writeFile("good.bmp", Bmp() + "123");
    expectErr({"image", "info", "bad.tga", "bad.jpg", "good.bmp"}, 1,
              "zel: Truecolor image \"bad.tga\" is not 24/32 bits/pixel\n"
              "zel: cannot load bad.jpg: not a JPEG picture that can be decoded\n");
    EXPECT_EQ(out(), "good.bmp: BMP, 1 x 1, opaque\n");
    expectErr({"image", "info", "none.bmp", "bad.tga"}, 3,
              HasSubstr("zel: cannot open none.bmp: there is no such file\n"));
}

TEST_F(ImageCommandsTest, ConvertKeepsThePixelsAndTheName) {
    writeFile("a.tga", Tga{2, 2, 1} + "bgrBGR");
    EXPECT_EQ(zel({"image", "convert", "a.tga", "Out.bmp"}), 0) << err();
    EXPECT_THAT(test::treeOf(path(".")), testing::ElementsAre("Out.bmp", "a.tga"));
    EXPECT_EQ(pixelsOf(load("Out.bmp")), pixelsOf(load("a.tga")));
}

TEST_F(ImageCommandsTest, EverySizeIsFilled) {
    Zel::Image source(120, 100);
    std::fill_n(source.getData(), 120 * 100, Color(32, 128, 64, 255));
    source.save("a.tga");
    for (std::string const size : {"1x1", "7x9", "60x50", "119x99", "120x100", "121x333"}) {
        EXPECT_EQ(zel({"image", "convert", "a.tga", "out.tga", "--size", size}), 0) << err();
        Zel::Image const image = load("out.tga");
        EXPECT_EQ(std::to_string(image.getWidth()) + "x" + std::to_string(image.getHeight()), size);
        std::size_t const pixels = pixelsOf(image).size();
        EXPECT_EQ(pixelsOf(image), std::vector<Color>(pixels, Color(32, 128, 64, 255))) << size;
    }
}

TEST_F(ImageCommandsTest, WhatCannotBeSavedLeavesWhatIsThere) {
    writeFile("a.bmp", Bmp() + "123");
    auto const expectRefused = [this](Command arguments, int exitCode, char const* message) {
        arguments.insert(arguments.begin(), {"image", "convert"});
        expectErr(arguments, exitCode, HasSubstr(message));
    };
    expectRefused({"a.bmp", "b.jpg"}, 2, "JPEG is only read");
    expectRefused({"a.bmp", "b.pcx"}, 2, ".bmp or .tga");
    expectRefused({"none.bmp", ".tga"}, 2, ".bmp or .tga");
    expectRefused({"none.bmp", "b.bmp.bmp"}, 2, "must occur once");
    expectRefused({"a.bmp", "none/b.bmp"}, 3, "cannot write");
    expectRefused({"a.bmp", "b.bmp", "--size", "3"}, 2, "WIDTHxHEIGHT");
    expectRefused({"a.bmp", "b.bmp", "--size", "0x3"}, 2, "WIDTHxHEIGHT");
    expectRefused({"a.bmp", "b.bmp", "--size", "65536x65536"}, 1, "illegal dimensions 65536x65536");
    expectRefused({"none.tga", "a.bmp"}, 3, "no such file");
    EXPECT_THAT(test::treeOf(path(".")), testing::ElementsAre("a.bmp"));
    EXPECT_EQ(readFile("a.bmp"), Bmp() + "123");
}

TEST_F(ImageCommandsTest, NoiseIsDrawnFromTheLibrarysFunctions) {
    EXPECT_EQ(zel({"noise", "noise.tga", "--size", "16x8", "--freq", "4"}), 0) << err();
    EXPECT_EQ(zel({"noise", "turbulence.bmp", "--size", "16x8", "--kind", "turbulence", "--freq", "4"}), 0);
    Zel::Vector3Template<float> const place(4.0F * 5 / 16, 4.0F * 7 / 16, 0.37F);
    auto const grey = [](float value) {
        auto const v = static_cast<std::uint8_t>(value * 255.0F);
        return Color(v, v, v, 255);
    };
    EXPECT_EQ(load("noise.tga")(5, 7), grey(Zel::noise(place)));
    EXPECT_EQ(load("turbulence.bmp")(5, 7), grey(2.0F * Zel::turbulence(place, 4.0F)));
    for (char const* wrong : {"--size=16", "--kind=other", "--freq=nan"})
        expectErr({"noise", "noise.tga", "--size", "16x8", wrong}, 2, HasSubstr(std::string(wrong, 6)));
}

TEST_F(ImageCommandsTest, SidesThatGrowUnevenlyDoSoInSteps) {
    writeFile("dot.bmp", Bmp{1, 1} + "xyz");
    EXPECT_EQ(zel({"image", "convert", "dot.bmp", "wide.bmp", "--size", "65536x1"}), 0); // or it took minutes
    EXPECT_EQ(load("wide.bmp")(65535, 0), Color('z', 'y', 'x', 255));
    EXPECT_EQ(zel({"image", "convert", "wide.bmp", "high.bmp", "--size", "2x3000"}), 0);
    EXPECT_EQ(load("high.bmp")(1, 2999), Color('z', 'y', 'x', 255));
    expectErr({"image", "convert", "wide.bmp", "wide.tga"}, 2, HasSubstr("at most 65535 pixels a side"));
}

TEST_F(ImageCommandsTest, SheetFitsPicturesIntoCells) {
    writeFile("wide.tga", Tga{2, 2, 1} + "\1\2\3\1\2\3");
    writeFile("tall.bmp", Bmp{1, 4} + std::string(12, 'x'));
    EXPECT_EQ(zel({"image", "sheet", "sheet.bmp", "wide.tga", "none.tga", "tall.bmp"}), 3);
    EXPECT_EQ(out(), "row 1, column 1: wide.tga\nrow 1, column 2: tall.bmp\n");
    Zel::Image const sheet = load("sheet.bmp");
    ASSERT_EQ(sheet.getWidth(), 16 + 2 * 176); // cells of 160 pixels a side, 16 around each
    ASSERT_EQ(sheet.getHeight(), 16 + 2 * 176);
    Color const ground(48, 48, 52, 255), wide(3, 2, 1, 255), tall('x', 'x', 'x', 255);
    for (auto const& [x, y, expected] : {std::tuple(0, 0, ground),
                                         {0, 40, wide},
                                         {159, 40 + 79, wide},
                                         {176 + 60, 0, tall},
                                         {176 + 99, 159, tall},
                                         {176 + 100, 159, ground}})
        EXPECT_EQ(sheet(16 + x, 16 + y), expected) << x << ", " << y;
}

} // namespace
