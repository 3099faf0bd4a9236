#include "image/codec_test.h"

#include <algorithm>
#include <numeric>

namespace {

using namespace test;
using TgaTest = CodecTest;
using Zel::Color;
using Zel::Image;

/// Pixels of eight bits that are indices; the palette's entries follow.
Tga indexed(int first, int count, int depth) {
    return {
        .type = 1, .depth = 8, .colormapType = 1, .firstEntry = first, .entries = count, .entryDepth = depth};
}

Tga sized(Tga header, int width, int height, int depth) {
    header.width = width;
    header.height = height;
    header.depth = depth;
    return header;
}

TEST_F(TgaTest, PixelsOfEveryKind) {
    Color const clear(255, 255, 255, 0), dark(33, 33, 8, 0), one(3, 2, 1, 4), two(7, 6, 5, 8);
    expectPixels(
        "a.tga",
        {{Tga{.width = 2} + packed({kRed, kBlue}), {kRed, kBlue}},
         {Tga{.width = 2, .descriptor = 48} + packed({kRed, kBlue}), {kRed, kBlue}}, // right to left: ignored
         {Tga{.depth = 32} + bytes({1, 2, 3, 4}), {one}},
         {Tga{.width = 3, .depth = 16} + bytes({255, 127, 255, 255, 0x81, 0x10}), {clear, grey(255), dark}},
         {Tga{.depth = 15} + bytes({0x01, 0x80}), {Color(0, 0, 8, 255)}},
         {Tga{.type = 3, .width = 2, .depth = 8} + bytes({7, 200}), {grey(7), grey(200)}},
         // Packets, also across rows.
         {Tga{.type = 10, .width = 4, .depth = 16} + bytes({0x81, 0xFF, 0x7F, 0x01, 0x81, 0x10, 0x00, 0x80}),
          {clear, clear, dark, kBlack}},
         {Tga{.type = 10, .width = 3, .depth = 32} + bytes({0x81, 1, 2, 3, 4, 0, 5, 6, 7, 8}),
          {one, one, two}},
         {Tga{.type = 10, .width = 2, .height = 3} +
              ("\x82" + packed({kRed}) + bytes({0}) + packed({kGreen}) + "\1" + packed({kBlue, kBlack})),
          {kRed, kRed, kRed, kGreen, kBlue, kBlack}},
         {Tga{.type = 11, .width = 2, .depth = 8} + bytes({0xFF, 9}), {grey(9), grey(9)}},
         // Palettes. Only entries 10 and 11 are stored: any other index is black.
         {sized(indexed(10, 2, 24), 4, 1, 8) + bytes({30, 20, 10, 3, 2, 1, 9, 10, 11, 12}),
          {kBlack, Color(10, 20, 30, 255), Color(1, 2, 3, 255), kBlack}},
         {indexed(0, 1, 32) + bytes({3, 2, 1, 9, 0}), {Color(1, 2, 3, 255)}},
         {indexed(0, 1, 16) + bytes({0xE1, 0x7F, 0}), {Color(248, 248, 8, 255)}},
         {indexed(0, 1, 8) + bytes({77, 0}), {grey(77)}},
         // An ID and colour maps that are skipped, of any type.
         {Tga{.colormapType = 1, .entries = 2, .entryDepth = 16, .id = "name"} + "9999" + packed({kRed}),
          {kRed}},
         {Tga{.type = 3, .depth = 8, .colormapType = 2, .firstEntry = 300, .entries = 1, .entryDepth = 8} +
              bytes({9, 5}),
          {grey(5)}}});
}

// Runs are written in blocks, and packets read where they stand, in blocks of the file: the same as raw
// pixels.
TEST_F(TgaTest, PacketsOfEveryLengthLoadAsTheirPixelsDoRaw) {
    std::minstd_rand random;
    Tga const tall{.width = 29, .height = 1500};
    for (auto const& [type, depth] : {std::pair(1, 8), {2, 16}, {2, 24}, {2, 32}, {3, 8}}) {
        std::string raw, encoded;
        auto const pixelSize = static_cast<std::size_t>(depth / 8);
        for (int left = tall.width * tall.height, count = 0; left > 0; left -= count) {
            count = std::min(left, 1 + static_cast<int>(random() % (random() % 2 == 0 ? 8 : 128)));
            bool const isRun = random() % 2 == 0;
            std::string pixels;
            while (pixels.size() < (isRun ? 1U : static_cast<unsigned>(count)) * pixelSize)
                pixels += static_cast<char>(random() >> 8);
            encoded += static_cast<char>(count - 1 + (isRun ? 128 : 0)) + pixels;
            for (int i = 0; i < (isRun ? count : 1); ++i)
                raw += pixels;
        }
        for (int const descriptor : {0, 32}) {
            Tga header = sized(type == 1 ? indexed(0, 256, 8) : tall, tall.width, tall.height, depth);
            header.descriptor = descriptor;
            std::string const map = type == 1 ? std::string(raw, 0, 256) : "";
            header.type = type;
            Colors const expected = load("a.tga", header + (map + raw));
            header.type = type + 8;
            EXPECT_EQ(load("a.tga", header + (map + encoded)), expected) << type << ' ' << depth;
        }
    }
}

TEST_F(TgaTest, RowsOfBothOriginsBecomeTheSameImage) {
    for (int const type : {2, 10}) {
        std::string const packet = type == 10 ? "\1" : "";
        std::string const top = packet + packed({kRed, kBlue}), bottom = packet + packed({kGreen, kBlack});
        Tga const upwards{.type = type, .width = 2, .height = 2, .descriptor = 0};
        Tga const downwards{.type = type, .width = 2, .height = 2, .descriptor = 32};
        for (std::string const& content : {upwards + (bottom + top), downwards + (top + bottom)})
            EXPECT_EQ(load("a.tga", content), (Colors{kRed, kBlue, kGreen, kBlack})) << type;
    }
}

TEST_F(TgaTest, PaletteImagesTakeOneByteAPixelAtAnyDepth) {
    std::string map(256, '\0'); // entry i is the grey of i
    std::iota(map.begin(), map.end(), '\0');
    Tga const header = indexed(0, 256, 8);
    Tga encoded = header;
    encoded.type = 9;
    Colors const abcd{grey('a'), grey('b'), grey('c'), grey('d')};
    std::string const wide = "abcdefghijklmnopqrstuvwxyz" + std::string(38, '-');
    expectPixels("a.tga",
                 {// The bytes of the packed rows, one after the other.
                  {sized(header, 4, 1, 16) + (map + wide.substr(0, 8)), abcd},
                  {sized(header, 4, 1, 32) + (map + wide.substr(0, 16)), abcd},
                  {sized(header, 4, 1, 128) + (map + wide), abcd},
                  {sized(encoded, 4, 1, 16) + (map + "\1abcd\1efgh"), abcd},
                  {sized(encoded, 4, 1, 128) + (map + "\x83" + wide.substr(0, 16)), abcd},
                  // Below 7 bits nothing is read: what stands there are opaque black pixels.
                  {sized(header, 4, 1, 4) + map, {grey(0), grey(0), grey(0), grey(255)}}});
    EXPECT_EQ(load("a.tga", sized(header, 1024, 1024, 4) + map).back(), grey(255))
        << "as many as need no bytes";
    // At 24 bits they become opaque colours first, where they stand: every fourth byte is an alpha.
    for (std::size_t width = 1; width <= 9; ++width) {
        Colors expected;
        for (std::size_t i = 0; i < width; ++i)
            expected.push_back(grey(i % 4 == 3 ? 255 : wide[i / 4 * 3 + i % 4]));
        Tga const narrow = sized(header, static_cast<int>(width), 1, 24);
        EXPECT_EQ(load("a.tga", narrow + (map + wide.substr(0, 3 * width))), expected) << width;
    }
}

TEST_F(TgaTest, FaultsAreToldInTheirOrder) {
    Tga const withMap{.type = 10, .colormapType = 1, .entries = 1, .entryDepth = 39};
    expectFaults(
        "a.tga",
        {{"Image \"a.tga\" has illegal dimensions 0x5", {Tga{.type = 99, .width = 0, .height = 5} + ""}},
         {"Image \"a.tga\" has illegal dimensions 65535x65535", {Tga{.width = 65535, .height = 65535} + ""}},
         {"Unknown image format \"a.tga\"",
          {Tga{.type = 0} + "123", Tga{.type = 4} + "123", Tga{.type = 8} + "123", Tga{.type = 12} + "123",
           Tga{.type = 17} + "123", Tga{.type = 129} + "123"}},
         {"Truecolor image \"a.tga\" is not 24/32 bits/pixel", {Tga{.depth = 8} + "1"}},
         {"Mono image \"a.tga\" is not 8 bits/pixel", {Tga{.type = 11, .depth = 16} + "12"}},
         {"Colormapped image \"a.tga\" has no palette",
          {Tga{.type = 1, .entries = 257} + "", Tga{.type = 1, .colormapType = 2, .entries = 257} + ""}},
         {"Colormapped image \"a.tga\" has too many colors", {indexed(250, 7, 39) + ""}},
         {"Bad colormap depth value in \"a.tga\"",
          {indexed(0, 1, 6) + "1234", withMap + "", sized(withMap, 32000, 32000, 24) + "",
           sized(indexed(0, 0, 8), 1, 1, 135) + std::string(100, 'x')}},
         {"Read error in \"a.tga\"",
          {Tga() + "12", Tga{.id = "id"} + "12", Tga{.width = 30000, .height = 30000} + "123",
           Tga{.type = 10, .width = 30000, .height = 30000} + "123",
           Tga{.type = 10, .width = 2} + bytes({0, 1, 2, 3}), indexed(0, 2, 24) + "12345",
           sized(indexed(0, 0, 24), 30000, 30000, 4) + "", sized(indexed(0, 2, 8), 1, 1, 135) + "x"}}});
}

TEST_F(TgaTest, FilesAreSavedWithoutAlphaFromTheTop) {
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

} // namespace
