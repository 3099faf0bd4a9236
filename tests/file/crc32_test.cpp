#include "support/library_test.h"

namespace {

using Crc32Test = test::LibraryTest;

// 0xCBF43926 is the published check value of CRC-32; the other checksums are zlib's.
TEST_F(Crc32Test, GivesThePublishedValues) {
    EXPECT_EQ(Zel::crc32("", 0), 0u);
    EXPECT_EQ(Zel::crc32(nullptr, 0), 0u);
    EXPECT_EQ(Zel::crc32("\0", 1), 0xD202EF8Du);
    EXPECT_EQ(Zel::crc32("123456789", 9), 0xCBF43926u);
    EXPECT_EQ(Zel::crc32("The quick brown fox jumps over the lazy dog", 43), 0x414FA339u);
    EXPECT_EQ(Zel::crc32(std::string(32, '\xFF').data(), 32), 0xFF6CAB0Bu);
}

TEST_F(Crc32Test, GoesOnFromPieceToPiece) {
    for (std::size_t first = 0; first <= 9; ++first) {
        unsigned long const previous = Zel::crc32("123456789", first);
        EXPECT_EQ(Zel::crc32(&"123456789"[first], 9 - first, previous), 0xCBF43926u) << first;
    }
}

TEST_F(Crc32Test, OfAFileIsThatOfItsBytes) {
    writeFile("loose.bin", "123456789");
    writeFile("empty.bin", "");
    Zel::Archive const archive(packArchive("a.bva", {{"packed.bin", "123456789"}}));
    EXPECT_EQ(Zel::crc32(std::string("LOOSE.bin")), 0xCBF43926u);
    EXPECT_EQ(Zel::crc32(std::string("packed.bin")), 0xCBF43926u);
    EXPECT_EQ(Zel::crc32(std::string("empty.bin")), 0u);
    EXPECT_THROW(Zel::crc32(std::string("missing.bin")), Zel::FileException_OpenFailed);
}

} // namespace
