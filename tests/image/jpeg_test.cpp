// JPEG through the host's own codec.

#include "support/host.h"
#include "support/library_test.h"
#include "support/pictures.h"

#include <cstdlib>

namespace {

using test::errorOf;
using test::pixelsOf;
using test::testData;
using Zel::Color;
using Zel::Image;

class JpegTest : public test::LibraryTest {
protected:
    /// Writes a file and returns the name by which the host knows it.
    std::string place(std::string const& name, std::string const& content) const {
        writeFile(name, content);
        return test::libraryPath(path(name));
    }

    test::ImagingThread m_imaging;
};

/// A colour picture of 16 x 16: red 200 in the left half and 20 in the right, blue 30 above and 220 below.
void expectPicture(Image const& image) {
    ASSERT_EQ(image.getWidth(), 16);
    ASSERT_EQ(image.getHeight(), 16);
    for (int i = 0; i < 256; ++i) {
        Color const pixel = image[i];
        EXPECT_NEAR(int{pixel.r}, i % 16 < 8 ? 200 : 20, 12) << i;
        EXPECT_NEAR(int{pixel.g}, 40, 12) << i;
        EXPECT_NEAR(int{pixel.b}, i / 16 < 8 ? 30 : 220, 12) << i;
        EXPECT_EQ(int{pixel.a}, 255) << i;
    }
}

TEST_F(JpegTest, ColourPicturesLoadOpaque) {
    for (std::string const name : {"colour.jpg", "progressive.jpg", "rgb.jpg"}) {
        SCOPED_TRACE(name);
        expectPicture(Image(place(name, testData(name))));
    }
}

TEST_F(JpegTest, GreyPicturesLeaveTheirLastPixelInTheFirst) {
    Image const image(place("grey.jpg", testData("grey.jpg")));
    std::vector<Color> pixels = pixelsOf(image);
    EXPECT_NEAR(int{pixels[0].r}, 55, 4) << "0.299 * 20 + 0.587 * 40 + 0.114 * 220";
    EXPECT_EQ(pixels[0], Color(pixels[0].r, pixels[0].r, pixels[0].r, 255));
    pixels[0] = Color();
    EXPECT_EQ(pixels, std::vector<Color>(256));
}

TEST_F(JpegTest, OtherColourSpacesAreRefused) {
    std::string const name = place("cmyk.jpg", testData("cmyk.jpg"));
    EXPECT_EQ(errorOf<Zel::JPEGLoaderException_UnsupportedColorSpace>([&] { Image{name}; }),
              "Unsupported color space in \"" + name + "\"");
}

TEST_F(JpegTest, WhateverElseFailsHasNoMessage) {
    std::string const whole = testData("colour.jpg");
    for (std::string const& name :
         {place("empty.jpg", ""), place("other.jpg", "BM and no picture"),
          place("header.jpg", whole.substr(0, 200)), place("rows.jpg", whole.substr(0, whole.size() - 12)),
          std::string("none.jpg"), std::string("a\0.jpg", 6)})
        EXPECT_EQ(errorOf<Zel::JPEGLoaderException_LoadFailed>([&] { Image{name}; }), "") << name;
}

TEST_F(JpegTest, APictureOfEndlessScansIsRefused) {
    if (!test::takesHostileJpeg())
        GTEST_SKIP() << "the host's codec is not safe";
    std::string const whole = testData("progressive.jpg");
    std::size_t const lastScan = whole.rfind("\xFF\xDA");
    std::string const scan = whole.substr(lastScan, whole.size() - 2 - lastScan);
    std::string content = whole.substr(0, lastScan);
    for (int i = 0; i < 200; ++i)
        content += scan;
    std::string const name = place("scans.jpg", content + "\xFF\xD9");
    EXPECT_EQ(errorOf<Zel::JPEGLoaderException_LoadFailed>([&] { Image{name}; }), "");
}

TEST_F(JpegTest, NeitherTheDataDirectoryNorArchivesAreAsked) {
    std::string const archive = packArchive("a.bva", {{"colour.jpg", testData("colour.jpg")}});
    writeFile("colour.jpg", testData("colour.jpg"));
    Zel::Archive const mounted(archive);
    EXPECT_TRUE(Zel::File::exists("colour.jpg"));
    EXPECT_EQ(errorOf<Zel::JPEGLoaderException_LoadFailed>([] { Image{"colour.jpg"}; }), "");
}

TEST_F(JpegTest, SavingWritesNoFile) {
    Image image(1200, 1000);
    try {
        image.save(test::libraryPath(path("out.jpg")));
    } catch (Zel::JPEGSaverException_SaveFailed const& exception) {
        EXPECT_STREQ(exception.getError(), ""); // an encoder may refuse a stream that leads nowhere
    }
    EXPECT_FALSE(std::filesystem::exists(path("out.jpg")));
    EXPECT_EQ(errorOf<Zel::JPEGSaverException_SaveFailed>([] { Image().save("none.jpg"); }), "");
}

} // namespace
