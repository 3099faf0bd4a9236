// Opening and writing. Reading is in stream_test.cpp.

#include "support/library_test.h"

#include "archive/archive_writer.h"

#include <cstdint>
#include <fstream>

namespace {

using test::errorOf;
using test::readThroughLibrary;

using FileTest = test::LibraryTest;

TEST_F(FileTest, ADefaultFileIsClosedAndEmpty) {
    Zel::File file;
    EXPECT_EQ(file.getFilename(), "");
    EXPECT_EQ(file.getMode(), Zel::File::READ);
    EXPECT_EQ(file.getSize(), 0);
    EXPECT_TRUE(file.endReached());
    char byte = 0;
    EXPECT_THROW(file.read(&byte, 1), Zel::FileException_ReadError);
    EXPECT_THROW(file.write(&byte, 1), Zel::FileException_WriteError);
    EXPECT_THROW(file.setPosition(0), Zel::FileException_SeekError);
    file.flush();
}

TEST_F(FileTest, SpellingDoesNotMatter) {
    writeFile("ui/menu.txt", "loose");
    Zel::Archive const archive(packArchive("a.bva", {{"models\\cube.obj", "packed"}}));
    for (char const* name : {"ui/menu.txt", "UI\\Menu.TXT", "x/../ui/./menu.txt", "ui/menu.txt/"})
        EXPECT_EQ(readThroughLibrary(name), "loose") << name;
    for (char const* name : {"models/cube.obj", "Models\\CUBE.obj", "models\\..\\MODELS/cube.obj"})
        EXPECT_EQ(readThroughLibrary(name), "packed") << name;
    EXPECT_EQ(readThroughLibrary(test::libraryPath(path("ui/menu.txt"))), "loose");
}

TEST_F(FileTest, TheNewestArchiveWinsOverTheOlderAndTheDisk) {
    for (std::string const name : {"a", "b", "c"})
        writeFile(name, "loose " + name);
    Zel::Archive const older(packArchive("old.bva", {{"a", "old a"}, {"b", "old b"}}));
    Zel::Archive const newer(packArchive("new.bva", {{"b", "new b"}, {"d", "new d"}}));
    EXPECT_EQ(readThroughLibrary("a"), "old a");
    EXPECT_EQ(readThroughLibrary("b"), "new b");
    EXPECT_EQ(readThroughLibrary("c"), "loose c") << "archive-only, on by default, is not asked";
    fs::remove(path("new.bva"));
    EXPECT_EQ(readThroughLibrary("b"), "loose b") << "what cannot be opened leaves it to the disk";
    EXPECT_THROW(readThroughLibrary("d"), Zel::FileException_OpenFailed);
}

/// Opens an entry of these sizes and offsets in an archive of 33 bytes, the last of them "four".
template <class Failure>
void expectFailure(std::vector<std::pair<std::uint32_t, std::uint32_t>> const& places, char const* message) {
    for (auto const& [size, offset] : places) {
        std::ofstream("odd.bva", std::ios::binary) << zel::archiveHead({{"a", size, offset, 0}}) << "four";
        Zel::Archive const archive(test::libraryPath("odd.bva"));
        EXPECT_EQ(errorOf<Failure>([] { Zel::File("A", Zel::File::READ); }), message)
            << size << " at " << offset;
    }
}

TEST_F(FileTest, AnEntryThatIsNotWhatItsRecordSaysIsNamedAsGiven) {
    fs::current_path(path("."));
    expectFailure<Zel::FileException_FileCorrupted>({{4, 29}, {1, 32}}, "File \"A\" is corrupted");
    expectFailure<Zel::FileException_ReadError>(
        {{5, 29}, {1, 4096}, {0x7FFFFFFF, 29}, {0x7FFFFFFF, 0x7FFFFFFF}, {0xFFFFFFFF, 29}, {0x80000000, 0}},
        "Read error in \"A\"");
    expectFailure<Zel::FileException_SeekError>({{1, 0x80000000}, {1, 0xFFFFFFFF}, {0xFFFFFFFF, 0xFFFFFFFF}},
                                                "Seek error in \"A\"");
}

TEST_F(FileTest, WhatCannotBeOpenedIsNamedAsGiven) {
    fs::create_directory(path("folder"));
    writeFile("plain", "x");
    auto const expectNamed = [](std::string const& name, Zel::File::Mode mode) {
        EXPECT_EQ(errorOf<Zel::FileException_OpenFailed>([&] { Zel::File(name, mode); }),
                  "Failed to open file \"" + name + "\"")
            << mode;
    };
    for (auto mode : {Zel::File::READ, Zel::File::WRITE, Zel::File::WRITE_TEXT})
        for (char const* name : {"Missing/File.txt", "folder", "plain/x", "q:\\plain", ""})
            expectNamed(name, mode);
    for (int mode : {4, -1})
        expectNamed("plain", static_cast<Zel::File::Mode>(mode));
    EXPECT_EQ(
        errorOf<Zel::FileException_DirectoryNotFound>([] { Zel::File("q:/a/../../../x/", Zel::File::READ); }),
        "Directory \"q:\\a\\..\\..\\..\\x\" not found");
}

TEST_F(FileTest, ANameWithAZeroByteOpensNothing) {
    writeFile("plain", "x");
    std::string const name("plain\0tail", 10);
    Zel::Archive const archive(packArchive("a.bva", {{name, "hidden"}}));
    for (auto mode : {Zel::File::READ, Zel::File::WRITE, Zel::File::WRITE_TEXT})
        EXPECT_THROW(Zel::File(name, mode), Zel::FileException_OpenFailed);
    EXPECT_FALSE(Zel::File::exists(name));
    EXPECT_EQ(readFile("plain"), "x");
}

TEST_F(FileTest, ALooseFileHasFromNoBytesTo31BitsOfThem) {
    writeFile("large", "");
    EXPECT_EQ(Zel::File("large", Zel::File::READ).getSize(), 0);
    EXPECT_TRUE(Zel::File("large", Zel::File::READ).endReached());
    fs::resize_file(path("large"), 0x7FFFFFFF); // takes no space: the file has a hole
    EXPECT_EQ(Zel::File("large", Zel::File::READ).getSize(), 0x7FFFFFFF);
    fs::resize_file(path("large"), 0x80000000);
    EXPECT_THROW(Zel::File("large", Zel::File::READ), Zel::FileException_OpenFailed);
}

TEST_F(FileTest, SizeGrowsByEveryWrite) {
    Zel::File file("out.bin", Zel::File::WRITE);
    EXPECT_EQ(file.getSize(), 0);
    file.write("123456", 6);
    EXPECT_EQ(file.getSize(), 6);
    EXPECT_EQ(file.getPosition(), 6);
    file.setPosition(1);
    file.write("xy", 2);
    EXPECT_EQ(file.getSize(), 8) << "overwriting counts too";
    EXPECT_EQ(file.getPosition(), 3);
    file.write("", 0);
    EXPECT_THROW(file.write("x", -1), Zel::FileException_WriteError);
    file.flush();
    EXPECT_EQ(readFile("out.bin"), "1xy456");
}

TEST_F(FileTest, WritingEmptiesALooseFileAndNeverTouchesAnArchive) {
    writeFile("a", "a long text");
    Zel::Archive const archive(packArchive("a.bva", {{"a", "packed"}, {"b", "packed"}}));
    std::string const before = readFile("a.bva");
    Zel::File("A", Zel::File::WRITE).write("new", 3);
    Zel::File("B", Zel::File::WRITE).write("new", 3);
    EXPECT_EQ(readFile("a"), "new");
    EXPECT_EQ(readFile("b"), "new") << "created under the name in lower case";
    EXPECT_EQ(readFile("a.bva"), before);
    EXPECT_EQ(readThroughLibrary("a"), "packed");
}

TEST_F(FileTest, WriteTextUsesThePlatformsLineEnds) {
    { Zel::File("out.txt", Zel::File::WRITE_TEXT).write("a\nb\n", 4); }
    std::ofstream(path("expected.txt")) << "a\nb\n";
    EXPECT_EQ(readFile("out.txt"), readFile("expected.txt"));
}

TEST_F(FileTest, AssignmentTakesOverTheStreamAndLeavesTheOldOneOpen) {
    writeFile("a", "aa");
    writeFile("b", "bb");
    int const before = test::openDescriptors();
    alignas(Zel::File) std::byte storage[sizeof(Zel::File)];
    auto* const source = new (storage) Zel::File("b", Zel::File::READ); // not destroyed: the target closes it
    // Kept aside so that the stream that the assignment abandons can be closed after all.
    auto* const abandoned = new Zel::File("a", Zel::File::READ);
    {
        Zel::File target(*abandoned);
        target = *source;
        EXPECT_EQ(target.getFilename(), "b");
        EXPECT_EQ(test::openDescriptors(), before + 2) << "the target's first stream stays open";
    }
    EXPECT_EQ(test::openDescriptors(), before + 1);
    delete abandoned;
}

} // namespace
