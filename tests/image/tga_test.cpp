#include "image/codec_test.h"

#include "image/packed_pixels.h"

#include <numeric>
#include <random>

namespace {

using namespace test;
using Zel::Color;
using Zel::Image;

class TgaTest : public CodecTest {
protected:
    TgaTest() : CodecTest("a.tga") {}
};

/// A pixel of eight bits that is an index; the palette entries follow.
Tga indexed(int firstEntry, int entries, int entryDepth) {
    return {.type = 1,
            .depth = 8,
            .colormapType = 1,
            .firstEntry = firstEntry,
            .entries = entries,
            .entryDepth = entryDepth};
}

Tga sized(Tga header, int width, int height, int depth) {
    header.width = width;
    header.height = height;
    header.depth = depth;
    return header;
}

TEST_F(TgaTest, PixelsOfEveryKind) {
    Color const clear(255, 255, 255, 0), dark(33, 33, 8, 0), one(3, 2, 1, 4), two(7, 6, 5, 8);
    struct {
        Tga header;
        std::string data;
        Colors expected;
    } const cases[] = {
        {{.width = 2}, packed({kRed, kBlue}), {kRed, kBlue}},
        {{.width = 2, .descriptor = 48}, packed({kRed, kBlue}), {kRed, kBlue}}, // right to left: ignored
        {{.depth = 32}, bytes({1, 2, 3, 4}), {one}},
        {{.width = 3, .depth = 16}, bytes({255, 127, 255, 255, 0x81, 0x10}), {clear, grey(255), dark}},
        {{.depth = 15}, bytes({0x01, 0x80}), {Color(0, 0, 8, 255)}},
        {{.type = 3, .width = 2, .depth = 8}, bytes({7, 200}), {grey(7), grey(200)}},
        // Packets.
        {{.type = 10, .width = 4, .depth = 16},
         bytes({0x81, 0xFF, 0x7F, 0x01, 0x81, 0x10, 0x00, 0x80}),
         {clear, clear, dark, kBlack}},
        {{.type = 10, .width = 3, .depth = 32}, bytes({0x81, 1, 2, 3, 4, 0, 5, 6, 7, 8}), {one, one, two}},
        // Palettes. Only entries 10 and 11 are stored: any other index is black.
        {sized(indexed(10, 2, 24), 2, 1, 8),
         bytes({30, 20, 10, 3, 2, 1, 10, 12}),
         {Color(10, 20, 30, 255), kBlack}},
        {sized(indexed(10, 2, 24), 2, 1, 8),
         bytes({30, 20, 10, 3, 2, 1, 9, 11}),
         {kBlack, Color(1, 2, 3, 255)}},
        {indexed(0, 1, 32), bytes({3, 2, 1, 9, 0}), {Color(1, 2, 3, 255)}},
        {indexed(0, 1, 16), bytes({0xE1, 0x7F, 0}), {Color(248, 248, 8, 255)}},
        {indexed(0, 1, 8), bytes({77, 0}), {grey(77)}},
        // An ID and colour maps that are skipped, of any type.
        {{.colormapType = 1, .entries = 2, .entryDepth = 16, .id = "name"}, "9999" + packed({kRed}), {kRed}},
        {{.type = 3, .depth = 8, .colormapType = 2, .firstEntry = 300, .entries = 1, .entryDepth = 8},
         bytes({9, 5}),
         {grey(5)}},
    };
    for (auto const& [header, data, expected] : cases)
        EXPECT_EQ(load(header + data), expected) << "type " << header.type << ", depth " << header.depth;
}

TEST_F(TgaTest, RowsOfBothOriginsBecomeTheSameImage) {
    Colors const picture{kRed, kBlue, kGreen, kBlack};
    for (int const type : {2, 10}) {
        std::string const packet = type == 10 ? "\1" : "";
        std::string const top = packet + packed({kRed, kBlue});
        std::string const bottom = packet + packed({kGreen, kBlack});
        Tga header{.type = type, .width = 2, .height = 2, .descriptor = 32};
        EXPECT_EQ(load(header + (top + bottom)), picture);
        header.descriptor = 0;
        EXPECT_EQ(load(header + (bottom + top)), picture);
    }
}

TEST_F(TgaTest, PacketsRunOnAcrossRows) {
    std::string const data = bytes({0x82}) + packed({kRed}) + bytes({0x00}) + packed({kGreen}) +
                             bytes({0x01}) + packed({kBlue, kBlack});
    EXPECT_EQ(load(Tga{.type = 10, .width = 2, .height = 3} + data),
              (Colors{kRed, kRed, kRed, kGreen, kBlue, kBlack}));
    EXPECT_EQ(load(Tga{.type = 11, .width = 2, .depth = 8} + bytes({0xFF, 9})), Colors(2, grey(9)));
}

TEST_F(TgaTest, PaletteImagesTakeOneByteAPixelAtAnyDepth) {
    std::string map(256, '\0'); // entry i is the grey of i
    std::iota(map.begin(), map.end(), '\0');
    Tga const header = indexed(0, 256, 8);
    Tga encoded = header;
    encoded.type = 9;
    Colors const abcd{grey('a'), grey('b'), grey('c'), grey('d')};
    std::string const wide = "abcd" + std::string(60, 'z');
    struct {
        Tga header;
        std::string data;
        Colors expected;
    } const cases[] = {
        // The bytes of the packed rows, one after the other.
        {sized(header, 4, 1, 16), wide.substr(0, 8), abcd},
        {sized(header, 4, 1, 32), wide.substr(0, 16), abcd},
        {sized(header, 4, 1, 128), wide, abcd},
        {sized(encoded, 4, 1, 16), "\1abcd\1efgh", abcd},
        {sized(encoded, 4, 1, 128), "\x83" + wide.substr(0, 16), abcd},
        // Below 7 bits nothing is read: what stands there are opaque black pixels.
        {sized(header, 4, 1, 4), "", {grey(0), grey(0), grey(0), grey(255)}},
    };
    for (auto const& c : cases)
        EXPECT_EQ(load(c.header + (map + c.data)), c.expected) << c.header.type << ' ' << c.header.depth;
    EXPECT_EQ(load(sized(header, 1024, 1024, 4) + map).back(), grey(255)) << "as many as need no bytes";
    // At 24 bits they become colours first, where they stand.
    std::minstd_rand random;
    for (int width = 1; width <= 9; ++width) {
        Colors colors(static_cast<std::size_t>(width));
        std::string data(3 * colors.size(), '\0');
        for (char& byte : data)
            byte = static_cast<char>(random());
        auto* const memory = reinterpret_cast<unsigned char*>(colors.data());
        data.copy(reinterpret_cast<char*>(memory), data.size());
        Zel::scalar::unpackPixels(memory, colors.size(), colors.data());
        Colors expected;
        for (std::size_t i = 0; i < colors.size(); ++i)
            expected.push_back(grey(memory[i]));
        EXPECT_EQ(load(sized(header, width, 1, 24) + (map + data)), expected) << width;
    }
}

TEST_F(TgaTest, FaultsAreToldInTheirOrder) {
    Tga const withMap{.type = 10, .colormapType = 1, .entries = 1, .entryDepth = 39};
    expectFaults({
        {"Image \"a.tga\" has illegal dimensions 0x5", {Tga{.type = 99, .width = 0, .height = 5} + ""}},
        {"Image \"a.tga\" has illegal dimensions 65535x65535", {sized({}, 65535, 65535, 24) + ""}},
        {"Unknown image format \"a.tga\"",
         {Tga{.type = 0} + "123", Tga{.type = 4} + "123", Tga{.type = 8} + "123", Tga{.type = 12} + "123",
          Tga{.type = 17} + "123", Tga{.type = 129} + "123"}},
        {"Truecolor image \"a.tga\" is not 24/32 bits/pixel", {Tga{.type = 2, .depth = 8} + "1"}},
        {"Mono image \"a.tga\" is not 8 bits/pixel", {Tga{.type = 11, .depth = 16} + "12"}},
        {"Colormapped image \"a.tga\" has no palette",
         {Tga{.type = 1, .colormapType = 0, .entries = 257} + "",
          Tga{.type = 1, .colormapType = 2, .entries = 257} + ""}},
        {"Colormapped image \"a.tga\" has too many colors", {indexed(250, 7, 39) + ""}},
        {"Bad colormap depth value in \"a.tga\"",
         {indexed(0, 1, 6) + "1234", withMap + "", sized(withMap, 32000, 32000, 24) + "",
          sized(indexed(0, 0, 8), 1, 1, 135) + std::string(100, 'x')}},
        {"Read error in \"a.tga\"",
         {Tga() + "12", Tga{.id = "id"} + "12", sized({}, 30000, 30000, 24) + "123",
          sized({.type = 10}, 30000, 30000, 24) + "123", sized({.type = 10}, 2, 1, 24) + bytes({0, 1, 2, 3}),
          indexed(0, 2, 24) + "12345", sized(indexed(0, 0, 24), 30000, 30000, 4) + "",
          sized(indexed(0, 2, 8), 1, 1, 135) + "x"}},
    });
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
