// Extraction and clean-up on a host with links, odd names, and disks that fill up.

#include "support/full_disk.h"
#include "support/host_calls.h"
#include "support/ordinary_user.h"
#include "support/program_test.h"
#include "support/temporary_test.h"

#include <fstream>

namespace {

using test::errorOf;
using WriteError = Zel::FileException_WriteError;
using Zel::Archive;
using Zel::File;

using PosixExtractionTest = test::TemporaryTest;

TEST_F(PosixExtractionTest, ALinkThatAppearsInATemporaryDirectoryIsNotFollowed) {
    Archive const archive(packArchive("a.bva", {{"maps\\a.bin", "x"}}));
    fs::create_directory(path("outside"));
    writeFile("victim", "mine");
    for (auto const& [place, target, isReplaced] : {std::tuple("maps", "outside", false),
                                                    {"maps/a.bin", "victim", true},
                                                    {"maps/a.bin", "new", true}}) {
        test::g_afterMaking = [name = place, to = path(target)](std::string const& made) {
            if (!made.ends_with("maps"))
                return;
            fs::path const link = fs::path(made).parent_path() / name;
            fs::remove(link);
            fs::create_symlink(to, link);
        };
        std::string dir = "maps";
        EXPECT_EQ(File::extractDirectory(dir), isReplaced) << target;
        test::g_afterMaking = nullptr;
        File::cleanup();
        EXPECT_TRUE(fs::is_empty(path("outside"))) << target;
        EXPECT_EQ(readFile("victim"), "mine") << target;
        EXPECT_FALSE(fs::exists(path("new"))) << target;
    }
}

TEST_F(PosixExtractionTest, AnArchiveThatChangesWhileItIsCopiedLeavesWhatWasChecked) {
    Archive const archive(packArchive("a.bva", {{"d\\a.bin", std::string(100'000, 'x')}}));
    test::g_afterMaking = [this](std::string const& made) {
        if (made.ends_with("a.bin"))
            std::fstream(path("a.bva"), std::ios::in | std::ios::out | std::ios::binary)
                    .seekp(-9, std::ios::end)
                << "other";
    };
    std::string name = "d/a.bin";
    EXPECT_TRUE(File::extractFile(name));
    test::g_afterMaking = nullptr;
    EXPECT_EQ(test::fileContent(onDisk(name)), std::string(100'000, 'x'));
    File::cleanup();
}

TEST_F(PosixExtractionTest, ForcedRemovalOpensWhatIsClosedToItsOwner) {
    fs::permissions(path("."), fs::perms::all);
    test::OrdinaryUser const user;
    for (char const* directory : {"tree/none", "tree/readonly", "tree"}) {
        fs::create_directories(path(directory) / "below");
        writeFile(std::string(directory) + "/file", "x");
        bool const isReadOnly = path(directory).filename() == "readonly";
        fs::permissions(path(directory),
                        isReadOnly ? fs::perms::owner_read | fs::perms::owner_exec : fs::perms::none);
    }
    std::error_code closedIndeed;
    EXPECT_FALSE(fs::exists(path("tree/none"), closedIndeed));
    File().forced_remove_directory(test::libraryPath(path("tree")).c_str());
    EXPECT_FALSE(fs::exists(path("tree")));
}

TEST_F(PosixExtractionTest, ADanglingLinkIsNoNewTemporaryDirectory) {
    File::setUniquePathNames(0);
    fs::create_directories(temporaryRoot());
    fs::create_directory_symlink(path("later"), temporaryRoot() / "tmp_1");
    EXPECT_TRUE(File::getTmpDir().ends_with("\\tmp_2\\"));
}

TEST_F(PosixExtractionTest, ForcedRemovalFollowsNoLinkAndTakesEveryNameAsItIs) {
    writeFile("outside/file", "mine");
    writeFile("victim", "mine");
    writeFile("tree/..\\victim", "x"); // one name, with a backslash in it
    writeFile("tree/z:", "x");
    writeFile("tree/CASE", "x");
    writeFile("tree/case", "x");
    fs::create_directory_symlink(path("outside"), path("tree/directory"));
    fs::create_symlink(path("victim"), path("tree/link"));
    fs::create_directory_symlink(path("outside"), path("link"));
    for (char const* name : {"tree", "link/"})
        File().forced_remove_directory(test::libraryPath(path(name)).c_str());
    EXPECT_EQ(readFile("outside/file"), "mine");
    EXPECT_EQ(readFile("victim"), "mine");
    EXPECT_FALSE(fs::exists(path("tree")));
    EXPECT_FALSE(fs::is_symlink(path("link")));
}

TEST_F(PosixExtractionTest, AFullDiskIsAWriteErrorThatLeavesNoFile) {
    fs::create_directory(path("out"));
    std::string const destination = test::libraryPath(path("out/"));
    std::string const error = "Write error in \"" + key("d\\a") + "\"";
    for (std::size_t size : {100U, 100'000U}) { // found out at the end, and underway
        Archive const archive(packArchive("a.bva", {{"d\\a", std::string(size, 'x')}}));
        test::withFullDisk(size - 10, [&] {
            std::string name = "d/a";
            EXPECT_EQ(errorOf<WriteError>([&] { File::extractFile(name); }), error);
            name = "d";
            EXPECT_EQ(errorOf<WriteError>([&] { File::extractDirectoryPermanent(name, destination); }),
                      error);
        });
        EXPECT_EQ(File::sm_extractedFiles.size(), 2u) << "the two directories";
        EXPECT_TRUE(fs::is_empty(onDisk(File::sm_extractedFiles.back())));
        EXPECT_TRUE(fs::is_empty(path("out/d")));
        File::cleanup();
        EXPECT_TRUE(fs::is_empty(temporaryRoot()));
    }
}

TEST_F(PosixExtractionTest, APermanentExtractionFindsDirectoriesWhateverTheirCase) {
    writeFile("out/Maps/A.bin", "older");
    Archive const archive(packArchive("a.bva", {{"maps\\a.bin", "new"}, {"maps\\b.bin", "b"}}));
    std::string dir = "maps";
    EXPECT_TRUE(File::extractDirectoryPermanent(dir, test::libraryPath(path("out/"))));
    EXPECT_EQ(readFile("out/Maps/A.bin"), "new");
    EXPECT_EQ(readFile("out/Maps/b.bin"), "b");
}

using PosixZelExtractTest = test::ProgramTest;

TEST_F(PosixZelExtractTest, LinksInTheDestinationLeadNowhere) {
    packArchive("a.bva", {{"maps\\a", "new"}, {"file", "new"}});
    writeFile("outside/a", "mine");
    writeFile("victim", "mine");
    fs::create_directory(path("out"));
    fs::create_directory_symlink("../outside", path("out/maps"));
    fs::create_symlink("../victim", path("out/file"));
    expectErr({"extract", "a.bva", "out"}, 1, "zel: not extracted: maps\\a: out/maps is a link\n");
    EXPECT_EQ(readFile("outside/a"), "mine");
    EXPECT_EQ(readFile("victim"), "mine");
    EXPECT_EQ(readFile("out/file"), "new") << "the link itself is replaced";
    fs::create_directory_symlink("out", path("alias"));
    EXPECT_EQ(zel({"extract", "a.bva", "alias", "file"}), 0) << "the destination itself may be a link";
}

TEST_F(PosixZelExtractTest, NamesMayBeAsLongAsTheHostAllows) {
    for (std::size_t const length : {231U, 250U, 255U, 256U}) {
        std::string const name(length, 'n');
        packArchive("a.bva", {{name, "x"}, {"sub\\" + name, "x"}});
        EXPECT_EQ(zel({"extract", "a.bva", "out"}), length <= 255 ? 0 : 3) << err();
    }
    EXPECT_EQ(test::treeOf(path("out")).size(), 7U);
}

TEST_F(PosixZelExtractTest, TreesMayBeDeeperThanAProcessHasDescriptors) {
    std::string directory;
    for (int depth = 0; depth < 100; ++depth)
        directory += "d/";
    packArchive("a.bva", {{directory + "a", "x"}, {directory + "b", "x"}, {"d/c", "x"}});
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    rlimit const few = {40, limit.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    EXPECT_EQ(zel({"extract", "a.bva", "out"}), 0) << err();
    EXPECT_EQ(readFile("out/" + directory + "b"), "x");
    EXPECT_EQ(readFile("out/d/c"), "x");
    Archive const archive(test::libraryPath(path("a.bva")));
    std::string dir;
    EXPECT_TRUE(File::extractDirectory(dir));
    File::cleanup();
    File().forced_remove_directory(test::libraryPath(path("out")).c_str());
    setrlimit(RLIMIT_NOFILE, &limit);
    EXPECT_FALSE(fs::exists(path("out")));
}

TEST_F(PosixZelExtractTest, AFullDiskKeepsTheOlderFileAndLeavesNothingElse) {
    packArchive("a.bva",
                {{"large", std::string(100'000, 'x')}, {"new", std::string(60'000, 'x')}, {"small", "x"}});
    writeFile("out/large", "older");
    test::withFullDisk(50'000, [&] {
        expectErr({"extract", "a.bva", "out"}, 3,
                  testing::HasSubstr("zel: not extracted: large: cannot write out/large: "));
    });
    EXPECT_EQ(readFile("out/large"), "older");
    EXPECT_THAT(test::treeOf(path("out")), testing::ElementsAre("large", "small"));
}

} // namespace
