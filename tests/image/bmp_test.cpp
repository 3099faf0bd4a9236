#include "image/codec_test.h"

#include <algorithm>

namespace {

using namespace test;
using BmpTest = CodecTest;

TEST_F(BmpTest, RowsGoUpwardsWithoutPadding) {
    expectPixels("a.bmp", {{Bmp{.height = 2} + packed({kRed, kBlue}), {kBlue, kRed}},
                           {Bmp{.width = 3, .offset = 56} + "xx" + packed({kRed, kBlue, kGreen}),
                            {kRed, kBlue, kGreen}}});
}

TEST_F(BmpTest, FilesEndWithZeros) {
    struct {
        int width, height, paddedSize; // of the pixels, to a multiple of four
    } const cases[] = {{1, 1, 4}, {3, 1, 12}, {4, 1, 12}, {-1, 4, 0}};
    for (auto const& [width, height, paddedSize] : cases) {
        Zel::Image image(width, height);
        Colors const colors(static_cast<std::size_t>(std::max(width * height, 0)), kRed);
        std::copy(colors.begin(), colors.end(), image.getData());
        image.save("out.bmp");
        std::string expected = "BM";
        for (int const number :
             {54 + paddedSize, 0, 54, 40, width, height, 24 << 16 | 1, 0, paddedSize, 4619, 4619, 0, 0})
            expected += littleEndian(number, 4);
        expected += packed(colors);
        expected.resize(3 * colors.size() + 4096);
        EXPECT_EQ(readFile("out.bmp"), expected) << width;
    }
}

TEST_F(BmpTest, FaultsAreToldInTheirOrder) {
    expectFaults(
        "a.bmp",
        {{"File a.bmp does not contain a BMP image.", {"MB"}},
         {"File a.bmp has unsupported color depth.", {Bmp{.depth = 32} + "1234"}},
         {"Image \"a.bmp\" has illegal dimensions 65536x32768",
          {Bmp{.width = 65536, .height = 32768} + "123"}},
         {"Seek error in \"a.bmp\"", {Bmp{.width = 65536, .height = 32768, .offset = 1U << 31} + "123"}},
         {"Read error in \"a.bmp\"",
          {"B", "BM12", Bmp() + "12", Bmp{.offset = 55} + "123", Bmp{.offset = 0x7FFFFFFF} + "123",
           Bmp{.width = 30000, .height = 30000} + "123"}}});
    EXPECT_EQ(errorOf<Zel::FileException_OpenFailed>([] { Zel::Image{"none.bmp"}; }),
              "Failed to open file \"none.bmp\"");
}

} // namespace
