// JPEG through the host's own codec.

#include "support/host.h"
#include "support/library_test.h"
#include "support/pictures.h"

#include <cstdlib>

namespace {

using test::errorOf;
using test::pixelsOf;
using test::testData;
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

// Pictures of 16 x 16: red 200 in the left half and 20 in the right, blue 30 above and 220 below.
TEST_F(JpegTest, ColourPicturesLoadOpaque) {
    for (std::string const name : {"colour.jpg", "progressive.jpg", "rgb.jpg"}) {
        Image const image(place(name, testData(name)));
        ASSERT_EQ(image.getWidth(), 16);
        ASSERT_EQ(image.getHeight(), 16);
        for (int i = 0; i < 256; ++i) {
            EXPECT_NEAR(int{image[i].r}, i % 16 < 8 ? 200 : 20, 12) << name << ' ' << i;
            EXPECT_NEAR(int{image[i].g}, 40, 12) << name << ' ' << i;
            EXPECT_NEAR(int{image[i].b}, i / 16 < 8 ? 30 : 220, 12) << name << ' ' << i;
            EXPECT_EQ(int{image[i].a}, 255) << name << ' ' << i;
        }
    }
}

TEST_F(JpegTest, GreyPicturesLeaveTheirLastPixelInTheFirst) {
    Image const image(place("grey.jpg", testData("grey.jpg")));
    test::Colors expected(256);
    expected[0] = test::grey(image[0].r);
    EXPECT_EQ(pixelsOf(image), expected);
    EXPECT_NEAR(int{image[0].r}, 55, 4) << "0.299 * 20 + 0.587 * 40 + 0.114 * 220";
}

TEST_F(JpegTest, OtherColourSpacesAreRefused) {
    std::string const name = place("cmyk.jpg", testData("cmyk.jpg"));
    EXPECT_EQ(errorOf<Zel::JPEGLoaderException_UnsupportedColorSpace>([&] { Image{name}; }),
              "Unsupported color space in \"" + name + "\"");
}

TEST_F(JpegTest, WhateverElseFailsHasNoMessageAndLeavesTheImage) {
    std::string const whole = testData("colour.jpg"), progressive = testData("progressive.jpg");
    std::vector<std::string> names = {place("empty.jpg", ""),
                                      place("other.jpg", "BM and no picture"),
                                      place("header.jpg", whole.substr(0, 200)),
                                      place("rows.jpg", whole.substr(0, whole.size() - 12)),
                                      "none.jpg",
                                      std::string("a\0.jpg", 6)};
    if (test::takesHostileJpeg()) {
        std::size_t const lastScan = progressive.rfind("\xFF\xDA");
        std::string scans = progressive.substr(0, lastScan);
        for (int i = 0; i < 200; ++i)
            scans += progressive.substr(lastScan, progressive.size() - 2 - lastScan);
        names.push_back(place("scans.jpg", scans + "\xFF\xD9"));
    }
    for (std::string const& name : names) {
        Image image = test::imageOf(1, {test::grey(1)});
        EXPECT_EQ(errorOf<Zel::JPEGLoaderException_LoadFailed>([&] { image.load(name); }), "") << name;
        EXPECT_EQ(pixelsOf(image), test::Colors{test::grey(1)}) << name;
    }
}

TEST_F(JpegTest, NeitherTheDataDirectoryNorArchivesAreAsked) {
    Zel::Archive const archive(packArchive("a.bva", {{"colour.jpg", testData("colour.jpg")}}));
    writeFile("colour.jpg", testData("colour.jpg"));
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
