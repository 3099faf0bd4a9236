// The checksum by stretches against its rule, one byte after the other.

#include "core/crc32_register.h"

#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

std::vector<unsigned char> randomBytes(std::size_t count) {
    std::mt19937 random(14);
    std::vector<unsigned char> bytes(count);
    for (unsigned char& byte : bytes)
        byte = static_cast<unsigned char>(random());
    return bytes;
}

TEST(Crc32RegisterTest, StretchesOfEveryLengthAtEveryAlignmentGiveTheRegisterOfTheRule) {
    constexpr std::size_t kLongest = 4200;
    auto const bytes = randomBytes(kLongest + 8);
    for (std::size_t alignment = 0; alignment < 8; ++alignment) {
        std::uint32_t wanted = 0x12345678;
        for (std::size_t length = 0; length <= kLongest; ++length) {
            ASSERT_EQ(Zel::crc32InStretches(0x12345678, &bytes[alignment], length), wanted)
                << alignment << ", " << length;
            wanted = Zel::crc32InTurn(wanted, &bytes[alignment + length], 1);
        }
    }
}

TEST(Crc32RegisterTest, PiecesOfAnySizesGiveTheRegisterOfTheRule) {
    std::mt19937 random(1);
    auto const bytes = randomBytes(70'000);
    std::uint32_t const wanted = ~Zel::crc32InTurn(~0U, bytes.data(), bytes.size());
    for (int i = 0; i < 1000; ++i) {
        Zel::Crc32Register crc;
        for (std::size_t at = 0; at < bytes.size();) {
            std::size_t const count =
                std::min<std::size_t>(random() % (i < 100 ? 3'000 : 60'000), bytes.size() - at);
            crc.update(&bytes[at], count);
            at += count;
        }
        ASSERT_EQ(crc.value(), wanted) << i;
    }
}

} // namespace
