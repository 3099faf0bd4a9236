// What only a POSIX host has: names that differ in case alone, the drive z:, pipes, modes.

#include "support/host_calls.h"
#include "support/library_test.h"
#include "support/ordinary_user.h"
#include "support/pictures.h"

#include <chrono>
#include <sys/stat.h>
#include <thread>

namespace {

using test::readThroughLibrary;
using Zel::File;

using PosixTest = test::LibraryTest;

TEST_F(PosixTest, TheExactNameComesBeforeTheFirstInByteOrder) {
    writeFile("Dir/File.TXT", "File.TXT");
    writeFile("Dir/FILE.txt", "FILE.txt");
    EXPECT_EQ(readThroughLibrary("dir/file.txt"), "FILE.txt") << "'I' comes before 'i'";
    writeFile("Dir/file.txt", "file.txt");
    EXPECT_EQ(readThroughLibrary("DIR/FILE.TXT"), "file.txt") << "in lower case, and then exact";
    writeFile("dir/other", "x");
    EXPECT_THROW(readThroughLibrary("dir/file.txt"), Zel::FileException_OpenFailed)
        << "the exact directory is the one, even where another holds the file";
}

TEST_F(PosixTest, WhatADirectoryHoldsIsRememberedAndSeenWhenItChanges) {
    constexpr long kNames = 300;
    for (long i = 0; i < kNames; ++i)
        writeFile("Dir/Name" + std::to_string(i), "old");
    File::setArchiveOnly(0);
    auto const calls = [](auto act) {
        long const before = test::hostCalls();
        act();
        return test::hostCalls() - before;
    };
    // Until the clock of files has moved on, the directory is read each time.
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    for (long n = 1; n < 20; ++n) { // whatever fails once, nothing wrong is remembered
        std::thread([n] {
            try {
                test::FailingHostCall const fault(n);
                readThroughLibrary("dir/name0");
            } catch (Zel::FileException const&) {
            }
            EXPECT_EQ(readThroughLibrary("dir/name0"), "old") << n;
        }).join();
    }
    EXPECT_GT(calls([] { readThroughLibrary("dir/name1"); }), kNames);
    EXPECT_LT(calls([] { readThroughLibrary("dir/NAME2"); }), 30);
    EXPECT_LT(calls([] { EXPECT_FALSE(File::exists("dir/none")); }), 10);

    writeFile("Dir/None", "new");
    EXPECT_EQ(readThroughLibrary("dir/none"), "new");
    fs::rename(path("Dir/None"), path("Dir/Other"));
    EXPECT_FALSE(File::exists("dir/none"));
    EXPECT_EQ(readThroughLibrary("dir/other"), "new");
    fs::remove(path("Dir/Other"));
    EXPECT_FALSE(File::exists("dir/other"));
    fs::rename(path("Dir"), path("Was"));
    writeFile("DIR/Name3", "another");
    EXPECT_EQ(readThroughLibrary("dir/name3"), "another");
    EXPECT_FALSE(File::exists("dir/name4"));
}

TEST_F(PosixTest, AFileThatIsThereIsWrittenWhateverItsCase) {
    writeFile("Dir/File.TXT", "old");
    { File("DIR/FILE.txt", File::WRITE).write("new", 3); }
    EXPECT_EQ(readFile("Dir/File.TXT"), "new");
    { File("DIR/Another.TXT", File::WRITE).write("x", 1); }
    EXPECT_EQ(readFile("Dir/another.txt"), "x") << "a new one gets its name in lower case";
    EXPECT_EQ(std::distance(fs::directory_iterator(path("Dir")), {}), 2);
    fs::create_symlink("target", path("link"));
    { File("LINK", File::WRITE).write("x", 1); }
    EXPECT_EQ(readFile("target"), "x") << "where a link leads, even to no file yet";
}

TEST_F(PosixTest, OnlyTheDriveZExists) {
    writeFile("file", "x");
    std::string const full = test::libraryPath(path("file"));
    File::setArchiveOnly(0);
    EXPECT_TRUE(File::exists(full));
    EXPECT_TRUE(File::exists("Z" + full.substr(1)));
    EXPECT_TRUE(File::exists("z:/"));
    EXPECT_FALSE(File::exists("c" + full.substr(1)));
    EXPECT_FALSE(File::exists("zz" + full.substr(1)));
    EXPECT_FALSE(File::exists("\\\\server" + full.substr(2)));
    File::sm_datadir = Zel::Path();
    EXPECT_FALSE(File::exists("file"));
    fs::current_path(path("."));
    EXPECT_TRUE(File::exists("file")) << "without a data directory, below the working directory";
}

TEST_F(PosixTest, AnArchiveIsReadWhereAndUnderTheSpellingThatItWasLoadedUnder) {
    fs::create_directory(path("Data"));
    fs::create_directory(path("data"));
    packArchive("Data/a.bva", {{"entry", "capital"}});
    packArchive("data/a.bva", {{"entry", "another"}});
    fs::current_path(path("Data"));
    File::sm_datadir = Zel::Path();
    Zel::Archive const archive("A.bva");
    EXPECT_EQ(archive.getFullPath(), test::libraryPath(path("Data")) + "\\A.bva") << "as given";
    EXPECT_EQ(readThroughLibrary("entry"), "capital") << "only the name given is put in lower case";
    fs::remove(path("Data/a.bva"));
    EXPECT_THROW(readThroughLibrary("entry"), Zel::FileException_OpenFailed);

    File::setDataDir(test::libraryPath(path(".")));
    packArchive("foo.bva", {{"a", "lower"}});
    Zel::Archive const other(packArchive("Foo.bva", {{"b", "capital"}}));
    EXPECT_EQ(readThroughLibrary("a"), "lower") << "names are folded: the exact one is foo.bva";
}

TEST_F(PosixTest, AWorkingDirectoryOfMoreThan260CharactersCannotBeTold) {
    std::string const scratch = test::libraryPath(path(""));
    std::string const longest(260 - scratch.size(), 'd');
    fs::create_directories(path(longest));
    fs::create_directories(path(longest + "d"));
    fs::current_path(path(longest));
    EXPECT_EQ(File::getCurrentDir(), scratch + longest + "\\");
    fs::current_path(path(longest + "d"));
    EXPECT_EQ(test::errorOf<Zel::FileException_GetCurrentDirFailed>([] { File::getCurrentDir(); }),
              "Failed to determine current directory");
    fs::current_path("/");
    EXPECT_EQ(File::getCurrentDir(), "z:\\");
}

TEST_F(PosixTest, AWorkingDirectoryThatIsGoneOrHasNoPathCannotBeTold) {
    for (char const* name : {"gone", "a:b", "a\\b", "a:b/below"}) {
        fs::create_directories(path(name));
        fs::current_path(path(name));
        if (name == std::string("gone"))
            fs::remove(path(name));
        EXPECT_THROW(File::getCurrentDir(), Zel::FileException_GetCurrentDirFailed) << name;
        EXPECT_THROW(Zel::Archive(), Zel::FileException_GetCurrentDirFailed) << name;
        EXPECT_THROW(Zel::Zel_Init(), Zel::FileException_GetCurrentDirFailed) << name;
        EXPECT_EQ(Zel::Zel_Init::m_count, 0);
        EXPECT_EQ(Zel::g_Archive, nullptr);
    }
}

TEST_F(PosixTest, AFileNeverGrowsPastWhatItsSizeCanTell) {
    File file("z:/dev/null", File::WRITE);
    std::string const piece(1 << 28, '\0');
    for (int i = 0; i < 7; ++i)
        file.write(piece.data(), 1 << 28);
    EXPECT_THROW(file.write(piece.data(), 1 << 28), Zel::FileException_WriteError);
    EXPECT_EQ(file.getSize(), 7 << 28);
    file.write(piece.data(), (1 << 28) - 1);
    EXPECT_EQ(file.getSize(), 0x7FFFFFFF);
}

TEST_F(PosixTest, APipeWithoutAWriterHoldsNobodyUp) {
    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    EXPECT_TRUE(File("pipe", File::READ).endReached());
}

TEST_F(PosixTest, AFullDiskIsAWriteErrorAtTheLatestWhenFlushed) {
    File file("z:/dev/full", File::WRITE);
    file.write("x", 1); // still in the stream's buffer
    EXPECT_EQ(test::errorOf<Zel::FileException_WriteError>([&] { file.flush(); }),
              "Write error in \"z:/dev/full\"");
    std::string const large(1 << 20, 'x');
    EXPECT_THROW(file.write(large.data(), 1 << 20), Zel::FileException_WriteError);
}

TEST_F(PosixTest, ADirectoryThatCannotBeEnteredHoldsNothing) {
    writeFile("closed/file", "x");
    fs::permissions(path("closed"), fs::perms::none);
    {
        test::OrdinaryUser const user;
        EXPECT_THROW(readThroughLibrary("closed/file"), Zel::FileException_OpenFailed);
        EXPECT_THROW(File("closed/new", File::WRITE), Zel::FileException_OpenFailed);
        std::string const closed = test::libraryPath(path("closed"));
        EXPECT_EQ(test::errorOf<Zel::FileException_DirectoryNotFound>([&] { File::setCurrentDir(closed); }),
                  "Directory \"" + closed + "\" not found");
    }
    fs::permissions(path("closed"), fs::perms::owner_all);
}

TEST_F(PosixTest, TheCommonDataFolderFollowsTheEnvironment) {
    std::string const chosen = std::getenv("ZEL_COMMON_DATA");
    std::string const home = std::getenv("HOME") != nullptr ? std::getenv("HOME") : "";
    fs::permissions(path("."), fs::perms::all);
    test::OrdinaryUser const user; // root's folder is /var/lib, which a test does not touch
    for (auto const& [variable, value, expected] :
         {std::tuple("ZEL_COMMON_DATA", "Common//data/", "Common/data/Brisvane/temp"),
          {"XDG_STATE_HOME", "state", "state/Brisvane/temp"},
          {"HOME", "home", "home/.local/state/Brisvane/temp"}}) {
        unsetenv("ZEL_COMMON_DATA");
        unsetenv("XDG_STATE_HOME");
        setenv(variable, path(value).c_str(), 1);
        std::string const directory = File::getTmpDir();
        EXPECT_TRUE(directory.starts_with(test::libraryPath(path(expected)))) << directory;
        EXPECT_TRUE(test::isPrivate(path(expected)));
    }
    setenv("ZEL_COMMON_DATA", path("a:b").c_str(), 1);
    EXPECT_EQ(File::getTmpDir(), "") << "no File could be opened there";
    setenv("HOME", home.c_str(), 1);
    setenv("ZEL_COMMON_DATA", chosen.c_str(), 1);
}

TEST_F(PosixTest, APictureThatTheDiskRefusesIsAWriteError) {
    for (std::string const name : {"full.tga", "full.bmp"}) {
        fs::create_symlink("/dev/full", path(name));
        EXPECT_EQ(test::errorOf<Zel::FileException_WriteError>([&] { Zel::Image(1, 1).save(name); }),
                  "Write error in \"" + name + "\"");
    }
}

TEST_F(PosixTest, TheJpegEncoderTakesEveryPictureWithPixels) {
    EXPECT_NO_THROW(Zel::Image(40, 30).save("out.jpg"));
    EXPECT_FALSE(fs::exists(path("out.jpg")));
}

TEST_F(PosixTest, AJpegPictureOfMorePixelsThanItsBytesCanFillIsRefused) {
    writeFile("bomb.jpg",
              test::fileContent(ZEL_SOURCE_DIR "/tests/regressions/jpeg/size_that_its_bytes_cannot_fill"));
    EXPECT_THROW(Zel::Image(test::libraryPath(path("bomb.jpg"))), Zel::JPEGLoaderException_LoadFailed);
}

TEST_F(PosixTest, AJpegPictureNeedsNothingBehindItsLastRow) {
    std::string const picture = test::testData("colour.jpg");
    writeFile("open.jpg", picture.substr(0, picture.size() - 2));
    EXPECT_EQ(Zel::Image(test::libraryPath(path("open.jpg"))).getWidth(), 16);
}

TEST_F(PosixTest, TheExampleJpegDecodesAsByDjpegToTheBit) { // other hosts' codecs differ in the last bits
    writeFile("valley.jpg", test::fileContent(ZEL_EXAMPLE_DATA "/Pictures/Valley.jpg"));
    Zel::Image const image(test::libraryPath(path("valley.jpg")));
    ASSERT_EQ(image.getWidth() * image.getHeight(), 160 * 120);
    EXPECT_EQ(Zel::crc32(image.getData(), sizeof(Zel::Color) * 160 * 120), 0xDA4B8D96U);
}

TEST_F(PosixTest, AnImpossibleSizeOfAJpegPictureIsToldByItsNumbers) {
    std::string picture = test::testData("colour.jpg");
    picture.replace(picture.find("\xFF\xC0") + 5, 4, "\xFF\xDC\xFF\xDC");
    writeFile("huge.jpg", picture);
    std::string const name = test::libraryPath(path("huge.jpg"));
    EXPECT_EQ(test::errorOf<Zel::ImageException_IllegalDimensions>([&] { Zel::Image{name}; }),
              "Image \"" + name + "\" has illegal dimensions 65500x65500");
}

} // namespace
