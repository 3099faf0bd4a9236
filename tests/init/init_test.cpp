#include "support/library_test.h"

#include <optional>
#include <utility>

namespace {

using InitTest = test::LibraryTest;

TEST_F(InitTest, TheGlobalsLiveFromTheFirstToTheLast) {
    ASSERT_EQ(Zel::g_Archive, nullptr);
    ASSERT_EQ(Zel::g_File, nullptr);
    std::optional<Zel::Zel_Init> outer(std::in_place);
    Zel::Archive const* const archive = Zel::g_Archive;
    Zel::File const* const file = Zel::g_File;
    ASSERT_NE(archive, nullptr);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(Zel::g_File->getFilename(), "");
    EXPECT_EQ(Zel::Archive::getArchive(0), archive);
    EXPECT_EQ(Zel::Archive::getArchiveCount(), 0);
    {
        Zel::Zel_Init const inner;
        EXPECT_EQ(Zel::Zel_Init::m_count, 2);
    }
    EXPECT_EQ(Zel::g_Archive, archive);
    EXPECT_EQ(Zel::g_File, file);
    outer.reset();
    EXPECT_EQ(Zel::g_Archive, nullptr);
    EXPECT_EQ(Zel::g_File, nullptr);
    EXPECT_EQ(Zel::Zel_Init::m_count, 0);
}

TEST_F(InitTest, MoreEndsThanStartsOnlyCount) {
    {
        Zel::Zel_Init const ended;
        Zel::Zel_Init::m_count = 0; // as if it had ended before
    }
    EXPECT_EQ(Zel::Zel_Init::m_count, -1);
    EXPECT_NE(Zel::g_Archive, nullptr) << "only the last of those that are counted deletes";
    delete std::exchange(Zel::g_Archive, nullptr);
    delete std::exchange(Zel::g_File, nullptr);
    {
        Zel::Zel_Init const start; // from -1 on, nothing is made,
        EXPECT_EQ(Zel::Zel_Init::m_count, 0);
        EXPECT_EQ(Zel::g_Archive, nullptr);
        Zel::Zel_Init const next; // from 0 on, it is,
        EXPECT_NE(Zel::g_Archive, nullptr);
        EXPECT_NE(Zel::g_File, nullptr);
    } // and unmade from 1 on
    EXPECT_EQ(Zel::g_Archive, nullptr);
    EXPECT_EQ(Zel::g_File, nullptr);
    EXPECT_EQ(std::exchange(Zel::Zel_Init::m_count, 0), -1);
}

} // namespace
