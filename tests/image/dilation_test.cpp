#include "image/colors.h"
#include "support/pictures.h"

#include <gtest/gtest.h>
#include <utility>

namespace {

using namespace test;
using Zel::Color;
using Zel::Image;

TEST(DilationTest, IsTheAverageOfNeighboursThatAreNotOfTheKeyColour) {
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
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 100; ++x) {
            Colors neighbours;
            for (auto const& [i, j] : {std::pair(x - 1, y), {x, y - 1}, {x + 1, y}, {x, y + 1}})
                if (i >= 0 && j >= 0 && i < 100 && j < 40 && !isKey(before(i, j)))
                    neighbours.push_back(before(i, j));
            Color expected = before(x, y);
            if (isKey(expected) && neighbours.empty())
                expected = key;
            else if (isKey(expected))
                for (auto const channel : {&Color::r, &Color::g, &Color::b, &Color::a}) {
                    int sum = 0;
                    for (Color const& color : neighbours)
                        sum += color.*channel;
                    expected.*channel = static_cast<std::uint8_t>(sum / static_cast<int>(neighbours.size()));
                }
            ASSERT_EQ(after(x, y), expected) << x << ' ' << y;
        }
    }
}

} // namespace
