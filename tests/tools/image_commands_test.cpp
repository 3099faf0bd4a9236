// zel image: what it tells about pictures, and the pictures that it writes.

#include "support/host.h"
#include "support/pictures.h"
#include "support/program_test.h"

#include <gmock/gmock.h>

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
        return Zel::Image(name);
    }

    bool hasOnly(std::vector<std::string> const& names) const {
        std::vector<std::string> found;
        for (auto const& entry : std::filesystem::directory_iterator(path(".")))
            found.push_back(entry.path().filename().string());
        return testing::Matches(testing::UnorderedElementsAreArray(names))(found);
    }

    test::ImagingThread m_imaging;
};

TEST_F(ImageCommandsTest, InfoTellsFormatSizeAndAlpha) {
    writeFile("a.tga", Tga{2, 2, 1, 32} + "bgr\1bgr\xC8");
    writeFile("Dir/b.bmp", Bmp{1, 2} + "123456");
    writeFile("c.jpg", test::testData("colour.jpg"));
    writeFile("jpg", test::testData("colour.jpg"));
    writeFile(".bmp", Bmp{5, -3} + "");
    EXPECT_EQ(zel({"image", "info", "a.tga", "Dir/b.bmp", "c.jpg", "jpg", ".bmp"}), 0);
    EXPECT_EQ(out(),
              "a.tga: TGA, 2 x 1, alpha 1 to 200\nDir/b.bmp: BMP, 1 x 2, opaque\n"
              "c.jpg: JPG, 16 x 16, opaque\njpg: JPG, 16 x 16, opaque\n.bmp: BMP, 5 x -3, no pixels\n");
    EXPECT_EQ(zel({"image", "info", "--json", "a.tga"}), 0);
    EXPECT_THAT(out(), HasSubstr("\"width\": 2"));
}

TEST_F(ImageCommandsTest, FaultyPicturesAreNamedAndTheOthersTold) {
    writeFile("bad.tga", Tga{2, 1, 1, 8} + "1");
    writeFile("bad.jpg", "nothing");
    writeFile("good.bmp", Bmp() + "123");
    EXPECT_EQ(zel({"image", "info", "bad.tga", "bad.jpg", "good.bmp"}), 1);
    EXPECT_EQ(err(), "zel: Truecolor image \"bad.tga\" is not 24/32 bits/pixel\n"
                     "zel: cannot load bad.jpg: not a JPEG picture that can be decoded\n");
    EXPECT_EQ(out(), "good.bmp: BMP, 1 x 1, opaque\n");
    EXPECT_EQ(zel({"image", "info", "none.bmp", "bad.tga"}), 3);
    EXPECT_THAT(err(), HasSubstr("zel: cannot open none.bmp: there is no such file\n"));
}

TEST_F(ImageCommandsTest, ConvertKeepsThePixelsAndTheName) {
    writeFile("a.tga", Tga{2, 2, 1} + "bgrBGR");
    EXPECT_EQ(zel({"image", "convert", "a.tga", "Out.bmp"}), 0) << err();
    EXPECT_TRUE(hasOnly({"a.tga", "Out.bmp"}));
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
    struct Case {
        std::vector<std::string> arguments;
        int exitCode;
        char const* message;
    };
    for (Case const& c :
         {Case{{"a.bmp", "b.jpg"}, 2, "JPEG is only read"}, Case{{"a.bmp", "b.pcx"}, 2, ".bmp or .tga"},
          Case{{"none.bmp", ".tga"}, 2, ".bmp or .tga"},
          Case{{"none.bmp", "b.bmp.bmp"}, 2, "must occur once"},
          Case{{"a.bmp", "none/b.bmp"}, 3, "cannot write"},
          Case{{"a.bmp", "b.bmp", "--size", "3"}, 2, "WIDTHxHEIGHT"},
          Case{{"a.bmp", "b.bmp", "--size", "0x3"}, 2, "WIDTHxHEIGHT"},
          Case{{"a.bmp", "b.bmp", "--size", "65536x65536"}, 1, "illegal dimensions 65536x65536"},
          Case{{"none.tga", "a.bmp"}, 3, "no such file"}}) {
        std::vector<std::string> arguments{"image", "convert"};
        arguments.insert(arguments.end(), c.arguments.begin(), c.arguments.end());
        EXPECT_EQ(zel(arguments), c.exitCode) << c.message;
        EXPECT_THAT(err(), HasSubstr(c.message));
    }
    EXPECT_TRUE(hasOnly({"a.bmp"}));
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
    EXPECT_EQ(zel({"noise", "noise.tga", "--size", "16"}), 2);
    EXPECT_EQ(zel({"noise", "noise.tga", "--size", "16x8", "--kind", "other"}), 2);
    EXPECT_EQ(zel({"noise", "noise.tga", "--size", "16x8", "--freq", "nan"}), 2);
}

TEST_F(ImageCommandsTest, SidesThatGrowUnevenlyDoSoInSteps) {
    writeFile("dot.bmp", Bmp{1, 1} + "xyz");
    EXPECT_EQ(zel({"image", "convert", "dot.bmp", "wide.bmp", "--size", "65536x1"}), 0); // or it took minutes
    EXPECT_EQ(load("wide.bmp")(65535, 0), Color('z', 'y', 'x', 255));
    EXPECT_EQ(zel({"image", "convert", "wide.bmp", "high.bmp", "--size", "2x3000"}), 0);
    EXPECT_EQ(load("high.bmp")(1, 2999), Color('z', 'y', 'x', 255));
    EXPECT_EQ(zel({"image", "convert", "wide.bmp", "wide.tga"}), 2);
    EXPECT_THAT(err(), HasSubstr("at most 65535 pixels a side"));
}

TEST_F(ImageCommandsTest, SheetFitsPicturesIntoCells) {
    writeFile("wide.tga", Tga{2, 2, 1} + "\1\2\3\1\2\3");
    writeFile("tall.bmp", Bmp{1, 4} + std::string(12, 'x'));
    EXPECT_EQ(zel({"image", "sheet", "sheet.bmp", "wide.tga", "none.tga", "tall.bmp"}), 3);
    EXPECT_EQ(out(), "row 1, column 1: wide.tga\nrow 1, column 2: tall.bmp\n");
    Zel::Image const sheet = load("sheet.bmp");
    ASSERT_EQ(sheet.getWidth(), 16 + 2 * 176);
    ASSERT_EQ(sheet.getHeight(), 16 + 2 * 176);
    Color const ground(48, 48, 52, 255);
    Color const x('x', 'x', 'x', 255);
    EXPECT_EQ(sheet(16, 16), ground);
    EXPECT_EQ(sheet(16, 16 + 40), Color(3, 2, 1, 255));
    EXPECT_EQ(sheet(16 + 159, 16 + 40 + 79), Color(3, 2, 1, 255));
    EXPECT_EQ(sheet(16 + 176 + 60, 16), x);
    EXPECT_EQ(sheet(16 + 176 + 99, 16 + 159), x);
    EXPECT_EQ(sheet(16 + 176 + 100, 16 + 159), ground);
}

} // namespace
