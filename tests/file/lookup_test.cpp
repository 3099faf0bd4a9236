// Lookups of an archive, and the report of what they never found.

#include "support/library_test.h"

#include "archive/archive_writer.h"

namespace {

using Zel::Archive;

class LookupTest : public test::LibraryTest {
protected:
    /// The keys that the two substring searches give one after the other, in the intended loop.
    static std::vector<std::string> walk(Archive const& archive, std::string const& part) {
        std::vector<std::string> keys;
        std::string key;
        Archive::FileInfo info;
        for (bool found = archive.findFirstSubstring(part, key, info); found;
             found = archive.findNextSubstring(part, key, key, info)) {
            EXPECT_EQ(info.accessed, 1u);
            keys.push_back(key);
        }
        return keys;
    }
};

TEST_F(LookupTest, OnlyTheExactKeyIsFound) {
    Archive const archive(packArchive("a.bva", {{"dir\\a", "123"}}));
    EXPECT_TRUE(archive.hasFile(key("dir\\a")));
    for (std::string const& other :
         {key("dir\\A"), key("dir\\"), key("dir\\ab"), key("dir/a"), std::string("dir\\a")}) {
        EXPECT_FALSE(archive.hasFile(other)) << other;
        Archive::FileInfo info{1, 2, 3, 0};
        EXPECT_FALSE(archive.findFile(other, info));
        EXPECT_EQ(info.crc, 3u) << "left alone";
    }
    Archive::FileInfo info;
    EXPECT_TRUE(archive.findFile(key("dir\\a"), info));
    EXPECT_EQ(info.size, 3u);
    EXPECT_EQ(info.crc, Zel::crc32("123", 3));
    EXPECT_EQ(info.accessed, 1u);
}

TEST_F(LookupTest, SubstringsAreWalkedInKeyOrder) {
    Archive const archive(packArchive(
        "a.bva", {{"maps\\b", "x"}, {"ui\\maps", "x"}, {"B", "x"}, {"maps\\a", "x"}, {"z", "x"}}));
    EXPECT_THAT(walk(archive, ""),
                testing::ElementsAre(key("B"), key("maps\\a"), key("maps\\b"), key("ui\\maps"), key("z")));
    EXPECT_THAT(walk(archive, "\\maps"),
                testing::ElementsAre(key("maps\\a"), key("maps\\b"), key("ui\\maps")));
    EXPECT_THAT(walk(archive, key("maps\\")), testing::ElementsAre(key("maps\\a"), key("maps\\b")));
    EXPECT_THAT(walk(archive, "MAPS"), testing::IsEmpty());
}

TEST_F(LookupTest, TheReportNamesWhatNobodyFound) {
    std::string const name = packArchive(
        "a.bva",
        {{"a", std::string(1'048'576, 'x')}, {"b", std::string(524'288, 'x')}, {"c", "x"}, {"d", "x"}});
    Archive const archive(name);
    EXPECT_TRUE(archive.hasFile(key("a")) && Zel::File::exists("a")); // no access,
    Zel::File("b", Zel::File::WRITE).write("x", 1);                   // nor is writing
    test::readThroughLibrary("c");
    walk(archive, key("d"));

    test::LogCapture const log;
    archive.dumpUnaccessedFiles();
    std::vector<std::string> const expected = {
        "\nUnaccessed files for archive \"" + name + "\":\n\n",
        "Archived file \"" + key("a") + "\" was not accessed\n",
        "Archived file \"" + key("b") + "\" was not accessed\n",
        "\nTotal 1.5 MB of unaccessed files\n\n",
    };
    EXPECT_EQ(log.messages(), expected);
    walk(archive, "");
    archive.dumpUnaccessedFiles();
    EXPECT_EQ(log.messages().size(), 6u);
    EXPECT_EQ(log.messages().back(), "\nTotal 0.0 MB of unaccessed files\n\n");
}

TEST_F(LookupTest, TheTotalOfTheReportIsASigned32BitNumber) {
    writeFile("large.bva", zel::archiveHead({{"a", 0x80000000, 0, 0}, {"b", 0x100000, 0, 0}}));
    Archive const archive("large.bva");
    test::LogCapture const log;
    archive.dumpUnaccessedFiles();
    EXPECT_EQ(log.messages().back(), "\nTotal -2047.0 MB of unaccessed files\n\n");
}

TEST_F(LookupTest, AReportTellsWhatWasWhateverItsCallbackDoes) {
    static Archive* s_archive;
    static std::string s_told;
    Archive archive(packArchive("one.bva", {{"a", "x"}, {"b", "x"}}));
    s_archive = &archive;
    s_told.clear();
    Zel::setVerboseCallback([](char const* message) {
        s_told += message;
        *s_archive = Archive(); // whose entries the report is about
    });
    archive.dumpUnaccessedFiles();
    Zel::setVerboseCallback(nullptr);
    EXPECT_NE(s_told.find("b\" was not accessed\n"), std::string::npos) << s_told;
}

TEST_F(LookupTest, TheReportOfAllCoversAsManySlotsAsArchivesAreNamed) {
    std::string const one = packArchive("one.bva", {{"a", "x"}});
    Archive unnamed;
    Archive const named(one);
    test::LogCapture const log;
    Archive::dumpAllUnaccessedFiles();
    EXPECT_EQ(log.text(), "\nUnaccessed files for archive \"\":\n\n\nTotal 0.0 MB of unaccessed files\n\n");
    unnamed.setFileName(one);
    Archive::dumpAllUnaccessedFiles();
    EXPECT_EQ(log.messages().size(), 2u + 3u + 3u);
}

using LookupDeathTest = LookupTest;

TEST_F(LookupDeathTest, GoingOnFromAKeyThatIsNoneEndsTheProcess) {
    Archive const archive(packArchive("a.bva", {{"a", "x"}}));
    std::string found;
    Archive::FileInfo info;
    EXPECT_DEATH(archive.findNextSubstring("", "nowhere", found, info), "\"nowhere\" is not a key of");
}

} // namespace
