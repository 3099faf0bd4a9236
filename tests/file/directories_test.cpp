// The data, current and startup directories, and what exists.

#include "support/library_test.h"

namespace {

using Zel::File;

using DirectoriesTest = test::LibraryTest;

TEST_F(DirectoriesTest, SetDataDirAppends) {
    File::sm_datadir = Zel::Path();
    EXPECT_EQ(File::getDataDir(), "");
    File::setDataDir("data");
    EXPECT_EQ(File::getDataDir(), "data\\");
    File::setDataDir("UI");
    EXPECT_EQ(File::getDataDir(), "data\\UI\\") << "below the present one";
    File::setDataDir("c:/");
    EXPECT_EQ(File::getDataDir(), "c:\\") << "a drive replaces it";
    EXPECT_THROW(File::setDataDir("x/../../../y"), Zel::FileException_DirectoryNotFound);
}

TEST_F(DirectoriesTest, TheCurrentDirIsTheWorkingDirectoryUntilAnArchiveIsNamed) {
    fs::create_directories(path("here/there"));
    std::string const scratch = test::libraryPath(path("here")) + "\\";
    fs::current_path(path("here"));
    EXPECT_EQ(File::getCurrentDir(), scratch);
    EXPECT_EQ(File::sm_currentDir.str() + "\\", scratch) << "remembered";

    File::setCurrentDir("there");
    EXPECT_EQ(fs::current_path().filename(), "there");
    EXPECT_EQ(File::getCurrentDir(), scratch + "there\\");
    EXPECT_EQ(test::errorOf<Zel::FileException_DirectoryNotFound>([] { File::setCurrentDir("No/Where/"); }),
              "Directory \"No/Where/\" not found");

    EXPECT_THROW(File::setCurrentDir("q:/../.."), Zel::FileException_DirectoryNotFound);
    EXPECT_EQ(fs::current_path().filename(), "there") << "what cannot be appended is not entered either";
    EXPECT_EQ(File::getCurrentDir(), scratch + "there\\");

    EXPECT_THROW(File::setCurrentDir("No/Where"), Zel::FileException_DirectoryNotFound);
    File::setCurrentDir("..");
    EXPECT_EQ(fs::current_path().filename(), "here");
    EXPECT_EQ(File::sm_currentDir.str(), scratch + "there\\No") << "what failed had been appended, too";
}

TEST_F(DirectoriesTest, ANamedArchiveFreezesTheCurrentDir) {
    fs::create_directories(path("here/there"));
    std::string const here = test::libraryPath(path("here"));
    fs::current_path(path("here"));
    std::string const name = packArchive("a.bva", {{"a", "x"}});

    Zel::Archive unnamed; // the first archive alive remembers the working directory
    EXPECT_EQ(File::sm_currentDir.str(), here);
    EXPECT_EQ(File::getCurrentDir(), here + "\\") << "not frozen yet: the archive has no name";

    unnamed.setFileName(name);
    EXPECT_EQ(File::getCurrentDir(), here) << "no separator is added";
    File::setCurrentDir("there");
    EXPECT_EQ(File::getCurrentDir(), here + "\\there");
    EXPECT_EQ(fs::current_path().filename(), "here") << "the process stays where it is";
    File::setCurrentDir("not/there/at/all");
    EXPECT_EQ(File::getCurrentDir(), here + "\\there\\not\\there\\at\\all");
}

TEST_F(DirectoriesTest, TheStartupDirHoldsTheRunningProgram) {
    std::string const directory = File::getStartupDir();
    EXPECT_EQ(directory.back(), '\\');
    File::sm_datadir = Zel::Path();
    File::setDataDir(directory);
    File::setArchiveOnly(0);
    EXPECT_TRUE(File::exists("tests") || File::exists("tests.exe"));
}

TEST_F(DirectoriesTest, ExistsAsksTheArchivesAndThenTheDiskIfAllowed) {
    fs::create_directory(path("folder"));
    writeFile("Loose.txt", "x");
    Zel::Archive const archive(packArchive("a.bva", {{"packed.txt", "x"}}));
    EXPECT_EQ(File::getArchiveOnly(), 1);
    EXPECT_TRUE(File::exists("PACKED.txt"));
    EXPECT_FALSE(File::exists("loose.txt"));
    File::setArchiveOnly(0);
    EXPECT_TRUE(File::exists("LOOSE.txt"));
    EXPECT_TRUE(File::exists("folder")) << "a directory exists, too";
    EXPECT_FALSE(File::exists("missing"));
    EXPECT_THROW(File::exists("q:/../.."), Zel::FileException_DirectoryNotFound);
}

} // namespace
