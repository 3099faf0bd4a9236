// The program on a host that tells case, has links, and takes every byte but two in a name.

#include "support/full_disk.h"
#include "support/program_test.h"

#include <gmock/gmock.h>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

using PosixZelTest = test::ProgramTest;

TEST_F(PosixZelTest, PackNamesEveryPairOfNamesThatFoldToOne) {
    for (char const* name : {"t/A/x", "t/a/X", "t/a/x", "t/b", "t/c/b"})
        writeFile(name, "1");
    EXPECT_EQ(zel({"pack", "t", "out.bva"}), 1);
    EXPECT_EQ(err(), "zel: refused: t/A/x and t/a/X would be the same entry\n"
                     "zel: refused: t/A/x and t/a/x would be the same entry\n"
                     "zel: refused: t/a/X and t/a/x would be the same entry\n");
    EXPECT_FALSE(fs::exists(path("out.bva")));
}

TEST_F(PosixZelTest, PackRefusesNamesThatCannotBeLookedUp) {
    writeFile("t/a:b", "1");
    writeFile("t/a\\b", "1");
    EXPECT_EQ(zel({"pack", "t", "out.bva"}), 1);
    EXPECT_THAT(err(), HasSubstr("refused: t/a:b has a ':'"));
    EXPECT_THAT(err(), HasSubstr("refused: t/a\\b has a ':' or a '\\'"));
}

TEST_F(PosixZelTest, PackFollowsLinksToFilesAlone) {
    writeFile("t/file", "content");
    fs::create_symlink("file", path("t/link"));
    fs::create_symlink("nowhere", path("t/dangling"));
    fs::create_symlink("loop", path("t/loop"));
    fs::create_directory_symlink(".", path("t/self"));
    EXPECT_EQ(zel({"pack", "t", "out.bva"}), 0);
    EXPECT_THAT(err(), HasSubstr("left out: t/dangling is no file"));
    EXPECT_THAT(err(), HasSubstr("left out: t/loop is no file"));
    EXPECT_THAT(err(), HasSubstr("left out: t/self is a link to a directory"));
    EXPECT_EQ(zel({"cat", "out.bva", "link"}), 0);
    EXPECT_EQ(out(), "content");
}

TEST_F(PosixZelTest, AFullDiskKeepsTheOlderArchiveAndLeavesNothingElse) {
    writeFile("t/large", std::string(100'000, 'x'));
    writeFile("out.bva", "the older one");
    int exitCode = 0;
    int other = 0;
    test::withFullDisk(50'000, [&] {
        exitCode = zel({"pack", "t", "out.bva"});
        other = zel({"pack", "t", "new.bva"});
    });
    EXPECT_EQ(exitCode, 3);
    EXPECT_EQ(other, 3);
    EXPECT_THAT(err(), HasSubstr("zel: cannot write new.bva: "));
    EXPECT_EQ(readFile("out.bva"), "the older one");
    test::withFullDisk(5'000, [&] { exitCode = zel({"noise", "noise.tga", "--size", "64x64"}); });
    EXPECT_EQ(exitCode, 3);
    EXPECT_EQ(err(), "zel: cannot write noise.tga: the disk is full, or the file would pass 2 GiB\n");
    EXPECT_EQ(std::distance(fs::directory_iterator(path(".")), fs::directory_iterator()), 2);
}

TEST_F(PosixZelTest, AnArchiveWithANameInOtherCaseIsNotMistakenForTheOneNamed) {
    packArchive("foo.bva", {{"a", "lower"}});
    packArchive("Foo.bva", {{"a", "capital"}});
    EXPECT_EQ(zel({"list", "foo.bva"}), 0);
    EXPECT_EQ(zel({"list", "Foo.bva"}), 3);
    EXPECT_THAT(err(), HasSubstr("foo.bva differs in case alone"));
    packArchive("BAR.bva", {{"a", "1"}});
    packArchive("Bar.bva", {{"a", "1"}});
    EXPECT_EQ(zel({"list", "BAR.bva"}), 0) << "the first in byte order is the one that is found";
    EXPECT_EQ(zel({"list", "Bar.bva"}), 3);
    writeFile("script", "[a]");
    writeFile("Script", "x");
    EXPECT_EQ(zel({"script", "check", "Script"}), 3);
    EXPECT_THAT(err(), HasSubstr("differs in case alone"));
    EXPECT_EQ(zel({"script", "dump", "Script"}), 3);
    EXPECT_EQ(zel({"list", "a:b.bva"}), 3);
    EXPECT_THAT(err(), HasSubstr("':'"));
}

} // namespace
