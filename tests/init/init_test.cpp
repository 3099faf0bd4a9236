#include "support/library_test.h"

#include <optional>

namespace {

using InitTest = test::LibraryTest;
using Zel::g_Archive;
using Zel::g_File;
using Zel::Zel_Init;

/// Whether the globals are there: both or none.
bool areThere() {
    EXPECT_EQ(g_Archive == nullptr, g_File == nullptr);
    return g_File != nullptr;
}

TEST_F(InitTest, TheGlobalsLiveFromTheFirstToTheLast) {
    ASSERT_FALSE(areThere());
    std::optional<Zel_Init> outer(std::in_place);
    ASSERT_TRUE(areThere());
    EXPECT_EQ(g_File->getFilename(), "");
    EXPECT_EQ(Zel::Archive::getArchive(0), g_Archive);
    EXPECT_EQ(Zel::Archive::getArchiveCount(), 0);
    auto const before = std::pair(g_Archive, g_File);
    {
        Zel_Init const inner;
        EXPECT_EQ(Zel_Init::m_count, 2);
    }
    EXPECT_EQ(std::pair(g_Archive, g_File), before);
    outer.reset();
    EXPECT_FALSE(areThere());
    EXPECT_EQ(Zel_Init::m_count, 0);
}

TEST_F(InitTest, MoreEndsThanStartsOnlyCount) {
    {
        Zel_Init const ended;
        Zel_Init::m_count = 0; // as if it had ended before
    }
    EXPECT_EQ(Zel_Init::m_count, -1);
    EXPECT_TRUE(areThere()) << "only the last of those that are counted deletes";
    delete std::exchange(g_Archive, nullptr);
    delete std::exchange(g_File, nullptr);
    {
        Zel_Init const start; // from -1 on, nothing is made,
        EXPECT_EQ(Zel_Init::m_count, 0);
        EXPECT_FALSE(areThere());
        Zel_Init const next; // from 0 on, it is,
        EXPECT_TRUE(areThere());
    } // and unmade from 1 on
    EXPECT_FALSE(areThere());
    EXPECT_EQ(std::exchange(Zel_Init::m_count, 0), -1);
}

} // namespace
