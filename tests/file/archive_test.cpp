// Archive files: loading them, and where an archive's names lead.

#include "support/library_test.h"

namespace {

using test::errorOf;
using test::readThroughLibrary;

using ArchiveTest = test::LibraryTest;

/// Two entries, "a" and "b\c", with the contents "A" and "BC", written by hand.
std::string handmadeArchive() {
    constexpr unsigned char kBytes[] = {
        44,   0,    0,    0,    36,   0,    0,    0,                            // version, T
        0x3A, 0x3B, 0x3B, 0x3B, 0x5A,                                           // 1, "a"
        0x3A, 0x3B, 0x3B, 0x3B, 0x0B, 0x3B, 0x3B, 0x3B, 0xB0, 0xA5, 0xE2, 0xE8, // 1, 48, CRC of "A"
        0x38, 0x3B, 0x3B, 0x3B, 0x59, 0x67, 0x58,                               // 3, "b\c"
        0x39, 0x3B, 0x3B, 0x3B, 0x0A, 0x3B, 0x3B, 0x3B, 0x69, 0x14, 0x78, 0x57, // 2, 49, CRC of "BC"
        0xB9, 0xFE, 0x22, 0x7F,                                                 // CRC of the table
        0x7A, 0x79, 0x78,                                                       // "A", "BC"
    };
    return {reinterpret_cast<char const*>(kBytes), sizeof kBytes};
}

TEST_F(ArchiveTest, TheFormatIsReadAndWrittenToTheByte) {
    packArchive("packed.bva", {{"a", "A"}, {"b\\c", "BC"}});
    EXPECT_EQ(readFile("packed.bva"), handmadeArchive());
    writeFile("hand.bva", handmadeArchive());
    Zel::Archive const archive("hand.bva");
    Zel::Archive::FileInfo info;
    ASSERT_TRUE(archive.findFile(key("b\\c"), info));
    EXPECT_EQ(info.size, 2u);
    EXPECT_EQ(info.offset, 49u);
    // Relative names lead to the data directory when loading, and from the current one when reading.
    Zel::Archive const mounted(test::libraryPath(path("hand.bva")));
    EXPECT_EQ(mounted.getFullPath(), test::libraryPath(path("hand.bva")));
    EXPECT_EQ(readThroughLibrary("A"), "A");
    EXPECT_EQ(readThroughLibrary("b/C"), "BC");
}

TEST_F(ArchiveTest, AFileShorterThanItsHeaderSaysIsAReadError) {
    auto const expectReadError = [this](std::string const& bytes, int what) {
        writeFile("odd.bva", bytes);
        EXPECT_EQ(errorOf<Zel::FileException_ReadError>([] { Zel::Archive("odd.bva"); }),
                  "Read error in \"odd.bva\"")
            << what;
        EXPECT_TRUE(Zel::Archive::sm_vecArchives.empty()) << "a failed constructor registers nothing";
    };
    std::string whole = handmadeArchive();
    for (std::size_t length = 0; length < 48; ++length)
        expectReadError(whole.substr(0, length), static_cast<int>(length));
    writeFile("head.bva", whole.substr(0, 48));
    EXPECT_NO_THROW(Zel::Archive("head.bva")) << "the entries are not read when loading";
    for (char high : {'\x01', '\x7F', '\x80', '\xFF'}) { // refused before memory is taken
        whole[7] = high;
        expectReadError(whole, high);
    }
}

TEST_F(ArchiveTest, SettingAnotherFileMergesAndTheEarlierEntriesStay) {
    Zel::Archive archive(packArchive("one.bva", {{"a", "one"}, {"b", "one"}}));
    std::string const two = packArchive("two.bva", {{"b", "longer"}, {"c", "two"}});
    Zel::Archive::FileInfo before;
    ASSERT_TRUE(archive.findFile(key("b"), before));
    archive.setFileName(two);
    Zel::Archive::FileInfo after;
    ASSERT_TRUE(archive.findFile(key("b"), after));
    EXPECT_EQ(after.size, before.size);
    EXPECT_EQ(after.accessed, 1u) << "with its flag";
    EXPECT_TRUE(archive.hasFile(key("a")));
    EXPECT_TRUE(archive.hasFile(key("c")));
    EXPECT_EQ(archive.getFullPath(), two);
    EXPECT_EQ(readThroughLibrary("c"), "two");
}

TEST_F(ArchiveTest, AFailedFileNameIsKeptWithTheOldEntries) {
    std::string const one = packArchive("one.bva", {{"a", "one"}});
    Zel::Archive archive(one);
    EXPECT_THROW(archive.setFileName("missing.bva"), Zel::FileException_OpenFailed);
    EXPECT_EQ(archive.getFullPath(), one) << "not yet determined when opening failed";

    writeFile("bad.bva", handmadeArchive().substr(0, 20));
    std::string const bad = test::libraryPath(path("bad.bva"));
    EXPECT_EQ(errorOf<Zel::FileException_ReadError>([&] { archive.setFileName(bad); }),
              "Read error in \"" + bad + "\"");
    EXPECT_EQ(archive.getFullPath(), bad);
    EXPECT_TRUE(archive.hasFile(key("a")));

    Zel::Archive unnamed;
    EXPECT_EQ(Zel::Archive::getArchiveCount(), 1);
    EXPECT_THROW(unnamed.setFileName("missing.bva"), Zel::FileException_OpenFailed);
    EXPECT_EQ(Zel::Archive::getArchiveCount(), 2) << "the new name counts, although nothing was loaded";
}

TEST_F(ArchiveTest, KeysAreTheDataDirectoryInLowerCaseAndTheStoredName) {
    fs::create_directory(path("sub"));
    std::string const name = packArchive("a.bva", {{"Upper", "x"}, {"with/slash", "x"}, {"plain", "x"}});
    Zel::File::setDataDir("SUB");
    Zel::Archive const archive(name);
    EXPECT_TRUE(archive.hasFile(key("sub\\plain")));
    EXPECT_TRUE(archive.hasFile(key("sub\\Upper")));
    EXPECT_TRUE(archive.hasFile(key("sub\\with/slash")));
    EXPECT_EQ(readThroughLibrary("plain"), "x");
    EXPECT_THROW(readThroughLibrary("Upper"), Zel::FileException_OpenFailed) << "no File asks in capitals";
    EXPECT_THROW(readThroughLibrary("with/slash"), Zel::FileException_OpenFailed);
}

TEST_F(ArchiveTest, ARelativeNameIsOpenedInTheDataDirectoryAndRememberedInTheCurrentOne) {
    packArchive("a.bva", {{"a", "x"}});
    fs::create_directory(path("elsewhere"));
    fs::current_path(path("elsewhere"));
    Zel::Archive const archive("A.bva");
    EXPECT_EQ(archive.getFullPath(), test::libraryPath(path("elsewhere")) + "\\A.bva");
    EXPECT_THROW(readThroughLibrary("a"), Zel::FileException_OpenFailed) << "there is no archive there";
    fs::rename(path("a.bva"), path("elsewhere/a.bva"));
    EXPECT_EQ(readThroughLibrary("a"), "x");
}

TEST_F(ArchiveTest, AnArchiveInAnArchiveLoadsButItsEntriesNeedTheDisk) {
    packArchive("inner.bva", {{"deep", "x"}});
    std::string const outer = packArchive("outer.bva", {{"inner.bva", readFile("inner.bva")}});
    fs::remove(path("inner.bva"));
    Zel::Archive const outerArchive(outer);
    Zel::Archive const innerArchive("inner.bva");
    EXPECT_TRUE(innerArchive.hasFile(key("deep")));
    EXPECT_THROW(readThroughLibrary("deep"), Zel::FileException_OpenFailed);
}

TEST_F(ArchiveTest, ScramblingTwiceRestoresAndNoLengthChangesNothing) {
    std::string text = "\x3B plain text";
    for (int length : {0, -5, std::numeric_limits<int>::min(), 3})
        Zel::Archive::decrypt(text.data(), length);
    EXPECT_EQ(text, std::string("\0\x1BKlain text", 12));
    Zel::Archive::decrypt(text.data(), 3);
    EXPECT_EQ(text, "\x3B plain text");
}

TEST_F(ArchiveTest, AHundredThousandEntriesLoadAndAreServed) {
    test::Entries entries;
    for (int i = 0; i < 100'000; ++i)
        entries.emplace_back("dir" + std::to_string(i % 100) + "\\file" + std::to_string(i),
                             std::to_string(i));
    Zel::Archive const archive(packArchive("large.bva", entries));
    EXPECT_EQ(readThroughLibrary("DIR0/FILE0"), "0");
    EXPECT_EQ(readThroughLibrary("DIR99/FILE99999"), "99999");
    EXPECT_THROW(readThroughLibrary("dir50/file99999"), Zel::FileException_OpenFailed);
}

} // namespace
