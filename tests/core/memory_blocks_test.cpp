// The report of the memory block tracker to the byte. Its counters last as long as the process, so that the
// test of all of them has a process to itself.

#include "support/library_test.h"

#include <array>
#include <cstdlib>

namespace {

using MemoryBlocksTest = test::LibraryTest;
using MemoryBlocksDeathTest = test::LibraryTest;

std::vector<std::string> report() {
    test::LogCapture const log;
    Zel::dumpMemoryBlocks();
    return log.messages();
}

void const* at(std::uintptr_t address) { return reinterpret_cast<void const*>(address); }

std::string const kRule = std::string(76, '=') + "\n\n";

void expectReports() {
    EXPECT_EQ(report(),
              (std::vector<std::string>{"Memory dump\n", kRule, "Current (0.000 MB, 0 allocs)\n",
                                        "Peak    (0.000 MB, 0 allocs)\n", "\n", "Total allocs:   0\n",
                                        "Total deallocs: 0\n", "\n", kRule}));

    // The most bytes and the most blocks are of different moments.
    constexpr std::uintptr_t kHigh = ~std::uintptr_t{0} - 15;
    Zel::createMemoryBlock(at(16), 0x300000000, 0, "big", "Gone");
    Zel::deleteMemoryBlock(at(16));
    Zel::deleteMemoryBlock(nullptr);

    // The size of the lowest address counts, unsigned, whichever was registered first.
    EXPECT_EQ(Zel::createMemoryBlock(at(kHigh), 32, 0, "pair", "b"), at(kHigh));
    Zel::createMemoryBlock(at(32), 16, 0, "pair", "b");
    // The texts count, not the pointers. Upper case comes first, bytes of 0x80 and above last.
    std::array<char, 2> const b{'b', '\0'};
    Zel::createMemoryBlock(at(48), 1'500'000, 3, "image", b.data());
    Zel::createMemoryBlock(at(64), 7, 2, "image", "b");
    Zel::createMemoryBlock(at(80), 5, 0, "z", "\xE4");
    Zel::createMemoryBlock(at(96), 0xFFFFFFFF, 0x100000001, "huge", "B");
    Zel::createMemoryBlock(at(112), 0xFFFFFFFF, 0x100000001, "huge", "B");
    // Registered twice: one block with the fields of the last time, counted twice.
    Zel::createMemoryBlock(at(128), 8, 0, "first", "c");
    Zel::createMemoryBlock(at(128), 9, 0, "second", "c");

    EXPECT_EQ(report(),
              (std::vector<std::string>{
                  "Memory dump\n", kRule, "Current (8193.431 MB, 9 allocs)\n",
                  "Peak    (12288.000 MB, 9 allocs)\n", "\n", "Total allocs:   10\n",
                  "Total deallocs: 1\n", //
                  "\nB (8192.000 MB, 2 allocs):\n",
                  "4294967294 =      2 x 4294967295   huge[1]\n", //
                  "\nb (1.431 MB, 4 allocs):\n", "        7 =      1 x         7   image[2]\n",
                  "  1500000 =      1 x   1500000   image[3]\n",
                  "       32 =      2 x        16   pair\n", //
                  "\nc (0.000 MB, 1 allocs):\n", "        9 =      1 x         9   second\n",
                  "\n\xE4 (0.000 MB, 1 allocs):\n", "        5 =      1 x         5   z\n", "\n", kRule}));

    Zel::deleteMemoryBlock(at(kHigh));
    for (std::uintptr_t address = 32; address <= 128; address += 16)
        Zel::deleteMemoryBlock(at(address));
    auto const after = report();
    ASSERT_EQ(after.size(), 9U) << "no group is left";
    EXPECT_EQ(after[2], "Current (0.000 MB, 1 allocs)\n") << "the block that was registered twice";
    EXPECT_EQ(after[3], "Peak    (12288.000 MB, 9 allocs)\n");
}

TEST_F(MemoryBlocksDeathTest, TheReportCountsSortsAndSumsUp) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a new process, in which nothing has been counted
    EXPECT_EXIT((expectReports(), std::exit(HasFailure() ? 1 : 0)), testing::ExitedWithCode(0), "");
}

TEST_F(MemoryBlocksTest, CopyingTakesExactlyTheCount) {
    std::string target = "------";
    Zel::copyMemory(target.data() + 1, "abcdef", 3);
    EXPECT_EQ(target, "-abc--");
    Zel::copyMemory(nullptr, nullptr, 0);
}

TEST_F(MemoryBlocksDeathTest, BrokenContractsEndTheProcess) {
    EXPECT_DEATH(Zel::deleteMemoryBlock(at(4096)), "deleteMemoryBlock: no block at");
    char byte = 0;
    EXPECT_DEATH(Zel::copyMemory(&byte, "x", -1), "copyMemory: count -1");
}

} // namespace
