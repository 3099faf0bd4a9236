// The codecs of BMP, TGA and PCX files: what they read, write and refuse.

#include "support/library_test.h"
#include "support/pictures.h"

#include <algorithm>
#include <numeric>

namespace {

using test::Bmp;
using test::bytes;
using test::Pcx;
using test::pcxColor;
using test::pixelsOf;
using test::Tga;
using Zel::Color;
using Zel::Image;
using Colors = std::vector<Color>;

Color const kBlack;
Color const kRed(200, 1, 2, 255);
Color const kBlue(3, 4, 201, 255);
Color const kGreen(5, 202, 6, 255);

Color grey(int value) {
    auto const v = static_cast<std::uint8_t>(value);
    return {v, v, v, 255};
}

std::string packed(Colors const& colors) {
    std::string text;
    for (Color const& color : colors)
        text += bytes({color.b, color.g, color.r});
    return text;
}

class CodecTest : public test::LibraryTest {
protected:
    Colors pixels(std::string const& name, std::string const& content) const {
        writeFile(name, content);
        return pixelsOf(Image(name));
    }

    /// Expects an exception of the kind `Wanted` with this message for a file with each of the contents.
    template <class Wanted>
    void expectError(std::string const& name, std::string const& message,
                     std::initializer_list<std::string> contents) const {
        for (std::string const& content : contents) {
            writeFile(name, content);
            EXPECT_EQ(test::errorOf<Wanted>([&] { Image{name}; }), message);
        }
    }
};

TEST_F(CodecTest, TheFirstOccurrenceOfTheEndingTellsTheFormat) {
    using Unknown = Zel::ImageException_UnknownImageFormat;
    writeFile("a.tga.bmp", Bmp() + packed({kRed}));
    EXPECT_EQ(Image("a.tga.bmp")[0], kRed);
    for (std::string const name : {"a.bmp.bmp", "a.BMP", "a.png", "abcd", "ab", "", "a.bmp ", "a.jpeg"}) {
        std::string const message = "Unknown image format \"" + name + "\"";
        EXPECT_EQ(test::errorOf<Unknown>([&] { Image{name}; }), message);
        EXPECT_EQ(test::errorOf<Unknown>([&] { Image(1, 1).save(name); }), message);
    }
    EXPECT_EQ(test::errorOf<Unknown>([] { Image(1, 1).save("a.pcx"); }), "Unknown image format \"a.pcx\"");
    EXPECT_EQ(test::errorOf<Zel::JPEGLoaderException_LoadFailed>([] { Image{"abc"}; }), "");
}

TEST_F(CodecTest, BmpRowsGoUpwardsWithoutPadding) {
    EXPECT_EQ(pixels("a.bmp", Bmp{1, 2} + packed({kRed, kBlue})), (Colors{kBlue, kRed}));
    EXPECT_EQ(pixels("b.bmp", Bmp{3, 1, 24, 56} + "xx" + packed({kRed, kBlue, kGreen})),
              (Colors{kRed, kBlue, kGreen}));
}

TEST_F(CodecTest, BmpFilesEndWithZeros) {
    struct Case {
        int width, height;
        std::uint32_t paddedSize;
    };
    for (Case const& c : {Case{1, 1, 4}, Case{3, 1, 12}, Case{4, 1, 12}, Case{-1, 4, 0}}) {
        Image image(c.width, c.height);
        int const count = std::max(c.width * c.height, 0);
        std::fill_n(image.getData(), count, kRed);
        image.save("out.bmp");
        std::string const pixels = packed(Colors(static_cast<std::size_t>(count), kRed));
        auto const number = [](std::uint32_t value) {
            return bytes({static_cast<int>(value & 255U), static_cast<int>(value >> 8 & 255U),
                          static_cast<int>(value >> 16 & 255U), static_cast<int>(value >> 24)});
        };
        std::string expected = "BM" + number(54 + c.paddedSize) + number(0) + number(54) + number(40) +
                               number(static_cast<std::uint32_t>(c.width)) +
                               number(static_cast<std::uint32_t>(c.height)) + bytes({1, 0, 24, 0}) +
                               number(0) + number(c.paddedSize) + number(4619) + number(4619) + number(0) +
                               number(0) + pixels;
        expected.resize(pixels.size() + 4096);
        EXPECT_EQ(readFile("out.bmp"), expected) << c.width;
    }
}

TEST_F(CodecTest, WhatIsSavedIsLoadedAgainInEveryWidth) {
    for (int width = 1; width <= 9; ++width) {
        Image image(width, 3);
        for (int i = 0; i < 3 * width; ++i)
            image[i] = Color(static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(100 + i),
                             static_cast<std::uint8_t>(200 - i), 255);
        for (char const* const name : {"out.tga", "out.bmp"}) {
            image.save(name);
            EXPECT_EQ(pixelsOf(Image(name)), pixelsOf(image)) << name << ' ' << width;
        }
    }
}

TEST_F(CodecTest, LongRunsOfAPcxFileArePixelsToo) {
    std::string content;
    Colors expected;
    for (int i = 0; i < 300; ++i) {
        int const length = 1 + i % 63;
        content += bytes({0xC0 + length, i % 256});
        expected.insert(expected.end(), static_cast<std::size_t>(length), pcxColor(i % 256));
    }
    int const side = static_cast<int>(expected.size()) / 8;
    expected.resize(static_cast<std::size_t>(side) * 8);
    EXPECT_EQ(pixels("a.pcx", Pcx{0, 0, side - 1, 7, side} + content), expected);
}

TEST_F(CodecTest, BmpFaultsAreToldInTheirOrder) {
    expectError<Zel::BMPLoaderException_NotBMPFile>("a.bmp", "File a.bmp does not contain a BMP image.",
                                                    {"MB"});
    expectError<Zel::BMPLoaderException_UnsupportedColorDepth>(
        "a.bmp", "File a.bmp has unsupported color depth.", {Bmp{1, 1, 32} + "1234"});
    expectError<Zel::ImageException_IllegalDimensions>(
        "a.bmp", "Image \"a.bmp\" has illegal dimensions 65536x32768", {Bmp{65536, 32768} + "123"});
    expectError<Zel::FileException_SeekError>("a.bmp", "Seek error in \"a.bmp\"",
                                              {Bmp{65536, 32768, 24, 1U << 31} + "123"});
    expectError<Zel::FileException_ReadError>("a.bmp", "Read error in \"a.bmp\"",
                                              {Bmp{1, 1} + "12", Bmp{1, 1, 24, 55} + "123",
                                               Bmp{30000, 30000} + "123", Bmp{1, 1, 24, 0x7FFFFFFF} + "123",
                                               "BM12", "B"});
    EXPECT_EQ(test::errorOf<Zel::FileException_OpenFailed>([] { Image{"none.bmp"}; }),
              "Failed to open file \"none.bmp\"");
}

TEST_F(CodecTest, TgaPixelsOfEveryKind) {
    std::string const palette = bytes({30, 20, 10, 33, 23, 13}); // entries 10 and 11
    struct Case {
        char const* what;
        std::string content;
        Colors expected;
    };
    Color const clear(255, 255, 255, 0), dark(33, 33, 8, 0), one(3, 2, 1, 4), ten(10, 20, 30, 255),
        eleven(13, 23, 33, 255);
    for (Case const& c :
         {Case{"24 bits", Tga{2, 2, 1} + packed({kRed, kBlue}), Colors{kRed, kBlue}},
          Case{"32 bits", Tga{2, 1, 1, 32} + bytes({1, 2, 3, 4}), Colors{one}},
          Case{"16 bits", Tga{2, 3, 1, 16} + bytes({0xFF, 0x7F, 0xFF, 0xFF, 0x81, 0x10}),
               Colors{clear, grey(255), dark}},
          Case{"packets of 16 bits",
               Tga{10, 5, 1, 16} + bytes({0x82, 0xFF, 0x7F, 0x01, 0x81, 0x10, 0x00, 0x80}),
               Colors{clear, clear, clear, dark, kBlack}},
          Case{"packets of 32 bits",
               Tga{10, 4, 1, 32} + bytes({0x81, 1, 2, 3, 4, 0x01, 5, 6, 7, 8, 9, 10, 11, 12}),
               Colors{one, one, Color(7, 6, 5, 8), Color(11, 10, 9, 12)}},
          Case{"15 bits", Tga{2, 1, 1, 15} + bytes({0x01, 0x80}), Colors{Color(0, 0, 8, 255)}},
          Case{"grey", Tga{3, 2, 1, 8} + bytes({7, 200}), Colors{grey(7), grey(200)}},
          Case{"palette of 24 bits", Tga{1, 3, 1, 8, 32, 1, 10, 2, 24} + palette + bytes({10, 11, 12}),
               Colors{ten, eleven, kBlack}},
          Case{"palette of 32 bits", Tga{1, 1, 1, 8, 32, 1, 0, 1, 32} + bytes({3, 2, 1, 9, 0}),
               Colors{Color(1, 2, 3, 255)}},
          Case{"palette of 16 bits", Tga{1, 1, 1, 8, 32, 1, 0, 1, 16} + bytes({0xE1, 0x7F, 0}),
               Colors{Color(248, 248, 8, 255)}},
          Case{"palette of 8 bits", Tga{1, 1, 1, 8, 32, 1, 0, 1, 8} + bytes({77, 0}), Colors{grey(77)}},
          Case{"ID and unused map",
               Tga{2, 1, 1, 24, 32, 1, 0, 2, 16, "name"} + bytes({9, 9, 9, 9}) + packed({kRed}),
               Colors{kRed}},
          Case{"map type 2 is skipped, too", Tga{3, 1, 1, 8, 32, 2, 300, 1, 8} + bytes({9, 5}),
               Colors{grey(5)}},
          Case{"right to left is ignored", Tga{2, 2, 1, 24, 48} + packed({kRed, kBlue}),
               Colors{kRed, kBlue}}})
        EXPECT_EQ(pixels("a.tga", c.content), c.expected) << c.what;
}

TEST_F(CodecTest, TgaRowsOfBothOriginsBecomeTheSameImage) {
    Colors const picture{kRed, kBlue, kGreen, kBlack};
    for (int const type : {2, 10}) {
        std::string const packet = type == 10 ? "\1" : "";
        std::string const top = packet + packed({kRed, kBlue});
        std::string const bottom = packet + packed({kGreen, kBlack});
        EXPECT_EQ(pixels("a.tga", Tga{type, 2, 2, 24, 32} + (top + bottom)), picture);
        EXPECT_EQ(pixels("b.tga", Tga{type, 2, 2, 24, 0} + (bottom + top)), picture);
    }
}

TEST_F(CodecTest, TgaPacketsRunOnAcrossRows) {
    std::string const data = bytes({0x82}) + packed({kRed}) + bytes({0x00}) + packed({kGreen}) +
                             bytes({0x01}) + packed({kBlue, kBlack});
    EXPECT_EQ(pixels("a.tga", Tga{10, 2, 3} + data), (Colors{kRed, kRed, kRed, kGreen, kBlue, kBlack}));
    EXPECT_EQ(pixels("b.tga", Tga{11, 2, 1, 8} + bytes({0xFF, 9})), Colors(2, grey(9)));
}

TEST_F(CodecTest, TgaPaletteImagesTakeOneByteAPixelAtAnyDepth) {
    std::string map(256, '\0');
    std::iota(map.begin(), map.end(), '\0');
    auto const load = [&](int type, int depth, std::string const& data) {
        return pixels("a.tga", Tga{type, 4, 1, depth, 32, 1, 0, 256, 8} + map + data);
    };
    // The bytes of the packed rows, one after the other.
    EXPECT_EQ(load(1, 16, "abcdefgh"), (Colors{grey('a'), grey('b'), grey('c'), grey('d')}));
    EXPECT_EQ(load(1, 32, "abcdefghijklmnop"), (Colors{grey('a'), grey('b'), grey('c'), grey('d')}));
    EXPECT_EQ(load(1, 128, std::string(64, 'z')), Colors(4, grey('z')));
    EXPECT_EQ(load(9, 128, bytes({0x83}).append(16, 'z')), Colors(4, grey('z')));
    // At 24 bits they become colours first, of alpha 255.
    EXPECT_EQ(load(1, 24, "abcdefghijkl"), (Colors{grey('a'), grey('b'), grey('c'), grey(255)}));
    // Below 7 bits nothing is read: what stands there are opaque black pixels.
    EXPECT_EQ(load(1, 4, ""), (Colors{grey(0), grey(0), grey(0), grey(255)}));
    writeFile("flat.tga", Tga{1, 1024, 1024, 4, 32, 1, 0, 256, 8} + map);
    EXPECT_EQ(Image("flat.tga")(1023, 1023), grey(255)) << "as many as need no bytes at all";
}

TEST_F(CodecTest, TgaFaultsAreToldInTheirOrder) {
    expectError<Zel::ImageException_IllegalDimensions>("a.tga", "Image \"a.tga\" has illegal dimensions 0x5",
                                                       {Tga{99, 0, 5} + ""});
    expectError<Zel::ImageException_IllegalDimensions>(
        "a.tga", "Image \"a.tga\" has illegal dimensions 65535x65535", {Tga{10, 65535, 65535} + ""});
    for (int const type : {0, 4, 8, 12, 17, 129})
        expectError<Zel::ImageException_UnknownImageFormat>("a.tga", "Unknown image format \"a.tga\"",
                                                            {Tga{type, 1, 1} + "123"});
    expectError<Zel::TGALoaderException_TruecolorNot24Or32Bit>(
        "a.tga", "Truecolor image \"a.tga\" is not 24/32 bits/pixel", {Tga{2, 1, 1, 8} + "1"});
    expectError<Zel::TGALoaderException_MonoNot8Bit>("a.tga", "Mono image \"a.tga\" is not 8 bits/pixel",
                                                     {Tga{11, 1, 1, 16} + "12"});
    expectError<Zel::TGALoaderException_NoPalette>(
        "a.tga", "Colormapped image \"a.tga\" has no palette",
        {Tga{1, 1, 1, 8, 32, 0, 250, 7} + "", Tga{1, 1, 1, 8, 32, 2, 250, 7} + ""});
    expectError<Zel::TGALoaderException_TooManyColors>(
        "a.tga", "Colormapped image \"a.tga\" has too many colors", {Tga{9, 1, 1, 8, 32, 1, 250, 7} + ""});
    expectError<Zel::TGALoaderException_BadColormapDepth>(
        "a.tga", "Bad colormap depth value in \"a.tga\"",
        {Tga{1, 1, 1, 8, 32, 1, 0, 1, 6} + "1234", Tga{2, 1, 1, 24, 32, 1, 0, 1, 39} + "",
         Tga{10, 32000, 32000, 24, 32, 1, 0, 1, 39} + "",
         Tga{1, 1, 1, 135, 32, 1, 0, 0, 8} + std::string(100, 'x')});
    expectError<Zel::FileException_ReadError>(
        "a.tga", "Read error in \"a.tga\"",
        {Tga{2, 1, 1} + "12", Tga{2, 30000, 30000} + "123", Tga{10, 30000, 30000} + "123",
         Tga{10, 2, 1} + bytes({0x00, 1, 2, 3}), Tga{1, 1, 1, 8, 32, 1, 0, 2, 24} + "12345",
         Tga{1, 30000, 30000, 4, 32, 1, 0, 0, 24} + "", Tga{1, 1, 1, 135, 32, 1, 0, 2, 8} + "x",
         Tga{2, 1, 1, 24, 32, 0, 0, 0, 0, "id"} + "12"});
}

TEST_F(CodecTest, TgaFilesAreSavedWithoutAlphaFromTheTop) {
    Image image(300, 2);
    image(0, 0) = Color(3, 2, 1, 77);
    image(299, 1) = kRed;
    image.save("out.tga");
    std::string expected = bytes({0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x2C, 0x01, 2, 0, 24, 32, 1, 2, 3});
    expected.resize(18 + 3 * 599);
    EXPECT_EQ(readFile("out.tga"), expected + packed({kRed}));

    Image(70000, 1).save("wide.tga");
    EXPECT_EQ(readFile("wide.tga").substr(12, 2), bytes({70000 & 255, 70000 >> 8 & 255}));
    EXPECT_EQ(readFile("wide.tga").size(), 18U + 3 * 70000);
}

TEST_F(CodecTest, PcxLinesTakeBytesPerLinePixels) {
    // Runs, an empty run, and the highest plain code.
    EXPECT_EQ(pixels("a.pcx", Pcx{2, 5, 8, 5, 7} + bytes({0xC5, 7, 0xC0, 9, 0x3F, 0xC1, 0xFF})),
              (Colors{pcxColor(7), pcxColor(7), pcxColor(7), pcxColor(7), pcxColor(7), pcxColor(63),
                      pcxColor(255)}));
    // Lines of four pixels for a width of three: what is too much shifts the next row.
    EXPECT_EQ(pixels("b.pcx", Pcx{0, 0, 2, 1, 4} + bytes({1, 2, 3, 4, 5, 6, 7, 8})),
              (Colors{pcxColor(1), pcxColor(2), pcxColor(3), pcxColor(4), pcxColor(5), pcxColor(6)}));
    // A run past the end of a line counts whole for that line.
    EXPECT_EQ(pixels("c.pcx", Pcx{0, 0, 1, 1, 2} + bytes({0xC3, 1, 2, 3})),
              (Colors{pcxColor(1), pcxColor(1), pcxColor(1), pcxColor(2)}));
    // Lines of no pixels leave the image black.
    EXPECT_EQ(pixels("d.pcx", Pcx{0, 0, 1, 0, -1} + ""), Colors(2, kBlack));
}

TEST_F(CodecTest, PcxPixelsPastTheSpareRoomAreDropped) {
    std::string runs;
    for (int i = 0; i < 40; ++i)
        runs += bytes({0xFF, i});
    writeFile("a.pcx", Pcx{0, 0, 3, 0, 2500} + runs);
    Image const image("a.pcx");
    EXPECT_EQ(pixelsOf(image), Colors(4, pcxColor(0)));
    EXPECT_EQ(image.getData()[4 * 4 - 1], pcxColor(0));
}

TEST_F(CodecTest, SizesWithoutPixelsAreKept) {
    for (auto const& [name, content, height] : {std::tuple("a.bmp", Bmp{5, -3} + "", -3),
                                                {"b.pcx", Pcx{0, 0, 4, -1, 5} + "", 0},
                                                {"c.pcx", Pcx{0, 0, 4, -5, 5} + "", -4}}) {
        writeFile(name, content);
        Image image(1, 1);
        image.load(name);
        EXPECT_EQ(image.getWidth(), 5);
        EXPECT_EQ(image.getHeight(), height);
        EXPECT_EQ(image.getData(), nullptr);
    }
}

TEST_F(CodecTest, PcxFaultsAreToldInTheirOrder) {
    std::string const good = Pcx() + "1";
    auto const with = [&good](std::vector<std::pair<std::size_t, int>> const& changes) {
        std::string content = good;
        for (auto const& [offset, value] : changes)
            content[offset] = static_cast<char>(value);
        return content;
    };
    std::size_t const mark = good.size() - 769;
    expectError<Zel::PCXLoaderException_NotPCXFile>("a.pcx", "File a.pcx does not contain a pcx image.",
                                                    {with({{0, 11}, {1, 3}}), "\x0B", ""});
    expectError<Zel::PCXLoaderException_UnsupportedVersion>(
        "a.pcx", "Unsupported pcx version in a.pcx.",
        {with({{1, 3}, {2, 0}}), with({{65, 3}, {2, 0}}), "\x0A\x03"});
    expectError<Zel::PCXLoaderException_NoEncoding>(
        "a.pcx", "Pcx file a.pcx is not encoded.",
        {with({{2, 0}, {mark, 0}}), std::string("\x0A\x05\x00", 3)});
    expectError<Zel::PCXLoaderException_NoPalette>(
        "a.pcx", "Pcx file a.pcx has no palette.",
        {with({{mark, 0}}), "\x0A", good.substr(0, 128), good.substr(0, 128) + good.substr(130)});
    expectError<Zel::ImageException_IllegalDimensions>(
        "a.pcx", "Image \"a.pcx\" has illegal dimensions 1000x100", {Pcx{0, 0, 999, 99, 1000} + ""});
    expectError<Zel::FileException_ReadError>("a.pcx", "Read error in \"a.pcx\"",
                                              {Pcx{0, 0, 999, 0, 32000} + ""});
}

/// Pictures made by other programs, and the checksums of what another decoder makes of them.
TEST_F(CodecTest, PicturesOfOtherProgramsDecodeFromAnArchiveAsThereToTheBit) {
    std::pair<std::string, unsigned long> const cases[] = {
        {"Clouds.tga", 0xB4D22B9D},  {"Icon.tga", 0x68980C61},  {"Mandelbrot.tga", 0x0A0B4DDA},
        {"Spheres.tga", 0xE95DF588}, {"Julia.pcx", 0xFFCC2565}, {"Wheel.bmp", 0x49E5B360}};
    for (auto const& [name, crc] : cases) {
        std::string const entry = "picture" + name.substr(name.size() - 4);
        Zel::Archive const archive(
            packArchive("a.bva", {{entry, test::fileContent(ZEL_EXAMPLE_DATA "/Pictures/" + name)}}));
        Image const image(entry);
        EXPECT_EQ(Zel::crc32(image.getData(), pixelsOf(image).size() * sizeof(Color)), crc) << name;
    }
}

} // namespace
