// Damaged files of every format: cut off at every byte, and with every bit turned over. Each is refused by an
// exception of the library, or read where it may be, takes little memory and leaves nothing behind.

#include "support/allocations.h"
#include "support/library_test.h"
#include "support/samples.h"

namespace {

using test::Sample;

constexpr std::size_t kMemoryBudget = 4 << 20; ///< for one block; no sample has more than a kilobyte

class DamageTest : public test::LibraryTest, public testing::WithParamInterface<Sample> {
protected:
    void SetUp() override {
        if (GetParam().fileName == "sample.jpg" && !test::takesHostileJpeg())
            GTEST_SKIP() << "the host's codec is not safe";
        std::filesystem::current_path(path("."));
        writeFile(GetParam().fileName, GetParam().content);
        GetParam().read(GetParam().fileName); // what is made once and kept is made now
    }

    /// Reads the sample with other contents; returns whether it was refused.
    bool isRefused(std::string const& content) const {
        writeFile(GetParam().fileName, content);
        long const live = test::liveAllocations();
        test::largestAllocation();
        bool refused = false;
        try {
            GetParam().read(GetParam().fileName);
        } catch (Zel::Exception const& exception) {
            refused = true;
            EXPECT_LT(std::string(exception.getError()).size(), 1024U);
        }
        EXPECT_EQ(test::liveAllocations(), live);
        EXPECT_LE(test::largestAllocation(), kMemoryBudget);
        EXPECT_EQ(Zel::Archive::getArchiveCount(), 0);
        return refused;
    }

    test::ImagingThread m_imaging;
};

TEST_P(DamageTest, WhatIsCutOffIsRefusedUnlessItCanEndThere) {
    std::string const& whole = GetParam().content;
    ASSERT_FALSE(isRefused(whole));
    for (std::size_t length = 0; length < whole.size() && !HasFailure(); ++length) {
        SCOPED_TRACE(length);
        EXPECT_TRUE(isRefused(whole.substr(0, length)) || !GetParam().isTooShort(length));
    }
}

TEST_P(DamageTest, WhatIsTurnedOverIsReadOrRefused) {
    std::string const& whole = GetParam().content;
    for (std::size_t i = 0; i < whole.size() && !HasFailure(); ++i) {
        bool const isHeader = i < GetParam().headerSize;
        for (int bit = isHeader ? 0 : static_cast<int>(i % 8); bit < 8; bit += isHeader ? 1 : 8) {
            SCOPED_TRACE(testing::Message() << "byte " << i << " bit " << bit);
            std::string damaged = whole;
            damaged[i] = static_cast<char>(damaged[i] ^ 1 << bit);
            isRefused(damaged);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, DamageTest, testing::ValuesIn(test::samples()),
                         [](auto const& instance) { return instance.param.what; });

} // namespace
