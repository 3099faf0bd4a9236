// The pixels of an image: their size, their lifetime, copying of parts, and dilation.

#include "support/library_test.h"
#include "support/pictures.h"

#include <utility>

namespace {

using namespace test;
using Zel::Color;
using Zel::Image;

TEST(ImageTest, IsOpaqueBlackUntilCleared) {
    Image image(2, 2);
    EXPECT_EQ(pixelsOf(image), Colors(4, kBlack));
    image.resize(3, 2);
    EXPECT_EQ(Colors(image.getData(), image.getData() + 4 * 3 * 2), Colors(4 * 3 * 2, kBlack));
    image.clear();
    EXPECT_EQ(pixelsOf(image), Colors(6, Color(0, 0, 0, 0)));
    EXPECT_EQ(image.getData()[6], kBlack) << "clear leaves the room behind the image";
}

TEST(ImageTest, CopiesOwnTheirPixels) {
    Image source = imageOf(2, {grey(1), grey(2)});
    Image copy(source);
    Image assigned(5, 5);
    assigned = source;
    Image const& self = assigned;
    assigned = self;
    source[0] = kBlack;
    for (Image const& image : {copy, assigned}) {
        EXPECT_EQ(image.getWidth(), 2);
        EXPECT_EQ(pixelsOf(image), (Colors{grey(1), grey(2)}));
    }
}

TEST(ImageTest, KeepsSizesThatHoldNoPixels) {
    for (auto const& [width, height] : {std::pair(0, 0), {0, 5}, {7, -1}, {-3, -4}}) {
        Image image(4, 4);
        image.resize(width, height);
        Image assigned(2, 2);
        assigned = image;
        for (Image const& empty : {image, Image(width, height), Image(image), assigned}) {
            EXPECT_EQ(empty.getWidth(), width);
            EXPECT_EQ(empty.getHeight(), height);
            EXPECT_EQ(empty.getData(), nullptr);
            EXPECT_EQ(empty.samplePoint(0, 0), kBlack);
            EXPECT_EQ(empty.sampleBilinear(0, 0), kBlack);
        }
        image.clear();
        image.dilate(kBlack);
        image.copyWithScale(&assigned, 1);
    }
}

TEST(ImageTest, RefusesSizesThatCannotBeCounted) {
    Image image = imageOf(1, {grey(1)});
    std::string const message = "Image \"\" has illegal dimensions 65536x32768";
    EXPECT_EQ(errorOf<Zel::ImageException_IllegalDimensions>([&] { image.resize(65536, 32768); }), message);
    EXPECT_EQ(errorOf<Zel::ImageException_IllegalDimensions>([] { Image(65536, 32768); }), message);
    EXPECT_EQ(pixelsOf(image), Colors{grey(1)});
}

TEST(ImageTest, CopiesRectanglesRowByRow) {
    Image const source = imageOf(3, {grey(1), grey(2), grey(3), grey(4), grey(5), grey(6)});
    Image target(2, 3);
    target.copy(0, 1, &source, 1, 0, 2, 2);
    EXPECT_EQ(pixelsOf(target), (Colors{kBlack, kBlack, grey(2), grey(3), grey(5), grey(6)}));
    target.copy(0, 0, &source, 0, 0, 2, 0);
    target.copy(0, 0, &source, 0, 0, 0, 2);
    EXPECT_EQ(target(1, 0), kBlack);
    target.copy(0, 0, &target, 0, 1, 2, 2);
    EXPECT_EQ(pixelsOf(target), (Colors{grey(2), grey(3), grey(5), grey(6), grey(5), grey(6)}));
}

TEST(ImageTest, DilationAveragesNeighboursThatAreNotOfTheKeyColour) {
    Color const key(255, 0, 255, 9);
    auto const isKey = [](Color const& color) {
        return color.r == 255 && color.g == 0 && color.b == 255;
    };
    std::minstd_rand random;
    Image before(100, 40);
    for (int i = 0; i < 100 * 40; ++i) {
        before[i] = randomColor(random);
        if (random() % 3 == 0)
            before[i] = Color(255, 0, 255, before[i].a);
    }
    Image after(before);
    after.dilate(key);
    for (int i = 0; i < 100 * 40; ++i) {
        int const x = i % 100, y = i / 100;
        Colors neighbours;
        for (auto const& [u, v] : {std::pair(x - 1, y), {x, y - 1}, {x + 1, y}, {x, y + 1}})
            if (u >= 0 && v >= 0 && u < 100 && v < 40 && !isKey(before(u, v)))
                neighbours.push_back(before(u, v));
        Color expected = isKey(before[i]) ? key : before[i];
        if (isKey(before[i]) && !neighbours.empty())
            for (auto const channel : {&Color::r, &Color::g, &Color::b, &Color::a}) {
                int sum = 0;
                for (Color const& color : neighbours)
                    sum += color.*channel;
                expected.*channel = static_cast<std::uint8_t>(sum / static_cast<int>(neighbours.size()));
            }
        ASSERT_EQ(after[i], expected) << x << ' ' << y;
    }
}

} // namespace
