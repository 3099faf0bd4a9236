#include "image/codec_test.h"

#include <algorithm>

namespace {

using namespace test;
using Zel::Image;

class BmpTest : public CodecTest {
protected:
    BmpTest() : CodecTest("a.bmp") {}
};

TEST_F(BmpTest, RowsGoUpwardsWithoutPadding) {
    EXPECT_EQ(load(Bmp{.width = 1, .height = 2} + packed({kRed, kBlue})), (Colors{kBlue, kRed}));
    EXPECT_EQ(load(Bmp{.width = 3, .offset = 56} + "xx" + packed({kRed, kBlue, kGreen})),
              (Colors{kRed, kBlue, kGreen}));
}

TEST_F(BmpTest, FilesEndWithZeros) {
    struct Case {
        int width, height;
        std::uint32_t paddedSize; // of the pixels, to a multiple of four
    };
    for (Case const& c : {Case{1, 1, 4}, Case{3, 1, 12}, Case{4, 1, 12}, Case{-1, 4, 0}}) {
        Image image(c.width, c.height);
        Colors const colors(static_cast<std::size_t>(std::max(c.width * c.height, 0)), kRed);
        std::copy(colors.begin(), colors.end(), image.getData());
        image.save("out.bmp");
        auto const number = [](std::uint32_t value) {
            return littleEndian(value, 4);
        };
        std::string expected = "BM" + number(54 + c.paddedSize) + number(0) + number(54) + number(40) +
                               number(static_cast<std::uint32_t>(c.width)) +
                               number(static_cast<std::uint32_t>(c.height)) + bytes({1, 0, 24, 0}) +
                               number(0) + number(c.paddedSize) + number(4619) + number(4619) + number(0) +
                               number(0) + packed(colors);
        expected.resize(3 * colors.size() + 4096);
        EXPECT_EQ(readFile("out.bmp"), expected) << c.width;
    }
}

TEST_F(BmpTest, FaultsAreToldInTheirOrder) {
    expectFaults({
        {"File a.bmp does not contain a BMP image.", {"MB"}},
        {"File a.bmp has unsupported color depth.", {Bmp{.depth = 32} + "1234"}},
        {"Image \"a.bmp\" has illegal dimensions 65536x32768",
         {Bmp{.width = 65536, .height = 32768} + "123"}},
        {"Seek error in \"a.bmp\"", {Bmp{.width = 65536, .height = 32768, .offset = 1U << 31} + "123"}},
        {"Read error in \"a.bmp\"",
         {"B", "BM12", Bmp() + "12", Bmp{.offset = 55} + "123", Bmp{.offset = 0x7FFFFFFF} + "123",
          Bmp{.width = 30000, .height = 30000} + "123"}},
    });
    EXPECT_EQ(errorOf<Zel::FileException_OpenFailed>([] { Image{"none.bmp"}; }),
              "Failed to open file \"none.bmp\"");
}

} // namespace
