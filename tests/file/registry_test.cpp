// The registry of archives: slots, counts, copies.

#include "support/library_test.h"

#include <optional>

namespace {

using test::readThroughLibrary;
using Zel::Archive;

using RegistryTest = test::LibraryTest;

TEST_F(RegistryTest, AnUnnamedArchiveInFrontHidesTheLastNamedOne) {
    std::string const one = packArchive("one.bva", {{"a", "one"}});
    std::string const two = packArchive("two.bva", {{"a", "two"}, {"b", "two"}});
    Archive front;
    Archive const named(one);
    EXPECT_THROW(readThroughLibrary("a"), Zel::FileException_OpenFailed) << "only slot 0 is searched";
    EXPECT_FALSE(Zel::File::exists("a")) << "exists asks the same slots";
    front.setFileName(two);
    EXPECT_EQ(readThroughLibrary("a"), "one") << "slot 1 first";
    EXPECT_EQ(readThroughLibrary("b"), "two");
    EXPECT_TRUE(Zel::File::exists("a"));
}

TEST_F(RegistryTest, EveryArchiveHasASlotWhileItLivesAndTheNamedOnesCount) {
    std::string const name = packArchive("a.bva", {{"a", "x"}});
    Archive const first;
    std::optional<Archive> second(std::in_place, name);
    Archive const third;
    EXPECT_EQ(Archive::getArchiveCount(), 1);
    EXPECT_EQ(Archive::getArchive(0), &first);
    EXPECT_EQ(Archive::getArchive(1), &*second);
    second.reset();
    EXPECT_EQ(Archive::sm_vecArchives.size(), 2u);
    EXPECT_EQ(Archive::getArchive(1), &third);
    EXPECT_EQ(Archive::getArchiveCount(), 0);
}

TEST_F(RegistryTest, CopiesAreNotRegisteredAndTakeTheFlagsAlong) {
    Archive original(packArchive("a.bva", {{"a", "x"}, {"b", "x"}}));
    readThroughLibrary("a");
    std::optional<Archive> copy(original);
    EXPECT_EQ(Archive::sm_vecArchives.size(), 1u);
    EXPECT_EQ(copy->getFullPath(), original.getFullPath());
    {
        test::LogCapture const log;
        copy->dumpUnaccessedFiles();
        EXPECT_EQ(log.messages().size(), 3u) << "a is accessed in the copy, too";
    }
    Archive assigned;
    assigned = original;
    EXPECT_EQ(Archive::getArchive(1), &assigned) << "still registered, now with a name";
    EXPECT_EQ(Archive::getArchiveCount(), 2);
    copy.reset();
    EXPECT_EQ(Archive::sm_vecArchives.size(), 2u);
}

using RegistryDeathTest = RegistryTest;

TEST_F(RegistryDeathTest, ASlotThatDoesNotExistEndsTheProcess) {
    Archive const archive;
    EXPECT_DEATH(Archive::getArchive(1), "Archive::getArchive: no slot 1 among 1");
    EXPECT_DEATH(Archive::getArchive(-1), "no slot -1");
}

} // namespace
