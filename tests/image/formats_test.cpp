// Which codec a name goes to, and what all codecs have in common.

#include "image/codec_test.h"

#include "image/packed_pixels.h"

#include <algorithm>

namespace {

using namespace test;
using Zel::Color;
using Zel::Image;

using FormatsTest = LibraryTest;

TEST_F(FormatsTest, TheFirstOccurrenceOfTheEndingTellsTheFormat) {
    using Unknown = Zel::ImageException_UnknownImageFormat;
    writeFile("a.tga.bmp", Bmp() + packed({kRed}));
    EXPECT_EQ(Image("a.tga.bmp")[0], kRed);
    for (std::string const name : {"a.bmp.bmp", "a.BMP", "a.png", "abcd", "ab", "", "a.bmp ", "a.jpeg"}) {
        std::string const message = "Unknown image format \"" + name + "\"";
        EXPECT_EQ(errorOf<Unknown>([&] { Image{name}; }), message);
        EXPECT_EQ(errorOf<Unknown>([&] { Image(1, 1).save(name); }), message);
    }
    EXPECT_EQ(errorOf<Unknown>([] { Image(1, 1).save("a.pcx"); }), "Unknown image format \"a.pcx\"");
    EXPECT_EQ(errorOf<Zel::JPEGLoaderException_LoadFailed>([] { Image{"abc"}; }), "") << "as a.jpg would";
}

// Pixels are packed and unpacked four at a time: the same as one at a time, for every remainder.
TEST_F(FormatsTest, PixelsOf24BitsAreSavedAndLoadedInEveryWidth) {
    std::minstd_rand random;
    for (int width = 1; width <= 9; ++width) {
        Image image(width, 3);
        Colors loaded(static_cast<std::size_t>(3 * width));
        std::generate_n(image.getData(), loaded.size(), [&] { return randomColor(random); });
        std::string stored(3 * loaded.size(), '\0');
        auto* const storedBytes = reinterpret_cast<unsigned char*>(stored.data());
        Zel::scalar::packPixels(image.getData(), loaded.size(), storedBytes);
        Zel::scalar::unpackPixels(storedBytes, loaded.size(), loaded.data());
        image.save("out.tga");
        EXPECT_EQ(readFile("out.tga").substr(18), stored) << width;
        for (char const* const name : {"out.tga", "out.bmp"}) {
            image.save(name);
            EXPECT_EQ(pixelsOf(Image(name)), loaded) << name << ' ' << width;
        }
    }
}

TEST_F(FormatsTest, SizesWithoutPixelsAreKept) {
    for (auto const& [name, content, height] : {std::tuple("a.bmp", Bmp{.width = 5, .height = -3} + "", -3),
                                                {"b.pcx", Pcx{.xMax = 4, .yMax = -1} + "", 0},
                                                {"c.pcx", Pcx{.xMax = 4, .yMax = -5} + "", -4}}) {
        writeFile(name, content);
        Image image(1, 1);
        image.load(name);
        EXPECT_EQ(image.getWidth(), 5);
        EXPECT_EQ(image.getHeight(), height);
        EXPECT_EQ(image.getData(), nullptr);
    }
}

// The numbers are the CRC-32 of what ImageMagick decodes from each file, as bytes in the order BGRA.
TEST_F(FormatsTest, PicturesOfOtherProgramsDecodeFromAnArchiveAsThereToTheBit) {
    std::pair<std::string, unsigned long> const cases[] = {
        {"Clouds.tga", 0xB4D22B9D},  {"Icon.tga", 0x68980C61},  {"Mandelbrot.tga", 0x0A0B4DDA},
        {"Spheres.tga", 0xE95DF588}, {"Julia.pcx", 0xFFCC2565}, {"Wheel.bmp", 0x49E5B360}};
    for (auto const& [name, crc] : cases) {
        std::string const entry = "picture" + name.substr(name.size() - 4);
        Zel::Archive const archive(
            packArchive("a.bva", {{entry, fileContent(ZEL_EXAMPLE_DATA "/Pictures/" + name)}}));
        Image const image(entry);
        EXPECT_EQ(Zel::crc32(image.getData(), pixelsOf(image).size() * sizeof(Color)), crc) << name;
    }
}

} // namespace
