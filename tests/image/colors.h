// Colours that the tests of images share.
#pragma once

#include <random>
#include <vector>
#include <zel/image.h>

namespace test {

using Colors = std::vector<Zel::Color>;

inline Zel::Color const kBlack;
inline Zel::Color const kRed(200, 1, 2, 255);
inline Zel::Color const kBlue(3, 4, 201, 255);
inline Zel::Color const kGreen(5, 202, 6, 255);

inline Zel::Color grey(int value) {
    auto const v = static_cast<std::uint8_t>(value);
    return {v, v, v, 255};
}

/// Any colour, of any alpha.
inline Zel::Color randomColor(std::minstd_rand& random) {
    auto const channel = [&random] {
        return static_cast<std::uint8_t>(random() >> 8);
    };
    return {channel(), channel(), channel(), channel()};
}

} // namespace test
