#include "image/codec_test.h"

namespace {

using namespace test;
using PcxTest = CodecTest;

Colors entries(std::vector<int> const& indices) {
    Colors colors;
    for (int const index : indices)
        colors.push_back(pcxColor(index));
    return colors;
}

TEST_F(PcxTest, LinesTakeBytesPerLinePixels) {
    expectPixels(
        "a.pcx",
        {// Runs, an empty run, and the highest plain code.
         {Pcx{.xMin = 2, .yMin = 5, .xMax = 8, .yMax = 5, .bytesPerLine = 7} +
              bytes({0xC5, 7, 0xC0, 9, 0x3F, 0xC1, 0xFF}),
          entries({7, 7, 7, 7, 7, 63, 255})},
         // What a line has too many shifts the next row.
         {Pcx{.xMax = 2, .yMax = 1, .bytesPerLine = 4} + "\1\2\3\4\5\6\7\10", entries({1, 2, 3, 4, 5, 6})},
         // A run past the end of a line counts whole for that line.
         {Pcx{.xMax = 1, .yMax = 1, .bytesPerLine = 2} + "\xC3\1\2\3", entries({1, 1, 1, 2})},
         // Lines of no pixels leave the image black.
         {Pcx{.xMax = 1, .bytesPerLine = -1} + "", Colors(2, kBlack)}});
}

TEST_F(PcxTest, RunsOfEveryLength) {
    std::string content;
    Colors expected;
    for (int i = 0; i < 300; ++i) {
        int const length = 1 + i % 63;
        content += bytes({0xC0 + length, i % 256});
        expected.insert(expected.end(), static_cast<std::size_t>(length), pcxColor(i % 256));
    }
    int const width = static_cast<int>(expected.size()) / 8;
    expected.resize(static_cast<std::size_t>(width) * 8);
    EXPECT_EQ(load("a.pcx", Pcx{.xMax = width - 1, .yMax = 7, .bytesPerLine = width} + content), expected);
}

TEST_F(PcxTest, PixelsPastTheSpareRoomAreDropped) {
    std::string runs;
    for (int i = 0; i < 40; ++i)
        runs += bytes({0xFF, i});
    writeFile("a.pcx", Pcx{.xMax = 3, .bytesPerLine = 2500} + runs);
    Zel::Image const image("a.pcx");
    EXPECT_EQ(Colors(image.getData(), image.getData() + 4 * 4), Colors(16, pcxColor(0)));
}

TEST_F(PcxTest, FaultsAreToldInTheirOrder) {
    std::string const good = Pcx() + "1";
    auto const with = [&good](std::vector<std::pair<std::size_t, int>> const& changes) {
        std::string content = good;
        for (auto const& [offset, value] : changes)
            content[offset] = static_cast<char>(value);
        return content;
    };
    std::size_t const mark = good.size() - 769; // of the palette
    expectFaults(
        "a.pcx",
        {{"File a.pcx does not contain a pcx image.", {with({{0, 11}, {1, 3}}), "\x0B", ""}},
         {"Unsupported pcx version in a.pcx.", {with({{1, 3}, {2, 0}}), with({{65, 3}, {2, 0}}), "\x0A\x03"}},
         {"Pcx file a.pcx is not encoded.", {with({{2, 0}, {mark, 0}}), bytes({10, 5, 0})}},
         {"Pcx file a.pcx has no palette.",
          {with({{mark, 0}}), "\x0A", good.substr(0, 128), good.substr(0, 128) + good.substr(130)}},
         {"Image \"a.pcx\" has illegal dimensions 1000x100", {Pcx{.xMax = 999, .yMax = 99} + ""}},
         {"Read error in \"a.pcx\"", {Pcx{.xMax = 999, .bytesPerLine = 32000} + ""}}});
}

} // namespace
